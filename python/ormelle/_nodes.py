"""Classes for the nodes of the library, made of what the toolkit tells about them when the program runs."""

import difflib
import textwrap

from pivy import coin

from . import _core
from ._docs import DOCS

_parents = dict(_core.node_classes())
_classes = {}


def group(*nodes):
    """A separator that holds these nodes."""
    separator = coin.SoSeparator()
    for node in nodes:
        if not isinstance(node, coin.SoNode):
            raise TypeError(f"a group holds nodes, not {type(node).__name__}")
        separator.addChild(node)
    return separator


def names():
    """The names of all classes of nodes."""
    return sorted(_parents)


def node_class(name):
    """The class of nodes of this name. It is made on first use; KeyError if there is none."""
    if name not in _classes:
        _classes[name] = _make_class(name, _parents[name])
    return _classes[name]


def cast(node):
    """The node as an object of its own class of Ormelle, if it has one, which keeps the node alive.

    What comes out of a scene graph through Pivy (getChild() and the like) is an object of Pivy's nearest class, without the
    functions that Ormelle adds, and doesn't keep its node alive.
    """
    if node is None or isinstance(node, OrmelleNode):
        return node
    name = _core.class_name(node)
    if name not in _parents:
        return node
    cls = node_class(name)
    wrapped = cls.__new__(cls)
    wrapped._hold(_core.make_proxy(node))
    return wrapped


class OrmelleNode:
    """What the classes of nodes of Ormelle have beside those of Pivy.

    Fields, parts and data objects are attributes, and may be given by name when the node is made: `node.valuesIndex = 0` sets
    a field, to a number, a text, the name of a value of an enumeration, a list or an array; `node.valuesIndex` is the field
    itself, as in Pivy. `kit.mesh = mesh` is `kit.setMesh(mesh)`. `kit.appearance.drawStyle.lineWidth = 2` makes the parts
    that it passes.
    """

    def __init__(self, data=None, **values):
        self._hold(_core.make_node(_MADE_AS.get(self._type_name, self._type_name)))
        if data is not None:
            self._take(data)
        for name, value in values.items():
            setattr(self, name, value)

    def _hold(self, proxy):
        self.__dict__.update(this=proxy.this, _reference=proxy._reference)

    def _take(self, data):
        raise TypeError(f"{type(self).__name__} takes its values by name, not {type(data).__name__}")

    @classmethod
    def getClassTypeId(cls):
        """The type of the class in the toolkit."""
        return coin.SoType.fromName(cls._type_name)

    def __setattr__(self, name, value):
        if name.startswith("_") or name in ("this", "thisown") or isinstance(getattr(type(self), name, None), property):
            object.__setattr__(self, name, value)
        elif name in self._data:
            _core.set_data(self, self._data[name], value)
        elif name in self._parts:
            if value is not None and not isinstance(value, coin.SoNode):
                raise TypeError(f"{type(self).__name__}.{name} is a part, which must be a node, not {value!r}")
            if not self.setPart(name, value):
                raise TypeError(f"{type(self).__name__}.{name} must be a {self._parts[name]}, not {value!r}")
        elif name in self._fields:
            if not _core.set_field(self, name, value):
                self.getField(name).setValue(value)
        else:
            raise AttributeError(self._unknown(name))

    def __getattr__(self, name):
        # Names that Python itself asks for must not reach the kit, which would make parts of them.
        if name.startswith("_") or name == "this":
            raise AttributeError(name)
        if name in self._fields:
            return self.getField(name)
        if name in self._data:
            return _core.get_data(self, self._data[name])
        if name in self._parts:
            return self.getPart(name, True)
        raise AttributeError(self._unknown(name))

    def _unknown(self, name):
        known = [*self._fields, *self._parts, *self._data, *(each for each in dir(type(self)) if not each.startswith("_"))]
        close = difflib.get_close_matches(name, known, 1)
        return f"{type(self).__name__} has no attribute '{name}'" + (f"; is '{close[0]}' meant?" if close else "")

    def __dir__(self):
        return sorted({*object.__dir__(self), *self._fields, *self._parts, *self._data})

    def __repr__(self):
        return f"<ormelle.{type(self).__name__}>"

    def copy(self, copyConnections=False):
        """A copy of the node with the same data objects."""
        twin = cast(super().copy(copyConnections))
        for slot in self._data.values():
            data = _core.get_given_data(self, slot)
            if data is not None:
                _core.set_data(twin, slot, data)
        return twin


class _MeshNode:
    """What the nodes that hold a mesh have beside the others."""

    def _take(self, data):
        self.setMesh(data)

    def getMesh(self):
        """The mesh, which belongs to the node and copies all arrays that it is given."""
        return _core.get_mesh(self)

    def setMesh(self, mesh):
        """Makes the node's mesh a copy of one of the same kind, with its data sets."""
        if not isinstance(mesh, _core.PbMesh):
            raise TypeError(f"{type(self).__name__} holds a mesh, not {type(mesh).__name__}")
        mesh._copyTo(self)

    def setGeometry(self, *arguments, **named):
        """As the function of the mesh with this name."""
        self.getMesh().setGeometry(*arguments, **named)
        self.touch()

    def addValuesSet(self, *arguments, **named):
        """As the function of the mesh with this name."""
        self.getMesh().addValuesSet(*arguments, **named)
        self.touch()

    def addVecsSet(self, *arguments, **named):
        """As the function of the mesh with this name."""
        self.getMesh().addVecsSet(*arguments, **named)
        self.touch()

    def addStringsSet(self, *arguments, **named):
        """As the function of the mesh with this name."""
        self.getMesh().addStringsSet(*arguments, **named)
        self.touch()


class _CellFilter:
    """Says which cells of a mesh the kits behind it show: sections, skins, level surfaces, streams.

        filter = ormelle.PoCellFilter(temperature > 20)   # an array of True and False, one for each cell
        filter = ormelle.PoCellFilter(lambda cell, value: cell % 2 == 0)
        scene = ormelle.group(filter, ormelle.PoMeshSkin(mesh=grid))

    See setCells(). PoIntervalCellFilter is one by the values of cells, which files keep, too.
    """

    def _take(self, data):
        self.setCells(data)

    def setCells(self, cells):
        """What to show: an array with True or False for each cell of the mesh, by the index of cells, or in the shape of a
        grid's cells; or a function of a cell's index and its value in the kit's set `valuesIndexForCellFilter` (0 without
        one), which is far slower. None shows all cells. An array in C order is shared: after changes in it, call touch().
        """
        _core.set_cells(self, cells)

    def getCells(self):
        """The array or the function."""
        return _core.get_cells(self)

    cells = property(getCells, setCells)


_EXTRAS = {"PoMeshProperty": _MeshNode, "PoCellFilter": _CellFilter}
_MADE_AS = {"PoCellFilter": "PythonCellFilter"}  # abstract in C++


def _make_class(name, parent):
    if parent in _parents:
        bases = (node_class(parent),)
    else:
        bases = (OrmelleNode, _pivy_class(parent))
    if name in _EXTRAS:
        bases = (_EXTRAS[name], *bases)
    about = _core.describe(name)
    slots = _core.data_slots(name)
    members = {
        "__module__": "ormelle",
        "__doc__": _EXTRAS[name].__doc__ if name in _MADE_AS else _docstring(name, about),
        "_type_name": name,
        "_fields": about["fields"],
        "_parts": about["parts"],
        "_data": {slot[0].lower() + slot[1:]: slot for slot in slots if slot not in about["fields"]},
    }
    for field_type, default, values in about["fields"].values():
        members.update((value, number) for value, number in values.items() if value.isidentifier())
    for slot, wanted in slots.items():
        members["set" + slot] = _setter(slot, wanted)
        members["get" + slot] = _getter(slot, wanted)
    members.update(_core.node_members.get(name, {}))
    return type(name, bases, members)


def _pivy_class(name):
    """Pivy's class for a type of the toolkit, or for the nearest one above it."""
    kind = coin.SoType.fromName(name)
    while not kind.isBad():
        found = getattr(coin, "So" + kind.getName().getString(), None)
        if found is not None:
            return found
        kind = kind.getParent()
    return coin.SoNode


def _setter(slot, wanted):
    def setter(self, data):
        _core.set_data(self, slot, data)

    setter.__name__ = "set" + slot
    setter.__doc__ = (f"The {wanted} to use instead of that on the traversal state; None goes back to that. The node keeps "
                      "it alive.")
    return setter


def _getter(slot, wanted):
    def getter(self):
        return _core.get_data(self, slot)

    getter.__name__ = "get" + slot
    getter.__doc__ = f"The {wanted} that was set, else None or the node's own."
    return getter


def _field_text(name, field):
    """What the headers say of a field, in the class that it comes from."""
    while name in _parents:
        text = DOCS.get(name, ("", {}))[1].get(field)
        if text:
            return text
        name = _parents[name]
    return ""


def _docstring(name, about):
    lines = [DOCS.get(name, ("", {}))[0] or f"A {_parents[name]}."]
    if about["isAbstract"] and name not in _MADE_AS:
        lines.append("\nAn abstract class.")
    if about["fields"]:
        lines.append("\nFields:")
    for field, (field_type, default, values) in about["fields"].items():
        default = " ".join(default.split())
        if field_type.endswith("UShort") and default.startswith("0x"):
            default = str(int(default, 16))
        shown = f" = {default}" if default and len(default) <= 60 else ""
        lines.append(f"    {field} ({field_type}{shown})")
        if values:
            lines.append(textwrap.fill("one of " + ", ".join(values), 100, initial_indent=" " * 8,
                                       subsequent_indent=" " * 8))
        text = _field_text(name, field)
        if text:
            lines.append(textwrap.fill(" ".join(text.split()), 100, initial_indent=" " * 8, subsequent_indent=" " * 8))
    slots = _core.data_slots(name)
    if slots:
        lines.append("\nData objects: " + ", ".join(f"{slot[0].lower() + slot[1:]} ({kind})" for slot, kind in slots.items()))
    if about["parts"]:
        lines.append("\nParts: " + ", ".join(f"{part} ({kind})" for part, kind in about["parts"].items()))
    return "\n".join(lines)
