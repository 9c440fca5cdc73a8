"""Scientific visualisation and charting in scene graphs, together with Pivy and NumPy.

Data objects (PbRegularCartesianGrid2D, PbLinearDataMapping, ...) hold numbers and share the arrays of NumPy that they are
made of. Nodes (PoMeshFilled, PoLinearValueLegend, ...) show them. A node of Ormelle is a node of Pivy, too: it goes into
any scene graph, and fields and parts are attributes.

    import numpy, ormelle

    grid = ormelle.PbRegularCartesianGrid2D(3, 4, 0, 0, 2, 3)
    grid.set_values("height", numpy.arange(12.0).reshape(3, 4))
    colours = ormelle.PbLinearDataMapping(0, "#0000ff", 11, "#ff0000")
    surface = ormelle.PoMeshFilled(mesh=grid, dataMapping=colours, valuesIndex=0, coloringType="COLOR_MAPPING")
    picture = ormelle.render(surface, size=(400, 300))
"""

import atexit as _atexit

from . import _core, _nodes
from ._core import *  # noqa: F403  (the classes of data objects)
from ._nodes import cast, group
from ._pictures import Camera, Picture, read, render, show, write
from ._core import SceneError, get_num_threads, release_pictures, set_num_threads

__version__ = _core.version

# The context of OpenGL goes while the toolkit is still whole.
_atexit.register(release_pictures)

for _class in [*vars(_core).values()]:
    if isinstance(_class, type) and _class.__module__ == "ormelle._core":
        _class.__module__ = "ormelle"

_DATA = sorted(name for name in vars(_core) if name.startswith("Pb") or name == "Location")
_FUNCTIONS = ["Camera", "Picture", "SceneError", "cast", "get_num_threads", "group", "read", "release_pictures", "render",
              "set_num_threads", "show", "write"]
__all__ = _FUNCTIONS + _DATA + _nodes.names()


def __getattr__(name):
    try:
        return _nodes.node_class(name)
    except KeyError:
        raise AttributeError(f"module 'ormelle' has no attribute '{name}'") from None


def __dir__():
    return sorted(set(__all__) | {"__version__"})
