#include "ChartProbe.h"

#include <Inventor/SbBox3f.h>
#include <Inventor/SbVec2f.h>
#include <Inventor/SoFullPath.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/fields/SoMFString.h>
#include <Inventor/nodes/SoGroup.h>
#include <Ormelle/PbMesh.h>
#include <Ormelle/PoAxis.h>
#include <Ormelle/PoCurve.h>
#include <Ormelle/PoCurve3.h>
#include <Ormelle/PoLegend.h>
#include <Ormelle/PoMultipleHistogram.h>
#include <Ormelle/PoPieChart.h>
#include <Ormelle/PoPieChartRep.h>
#include <Ormelle/PoSingleHistogram.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "Words.h"
#include "graph/chart/PiPieSlices.h"

namespace view {

namespace {

std::string nameIn(const SoMFString& names, int index, const char* kind) {
  return nameOr(index < names.getNum() ? names[index].getString() : "", kind, index);
}

std::string shareOf(const PiPieSlices::Slice& slice, const std::string& unit) {
  return " " + roughly(slice.value) + unit + print(", %.3g %%", slice.percent);
}

std::string unitOf(const SoSFEnum& visibility, const SoSFString& unit) {
  return visibility.getValue() == PoAxis::VISIBILITY_ON ? unit.getValue().getString() : "";
}

std::string valueOf(const PoHistogram& kit, float value) {
  return " " + exactly(value) + unitOf(kit.valueAddStringVisibility, kit.valueAddString);
}

// A bar without a name is told by the part of the axis that it stands on, if there is an axis.
std::string nameOfBar(const PoSingleHistogram& kit, int bar, const Question& question) {
  const std::string name = bar < kit.name.getNum() ? kit.name[bar].getString() : "";
  const int direction = kit.type.getValue() == PoHistogram::Y ? 1 : 0;
  const Scale scale = question.scale(direction);
  if (!name.empty() || !scale.hasAxis) return nameOr(name, "bar", bar);
  const double start = static_cast<double>(kit.start.getValue()[direction]);
  const double step = (static_cast<double>(kit.end.getValue()) - start) / kit.value.getNum();
  return nameOr("", "bar", bar) + " (" + scale.place(start + bar * step) + " to " +
         scale.place(start + (bar + 1) * step) + ")";
}

Answer tellBar(const PoSingleHistogram& kit, const Question& question) {
  int bar = 0;
  if (!kit.getPickedBarNumber(&question.picked, bar) || bar >= kit.value.getNum())
    return {pickedText(question.picked), false};
  return {", " + nameOfBar(kit, bar, question) + valueOf(kit, kit.value[bar]), false};
}

Answer tellBarOfTable(const PoMultipleHistogram& kit, const Question& question) {
  int bar = 0;
  const int count = kit.value.getNum();
  if (!kit.getPickedBarNumber(&question.picked, bar) || bar >= count) return {pickedText(question.picked), false};
  const int rows = std::clamp(kit.numRows.getValue(), 1, count);
  const int columns = (count - 1) / rows + 1;
  return {", " + nameIn(kit.rowName, bar / columns, "row") + ", " + nameIn(kit.columnName, bar % columns, "column") +
              valueOf(kit, kit.value[bar]),
          false};
}

// The texts of pies stand in boxes, with leaders.
Answer tellAnnotation(const SoPickedPoint& picked) {
  const std::string text = pickedText(picked);
  return {text.empty() ? ", an annotation" : text, false};
}

Answer tellSlice(const PoPieChart& kit, const Question& question) {
  int number = 0;
  if (!kit.getPickedSliceNumber(question.picked.getPath(), number)) return tellAnnotation(question.picked);
  PiPieSlices slices;
  slices.compute(kit.sliceValue.getNum(), kit.sliceValue.getValues(0),
                 {kit.sliceGroupActive.getValue() != FALSE, kit.sliceGroupFlagMin.getValue() == PoPieChart::PERCENTAGE,
                  kit.sliceGroupMinValue.getValue()});
  for (const PiPieSlices::Slice& slice : slices.displayed()) {
    if (slice.index() != number) continue;
    const std::string name = slice.isGroup() ? nameOr(kit.sliceGroupString.getValue().getString(), "group", 0)
                                             : nameIn(kit.sliceText, number, "slice");
    const std::string inside = unitOf(kit.intAnnotAddStringVisibility, kit.intAnnotAddString);
    return {
        ", " + name +
            shareOf(slice, inside.empty() ? unitOf(kit.extAnnotAddStringVisibility, kit.extAnnotAddString) : inside),
        false};
  }
  return {"", false};
}

// Below the kit stands a separator with the group of all slices, and in it a group for each of them in their order.
Answer tellSliceOfMesh(const PoPieChartRep& kit, const Question& question) {
  const auto& path = *static_cast<const SoFullPath*>(question.picked.getPath());
  const PbMesh* mesh = question.mesh();
  const float* values = mesh ? mesh->getValuesSet(kit.yValuesIndex.getValue()) : nullptr;
  const int place = path.findNode(&kit) + 2;
  if (!values || place + 1 >= path.getLength() || path.getNode(place)->getTypeId() != SoGroup::getClassTypeId())
    return tellAnnotation(question.picked);
  const auto* all = static_cast<const SoGroup*>(path.getNode(place));
  std::size_t number = 0;
  for (int i = 0; i < path.getIndex(place + 1); ++i)
    if (all->getChild(i)->getTypeId() == SoGroup::getClassTypeId()) ++number;
  PiPieSlices slices;
  slices.compute(mesh->getNumNodes(), values, {});
  if (number >= slices.displayed().size()) return {"", false};
  const PiPieSlices::Slice& slice = slices.displayed()[number];
  const SbString* names = mesh->getStringsSet(0);
  return {", " + nameOr(names ? names[slice.index()].getString() : "", "slice", slice.index()) + shareOf(slice, ""),
          false};
}

SbVec3f in3D(const SbVec2f& point) { return {point[0], point[1], 0.0f}; }
const SbVec3f& in3D(const SbVec3f& point) { return point; }

template <class Curve>
Answer tellCurve(const Curve& kit, const Question& question) {
  const auto pointAt = [&kit](int index) { return SbVec3f(in3D(kit.point[index])); };
  const int nearest = nearestPoint(kit.point.getNum(), pointAt, question.point);
  if (nearest < 0) return {};
  const SbVec3f place = pointAt(nearest);
  std::string text = print(", nearest point %d (", nearest) + question.scale(0).data(place[0]) + " " +
                     question.scale(1).data(place[1]);
  if (place[2] != 0.0f) text += " " + question.scale(2).data(place[2]);
  return {text + ")"};
}

// Texts stand beside what they tell of.
template <class Kit>
Answer tellTitled(const Kit& kit, const Question& question, const char* kind, bool hasCoordinates) {
  const std::string title = kit.titleString.getValue().getString();
  const std::string text = pickedText(question.picked);
  return {std::string(", ") + (title.empty() ? (*kind == 'a' ? "an " : "a ") : "") + kind +
              (title.empty() ? "" : " \"" + title + "\"") + text,
          hasCoordinates && text.empty()};
}

Answer tellAxis(const PoAxis& kit, const Question& question) { return tellTitled(kit, question, "axis", true); }
Answer tellLegend(const PoLegend& kit, const Question& question) { return tellTitled(kit, question, "legend", false); }

struct Teller {
  SoType (*type)();
  Answer (*tell)(const Question& question);
};

template <class Kit, Answer (*tell)(const Kit&, const Question&)>
constexpr Teller tellerOf() {
  return {&Kit::getClassTypeId,
          [](const Question& question) { return tell(static_cast<const Kit&>(question.kit), question); }};
}

constexpr Teller kTellers[] = {
    tellerOf<PoSingleHistogram, tellBar>(),
    tellerOf<PoMultipleHistogram, tellBarOfTable>(),
    tellerOf<PoPieChart, tellSlice>(),
    tellerOf<PoPieChartRep, tellSliceOfMesh>(),
    tellerOf<PoCurve, tellCurve<PoCurve>>(),
    tellerOf<PoCurve3, tellCurve<PoCurve3>>(),
    tellerOf<PoAxis, tellAxis>(),
    tellerOf<PoLegend, tellLegend>(),
};

}  // namespace

std::string pickedText(const SoPickedPoint& picked) {
  const SoNode* node = static_cast<const SoFullPath*>(picked.getPath())->getTail();
  const SoField* field = node->getField("string");
  if (!field || !field->isOfType(SoMFString::getClassTypeId())) return {};
  std::string text;
  const auto& lines = *static_cast<const SoMFString*>(field);
  for (int i = 0; i < lines.getNum(); ++i) text += (i == 0 ? "" : " ") + std::string(lines[i].getString());
  return ", text \"" + text + "\"";
}

int nearestPoint(int count, const std::function<SbVec3f(int)>& pointAt, const SbVec3f& point) {
  SbBox3f box;
  for (int i = 0; i < count; ++i) {
    const SbVec3f each = pointAt(i);
    if (std::isfinite(each[0]) && std::isfinite(each[1]) && std::isfinite(each[2])) box.extendBy(each);
  }
  if (box.isEmpty()) return -1;
  const SbVec3f size = box.getMax() - box.getMin();
  int nearest = -1;
  double least = std::numeric_limits<double>::infinity();
  for (int i = 0; i < count; ++i) {
    const SbVec3f way = pointAt(i) - point;
    double distance = 0;
    for (const int axis : {0, 1, 2})
      if (size[axis] > 0.0f) distance += std::pow(static_cast<double>(way[axis]) / static_cast<double>(size[axis]), 2);
    if (!(distance < least)) continue;
    least = distance;
    nearest = i;
  }
  return nearest;
}

Answer tellChart(const Question& question) {
  for (const Teller& teller : kTellers)
    if (question.kit.isOfType(teller.type())) return teller.tell(question);
  return {pickedText(question.picked)};
}

}  // namespace view
