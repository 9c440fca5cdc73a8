#include "quillane/vector/PiGlyphEmitter.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoIndexedLineSet.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoNormal.h>
#include <Inventor/nodes/SoNormalBinding.h>
#include <Inventor/nodes/SoPointSet.h>
#include <Ormelle/PbDataMapping.h>

#include "graph/frame/PiParallel.h"

namespace {

constexpr std::size_t kGlyphsInTask = 4096;

/// The directions of a glyph: along its vector, and two across, the first in the plane z = 0 where there is a choice.
struct Frame {
  SbVec3f along, across, upright;

  explicit Frame(const SbVec3f& unit) : along(unit) {
    const float flat = std::sqrt(unit[0] * unit[0] + unit[1] * unit[1]);
    if (flat > 1e-6f)
      across.setValue(-unit[1] / flat, unit[0] / flat, 0);
    else
      across.setValue(1, 0, 0);
    upright = along.cross(across);
  }
  SbVec3f operator()(float x, float y, float z) const { return along * x + across * y + upright * z; }
};

class Writer {
 public:
  Writer(const PiGlyphShape& shape, const PiGlyphEmitter::Size& size, const std::vector<PiVectorField::Vector>& vectors,
         const PiGlyphEmitter::Colors& colors)
      : m_shape(shape), m_size(size), m_vectors(vectors), m_colors(colors) {
    const std::size_t num = colors.isSelected ? colors.drawn.size() : vectors.size();
    // No array of a shape can be longer than this.
    const std::size_t entries = std::max(shape.points.size(), shape.indices.size());
    m_num =
        std::min(num, static_cast<std::size_t>(std::numeric_limits<int>::max()) / std::max<std::size_t>(1, entries));
  }

  std::size_t num() const { return m_num; }

  void fillPoints(SoMFVec3f& points, SoMFVec3f* normals) const {
    const std::size_t numPoints = m_shape.points.size();
    points.setNum(static_cast<int>(m_num * numPoints));
    SbVec3f* toPoint = points.startEditing();
    SbVec3f* toNormal = nullptr;
    if (normals) {
      normals->setNum(static_cast<int>(m_num * numPoints));
      toNormal = normals->startEditing();
    }
    PiParallel::forBlocks(m_num, kGlyphsInTask, [&](std::size_t begin, std::size_t end) {
      for (std::size_t i = begin; i < end; ++i) {
        const PiVectorField::Vector& vector =
            m_vectors[m_colors.isSelected ? static_cast<std::size_t>(m_colors.drawn[i]) : i];
        const float length = vector.along.length();
        const Frame frame(length > 0 ? vector.along / length : SbVec3f(1, 0, 0));
        const SbVec3f origin = vector.start + frame.along * m_size.origin.of(length);
        const float height = std::max(0.0f, m_size.height.of(length));
        const float radius = std::max(0.0f, m_size.radius.of(length));
        SbVec3f* point = toPoint + i * numPoints;
        for (const SbVec3f& p : m_shape.points) *point++ = origin + frame(p[0] * height, p[1] * radius, p[2] * radius);
        if (!toNormal) continue;
        SbVec3f* normal = toNormal + i * numPoints;
        for (const SbVec3f& n : m_shape.normals) *normal++ = frame(n[0], n[1], n[2]);
      }
    });
    points.finishEditing();
    if (normals) normals->finishEditing();
  }

  void fillIndices(SoMFInt32& indices) const {
    const std::size_t numIndices = m_shape.indices.size();
    const auto numPoints = static_cast<int>(m_shape.points.size());
    indices.setNum(static_cast<int>(m_num * numIndices));
    int32_t* to = indices.startEditing();
    PiParallel::forBlocks(m_num, kGlyphsInTask, [&](std::size_t begin, std::size_t end) {
      int32_t* next = to + begin * numIndices;
      for (std::size_t i = begin; i < end; ++i) {
        const int base = static_cast<int>(i) * numPoints;
        for (const int index : m_shape.indices) *next++ = index < 0 ? -1 : base + index;
      }
    });
    indices.finishEditing();
  }

  /// The number of the glyph, for each part of it.
  void fillMaterialIndices(SoMFInt32& indices) const {
    const auto numParts = static_cast<std::size_t>(m_shape.numParts());
    indices.setNum(static_cast<int>(m_num * numParts));
    int32_t* to = indices.startEditing();
    for (std::size_t i = 0; i < m_num; ++i) to = std::fill_n(to, numParts, static_cast<int32_t>(i));
    indices.finishEditing();
  }

 private:
  const PiGlyphShape& m_shape;
  const PiGlyphEmitter::Size& m_size;
  const std::vector<PiVectorField::Vector>& m_vectors;
  const PiGlyphEmitter::Colors& m_colors;
  std::size_t m_num;
};

template <class Node>
Node* added(SoGroup* group) {
  auto* node = new Node;
  group->addChild(node);
  return node;
}

}  // namespace

PiGlyphEmitter::Colors PiGlyphEmitter::color(const std::vector<PiVectorField::Vector>& vectors,
                                             const PbDataMapping& mapping,
                                             const std::function<float(const PiVectorField::Vector&)>& valueOf) {
  Colors result;
  result.isSelected = true;
  result.material = new SoMaterial;
  const auto num = static_cast<int>(vectors.size());
  const bool isTransparent = mapping.isTransparencyEnabled() != 0;
  const float deleted = mapping.getTransparencyValueDeletedParts();
  SoMFColor& colors = result.material->diffuseColor;
  SoMFFloat& transparencies = result.material->transparency;
  colors.setNum(num);
  SbColor* toColor = colors.startEditing();
  float* toTransparency = nullptr;
  if (isTransparent) {
    transparencies.setNum(num);
    toTransparency = transparencies.startEditing();
  }
  result.drawn.reserve(vectors.size());
  for (int i = 0; i < num; ++i) {
    float transparency = 0;
    const float value = valueOf(vectors[static_cast<std::size_t>(i)]);
    const SbColor* color = isTransparent ? mapping.getRGBColor(value, transparency) : mapping.getRGBColor(value);
    if (!color || (isTransparent && transparency >= deleted)) continue;
    const std::size_t entry = result.drawn.size();
    toColor[entry] = *color;
    if (toTransparency) toTransparency[entry] = transparency;
    result.drawn.push_back(i);
  }
  colors.finishEditing();
  colors.setNum(static_cast<int>(result.drawn.size()));
  if (toTransparency) {
    transparencies.finishEditing();
    transparencies.setNum(static_cast<int>(result.drawn.size()));
  }
  return result;
}

void PiGlyphEmitter::emit(const PiGlyphShape& shape, const Size& size,
                          const std::vector<PiVectorField::Vector>& vectors, const Colors& colors, SoGroup* group) {
  const Writer writer(shape, size, vectors, colors);
  if (colors.material) {
    group->addChild(colors.material);
    if (writer.num() == 0) return;
    auto* binding = added<SoMaterialBinding>(group);
    binding->value = shape.kind == PiGlyphShape::FACES    ? SoMaterialBinding::PER_FACE_INDEXED
                     : shape.kind == PiGlyphShape::POINTS ? SoMaterialBinding::PER_VERTEX
                                                          : SoMaterialBinding::PER_PART;
  }
  if (writer.num() == 0) return;
  const auto num = static_cast<int>(writer.num());

  if (shape.kind != PiGlyphShape::FACES) {
    writer.fillPoints(added<SoCoordinate3>(group)->point, nullptr);
    if (shape.kind == PiGlyphShape::POINTS) {
      added<SoPointSet>(group)->numPoints = num;
      return;
    }
    auto* lines = added<SoLineSet>(group);
    lines->numVertices.setNum(num);
    std::fill_n(lines->numVertices.startEditing(), num, static_cast<int32_t>(shape.points.size()));
    lines->numVertices.finishEditing();
    return;
  }
  added<SoNormalBinding>(group)->value = SoNormalBinding::PER_VERTEX_INDEXED;
  auto* normal = added<SoNormal>(group);
  writer.fillPoints(added<SoCoordinate3>(group)->point, &normal->vector);
  auto* faces = added<SoIndexedFaceSet>(group);
  writer.fillIndices(faces->coordIndex);
  if (colors.material) writer.fillMaterialIndices(faces->materialIndex);
}
