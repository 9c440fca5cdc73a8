"""Nodes: together with Pivy, their fields, the life of what they hold."""

import gc
import subprocess
import sys
import tempfile
import unittest
import weakref

import numpy as np
from pivy import coin

import ormelle


def grid():
    mesh = ormelle.PbRegularCartesianGrid2D(3, 3, 0, 0, 2, 2)
    mesh.set_values("v", np.arange(9))
    return mesh


def settle():
    """Lets go of what nodes held that are gone."""
    gc.collect()
    for _ in range(3):
        pass


class WithPivy(unittest.TestCase):
    def test_nodes_go_into_scene_graphs_and_come_back(self):
        kit = ormelle.PoMeshFilled()
        root = coin.SoSeparator()
        root.addChild(kit)
        child = root.getChild(0)
        self.assertIsInstance(child, coin.SoBaseKit)
        self.assertEqual(child, kit)
        child.valuesIndex = 3
        self.assertEqual(kit.valuesIndex.getValue(), 3)
        back = ormelle.cast(child)
        self.assertIsInstance(back, ormelle.PoMeshFilled)
        self.assertEqual(back, kit)
        search = coin.SoSearchAction()
        search.setType(ormelle.PoMesh.getClassTypeId())
        search.apply(root)
        self.assertEqual(search.getPath().getTail(), kit)
        action = coin.SoGetBoundingBoxAction(coin.SbViewportRegion(100, 100))
        kit.setMesh(grid())
        action.apply(root)
        box = action.getBoundingBox()
        self.assertEqual(box.getMax().getValue(), (2, 2, 0))
        self.assertIsNone(ormelle.cast(None))
        cone = coin.SoCone()
        self.assertIs(ormelle.cast(cone), cone)

    def test_references_are_counted(self):
        kit = ormelle.PoMeshFilled()
        self.assertEqual(kit.getRefCount(), 1)
        root = coin.SoSeparator()
        root.addChild(kit)
        others = [ormelle.cast(root.getChild(0)) for _ in range(50)]
        self.assertEqual(kit.getRefCount(), 52)
        del others
        self.assertEqual(kit.getRefCount(), 2)
        name = coin.SbName("the_kit")
        kit.setName(name)
        del kit
        self.assertEqual(root.getChild(0).getRefCount(), 1)
        root.removeAllChildren()
        self.assertIsNone(coin.SoBase.getNamedBase(name, coin.SoType.fromName("PoMeshFilled")))

    def test_classes_are_those_of_the_toolkit(self):
        self.assertTrue(issubclass(ormelle.PoMeshFilled, ormelle.PoMesh2D))
        self.assertTrue(issubclass(ormelle.PoMesh, coin.SoBaseKit))
        self.assertTrue(issubclass(ormelle.PoDomain, coin.SoNode))
        for name in dir(ormelle):
            if name.startswith("Po"):
                cls = getattr(ormelle, name)
                self.assertEqual(cls.__name__, name)
                if name == "PoCellFilter":
                    continue  # abstract in C++ only
                if not coin.SoType.fromName(name).canCreateInstance():
                    with self.assertRaisesRegex(TypeError, "abstract"):
                        cls()
                else:
                    self.assertEqual(cls().getTypeId().getName().getString(), name)
        with self.assertRaises(AttributeError):
            ormelle.PoNothing

    def test_docstrings_tell_of_class_and_fields(self):
        text = ormelle.PoMeshFilled.__doc__
        for words in ("Paints the cells", "coloringType (SFEnum = COLOR_INHERITED)", "COLOR_AVERAGE", "valuesIndex (SFInt32 = -1)",
                      "Index of the set of values", "mesh (PbMesh2D)", "groupFilled"):
            self.assertIn(words, text)


class Fields(unittest.TestCase):
    def test_values_of_many_kinds(self):
        kit = ormelle.PoMeshFilled(valuesIndex=np.int64(4), coloringType="COLOR_AVERAGE", creaseAngle=1, useOverallNormal=True)
        self.assertEqual(kit.valuesIndex.getValue(), 4)
        self.assertEqual(kit.coloringType.getValue(), ormelle.PoMesh.COLOR_AVERAGE)
        kit.coloringType = kit.COLOR_MAPPING
        self.assertEqual(kit.coloringType.getValue(), 2)
        curve = ormelle.PoCurve(point=[(0, 1), (2, 3)], markerIndexList=[0, 1], markerXList=np.arange(3.0))
        self.assertEqual([list(point.getValue()) for point in curve.point.getValues()], [[0, 1], [2, 3]])
        self.assertEqual(curve.markerIndexList.getNum(), 2)
        curve.point = np.zeros((0, 2))
        self.assertEqual(curve.point.getNum(), 0)
        legend = ormelle.PoLinearValueLegend(start=(1, 2), titleString="m")
        self.assertEqual(list(legend.start.getValue().getValue()), [1, 2])
        legend.start = coin.SbVec2f(3, 4)
        self.assertEqual(list(legend.start.getValue().getValue()), [3, 4])
        table = ormelle.PoNonLinearDataMapping2(value=[1, 2], color=["#ff0000", (0, 0, 1)])
        self.assertEqual(table.color[1].getValue(), (0, 0, 1))
        kit.appearance.drawStyle.lineWidth = 3
        self.assertEqual(kit.getPart("appearance.drawStyle", False).lineWidth.getValue(), 3)

    def test_sets_and_colours_by_name(self):
        mesh = grid()
        mesh.set_values("w", np.zeros(9))
        mesh.set_vectors("wind", np.zeros((9, 3)))
        kit = ormelle.PoMeshFilled(valuesIndex="w", vecsIndex="wind", mesh=mesh)  # whichever comes first
        self.assertEqual((kit.valuesIndex.getValue(), kit.vecsIndex.getValue()), (1, 0))
        kit.valuesIndex = "v"
        kit.valuesIndexForCellFilter = np.str_("w")
        self.assertEqual((kit.valuesIndex.getValue(), kit.valuesIndexForCellFilter.getValue()), (0, 1))
        for wrong in ("wind", "", "vv"):
            with self.assertRaisesRegex(ValueError, 'the mesh has the sets "v", "w"'):
                kit.valuesIndex = wrong
        for bare in (ormelle.PoMeshFilled(), ormelle.PoCurveLine()):
            with self.assertRaisesRegex(ValueError, "without a mesh"):
                setattr(bare, "valuesIndex" if "valuesIndex" in bare._fields else "yValuesIndex", "v")
        bars = ormelle.PoSingleHistogram(color=["navy", "#f00"])
        self.assertEqual(bars.color[1].getValue(), (1, 0, 0))
        bars.color = "white"
        self.assertEqual([colour.getValue() for colour in bars.color.getValues()], [(1, 1, 1)])
        material = ormelle.SoMaterial(diffuseColor="lime", transparency=0.5)
        self.assertIsInstance(material, coin.SoMaterial)
        self.assertEqual(material.diffuseColor[0].getValue(), (0, 1, 0))

    def test_data_without_names(self):
        mesh, mapping, levels = grid(), ormelle.PbLinearDataMapping(), ormelle.PbIsovaluesList([1, 2])
        for given, coloring in (((mesh,), "COLOR_INHERITED"), ((mapping, mesh), "COLOR_MAPPING"),
                                ((mesh, mapping, levels), "COLOR_CONTOURING")):
            kit = ormelle.PoMeshFilled(*given)
            self.assertEqual((kit.coloringType.getValue(), kit.valuesIndex.getValue(), kit.vecsIndex.getValue()),
                             (getattr(kit, coloring), 0, -1))
            self.assertIs(kit.mesh, mesh)
        kit = ormelle.PoMeshFilled(mesh, mapping, valuesIndex=-1, coloringType="COLOR_AVERAGE")
        self.assertEqual((kit.coloringType.getValue(), kit.valuesIndex.getValue()), (kit.COLOR_AVERAGE, -1))
        named = ormelle.PoMeshFilled(mesh=mesh, dataMapping=mapping)
        self.assertEqual((named.coloringType.getValue(), named.valuesIndex.getValue()), (kit.COLOR_INHERITED, -1))
        legend = ormelle.PoLinearValueLegend(mapping, levels, ormelle.PbMiscTextAttr())
        self.assertIs(legend.getIsovaluesList(), levels)
        self.assertEqual(repr(kit), "<ormelle.PoMeshFilled: mesh, dataMapping, valuesIndex = -1, coloringType = COLOR_AVERAGE>")
        for wrong in ((mapping, mapping), (ormelle.PbRegularCartesianGrid3D(),), (coin.SoCone(),)):
            with self.subTest(wrong=wrong), self.assertRaisesRegex(TypeError, "PoMeshFilled"):
                ormelle.PoMeshFilled(*wrong)

    def test_wrong_values_are_refused_and_change_nothing(self):
        kit = ormelle.PoMeshFilled(valuesIndex=1)
        cases = [
            (ValueError, "without a mesh", "valuesIndex", "x"),
            (TypeError, "whole number", "valuesIndex", 1.5),
            (TypeError, "None", "valuesIndex", None),
            (ValueError, "can't hold", "valuesIndex", 2**40),
            (ValueError, "COLOR_AVERAGE", "coloringType", "COLOR_NONE"),
            (ValueError, "COLOR_AVERAGE", "coloringType", 99),
            (TypeError, "number", "creaseAngle", "wide"),
            (TypeError, "True or False", "useOverallNormal", None),
            (TypeError, "part", "appearance", 3),
            (TypeError, "AppearanceKit", "appearance", coin.SoCone()),
            (TypeError, "holds other parts", "alternateRep", coin.SoSeparator()),
            (AttributeError, "valuesIndex", "valueIndex", 3),
        ]
        for error, words, name, value in cases:
            with self.subTest(name=name, value=value), self.assertRaisesRegex(error, words):
                setattr(kit, name, value)
        self.assertEqual(kit.valuesIndex.getValue(), 1)
        with self.assertRaisesRegex(AttributeError, "valuesIndex"):
            kit.valueIndex
        with self.assertRaises(ValueError):
            ormelle.PoCurve(point=[1, 2, 3])
        with self.assertRaises((TypeError, ValueError)):
            ormelle.PoNonLinearDataMapping2(value="abc")
        with self.assertRaises(TypeError):
            ormelle.PoCurve(markerIndexList=[0.5])


class DataOfNodes(unittest.TestCase):
    def test_data_live_as_long_as_the_node(self):
        class Mesh(ormelle.PbRegularCartesianGrid2D):
            pass

        mesh = Mesh(3, 3, 0, 0, 1, 1)
        gone = weakref.ref(mesh)
        kit = ormelle.PoMeshFilled(mesh=mesh)
        root = ormelle.group(kit)
        before = ormelle._core.num_nodes_with_data()
        del mesh, kit
        settle()
        self.assertIs(ormelle.cast(root.getChild(0)).getMesh(), gone())
        del root
        settle()
        self.assertIsNone(gone())
        self.assertEqual(ormelle._core.num_nodes_with_data(), before - 1)

    def test_data_that_are_replaced_go(self):
        kit = ormelle.PoMeshFilled()
        first = grid()
        kit.setMesh(first)
        before = sys.getrefcount(first)
        kit.setMesh(grid())
        self.assertEqual(sys.getrefcount(first), before - 1)
        kit.setMesh(None)
        self.assertIsNone(kit.getMesh())
        self.assertIsNone(kit.mesh)

    def test_many_kits_come_and_go(self):
        mesh, mapping = grid(), ormelle.PbLinearDataMapping()
        before = sys.getrefcount(mesh), sys.getrefcount(mapping), ormelle._core.num_nodes_with_data()
        for _ in range(300):
            kit = ormelle.PoMeshFilled(mesh=mesh, dataMapping=mapping)
            kit.setUpdateMethod(kit.UPDATE_IMMEDIATE)
            mesh.touch()
        del kit
        settle()
        self.assertEqual((sys.getrefcount(mesh), sys.getrefcount(mapping), ormelle._core.num_nodes_with_data()), before)

    def test_wrong_data_are_refused(self):
        kit = ormelle.PoMeshFilled()
        for wrong in (ormelle.PbRegularCartesianGrid3D(), ormelle.PbDomain(), 7, "mesh", kit):
            with self.subTest(wrong=wrong), self.assertRaisesRegex(TypeError, "PoMeshFilled.setMesh wants a PbMesh2D"):
                kit.setMesh(wrong)
        self.assertFalse(hasattr(ormelle.PoDomain, "setMesh"))

    def test_a_copy_has_the_same_data(self):
        kit = ormelle.PoMeshFilled(mesh=grid())
        twin = kit.copy()
        self.assertIsInstance(twin, ormelle.PoMeshFilled)
        mesh = kit.getMesh()
        del kit
        settle()
        self.assertIs(twin.getMesh(), mesh)

    def test_changes_reach_the_kit(self):
        values = np.arange(9, dtype="f4")
        mesh = ormelle.PbRegularCartesianGrid2D(3, 3, 0, 0, 2, 2)
        mesh.set_values("v", values)
        kit = ormelle.PoMeshFilled(mesh=mesh, dataMapping=ormelle.PbLinearDataMapping(0, "#000000", 8, "#ffffff"), valuesIndex=0,
                                   coloringType="COLOR_MAPPING")
        first = ormelle.render(kit, (20, 20), samples=1)
        values[:] = 8
        mesh.touch()
        self.assertTrue(kit.isModified())
        second = ormelle.render(kit, (20, 20), samples=1)
        self.assertFalse(kit.isModified())
        self.assertGreater(second[..., 0].sum(), first[..., 0].sum())

    def test_mesh_nodes_copy(self):
        values = np.arange(9, dtype="f4")
        mesh = ormelle.PbRegularCartesianGrid2D(3, 3, 0, 0, 2, 2, np.zeros((3, 3)))
        mesh.set_values("v", values)
        mesh.set_vectors("w", np.ones((9, 3)))
        mesh.set_strings("s", list("abcdefghi"))
        node = ormelle.PoRegularCartesianGrid2D(mesh)
        values[:] = 99
        held = node.getMesh()
        np.testing.assert_array_equal(held.values("v"), np.arange(9))
        self.assertEqual(held.strings("s")[8], "i")
        del node, mesh
        settle()
        self.assertEqual(held.vectors("w").shape, (9, 3))  # keeps its node alive
        held.set_values("more", np.zeros(9))
        twin = ormelle.PoRegularCartesianGrid2D(held)
        self.assertEqual(twin.getMesh().value_names, {0: "v", 1: "more"})
        twin.setGeometry(2, 2, 0, 0, 1, 1)
        self.assertEqual(twin.getMesh().getNumValuesSet(), 0)
        for wrong in (ormelle.PbPolarGrid2D([1, 2], [1, 2]), ormelle.PbDomain(), 3):
            with self.subTest(wrong=wrong), self.assertRaises(TypeError):
                ormelle.PoRegularCartesianGrid2D(wrong)


class CellFilters(unittest.TestCase):
    def setUp(self):
        self.mesh = ormelle.PbRegularCartesianGrid3D(11, 11, 11, 0, 0, 0, 1, 1, 1)
        self.mesh.set_values("x", self.mesh.coordinates()[:, 0])
        self.mesh.set_vectors("along", [[1, 0, 0]] * 1331)

    def reach(self, cells, kit=None):
        """How far along x the kit goes that sees only these cells."""
        kit = kit or ormelle.PoMeshSkin(mesh=self.mesh)
        self.filter = cells if isinstance(cells, coin.SoNode) else ormelle.PoCellFilter(cells)
        action = coin.SoGetBoundingBoxAction(coin.SbViewportRegion(9, 9))
        action.apply(ormelle.group(self.filter, kit))
        box = action.getBoundingBox()
        return round(box.getMax()[0], 5)

    def test_masks_and_functions_in_all_kits(self):
        mask = np.zeros((10, 10, 10), bool)
        mask[:4] = True
        section = ormelle.PoMeshCrossSection(mesh=self.mesh, plane=coin.SbPlane(coin.SbVec3f(0, 0, 1), 0.55))
        level = ormelle.PoMeshLevelSurf(mesh=self.mesh, valuesIndexForLevel=0, levelValue=0.33)
        stream = ormelle.PoStreamLine(mesh=self.mesh, vecsIndex=0, startPoints=[(0.05, 0.55, 0.55)], maxLength=9)
        for cells in (mask, mask.tolist(), np.asfortranarray(mask), mask.ravel(), lambda cell, value: cell < 400):
            for kit, end in ((None, 0.4), (section, 0.4), (level, 0.33), (stream, 0.4)):
                with self.subTest(cells=type(cells), kit=kit):
                    self.assertAlmostEqual(self.reach(cells, kit), end, delta=0.03)
        values = self.mesh.set_values("cells", np.arange(1000))
        skin = ormelle.PoMeshSkin(mesh=self.mesh, valuesIndexForCellFilter=values)
        self.assertEqual(self.reach(lambda cell, value: value < 200, skin), 0.2)
        mask[5] = True
        kept = self.reach(mask)
        mask[:] = True
        self.filter.touch()
        self.assertEqual((kept, self.reach(self.filter)), (0.6, 1))
        self.assertEqual(self.reach(ormelle.PoCellFilter()), 1)

    def test_wrong_cells(self):
        for wrong in (3, [1, 0], np.zeros(3), "all"):
            with self.subTest(wrong=wrong), self.assertRaisesRegex(ValueError, "True and False"):
                ormelle.PoCellFilter(wrong)
        with self.assertRaisesRegex(TypeError, "rule of its own"):
            ormelle.PoIntervalCellFilter([True])
        kit = ormelle.PoMeshSkin(mesh=self.mesh)
        with self.assertWarnsRegex(RuntimeWarning, "mask has only 200 entries"):
            ormelle.render(ormelle.group(ormelle.PoCellFilter(np.ones(200, bool)), kit), (9, 9))

    def test_functions_that_raise(self):
        asked = []
        scene = ormelle.group(ormelle.PoCellFilter(lambda cell, value: asked.append(cell) or 1 / 0),
                              ormelle.PoMeshSkin(mesh=self.mesh))
        for _ in range(2):
            with self.assertRaises(ZeroDivisionError):
                ormelle.render(scene, (9, 9), samples=1)
        self.assertLess(len(asked), 20)
        reports = []
        self.addCleanup(setattr, sys, "unraisablehook", sys.unraisablehook)
        sys.unraisablehook = lambda report: reports.append(report.exc_type)
        self.reach(lambda cell, value: 1 / 0)
        self.assertEqual(set(reports), {ZeroDivisionError})

    def test_life_copies_and_files(self):
        def accept(cell, value):
            return cell < 300

        gone = weakref.ref(accept)
        root = ormelle.group(ormelle.PoCellFilter(accept), ormelle.PoMeshSkin())
        twin = ormelle.cast(root.getChild(0)).copy()
        self.assertIs(twin.cells, accept)
        with tempfile.NamedTemporaryFile(suffix=".iv") as file:
            for binary, left in ((False, 1), (True, 2)):
                with self.assertWarnsRegex(RuntimeWarning, "can't be written"):
                    ormelle.write(root, file.name, binary)
                self.assertEqual(ormelle.read(file.name).getNumChildren(), left)
        del root, twin, accept
        gc.collect()
        self.assertIsNone(gone())


class WhatKitsChose(unittest.TestCase):
    def test_axes(self):
        axis = ormelle.PoLinearAxis(end=10, titleString="metres", titleVisibility="VISIBILITY_ON")
        axis.rebuild()
        np.testing.assert_allclose(axis.getMainGradCoords(), range(11))
        self.assertEqual(axis.texts("mainGradText"), [str(n) for n in range(11)])
        self.assertIn("metres", axis.texts())
        self.assertEqual((axis.getStep(), axis.getTitle()["string"], axis.getGrad()["position"]), (1, "metres", axis.GRAD_BELOW))
        axis = ormelle.PoLogAxis(end=3)
        axis.rebuild()
        self.assertEqual(axis.getLogGrad()["digits"], [2, 4, 6, 8])
        self.assertEqual(len(axis.getSubGradCoords()), 12)
        with self.assertRaisesRegex(ValueError, "no part"):
            axis.texts("nothing")
        with self.assertRaisesRegex(TypeError, "PoLogAxis has no getStep"):
            ormelle.PoLinearAxis.getStep(axis)

    def test_picked_bars_and_slices(self):
        def pick(kit, x, y):
            action = coin.SoRayPickAction(coin.SbViewportRegion(100, 100))
            action.setRay(coin.SbVec3f(x, y, 9), coin.SbVec3f(0, 0, -1))
            action.apply(ormelle.group(kit))
            return action, action.getPickedPoint()

        bars = ormelle.PoSingleHistogram(value=[3, 4, 5], end=3)
        action, point = pick(bars, 1.5, 1)
        self.assertEqual(bars.getPickedBarNumber(point), 1)
        with self.assertRaisesRegex(TypeError, "SoPickedPoint"):
            bars.getPickedBarNumber(3)
        pie = ormelle.PoPieChart2D(sliceValue=[1, 1, 1, 1], center=(0, 0))
        pie.setSliceToTranslate(2, 0.25)
        self.assertEqual((pie.getSliceToTranslate(2), pie.getSliceToTranslate(0)), (0.25, 0))


class StartAndEnd(unittest.TestCase):
    """Programs of their own, which must end without a word and with status 0."""

    def check(self, program):
        done = subprocess.run([sys.executable, "-B", "-c", program], capture_output=True, text=True, timeout=60)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))

    def test_import_before_and_after_pivy(self):
        use = "k = ormelle.PoMeshFilled(); s = coin.SoSeparator(); s.addChild(k); c = coin.SoCone(); s.addChild(c)\n"
        self.check("import ormelle\nfrom pivy import coin\n" + use)
        self.check("from pivy import coin\nimport ormelle\n" + use)
        self.check("from pivy import coin\nimport ormelle\n" + use + "import sys\ndel sys.modules['ormelle'], ormelle\n")
        self.check("import ormelle\nfrom pivy import coin\n" + use + "import sys\ndel sys.modules['pivy'], coin, k\n")

    def test_end_with_everything_alive(self):
        self.check("import ormelle, numpy\n"
                   "g = ormelle.PbRegularCartesianGrid2D(3, 3, 0, 0, 1, 1)\n"
                   "g.set_values('v', numpy.zeros(9))\n"
                   "k = [ormelle.PoMeshFilled(mesh=g, dataMapping=ormelle.PbLinearDataMapping()) for _ in range(9)]\n"
                   "p = ormelle.render(ormelle.group(*k), (20, 20))\n"
                   "f = ormelle.PoCellFilter(lambda cell, value: True)\n"
                   "ormelle.keep = [k, f, ormelle.PoRegularCartesianGrid2D(g).getMesh()]\n")


if __name__ == "__main__":
    unittest.main()
