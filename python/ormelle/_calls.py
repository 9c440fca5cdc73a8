"""Functions of _core as users meet them: with signatures, and with refusals that are one sentence."""

import ast
import difflib
import functools
import inspect
import operator
import re

from . import _core

_FORM = re.compile(r"^(?:\d+\. )?(\w+)\((.*)\)(?: -> (.*))?$")


class Shown:
    """A default value in a signature, written as in Python's source."""

    def __init__(self, text):
        self.text = text

    def __repr__(self):
        return self.text


def kind_of(value):
    """What a sentence calls an object of the wrong type."""
    return "None" if value is None else f"a {type(value).__name__}"


# ---- Signatures, as pybind11 writes them into docstrings --------------------------------------------------------------


def _parts(text):
    """What commas part, but for those in brackets."""
    parts, depth, start = [], 0, 0
    for place, char in enumerate(text):
        depth += (char in "([{<") - (char in ")]}>")
        if char == "," and depth == 0:
            parts.append(text[start:place])
            start = place + 1
    return [part.strip() for part in [*parts, text[start:]] if part.strip()]


def _default(text):
    try:
        return ast.literal_eval(text)
    except (SyntaxError, ValueError):
        return Shown(re.sub(r"^<(?:\w+\.)?(\w+): .*>$", r"\1", text))


def _signature(text, result):
    parameters, kind = [], inspect.Parameter.POSITIONAL_OR_KEYWORD
    for part in _parts(text):
        name, _, rest = part.partition(":")
        if part == "*":
            kind = inspect.Parameter.KEYWORD_ONLY
        elif part.startswith("*"):
            parameters.append(inspect.Parameter(part[1:], inspect.Parameter.VAR_POSITIONAL))
            kind = inspect.Parameter.KEYWORD_ONLY
        else:
            annotation, equals, default = rest.partition(" = ")
            default = _default(default) if equals else inspect.Parameter.empty
            parameters.append(inspect.Parameter(name, kind, default=default, annotation=annotation.strip()))
    return inspect.Signature(parameters, return_annotation=result or inspect.Signature.empty)


def _forms(function):
    """The signatures of a function, and what its docstring says beside them."""
    lines = (function.__doc__ or "").splitlines()
    is_overloaded = lines[1:2] == ["Overloaded function."]
    forms, texts = [], []
    for line in lines[2:] if is_overloaded else lines:
        match = _FORM.match(line) if is_overloaded or not forms else None
        if match and match[1] == function.__name__:
            forms.append(_signature(match[2], match[3]))
        elif line and line not in texts:
            texts.append(line)
    return forms, texts


def _for_help(form):
    """A signature with the types that it names, but for those that _core looks at itself."""
    def shown(annotation):
        text = str(annotation).replace("ormelle._core.", "")
        return inspect.Parameter.empty if text in ("handle", "object") else Shown(text)

    result = form.return_annotation
    return form.replace(parameters=[each.replace(annotation=shown(each.annotation)) for each in form.parameters.values()],
                        return_annotation=result if result is form.empty else shown(result))


def _without_types(form, skips_self):
    parameters = [each.replace(annotation=inspect.Parameter.empty) for each in form.parameters.values()]
    return str(form.replace(parameters=parameters[1:] if skips_self else parameters,
                            return_annotation=inspect.Signature.empty))


# ---- Refusals ---------------------------------------------------------------------------------------------------------


def _is_number(value, ask):
    try:
        ask(value)
    except OverflowError:
        return True
    except Exception:  # whatever the object answers, it is no number
        return False
    return not isinstance(value, str)


_KINDS = {
    "int": ("a whole number", lambda value: _is_number(value, operator.index)),
    "float": ("a number", lambda value: _is_number(value, float)),
    "str": ("a text", lambda value: isinstance(value, str)),
    "bool": ("True or False", lambda value: value is None or hasattr(type(value), "__bool__")),
    "List[str]": ("a list of texts", lambda value: isinstance(value, (list, tuple)) and all(
        isinstance(each, str) for each in value)),
}


def _class_of(annotation):
    """The class of _core that an annotation means; None of any other."""
    optional = re.match(r"^Optional\[(.*)\]$", annotation)
    name = optional[1] if optional else annotation
    if not re.match(r"^ormelle(\._core)?\.", name):
        return None
    return functools.reduce(lambda holder, each: getattr(holder, each, None),
                            re.sub(r"^ormelle(\._core)?\.", "", name).split("."), _core)


def _members(cls):
    """The values of an enumeration by their names; empty of other classes."""
    return getattr(cls, "__members__", {})


def _wish(annotation):
    cls = _class_of(annotation)
    if cls is None:
        return _KINDS.get(annotation, ("something else", lambda value: True))
    wish = "one of " + ", ".join(_members(cls)) if _members(cls) else f"a {cls.__name__}"
    return wish, lambda value: isinstance(value, cls) or (value is None and annotation.startswith("Optional"))


def _is_out_of_range(annotation, value):
    if annotation == "int":
        return not -2**31 <= operator.index(value) < 2**31
    if annotation == "float":
        try:
            float(value)
        except OverflowError:
            return True
    texts = value if isinstance(value, (list, tuple)) else [value]
    return any(isinstance(text, str) and any("\ud800" <= char <= "\udfff" for char in text) for text in texts)


def shortened(value):
    """A value as a short text on one line."""
    text = " ".join(ascii(value).split())
    return text if len(text) <= 40 else text[:37] + "..."


def _missing(form, arguments, named):
    given = set(named) | set(list(form.parameters)[:len(arguments)])
    return [name for name, each in form.parameters.items()
            if each.default is each.empty and each.kind is not each.VAR_POSITIONAL and name not in given]


def _complaint(title, form, arguments, named, skips_self):
    """How far a call comes with a form of a function, and the sentence about what stops it there."""
    shown = title + _without_types(form, skips_self)
    try:
        bound = form.bind(*arguments, **named)
    except TypeError as error:
        unknown = [name for name in named if name not in form.parameters]
        if unknown:
            close = difflib.get_close_matches(unknown[0], form.parameters, 1)
            return 0, f"{title} knows no argument '{unknown[0]}'" + (f"; is '{close[0]}' meant?" if close else f": {shown}")
        missing = _missing(form, arguments, named)
        if missing:
            return 0, f"{title} wants {' and '.join([', '.join(missing[:-1]), missing[-1]] if missing[1:] else missing)}, too: {shown}"
        return 0, f"{title} can't take that: {error}: {shown}"
    bound.apply_defaults()
    checked = [(name, form.parameters[name].annotation, value) for name, value in bound.arguments.items()
               if name in named or list(form.parameters).index(name) < len(arguments)]
    for number, (name, annotation, value) in enumerate(checked, 1):
        wish, suits = _wish(annotation)
        if not suits(value):
            if number == 1 and skips_self:
                return number, f"{title} is a function of {wish}, not of {kind_of(value)}"
            what = shortened(value) if isinstance(value, str) else kind_of(value)
            return number, f"{title}: {name} must be {wish}, not {what}"
    for number, (name, annotation, value) in enumerate(checked, 1):
        if _is_out_of_range(annotation, value):
            return number, f"{title}: {name} can't be {shortened(value)}"
    return len(checked), f"{title} can't take these values: {shown}"


def _refusal(title, forms, arguments, named, skips_self):
    if not forms:
        return f"{title} can't take these arguments"
    complaints = [_complaint(title, form, arguments, named, skips_self) for form in forms]
    furthest, sentence = max(complaints, key=lambda each: each[0])
    if furthest == 0 and len(forms) > 1:
        # Forms without arguments are for those who fill an object later.
        full = [(form, each[1]) for form, each in zip(forms, complaints) if len(form.parameters) > skips_self]
        if len(full) == 1:
            return full[0][1]
        return f"{title} is called as " + " or ".join(title + _without_types(form, skips_self) for form, _ in full)
    return sentence


def _with_enumerations(forms, arguments, named):
    """The arguments with names of enumerations in place of texts; None if there is no such place."""
    for form in forms:
        places = list(form.parameters.values())
        pairs = [*zip(range(len(arguments)), places), *((name, form.parameters[name]) for name in named
                                                        if name in form.parameters)]
        changed, values, keywords = False, list(arguments), dict(named)
        for key, parameter in pairs:
            holder = values if isinstance(key, int) else keywords
            if isinstance(holder[key], str) and holder[key] in _members(_class_of(str(parameter.annotation))):
                holder[key] = _members(_class_of(parameter.annotation))[holder[key]]
                changed = True
        if changed:
            return values, keywords
    return None


def wrapped(function, title=None, is_method=True):
    """The function with a signature, whose refusals are sentences that begin with `title`. Where it wants a value of an
    enumeration, the value's name will do."""
    forms, texts = _forms(function)
    title = title or function.__name__

    def call(*arguments, **named):
        try:
            return function(*arguments, **named)
        except TypeError as error:
            if ": incompatible " not in str(error).partition("\n")[0]:
                raise
        again = _with_enumerations(forms, arguments, named)
        if again:
            return call(*again[0], **again[1])
        raise TypeError(_refusal(title, forms, arguments, named, is_method))

    call.__name__ = function.__name__
    call.__qualname__ = title
    call.__module__ = "ormelle"
    call.__doc__ = "\n".join(texts) or None
    call._forms = forms
    if forms:
        call.__signature__ = _for_help(max(forms, key=lambda form: len(form.parameters)))
    return call


def _refused_constructor(sentence):
    def __init__(self, *arguments, **named):
        raise TypeError(sentence)

    return __init__


def _adopt(cls):
    """Gives a class of _core functions of ours."""
    cls.__module__ = "ormelle"
    for name, member in list(vars(cls).items()):
        if isinstance(member, type):
            _adopt(member)
        elif type(member).__name__ == "instancemethod" and (not name.startswith("_") or name == "__init__"):
            title = cls.__qualname__
            setattr(cls, name, wrapped(member, title if name == "__init__" else f"{title}.{name}"))
    if not inspect.isfunction(vars(cls).get("__init__")):
        derived = [each.__name__ for each in cls.__subclasses__()]
        cls.__init__ = _refused_constructor(
            f"{cls.__name__} is an abstract class: make an object of a class derived from it, such as {derived[0]}"
            if derived else f"{cls.__name__} can't be made by itself")


def adopt_all():
    """Once, for all classes and functions of _core."""
    for name, member in list(vars(_core).items()):
        if isinstance(member, type) and member.__module__ == "ormelle._core" and not issubclass(member, Exception):
            _adopt(member)
        elif inspect.isbuiltin(member):
            setattr(_core, name, wrapped(member, is_method=False))
