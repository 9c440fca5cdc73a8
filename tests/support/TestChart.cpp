#include "support/TestChart.h"

#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoCallback.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PoOrmelle.h>

PO_KIT_SOURCE(TestChart)

TestChart::TestChart() {
  PO_KIT_CONSTRUCTOR(TestChart);
  PO_KIT_CONSTRUCTED(TestChart);
  setUpConnections(TRUE, TRUE);
}

TestChart::~TestChart() = default;

void TestChart::rebuild() {
  preRebuild();
  ++rebuilds;
  postRebuild();
}

namespace {

/// Takes over an array that the library made.
template <class T>
std::vector<T> take(const T* array, int num) {
  if (!array) return {};
  std::vector<T> values(array, array + num);
  delete[] array;
  return values;
}

}  // namespace

CurveAsker::CurveAsker() {
  PoOrmelle::init();
  TestChart::initClass();
  chart.reset(new TestChart);
  hints.reset(new PoMesh1DHints);
}

void CurveAsker::ask(const std::function<void(SoState*)>& question) const {
  NodePtr<SoSeparator> scene(new SoSeparator);
  for (SoNode* node : {static_cast<SoNode*>(hints.get()), filter.get(), mapping.get()})
    if (node) scene->addChild(node);
  auto* probe = new SoCallback;
  probe->setCallback(
      [](void* data, SoAction* action) { (*static_cast<std::function<void(SoState*)>*>(data))(action->getState()); },
      const_cast<std::function<void(SoState*)>*>(&question));
  scene->addChild(probe);
  SoGetBoundingBoxAction(SbViewportRegion(100, 100)).apply(scene.get());
}

TestCurve CurveAsker::drawn(const PbMesh1D& mesh, int wantsIndex) const {
  TestCurve curve;
  ask([&](SoState* state) {
    int num, *index;
    float *x, *y;
    SoMaterial* material;
    mesh.getXYGeometry(chart.get(), state, num, x, y, material, wantsIndex, index);
    curve = {take(x, num), take(y, num), take(index, mesh.getNumNodes()), {}, {}, {}, NodePtr<SoMaterial>(material)};
  });
  return curve;
}

TestCurve CurveAsker::filtered(const PbMesh1D& mesh, bool wantsParameters) const {
  TestCurve curve;
  ask([&](SoState* state) {
    int num;
    float wanted, *x, *y, *a = &wanted, *b = &wanted;
    SoMaterial* material;
    if (wantsParameters)
      mesh.getFilteredXYGeometry(chart.get(), state, num, x, y, material, a, b);
    else
      mesh.getFilteredXYGeometry(chart.get(), state, num, x, y, material);
    curve = {take(x, num), take(y, num), {}, {}, {}, {}, NodePtr<SoMaterial>(material)};
    if (!wantsParameters) return;
    curve.positions = take(a, num);
    curve.directions = take(b, 2 * num);
  });
  return curve;
}

TestCurve CurveAsker::cut(const PbMesh1D& mesh, int axis, float threshold) const {
  TestCurve curve;
  ask([&](SoState* state) {
    int num, *index, numAdded, *added;
    float *x, *y;
    SoMaterial* material;
    mesh.getGeometryInterThreshold(chart.get(), state, axis, threshold, num, x, y, material, 1, index, numAdded, added);
    curve = {take(x, num), take(y, num), take(index, mesh.getNumNodes()), take(added, numAdded),
             {},           {},           NodePtr<SoMaterial>(material)};
  });
  return curve;
}
