#include "ShapeColors.h"

#include <Inventor/SbColor.h>
#include <Inventor/SoPrimitiveVertex.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/elements/SoLazyElement.h>
#include <Inventor/nodes/SoTexture2.h>

#include <algorithm>
#include <cmath>

namespace tool {

namespace {

using Channels = float[4];

uint32_t pack(const Channels& c) {
  uint32_t packed = 0;
  for (const float channel : c)
    packed = packed << 8 | static_cast<uint32_t>(std::clamp(channel, 0.0f, 1.0f) * 255.0f + 0.5f);
  return packed;
}

int texelIndex(float coordinate, int size, bool repeats) {
  if (!std::isfinite(coordinate)) return 0;
  if (repeats) coordinate -= std::floor(coordinate);
  return std::clamp(static_cast<int>(std::clamp(coordinate, 0.0f, 1.0f) * static_cast<float>(size)), 0, size - 1);
}

}  // namespace

ShapeColors::ShapeColors(SoCallbackAction* action) : m_materials(SoLazyElement::getInstance(action->getState())) {
  switch (SoMaterialBindingElement::get(action->getState())) {
    case SoMaterialBindingElement::PER_FACE:
    case SoMaterialBindingElement::PER_FACE_INDEXED:
      m_isPerFace = true;
      [[fallthrough]];
    case SoMaterialBindingElement::PER_PART:
    case SoMaterialBindingElement::PER_PART_INDEXED:
      m_isPerPart = true;
      break;
    default:
      break;
  }
  m_texture.texels = action->getTextureImage(m_texture.size, m_texture.components);
  if (!m_texture.texels || m_texture.size[0] < 1 || m_texture.size[1] < 1 || m_texture.components < 1) {
    m_texture.texels = nullptr;
    return;
  }
  m_texture.model = action->getTextureModel();
  m_texture.repeatS = action->getTextureWrapS() == SoTexture2::REPEAT;
  m_texture.repeatT = action->getTextureWrapT() == SoTexture2::REPEAT;
  m_texture.matrix = action->getTextureMatrix();
  action->getTextureBlendColor().getValue(m_texture.blendColor[0], m_texture.blendColor[1], m_texture.blendColor[2]);
}

uint32_t ShapeColors::colorOf(const SoPrimitiveVertex& vertex, int materialIndex) const {
  const uint32_t material = materialOf(materialIndex);
  return m_texture.texels ? textured(material, vertex) : material;
}

uint32_t ShapeColors::materialOf(int index) const {
  const int count = std::max(1, static_cast<int>(m_materials->getNumDiffuse()));
  const int safe = std::clamp(index, 0, count - 1);
  if (m_materials->isPacked()) return m_materials->getPackedPointer()[safe];
  const int transparencies = static_cast<int>(m_materials->getNumTransparencies());
  const float transparency =
      transparencies > 0 ? m_materials->getTransparencyPointer()[std::min(safe, transparencies - 1)] : 0.0f;
  return m_materials->getDiffusePointer()[safe].getPackedValue(transparency);
}

uint32_t ShapeColors::textured(uint32_t material, const SoPrimitiveVertex& vertex) const {
  const SbVec4f& given = vertex.getTextureCoords();
  SbVec4f at;
  m_texture.matrix.multVecMatrix(given, at);
  const float scale = at[3] != 0.0f ? 1.0f / at[3] : 1.0f;
  const int column = texelIndex(at[0] * scale, m_texture.size[0], m_texture.repeatS);
  const int row = texelIndex(at[1] * scale, m_texture.size[1], m_texture.repeatT);
  const unsigned char* texel =
      m_texture.texels + (static_cast<std::ptrdiff_t>(row) * m_texture.size[0] + column) * m_texture.components;

  const bool isGrey = m_texture.components < 3;
  const bool hasAlpha = m_texture.components == 2 || m_texture.components == 4;
  Channels tex;
  for (int c = 0; c < 3; ++c) tex[c] = static_cast<float>(texel[isGrey ? 0 : c]) / 255.0f;
  tex[3] = hasAlpha ? static_cast<float>(texel[m_texture.components - 1]) / 255.0f : 1.0f;
  Channels mat;
  for (int c = 0; c < 4; ++c) mat[c] = static_cast<float>(material >> (24 - 8 * c) & 255) / 255.0f;

  Channels out;
  for (int c = 0; c < 3; ++c) {
    switch (m_texture.model) {
      case SoTexture2::DECAL:
        out[c] = mat[c] * (1.0f - tex[3]) + tex[c] * tex[3];
        break;
      case SoTexture2::BLEND:
        out[c] = mat[c] * (1.0f - tex[c]) + m_texture.blendColor[c] * tex[c];
        break;
      case SoTexture2::REPLACE:
        out[c] = tex[c];
        break;
      default:
        out[c] = mat[c] * tex[c];
        break;
    }
  }
  if (m_texture.model == SoTexture2::DECAL)
    out[3] = mat[3];
  else if (m_texture.model == SoTexture2::REPLACE)
    out[3] = hasAlpha ? tex[3] : mat[3];
  else
    out[3] = mat[3] * tex[3];
  return pack(out);
}

}  // namespace tool
