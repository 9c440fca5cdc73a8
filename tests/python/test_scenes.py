"""Pictures and files of scenes."""

import os
import pathlib
import runpy
import struct
import tempfile
import unittest
import warnings
import zlib

import numpy as np
from pivy import coin

import ormelle

ROOT = pathlib.Path(os.environ["ORMELLE_SOURCE_DIR"])


def red_square():
    """A flat square that fills half of each direction of a picture with a margin of a quarter."""
    mesh = ormelle.PbRegularCartesianGrid2D(2, 2, 0, 0, 1, 1)
    mesh.set_values("v", [1, 1, 1, 1])
    return ormelle.PoMeshFilled(mesh=mesh, dataMapping=ormelle.PbLinearDataMapping(0, "#000000", 1, "#ff0000"), valuesIndex=0,
                                coloringType="COLOR_MAPPING")


FLAT = ormelle.Camera(orthographic=True, margin=0.25)


class Pictures(unittest.TestCase):
    def test_what_is_where(self):
        light = coin.SoLightModel()
        light.model = coin.SoLightModel.BASE_COLOR
        picture = ormelle.render(ormelle.group(light, red_square()), (80, 40), "#00ff00", camera=FLAT)
        self.assertEqual((picture.shape, picture.dtype), ((40, 80, 4), np.uint8))
        self.assertEqual(picture[20, 40].tolist(), [255, 0, 0, 255])
        for pixel in ((2, 40), (37, 40), (20, 20), (20, 60)):
            self.assertEqual(picture[pixel].tolist(), [0, 255, 0, 255], pixel)

    def test_transparent_background(self):
        for background in (None, (1, 1, 1, 0), "#ffffff00"):
            picture = ormelle.render(red_square(), (20, 20), background, samples=1, camera=FLAT)
            self.assertEqual((picture[0, 0, 3], picture[10, 10, 3]), (0, 255))

    def test_cameras(self):
        camera = coin.SoOrthographicCamera()
        camera.position = (0.5, 0.5, 2)
        picture = ormelle.render(red_square(), (20, 20), camera=camera)
        self.assertEqual(picture[..., 1].max(), 255)
        with self.assertRaisesRegex(ValueError, "camera of its own"):
            ormelle.render(ormelle.group(camera, red_square()), camera=camera)
        self.assertEqual(ormelle.render(red_square(), (20, 10), camera=(0, 0, -1)).shape, (10, 20, 4))

    def test_wrong_arguments(self):
        square = red_square()
        cases = [
            (TypeError, ("scene",), {}),
            (TypeError, (None,), {}),
            (ValueError, (square, (0, 10)), {}),
            (ValueError, (square, (10, 10**6)), {}),
            (TypeError, (square, ("a", 10)), {}),
            (ValueError, (square, (10, 10), "greenish"), {}),
            (TypeError, ([square, 3],), {}),
            (TypeError, (square, 10), {}),
            (TypeError, (square,), {"samples": "many"}),
            (ValueError, (square,), {"samples": 0}),
            (ValueError, (square,), {"camera": (0, 0, 0)}),
            (ValueError, (square,), {"camera": (0, float("nan"), 0)}),
        ]
        for error, arguments, named in cases:
            with self.subTest(arguments=arguments, named=named), self.assertRaises(error):
                ormelle.render(*arguments, **named)

    def test_broken_scenes_are_told(self):
        faces = coin.SoIndexedFaceSet()
        faces.coordIndex.setValues(0, 4, [0, 1, 99999, -1])
        with self.assertRaisesRegex(ormelle.SceneError, "99999"):
            ormelle.render(faces)

    def test_png_for_notebooks(self):
        shown = ormelle.show(red_square(), (30, 20), camera=FLAT)
        data = shown._repr_png_()
        self.assertEqual(struct.unpack(">II", data[16:24]), (30, 20))
        length = struct.unpack(">I", data[33:37])[0]
        rows = np.frombuffer(zlib.decompress(data[41:41 + length]), np.uint8).reshape(20, 91)
        self.assertTrue((rows[:, 0] == 2).all())
        pixels = np.cumsum(rows[:, 1:], axis=0, dtype=np.uint8)
        np.testing.assert_array_equal(pixels.reshape(20, 30, 3), shown.array[..., :3])


    def test_lists_and_nodes_show_themselves(self):
        square = red_square()
        square.setUpdateMethod(square.UPDATE_AT_TRAVERSAL)
        light = ormelle.SoLightModel(model="BASE_COLOR")
        picture = ormelle.render([light, [square]], (40, 40), "lime", camera=FLAT)
        self.assertEqual((picture[20, 20].tolist(), picture[2, 2].tolist()), ([255, 0, 0, 255], [0, 255, 0, 255]))
        for node in (square, ormelle.group(light, square)):
            self.assertTrue(node._repr_png_().startswith(b"\x89PNG"))
        self.assertIsNone(ormelle.PoDomain()._repr_png_())


class Files(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.file = pathlib.Path(self.folder.name) / "scene.iv"

    def test_written_scenes_are_read_again(self):
        mesh = ormelle.PbParalCartesianGrid2D([0, 1, 3], [0, 2])
        mesh.set_values("v", [0, 1, 2, 3, 4, float("nan")])
        scene = ormelle.group(ormelle.PoParalCartesianGrid2D(mesh), ormelle.PoMeshFilled(valuesIndex=0))
        for binary in (False, True):
            ormelle.write(scene, self.file, binary)
            again = ormelle.read(self.file)
            self.assertIsInstance(again, coin.SoSeparator)
            held = ormelle.cast(again.getChild(0)).getMesh()
            np.testing.assert_array_equal(held.values("v"), [0, 1, 2, 3, 4, np.nan])
            self.assertEqual(held.getBoundingBox(), ((0, 0, 0), (3, 2, 0)))
            self.assertEqual(ormelle.cast(again.getChild(1)).valuesIndex.getValue(), 0)
        del scene, held
        self.assertEqual(again.getChild(0).getRefCount(), 1)

    def test_pictures_and_models_by_the_ending_of_the_name(self):
        marks = {"png": b"\x89PNG", "svg": b"<svg", "PDF": b"%PDF", "glb": b"glTF", "wrl": b"#VRML V2.0", "iv": b"#Inventor"}
        for ending, mark in marks.items():
            file = self.file.with_suffix("." + ending)
            with self.subTest(ending=ending):
                try:
                    ormelle.save([red_square()], file, (60, 40), "ivory", camera=FLAT)
                except ormelle.SceneError as error:
                    self.assertRegex(str(error), "without Cairo")
                    continue
                self.assertIn(mark, file.read_bytes()[:200])
        drawing = self.file.with_suffix(".svg").read_text()
        self.assertRegex(drawing, 'viewBox="0 0 60 40"')
        self.assertIn("#fffff0", drawing)
        for wrong in ("scene.jpeg", "scene", "none/scene.svg"):
            with self.assertRaises((ValueError, OSError)):
                ormelle.save(red_square(), pathlib.Path(self.folder.name) / wrong)
            self.assertFalse((pathlib.Path(self.folder.name) / wrong).exists())

    def test_files_that_are_none(self):
        with self.assertRaisesRegex(ormelle.SceneError, "no such file"):
            ormelle.read(self.file)
        for text in ("", "hello", "#Inventor V2.1 ascii\nSeparator {", "#Inventor V2.1 ascii\nPoNothing {}",
                     "#Inventor V2.1 ascii\nPoRegularCartesianGrid2D { mesh 3 }"):
            self.file.write_text(text)
            with self.subTest(text=text), self.assertRaises(OSError):
                ormelle.read(self.file)
        with self.assertRaises(OSError):
            ormelle.write(red_square(), pathlib.Path(self.folder.name) / "none" / "scene.iv")
        with self.assertRaises(TypeError):
            ormelle.write(None, self.file)

    def test_the_example_runs(self):
        before = os.getcwd()
        os.chdir(self.folder.name)
        self.addCleanup(os.chdir, before)
        os.symlink(ROOT / "data", "data")
        with warnings.catch_warnings():
            warnings.simplefilter("error")
            runpy.run_path(str(ROOT / "python/examples/terrain.py"))
        self.assertGreater(os.path.getsize("terrain.png"), 100_000)


if __name__ == "__main__":
    unittest.main()
