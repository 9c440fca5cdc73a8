#include "ShapeColors.h"

#include <Inventor/SbColor.h>
#include <Inventor/SoPrimitiveVertex.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/elements/SoLazyElement.h>
#include <Inventor/elements/SoTextureQualityElement.h>
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

void unpack(uint32_t packed, Channels& c) {
  for (int i = 0; i < 4; ++i) c[i] = static_cast<float>(packed >> (24 - 8 * i) & 255) / 255.0f;
}

int texelIndex(float coordinate, int size, bool repeats) {
  if (!std::isfinite(coordinate)) return 0;
  if (repeats) coordinate -= std::floor(coordinate);
  return std::clamp(static_cast<int>(std::clamp(coordinate, 0.0f, 1.0f) * static_cast<float>(size)), 0, size - 1);
}

}  // namespace

ShapeTexture::ShapeTexture(SoCallbackAction* action) {
  m_texels = action->getTextureImage(m_size, m_components);
  if (!m_texels || m_size[0] < 1 || m_size[1] < 1 || m_components < 1) {
    m_texels = nullptr;
    return;
  }
  m_model = action->getTextureModel();
  m_repeatS = action->getTextureWrapS() == SoTexture2::REPEAT;
  m_repeatT = action->getTextureWrapT() == SoTexture2::REPEAT;
  m_isSharp = SoTextureQualityElement::get(action->getState()) < 0.3f;
  m_matrix = action->getTextureMatrix();
  action->getTextureBlendColor().getValue(m_blendColor[0], m_blendColor[1], m_blendColor[2]);
}

void ShapeTexture::own() {
  if (!m_texels || m_owned) return;
  const std::ptrdiff_t size = static_cast<std::ptrdiff_t>(m_size[0]) * m_size[1] * m_components;
  m_owned = std::make_shared<const std::vector<unsigned char>>(m_texels, m_texels + size);
  m_texels = m_owned->data();
}

bool ShapeTexture::isReplacing() const { return m_model == SoTexture2::REPLACE; }

SbVec2f ShapeTexture::place(const SbVec4f& coordinates) const {
  SbVec4f at;
  m_matrix.multVecMatrix(coordinates, at);
  const float scale = at[3] != 0.0f ? 1.0f / at[3] : 1.0f;
  return SbVec2f(at[0] * scale, at[1] * scale);
}

uint32_t ShapeTexture::texel(int column, int row) const {
  const unsigned char* texel = m_texels + (static_cast<std::ptrdiff_t>(row) * m_size[0] + column) * m_components;
  const bool isGrey = m_components < 3;
  const bool hasAlpha = m_components == 2 || m_components == 4;
  uint32_t packed = 0;
  for (int c = 0; c < 3; ++c) packed = packed << 8 | texel[isGrey ? 0 : c];
  return packed << 8 | (hasAlpha ? texel[m_components - 1] : 255u);
}

uint32_t ShapeTexture::combined(uint32_t material, const SbVec2f& place, bool isSmooth) const {
  Channels tex{};
  if (!isSmooth || m_isSharp) {
    unpack(texel(texelIndex(place[0], m_size[0], m_repeatS), texelIndex(place[1], m_size[1], m_repeatT)), tex);
    return combined(material, tex);
  }
  // The four texels whose middles are round the place.
  const float s = place[0] - 0.5f / static_cast<float>(m_size[0]);
  const float t = place[1] - 0.5f / static_cast<float>(m_size[1]);
  const float column = s * static_cast<float>(m_size[0]);
  const float row = t * static_cast<float>(m_size[1]);
  const float weights[] = {column - std::floor(column), row - std::floor(row)};
  for (int corner = 0; corner < 4; ++corner) {
    const bool isRight = (corner & 1) != 0;
    const bool isUpper = (corner & 2) != 0;
    const float weight = (isRight ? weights[0] : 1.0f - weights[0]) * (isUpper ? weights[1] : 1.0f - weights[1]);
    if (!(weight > 0.0f)) continue;
    Channels one{};
    unpack(texel(texelIndex(s + (isRight ? 1.0f / static_cast<float>(m_size[0]) : 0.0f), m_size[0], m_repeatS),
                 texelIndex(t + (isUpper ? 1.0f / static_cast<float>(m_size[1]) : 0.0f), m_size[1], m_repeatT)),
           one);
    for (int c = 0; c < 4; ++c) tex[c] += weight * one[c];
  }
  return combined(material, tex);
}

uint32_t ShapeTexture::combined(uint32_t material, const Channels& tex) const {
  const bool hasAlpha = m_components == 2 || m_components == 4;
  Channels mat;
  unpack(material, mat);
  Channels out;
  for (int c = 0; c < 3; ++c) {
    switch (m_model) {
      case SoTexture2::DECAL:
        out[c] = mat[c] * (1.0f - tex[3]) + tex[c] * tex[3];
        break;
      case SoTexture2::BLEND:
        out[c] = mat[c] * (1.0f - tex[c]) + m_blendColor[c] * tex[c];
        break;
      case SoTexture2::REPLACE:
        out[c] = tex[c];
        break;
      default:
        out[c] = mat[c] * tex[c];
        break;
    }
  }
  if (m_model == SoTexture2::DECAL)
    out[3] = mat[3];
  else if (m_model == SoTexture2::REPLACE)
    out[3] = hasAlpha ? tex[3] : mat[3];
  else
    out[3] = mat[3] * tex[3];
  return pack(out);
}

ShapeColors::ShapeColors(SoCallbackAction* action)
    : m_materials(SoLazyElement::getInstance(action->getState())), m_texture(action) {
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
}

uint32_t ShapeColors::colorOf(const SoPrimitiveVertex& vertex, int materialIndex) const {
  const uint32_t material = materialOf(materialIndex);
  return m_texture ? m_texture.combined(material, m_texture.place(vertex.getTextureCoords()), false) : material;
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

}  // namespace tool
