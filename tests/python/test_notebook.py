"""The notebook of the documentation runs, and still shows what it gives."""

import ast
import json
import os
import pathlib
import unittest

ROOT = pathlib.Path(os.environ["ORMELLE_SOURCE_DIR"])


def run(source, names):
    """Runs a cell as a notebook does; the value of a last expression is the result."""
    tree = ast.parse(source)
    last = tree.body.pop() if isinstance(tree.body[-1], ast.Expr) else None
    exec(compile(tree, "cell", "exec"), names)
    return eval(compile(ast.Expression(last.value), "cell", "eval"), names) if last else None


class Notebook(unittest.TestCase):
    def test_cells_give_what_is_shown(self):
        before = os.getcwd()
        os.chdir(ROOT)
        self.addCleanup(os.chdir, before)
        cells = json.loads((ROOT / "docs/python.ipynb").read_text())["cells"]
        names, pictures = {}, 0
        for cell in cells:
            if cell["cell_type"] != "code":
                continue
            result = run("".join(cell["source"]), names)
            shown = cell["outputs"][0]["data"] if cell["outputs"] else {}
            if "text/plain" in shown:
                self.assertEqual(repr(result), "".join(shown["text/plain"]))
            if "image/png" in shown:
                pictures += 1
                self.assertTrue(result._repr_png_().startswith(b"\x89PNG"))
                self.assertGreater(result.array.std(), 10)
        self.assertEqual(pictures, 3)
        self.assertLess((ROOT / "docs/python.ipynb").stat().st_size, 300_000)


if __name__ == "__main__":
    unittest.main()
