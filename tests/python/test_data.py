"""Data objects: what arrays are shared and checked, what meshes and mappings answer."""

import gc
import math
import unittest
import weakref

import numpy as np

import ormelle


def box_mesh():
    """Two tetrahedra."""
    x, y, z = np.array([[0, 0, 0], [1, 0, 0], [0, 1, 0], [0, 0, 1], [1, 1, 1]], "f4").T.copy()
    return ormelle.PbTetrahedronMesh3D(x, y, z, [[0, 1, 2, 3], [1, 2, 3, 4]])


class Arrays(unittest.TestCase):
    def setUp(self):
        self.grid = ormelle.PbRegularCartesianGrid2D(3, 4, 0, 0, 2, 3)

    def test_fitting_arrays_are_shared_and_others_converted(self):
        shared = np.arange(12, dtype="f4").reshape(3, 4)
        self.grid.addValuesSet(0, shared, "shared")
        self.assertIs(self.grid.values("shared"), shared)
        for number, other in enumerate([shared.astype("f8"), shared.astype(">f4"), shared.astype("i2"),
                                        np.asfortranarray(shared), shared[::1, ::-1], shared.tolist(),
                                        np.frombuffer(b"x" + shared.tobytes(), "f4", 12, 1)], 1):
            index = self.grid.set_values(f"other {number}", other)
            self.assertEqual(index, number)
            np.testing.assert_array_equal(self.grid.getValuesSet(number).ravel(), np.ravel(other))
            self.assertFalse(np.shares_memory(self.grid.values(number), shared))

    def test_copy_shares_nothing(self):
        z = np.zeros((3, 4), "f4")
        grid = ormelle.PbRegularCartesianGrid2D(3, 4, 0, 0, 2, 3, z, copy=True)
        grid.set_values("v", z)
        z[:] = 7
        self.assertEqual(grid.getBoundingBox(), ((0, 0, 0), (2, 3, 0)))
        self.assertEqual(grid.values("v").max(), 0)

    def test_arrays_live_as_long_as_the_mesh_needs_them(self):
        class Array(np.ndarray):
            pass

        def array(seed):
            return np.full((3, 4), seed, "f4").view(Array)

        z, first, second = array(1), array(2), array(3)
        seen = [weakref.ref(each) for each in (z, first, second)]
        grid = ormelle.PbRegularCartesianGrid2D(3, 4, 0, 0, 2, 3, z)
        grid.set_values("v", first)
        grid.set_values("v", second)
        del z, first, second
        gc.collect()
        np.testing.assert_array_equal(grid.coordinates()[:, 2], 1)
        np.testing.assert_array_equal(grid.values("v"), 3)
        self.assertEqual(grid.getMaxValuesSet(0), 3)
        del grid
        gc.collect()
        self.assertEqual([ref() for ref in seen], [None] * 3)

    def test_shapes_and_types_are_checked(self):
        cases = [
            (ValueError, "transpose", np.zeros((4, 3))),
            (ValueError, "3 x 4", np.zeros((2, 6))),
            (ValueError, "12 nodes and 6 cells", np.zeros(11)),
            (ValueError, "array of", ["a"] * 12),
            (ValueError, "array of complex", np.zeros(12, complex)),
            (ValueError, "array of numbers", [[1, 2], [3]]),
            (TypeError, "None", None),
        ]
        for error, words, values in cases:
            with self.subTest(words), self.assertRaisesRegex(error, words):
                self.grid.addValuesSet(0, values, "v")
        self.assertEqual(self.grid.value_names, {})
        with self.assertRaises(ValueError):
            ormelle.PbMesh.addValuesSet(ormelle.PbTriangleMesh2D(), 0, [1.0], "no node yet")

    def test_binding_follows_from_the_number(self):
        self.grid.set_values("cells", np.arange(6))
        self.grid.set_values("cells as grid", np.arange(6).reshape(2, 3), ormelle.PbMesh.PER_CELL)
        self.assertEqual(self.grid.getValuesBinding(0), ormelle.PbMesh.PER_CELL)
        self.assertEqual(self.grid.value_names, {0: "cells", 1: "cells as grid"})
        with self.assertRaisesRegex(KeyError, 'nothing.*; it has 0 .*cells.*, 1 .*cells as grid'):
            self.grid.values("nothing")
        self.assertEqual((self.grid.getMaxValuesSet("cells"), self.grid.values_index("cells as grid")), (5, 1))
        self.assertEqual(self.grid.getValuesBinding("cells"), ormelle.PbMesh.PER_CELL)
        with self.assertRaisesRegex(KeyError, "slope"):
            self.grid.getMinValuesSet("slope")

    def test_nan_and_masks_are_values_that_are_missing(self):
        values = np.arange(12, dtype="f4")
        values[3] = np.nan
        self.grid.set_values("v", values)
        self.assertEqual((self.grid.getMinValuesSet(0), self.grid.getMaxValuesSet(0)), (0, 11))
        self.grid.set_values("m", np.ma.masked_greater(np.arange(12), 9))
        self.assertEqual(self.grid.getMaxValuesSet(1), 9)
        self.assertTrue(np.isnan(self.grid.values("m")[11]))

    def test_vectors_and_strings(self):
        self.grid.set_vectors("flat", np.ones((12, 2)))
        np.testing.assert_array_equal(self.grid.vectors("flat")[5], [1, 1, 0])
        shared = np.ones((3, 4, 3), "f4")
        self.grid.set_vectors("solid", shared)
        self.assertIs(self.grid.vectors("solid"), shared)
        with self.assertRaisesRegex(ValueError, "12 x 3"):
            self.grid.set_vectors("bad", np.ones((12, 4)))
        self.grid.set_strings("names", [f"node {n}" for n in range(12)])
        self.assertEqual(self.grid.strings("names")[11], "node 11")
        with self.assertRaises(ValueError):
            self.grid.set_strings("names", ["too few"])

    def test_touch_tells_of_changes_in_place(self):
        values = np.arange(12, dtype="f4")
        self.grid.set_values("v", values)
        self.assertEqual(self.grid.getMaxValuesSet(0), 11)
        values[5] = 100
        before = self.grid.getGeometryId()
        self.grid.touch()
        self.assertEqual(self.grid.getMaxValuesSet(0), 100)
        self.assertNotEqual(self.grid.getGeometryId(), before)

    def test_sets_go_with_another_number_of_nodes(self):
        self.grid.set_values("v", np.zeros(12))
        self.grid.setGeometry(3, 4, 0, 0, 1, 1)
        self.assertEqual(self.grid.getNumValuesSet(), 1)
        self.grid.setGeometry(5, 4, 0, 0, 1, 1)
        self.assertEqual(self.grid.getNumValuesSet(), 0)


class Meshes(unittest.TestCase):
    def test_every_class_holds_the_same_square_or_cube(self):
        a = np.linspace(0, 1, 3)
        x, y = np.meshgrid(a, a, indexing="ij")
        quads = [[3 * i + j, 3 * i + j + 3, 3 * i + j + 4, 3 * i + j + 1] for i in range(2) for j in range(2)]
        triangles = [t for q in quads for t in (q[:3], [q[0], q[2], q[3]])]
        flat = [
            ormelle.PbRegularCartesianGrid2D(3, 3, 0, 0, 1, 1),
            ormelle.PbParalCartesianGrid2D(a, a),
            ormelle.PbCartesianGrid2D(x, y),
            ormelle.PbQuadrangleMesh2D(x.ravel(), y.ravel(), quads),
            ormelle.PbTriangleMesh2D(x.ravel(), y.ravel(), np.array(triangles)),
            ormelle.PbIndexedMesh2D(x.ravel(), y.ravel(), [quads[0], *triangles[2:]]),
            ormelle.PbIndexedMesh2D(x.ravel(), y.ravel(), np.concatenate(quads), [4] * 4),
        ]
        for mesh in flat:
            with self.subTest(mesh=mesh):
                self.assertAlmostEqual(mesh.getArea(), 1, 6)
                mesh.set_values("sum", mesh.coordinates() @ [1, 2, 0])
                found = mesh.locate((0.3, 0.7))
                self.assertAlmostEqual(found.value("sum"), 1.7, 5)
                self.assertAlmostEqual(sum(found.weights), 1, 6)
                self.assertEqual(tuple(found.nodes), mesh.cellNodes(found.cell))
                self.assertIsNone(mesh.locate((2, 2)))
                self.assertIsNone(mesh.locate((math.nan, 0)))

        x, y, z = np.meshgrid(a, a, a, indexing="ij")
        corners = [0, 9, 12, 3, 1, 10, 13, 4]
        hexahedra = [[c + 9 * i + 3 * j + k for c in corners] for i in range(2) for j in range(2) for k in range(2)]
        solid = [
            ormelle.PbRegularCartesianGrid3D(3, 3, 3, 0, 0, 0, 1, 1, 1),
            ormelle.PbParalCartesianGrid3D(a, a, a),
            ormelle.PbCartesianGrid3D(x, y, z),
            ormelle.PbHexahedronMesh3D(x.ravel(), y.ravel(), z.ravel(), hexahedra),
            ormelle.PbIndexedMesh3D(x.ravel(), y.ravel(), z.ravel(), hexahedra),
        ]
        for mesh in solid:
            with self.subTest(mesh=mesh):
                self.assertAlmostEqual(mesh.getVolume(), 1, 5)
                mesh.set_values("sum", mesh.coordinates() @ [1, 2, 4])
                mesh.set_vectors("place", mesh.coordinates())
                found = mesh.locate((0.3, 0.7, 0.2))
                self.assertAlmostEqual(found.value("sum"), 2.5, 5)
                np.testing.assert_allclose(found.vector("place"), (0.3, 0.7, 0.2), atol=1e-5)
        self.assertAlmostEqual(box_mesh().getVolume(), 1 / 2, 5)

        ring = ormelle.PbPolarGrid2D([1, 2], [0, 1, 2])
        np.testing.assert_allclose(ring.getNodeCoord(4), (2 * math.cos(1), 2 * math.sin(1), 0), rtol=1e-6)
        series = ormelle.PbIrregularMesh1D([0, 1, 4])
        series.set_values("y", [5, 6, 7])
        np.testing.assert_array_equal(series.values("y"), [5, 6, 7])
        self.assertEqual(ormelle.PbRegularMesh1D(5, 0, 8).getNodeCoord(1), (2, 0, 0))

    def test_surfaces_with_heights_are_searched_from_above(self):
        heights = np.arange(9.0).reshape(3, 3)
        for mesh in (ormelle.PbRegularCartesianGrid2D(3, 3, 0, 0, 2, 2, heights),
                     ormelle.PbCartesianGrid2D(*np.meshgrid([0, 1, 2], [0, 1, 2], indexing="ij"), heights)):
            mesh.set_values("z", heights)
            self.assertAlmostEqual(mesh.locate((0.5, 1.5)).value("z"), 3, 5)
            self.assertAlmostEqual(mesh.locate((0.5, 1.5, 3)).value("z"), 3, 5)
            mesh.touch()
            self.assertAlmostEqual(mesh.locate((1.5, 1.5)).value("z"), 6, 5)

    def test_triangles_between_nodes(self):
        try:
            mesh = ormelle.PbTriangleMesh2D([0, 1, 0, 1], [0, 0, 1, 1])
        except RuntimeError as error:
            self.assertIn("give the cells", str(error))
        else:
            self.assertEqual(mesh.getNumCells(), 2)

    def test_bad_geometry(self):
        row, cells = [0.0, 1.0, 0.0], [[0, 1, 2]]
        bad = [
            (ValueError, lambda: ormelle.PbRegularCartesianGrid2D(0, 4, 0, 0, 1, 1)),
            (ValueError, lambda: ormelle.PbRegularCartesianGrid2D(70000, 70000, 0, 0, 1, 1)),
            (ValueError, lambda: ormelle.PbRegularCartesianGrid2D(2, 2, 0, 0, math.inf, 1)),
            (TypeError, lambda: ormelle.PbRegularCartesianGrid2D("2", 2, 0, 0, 1, 1)),
            (ValueError, lambda: ormelle.PbRegularCartesianGrid3D(2000, 2000, 2000, 0, 0, 0, 1, 1, 1)),
            (ValueError, lambda: ormelle.PbParalCartesianGrid2D([], [1])),
            (ValueError, lambda: ormelle.PbCartesianGrid2D(np.zeros(4), np.zeros(4))),
            (ValueError, lambda: ormelle.PbCartesianGrid2D(np.zeros((2, 2)), np.zeros((2, 3)))),
            (ValueError, lambda: ormelle.PbTriangleMesh2D(row, row[:2], cells)),
            (IndexError, lambda: ormelle.PbTriangleMesh2D(row, row, [[0, 1, 3]])),
            (IndexError, lambda: ormelle.PbTriangleMesh2D(row, row, np.array([[0, 1, 2**32]]))),
            (IndexError, lambda: ormelle.PbTriangleMesh2D(row, row, [[0, 1, -1]])),
            (ValueError, lambda: ormelle.PbTriangleMesh2D(row, row, [[0.0, 1.0, 2.0]])),
            (ValueError, lambda: ormelle.PbTriangleMesh2D(row, row, [[0, 1]])),
            (ValueError, lambda: ormelle.PbIndexedMesh2D(row, row, [[0, 1]])),
            (ValueError, lambda: ormelle.PbIndexedMesh2D(row, row, [0, 1, 2], [4])),
            (TypeError, lambda: ormelle.PbIndexedMesh3D(row, row, row, 7)),
            (ValueError, lambda: ormelle.PbTetrahedronMesh3D(row, row, row, cells)),
            (IndexError, lambda: box_mesh().getNodeCoord(5)),
            (IndexError, lambda: box_mesh().cellNodes(-1)),
            (TypeError, lambda: ormelle.PbMesh()),
        ]
        for number, (error, make) in enumerate(bad):
            with self.subTest(number), self.assertRaises(error):
                make()

    def test_a_failed_change_leaves_the_mesh_as_it_was(self):
        mesh = box_mesh()
        with self.assertRaises(IndexError):
            mesh.setGeometry([0, 1], [0, 1], [0, 1], [[0, 1, 2, 3]])
        self.assertAlmostEqual(mesh.getVolume(), 1 / 2, 5)

    def test_unfinished_objects_are_refused(self):
        class Grid(ormelle.PbRegularCartesianGrid2D):
            def __init__(self):
                pass

        with self.assertRaises(TypeError):
            Grid()


class Mappings(unittest.TestCase):
    def test_colours_of_one_value_and_of_many(self):
        mapping = ormelle.PbLinearDataMapping(0, (0, 0, 0), 10, "#ff8000")
        np.testing.assert_allclose(mapping.color(5), (0.5, 64 / 255, 0, 1), atol=1e-6)
        colours = mapping.color([[0, 10, math.nan]])
        self.assertEqual(colours.shape, (1, 3, 4))
        np.testing.assert_allclose(colours[0, 1], (1, 128 / 255, 0, 1), atol=1e-6)
        np.testing.assert_array_equal(colours[0, 2], 0)
        mapping.setMaxThreshold(8)
        mapping.enableThresholds(False, True)
        self.assertIsNone(mapping.color(9))
        self.assertIsNone(mapping.getRGBColor(math.nan))

    def test_tables(self):
        steps = ormelle.PbNonLinearDataMapping2([1, 2], ["#000000", "#ff0000", "#ffffff"])
        self.assertEqual(steps.getType(), ormelle.PbNonLinearDataMapping2.NON_LINEAR_PER_LEVEL)
        self.assertEqual(steps.getRGBColor(1.5), (1, 0, 0))
        ramp = ormelle.PbNonLinearDataMapping2([2, 1], ["#ffffff", "#000000"], [0.5, 0])
        np.testing.assert_allclose(ramp.getRGBColor(1.25), (0.25,) * 3, atol=1e-6)
        ramp.enableTransparency(True)
        self.assertAlmostEqual(ramp.color(2)[3], 0.5)
        for values, colours in (([1, 2], ["#000000"]), ([], []), ([math.nan], ["#000000"]), ([1], ["redd"]), ([1], [(2, 0, 0)]), ([1], ["#12345678"])):
            with self.subTest(values=values, colours=colours), self.assertRaises(ValueError):
                ormelle.PbNonLinearDataMapping2(values, colours)

    def test_colours_by_name(self):
        for colour, numbers in (("navy", (0, 0, 128)), ("SteelBlue", (70, 130, 180)), ("#0a8", (0, 170, 136)), ("#ff8000", (255, 128, 0)),
                                ((1, 0, 0.2), (255, 0, 51)), (np.array([0, 0, 1]), (0, 0, 255))):
            with self.subTest(colour=colour):
                np.testing.assert_allclose(ormelle.rgb(colour), np.array(numbers) / 255, atol=1e-6)
        for wrong in ("", "nav", "navy blue", "blue=0000ff brown", "#12", "#gggggg", (0, 1), (0, 0, 256), (0, 0, -1), None, 3, "\ud800"):
            with self.subTest(wrong=wrong), self.assertRaises((ValueError, TypeError)):
                ormelle.rgb(wrong)

    def test_scales_by_name(self):
        scale = ormelle.colours("viridis", 0, 10)
        np.testing.assert_allclose(scale.color(0)[:3], ormelle.rgb("#440154"), atol=1e-6)
        np.testing.assert_allclose(scale.color(10)[:3], ormelle.rgb("#fde725"), atol=1e-6)
        np.testing.assert_allclose(scale.color(5)[:3], ormelle.rgb("#21918c"), atol=5 / 255)  # of the original table
        np.testing.assert_allclose(ormelle.colours("viridis_r", 0, 10).color(3), scale.color(7), atol=1e-5)
        own = ormelle.colours(["white", "navy"], np.array([2, np.nan, 6]))
        np.testing.assert_allclose(own.color(4)[:3], (0.5, 0.5, (1 + 128 / 255) / 2), atol=1e-5)
        steps = ormelle.colours(["black", "white"], 0, 4, steps=4)
        np.testing.assert_allclose(steps.color([0.5, 1.5, 2.5, 3.5])[:, 0], [0, 1 / 3, 2 / 3, 1], atol=1e-6)
        self.assertLess(ormelle.colours("Greys", [3, 3]).getValuesList()[0], 3)
        for arguments in (("jet", 0, 1), ("viridis", 1, 0), ("viridis", 0, math.nan), ("viridis", 3), ("viridis", []),
                          (["navy"], 0, 1), (["navy", "nevy"], 0, 1), (3, 0, 1), ("viridis", "a", "b")):
            with self.subTest(arguments=arguments), self.assertRaises((ValueError, TypeError)):
                ormelle.colours(*arguments)
        with self.assertRaisesRegex(ValueError, "steps"):
            ormelle.colours("viridis", 0, 1, steps=1)

    def test_functions_of_python(self):
        mapping = ormelle.PbNonLinearDataMapping(lambda value: None if value < 0 else (value, 0, 0))
        self.assertEqual(mapping.getRGBColor(0.5), (0.5, 0, 0))
        self.assertIsNone(mapping.getRGBColor(-1))
        mapping.setTransparencyFunction(lambda value: value)
        mapping.enableTransparency(True)
        self.assertAlmostEqual(mapping.color(0.25)[3], 0.75)
        with self.assertRaises(TypeError):
            mapping.setRGBFunction(3)
        mapping.setRGBFunction(None)
        self.assertEqual(mapping.getRGBColor(1), (1, 1, 1))

    def test_functions_that_fail(self):
        for error, function in ((ZeroDivisionError, lambda value: 1 / 0), (ValueError, lambda value: "nonsense"),
                                (TypeError, lambda: None)):
            with self.subTest(error=error), self.assertRaises(error):
                ormelle.PbNonLinearDataMapping(function).getRGBColor(1)


class Others(unittest.TestCase):
    def test_objects_describe_themselves(self):
        numbers = ormelle.PbNumericDisplayFormat("FLOAT_FORMAT", 3, 2)
        cases = {
            'PbLinearDataMapping: 0 "#0000ff" to 11.5 "#ff0000"': ormelle.PbLinearDataMapping(0, "blue", 11.5, "red"),
            'PbNonLinearDataMapping2: "#ff0000", "#000080", mixed between 1, 2': ormelle.PbNonLinearDataMapping2([1, 2], ["red", "navy"]),
            "PbNonLinearDataMapping: colours by a function": ormelle.PbNonLinearDataMapping(),
            "PbIsovaluesList: 8 levels, 300, 400, 500, ..., 1000": ormelle.PbIsovaluesList(range(300, 1100, 100)),
            "PbIsovaluesList: 2 levels, 1, 5": ormelle.PbIsovaluesList([5, 1]),
            "PbDomain: x 0 to 2, y 1 to 3, z 0 to 1, SCALE_X_FIXED": ormelle.PbDomain(0, 1, 2, 3),
            "PbNumericDisplayFormat: FLOAT_FORMAT, 2 decimals of 10^3": numbers,
            'PbDateFormatMapping: "1-01-1992" at 0, "31-12-1992" at 365, format "dmY"':
                ormelle.PbDateFormatMapping("1-01-1992", "31-12-1992", 0, 365, "dmY"),
            'PbMiscTextAttr: font "Open Sans"': ormelle.PbMiscTextAttr("Open Sans"),
            "Location: cell 0 at (0.5, 0.5, 0), nodes 0, 2, 3, 1": ormelle.PbRegularCartesianGrid2D(2, 2, 0, 0, 1, 1).locate((0.5, 0.5)),
            "Camera: direction=(0, 0, -1), up=(0, 1, 0)": ormelle.Camera(),
        }
        for text, thing in cases.items():
            self.assertEqual(repr(thing), f"<ormelle.{text}>")
        for name in ormelle.__all__:
            if name.startswith("Pb"):
                try:
                    thing = getattr(ormelle, name)()
                except TypeError:
                    continue
                self.assertTrue(repr(thing).startswith(f"<ormelle.{name}: "), repr(thing))

    def test_isovalues(self):
        levels = ormelle.PbIsovaluesList(0, 10, 11)
        self.assertEqual(len(levels), 11)
        self.assertEqual(levels.getLowerIsovalue(4.5), 4)
        self.assertEqual(list(ormelle.PbIsovaluesList([3, 1, 2])), [1, 2, 3])
        for arguments in ((0, 1, 0), (0, math.nan, 2), ([],), ([1, math.inf],), ("ab",)):
            with self.subTest(arguments=arguments), self.assertRaises((ValueError, TypeError)):
                ormelle.PbIsovaluesList(*arguments)

    def test_domain(self):
        self.assertEqual(ormelle.PbDomain(1, 2, 3, 4).getDomain(), (1, 2, 0, 3, 4, 1))
        self.assertEqual(ormelle.PbDomain((0, 0, 0), (1, 2, 3)).getDomain(), (0, 0, 0, 1, 2, 3))
        for sides in ((1, 2), (0, 0, 0, 1), (0, 0, math.inf, 1), ((0, 0), 1)):
            with self.subTest(sides=sides), self.assertRaises(ValueError):
                ormelle.PbDomain(*sides)

    def test_dates(self):
        dates = ormelle.PbDateFormatMapping("1-01-1992", "31-12-1992", 0, 365, "dmY")
        self.assertEqual(dates.getCoordinate("14-07-1992"), 195)
        with self.assertRaisesRegex(ValueError, "dmY"):
            dates.getCoordinate("soon")
        with self.assertRaisesRegex(ValueError, "character 2"):
            dates.setFormat("dq")


if __name__ == "__main__":
    unittest.main()
