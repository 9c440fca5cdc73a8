#include "SceneCheck.h"

#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/elements/SoCoordinateElement.h>
#include <Inventor/elements/SoLazyElement.h>
#include <Inventor/elements/SoMaterialBindingElement.h>
#include <Inventor/elements/SoNormalBindingElement.h>
#include <Inventor/elements/SoNormalElement.h>
#include <Inventor/elements/SoTextureCoordinateBindingElement.h>
#include <Inventor/elements/SoTextureCoordinateElement.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoIndexedLineSet.h>
#include <Inventor/nodes/SoIndexedPointSet.h>
#include <Inventor/nodes/SoIndexedTriangleStripSet.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoPointSet.h>
#include <Inventor/nodes/SoQuadMesh.h>
#include <Inventor/nodes/SoTriangleStripSet.h>
#include <Inventor/nodes/SoVertexProperty.h>

#include <cstdint>
#include <span>

#include "Failure.h"

namespace tool {

namespace {

std::string nameOf(const SoShape* shape) { return std::string("So") + shape->getTypeId().getName().getString(); }

std::span<const int32_t> valuesOf(const SoMFInt32& field) {
  return {field.getValues(0), static_cast<std::size_t>(field.getNum())};
}

// How many of each a shape can refer to: what its own vertex property holds, else what the state holds.
struct Supply {
  int64_t coordinates;
  int64_t normals;
  int64_t textureCoordinates;
  int64_t materials;
  SoMaterialBindingElement::Binding materialBinding;
  SoNormalBindingElement::Binding normalBinding;
  bool textureCoordinatesIndexed;

  Supply(const SoVertexShape* shape, SoState* state)
      : coordinates(SoCoordinateElement::getInstance(state)->getNum()),
        normals(SoNormalElement::getInstance(state)->getNum()),
        textureCoordinates(SoTextureCoordinateElement::getInstance(state)->getNum()),
        materials(SoLazyElement::getInstance(state)->getNumDiffuse()),
        materialBinding(SoMaterialBindingElement::get(state)),
        normalBinding(SoNormalBindingElement::get(state)),
        textureCoordinatesIndexed(SoTextureCoordinateBindingElement::get(state) ==
                                  SoTextureCoordinateBindingElement::PER_VERTEX_INDEXED) {
    SoNode* node = shape->vertexProperty.getValue();
    if (!node || !node->isOfType(SoVertexProperty::getClassTypeId())) return;
    const auto* own = static_cast<const SoVertexProperty*>(node);
    if (own->vertex.getNum() > 0) coordinates = own->vertex.getNum();
    if (own->normal.getNum() > 0) {
      normals = own->normal.getNum();
      normalBinding = static_cast<SoNormalBindingElement::Binding>(own->normalBinding.getValue());
    }
    if (own->texCoord.getNum() > 0) textureCoordinates = own->texCoord.getNum();
    if (own->orderedRGBA.getNum() > 0) {
      materials = own->orderedRGBA.getNum();
      materialBinding = static_cast<SoMaterialBindingElement::Binding>(own->materialBinding.getValue());
    }
  }
};

// Runs of indices between -1s: polygons, strips, polylines.
struct Runs {
  int64_t runs = 0;
  int64_t vertices = 0;
  int64_t shortest = INT64_MAX;
  int64_t highest = -1;
  int64_t lowest = 0;

  explicit Runs(std::span<const int32_t> indices) {
    int64_t length = 0;
    for (const int32_t index : indices) {
      highest = std::max<int64_t>(highest, index);
      lowest = std::min<int64_t>(lowest, index);
      if (index >= 0)
        ++length;
      else
        close(length);
    }
    if (length > 0) close(length);
  }

 private:
  void close(int64_t& length) {
    ++runs;
    vertices += length;
    shortest = std::min(shortest, length);
    length = 0;
  }
};

// How many values a binding takes from an index list; 0 if it takes none.
int64_t needed(int binding, const Runs& runs, int64_t vertexEntries, int64_t shortestRun) {
  switch (binding) {
    case SoMaterialBindingElement::PER_PART_INDEXED:
      return shortestRun == 2 ? runs.vertices - runs.runs : runs.runs;
    case SoMaterialBindingElement::PER_FACE_INDEXED:
      return shortestRun == 2 ? runs.runs : runs.vertices - 2 * runs.runs;
    case SoMaterialBindingElement::PER_VERTEX_INDEXED:
      return vertexEntries;
    default:
      return 0;
  }
}

std::string outOfRange(const SoShape* shape, const char* what, int64_t index, int64_t count) {
  return "an " + nameOf(shape) + " refers to " + what + " " + std::to_string(index) + ", but there are " +
         std::to_string(count);
}

// One index list of a shape against what it refers to. An absent list (empty, or the field's default of a single -1)
// makes the toolkit use the coordinate indices.
std::string faultOfList(const SoShape* shape, const SoMFInt32& field, const char* what, int64_t available,
                        int64_t entries, bool canBeAbsent, const Runs& coordinateRuns) {
  const auto indices = valuesOf(field);
  if (indices.empty() || indices[0] < 0) {
    if (!canBeAbsent) return "an " + nameOf(shape) + " lacks the indices of its " + what + "s";
    return coordinateRuns.highest >= available ? outOfRange(shape, what, coordinateRuns.highest, available) : "";
  }
  if (static_cast<int64_t>(indices.size()) < entries)
    return "an " + nameOf(shape) + " has " + std::to_string(indices.size()) + " indices of " + what + "s where " +
           std::to_string(entries) + " are needed";
  for (const int32_t index : indices)
    if (index >= available || index < -1) return outOfRange(shape, what, index, available);
  return "";
}

std::string faultOfIndexed(const SoIndexedShape* shape, SoState* state) {
  const auto coordinates = valuesOf(shape->coordIndex);
  const Runs runs(coordinates);
  const Supply supply(shape, state);
  const bool isLine = shape->isOfType(SoIndexedLineSet::getClassTypeId()) != FALSE;
  const bool isStrip = shape->isOfType(SoIndexedTriangleStripSet::getClassTypeId()) != FALSE;
  const int64_t shortestRun = isLine ? 2 : 3;
  // A list too short for a single part is skipped as a whole, the default of a single 0 among them.
  if (static_cast<int64_t>(coordinates.size()) < shortestRun && !shape->isOfType(SoIndexedPointSet::getClassTypeId()))
    return "";
  if (runs.highest >= supply.coordinates) return outOfRange(shape, "coordinate", runs.highest, supply.coordinates);
  if (runs.lowest < -1) return outOfRange(shape, "coordinate", runs.lowest, supply.coordinates);
  if ((isLine || isStrip) && runs.shortest < shortestRun)
    return "an " + nameOf(shape) + " has a part of " + std::to_string(runs.shortest) + " vertices where " +
           std::to_string(shortestRun) + " are the least";

  // Per-vertex lists run in step with the coordinate indices, -1s included, but for the last one.
  const int64_t perVertex = static_cast<int64_t>(coordinates.size()) - (coordinates.back() < 0 ? 1 : 0);
  const int64_t faces = isStrip ? 0 : 1;  // of a face set, part and face are both the polygon
  const auto entries = [&](int binding) {
    if (faces && !isLine && binding == SoMaterialBindingElement::PER_FACE_INDEXED)
      binding = SoMaterialBindingElement::PER_PART_INDEXED;
    return needed(binding, runs, perVertex, shortestRun);
  };
  const int64_t materials = entries(supply.materialBinding);
  if (materials > 0) {
    const bool perVertexBinding = supply.materialBinding == SoMaterialBindingElement::PER_VERTEX_INDEXED;
    std::string fault =
        faultOfList(shape, shape->materialIndex, "material", supply.materials, materials, perVertexBinding, runs);
    if (!fault.empty()) return fault;
  }
  const int64_t normals = supply.normals > 0 ? entries(supply.normalBinding) : 0;
  if (normals > 0) {
    const bool perVertexBinding = supply.normalBinding == SoNormalBindingElement::PER_VERTEX_INDEXED;
    std::string fault =
        faultOfList(shape, shape->normalIndex, "normal", supply.normals, normals, perVertexBinding, runs);
    if (!fault.empty()) return fault;
  }
  if (supply.textureCoordinates > 0 && supply.textureCoordinatesIndexed)
    return faultOfList(shape, shape->textureCoordIndex, "texture coordinate", supply.textureCoordinates, perVertex,
                       true, runs);
  return "";
}

// Shapes that take their vertices in a row, starting anywhere.
std::string faultOfRow(const SoNonIndexedShape* shape, SoState* state, std::span<const int32_t> counts) {
  const Supply supply(shape, state);
  int64_t end = shape->startIndex.getValue();
  if (end < 0) return outOfRange(shape, "coordinate", end, supply.coordinates);
  for (const int32_t count : counts) {
    if (count < 0)
      return counts.size() == 1 ? "" : "an " + nameOf(shape) + " has a part of a negative number of vertices";
    end += count;
    if (end > supply.coordinates) return outOfRange(shape, "coordinate", end - 1, supply.coordinates);
  }
  return "";
}

std::string faultOfQuadMesh(const SoQuadMesh* shape, SoState* state) {
  const int64_t rows = shape->verticesPerColumn.getValue();
  const int64_t columns = shape->verticesPerRow.getValue();
  if (rows < 2 || columns < 2) return "";
  const Supply supply(shape, state);
  const int64_t start = shape->startIndex.getValue();
  if (start < 0) return outOfRange(shape, "coordinate", start, supply.coordinates);
  // Two of these may multiply beyond 64 bits only if one alone is already too many.
  const int64_t last = start + rows * columns - 1;
  return last >= supply.coordinates ? outOfRange(shape, "coordinate", last, supply.coordinates) : "";
}

}  // namespace

std::string faultOf(const SoShape* shape, SoState* state) {
  if (shape->isOfType(SoIndexedFaceSet::getClassTypeId()) || shape->isOfType(SoIndexedLineSet::getClassTypeId()) ||
      shape->isOfType(SoIndexedTriangleStripSet::getClassTypeId()) ||
      shape->isOfType(SoIndexedPointSet::getClassTypeId()))
    return faultOfIndexed(static_cast<const SoIndexedShape*>(shape), state);
  if (shape->isOfType(SoQuadMesh::getClassTypeId()))
    return faultOfQuadMesh(static_cast<const SoQuadMesh*>(shape), state);
  if (shape->isOfType(SoFaceSet::getClassTypeId()))
    return faultOfRow(static_cast<const SoFaceSet*>(shape), state,
                      valuesOf(static_cast<const SoFaceSet*>(shape)->numVertices));
  if (shape->isOfType(SoLineSet::getClassTypeId()))
    return faultOfRow(static_cast<const SoLineSet*>(shape), state,
                      valuesOf(static_cast<const SoLineSet*>(shape)->numVertices));
  if (shape->isOfType(SoTriangleStripSet::getClassTypeId()))
    return faultOfRow(static_cast<const SoTriangleStripSet*>(shape), state,
                      valuesOf(static_cast<const SoTriangleStripSet*>(shape)->numVertices));
  if (shape->isOfType(SoPointSet::getClassTypeId())) {
    const int32_t count = static_cast<const SoPointSet*>(shape)->numPoints.getValue();
    return faultOfRow(static_cast<const SoPointSet*>(shape), state, {&count, 1});
  }
  return "";
}

void checkScene(SoNode* scene, const std::string& file) {
  std::string fault;
  SoCallbackAction action;
  action.addPreCallback(
      SoShape::getClassTypeId(),
      [](void* found, SoCallbackAction* current, const SoNode* node) {
        auto& text = *static_cast<std::string*>(found);
        text = faultOf(static_cast<const SoShape*>(node), current->getState());
        return text.empty() ? SoCallbackAction::CONTINUE : SoCallbackAction::ABORT;
      },
      &fault);
  action.apply(scene);
  if (!fault.empty()) throw Failure(file + ": " + fault);
}

}  // namespace tool
