"""Pictures and files of scenes."""

import os
import struct
import zlib

import numpy
from pivy import coin

from . import _core
from ._nodes import cast


class Camera:
    """From where to look at a scene that then fills the picture.

    direction, up: vectors; what is along `up` points upwards in the picture, as far as it can.
    orthographic: whether parallels stay parallel.
    margin, headroom: the parts of the picture left free on each side, and above that for a title.
    """

    def __init__(self, direction=(0, 0, -1), up=(0, 1, 0), orthographic=False, margin=0.04, headroom=0.0):
        self._viewpoint = _core.Viewpoint(direction, up, orthographic, margin, headroom)


class Picture:
    """A picture, which notebooks show."""

    def __init__(self, array):
        self.array = array

    def _repr_png_(self):
        return png(self.array)

    def save(self, path):
        """Writes a PNG file."""
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


def render(scene, size=(1200, 900), background=(1, 1, 1), samples=4, camera=None):
    """Draws a scene, without a screen, into an array of shape (height, width, 4): red, green, blue and opacity, a byte each.

    scene: a node of Pivy or of Ormelle. It may have lights and a camera, or not.
    size: width and height in pixels.
    background: a colour; with a fourth number its opacity; None for a transparent picture.
    samples: how many drawings, each shifted by another part of a pixel, the picture is the mean of; 16 is good.
    camera: a Camera, or the direction of looking as three numbers, which both see the whole scene; or a camera of Pivy for
        a scene that has none. Without it, the scene's own camera counts, else a usual view.

    What the library complains of meanwhile becomes warnings.
    """
    width, height = size
    opacity = 1.0
    if background is None:
        background, opacity = (1, 1, 1), 0.0
    elif not isinstance(background, str) and len(background) == 4:
        background, opacity = background[:3], background[3]
    viewpoint = None
    if isinstance(camera, Camera):
        viewpoint = camera._viewpoint
    elif isinstance(camera, coin.SoCamera):
        if _core.has_camera(scene):
            raise ValueError("the scene has a camera of its own; take it out, or give a direction")
        stage = coin.SoSeparator()
        stage.addChild(camera)
        stage.addChild(scene)
        scene = stage
    elif camera is not None:
        viewpoint = Camera(camera)._viewpoint
    return _core.render(scene, width, height, background, opacity, samples, viewpoint)


def show(scene, size=(800, 600), **options):
    """Draws a scene into a Picture, which a notebook shows. Arguments are those of render()."""
    return Picture(render(scene, size, **options))


def read(path):
    """Reads a scene file. SceneError, in a sentence, if that isn't wholly possible."""
    return cast(_core.read(os.fspath(path)))


def write(scene, path, binary=False):
    """Writes a scene as a file that all programs of the toolkit read. The file is there whole or not at all.

    Data objects that were given to kits by functions aren't part of a scene: put them into nodes, as in
    PoRegularCartesianGrid2D(grid).
    """
    _core.write(scene, os.fspath(path), binary)
