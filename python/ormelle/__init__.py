"""Scientific visualisation and charting in scene graphs, together with Pivy and NumPy.

Data objects hold numbers and share the arrays of NumPy that they are made of. Nodes show them. A node of Ormelle is a node
of Pivy, too: it goes into any scene graph, and fields, parts and data objects are attributes.

    import numpy, ormelle

    grid = ormelle.PbRegularCartesianGrid2D(3, 4, 0, 0, 2, 3)
    grid.set_values("height", numpy.arange(12.0).reshape(3, 4))
    colours = ormelle.colours("viridis", grid.values("height"))
    surface = ormelle.PoMeshFilled(grid, colours)
    legend = ormelle.PoLinearValueLegend(colours, start=(2.2, 0), end=(2.4, 3))
    ormelle.save([surface, legend], "height.png")

Where to begin

    a mesh of your numbers    ormelle.PbRegularCartesianGrid2D and the other classes below; mesh.set_values(name, array)
    colours for values        ormelle.colours("viridis", 0, 10); wherever a colour is taken: "navy", "#1f77b4", (0, 0, 1)
    a kit that shows it       help(ormelle.PoMeshFilled) tells what one draws, its fields, data objects and parts
    several together          ormelle.group(kit, another, ormelle.SoBaseColor(rgb="navy"), lines)
    pictures and files        ormelle.show(scene) in a notebook, ormelle.render(scene) as an array,
                              ormelle.save(scene, "picture.svg"), ormelle.write(scene, "scene.iv"), ormelle.read("scene.iv")

Data objects

{data}

Nodes

{nodes}

The toolkit's own nodes are there under their names, ormelle.SoMaterial(diffuseColor="navy") and so on.
"""

try:
    import numpy as _numpy
    from pivy import coin as _coin
except ModuleNotFoundError as _error:
    # Only a package that isn't there at all; one that doesn't work says itself what ails it.
    _packages = {"numpy": ("NumPy", "numpy"), "pivy": ("Pivy", "pivy"), "pivy.coin": ("Pivy", "pivy")}
    if _error.name not in _packages:
        raise
    raise ModuleNotFoundError("ormelle needs {0}, which this Python doesn't have: install python3-{1} with the system's packages "
                              "(apt install python3-{1}), and use the Python that they are for".format(
                                  *_packages[_error.name]), name=_error.name) from None

import atexit as _atexit
import sys as _sys

try:
    from . import _core
except ModuleNotFoundError as _error:
    if _error.name != "ormelle._core":
        raise
    raise ModuleNotFoundError("ormelle was built for another version of Python than this one, "
                              "{}.{}".format(*_sys.version_info), name=_error.name) from None

from . import _calls, _data

_calls.adopt_all()
_data.add_descriptions()

from . import _nodes
from ._core import *  # noqa: F403  (the classes of data objects)
from ._core import SceneError, get_num_threads, release_pictures, set_num_threads
from ._data import colours, rgb
from ._nodes import cast, group
from ._pictures import Camera, Picture, read, render, save, show, write

__version__ = _core.version
SceneError.__module__ = "ormelle"

# The context of OpenGL goes while the toolkit is still whole.
_atexit.register(release_pictures)

_DATA = sorted(name for name in vars(_core) if name.startswith("Pb") or name == "Location")
_FUNCTIONS = ["Camera", "Picture", "SceneError", "cast", "colours", "get_num_threads", "group", "read", "release_pictures",
              "render", "rgb", "save", "set_num_threads", "show", "write"]
__all__ = _FUNCTIONS + _DATA + _nodes.names()


def __getattr__(name):
    try:
        return _nodes.node_class(name)
    except KeyError:
        pass
    import difflib
    close = difflib.get_close_matches(name, __all__, 1)
    raise AttributeError(f"module 'ormelle' has no attribute '{name}'" + (f"; is '{close[0]}' meant?" if close else ""))


def __dir__():
    # help() of the module would print each class with all that Pivy gives it, tens of thousands of lines.
    frame, callers = _sys._getframe(1), []
    while frame and len(callers) < 4:
        callers.append(frame.f_globals.get("__name__"))
        frame = frame.f_back
    names = [name for name in _FUNCTIONS if not isinstance(globals()[name], type)] if "pydoc" in callers else __all__
    return sorted({*names, "__version__"})


__doc__ = __doc__.format(data=_nodes.listed(_DATA), nodes=_nodes.listed(_nodes.names()))
