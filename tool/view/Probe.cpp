#include "Probe.h"

#include <Inventor/SoFullPath.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Ormelle/PbCell.h>
#include <Ormelle/PbMesh.h>
#include <Ormelle/PoHistogram.h>
#include <Ormelle/PoMesh.h>
#include <Ormelle/PoMeshElement.h>
#include <Ormelle/PoPieChart.h>

#include <cstdarg>
#include <cstdio>
#include <limits>

namespace view {

namespace {

[[gnu::format(printf, 1, 2)]] std::string print(const char* format, ...) {
  char text[256];
  std::va_list values;
  va_start(values, format);
  std::vsnprintf(text, sizeof(text), format, values);
  va_end(values);
  return text;
}

// A path that the toolkit hands out, with the insides of kits.
const SoFullPath& whole(const SoPath* path) { return *static_cast<const SoFullPath*>(path); }

const PoBase* kitIn(const SoFullPath& path) {
  for (int i = path.getLength() - 1; i >= 0; --i)
    if (path.getNode(i)->isOfType(PoBase::getClassTypeId())) return static_cast<const PoBase*>(path.getNode(i));
  return nullptr;
}

// The mesh that `kit` finds on its way down `path`.
const PbMesh* meshOf(const PoMesh* kit, SoPath* path) {
  struct Search {
    const PoMesh* kit;
    const PbMesh* mesh;
  } search{kit, kit->getMesh()};
  if (search.mesh) return search.mesh;
  SoCallbackAction action;
  action.addPreCallback(
      PoMesh::getClassTypeId(),
      [](void* data, SoCallbackAction* walk, const SoNode* node) {
        auto* wanted = static_cast<Search*>(data);
        if (node == wanted->kit) wanted->mesh = PoMeshElement::getMesh(walk->getState());
        return SoCallbackAction::CONTINUE;
      },
      &search);
  action.apply(path);
  return search.mesh;
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

std::string nameOr(const SbString* name, const char* kind, int index) {
  return name && name->getLength() > 0 ? "\"" + std::string(name->getString()) + "\"" : print("%s %d", kind, index);
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
  return ", " + nameOr(mesh.getValuesSetName(index), "values", index) + print(" %.6g", static_cast<double>(value));
}

std::string tellVector(const PbMesh& mesh, const Place& place, int index) {
  const SbVec3f* vectors = mesh.getVecsSet(index);
  if (!vectors) return {};
  const PbMesh::DataBinding binding = mesh.getVecsBinding(index);
  const int element = elementOf(place, binding, binding == PbMesh::PER_NODE ? mesh.getNumNodes() : mesh.getNumCells());
  if (element < 0) return {};
  const bool isWithin = binding == PbMesh::PER_NODE && place.cell;
  const SbVec3f v = isWithin ? place.cell->getValue(place.pcoord, vectors) : vectors[element];
  return ", " + nameOr(mesh.getVecsSetName(index), "vectors", index) +
         print(" (%.6g %.6g %.6g)", static_cast<double>(v[0]), static_cast<double>(v[1]), static_cast<double>(v[2]));
}

// Sets have any index; those of scenes are numbered from 0.
constexpr int kMostIndices = 16;

std::string tellMesh(const PbMesh& mesh, const PoMesh& kit, const SbVec3f& point) {
  const Place place = locate(mesh, point);
  std::string text;
  if (place.cell) text += print(", cell %d", place.cell->getIndex());
  if (place.node >= 0) text += print(", nearest node %d", place.node);
  const int first = kit.valuesIndex.getValue();
  text += tellValues(mesh, place, first);
  for (int index = 0; index < kMostIndices; ++index)
    if (index != first) text += tellValues(mesh, place, index);
  for (int index = 0; index < kMostIndices; ++index) text += tellVector(mesh, place, index);
  return text;
}

std::string tellChart(const PoBase& kit, const SoPickedPoint& picked) {
  int number = 0;
  if (kit.isOfType(PoHistogram::getClassTypeId()) &&
      static_cast<const PoHistogram&>(kit).getPickedBarNumber(&picked, number))
    return print(", bar %d", number);
  if (kit.isOfType(PoPieChart::getClassTypeId()) &&
      static_cast<const PoPieChart&>(kit).getPickedSliceNumber(picked.getPath(), number))
    return number < 0 ? ", group of slices" : print(", slice %d", number);
  return {};
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
  if (!kit) return "The scene" + tellPoint(picked->getPoint(), origin);
  // Below the transformation that the kit makes of its domain, coordinates are those of the data.
  const SbVec3f point = picked->getObjectPoint();
  std::string text = kit->getTypeId().getName().getString();
  if (kit->getName().getLength() > 0) text += std::string(" ") + kit->getName().getString();
  if (kit->isOfType(PoMesh::getClassTypeId())) {
    const auto* meshKit = static_cast<const PoMesh*>(kit);
    if (const PbMesh* mesh = meshOf(meshKit, picked->getPath())) text += tellMesh(*mesh, *meshKit, point);
  } else {
    text += tellChart(*kit, *picked);
  }
  return text + tellPoint(point, origin);
}

}  // namespace view
