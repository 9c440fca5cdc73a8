#include "quillane/emit/PiIsolineDrawing.h"

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Ormelle/PbDataMapping.h>
#include <Ormelle/PbIsovaluesList.h>

#include <algorithm>
#include <map>

#include "quillane/contour/PiLineClipping.h"
#include "quillane/emit/PiColorWriter.h"
#include "quillane/emit/PiLabelNodes.h"

namespace {

struct DrawnLine {
  PiPolyline points;
  float isovalue;
};

bool isDrawn(const PbDataMapping* mapping, float isovalue) {
  if (!mapping) return true;
  float transparency = 0;
  if (!mapping->isTransparencyEnabled()) return mapping->getRGBColor(isovalue) != nullptr;
  if (!mapping->getRGBColor(isovalue, transparency)) return false;
  const float deleted = mapping->getTransparencyValueDeletedParts();
  return deleted > 1 || transparency < deleted;
}

SoGroup* makeLines(std::span<const DrawnLine> lines, const PbDataMapping* mapping) {
  if (lines.empty()) return nullptr;
  auto* group = new SoGroup;
  if (mapping) {
    auto* material = new SoMaterial;
    group->addChild(material);
    auto* binding = new SoMaterialBinding;
    group->addChild(binding);
    binding->value = SoMaterialBinding::PER_FACE;
    PiColorWriter colors(*mapping, *material, static_cast<int>(lines.size()));
    int number = 0;
    for (const DrawnLine& line : lines) colors.set(number++, line.isovalue);
  }
  std::size_t numPoints = 0;
  for (const DrawnLine& line : lines) numPoints += line.points.size();
  auto* coordinate = new SoCoordinate3;
  group->addChild(coordinate);
  auto* shape = new SoLineSet;
  group->addChild(shape);
  coordinate->point.setNum(static_cast<int>(numPoints));
  shape->numVertices.setNum(static_cast<int>(lines.size()));
  SbVec3f* points = coordinate->point.startEditing();
  int32_t* numVertices = shape->numVertices.startEditing();
  for (const DrawnLine& line : lines) {
    points = std::copy(line.points.begin(), line.points.end(), points);
    *numVertices++ = static_cast<int32_t>(line.points.size());
  }
  coordinate->point.finishEditing();
  shape->numVertices.finishEditing();
  return group;
}

/// The lines of one drawing, and then their labels.
class Drawing {
 public:
  Drawing(const PiIsolineStyle& style, std::span<const PiIsoline> lines);

  void addLabels(std::span<const PiPolyline> boundary);
  PiIsolineNodes& nodes() { return m_nodes; }
  void addLines();

 private:
  bool isMajor(int level) const {
    return m_style.majorPeriod <= 1 || (level + 1 - m_style.firstMajor) % m_style.majorPeriod == 0;
  }
  bool mayHaveLabel(float isovalue) const;
  void cutLines(const std::vector<PiPlacedLabel>& labels);

  const PiIsolineStyle& m_style;
  std::vector<DrawnLine> m_major, m_minor;
  PiLinePieces m_majorPieces, m_minorPieces;
  PiIsolineNodes m_nodes;
};

Drawing::Drawing(const PiIsolineStyle& style, std::span<const PiIsoline> lines) : m_style(style) {
  std::map<int, bool> drawnLevels;
  for (const PiIsoline& line : lines) {
    const auto [found, isNew] = drawnLevels.try_emplace(line.level);
    if (isNew) found->second = isDrawn(style.mapping, line.isovalue);
    if (found->second) (isMajor(line.level) ? m_major : m_minor).push_back({line.points, line.isovalue});
  }
}

// Where labels keep off lines, those beyond a threshold get none.
bool Drawing::mayHaveLabel(float isovalue) const {
  if (!m_style.mapping || !m_style.isMajorForbidden) return true;
  int hasMin = 0, hasMax = 0;
  float min = 0, max = 0;
  m_style.mapping->thresholdsEnabled(hasMin, hasMax);
  m_style.mapping->getMinRGBThreshold(min);
  m_style.mapping->getMaxRGBThreshold(max);
  return !(hasMin && isovalue < min) && !(hasMax && isovalue > max);
}

void Drawing::addLabels(std::span<const PiPolyline> boundary) {
  PiLabelNodes emitter(*m_style.list, m_style.format, m_style.attributes, m_style.size, m_style.hasBox);
  std::map<float, SbVec2f> rooms;
  std::vector<PiLabelLine> lines;
  lines.reserve(m_major.size() + m_minor.size());
  for (const DrawnLine& line : m_major) {
    const auto [found, isNew] = rooms.try_emplace(line.isovalue, 0.0F, 0.0F);
    if (isNew && mayHaveLabel(line.isovalue)) found->second = emitter.roomOf(line.isovalue);
    lines.push_back({line.points, found->second[0], found->second[1], m_style.isMajorForbidden});
  }
  if (m_style.isMinorForbidden)
    for (const DrawnLine& line : m_minor) lines.push_back({line.points, 0, 0, true});

  PiLabelPlacement placement(m_style.path, m_style.gap, bool(m_style.heightsAt));
  placement.setBoundary(boundary);
  placement.setClippingPolygon(m_style.polygon);
  std::vector<PiPlacedLabel> placed = placement.place(lines);
  if (placed.empty()) return;
  if (m_style.heightsAt) drapeLabels(placed, m_style.heightsAt);

  std::vector<PiLabelNodes::Label> labels;
  labels.reserve(placed.size());
  for (const PiPlacedLabel& label : placed) labels.push_back({&label, m_major[label.line].isovalue});
  m_nodes.texts = emitter.makeTexts(labels);
  if (m_style.hasBox) {
    m_nodes.boxes = PiLabelNodes::makeBoxes(labels);
    m_nodes.borders = PiLabelNodes::makeBorders(labels);
  } else if (m_style.isClipped) {
    cutLines(placed);
  }
}

void Drawing::cutLines(const std::vector<PiPlacedLabel>& labels) {
  std::vector<PiLabelBox> boxes;
  boxes.reserve(labels.size());
  for (const PiPlacedLabel& label : labels) boxes.push_back(label.box);
  PiLineClipping clipping(std::move(boxes));
  const auto cut = [&](std::vector<DrawnLine>& lines, PiLinePieces& store) {
    std::vector<PiPolyline> uncut;
    uncut.reserve(lines.size());
    for (const DrawnLine& line : lines) uncut.push_back(line.points);
    store = clipping.clip(uncut);
    std::vector<DrawnLine> pieces;
    const SbVec3f* points = store.points.data();
    for (const PiLinePieces::Piece& piece : store.pieces) {
      pieces.push_back({{points, piece.numPoints}, lines[piece.line].isovalue});
      points += piece.numPoints;
    }
    lines = std::move(pieces);
  };
  cut(m_major, m_majorPieces);
  cut(m_minor, m_minorPieces);
}

void Drawing::addLines() {
  m_nodes.major = makeLines(m_major, m_style.mapping);
  m_nodes.minor = makeLines(m_minor, m_style.mapping);
}

}  // namespace

PiIsolineNodes drawIsolines(const PiIsolineStyle& style, std::span<const PiIsoline> lines,
                            std::span<const PiPolyline> boundary) {
  Drawing drawing(style, lines);
  if (style.hasLabels) drawing.addLabels(boundary);
  drawing.addLines();
  return drawing.nodes();
}
