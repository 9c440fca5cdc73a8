#include "out/PageScene.h"

#include <Inventor/SoFullPath.h>
#include <Inventor/SoPrimitiveVertex.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/details/SoFaceDetail.h>
#include <Inventor/elements/SoClipPlaneElement.h>
#include <Inventor/elements/SoDrawStyleElement.h>
#include <Inventor/elements/SoLazyElement.h>
#include <Inventor/elements/SoLinePatternElement.h>
#include <Inventor/elements/SoLineWidthElement.h>
#include <Inventor/elements/SoPointSizeElement.h>
#include <Inventor/elements/SoPolygonOffsetElement.h>
#include <Inventor/nodes/SoMarkerSet.h>

#include <algorithm>
#include <cmath>

#include "out/ShapeState.h"

namespace tool {

namespace {

// What is farther outside of the page than this many times its half is cut off.
constexpr double kGuard = 3.0;

std::vector<double> dashesOf(int pattern, int factor) {
  pattern &= 0xffff;
  if (pattern == 0xffff || pattern == 0) return {};
  // Lengths of the runs of set and clear bits, the lowest bit first, begun with a set one.
  int start = 0;
  while (!((pattern >> start & 1) == 1 && (pattern >> ((start + 15) % 16) & 1) == 0)) ++start;
  std::vector<double> dashes;
  bool isSet = false;
  for (int i = 0; i < 16; ++i) {
    const bool bit = (pattern >> ((start + i) % 16) & 1) != 0;
    if (i == 0 || bit != isSet) dashes.push_back(0.0);
    isSet = bit;
    dashes.back() += std::max(factor, 1);
  }
  return dashes;
}

// Whether two corners of a triangle are neighbours in the face that the toolkit made it of.
bool isSideOfFace(const Vertex& a, const Vertex& b) {
  const SoDetail* detail = a.source->getDetail();
  if (!detail || !detail->isOfType(SoFaceDetail::getClassTypeId())) return true;
  const auto* face = static_cast<const SoFaceDetail*>(detail);
  const int count = face->getNumPoints();
  if (count <= 3 || a.coordinate < 0 || b.coordinate < 0) return true;
  for (int i = 0; i < count; ++i) {
    const int here = face->getPoint(i)->getCoordinateIndex();
    const int next = face->getPoint((i + 1) % count)->getCoordinateIndex();
    if ((here == a.coordinate && next == b.coordinate) || (here == b.coordinate && next == a.coordinate)) return true;
  }
  return false;
}

uint32_t packed(const std::array<double, 4>& channels) {
  uint32_t color = 0;
  for (const double channel : channels)
    color = color << 8 | static_cast<uint32_t>(std::clamp(channel, 0.0, 255.0) + 0.5);
  return color;
}

}  // namespace

void PageScene::readState(SoCallbackAction& action) {
  SoState* state = action.getState();
  m_model = action.getModelMatrix();
  m_viewProjection = action.getViewingMatrix() * action.getProjectionMatrix();
  m_planes.clear();
  const SoClipPlaneElement* planes = SoClipPlaneElement::getInstance(state);
  for (int i = 0; planes && i < planes->getNum(); ++i) m_planes.push_back(planes->get(i, TRUE));

  m_isOverlay = isInAnnotation(action);
  float factor = 0.0f;
  float units = 0.0f;
  SoPolygonOffsetElement::Style styles = SoPolygonOffsetElement::FILLED;
  SbBool isOn = FALSE;
  SoPolygonOffsetElement::get(state, factor, units, styles, isOn);
  m_isSetBack = isOn && (styles & SoPolygonOffsetElement::FILLED) && (factor > 0.0f || units > 0.0f);

  const ShapeSides sides = shapeSidesOf(action);
  m_isClockwise = sides.isClockwise;
  m_cullsBack = sides.isSolid;

  const auto drawStyle = SoDrawStyleElement::get(state);
  m_showsEdges = drawStyle == SoDrawStyleElement::LINES;
  m_showsCorners = drawStyle == SoDrawStyleElement::POINTS;
  m_style = LineStyle();
  const float width = SoLineWidthElement::get(state);
  m_style.width = std::isfinite(width) && width > 0.0f ? static_cast<double>(width) : 1.0;
  m_style.dashes = dashesOf(SoLinePatternElement::get(state), SoLinePatternElement::getScaleFactor(state));
  const float size = SoPointSizeElement::get(state);
  m_pointSize = std::isfinite(size) && size > 0.0f ? static_cast<double>(size) : 1.0;
}

void PageScene::beginShape(SoCallbackAction& action) {
  readState(action);
  m_hasMarkers =
      m_hasMarkers ||
      static_cast<const SoFullPath*>(action.getCurPath())->getTail()->isOfType(SoMarkerSet::getClassTypeId());
  m_colors.emplace(&action);
  m_texture.emplace(&action);
  if (*m_texture)
    m_texture->own();
  else
    m_texture.reset();
  m_light.emplace(action);
  m_current = {-1, -1, -1};
}

PageBatch& PageScene::batch(PageBatch::Kind kind) {
  int& current = m_current[static_cast<std::size_t>(kind)];
  if (current < 0) {
    current = static_cast<int>(m_batches.size());
    PageBatch& out = m_batches.emplace_back();
    out.kind = kind;
    out.isOverlay = m_isOverlay;
    out.isSetBack = kind == PageBatch::TRIANGLES && m_isSetBack;
    out.style = m_style;
    if (kind == PageBatch::POINTS) out.style.width = m_pointSize;
    if (kind == PageBatch::TRIANGLES) {
      out.texture = m_texture;
      out.isSmooth = m_texture.has_value();
    }
  }
  return m_batches[static_cast<std::size_t>(current)];
}

uint32_t PageScene::colorOf(const Vertex& vertex, bool seesBack) const {
  const uint32_t material = m_colors->materialOf(vertex.material);
  return m_light->lit(material, vertex.source->getPoint(), vertex.source->getNormal(), seesBack);
}

PageScene::ClipVertex PageScene::clipVertex(const Vertex& vertex, uint32_t color) const {
  ClipVertex out;
  for (int c = 0; c < 4; ++c) {
    double sum = static_cast<double>(m_viewProjection[3][c]);
    for (int axis = 0; axis < 3; ++axis)
      sum += vertex.position[static_cast<std::size_t>(axis)] * static_cast<double>(m_viewProjection[axis][c]);
    out.at[static_cast<std::size_t>(c)] = sum;
  }
  out.world = vertex.position;
  for (std::size_t c = 0; c < 4; ++c) out.color[c] = static_cast<double>(color >> (24 - 8 * c) & 255);
  if (m_texture) {
    const SbVec2f place = m_texture->place(vertex.source->getTextureCoords());
    out.texture = {static_cast<double>(place[0]), static_cast<double>(place[1])};
  }
  return out;
}

// Cuts a polygon, or a segment, at the sides of what the camera sees and at the scene's own planes.
std::vector<PageScene::ClipVertex> PageScene::clipped(std::vector<ClipVertex> polygon, bool isClosed) const {
  for (const ClipVertex& v : polygon)
    for (const double c : v.at)
      if (!std::isfinite(c)) return {};
  const auto distance = [&](const ClipVertex& v, std::size_t side) {
    switch (side) {
      case 0:
        return v.at[3] + v.at[2];
      case 1:
        return v.at[3] - v.at[2];
      case 2:
        return kGuard * v.at[3] + v.at[0];
      case 3:
        return kGuard * v.at[3] - v.at[0];
      case 4:
        return kGuard * v.at[3] + v.at[1];
      case 5:
        return kGuard * v.at[3] - v.at[1];
      default: {
        const SbPlane& plane = m_planes[side - 6];
        double d = -static_cast<double>(plane.getDistanceFromOrigin());
        for (std::size_t axis = 0; axis < 3; ++axis)
          d += static_cast<double>(plane.getNormal()[static_cast<int>(axis)]) * v.world[axis];
        return d;
      }
    }
  };
  const auto between = [](const ClipVertex& a, const ClipVertex& b, double part) {
    ClipVertex out;
    const auto mix = [part](double from, double to) { return from + (to - from) * part; };
    for (std::size_t i = 0; i < 4; ++i) out.at[i] = mix(a.at[i], b.at[i]);
    for (std::size_t i = 0; i < 2; ++i) out.texture[i] = mix(a.texture[i], b.texture[i]);
    for (std::size_t i = 0; i < 4; ++i) out.color[i] = mix(a.color[i], b.color[i]);
    for (std::size_t i = 0; i < 3; ++i) out.world[i] = mix(a.world[i], b.world[i]);
    return out;
  };
  for (std::size_t side = 0; side < 6 + m_planes.size() && !polygon.empty(); ++side) {
    if (std::all_of(polygon.begin(), polygon.end(), [&](const ClipVertex& v) { return distance(v, side) >= 0.0; }))
      continue;
    std::vector<ClipVertex> kept;
    const std::size_t count = polygon.size();
    for (std::size_t i = 0; i < count; ++i) {
      const ClipVertex& v = polygon[i];
      const double d = distance(v, side);
      if (d >= 0.0) kept.push_back(v);
      if (!isClosed && i + 1 == count) break;
      const ClipVertex& next = polygon[(i + 1) % count];
      const double e = distance(next, side);
      if ((d >= 0.0) != (e >= 0.0)) kept.push_back(between(v, next, d / (d - e)));
    }
    polygon = std::move(kept);
  }
  if (std::any_of(polygon.begin(), polygon.end(), [](const ClipVertex& v) { return !(v.at[3] > 0.0); })) return {};
  return polygon;
}

PageVertex PageScene::onPage(const ClipVertex& v) const {
  PageVertex out;
  out.x = static_cast<float>((v.at[0] / v.at[3] + 1.0) * 0.5 * m_width);
  out.y = static_cast<float>((1.0 - v.at[1] / v.at[3]) * 0.5 * m_height);
  out.z = v.at[2] / v.at[3];
  out.s = static_cast<float>(v.texture[0]);
  out.t = static_cast<float>(v.texture[1]);
  out.color = packed(v.color);
  return out;
}

void PageScene::append(PageBatch& batch, const PageVertex& vertex) const {
  batch.nearest = std::min(batch.nearest, vertex.z);
  batch.farthest = std::max(batch.farthest, vertex.z);
  batch.isTransparent = batch.isTransparent || (vertex.color & 255) < 255;
  batch.vertices.push_back(vertex);
}

void PageScene::triangle(const std::array<Vertex, 3>& corners) {
  std::array<ClipVertex, 3> v{clipVertex(corners[0], 0), clipVertex(corners[1], 0), clipVertex(corners[2], 0)};
  // The signed area in the picture, in homogeneous coordinates: above 0 for a turn to the left.
  const auto& a = v[0].at;
  const auto& b = v[1].at;
  const auto& c = v[2].at;
  const double turn =
      a[0] * (b[1] * c[3] - b[3] * c[1]) - a[1] * (b[0] * c[3] - b[3] * c[0]) + a[3] * (b[0] * c[1] - b[1] * c[0]);
  const bool seesBack = m_isClockwise ? turn > 0.0 : turn < 0.0;
  if (m_cullsBack && seesBack) return;
  const std::array<uint32_t, 3> colors{colorOf(corners[0], seesBack), colorOf(corners[1], seesBack),
                                       colorOf(corners[2], seesBack)};
  for (std::size_t i = 0; i < 3; ++i)
    for (std::size_t channel = 0; channel < 4; ++channel)
      v[i].color[channel] = static_cast<double>(colors[i] >> (24 - 8 * channel) & 255);

  if (m_showsCorners || m_showsEdges) {
    PageBatch& out = batch(m_showsCorners ? PageBatch::POINTS : PageBatch::LINES);
    for (std::size_t i = 0; i < 3; ++i) {
      if (m_showsEdges && !isSideOfFace(corners[i], corners[(i + 1) % 3])) continue;
      const auto piece = m_showsCorners ? clipped({v[i]}, false) : clipped({v[i], v[(i + 1) % 3]}, false);
      if (piece.size() == (m_showsCorners ? 1u : 2u))
        for (const ClipVertex& end : piece) append(out, onPage(end));
    }
    return;
  }
  const std::vector<ClipVertex> polygon = clipped({v[0], v[1], v[2]}, true);
  if (polygon.size() < 3) return;
  PageBatch& out = batch(PageBatch::TRIANGLES);
  out.isSmooth = out.isSmooth || colors[0] != colors[1] || colors[0] != colors[2];
  for (std::size_t i = 2; i < polygon.size(); ++i)
    for (const std::size_t corner : {std::size_t{0}, i - 1, i}) append(out, onPage(polygon[corner]));
}

void PageScene::line(const std::array<Vertex, 2>& ends) {
  const auto piece = clipped({clipVertex(ends[0], m_colors->materialOf(ends[0].material)),
                              clipVertex(ends[1], m_colors->materialOf(ends[1].material))},
                             false);
  if (piece.size() != 2) return;
  PageBatch& out = batch(PageBatch::LINES);
  for (const ClipVertex& end : piece) append(out, onPage(end));
}

void PageScene::point(const Vertex& vertex) {
  const auto piece = clipped({clipVertex(vertex, m_colors->materialOf(vertex.material))}, false);
  if (!piece.empty()) append(batch(PageBatch::POINTS), onPage(piece.front()));
}

std::vector<PageBatch> PageScene::takeBatches() {
  std::erase_if(m_batches, [](const PageBatch& b) { return b.vertices.empty() && b.texts.empty(); });
  return std::move(m_batches);
}

}  // namespace tool
