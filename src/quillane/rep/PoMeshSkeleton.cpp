#include <Ormelle/PoMeshSkeleton.h>

#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbMesh3D.h>
#include <Ormelle/PoCellFilterElement.h>
#include <Ormelle/PoDataMappingElement.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "quillane/emit/PiMeshNodes.h"
#include "quillane/rep/PiMeshScratch.h"

PO_KIT_SOURCE(PoMeshSkeleton)

namespace {

constexpr int kMostPlanes = 1000;  // more can't be told apart, and each takes its time

int numPlanes(const SoSFInt32& field) { return std::clamp(static_cast<int>(field.getValue()), 0, kMostPlanes); }

/// The middles of `num` equal slices.
std::vector<float> positions(int num, float min, float max) {
  std::vector<float> middles;
  middles.reserve(static_cast<std::size_t>(std::max(0, num)));
  const float step = num > 0 ? (max - min) / static_cast<float>(num) : 0;
  for (int i = 0; i < num; ++i) middles.push_back(min + step / 2 + static_cast<float>(i) * step);
  return middles;
}

}  // namespace

PoMeshSkeleton::PoMeshSkeleton() {
  PO_KIT_CONSTRUCTOR(PoMeshSkeleton);
  PO_KIT_ADD_CATALOG_ENTRY(skeletonMaterialBinding, SoMaterialBinding, alternateRep);
  PO_KIT_ADD_CATALOG_ENTRY(skeletonXContourSep, SoSeparator, alternateRep);
  PO_KIT_ADD_CATALOG_ENTRY(skeletonXContourApp, SoAppearanceKit, skeletonXContourSep);
  PO_KIT_ADD_CATALOG_ENTRY(skeletonXContourGroup, SoGroup, skeletonXContourSep);
  PO_KIT_ADD_CATALOG_ENTRY(skeletonYContourSep, SoSeparator, alternateRep);
  PO_KIT_ADD_CATALOG_ENTRY(skeletonYContourApp, SoAppearanceKit, skeletonYContourSep);
  PO_KIT_ADD_CATALOG_ENTRY(skeletonYContourGroup, SoGroup, skeletonYContourSep);
  PO_KIT_ADD_CATALOG_ENTRY(skeletonZContourSep, SoSeparator, alternateRep);
  PO_KIT_ADD_CATALOG_ENTRY(skeletonZContourApp, SoAppearanceKit, skeletonZContourSep);
  PO_KIT_ADD_CATALOG_ENTRY(skeletonZContourGroup, SoGroup, skeletonZContourSep);
  PO_KIT_ADD_FIELD(numXContour, (3));
  PO_KIT_ADD_FIELD(numYContour, (3));
  PO_KIT_ADD_FIELD(numZContour, (3));
  PO_KIT_CONSTRUCTED(PoMeshSkeleton);
  for (SoField* field : std::initializer_list<SoField*>{&numXContour, &numYContour, &numZContour}) watchField(*field);
  for (SoSFNode* part : std::initializer_list<SoSFNode*>{
           &skeletonMaterialBinding, &skeletonXContourSep, &skeletonXContourGroup, &skeletonYContourSep,
           &skeletonYContourGroup, &skeletonZContourSep, &skeletonZContourGroup})
    ownPart(*part);
  beginWatching();
}

PoMeshSkeleton::~PoMeshSkeleton() = default;

void PoMeshSkeleton::addElementsAllCaches() {
  inherited::addElementsAllCaches();
  PoDataMappingElement::get(getState());
  PoCellFilterElement::get(getState());
}

void PoMeshSkeleton::preRebuild() {
  inherited::preRebuild();
  addDataMappingInCache();
  addCellFilterInCache();
}

void PoMeshSkeleton::rebuild() {
  preRebuild();
  clearZelNodes();
  if (const PbMesh3D* mesh = drawnMesh()) {
    PiRebuildScope scope;
    const float* values = nullptr;
    if (m_currentColoring != COLOR_INHERITED) values = findNodeValues(*mesh, valuesIndex.getValue());
    if (!values) m_currentColoring = COLOR_INHERITED;
    showBinding(values);
    const SbBox3f box = mesh->getBoundingBox();
    std::vector<float> planes[3];
    const SoSFInt32* const nums[3] = {&numXContour, &numYContour, &numZContour};
    for (int axis = 0; axis < 3 && !box.isEmpty(); ++axis)
      planes[axis] = positions(numPlanes(*nums[axis]), box.getMin()[axis], box.getMax()[axis]);
    mesh->meshSkeleton(this, values, planes[0].data(), planes[1].data(), planes[2].data());
  } else {
    for (const char* part :
         {"skeletonMaterialBinding", "skeletonXContourGroup", "skeletonYContourGroup", "skeletonZContourGroup"})
      setPart(part, nullptr);
  }
  clearZelNodes();
  postRebuild();
}

void PoMeshSkeleton::showBinding(const float* values) {
  if (values) {
    nodes().materialBinding = new SoMaterialBinding;
    nodes().materialBinding->value = SoMaterialBinding::PER_VERTEX_INDEXED;
  }
  setPart("skeletonMaterialBinding", nodes().materialBinding);
}

void PoMeshSkeleton::makeAllContours(const float* values, const float* x, const float* y, const float* z) {
  const bool isAny = m_currentMesh3D && !m_currentMesh3D->getBoundingBox().isEmpty();
  const auto num = [isAny](const SoSFInt32& field) { return isAny ? numPlanes(field) : 0; };
  makeSkeletonContours(num(numXContour), x, 1, 0, 0, values, "skeletonXContourGroup");
  makeSkeletonContours(num(numYContour), y, 0, 1, 0, values, "skeletonYContourGroup");
  makeSkeletonContours(num(numZContour), z, 0, 0, 1, values, "skeletonZContourGroup");
}

void PoMeshSkeleton::makeSkeletonContours(int n, const float* positions, float a, float b, float c, const float* values,
                                          const SbString& part) {
  auto* group = new SoGroup;
  group->ref();
  for (int i = 0; i < n; ++i) {
    auto* plane = new SoGroup;
    group->addChild(plane);
    if (makeCrossContour(a, b, c, positions[i], values, plane) < 1) {
      group->removeChild(plane);
      continue;
    }
    if (!values) continue;
    mapColor(0, nullptr, 1);
    plane->insertChild(nodes().material, 0);
    deleteTransparencyParts(m_currentDataMapping, nodes().material, nodes().materialBinding, plane);
  }
  setPart(part, group);
  group->unref();
}

void PoMeshSkeleton::regularGrid3DSkeleton(const PbRegularCartesianGrid3D*, const float* values, const float* x,
                                           const float* y, const float* z) {
  makeAllContours(values, x, y, z);
}
void PoMeshSkeleton::paralCartGrid3DSkeleton(const PbParalCartesianGrid3D*, const float* values, const float* x,
                                             const float* y, const float* z) {
  makeAllContours(values, x, y, z);
}
void PoMeshSkeleton::cartGrid3DSkeleton(const PbCartesianGrid3D*, const float* values, const float* x, const float* y,
                                        const float* z) {
  makeAllContours(values, x, y, z);
}
void PoMeshSkeleton::indexedMeshSkeleton(const PbIndexedMesh3D*, const float* values, const float* x, const float* y,
                                         const float* z) {
  makeAllContours(values, x, y, z);
}
