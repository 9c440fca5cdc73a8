#include "quillane/emit/PiTextureContouring.h"

#include <Inventor/SbColor.h>
#include <Inventor/nodes/SoTexture2.h>
#include <Inventor/nodes/SoTextureCoordinate2.h>
#include <Ormelle/PbDataMapping.h>
#include <Ormelle/PbIsovaluesList.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <vector>

#include "graph/data/PiSortedSearch.h"

namespace {

// The longest row that every renderer takes. Of a longer list, whose bands are narrower than any pixel, the texture
// shows one in so many.
constexpr int kMaxTexels = 4096;

// Beyond this the edges within a cell lie so close to its other corners that it doesn't matter by how much.
constexpr float kFarCoord = 4096;

// What rounding can move a coordinate on its way through the renderer, in texture lengths, and then some.
constexpr float kTrace = 4e-6F;

unsigned char byteOf(float component) { return static_cast<unsigned char>(std::clamp(component, 0.0F, 1.0F) * 255.0F); }

struct Texel {
  SbColor color;
  float alpha;
};

Texel texelOf(const PbDataMapping& mapping, float value) {
  float transparency = 0;
  const SbColor* color = mapping.getRGBColor(value, transparency);
  if (!color) return {SbColor(0, 0, 0), 0};
  return {*color, mapping.isTransparencyEnabled() ? 1 - transparency : 1};
}

}  // namespace

PiTextureContouring::~PiTextureContouring() {
  if (m_texture) m_texture->unref();
}

void PiTextureContouring::setIsovaluesList(const PbIsovaluesList* list) {
  m_isovaluesList = list;
  if (!list) return;
  float step;
  m_isoValues = list->getIsoList(m_numIso, m_minIso, m_maxIso, step, m_isRegular);
  m_size = 1;
  while (m_size < m_numIso + 1) m_size *= 2;
  m_range = m_maxIso - m_minIso;
  m_firstCoord = 1.0F / static_cast<float>(m_size);
  m_lastCoord = static_cast<float>(m_numIso) * m_firstCoord;
  m_spanCoord = m_lastCoord - m_firstCoord;
  if (m_numIso > 1) m_stepCoord = m_spanCoord / static_cast<float>(m_numIso - 1);
  m_scale = std::min(m_spanCoord / m_range, FLT_MAX);
  // Isovalues that are all the same have no length of their own: any will do, as there is but one edge.
  if (!(m_range > 0)) m_scale = m_firstCoord;
  // The distance of the ends may pass the range of a float although they don't.
  if (!(m_range <= FLT_MAX)) m_scale = m_spanCoord / 2 / (m_maxIso / 2 - m_minIso / 2);
}

float PiTextureContouring::valueOfBand(int band) const { return band > 0 ? m_isoValues[band - 1] : -1e20F; }

void PiTextureContouring::findHoles() {
  const float deleted = m_dataMapping->getTransparencyValueDeletedParts();
  m_numShown.assign(1, 0);
  for (int band = 0; band <= m_numIso; ++band) {
    const float transparency = 1 - texelOf(*m_dataMapping, valueOfBand(band)).alpha;
    m_numShown.push_back(m_numShown.back() + (deleted <= 1 && transparency >= deleted ? 0 : 1));
  }
  if (m_numShown.back() == m_numIso + 1) m_numShown.clear();
}

bool PiTextureContouring::isHole(const float* values, const int* nodes, int num) const {
  const auto bandOf = [this](float value) {
    return static_cast<std::size_t>(PiSortedSearch::firstAbove(m_isoValues, m_numIso, value));
  };
  float least = values[nodes[0]], greatest = least;
  for (int i = 1; i < num; ++i) {
    least = std::min(least, values[nodes[i]]);
    greatest = std::max(greatest, values[nodes[i]]);
  }
  return m_numShown[bandOf(least)] == m_numShown[bandOf(greatest) + 1];
}

void PiTextureContouring::buildTexture() {
  if (!m_isovaluesList || !m_dataMapping) return;
  const int numTexels = std::min(m_size, kMaxTexels);
  const int numLevelsPerTexel = m_size / numTexels;
  std::vector<Texel> texels;
  bool hasAlpha = m_dataMapping->isTransparencyEnabled() != 0;
  for (int i = 0; i < numTexels; ++i) {
    const int band = std::min(i * numLevelsPerTexel, m_numIso);
    texels.push_back(texelOf(*m_dataMapping, valueOfBand(band)));
    hasAlpha = hasAlpha || texels.back().alpha == 0;
  }

  m_numShown.clear();
  if (hasAlpha) findHoles();
  const int numComponents = hasAlpha ? 4 : 3;
  std::vector<unsigned char> bytes;
  bytes.reserve(texels.size() * static_cast<std::size_t>(numComponents));
  for (const Texel& texel : texels) {
    for (int i = 0; i < 3; ++i) bytes.push_back(byteOf(texel.color[i]));
    if (hasAlpha) bytes.push_back(byteOf(texel.alpha));
  }
  if (m_texture) m_texture->unref();
  m_texture = new SoTexture2;
  m_texture->ref();
  m_texture->image.setValue(SbVec2s(static_cast<short>(numTexels), 1), numComponents, bytes.data());
  m_texture->wrapS = SoTexture2::CLAMP;
  m_texture->wrapT = SoTexture2::CLAMP;
}

float PiTextureContouring::getTextureCoord(float value) const {
  if (m_isRegular || !(value > m_minIso) || !(value < m_maxIso)) return linearCoord(value);
  const int upper = m_isovaluesList->getIndex(value);
  const float below = m_isoValues[upper - 1];
  const float gap = m_isoValues[upper] - below;
  return m_firstCoord + static_cast<float>(upper - 1) * m_stepCoord + (value - below) * m_stepCoord / gap;
}

void PiTextureContouring::getTextureCoords(int num, const float* values, SbVec2f* coords) const {
  for (int i = 0; i < num; ++i) coords[i].setValue(getTextureCoord(values[i]), 0);
}

float PiTextureContouring::drawnCoord(float value) const {
  const float coord = getTextureCoord(value);
  // A value that isn't a number belongs to nothing drawn.
  if (!(coord > -kFarCoord)) return std::isnan(value) ? 0 : -kFarCoord;
  if (coord >= kFarCoord) return kFarCoord;
  const float edge = std::nearbyint(coord * static_cast<float>(m_size));
  if (!(edge >= 1 && edge <= static_cast<float>(m_numIso))) return coord;
  if (m_isoValues[static_cast<int>(edge) - 1] != value) return coord;
  return std::max(coord, edge * m_firstCoord) + kTrace;
}

void PiTextureContouring::fill(SoTextureCoordinate2& node, int num, const float* values) const {
  node.point.setNum(num);
  if (num < 1) return;
  SbVec2f* coords = node.point.startEditing();
  for (int i = 0; i < num; ++i) coords[i].setValue(drawnCoord(values[i]), 0);
  node.point.finishEditing();
}
