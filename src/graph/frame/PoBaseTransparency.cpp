// Leaving out of generated shapes what can hardly be seen.

#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoIndexedLineSet.h>
#include <Inventor/nodes/SoIndexedTriangleStripSet.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoQuadMesh.h>
#include <Ormelle/PbDataMapping.h>
#include <Ormelle/PoBase.h>

#include <algorithm>
#include <array>
#include <vector>

namespace {

using Binding = SoMaterialBinding::Binding;

/// Which materials stay: those below the threshold. An entry that the material doesn't have stays too.
class KeptMaterials {
 public:
  KeptMaterials(const PbDataMapping* mapping, const SoMaterial* material)
      : m_threshold(mapping->getTransparencyValueDeletedParts()),
        m_count(material->transparency.getNum()),
        m_values(material->transparency.getValues(0)) {}

  bool operator()(int entry) const { return entry < 0 || entry >= m_count || m_values[entry] < m_threshold; }
  bool isEmpty() const { return m_count == 0; }
  /// Whether what stays is opaque throughout. `isDeleted`: the entries at the threshold and above are gone.
  bool isAllOpaque(bool isDeleted) const {
    for (int i = 0; i < m_count; ++i)
      if (m_values[i] > 0 && (m_values[i] < m_threshold || !isDeleted)) return false;
    return true;
  }

 private:
  float m_threshold;
  int m_count;
  const float* m_values;
};

void setIndices(SoMFInt32& field, const std::vector<int32_t>& indices) {
  field.setNum(static_cast<int>(indices.size()));
  if (indices.empty()) return;
  std::copy(indices.begin(), indices.end(), field.startEditing());
  field.finishEditing();
}

/// Splits an index list that -1 divides and hands over each part, also one without a closing -1.
template <class PerPart>
void forEachPart(const SoMFInt32& field, PerPart&& perPart) {
  const int count = field.getNum();
  const int32_t* indices = field.getValues(0);
  int first = 0;
  for (int i = 0; i <= count; ++i) {
    if (i < count && indices[i] >= 0) continue;
    if (i < count || i > first) perPart(indices + first, i - first);
    first = i + 1;
  }
}

/// Copies each run of at least `shortest` kept vertices with a -1 behind it. In a strip every second triangle runs the
/// other way round: a run that begins with such a one gives it a strip of its own, so that none is turned over.
std::vector<int32_t> keptRuns(const SoMFInt32& coordIndex, const KeptMaterials& isKept, int shortest,
                              bool areStrips = false) {
  std::vector<int32_t> kept;
  kept.reserve(static_cast<std::size_t>(coordIndex.getNum()));
  forEachPart(coordIndex, [&](const int32_t* vertices, int count) {
    int first = 0;
    for (int i = 0; i <= count; ++i) {
      if (i < count && isKept(vertices[i])) continue;
      if (areStrips && i - first >= shortest && first % 2 != 0) {
        kept.insert(kept.end(), {vertices[first + 1], vertices[first], vertices[first + 2], -1});
        ++first;
      }
      if (i - first >= shortest) {
        kept.insert(kept.end(), vertices + first, vertices + i);
        kept.push_back(-1);
      }
      first = i + 1;
    }
  });
  return kept;
}

bool isPerPartOrFace(Binding binding) {
  return binding == SoMaterialBinding::PER_PART || binding == SoMaterialBinding::PER_PART_INDEXED ||
         binding == SoMaterialBinding::PER_FACE || binding == SoMaterialBinding::PER_FACE_INDEXED;
}

bool isPerFace(Binding binding) {
  return binding == SoMaterialBinding::PER_FACE || binding == SoMaterialBinding::PER_FACE_INDEXED;
}

Binding bindingOf(const SoMaterialBinding* binding) {
  return binding ? static_cast<Binding>(binding->value.getValue()) : SoMaterialBinding::OVERALL;
}

template <class Shape>
SoShape* replaceWith(Shape* shape, SoGroup* parent, int childIndex, const std::vector<int32_t>& coordIndex,
                     const std::vector<int32_t>& materialIndex) {
  setIndices(shape->coordIndex, coordIndex);
  if (!materialIndex.empty()) setIndices(shape->materialIndex, materialIndex);
  parent->replaceChild(childIndex, shape);
  return shape;
}

}  // namespace

SoShape* PoBase::deleteTransparencyParts(const PbDataMapping* mapping, const SoMaterial* material,
                                         SoMaterialBinding* binding, SoIndexedFaceSet* shape, SoGroup* parent,
                                         int childIndex) {
  const KeptMaterials isKept(mapping, material);
  const Binding value = bindingOf(binding);
  if (value == SoMaterialBinding::OVERALL || isKept.isEmpty()) return nullptr;

  if (!isPerPartOrFace(value))
    return replaceWith(new SoIndexedFaceSet, parent, childIndex, keptRuns(shape->coordIndex, isKept, 3), {});

  std::vector<int32_t> coordIndex;
  std::vector<int32_t> materialIndex;
  coordIndex.reserve(static_cast<std::size_t>(shape->coordIndex.getNum()));
  int face = 0;
  forEachPart(shape->coordIndex, [&](const int32_t* vertices, int count) {
    if (isKept(face)) {
      coordIndex.insert(coordIndex.end(), vertices, vertices + count);
      coordIndex.push_back(-1);
      materialIndex.push_back(face);
    }
    ++face;
  });
  binding->value = SoMaterialBinding::PER_FACE_INDEXED;
  return replaceWith(new SoIndexedFaceSet, parent, childIndex, coordIndex, materialIndex);
}

SoShape* PoBase::deleteTransparencyParts(const PbDataMapping* mapping, const SoMaterial* material,
                                         SoMaterialBinding* binding, SoQuadMesh* shape, SoGroup* parent,
                                         int childIndex) {
  const KeptMaterials isKept(mapping, material);
  const Binding value = bindingOf(binding);
  if (value == SoMaterialBinding::OVERALL || value == SoMaterialBinding::PER_PART ||
      value == SoMaterialBinding::PER_PART_INDEXED)
    return nullptr;

  const int width = shape->verticesPerRow.getValue();
  const int height = shape->verticesPerColumn.getValue();
  const int start = shape->startIndex.getValue();
  std::vector<int32_t> coordIndex;
  std::vector<int32_t> materialIndex;
  for (int row = 0; row + 1 < height; ++row) {
    for (int column = 0; column + 1 < width; ++column) {
      const int corner = row * width + column;
      const std::array<int, 4> strip = {corner, corner + width, corner + 1, corner + width + 1};
      const std::size_t before = coordIndex.size();
      if (isPerFace(value)) {
        const int cell = (width - 1) * row + column;
        if (!isKept(cell)) continue;
        for (const int vertex : strip) coordIndex.push_back(start + vertex);
        materialIndex.push_back(cell);
      } else {
        for (const int vertex : strip)
          if (isKept(vertex)) coordIndex.push_back(start + vertex);
        if (coordIndex.size() - before < 3) {
          coordIndex.resize(before);
          continue;
        }
      }
      coordIndex.push_back(-1);
    }
  }
  binding->value = isPerFace(value) ? SoMaterialBinding::PER_PART_INDEXED : SoMaterialBinding::PER_VERTEX_INDEXED;
  return replaceWith(new SoIndexedTriangleStripSet, parent, childIndex, coordIndex, materialIndex);
}

SoShape* PoBase::deleteTransparencyParts(const PbDataMapping* mapping, const SoMaterial* material,
                                         SoMaterialBinding* binding, SoIndexedTriangleStripSet* shape, SoGroup* parent,
                                         int childIndex) {
  const KeptMaterials isKept(mapping, material);
  if (bindingOf(binding) <= SoMaterialBinding::PER_FACE_INDEXED) return nullptr;
  return replaceWith(new SoIndexedTriangleStripSet, parent, childIndex, keptRuns(shape->coordIndex, isKept, 3, true),
                     {});
}

SoShape* PoBase::deleteTransparencyParts(const PbDataMapping* mapping, const SoMaterial* material,
                                         SoMaterialBinding* binding, SoIndexedLineSet* shape, SoGroup* parent,
                                         int childIndex) {
  const KeptMaterials isKept(mapping, material);
  const Binding value = bindingOf(binding);
  if (value == SoMaterialBinding::OVERALL || isPerFace(value)) return nullptr;
  if (!isPerPartOrFace(value))
    return replaceWith(new SoIndexedLineSet, parent, childIndex, keptRuns(shape->coordIndex, isKept, 2), {});

  std::vector<int32_t> coordIndex;
  std::vector<int32_t> materialIndex;
  int segment = 0;
  forEachPart(shape->coordIndex, [&](const int32_t* vertices, int count) {
    bool isRunning = false;
    for (int i = 0; i + 1 < count; ++i, ++segment) {
      if (!isKept(segment)) {
        if (isRunning) coordIndex.push_back(-1);
        isRunning = false;
        continue;
      }
      if (!isRunning) coordIndex.push_back(vertices[i]);
      isRunning = true;
      coordIndex.push_back(vertices[i + 1]);
      materialIndex.push_back(segment);
    }
    if (isRunning) coordIndex.push_back(-1);
  });
  binding->value = SoMaterialBinding::PER_PART_INDEXED;
  return replaceWith(new SoIndexedLineSet, parent, childIndex, coordIndex, materialIndex);
}

SoShape* PoBase::deleteTransparencyParts(const PbDataMapping* mapping, const SoMaterial* material,
                                         SoMaterialBinding* binding, SoGroup* group) {
  if (!mapping || !material || !group) return nullptr;
  if (material->transparency.getNum() < material->diffuseColor.getNum()) return nullptr;
  if (mapping->getTransparencyValueDeletedParts() > 1.0f) return nullptr;

  SoSearchAction search;
  search.setType(SoShape::getClassTypeId());
  search.setInterest(SoSearchAction::ALL);
  search.apply(group);
  const SoPathList& paths = search.getPaths();
  SoShape* last = nullptr;
  for (int i = 0; i < paths.getLength(); ++i) {
    const SoPath* path = paths[i];
    if (path->getLength() < 2) continue;
    SoNode* shape = path->getTail();
    auto* parent = static_cast<SoGroup*>(path->getNodeFromTail(1));
    const int child = path->getIndexFromTail(0);
    if (shape->isOfType(SoQuadMesh::getClassTypeId()))
      last = deleteTransparencyParts(mapping, material, binding, static_cast<SoQuadMesh*>(shape), parent, child);
    else if (shape->isOfType(SoIndexedTriangleStripSet::getClassTypeId()))
      last = deleteTransparencyParts(mapping, material, binding, static_cast<SoIndexedTriangleStripSet*>(shape), parent,
                                     child);
    else if (shape->isOfType(SoIndexedFaceSet::getClassTypeId()))
      last = deleteTransparencyParts(mapping, material, binding, static_cast<SoIndexedFaceSet*>(shape), parent, child);
    else if (shape->isOfType(SoIndexedLineSet::getClassTypeId()))
      last = deleteTransparencyParts(mapping, material, binding, static_cast<SoIndexedLineSet*>(shape), parent, child);
    else if (shape->isOfType(SoLineSet::getClassTypeId()))
      last = static_cast<SoLineSet*>(shape);
  }
  // What is left may be opaque, and opaque parts draw faster and need no sorting.
  if (KeptMaterials(mapping, material).isAllOpaque(last != nullptr))
    const_cast<SoMaterial*>(material)->transparency.setNum(0);
  return last;
}
