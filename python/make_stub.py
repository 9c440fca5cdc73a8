#!/usr/bin/env python3
"""Writes what editors and type checkers want to know of the Python module: its classes of nodes are made when a program runs.

usage: make_stub.py OUTPUT.pyi        (with the module on PYTHONPATH)
"""

import inspect
import keyword
import pathlib
import re
import sys

# The folder of this file, which comes first, holds the sources of the module, not the module.
sys.path.remove(str(pathlib.Path(__file__).resolve().parent))

import ormelle
from ormelle import _nodes

HEAD = '''"""Made by make_stub.py of what the module tells of itself."""

from collections.abc import Callable, Iterator, Sequence
from os import PathLike
from typing import Any, Literal

from numpy import ndarray
from numpy.typing import ArrayLike
from pivy import coin

Colour = str | Sequence[float]
Scene = coin.SoNode | Sequence[coin.SoNode]

__version__: str
__all__: list[str]

'''

# What arguments are that _core checks itself, by their names.
BY_NAME = [
    (r"colou?r|color\d", "Colour"),
    (r"colors", "Sequence[Colour] | ndarray"),
    (r"set", "int | str"),
    (r"binding", "PbMesh.DataBinding | str | None"),
    (r"function", "Callable[[float], Any] | None"),
    (r"point|place|up|direction", "Sequence[float]"),
    (r"path", "coin.SoPath"),
    (r"transparencies|cells|cell_index|cell_type|values|vectors|isovalues|[xyz]|radius|angle", "ArrayLike"),
    (r"strings", "Sequence[str]"),
]

# What fields can be set to.
FIELDS = {
    "SFBool": "bool", "SFFloat": "float", "SFDouble": "float", "SFString": "str", "SFColor": "Colour",
    "SFVec2f": "Sequence[float]", "SFVec3f": "Sequence[float]", "SFVec4f": "Sequence[float]", "SFPlane": "Sequence[float]",
    "SFNode": "coin.SoNode | None", "MFColor": "Colour | Sequence[Colour] | ndarray", "MFString": "str | Sequence[str]",
    "MFFloat": "ArrayLike", "MFInt32": "ArrayLike", "MFUShort": "ArrayLike", "MFVec2f": "ArrayLike", "MFVec3f": "ArrayLike",
}


def of_core(annotation, name=""):
    """A type in words of Python."""
    text = str(annotation).strip()
    if text in ("handle", "object"):
        return next((known for pattern, known in BY_NAME if re.fullmatch(pattern, name)), "Any")
    text = re.sub(r"ormelle\.(_core\.)?", "", text)
    text = re.sub(r"Optional\[(.*)\]", r"\1 | None", text)
    text = re.sub(r"\bList\b", "list" if not name else "Sequence", text)
    text = re.sub(r"\bTuple\b", "tuple", text)
    text = re.sub(r"numpy\.ndarray(\[.*\])?", "ndarray", text)
    return text if text in ("None", "Any", "dict", "tuple", "list") or "_empty" not in text else "Any"


def arguments(form, skips_self=True):
    parts, is_keyword = [], False
    for name, each in form.parameters.items():
        if name == "self":
            continue
        if each.kind is each.VAR_POSITIONAL:
            parts.append(f"*{name}: Any")
            is_keyword = True
            continue
        if each.kind is each.KEYWORD_ONLY and not is_keyword:
            parts.append("*")
            is_keyword = True
        kind = of_core(each.annotation, name)
        if each.default is None and "None" not in kind and kind != "Any":
            kind += " | None"
        parts.append(f"{name}: {kind}" + ("" if each.default is each.empty else " = ..."))
    return ", ".join((["self"] if skips_self else []) + parts)


def text_of(doc, indent):
    """The first sentences of a docstring as one line."""
    first = (doc or "").strip().split("\n\n")[0].replace("\\", "").replace('"""', "'''")
    line = " ".join(first.split())
    return f'{indent}"""{line}{" " if line.endswith(chr(34)) else ""}"""\n' if line else ""


def plain(function):
    """The signature of a function in Python, whose types are texts."""
    text = str(inspect.signature(function)).replace("'", "")
    return text.replace("_core.", "").replace("numpy.", "").replace("os.PathLike", "PathLike").replace("-> None:", "-> None")


def method(name, member, indent="    "):
    forms = getattr(member, "_forms", None)
    if not forms:
        return f"{indent}def {name}{plain(member)}: ...\n"
    lines, is_overloaded = "", len(forms) > 1
    for form in forms:
        result = "None" if name == "__init__" else of_core(form.return_annotation)
        lines += f"{indent}@overload\n" if is_overloaded else ""
        doc = "" if is_overloaded else text_of(member.__doc__, indent + "    ")
        lines += f"{indent}def {name}({arguments(form)}) -> {result}:" + (f"\n{doc}" if doc else " ...\n")
    return lines


def data_class(cls):
    bases = ", ".join(base.__name__ for base in cls.__bases__ if base.__module__ == "ormelle")
    lines = f"class {cls.__name__}({bases}):\n" if bases else f"class {cls.__name__}:\n"
    lines += text_of(cls.__doc__, "    ")
    for name, member in vars(cls).items():
        if isinstance(member, type):
            values = getattr(member, "__members__", {})
            lines += f"    class {member.__name__}:\n" + "".join(f"        {value}: {cls.__name__}.{member.__name__}\n" for value in values)
            lines += "".join(f"    {value}: {member.__name__}\n" for value in values)
        elif isinstance(member, property):
            lines += f"    @property\n    def {name}(self) -> Any: ...\n"
        elif inspect.isfunction(member) and (not name.startswith("_") or name == "__init__"):
            lines += method(name, member)
    if hasattr(cls, "__iter__"):
        lines += "    def __iter__(self) -> Iterator[float]: ...\n    def __len__(self) -> int: ...\n"
    return lines + "    ...\n\n"


def field_type(name, about):
    kind, default, values = about
    if values:
        return " | ".join(["Literal[" + ", ".join(f'"{value}"' for value in values) + "]", "int"])
    if _nodes.takes_set(name):
        return "int | str"
    return FIELDS.get(kind, "int" if re.fullmatch(r"SF(U?Int32|U?Short)", kind) else "Any")


def node_class(name):
    cls = getattr(ormelle, name)
    parent = next(base for base in cls.__mro__[1:] if base.__name__.startswith("Po") or base.__module__.startswith("pivy"))
    bases = parent.__name__ if parent.__module__ == "ormelle" else f"_Node, coin.{parent.__name__}"
    inherited = getattr(parent, "_fields", {}), getattr(parent, "_parts", {}), getattr(parent, "_data", {})
    lines = f"class {name}({bases}):\n" + text_of(cls.__doc__, "    ")
    named = [f"{key}: {cls._slots[slot]} | None = ..." for key, slot in cls._data.items()]
    named += [f"{key}: {field_type(key, about)} = ..." for key, about in cls._fields.items() if not keyword.iskeyword(key)]
    named += [f"{key}: coin.SoNode = ..." for key in cls._parts if key not in ("this",)]
    lines += "    def __init__(self, *data: Any" + "".join(", " + each for each in named) + ") -> None: ...\n"
    for key, slot in cls._data.items():
        if key not in inherited[2]:
            lines += f"    {key}: {cls._slots[slot]} | None\n"
    for key, about in cls._fields.items():
        if key not in inherited[0] and not keyword.iskeyword(key):
            lines += f"    @property\n    def {key}(self) -> coin.So{about[0]}:\n"
            lines += text_of(_nodes.field_text(name, key), "        ") or "        ...\n"
            lines += f"    @{key}.setter\n    def {key}(self, value: {field_type(key, about)}) -> None: ...\n"
    for key in cls._parts:
        if key not in inherited[1]:
            lines += f"    {key}: Any\n"
    for key, member in vars(cls).items():
        if inspect.isfunction(member) and not key.startswith("_"):
            lines += method(key, member)
        elif isinstance(member, int) and not key.startswith("_"):
            lines += f"    {key}: int\n"
    return lines + "\n"


def main():
    names = _nodes.names()
    ordered = sorted(names, key=lambda name: len(getattr(ormelle, name).__mro__))
    data = sorted((name for name in ormelle.__all__ if name.startswith("Pb") or name == "Location"),
                  key=lambda name: len(getattr(ormelle, name).__mro__))
    lines = HEAD
    for name in ormelle.__all__:
        member = getattr(ormelle, name)
        if inspect.isfunction(member):
            doc = text_of(member.__doc__, "    ")
            if hasattr(member, "_forms"):
                form = member._forms[0]
                lines += f"def {name}({arguments(form, False)}) -> {of_core(form.return_annotation)}: ...\n"
            else:
                lines += f"def {name}{plain(member)}:\n{doc}"
    lines += "\n" + inspect_classes()
    lines += "".join(data_class(getattr(ormelle, name)) for name in data)
    lines += "".join(node_class(name) for name in ordered)
    lines = lines.replace("from typing import Any, Literal", "from typing import Any, Literal, overload")
    pathlib.Path(sys.argv[1]).write_text(lines)


def inspect_classes():
    """The few classes that are written in Python."""
    lines = "class SceneError(OSError): ...\n\nclass _Node:\n    def copy(self, copyConnections: bool = ...) -> Any: ...\n\n"
    for cls in (ormelle.Camera, ormelle.Picture):
        lines += f"class {cls.__name__}:\n" + text_of(cls.__doc__, "    ")
        for name, member in vars(cls).items():
            if inspect.isfunction(member) and (not name.startswith("_") or name == "__init__"):
                lines += f"    def {name}{plain(member)}: ...\n"
        lines += "\n"
    return lines


if __name__ == "__main__":
    main()
