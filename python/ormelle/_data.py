"""What data objects have beside their functions in _core: short descriptions, and colour scales by name."""

from __future__ import annotations

from collections.abc import Sequence

import numpy
from numpy.typing import ArrayLike

from . import _core
from ._calls import kind_of

Colour = "str | Sequence[float]"  # for type hints


def _hex(colour):
    return '"#{:02x}{:02x}{:02x}"'.format(*(round(255 * channel) for channel in colour[:3]))


def _row(values, text="{:g}".format):
    """All of a few values, the first and the last of many."""
    values = list(values)
    shown = [text(value) for value in values]
    return ", ".join(shown if len(shown) <= 6 else [*shown[:3], "...", shown[-1]])


def _linear(mapping):
    value1, color1, value2, color2 = mapping.getValues()
    return f"{value1:g} {_hex(color1)} to {value2:g} {_hex(color2)}"


def _table(mapping):
    values, colours = mapping.getValuesList(), mapping.getRGBColorsList()
    if not len(values):
        return "empty"
    kind = "mixed between" if mapping.getType() == _core.PbNonLinearDataMapping2.LINEAR_PER_LEVEL else "constant between"
    return f"{_row(colours, _hex)}, {kind} {_row(values)}"


def _levels(levels):
    values = numpy.asarray(levels.getIsoList())
    return f"{len(values)} levels, {_row(values)}" if len(values) else "empty"


def _box(domain):
    sides = domain.getDomain()
    kind = str(domain.getTransformType()).partition(".")[2]
    return ", ".join(f"{axis} {sides[i]:g} to {sides[i + 3]:g}" for i, axis in enumerate("xyz")) + f", {kind}"


def _format(numbers):
    kind, power, decimals = numbers.getFormat()
    kind = str(kind).partition(".")[2]
    return kind if kind != "FLOAT_FORMAT" else f"{kind}, {decimals} decimals" + (f" of 10^{power}" if power else "")


def _dates(mapping):
    date1, date2, coord1, coord2 = mapping.getDateMapping()
    return f'"{date1}" at {coord1:g}, "{date2}" at {coord2:g}, format "{mapping.getFormat()}"'


_ABOUT = {
    "PbLinearDataMapping": _linear,
    "PbNonLinearDataMapping": lambda mapping: "colours by a function",
    "PbNonLinearDataMapping2": _table,
    "PbIsovaluesList": _levels,
    "PbDomain": _box,
    "PbNumericDisplayFormat": _format,
    "PbDateFormatMapping": _dates,
    "PbMiscTextAttr": lambda attributes: f'font "{attributes.getFontName()}"',
    "Location": lambda place: f"cell {place.cell} at ({_row(place.pcoord)}), nodes {_row(place.nodes)}",
}


def add_descriptions():
    """Once, for all classes of data objects but meshes, which have theirs."""
    for name, about in _ABOUT.items():
        getattr(_core, name).__repr__ = (
            lambda self, about=about: f"<ormelle.{type(self).__name__}: {about(self)}>")


# ---- Colour scales ----------------------------------------------------------------------------------------------------

# Control points, evenly spaced. The first five are each fifteenth colour of the scales of the same names by S. van der Walt,
# N. Smith, E. Firing, J. Nuñez, C. Anderton and R. Renslow (CC0); between the points they differ from these by at most 5 of
# 255, cividis by 11. The others are C. Brewer's colours for maps (ColorBrewer 2.0).
_SCALES = {
    "viridis": "440154 481769 472a7a 433d84 3d4e8a 355e8d 2e6d8e 297b8e 23898e "
               "1f978b 21a585 2eb37c 46c06f 65cb5e 89d548 b0dd2f d8e219 fde725",
    "magma": "000004 090720 1a1042 311165 4a1079 621980 792282 912b81 aa337d "
             "c23b75 d9466b ec5860 f7725c fc8e64 feaa74 fec68a fde2a3 fcfdbf",
    "inferno": "000004 0a0722 1e0c45 380962 510e6c 69166e 801f6c 982766 b0315b "
               "c63d4d d94d3d e9612b f47918 fa9407 fcb014 f8cd37 f2ea69 fcffa4",
    "plasma": "0d0887 2f0596 4903a0 6100a7 7801a8 8e0ca4 a21d9a b42e8d c43e7f "
              "d24f71 de6164 e97257 f3854b f99a3e fdaf31 fdc627 f8df25 f0f921",
    "cividis": "00224e 002d68 163770 2e416d 3f4c6c 4e566c 5c616e 696b71 767676 "
               "838179 928c78 a09875 afa471 bfb06b cfbd62 dfca57 f0d846 fee838",
    "Blues": "f7fbff deebf7 c6dbef 9ecae1 6baed6 4292c6 2171b5 08519c 08306b",
    "Greens": "f7fcf5 e5f5e0 c7e9c0 a1d99b 74c476 41ab5d 238b45 006d2c 00441b",
    "Greys": "ffffff f0f0f0 d9d9d9 bdbdbd 969696 737373 525252 252525 000000",
    "YlGnBu": "ffffd9 edf8b1 c7e9b4 7fcdbb 41b6c4 1d91c0 225ea8 253494 081d58",
    "YlOrRd": "ffffcc ffeda0 fed976 feb24c fd8d3c fc4e2a e31a1c bd0026 800026",
    "RdBu": "67001f b2182b d6604d f4a582 fddbc7 f7f7f7 d1e5f0 92c5de 4393c3 2166ac 053061",
    "RdYlBu": "a50026 d73027 f46d43 fdae61 fee090 ffffbf e0f3f8 abd9e9 74add1 4575b4 313695",
    "BrBG": "543005 8c510a bf812d dfc27d f6e8c3 f5f5f5 c7eae5 80cdc1 35978f 01665e 003c30",
    "Spectral": "9e0142 d53e4f f46d43 fdae61 fee08b ffffbf e6f598 abdda4 66c2a5 3288bd 5e4fa2",
}


def _control_points(scale):
    if not isinstance(scale, str):
        if not isinstance(scale, (list, tuple)) or len(scale) < 2:
            raise TypeError(f"a colour scale is a name or a list of at least two colours, not {kind_of(scale)}")
        return [_core.rgb(colour) for colour in scale]
    name = scale.removesuffix("_r")
    if name not in _SCALES:
        raise ValueError(f"there is no colour scale called \"{scale}\"; there are {', '.join(_SCALES)}")
    points = [_core.rgb("#" + digits) for digits in _SCALES[name].split()]
    return points[::-1] if name != scale else points


def _limits(low, high):
    if high is None:
        values = numpy.ma.filled(numpy.ma.asarray(low, float), numpy.nan)
        values = values[numpy.isfinite(values)]
        if values.size < 1 or numpy.ndim(low) == 0:
            raise ValueError("a colour scale wants its least and its greatest value, or an array with finite numbers")
        low, high = float(values.min()), float(values.max())
        if low == high:
            low, high = low - 0.5, high + 0.5
    limits = numpy.array([low, high], numpy.float32)
    if limits.ndim != 1 or not numpy.isfinite(limits).all() or not limits[0] < limits[1]:
        raise ValueError(f"a colour scale goes from a value to a greater one, not from {low} to {high}")
    return limits


def colours(scale: str | Sequence[Colour], low: float | ArrayLike, high: float | None = None, *,
            steps: int | None = None) -> _core.PbNonLinearDataMapping2:
    """A colour scale from one value to another, for kits and legends: a PbNonLinearDataMapping2.

        ormelle.colours("viridis", 0, 10)
        ormelle.colours("RdBu_r", -2, 2, steps=8)
        ormelle.colours(["white", "steelblue", "navy"], grid.values("depth"))

    scale: viridis, magma, inferno, plasma, cividis; for maps Blues, Greens, Greys, YlGnBu, YlOrRd, and with a middle RdBu,
        RdYlBu, BrBG, Spectral; with "_r" behind it the other way round. Or a list of colours, evenly spaced.
    low, high: the values at its ends; or an array instead of both, from the least to the greatest of its numbers.
    steps: so many colours, each for an equal part of the scale, instead of a smooth change.
    """
    points = numpy.array(_control_points(scale), float)
    try:
        low, high = _limits(low, high)
    except TypeError:
        raise TypeError("the ends of a colour scale must be numbers") from None
    places = numpy.linspace(0, 1, len(points))
    if steps is None:
        return _core.PbNonLinearDataMapping2(low + (high - low) * places, points)
    if not isinstance(steps, (int, numpy.integer)) or not 2 <= steps <= 1000:
        raise ValueError(f"a colour scale can have 2 to 1000 steps, not {steps!r}")
    at = numpy.linspace(0, 1, steps)
    shown = numpy.stack([numpy.interp(at, places, channel) for channel in points.T], axis=1)
    return _core.PbNonLinearDataMapping2(numpy.linspace(low, high, steps + 1)[1:-1], shown)


def rgb(colour: Colour) -> tuple:
    """A colour as three numbers from 0 to 1, for fields of Pivy's own nodes: `material.diffuseColor = ormelle.rgb("navy")`.

    Like all functions and fields of the module it takes names of the web's style sheets ("navy", "steelblue"), texts like
    "#1f77b4", and three numbers.
    """
    return _core.rgb(colour)
