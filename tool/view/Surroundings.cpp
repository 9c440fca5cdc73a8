#include "Surroundings.h"

#include <Inventor/SbVec3d.h>
#include <Inventor/SoFullPath.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/fields/SoSFNode.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Ormelle/PbMesh.h>
#include <Ormelle/PoAxis.h>
#include <Ormelle/PoCartesianAxis.h>
#include <Ormelle/PoDataMappingElement.h>
#include <Ormelle/PoDateFormatMappingElement.h>
#include <Ormelle/PoLinearAxis.h>
#include <Ormelle/PoLogAxis.h>
#include <Ormelle/PoMesh.h>
#include <Ormelle/PoMeshElement.h>
#include <Ormelle/PoTimeAxis.h>
#include <Ormelle/PoValueLegend.h>

#include <algorithm>
#include <cmath>

#include "Words.h"

namespace view {

namespace {

// An axis over fewer days writes times of day, too.
constexpr double kDaysWithTimes = 200;

struct AxisRange {
  int direction = 0;
  double start = 0;
  double end = 0;
};

SbVec3d rowOf(const SbMatrix& matrix, int row) {
  return {static_cast<double>(matrix[row][0]), static_cast<double>(matrix[row][1]),
          static_cast<double>(matrix[row][2])};
}

}  // namespace

struct Surroundings::Kit {
  const PoBase* node;
  std::vector<std::pair<const SoNode*, int>> way;  // the nodes of the path to it, each with its place in its parent
  SbMatrix toWorld;                                // from the coordinates of its data
  const PbMesh* mesh;
  const PbDataMapping* mapping;
  std::optional<PbDateFormatMapping> dates;

  int stepsTogether(const Kit& other) const {
    const auto end = std::mismatch(way.begin(), way.end(), other.way.begin(), other.way.end());
    return static_cast<int>(end.first - way.begin());
  }
};

namespace {

std::optional<AxisRange> rangeOf(const Surroundings::Kit& kit) {
  if (kit.node->isOfType(PoTimeAxis::getClassTypeId())) {
    const auto& axis = static_cast<const PoTimeAxis&>(*kit.node);
    const PbDateFormatMapping dates = kit.dates.value_or(PbDateFormatMapping());
    float start = 0;
    float end = 0;
    if (!dates.getCoordinate(axis.startDate.getValue(), start) || !dates.getCoordinate(axis.endDate.getValue(), end))
      return std::nullopt;
    return AxisRange{axis.type.getValue() == PoTimeAxis::Y ? 1 : 0, static_cast<double>(start),
                     static_cast<double>(end)};
  }
  if (!kit.node->isOfType(PoCartesianAxis::getClassTypeId())) return std::nullopt;
  const auto& axis = static_cast<const PoCartesianAxis&>(*kit.node);
  const int direction = std::clamp(axis.type.getValue() / 2, 0, 2);
  return AxisRange{direction, static_cast<double>(axis.start.getValue()[direction]),
                   static_cast<double>(axis.end.getValue())};
}

// The scale that `axis` is along a direction of `kit`; none if it runs along another line or doesn't reach
// `coordinate`.
std::optional<Scale> scaleBy(const Surroundings::Kit& axis, const Surroundings::Kit& kit, int direction,
                             float coordinate) {
  const std::optional<AxisRange> range = rangeOf(axis);
  if (!range) return std::nullopt;
  const SbVec3d along = rowOf(axis.toWorld, range->direction);
  const double unit = along.dot(along);
  if (!(unit > 0.0)) return std::nullopt;
  Scale scale;
  scale.hasAxis = true;
  for (const int other : {0, 1, 2}) {
    const SbVec3d way = rowOf(kit.toWorld, other);
    const double part = way.dot(along) / unit;
    const double aside = std::abs(part) * std::sqrt(unit);
    if (other == direction)
      scale.factor = aside > 0.9999 * way.length() ? part : 0.0;
    else if (aside > 1e-4 * way.length())
      return std::nullopt;
  }
  if (scale.factor == 0.0) return std::nullopt;
  scale.offset = (rowOf(kit.toWorld, 3) - rowOf(axis.toWorld, 3)).dot(along) / unit;
  const double there = scale.factor * static_cast<double>(coordinate) + scale.offset;
  const double slack = 1e-3 * std::abs(range->end - range->start);
  if (there < std::min(range->start, range->end) - slack || there > std::max(range->start, range->end) + slack)
    return std::nullopt;

  const auto& node = static_cast<const PoAxis&>(*axis.node);
  if (node.isOfType(PoTimeAxis::getClassTypeId())) {
    scale.kind = Scale::Kind::Dates;
    scale.dates = axis.dates.value_or(PbDateFormatMapping());
    scale.withTime = daysBetween(scale.dates, range->start, range->end) < kDaysWithTimes;
  } else if (node.isOfType(PoLogAxis::getClassTypeId())) {
    scale.kind = Scale::Kind::Logarithms;
  }
  if (node.gradAddStringVisibility.getValue()) scale.unit = node.gradAddString.getValue().getString();
  return scale;
}

}  // namespace

std::optional<std::string> Scale::translated(double coordinate) const {
  if (kind == Kind::Numbers) return std::nullopt;
  const double there = factor * coordinate + offset;
  return kind == Kind::Dates ? dateAt(dates, there, withTime) : roughly(std::pow(10.0, there));
}

std::string Scale::data(float coordinate) const {
  if (kind == Kind::Numbers) return exactly(coordinate) + behind(coordinate);
  return *translated(static_cast<double>(coordinate)) + unit;
}

std::string Scale::behind(float coordinate) const {
  if (kind != Kind::Numbers) return " (" + data(coordinate) + ")";
  const bool isSame = std::abs(factor - 1.0) < 1e-4;  // a stretched axis has other numbers than the data
  return isSame ? unit : "";
}

std::string Scale::place(double coordinate, std::optional<double> origin) const {
  if (const std::optional<std::string> text = translated(coordinate)) return *text;
  return origin ? roughly(coordinate, *origin) : roughly(coordinate);
}

Surroundings::Surroundings(SoNode* root, const SbViewportRegion& viewport) {
  SoCallbackAction look(viewport);
  look.addPreCallback(
      PoBase::getClassTypeId(),
      [](void* self, SoCallbackAction* action, const SoNode* node) {
        static_cast<Surroundings*>(self)->note(*action, static_cast<const PoBase&>(*node));
        return SoCallbackAction::CONTINUE;
      },
      this);
  look.apply(root);
}

Surroundings::~Surroundings() = default;

void Surroundings::note(SoCallbackAction& action, const PoBase& node) {
  Kit kit{&node, {}, SbMatrix::identity(), nullptr, nullptr, std::nullopt};
  const auto& path = *static_cast<const SoFullPath*>(action.getCurPath());
  for (int i = 0; i < path.getLength(); ++i) kit.way.emplace_back(path.getNode(i), path.getIndex(i));
  SoState* state = action.getState();
  const SoField* part = node.getField("domainTransform");
  if (const SoNode* transform = part ? static_cast<const SoSFNode*>(part)->getValue() : nullptr)
    kit.toWorld = static_cast<const SoMatrixTransform*>(transform)->matrix.getValue();
  kit.toWorld.multRight(action.getModelMatrix());
  kit.mesh = PoMeshElement::getMesh(state);
  kit.mapping = PoDataMappingElement::get(state);
  if (node.isOfType(PoMesh::getClassTypeId())) {
    const auto& user = static_cast<const PoMesh&>(node);
    if (user.getMesh()) kit.mesh = user.getMesh();
    if (user.getDataMapping()) kit.mapping = user.getDataMapping();
  }
  if (const PbDateFormatMapping* dates = PoDateFormatMappingElement::get(state)) kit.dates = *dates;
  m_kits.push_back(std::move(kit));
}

const Surroundings::Kit* Surroundings::find(const SoFullPath& path, int index) const {
  for (const Kit& kit : m_kits) {
    if (kit.node != path.getNode(index) || kit.way.size() != static_cast<std::size_t>(index) + 1) continue;
    bool isSame = true;
    for (int i = 0; i <= index && isSame; ++i)
      isSame = kit.way[static_cast<std::size_t>(i)] == std::pair<const SoNode*, int>(path.getNode(i), path.getIndex(i));
    if (isSame) return &kit;
  }
  return nullptr;
}

const PbMesh* Surroundings::meshOf(const Kit* kit) { return kit ? kit->mesh : nullptr; }

// Of several axes the one that shares most of the way with the kit counts, then one before the kit, the last of them.
Scale Surroundings::scaleOf(const Kit* kit, int direction, float coordinate) const {
  Scale best;
  if (!kit) return best;
  int most = 0;
  for (const Kit& axis : m_kits) {
    if (!axis.node->isOfType(PoAxis::getClassTypeId())) continue;
    const int together = axis.stepsTogether(*kit);
    if (together < most || (together == most && &axis > kit)) continue;
    if (const std::optional<Scale> scale = scaleBy(axis, *kit, direction, coordinate)) {
      best = *scale;
      most = together;
    }
  }
  if (!best.hasAxis && direction == 0 && kit->dates) {
    best.kind = Scale::Kind::Dates;
    best.dates = *kit->dates;
  }
  return best;
}

std::string Surroundings::unitOf(const Kit* kit) const {
  if (!kit || !kit->mapping) return {};
  for (const Kit& other : m_kits) {
    if (other.mapping != kit->mapping || !other.node->isOfType(PoValueLegend::getClassTypeId())) continue;
    const auto& legend = static_cast<const PoValueLegend&>(*other.node);
    if (legend.valueAddStringVisibility.getValue()) return legend.valueAddString.getValue().getString();
  }
  return {};
}

}  // namespace view
