#include "out/SceneModel.h"

#include <Inventor/SoFullPath.h>
#include <Inventor/SoPrimitiveVertex.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/elements/SoLazyElement.h>
#include <Inventor/elements/SoLinePatternElement.h>
#include <Inventor/elements/SoLineWidthElement.h>
#include <Inventor/elements/SoPointSizeElement.h>
#include <Inventor/nodes/SoTexture2.h>

#include <algorithm>
#include <bit>
#include <cmath>

#include "Notes.h"
#include "out/ShapeState.h"

namespace tool {

namespace {

using Direction = std::array<double, 3>;

bool isAnnotationText(const SoNode* node) { return node->getTypeId().getName() == "SoAnnoText3"; }

const SoNode* shapeOf(SoCallbackAction& action) {
  return static_cast<const SoFullPath*>(action.getCurPath())->getTail();
}

// A vector made as long as 1; false if it has no direction.
bool normalize(Direction& v) {
  const double length = std::hypot(v[0], v[1], v[2]);
  if (!(length > 0.0) || !std::isfinite(length)) return false;
  for (double& c : v) c /= length;
  return true;
}

uint32_t rgbOf(const SbColor& color) { return color.getPackedValue(0.0f) >> 8; }

bool isFinite(const Vertex& v) {
  return std::isfinite(static_cast<float>(v.position[0])) && std::isfinite(static_cast<float>(v.position[1])) &&
         std::isfinite(static_cast<float>(v.position[2]));
}

}  // namespace

bool SceneModel::Key::operator==(const Key& other) const {
  return part == other.part && vertex.color == other.vertex.color && vertex.position == other.vertex.position &&
         vertex.normal == other.vertex.normal && vertex.place == other.vertex.place;
}

std::size_t SceneModel::Hash::operator()(const Key& key) const {
  uint64_t hash = key.vertex.color + key.part * 0x9E3779B97F4A7C15u;
  const auto add = [&hash](uint64_t bits) { hash = (hash ^ bits) * 0x9E3779B97F4A7C15u + (hash >> 31); };
  for (const double c : key.vertex.position) add(std::bit_cast<uint64_t>(c));
  for (const float c : key.vertex.normal) add(std::bit_cast<uint32_t>(c));
  for (const float c : key.vertex.place) add(std::bit_cast<uint32_t>(c));
  return static_cast<std::size_t>(hash ^ hash >> 29);
}

void SceneModel::beginShape(SoCallbackAction& action) {
  m_known = {};  // clearing would go through all the room that a large shape took
  m_isLeftOut = isInAnnotation(action);
  if (m_isLeftOut) {
    ++m_overlays;
    return;
  }
  SoState* state = action.getState();
  m_colors.emplace(&action);
  m_look = ModelLook();
  m_look.isLit = SoLazyElement::getLightModel(state) != SoLazyElement::BASE_COLOR && !isAnnotationText(shapeOf(action));
  if (m_look.isLit) {
    m_look.emissive = rgbOf(SoLazyElement::getEmissive(state));
    m_look.specular = rgbOf(SoLazyElement::getSpecular(state));
    m_look.shininess =
        static_cast<uint32_t>(std::clamp(SoLazyElement::getShininess(state), 0.0f, 1.0f) * 255.0f + 0.5f);
  }
  const ShapeSides sides = shapeSidesOf(action);
  m_isClockwise = sides.isClockwise;
  m_isSolid = sides.isSolid;
  m_look.isTwoSided = !m_isSolid;
  const SbMatrix& model = action.getModelMatrix();
  m_normals = model.det4() != 0.0f ? model.inverse().transpose() : model;
  m_texture.emplace(&action);
  if (*m_texture) {
    m_hasOddTextures = m_hasOddTextures || (action.getTextureModel() != SoTexture2::MODULATE &&
                                            action.getTextureModel() != SoTexture2::REPLACE);
    m_texture->own();
    m_look.texture = static_cast<int>(m_textures.size());
    m_textures.push_back(*m_texture);
  } else {
    m_texture.reset();
  }
  const float width = SoLineWidthElement::get(state);
  m_hasLineStyles = m_hasLineStyles || width > 1.0f || (SoLinePatternElement::get(state) & 0xffff) != 0xffff ||
                    SoPointSizeElement::get(state) > 1.0f;
}

std::size_t SceneModel::partOf(ModelLook look) {
  const auto [entry, isNew] = m_partByLook.try_emplace(look, m_parts.size());
  if (isNew) m_parts.push_back({look, {}, {}});
  return entry->second;
}

uint32_t SceneModel::indexOf(std::size_t part, const ModelVertex& vertex) {
  std::vector<ModelVertex>& vertices = m_parts[part].vertices;
  const auto [entry, isNew] = m_known.try_emplace({vertex, part}, static_cast<uint32_t>(vertices.size()));
  if (isNew) vertices.push_back(vertex);
  return entry->second;
}

ModelVertex SceneModel::vertexOf(const Vertex& vertex) const {
  ModelVertex out;
  out.position = vertex.position;
  out.color = m_texture && m_texture->isReplacing() ? 0xffffffff : m_colors->materialOf(vertex.material);
  if (m_texture) {
    const SbVec2f place = m_texture->place(vertex.source->getTextureCoords());
    if (std::isfinite(place[0]) && std::isfinite(place[1])) out.place = {place[0], place[1]};
  }
  return out;
}

void SceneModel::triangle(const std::array<Vertex, 3>& corners) {
  if (m_isLeftOut) return;
  std::array<ModelVertex, 3> v{vertexOf(corners[0]), vertexOf(corners[1]), vertexOf(corners[2])};
  Direction across{};
  const auto side = [&](std::size_t end, std::size_t axis) { return v[end].position[axis] - v[0].position[axis]; };
  for (std::size_t axis = 0; axis < 3; ++axis)
    across[axis] =
        side(1, (axis + 1) % 3) * side(2, (axis + 2) % 3) - side(1, (axis + 2) % 3) * side(2, (axis + 1) % 3);
  for (const Vertex& corner : corners)
    if (!isFinite(corner)) {
      ++m_notFinite;
      return;
    }
  if (!normalize(across)) return;  // it has no area
  double agreement = 0.0;
  for (std::size_t i = 0; i < 3; ++i) {
    SbVec3f n;
    m_normals.multDirMatrix(corners[i].source->getNormal(), n);
    Direction normal{static_cast<double>(n[0]), static_cast<double>(n[1]), static_cast<double>(n[2])};
    if (!normalize(normal)) normal = across;
    for (std::size_t axis = 0; axis < 3; ++axis) {
      v[i].normal[axis] = static_cast<float>(normal[axis]);
      agreement += normal[axis] * across[axis];
    }
  }
  // Viewers take the side from which corners turn left for the front: that is where normals point, or, if only the
  // front is drawn, where the toolkit has it.
  if (m_isSolid ? m_isClockwise : agreement < 0.0) std::swap(v[1], v[2]);
  ModelLook look = m_look;
  look.isTransparent = std::any_of(v.begin(), v.end(), [](const ModelVertex& c) { return (c.color & 255) < 255; });
  if (m_goesByAlpha) look.alpha = v[0].color & 255;
  const std::size_t part = partOf(look);
  for (const ModelVertex& corner : v) {
    const uint32_t index = indexOf(part, corner);
    m_parts[part].indices.push_back(index);
  }
}

void SceneModel::line(const std::array<Vertex, 2>& ends) {
  if (m_isLeftOut) return;
  if (!isFinite(ends[0]) || !isFinite(ends[1])) {
    ++m_notFinite;
    return;
  }
  ModelLook look;
  look.kind = ModelLook::LINES;
  const std::array<ModelVertex, 2> v{vertexOf(ends[0]), vertexOf(ends[1])};
  look.isTransparent = ((v[0].color & v[1].color) & 255) < 255;
  if (m_goesByAlpha) look.alpha = v[0].color & 255;
  const std::size_t part = partOf(look);
  for (const ModelVertex& end : v) {
    const uint32_t index = indexOf(part, end);
    m_parts[part].indices.push_back(index);
  }
}

void SceneModel::point(const Vertex& vertex) {
  if (m_isLeftOut) return;
  if (!isFinite(vertex)) {
    ++m_notFinite;
    return;
  }
  ModelLook look;
  look.kind = ModelLook::POINTS;
  const ModelVertex v = vertexOf(vertex);
  look.isTransparent = (v.color & 255) < 255;
  if (m_goesByAlpha) look.alpha = v.color & 255;
  const std::size_t part = partOf(look);
  m_parts[part].indices.push_back(indexOf(part, v));
}

void SceneModel::text(SoCallbackAction& action) {
  ModelText text{textNodeOf(action), 0, false, action.getModelMatrix()};
  if (isInAnnotation(action)) {
    ++m_overlays;
    return;
  }
  if (text.node.isOnScreen) {
    ++m_screenTexts;
    return;
  }
  SoState* state = action.getState();
  const float transparency = std::clamp(SoLazyElement::getTransparency(state, 0), 0.0f, 1.0f);
  text.color = SoLazyElement::getDiffuse(state, 0).getPackedValue(transparency);
  text.isLit = SoLazyElement::getLightModel(state) != SoLazyElement::BASE_COLOR && !text.node.isAnnotation;
  m_texts.push_back(std::move(text));
}

std::array<double, 3> SceneModel::origin() const {
  std::array<double, 3> middle{};
  double size = 0.0;
  double offset = 0.0;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    double low = 0.0;
    double high = 0.0;
    bool isFirst = true;
    for (const ModelPart& part : m_parts)
      for (const ModelVertex& vertex : part.vertices) {
        low = isFirst ? vertex.position[axis] : std::min(low, vertex.position[axis]);
        high = isFirst ? vertex.position[axis] : std::max(high, vertex.position[axis]);
        isFirst = false;
      }
    middle[axis] = (low + high) / 2.0;
    size = std::max(size, high - low);
    offset = std::max(offset, std::abs(middle[axis]));
  }
  return offset > 10.0 * size ? middle : std::array<double, 3>{};
}

std::string SceneModel::notes() const {
  std::string all;
  const auto add = [&all](const std::string& note) { all += (all.empty() ? "" : "; ") + note; };
  if (m_screenTexts > 0)
    add(counted(m_screenTexts, "text of a fixed size on the screen is", "texts of a fixed size on the screen are") +
        " left out");
  if (m_overlays > 0)
    add(counted(m_overlays, "shape of an annotation in front of the picture is",
                "shapes of annotations in front of the picture are") +
        " left out");
  if (m_notFinite > 0)
    add(counted(m_notFinite, "primitive with a coordinate that is no number is",
                "primitives with a coordinate that is no number are") +
        " left out");
  if (m_hasLineStyles) add("widths and patterns of lines and sizes of points are lost");
  if (m_hasOddTextures) add("textures multiply colours, whatever their model");
  return all;
}

}  // namespace tool
