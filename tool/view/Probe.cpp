#include "Probe.h"

#include <Inventor/SoFullPath.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/fields/SoSFNode.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Ormelle/PbCell.h>
#include <Ormelle/PbMesh.h>
#include <Ormelle/PoChart.h>
#include <Ormelle/PoMesh.h>
#include <Ormelle/PoMeshElement.h>
#include <Ormelle/PoPieChartRep.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

#include "ChartProbe.h"

namespace view {

namespace {

// A path that the toolkit hands out, with the insides of kits.
const SoFullPath& whole(const SoPath* path) { return *static_cast<const SoFullPath*>(path); }

const PoBase* kitIn(const SoFullPath& path) {
  for (int i = path.getLength() - 1; i >= 0; --i)
    if (path.getNode(i)->isOfType(PoBase::getClassTypeId())) return static_cast<const PoBase*>(path.getNode(i));
  return nullptr;
}

// The mesh that `kit` has or finds on its way down `path`.
const PbMesh* meshOf(const PoBase* kit, SoPath* path) {
  struct Search {
    const PoBase* kit;
    const PbMesh* mesh = nullptr;
  } search{kit};
  if (kit->isOfType(PoMesh::getClassTypeId())) search.mesh = static_cast<const PoMesh*>(kit)->getMesh();
  if (search.mesh) return search.mesh;
  SoCallbackAction action;
  action.addPreCallback(
      PoBase::getClassTypeId(),
      [](void* data, SoCallbackAction* walk, const SoNode* node) {
        auto* wanted = static_cast<Search*>(data);
        if (node == wanted->kit) wanted->mesh = PoMeshElement::getMesh(walk->getState());
        return SoCallbackAction::CONTINUE;
      },
      &search);
  action.apply(path);
  return search.mesh;
}

// The point in the coordinates of the kit's data: inside the transformation that the kit makes of its domain, and
// outside of those that it gives to single marks.
SbVec3f pointOfData(const PoBase& kit, const SoPickedPoint& picked) {
  SbVec3f point = picked.getObjectPoint(&kit);
  const SoField* part = kit.getField("domainTransform");
  const SoNode* transform = part ? static_cast<const SoSFNode*>(part)->getValue() : nullptr;
  if (!transform) return point;
  const SbMatrix& matrix = static_cast<const SoMatrixTransform*>(transform)->matrix.getValue();
  if (matrix.det4() != 0.0f) matrix.inverse().multVecMatrix(point, point);
  return point;
}

// A place in a mesh: in a cell, or where no cell is found at a node.
struct Place {
  const PbCell* cell = nullptr;
  SbVec3f pcoord{0, 0, 0};
  int node = -1;
};

// What is drawn of a mesh may lie beside its cells by rounding, and by the heights that a kit gives to a flat mesh.
Place locate(const PbMesh& mesh, const SbVec3f& point) {
  Place place;
  const SbVec3f flat(point[0], point[1], 0.0f);
  for (const float tolerance : {1e-5f, 1e-3f, 1e-2f})
    for (const SbVec3f& each : {point, flat})
      if (!place.cell) place.cell = mesh.findContainingCell(each, tolerance, place.pcoord);
  float nearest = std::numeric_limits<float>::infinity();
  const int count = place.cell ? place.cell->getNumNodes() : mesh.getNumNodes();
  for (int i = 0; i < count; ++i) {
    const SbVec3f node = place.cell ? place.cell->getNodeCoord(i) : mesh.getNodeCoord(i);
    const float distance = (node - point).sqrLength();
    if (!(distance < nearest)) continue;
    nearest = distance;
    place.node = place.cell ? place.cell->getNodeIndex(i) : i;
  }
  return place;
}

std::string nameOfSet(const SbString* name, const char* kind, int index) {
  return nameOr(name ? name->getString() : "", kind, index);
}

// The place of a set of `count` elements whose element tells, where it isn't interpolated; -1 if there is none.
int elementOf(const Place& place, PbMesh::DataBinding binding, int count) {
  const int index = binding == PbMesh::PER_NODE ? place.node : place.cell ? place.cell->getIndex() : -1;
  return index < count ? index : -1;
}

std::string tellValues(const PbMesh& mesh, const Place& place, int index) {
  const float* values = mesh.getValuesSet(index);
  if (!values) return {};
  const PbMesh::DataBinding binding = mesh.getValuesBinding(index);
  const int element = elementOf(place, binding, mesh.getNumValues(index));
  if (element < 0) return {};
  const bool isWithin = binding == PbMesh::PER_NODE && place.cell && mesh.getNumValues(index) >= mesh.getNumNodes();
  const float value = isWithin ? place.cell->getValue(place.pcoord, values) : values[element];
  return ", " + nameOfSet(mesh.getValuesSetName(index), "values", index) +
         (std::isnan(value) ? " undefined" : print(" %.6g", static_cast<double>(value)));
}

std::string tellVector(const PbMesh& mesh, const Place& place, int index) {
  const SbVec3f* vectors = mesh.getVecsSet(index);
  if (!vectors) return {};
  const PbMesh::DataBinding binding = mesh.getVecsBinding(index);
  const int element = elementOf(place, binding, binding == PbMesh::PER_NODE ? mesh.getNumNodes() : mesh.getNumCells());
  if (element < 0) return {};
  const bool isWithin = binding == PbMesh::PER_NODE && place.cell;
  const SbVec3f v = isWithin ? place.cell->getValue(place.pcoord, vectors) : vectors[element];
  return ", " + nameOfSet(mesh.getVecsSetName(index), "vectors", index) +
         print(" (%.6g %.6g %.6g)", static_cast<double>(v[0]), static_cast<double>(v[1]), static_cast<double>(v[2]));
}

// Sets have any index; those of scenes are numbered from 0.
constexpr int kMostIndices = 16;

// Values and vectors of all sets at a place, those that the kit shows first.
std::string tellSets(const PbMesh& mesh, const Place& place, int first) {
  std::string text = tellValues(mesh, place, first);
  for (int index = 0; index < kMostIndices; ++index)
    if (index != first) text += tellValues(mesh, place, index);
  for (int index = 0; index < kMostIndices; ++index) text += tellVector(mesh, place, index);
  return text;
}

std::string tellMesh(const PbMesh& mesh, int values_index, const SbVec3f& point) {
  const Place place = locate(mesh, point);
  std::string text;
  if (place.cell) text += print(", cell %d", place.cell->getIndex());
  if (place.node >= 0) text += print(", nearest node %d", place.node);
  return text + tellSets(mesh, place, values_index);
}

std::string tellCurveOfMesh(const PbMesh& mesh, int values_index, const SbVec3f& point) {
  const float* y = mesh.getValuesSet(values_index);
  if (!y || mesh.getValuesBinding(values_index) != PbMesh::PER_NODE) return {};
  Place place;
  place.node = nearestPoint(
      std::min(mesh.getNumNodes(), mesh.getNumValues(values_index)),
      [&mesh, y](int index) { return SbVec3f(mesh.getNodeCoord(index)[0], y[index], 0.0f); }, point);
  if (place.node < 0) return {};
  return print(", nearest node %d, x %.6g", place.node, static_cast<double>(mesh.getNodeCoord(place.node)[0])) +
         tellSets(mesh, place, values_index);
}

// The mesh is looked for only where there may be one: kits that rebuild meanwhile cut the path short.
Answer tellKit(const PoBase& kit, const SoPickedPoint& picked, const SbVec3f& point) {
  const bool isMesh = kit.isOfType(PoMesh::getClassTypeId());
  if (!isMesh && !kit.isOfType(PoChart::getClassTypeId())) return tellChart(kit, picked, point, nullptr);
  const PbMesh* mesh = meshOf(&kit, picked.getPath());
  if (!mesh || kit.isOfType(PoPieChartRep::getClassTypeId())) return tellChart(kit, picked, point, mesh);
  if (isMesh) return {tellMesh(*mesh, static_cast<const PoMesh&>(kit).valuesIndex.getValue(), point)};
  return {tellCurveOfMesh(*mesh, static_cast<const PoChart&>(kit).yValuesIndex.getValue(), point)};
}

// What stands outside of kits, by its type.
std::string tellNode(const SoPickedPoint& picked) {
  const SoNode* node = whole(picked.getPath()).getTail();
  std::string text = node->getTypeId().getName().getString();
  if (node->getName().getLength() > 0) text += std::string(" ") + node->getName().getString();
  return text + pickedText(picked);
}

std::string tellPoint(const SbVec3f& point, const std::optional<tool::Origin>& origin) {
  const tool::Origin add = origin.value_or(tool::Origin{});
  const char* format = origin ? " at %.10g %.10g %.10g" : " at %.6g %.6g %.6g";
  char text[128];
  std::snprintf(text, sizeof(text), format, add[0] + static_cast<double>(point[0]),
                add[1] + static_cast<double>(point[1]), add[2] + static_cast<double>(point[2]));
  return text;
}

}  // namespace

std::string tellPicked(SoNode* root, const SbViewportRegion& viewport, const SbVec2s& pixel,
                       const std::optional<tool::Origin>& origin) {
  SoRayPickAction pick(viewport);
  pick.setPoint(pixel);
  pick.setRadius(4.0f);
  pick.apply(root);
  const SoPickedPoint* picked = pick.getPickedPoint();
  if (!picked) return {};
  const PoBase* kit = kitIn(whole(picked->getPath()));
  if (!kit) return tellNode(*picked) + tellPoint(picked->getPoint(), origin);
  const SbVec3f point = pointOfData(*kit, *picked);
  std::string text = kit->getTypeId().getName().getString();
  if (kit->getName().getLength() > 0) text += std::string(" ") + kit->getName().getString();
  const Answer answer = tellKit(*kit, *picked, point);
  text += answer.text;
  return answer.hasCoordinates ? text + tellPoint(point, origin) : text;
}

}  // namespace view
