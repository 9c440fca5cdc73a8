#include "graph/axis/PiAxisAttributes.h"

#include <algorithm>
#include <cmath>

#include "nodes/attribute/PiEnumField.h"

namespace {

/// Sizes beyond are cut: far more than can be drawn, and their products still fit into floats.
constexpr float kMaxSize = 1e6F;

float numberOf(const SoSFFloat& field) { return std::isfinite(field.getValue()) ? field.getValue() : 0; }
float sizeOf(const SoSFFloat& field) { return std::clamp(numberOf(field), -kMaxSize, kMaxSize); }

PoAxis::Visibility visibilityOf(const SoSFEnum& field) {
  return PiEnumField::get(field, PoAxis::VISIBILITY_DEPEND, PoAxis::VISIBILITY_DEPEND);
}

PoAxis::TextPath pathOf(const SoSFEnum& field) {
  return PiEnumField::get(field, PoAxis::PATH_DEPEND, PoAxis::PATH_DEPEND);
}

template <class Enum>
void settle(Enum& value, Enum depend, Enum chosen) {
  if (value == depend) value = chosen;
}

}  // namespace

PiAxisAttributes PiAxisAttributes::of(const PoAxis& axis) {
  PiAxisAttributes a;
  a.gradVisibility = visibilityOf(axis.gradVisibility);
  a.gradPosition = PiEnumField::get(axis.gradPosition, PoAxis::GRAD_DEPEND, PoAxis::GRAD_DEPEND);
  a.gradPath = pathOf(axis.gradPath);
  a.gradFontName = axis.gradFontName.getValue();
  a.gradFontSize = sizeOf(axis.gradFontSize);
  a.gradDistAxis = sizeOf(axis.gradDistAxis);
  a.gradAddStringVisibility = axis.gradAddStringVisibility.getValue();
  a.gradAddString = axis.gradAddString.getValue();
  a.marginType = PiEnumField::get(axis.marginType, PoAxis::FIXED_MARGIN, PoAxis::REL_MARGIN);
  a.marginStart = numberOf(axis.marginStart);
  a.marginEnd = numberOf(axis.marginEnd);
  a.titleVisibility = visibilityOf(axis.titleVisibility);
  a.titlePosition = PiEnumField::get(axis.titlePosition, PoAxis::TITLE_DEPEND, PoAxis::TITLE_DEPEND);
  a.titlePath = pathOf(axis.titlePath);
  a.titleFontName = axis.titleFontName.getValue();
  a.titleFontSize = sizeOf(axis.titleFontSize);
  a.titleDistAxis = sizeOf(axis.titleDistAxis);
  a.titleString = axis.titleString.getValue();
  a.gridVisibility = visibilityOf(axis.gridVisibility);
  a.gridLengthGradSide = numberOf(axis.gridLengthGradSide);
  a.gridLengthGradOtherSide = numberOf(axis.gridLengthGradOtherSide);
  a.arrowVisibility = visibilityOf(axis.arrowVisibility);
  a.arrowHeight = sizeOf(axis.arrowHeight);
  a.arrowLength = sizeOf(axis.arrowLength);
  a.tickVisibility = visibilityOf(axis.tickVisibility);
  a.tickPosition = PiEnumField::get(axis.tickPosition, PoAxis::TICK_ACROSS_AXIS, PoAxis::TICK_GRAD_SIDE);
  a.tickMainLength = sizeOf(axis.tickMainLength);
  a.tickSubLength = sizeOf(axis.tickSubLength);
  a.tickSubDef = PiEnumField::get(axis.tickSubDef, PoAxis::PERIOD_MAIN_TICK, PoAxis::PERIOD_MAIN_TICK);
  a.tickNumOrPeriod = axis.tickNumOrPeriod.getValue();
  a.tickFirstGrad = axis.tickFirstGrad.getValue();
  a.tickLastGrad = axis.tickLastGrad.getValue();
  a.reverseFlag = PiEnumField::get(axis.reverseFlag, PoAxis::AXIS_REVERSE_DEPEND, PoAxis::AXIS_REVERSE_DEPEND);
  return a;
}

void PiAxisAttributes::resolve(PoAxis::Plane plane) {
  if (plane < PoAxis::PLANE_XY || plane > PoAxis::PLANE_ZY) return;
  const bool isXY = plane == PoAxis::PLANE_XY;
  settle(gradVisibility, PoAxis::VISIBILITY_DEPEND, PoAxis::VISIBILITY_ON);
  settle(gradPosition, PoAxis::GRAD_DEPEND, isXY ? PoAxis::GRAD_BELOW : PoAxis::GRAD_ABOVE);
  settle(gradPath, PoAxis::PATH_DEPEND, isXY ? PoAxis::PATH_RIGHT : PoAxis::PATH_DOWN);
  settle(titleVisibility, PoAxis::VISIBILITY_DEPEND, PoAxis::VISIBILITY_OFF);
  settle(titlePosition, PoAxis::TITLE_DEPEND, isXY ? PoAxis::TITLE_MIDDLE : PoAxis::TITLE_END);
  settle(titlePath, PoAxis::PATH_DEPEND, isXY ? PoAxis::PATH_RIGHT : PoAxis::PATH_DOWN);
  settle(gridVisibility, PoAxis::VISIBILITY_DEPEND, PoAxis::VISIBILITY_OFF);
  settle(arrowVisibility, PoAxis::VISIBILITY_DEPEND, PoAxis::VISIBILITY_ON);
  settle(tickVisibility, PoAxis::VISIBILITY_DEPEND, PoAxis::VISIBILITY_ON);
  settle(reverseFlag, PoAxis::AXIS_REVERSE_DEPEND, PoAxis::AXIS_NO_REVERSE);
}

PoAxis::TextPath PiAxisAttributes::effective(PoAxis::TextPath path) const {
  if (reverseFlag != PoAxis::AXIS_REVERSE) return path;
  if (path == PoAxis::PATH_UP) return PoAxis::PATH_DOWN;
  if (path == PoAxis::PATH_DOWN) return PoAxis::PATH_UP;
  return path;
}
