"""Classes for the nodes of the library, made of what the toolkit tells about them when the program runs."""

from __future__ import annotations

import difflib
import inspect
import keyword
import re
import textwrap

from pivy import coin

from . import _core
from ._calls import Shown, kind_of, wrapped
from ._docs import DOCS

_parents = dict(_core.node_classes())
_classes = {}

# What fields of Pivy take of its objects, by the kind of field without SF or MF.
_PIVY_VALUES = {"Vec2f": coin.SbVec2f, "Vec3f": coin.SbVec3f, "Vec4f": coin.SbVec4f, "Plane": coin.SbPlane,
                "Color": (coin.SbColor, coin.SbVec3f), "Rotation": coin.SbRotation, "Matrix": coin.SbMatrix, "Time": coin.SbTime,
                "String": (coin.SbString, coin.SbName), "Name": (coin.SbName, coin.SbString), "Path": coin.SoPath}

# Fields that take the index of a set of the mesh.
_SET_INDEX = re.compile(r"\w*[vV]aluesIndex\w*|vecsIndex|thicknessIndex")


def group(*nodes: coin.SoNode | list) -> coin.SoSeparator:
    """A separator that holds these nodes, or those of lists of nodes."""
    return node_class("SoSeparator")(*nodes)


def names():
    """The names of all classes of nodes."""
    return sorted(_parents)


def takes_set(field):
    """Whether a field of this name takes the index of a set of the mesh."""
    return _SET_INDEX.fullmatch(field) is not None


def listed(names):
    """Names as lines of a page."""
    return textwrap.fill(", ".join(names), 100, initial_indent="    ", subsequent_indent="    ")


def node_class(name):
    """The class of nodes of this name. It is made on first use; KeyError if there is none.

    The toolkit's own classes (SoMaterial ...) are there, too: classes of Pivy, with fields like those of our nodes.
    """
    if name not in _classes:
        if not name.startswith(("Po", "So")):
            raise KeyError(name)
        _classes[name] = _make_class(name, _parents.get(name))
    return _classes[name]


def cast(node: coin.SoNode) -> coin.SoNode:
    """The node as an object of its own class of Ormelle, if it has one, which keeps the node alive.

    What comes out of a scene graph through Pivy (getChild() and the like) is an object of Pivy's nearest class, without the
    functions that Ormelle adds, and doesn't keep its node alive.
    """
    if node is None or isinstance(node, OrmelleNode):
        return node
    name = _core.class_name(node)
    return _held(node, name) if name in _parents else node


def _held(node, name):
    """The node as an object of a class of ours, which keeps it alive."""
    held = object.__new__(node_class(name))
    held._hold(_core.make_proxy(node))
    return held


def _part(node):
    """What a kit hands out, as an object whose fields take what those of kits take."""
    if node is None or isinstance(node, OrmelleNode):
        return node
    return _held(node, _core.class_name(node) or "So" + node.getTypeId().getName().getString())


class OrmelleNode:
    """What the classes of nodes of Ormelle have beside those of Pivy.

    Fields, parts and data objects are attributes, and may be given by name when the node is made: `node.valuesIndex = 0` sets
    a field, to a number, a text, the name of a value of an enumeration, a colour, a list or an array; `node.valuesIndex` is
    the field itself, as in Pivy. A field that takes the index of a set takes its name, too, once the node has a mesh.
    `kit.mesh = mesh` is `kit.setMesh(mesh)`. `kit.appearance.drawStyle.lineWidth = 2` makes the parts that it passes.

    Data objects may also be given without a name: `PoMeshFilled(grid, colours)`. What isn't said then is what one would
    expect: sets are the first ones of the mesh, and the kit is coloured if there is a data mapping, in bands if there are
    isovalues, too.
    """

    def __init__(self, *data, **values):
        self._hold(_core.make_node(_MADE_AS.get(self._type_name, self._type_name)))
        for each in data:
            if each is not None:
                self._take(each)
        # Names of sets are looked up in the mesh.
        for name in sorted(values, key=lambda name: name not in self._data):
            if name in self._data and _core.get_given_data(self, self._data[name]) is not None:
                raise TypeError(f"{type(self).__name__} got its {name} twice")
            setattr(self, name, values[name])
        if data:
            self._complete(values)

    def _hold(self, proxy):
        self.__dict__.update(this=proxy.this, _reference=proxy._reference)

    def _take(self, data):
        """Takes an argument without a name."""
        children = data if isinstance(data, (list, tuple)) else [data]
        if isinstance(self, coin.SoGroup) and not self._type_name.startswith("Po"):
            for child in children:
                if not isinstance(child, coin.SoNode):
                    raise TypeError(f"a group holds nodes, not {kind_of(child)}")
                self.addChild(child)
            return
        for name, slot in self._data.items():
            if isinstance(data, getattr(_core, self._slots[slot])):
                if _core.get_given_data(self, slot) is not None:
                    raise TypeError(f"{type(self).__name__} got its {name} twice")
                _core.set_data(self, slot, data)
                return
        wanted = ", ".join(dict.fromkeys(self._slots[slot] for slot in self._data.values()))
        raise TypeError(f"{type(self).__name__} takes " + (f"objects of {wanted}" if wanted else "nothing") +
                        f" without a name, and all others by name, not {kind_of(data)}")

    def _complete(self, values):
        """Sets what wasn't said to what one would expect of data without names."""
        if "valuesIndex" not in self._fields or "mesh" not in self._data:
            return
        mesh = _core.get_given_data(self, "Mesh")
        for name in ("valuesIndex", "vecsIndex"):
            if mesh is not None and name not in values and self._sets(mesh, name):
                setattr(self, name, min(self._sets(mesh, name)))
        if "coloringType" not in values and _core.get_given_data(self, "DataMapping") is not None:
            has_levels = _core.get_given_data(self, "IsovaluesList") is not None
            self.coloringType = "COLOR_CONTOURING" if has_levels else "COLOR_MAPPING"

    @staticmethod
    def _sets(mesh, name):
        """The sets of a mesh that a field is for: names by index."""
        return mesh.vector_names if name.startswith("vecs") else mesh.value_names

    def _index_of(self, name, called):
        """The index of the set that is called so."""
        title = f"{type(self).__name__}.{name}"
        mesh = _core.get_data(self, "Mesh") if "mesh" in self._data else None
        if mesh is None:
            raise ValueError(f"{title} can't find the set \"{called}\" without a mesh: give the node its mesh first, or give "
                             "the index of the set, which mesh.values_index() and mesh.vectors_index() tell")
        sets = self._sets(mesh, name)
        for index, known in sets.items():
            if known == called:
                return index
        there = ", ".join(f'"{known}"' for known in sets.values()) or "none"
        close = difflib.get_close_matches(called, sets.values(), 1)
        raise ValueError(f"{title} can't be \"{called}\"; the mesh has the sets {there}" +
                         (f"; is \"{close[0]}\" meant?" if close else ""))

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
                raise TypeError(f"{type(self).__name__}.{name} is a part, which must be a node, not {kind_of(value)}")
            # The toolkit forgets the parts inside, and crashes over them later.
            if not self.getNodekitCatalog().isLeaf(name):
                raise TypeError(f"{type(self).__name__}.{name} holds other parts of the kit, and can't be replaced")
            if not self.setPart(name, value):
                raise TypeError(f"{type(self).__name__}.{name} must be a {self._parts[name]}, not {kind_of(value)}")
        elif name in self._fields:
            if isinstance(value, str) and takes_set(name):
                value = self._index_of(name, value)
            if not _core.set_field(self, name, value):
                self._set_by_pivy(name, value)
        else:
            raise AttributeError(self._unknown(name))

    def _set_by_pivy(self, name, value):
        """For objects of Pivy, and for kinds of fields that _core leaves to it."""
        field, kind = self.getField(name), self._fields[name][0]
        refusal = f"{type(self).__name__}.{name} is an {kind}, which can't take {kind_of(value)}"
        # Pivy makes nonsense of objects of other classes.
        if isinstance(value, coin.SoField):
            suits = value.getTypeId() == field.getTypeId()
        elif hasattr(value, "this"):
            suits = isinstance(value, _PIVY_VALUES.get(kind[2:], ()))
        else:
            suits = not kind.startswith("PoSF")
        if not suits:
            raise TypeError(refusal)
        try:
            field.setValue(value)
        except (TypeError, ValueError, AttributeError, NotImplementedError, OverflowError):
            raise TypeError(refusal) from None

    def __getattr__(self, name):
        # Names that Python itself asks for must not reach the kit, which would make parts of them.
        if name.startswith("_") or name in ("this", "thisown"):
            raise AttributeError(name)
        if name in self._fields:
            field = self.getField(name)
            object.__setattr__(field, "_node", self)  # which must outlive it
            return field
        if name in self._data:
            return _core.get_data(self, self._data[name])
        if name in self._parts:
            return _part(self.getPart(name, True))
        raise AttributeError(self._unknown(name))

    def _unknown(self, name):
        known = [*self._fields, *self._parts, *self._data, *(each for each in dir(type(self)) if not each.startswith("_"))]
        close = difflib.get_close_matches(name, known, 1)
        return f"{type(self).__name__} has no attribute '{name}'" + (f"; is '{close[0]}' meant?" if close else "")

    def __dir__(self):
        return sorted({*object.__dir__(self), *self._fields, *self._parts, *self._data} - {"this", "thisown"})

    def __repr__(self):
        if "this" not in self.__dict__:
            return f"<ormelle.{type(self).__name__}: not made yet>"
        shown = [name for name, slot in self._data.items() if _core.get_given_data(self, slot) is not None]
        shown += [f"{name} = {text}" for name, text in _core.changed_fields(self).items() if name in self._fields]
        more = [*shown[:6], "..."] if len(shown) > 6 else shown
        return f"<ormelle.{type(self).__name__}{': ' if more else ''}{', '.join(more)}>"

    def _repr_png_(self):
        from ._pictures import notebook_picture  # which builds on this module
        return notebook_picture(self)

    def copy(self, copyConnections=False):
        """A copy of the node with the same data objects."""
        twin = _part(super().copy(copyConnections))
        for slot in self._data.values():
            data = _core.get_given_data(self, slot)
            if data is not None:
                _core.set_data(twin, slot, data)
        return twin


class _MeshNode:
    """What the nodes that hold a mesh have beside the others."""

    def _take(self, data):
        self.setMesh(data)

    def _complete(self, values):
        pass

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
        bases = (OrmelleNode, _pivy_class(parent or name))
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
        "_slots": slots,
    }
    members["__signature__"] = _constructor(members)
    for field_type, default, values in about["fields"].values():
        members.update((value, number) for value, number in values.items() if value.isidentifier())
    for slot, wanted in slots.items():
        members["set" + slot] = _setter(slot, wanted)
        members["get" + slot] = _getter(slot, wanted)
    for key, member in _core.node_members.get(name, {}).items():
        members[key] = member if not callable(member) else wrapped(member, f"{name}.{key}")
    return type(name, bases, members)


def _constructor(members):
    """The signature of a constructor, by which editors complete the names of fields."""
    data = [inspect.Parameter("data", inspect.Parameter.VAR_POSITIONAL)]
    named = {name: None for name in members["_data"]}
    named.update((field, Shown(_default_text(about))) for field, about in members["_fields"].items())
    return inspect.Signature(data + [inspect.Parameter(name, inspect.Parameter.KEYWORD_ONLY, default=default)
                                     for name, default in named.items() if not keyword.iskeyword(name)])


def _default_text(about):
    """The default value of a field as one line; "..." if that is long."""
    field_type, default, values = about
    default = " ".join(default.split())
    if field_type.endswith("UShort") and default.startswith("0x"):
        default = str(int(default, 16))
    return default if default and len(default) <= 60 else "..."


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


def field_text(name, field):
    """What the headers say of a field, in the class that it comes from."""
    while name in _parents:
        text = DOCS.get(name, ("", {}))[1].get(field)
        if text:
            return text
        name = _parents[name]
    return ""


def _docstring(name, about):
    lines = [DOCS.get(name, ("", {}))[0] or
             (f"A {_parents[name]}." if name in _parents else f"The {name} of Pivy, with fields like those of Ormelle's nodes.")]
    if about["isAbstract"] and name not in _MADE_AS:
        lines.append("\nAn abstract class.")
    if about["fields"]:
        lines.append("\nFields:")
    for field, (field_type, default, values) in about["fields"].items():
        default = _default_text((field_type, default, values))
        shown = f" = {default}" if default != "..." else ""
        lines.append(f"    {field} ({field_type}{shown})")
        if values:
            lines.append(textwrap.fill("one of " + ", ".join(values), 100, initial_indent=" " * 8,
                                       subsequent_indent=" " * 8))
        text = field_text(name, field)
        if text:
            lines.append(textwrap.fill(" ".join(text.split()), 100, initial_indent=" " * 8, subsequent_indent=" " * 8))
    slots = _core.data_slots(name)
    if slots:
        lines.append("\nData objects: " + ", ".join(f"{slot[0].lower() + slot[1:]} ({kind})" for slot, kind in slots.items()))
    if about["parts"]:
        lines.append("\nParts: " + ", ".join(f"{part} ({kind})" for part, kind in about["parts"].items()))
    return "\n".join(lines)
