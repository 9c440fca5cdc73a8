#include "Probe.h"

#include <Inventor/SoFullPath.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/fields/SoSFNode.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Ormelle/PbCell.h>
#include <Ormelle/PbMesh.h>
#include <Ormelle/PoChart.h>
#include <Ormelle/PoMesh.h>
#include <Ormelle/PoPieChartRep.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "ChartProbe.h"
#include "Words.h"

namespace view {

namespace {

// A path that the toolkit hands out, with the insides of kits.
const SoFullPath& whole(const SoPath* path) { return *static_cast<const SoFullPath*>(path); }

// Where the last kit stands in a path; -1 if there is none.
int findKit(const SoFullPath& path) {
  int place = path.getLength() - 1;
  while (place >= 0 && !path.getNode(place)->isOfType(PoBase::getClassTypeId())) --place;
  return place;
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

std::string tellValues(const PbMesh& mesh, const Place& place, int index, const std::string& unit = "") {
  const float* values = mesh.getValuesSet(index);
  if (!values) return {};
  const PbMesh::DataBinding binding = mesh.getValuesBinding(index);
  const int element = elementOf(place, binding, mesh.getNumValues(index));
  if (element < 0) return {};
  const bool isWithin = binding == PbMesh::PER_NODE && place.cell && mesh.getNumValues(index) >= mesh.getNumNodes();
  const float value = isWithin ? place.cell->getValue(place.pcoord, values) : values[element];
  return ", " + nameOfSet(mesh.getValuesSetName(index), "values", index) + " " +
         (isWithin ? roughly(static_cast<double>(value)) : exactly(value)) + (std::isnan(value) ? "" : unit);
}

std::string tellVector(const PbMesh& mesh, const Place& place, int index) {
  const SbVec3f* vectors = mesh.getVecsSet(index);
  if (!vectors) return {};
  const PbMesh::DataBinding binding = mesh.getVecsBinding(index);
  const int element = elementOf(place, binding, binding == PbMesh::PER_NODE ? mesh.getNumNodes() : mesh.getNumCells());
  if (element < 0) return {};
  const bool isWithin = binding == PbMesh::PER_NODE && place.cell;
  const SbVec3f v = isWithin ? place.cell->getValue(place.pcoord, vectors) : vectors[element];
  return ", " + nameOfSet(mesh.getVecsSetName(index), "vectors", index) + " (" + roughly(static_cast<double>(v[0])) +
         " " + roughly(static_cast<double>(v[1])) + " " + roughly(static_cast<double>(v[2])) + ")";
}

// Sets have any index; those of scenes are numbered from 0.
constexpr int kMostIndices = 16;

// Values and vectors of all sets at a place, those that the kit shows first, with their unit.
std::string tellSets(const PbMesh& mesh, const Place& place, int first, const std::string& unit) {
  std::string text = tellValues(mesh, place, first, unit);
  for (int index = 0; index < kMostIndices; ++index)
    if (index != first) text += tellValues(mesh, place, index);
  for (int index = 0; index < kMostIndices; ++index) text += tellVector(mesh, place, index);
  return text;
}

std::string tellMesh(const PbMesh& mesh, const Question& question) {
  const Place place = locate(mesh, question.point);
  std::string text;
  if (place.cell) text += print(", cell %d", place.cell->getIndex());
  if (place.node >= 0) text += print(", nearest node %d", place.node);
  const auto& kit = static_cast<const PoMesh&>(question.kit);
  return text + tellSets(mesh, place, kit.valuesIndex.getValue(), question.scene.unitOf(question.place));
}

std::string tellCurveOfMesh(const PbMesh& mesh, const Question& question) {
  const int values_index = static_cast<const PoChart&>(question.kit).yValuesIndex.getValue();
  const float* y = mesh.getValuesSet(values_index);
  if (!y || mesh.getValuesBinding(values_index) != PbMesh::PER_NODE) return {};
  Place place;
  place.node = nearestPoint(
      std::min(mesh.getNumNodes(), mesh.getNumValues(values_index)),
      [&mesh, y](int index) { return SbVec3f(mesh.getNodeCoord(index)[0], y[index], 0.0f); }, question.point);
  if (place.node < 0) return {};
  return print(", nearest node %d, x ", place.node) + question.scale(0).data(mesh.getNodeCoord(place.node)[0]) +
         tellSets(mesh, place, values_index, question.scale(1).behind(y[place.node]));
}

Answer tellKit(const Question& question) {
  const PbMesh* mesh = question.mesh();
  if (mesh && question.kit.isOfType(PoMesh::getClassTypeId())) return {tellMesh(*mesh, question)};
  if (mesh && question.kit.isOfType(PoChart::getClassTypeId()) &&
      !question.kit.isOfType(PoPieChartRep::getClassTypeId()))
    return {tellCurveOfMesh(*mesh, question)};
  return tellChart(question);
}

// What stands outside of kits, by its type.
std::string tellNode(const SoPickedPoint& picked) {
  const SoNode* node = whole(picked.getPath()).getTail();
  std::string text = node->getTypeId().getName().getString();
  if (node->getName().getLength() > 0) text += std::string(" ") + node->getName().getString();
  return text + pickedText(picked);
}

std::string tellPoint(const SbVec3f& point, const std::optional<tool::Origin>& origin, const Question* question) {
  std::string text = " at";
  const double least = 1e-12 * static_cast<double>(point.length());  // what is below is left by rounding
  for (const int direction : {0, 1, 2}) {
    const Scale scale = question ? question->scale(direction) : Scale();
    std::optional<double> from;
    if (origin) from = (*origin)[static_cast<std::size_t>(direction)];
    const auto coordinate = static_cast<double>(point[direction]);
    text += " " + scale.place(std::abs(coordinate) < least ? 0.0 : coordinate, from);
  }
  return text;
}

}  // namespace

// The scene is looked at before the picking: kits that rebuild in between would cut a path short.
std::string tellPicked(SoNode* root, const SbViewportRegion& viewport, const SbVec2s& pixel,
                       const std::optional<tool::Origin>& origin) {
  const Surroundings scene(root, viewport);
  SoRayPickAction pick(viewport);
  pick.setPoint(pixel);
  pick.setRadius(4.0f);
  pick.apply(root);
  const SoPickedPoint* picked = pick.getPickedPoint();
  if (!picked) return {};
  const SoFullPath& path = whole(picked->getPath());
  const int place = findKit(path);
  if (place < 0) return tellNode(*picked) + tellPoint(picked->getPoint(), origin, nullptr);
  const auto& kit = *static_cast<const PoBase*>(path.getNode(place));
  const SbVec3f point = pointOfData(kit, *picked);
  const Question question{kit, *picked, point, scene, scene.find(path, place)};
  std::string text = kit.getTypeId().getName().getString();
  if (kit.getName().getLength() > 0) text += std::string(" ") + kit.getName().getString();
  const Answer answer = tellKit(question);
  text += answer.text;
  return answer.hasCoordinates ? text + tellPoint(point, origin, &question) : text;
}

}  // namespace view
