"""The module as a whole: its import, its help, what it answers to bad calls, and that it never crashes."""

import ast
import inspect
import io
import pathlib
import pydoc
import subprocess
import sys
import tempfile
import unittest
from contextlib import redirect_stdout

import numpy as np
from pivy import coin

import ormelle


def run(program, *arguments, path=None):
    """A program of its own."""
    setup = f"import sys\nsys.path.insert(0, {str(path)!r})\n" if path else ""
    with tempfile.TemporaryDirectory() as folder:
        return subprocess.run([sys.executable, "-B", "-c", setup + program, *arguments], capture_output=True, text=True, timeout=100,
                              cwd=folder)


class Import(unittest.TestCase):
    def test_packages_that_are_missing_are_named(self):
        for package, name in (("pivy", "Pivy"), ("numpy", "NumPy")):
            done = run(f"import sys\nsys.modules['{package}'] = None\nimport ormelle")
            self.assertIn(f"ModuleNotFoundError: ormelle needs {name}, which this Python doesn't have: install python3-{package}",
                          done.stderr)

    def test_packages_that_fail_speak_for_themselves(self):
        with tempfile.TemporaryDirectory() as folder:
            (pathlib.Path(folder) / "pivy").mkdir()
            for line in ("raise ImportError('libCoin.so.80: cannot open')", "import missing_of_pivy"):
                (pathlib.Path(folder) / "pivy/__init__.py").write_text("")
                (pathlib.Path(folder) / "pivy/coin.py").write_text(line)
                done = run("import ormelle", path=folder)
                self.assertRegex(done.stderr, "libCoin.so.80: cannot open|No module named 'missing_of_pivy'")
                self.assertNotIn("ormelle needs", done.stderr)


class Help(unittest.TestCase):
    def test_help_of_the_module_is_a_page(self):
        text = io.StringIO()
        with redirect_stdout(text):
            pydoc.Helper(output=text).help(ormelle)
        self.assertLess(text.getvalue().count("\n"), 200)
        for words in ("Where to begin", "PbRegularCartesianGrid2D", "PoMeshFilled", "save(scene"):
            self.assertIn(words, text.getvalue())

    def test_names_for_completion(self):
        self.assertTrue({"PoMeshFilled", "PbDomain", "render", "colours"} <= set(dir(ormelle)))
        self.assertFalse([name for name in dir(ormelle) if name.startswith("_") and not name.startswith("__")])
        self.assertEqual([name for name in ormelle.__all__ if not hasattr(ormelle, name)], [])
        self.assertIn("valuesIndex", inspect.signature(ormelle.PoMeshFilled).parameters)
        self.assertEqual(str(inspect.signature(ormelle.PbPolarGrid2D).replace(return_annotation=inspect.Signature.empty)),
                         "(radius, angle, z=None, *, copy: bool = False)")
        with self.assertRaisesRegex(AttributeError, "is 'PoMeshFilled' meant"):
            ormelle.PoMeshFiled

    def test_the_stub_knows_all_names(self):
        stub = pathlib.Path(ormelle.__file__).with_suffix(".pyi")
        names = {node.name: node for node in ast.parse(stub.read_text()).body if isinstance(node, (ast.ClassDef, ast.FunctionDef))}
        self.assertEqual(set(ormelle.__all__) - set(names), set())
        constructor = next(node for node in names["PoMeshFilled"].body if getattr(node, "name", "") == "__init__")
        self.assertLessEqual({"mesh", "valuesIndex", "coloringType"}, {each.arg for each in constructor.args.kwonlyargs})
        properties = {node.name for cls in names.values() for node in cls.body if isinstance(node, ast.FunctionDef)}
        self.assertLessEqual({"valuesIndex", "coloringType", "levelValue"}, properties)


class Refusals(unittest.TestCase):
    """Each is one sentence that says what is wrong, none the raw one of a library below."""

    def test_sentences(self):
        grid = ormelle.PbRegularCartesianGrid2D(3, 4, 0, 0, 2, 3)
        grid.set_values("height", np.arange(12))
        cases = [
            ("PbPolarGrid2D wants angle, too: PbPolarGrid2D(radius, angle, z=None, *, copy=False)",
             lambda: ormelle.PbPolarGrid2D([1, 2])),
            ("PbRegularCartesianGrid2D: num_x must be a whole number, not '3'",
             lambda: ormelle.PbRegularCartesianGrid2D("3", 4, 0, 0, 1, 1)),
            ("PbMesh.getNodeCoord: node can't be 1099511627776", lambda: grid.getNodeCoord(2**40)),
            ("PbMesh.set_values knows no argument 'vals'; is 'values' meant?", lambda: grid.set_values("v", vals=[1])),
            ("PbMesh.set_values: name must be a text, not a ndarray", lambda: grid.set_values(np.zeros(12), "v")),
            ("PbIsovaluesList is called as PbIsovaluesList(values) or PbIsovaluesList(min, max, num)",
             lambda: ormelle.PbIsovaluesList(1, 2)),
            ("PbNumericDisplayFormat: type must be one of AUTO_FORMAT, FLOAT_FORMAT, INTEGER_FORMAT, not 'INTEGER'",
             lambda: ormelle.PbNumericDisplayFormat("INTEGER")),
            ("PbMesh is an abstract class: make an object of a class derived from it, such as PbMesh1D", ormelle.PbMesh),
            ("values must be 3 x 4 numbers, not 4 x 3: transpose them, the first index of a grid counts along x",
             lambda: grid.set_values("v", np.zeros((4, 3)))),
            ('PoMeshFilled.valuesIndex can\'t be "heigth"; the mesh has the sets "height"; is "height" meant?',
             lambda: ormelle.PoMeshFilled(grid, valuesIndex="heigth")),
            ("PoMeshFilled takes objects of PbMesh2D, PbDataMapping, PbIsovaluesList, PbDomain without a name, and all others by "
             "name, not a str", lambda: ormelle.PoMeshFilled(grid, "viridis")),
            ("PoMeshFilled got its mesh twice", lambda: ormelle.PoMeshFilled(grid, mesh=grid)),
            ("PoMeshCrossSection.plane must be 4 numbers, not 3", lambda: ormelle.PoMeshCrossSection(plane=(0, 0, 1))),
            ("a colour can't be \"nevy\": write a name such as navy or steelblue, a text like \"#1f77b4\", or three numbers from 0 "
             "to 1", lambda: ormelle.rgb("nevy")),
            ("a colour must be three numbers from 0 to 1; divide those up to 255 by 255", lambda: ormelle.rgb((255, 0, 0))),
            ("the size of a picture is its width and its height, not 300", lambda: ormelle.render(coin.SoCone(), 300)),
            ("a scene is a node or a list of nodes, not a PbRegularCartesianGrid2D", lambda: ormelle.show(grid)),
        ]
        for sentence, call in cases:
            with self.subTest(sentence), self.assertRaises((TypeError, ValueError)) as caught:
                call()
            self.assertEqual(str(caught.exception), sentence)


FUZZ = r'''
import random, sys, warnings
import numpy as np
from pivy import coin
import ormelle

warnings.simplefilter("ignore")
rnd = random.Random(int(sys.argv[1]))

def grid():
    mesh = ormelle.PbRegularCartesianGrid2D(3, 4, 0, 0, 2, 3)
    mesh.set_values("height", np.arange(12))
    mesh.set_vectors("wind", np.ones((12, 3)))
    return mesh

def solid():
    mesh = ormelle.PbRegularCartesianGrid3D(3, 3, 3, 0, 0, 0, 2, 2, 2)
    mesh.set_values("height", np.arange(27))
    return mesh

SAME = [None, True, -1, 0, 1, 3, 12, 2**31, 2**70, 10**400, 1.5, float("nan"), float("inf"), 1e300, "", "navy", "COLOR_MAPPING", "height",
        "\ud800", b"x", [], [1], [1, 2, 3], (0, 0, 1), (0.5, 0.5), [[1, 2], [3]], ["a", "b"], [None], {}, object(), int, 1j, range(5),
        np.zeros(0), np.zeros((0, 3)), np.zeros((3, 4)), np.full(12, np.nan), np.arange(27.0).reshape(3, 3, 3), np.zeros(3, complex),
        np.array([object()]), np.zeros(3, "i4,f4"), np.array(3), np.int8(3), np.ones(12, bool), np.array([2**62]), np.datetime64("2020")]
FRESH = [lambda: lambda *values: values, lambda: iter([1, 2]), coin.SoCone, coin.SoSeparator, coin.SbVec3f, coin.SoSFFloat,
         coin.SoMaterial, coin.SbPlane, grid, solid, ormelle.PbTriangleMesh2D, ormelle.PbNonLinearDataMapping2, ormelle.PbDomain,
         lambda: ormelle.colours("viridis", 0, 9), lambda: ormelle.PbIsovaluesList([1, 5]), ormelle.PbNumericDisplayFormat,
         ormelle.PoMeshFilled, lambda: object.__new__(ormelle.PoMeshFilled), ormelle.PoCellFilter, ormelle.Camera]

def any_value():
    return rnd.choice(SAME) if rnd.random() < 0.7 else rnd.choice(FRESH)()

def any_values():
    return [any_value() for _ in range(rnd.randint(0, 4))]

def attempt(call, *arguments, **named):
    try:
        return call(*arguments, **named)
    except (TypeError, ValueError, LookupError, AttributeError, OSError, ZeroDivisionError) as error:
        text = str(error)
        if "\n" in text or any(word in text for word in ("incompatible", "Invoked", "Unable to cast", "Wrong number or type")):
            print("not our sentence:", call, text[:200])
    return None

def functions(thing):
    return [name for cls in type(thing).__mro__ if cls.__module__ == "ormelle" for name, member in vars(cls).items()
            if callable(member) and not name.startswith("_")]

def attempt_functions(thing, times):
    names = functions(thing)
    for name in rnd.choices(names, k=times) if names else []:
        attempt(getattr(thing, name), *any_values())

FUNCTIONS = [name for name in ormelle.__all__ if not name.startswith("P") and "threads" not in name]
for name in FUNCTIONS:
    for _ in range(12):
        attempt(getattr(ormelle, name), *any_values(), **rnd.choice([{}, {"size": any_value()}, {"camera": any_value()}]))
for name in ormelle.__all__:
    cls = getattr(ormelle, name)
    if name.startswith("Pb"):
        for _ in range(15):
            attempt(cls, *any_values(), *any_values())
        thing = attempt(cls)
        if thing is not None:
            attempt_functions(thing, 20)
    elif name.startswith("Po"):
        attempt(cls, *any_values(), **{field: any_value() for field in list(cls._fields)[:1]})
        node = attempt(cls)
        if node is None:
            continue
        for mesh in (grid(), solid()) if "mesh" in cls._data else ():
            attempt(setattr, node, "mesh", mesh)
        for place in [*cls._fields, *cls._parts, *cls._data]:
            attempt(setattr, node, place, any_value())
            repr(attempt(getattr, node, place))
        attempt_functions(node, 5)
        repr(node)
        attempt(ormelle.render, node, (8, 8), samples=1)
for thing in (grid(), solid(), ormelle.PoRegularCartesianGrid2D(grid()).getMesh(), grid().locate((0.5, 0.5))):
    attempt_functions(thing, 80)
'''


class NeverACrash(unittest.TestCase):
    def test_random_calls_and_fields(self):
        for seed in "12":
            with self.subTest(seed=seed):
                done = run(FUZZ, seed)
                self.assertEqual((done.returncode, done.stdout, done.stderr[-2000:]), (0, "", ""))

    def test_what_a_node_handed_out_outlives_it(self):
        done = run("import gc, ormelle\n"
                   "def kit():\n"
                   "    mesh = ormelle.PbRegularCartesianGrid2D(3, 3, 0, 0, 1, 1)\n"
                   "    mesh.set_values('v', range(9))\n"
                   "    return ormelle.PoMeshFilled(mesh, ormelle.colours('viridis', 0, 8))\n"
                   "field, part, deep, mesh = kit().valuesIndex, kit().appearance, kit().appearance.drawStyle, kit().getMesh()\n"
                   "held = ormelle.PoRegularCartesianGrid2D(mesh).getMesh()\n"
                   "level = iter(ormelle.PbIsovaluesList([1, 2]))\n"
                   "pixels, values = ormelle.render(kit(), (8, 8)), held.values('v')\n"
                   "junk = [kit() for _ in range(300)]\n"
                   "del junk, held, mesh\n"
                   "gc.collect()\n"
                   "part.drawStyle.lineWidth = 3\n"
                   "print(field.getValue(), part.drawStyle.lineWidth.getValue(), deep.lineWidth.getValue(), list(level),\n"
                   "      pixels.shape, float(values.sum()))\n"
                   "ring = [kit()]\n"
                   "ring.append(ring)\n"
                   "ormelle.PoMeshFilled.keep = kit()\n")
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "0 3.0 0.0 [1.0, 2.0] (8, 8, 4) 36.0\n", ""))


if __name__ == "__main__":
    unittest.main()
