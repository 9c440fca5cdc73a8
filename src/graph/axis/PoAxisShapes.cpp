// The steps of a rebuild of an axis: each hands numbers to a worker and the result to an emitter.

#include <Inventor/nodes/SoGroup.h>
#include <Ormelle/PoAxis.h>

#include <algorithm>
#include <charconv>

#include "graph/axis/PiAxisLayout.h"
#include "graph/axis/PiAxisShapes.h"
#include "graph/axis/PiAxisState.h"
#include "graph/axis/PiGradStrings.h"
#include "graph/axis/PiGradTextLine.h"
#include "graph/axis/PiGradations.h"
#include "graph/frame/PiElementFont.h"

void PoAxis::saveAxisAttr() {
  PiAxisState& s = state();
  s.attributes = PiAxisAttributes::of(*this);
  const bool isAutomatic = !(s.attributes.gradFontSize > 0) && s.attributes.gradDistAxis == 0;
  s.isLegible = m_legibility == LEGIBILITY_ON || (m_legibility != LEGIBILITY_OFF && isAutomatic);
  s.firstMultiple = 0;
  if (s.attributes.gradFontName.getLength() == 0) s.attributes.gradFontName = s.text.getFontName();
  if (s.attributes.titleFontName.getLength() == 0) s.attributes.titleFontName = s.text.getFontName();
  s.along = getDomain()->getDeltaX();
  s.across = getDomain()->getDeltaY();
  s.isSaved = true;
}

void PoAxis::setDefaultAttr(Plane plane) { state().attributes.resolve(plane); }

void PoAxis::computeGradLimit(float axisStart, float axisEnd, float& gradStart, float& gradEnd) {
  const PiAxisAttributes& a = state().attributes;
  const PiGradations::Range range =
      PiGradations::withoutMargins(axisStart, axisEnd, a.marginType, a.marginStart, a.marginEnd);
  gradStart = range.start;
  gradEnd = range.end;
}

void PoAxis::computeGradList(float gradStart, float gradEnd, float step, int n, const char** allStrings,
                             const float* allCoords) {
  PiAxisState& s = state();
  const PiAxisAttributes& a = s.attributes;
  PiGradations::split({a.tickSubDef, a.tickNumOrPeriod, a.tickFirstGrad, a.tickLastGrad}, {gradStart, gradEnd}, step,
                      {allCoords, static_cast<size_t>(std::max(0, n))}, s.mainCoords, s.mainIndices, s.subCoords);
  s.mainStrings.clear();
  for (const int index : s.mainIndices) s.mainStrings.push_back(allStrings[index]);
}

void PoAxis::computeTickLen(int numMainGrads, float& mainLen, float& subLen) {
  PiAxisLayout::resolveTickLengths(state().attributes, numMainGrads);
  mainLen = state().attributes.tickMainLength;
  subLen = state().attributes.tickSubLength;
}

void PoAxis::buildArrow(float axisStart, float axisEnd, SoGroup* group) {
  PiAxisState& s = state();
  PiAxisAttributes& a = s.attributes;
  if (a.arrowVisibility != VISIBILITY_ON) return;
  if (!(a.arrowHeight > 0)) a.arrowHeight = PiAxisLayout::AUTO_ARROW_HEIGHT;
  if (!(a.arrowLength > 0)) a.arrowLength = PiAxisLayout::AUTO_ARROW_LENGTH;
  const float height = a.arrowHeight * s.along, length = a.arrowLength * s.along;
  const float tip = axisEnd > axisStart ? axisEnd + length : axisEnd - length;
  PiAxisShapes::addArrow(axisEnd, tip, height, s.origin, group);
  s.limits.xmin = std::min(s.limits.xmin, tip);
  s.limits.xmax = std::max(s.limits.xmax, tip);
  s.limits.ymin = std::min(s.limits.ymin, -height / 2);
  s.limits.ymax = std::max(s.limits.ymax, height / 2);
}

void PoAxis::buildTick(int num, const float* coords, float length, SoGroup* group) {
  PiAxisState& s = state();
  if (s.attributes.tickVisibility != VISIBILITY_ON || num <= 0) return;
  const PiAxisLayout::Reach reach = PiAxisLayout::tickReach(s.attributes.tickPosition, s.attributes.isAbove());
  const float from = reach.from * length, to = reach.to * length;
  PiAxisShapes::addLinesAcross({coords, static_cast<size_t>(num)}, from, to, s.origin, group);
  s.limits.ymin = std::min({s.limits.ymin, from, to});
  s.limits.ymax = std::max({s.limits.ymax, from, to});
}

void PoAxis::buildGridLines(int num, const float* coords, SoGroup* group) {
  const PiAxisState& s = state();
  const PiAxisAttributes& a = s.attributes;
  if (a.gridVisibility != VISIBILITY_ON || num <= 0) return;
  // Lengths are coordinates of the direction across, which the transform scales as it scales everything across.
  const float unit = a.side() * s.along / s.across;
  for (const float length : {-std::abs(a.gridLengthGradOtherSide), std::abs(a.gridLengthGradSide)})
    if (length != 0)
      PiAxisShapes::addLinesAcross({coords, static_cast<size_t>(num)}, 0, length * unit, s.origin, group);
}

void PoAxis::buildGrads(int num, const float* coords, const char** strings, SoGroup* group) {
  PiAxisState& s = state();
  PiAxisAttributes& a = s.attributes;
  if (a.gradVisibility != VISIBILITY_ON || !strings || num < 1) {
    a.gradFontSize = 0;
    return;
  }
  PiGradTextLine line(s, a.gradFontName);
  for (int i = 0; i < num; ++i) line.add(coords[i], PiTextRun(strings[i]));
  const bool isSizeFixed = a.gradFontSize > 0;
  const float interval = num > 1 ? coords[1] - coords[0] : s.axisEnd - s.axisStart;
  line.setSize(isSizeFixed
                   ? a.gradFontSize * s.along
                   : PiAxisLayout::fitGradSize(line.path(), line.maxWidth(), line.maxLetters(), interval, s.along),
               isSizeFixed);
  line.makeLegible(true, s.firstMultiple);
  a.gradFontSize = line.size() / s.along;
  line.build(PiAxisLayout::gradLine(a, s.limits, line.size(), s.along), group);
}

void PoAxis::buildTitle(float axisStart, float axisEnd, SoGroup* group) {
  PiAxisState& s = state();
  PiAxisAttributes& a = s.attributes;
  if (a.titleVisibility != VISIBILITY_ON) return;
  const PiAxisLayout::TitlePlace placed = PiAxisLayout::placeTitle(a, s.limits, axisStart, axisEnd, s.along);
  PiAxisText text(a.titleFontName, s.text, a.effective(a.titlePath), placed.alignment);
  text.setWrapped(true);
  const PiTextRun run(a.titleString.getString());
  const float size = a.titleFontSize * s.along;
  text.build(run, placed.place.x - s.origin, placed.place.y, size, group);
  PiAxisLayout::growByText(s.limits, text.measure(run), placed.place.x, placed.place.y, size);
}

void PoAxis::buildMultFactorAtExtr(int exponent, float min, float max, float& dist, SoGroup* group) {
  PiAxisState& s = state();
  const PiAxisAttributes& a = s.attributes;
  const float size = a.gradFontSize * s.along;
  const PiAxisLayout::Place place = PiAxisLayout::placeMultiplier(s.limits, min, max, size, s.along, dist);
  const TextPath path = a.effective(a.gradPath);
  PiAxisText text(a.gradFontName, s.text, path, PiTextAlignment::beyond(path, max > min));
  char digits[16];
  *std::to_chars(digits, digits + sizeof digits - 1, exponent).ptr = 0;
  PiTextRun run("x 10");
  run.addExponent(digits);
  text.build(run, place.x - s.origin, place.y, size, group);
  PiAxisLayout::growByText(s.limits, text.measure(run), place.x, place.y, size);
}

void PoAxis::computeDecadeGradList(int numDecades, const int** list, int& count) {
  const std::span<const int> digits = PiGradations::decadeDigits(numDecades);
  *list = digits.data();
  count = static_cast<int>(digits.size());
}

char** PoAxis::allocGradString(int n) {
  static PiGradStrings strings;
  return strings.alloc(n);
}

void PoAxis::buildAxisLine(float axisStart, float axisEnd) {
  PiAxisState& s = state();
  s.axisStart = axisStart;
  s.axisEnd = axisEnd;
  s.limits = {std::min(axisStart, axisEnd), std::max(axisStart, axisEnd), 0, 0};
  auto* line = new SoGroup;
  setPart("body", line);
  PiAxisShapes::addLine(axisStart, axisEnd, s.origin, line);
  auto* triangle = new SoGroup;
  setPart("arrow", triangle);
  buildArrow(axisStart, axisEnd, triangle);
}

void PoAxis::buildTicksAndGrids() {
  PiAxisState& s = state();
  const auto numMain = static_cast<int>(s.mainCoords.size()), numSub = static_cast<int>(s.subCoords.size());
  float mainLength, subLength;
  computeTickLen(numMain, mainLength, subLength);
  const auto fill = [&](const char* part, auto build) {
    auto* group = new SoGroup;
    setPart(part, group);
    build(group);
  };
  fill("subGradTick", [&](SoGroup* group) { buildTick(numSub, s.subCoords.data(), subLength * s.along, group); });
  fill("subGradGrid", [&](SoGroup* group) { buildGridLines(numSub, s.subCoords.data(), group); });
  fill("mainGradTick", [&](SoGroup* group) { buildTick(numMain, s.mainCoords.data(), mainLength * s.along, group); });
  fill("mainGradGrid", [&](SoGroup* group) { buildGridLines(numMain, s.mainCoords.data(), group); });
}

void PoAxis::buildGradTextPart() {
  PiAxisState& s = state();
  auto* group = new SoGroup;
  setPart("mainGradText", group);
  buildGrads(static_cast<int>(s.mainCoords.size()), s.mainCoords.data(), s.mainStrings.data(), group);
  setElementFont("mainGradText", s.attributes.gradFontSize > 0, s.attributes.gradFontName, s.attributes.gradFontSize);
}

void PoAxis::buildTitlePart(float axisStart, float axisEnd) {
  auto* group = new SoGroup;
  setPart("title", group);
  buildTitle(axisStart, axisEnd, group);
  const PiAxisAttributes& a = state().attributes;
  setElementFont("title", a.titleVisibility == VISIBILITY_ON, a.titleFontName, a.titleFontSize);
}

void PoAxis::setElementFont(const char* element, int isShown, const SbString& name, float size) {
  if (isShown)
    PiElementFont::set(*this, element, SbName(name), size * state().along);
  else
    PiElementFont::remove(*this, element);
}
