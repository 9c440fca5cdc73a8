"""Pictures and files of scenes."""

from __future__ import annotations

import os
import struct
import warnings
import zlib
from collections.abc import Sequence

import numpy
from pivy import coin

from . import _core
from ._calls import kind_of, shortened
from ._data import Colour
from ._nodes import cast, group

Scene = "coin.SoNode | Sequence[coin.SoNode]"


class Camera:
    """From where to look at a scene that then fills the picture.

    direction, up: vectors; what is along `up` points upwards in the picture, as far as it can.
    orthographic: whether parallels stay parallel.
    margin, headroom: the parts of the picture left free on each side, and above that for a title.
    """

    def __init__(self, direction: Sequence[float] = (0, 0, -1), up: Sequence[float] = (0, 1, 0),
                 orthographic: bool = False, margin: float = 0.04, headroom: float = 0.0):
        self._viewpoint = _core.Viewpoint(direction, up, orthographic, margin, headroom)
        self._shown = f"direction={direction}, up={up}" + (", orthographic=True" if orthographic else "")

    def __repr__(self):
        return f"<ormelle.Camera: {self._shown}>"


class Picture:
    """A picture, which notebooks show."""

    def __init__(self, array: numpy.ndarray):
        self.array = array

    def _repr_png_(self):
        return png(self.array)

    def save(self, path: str | os.PathLike) -> None:
        """Writes a PNG file. For drawings that can be enlarged (SVG, PDF) there is ormelle.save(scene, path)."""
        path = os.fspath(path)
        if not path.lower().endswith(".png"):
            raise ValueError(f"{path}: a picture is saved as .png; ormelle.save(scene, ...) writes .svg and .pdf, too")
        with open(path, "wb") as file:
            file.write(png(self.array))

    def __repr__(self):
        height, width = self.array.shape[:2]
        return f"<ormelle.Picture: {width} x {height} pixels>"


def png(array):
    """The bytes of a PNG file. Without a channel of opacity if all is opaque."""
    if (array[..., 3] == 255).all():
        array = array[..., :3]
    height, width, channels = array.shape
    # Each row as its differences from the one above (filter 2), which deflates better.
    rows = numpy.full((height, 1 + width * channels), 2, numpy.uint8)
    rows[:, 1:] = array.reshape(height, -1)
    rows[1:, 1:] -= array[:-1].reshape(height - 1, -1)

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    header = struct.pack(">IIBBBBB", width, height, 8, {3: 2, 4: 6}[channels], 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows.tobytes(), 9)) +
            chunk(b"IEND", b""))


def _size(size):
    try:
        width, height = size
    except (TypeError, ValueError):
        raise TypeError(f"the size of a picture is its width and its height, not {shortened(size)}") from None
    return width, height


def _scene(scene):
    if isinstance(scene, (list, tuple)):
        return group(*scene)
    if not isinstance(scene, coin.SoNode):
        raise TypeError(f"a scene is a node or a list of nodes, not {kind_of(scene)}")
    return scene


def _staged(scene, camera):
    """The scene, in front of a camera of Pivy if there is one, and where to look at it from, else None."""
    scene = _scene(scene)
    if camera is None:
        return scene, None
    if isinstance(camera, Camera):
        return scene, camera._viewpoint
    if isinstance(camera, coin.SoCamera):
        if _core.has_camera(scene):
            raise ValueError("the scene has a camera of its own; take it out, or give a direction")
        return group(camera, scene), None
    return scene, Camera(camera)._viewpoint


def render(scene: Scene, size: Sequence[int] = (1200, 900), background: Colour | None = (1, 1, 1), samples: int = 4,
           camera: Camera | Sequence[float] | coin.SoCamera | None = None) -> numpy.ndarray:
    """Draws a scene, without a screen, into an array of shape (height, width, 4): red, green, blue and opacity, a byte each.

    scene: a node of Pivy or of Ormelle, or a list of nodes. It may have lights and a camera, or not.
    size: width and height in pixels.
    background: a colour, by name, as "#rrggbb", or three numbers; with a fourth number (or "#rrggbbaa") its opacity; None
        for a transparent picture.
    samples: how many drawings, each shifted by another part of a pixel, the picture is the mean of; 16 is good.
    camera: a Camera, or the direction of looking as three numbers, which both see the whole scene; or a camera of Pivy for
        a scene that has none. Without it, the scene's own camera counts, else a usual view.

    What the library complains of meanwhile becomes warnings.
    """
    width, height = _size(size)
    scene, viewpoint = _staged(scene, camera)
    return _core.render(scene, width, height, background, samples, viewpoint)


def show(scene: Scene, size: Sequence[int] = (800, 600), **options) -> Picture:
    """Draws a scene into a Picture, which a notebook shows. Arguments are those of render()."""
    return Picture(render(scene, size, **options))


def notebook_picture(node):
    """The PNG file that a notebook shows for a node; None if it draws nothing."""
    action = coin.SoGetBoundingBoxAction(coin.SbViewportRegion(800, 600))
    action.apply(node)
    return None if action.getBoundingBox().isEmpty() else png(render(node, (800, 600)))


def save(scene: Scene, path: str | os.PathLike, size: Sequence[int] = (1200, 900),
         background: Colour | None = (1, 1, 1), samples: int = 4,
         camera: Camera | Sequence[float] | coin.SoCamera | None = None, dpi: float = 96) -> None:
    """Draws a scene into a file, of which the name's ending says the kind:

    .png: a picture of pixels, with `samples` as in render().
    .svg, .pdf: a drawing of lines, areas and texts, `dpi` pixels an inch.
    .glb, .gltf, .wrl: a model of what the scene shows, for programs of others.
    .iv: the scene itself, as write() does.

    Other arguments are those of render(). The file is there whole or not at all. A warning tells what it can't hold.
    """
    path = os.fspath(path)
    ending = os.path.splitext(path)[1].lower()
    if ending == ".iv":
        return write(scene, path)
    if ending == ".png":
        return show(scene, size, background=background, samples=samples, camera=camera).save(path)
    if ending not in (".svg", ".pdf", ".glb", ".gltf", ".wrl"):
        raise ValueError(f"{path}: the name of a picture ends with .png, .svg or .pdf, that of a model with .glb, .gltf or .wrl, "
                         "that of a scene with .iv")
    width, height = _size(size)
    scene, viewpoint = _staged(scene, camera)
    note = _core.save(scene, path, width, height, background, dpi, viewpoint)
    if note:
        warnings.warn(f"{path}: {note}", stacklevel=2)


def read(path: str | os.PathLike) -> coin.SoNode:
    """Reads a scene file. SceneError, in a sentence, if that isn't wholly possible."""
    return cast(_core.read(os.fspath(path)))


def write(scene: Scene, path: str | os.PathLike, binary: bool = False) -> None:
    """Writes a scene as a file that all programs of the toolkit read. The file is there whole or not at all.

    Data objects that were given to kits by functions aren't part of a scene: put them into nodes, as in
    PoRegularCartesianGrid2D(grid).
    """
    _core.write(_scene(scene), os.fspath(path), binary)
