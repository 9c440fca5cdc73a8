#include <Ormelle/PoLinearAxis.h>

#include <Inventor/caches/SoCache.h>
#include <Inventor/misc/SoState.h>
#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbNumericDisplayFormat.h>
#include <Ormelle/PoNumericDisplayFormatElement.h>

#include <charconv>
#include <cmath>

#include "graph/axis/PiAxisState.h"
#include "graph/axis/PiGradFormat.h"
#include "graph/axis/PiGradStrings.h"
#include "graph/axis/PiLinearGradations.h"
#include "graph/axis/PiMultiplier.h"
#include "nodes/attribute/PiEnumField.h"

PO_KIT_SOURCE(PoLinearAxis)

namespace {

bool isAutomaticFormat(const PbNumericDisplayFormat* format) {
  if (!format) return true;
  PbNumericDisplayFormat::FormatType formatType;
  int tenPower, numDecimal;
  format->getFormat(formatType, tenPower, numDecimal);
  return formatType == PbNumericDisplayFormat::AUTO_FORMAT;
}

}  // namespace

struct PiLinearAxisState {
  explicit PiLinearAxisState(PiConnectedSlots& slots) : formatInput(slots) {}

  PiDataInput<PbNumericDisplayFormat> formatInput;
  const PbNumericDisplayFormat* formatInUse = nullptr;  // during a rebuild
  PiLinearGradations gradations;
  PiMultiplier multiplier;
  PiNumericFormat format;
};

PoLinearAxis::PoLinearAxis() : m_linear(std::make_unique<PiLinearAxisState>(state().slots)) {
  PO_KIT_CONSTRUCTOR(PoLinearAxis);
  PO_KIT_ADD_TRIPLE(multFactor);
  PO_KIT_DEFINE_ENUM_VALUE(GradFit, GRAD_FIT);
  PO_KIT_DEFINE_ENUM_VALUE(GradFit, GRAD_UNFIT);
  PO_KIT_DEFINE_ENUM_VALUE(MultFactorPosition, MULT_FACTOR_START);
  PO_KIT_DEFINE_ENUM_VALUE(MultFactorPosition, MULT_FACTOR_END);
  PO_KIT_DEFINE_ENUM_VALUE(MultFactorPosition, MULT_FACTOR_EXTR);
  PO_KIT_DEFINE_ENUM_VALUE(MultFactorPosition, MULT_FACTOR_GRAD);
  PO_KIT_ADD_FIELD(step, (0));
  PO_KIT_ADD_FIELD(gradFit, (GRAD_UNFIT));
  PO_KIT_ADD_FIELD(multFactorPosition, (MULT_FACTOR_END));
  PO_KIT_ADD_FIELD(multFactorDistAxis, (0));
  PO_KIT_SET_ENUM_TYPE(gradFit, GradFit);
  PO_KIT_SET_ENUM_TYPE(multFactorPosition, MultFactorPosition);
  PO_KIT_CONSTRUCTED(PoLinearAxis);
  for (SoField* field : std::initializer_list<SoField*>{&step, &gradFit, &multFactorPosition, &multFactorDistAxis})
    watchField(*field);
  beginWatching();
}

PoLinearAxis::PoLinearAxis(const SbVec3f& axisStart, float axisEnd, PoCartesianAxis::Type axisType, float gradStep)
    : PoLinearAxis() {
  start = axisStart;
  end = axisEnd;
  type = axisType;
  step = gradStep;
}

PoLinearAxis::PoLinearAxis(const PoLinearAxis& other) : PoLinearAxis() { *this = other; }

PoLinearAxis& PoLinearAxis::operator=(const PoLinearAxis& other) {
  if (this == &other) return *this;
  copyAxis(other);
  setFormat(other.m_linear->formatInput.given());
  return *this;
}

PoLinearAxis::~PoLinearAxis() = default;

void PoLinearAxis::copyContents(const SoFieldContainer* from, SbBool copyConnections) {
  inherited::copyContents(from, copyConnections);
  m_linear->formatInput.give(static_cast<const PoLinearAxis*>(from)->m_linear->formatInput.given());
}

void PoLinearAxis::setFormat(PbNumericDisplayFormat* format) {
  m_linear->formatInput.give(format);
  touchKit();
}

const PbNumericDisplayFormat* PoLinearAxis::getFormat() const {
  if (const PbNumericDisplayFormat* given = m_linear->formatInput.given()) return given;
  return isStateValid() ? PoNumericDisplayFormatElement::get(getState()) : nullptr;
}

float PoLinearAxis::getStep() const { return state().isSaved ? m_linear->gradations.step : step.getValue(); }

void PoLinearAxis::getMultFactor(MultFactorPosition& position, float& distAxis) const {
  const PiMultiplier multiplier =
      state().isSaved ? m_linear->multiplier : multiplierOf(multFactorPosition, multFactorDistAxis);
  position = static_cast<MultFactorPosition>(multiplier.position);
  distAxis = multiplier.distAxis;
}

void PoLinearAxis::getLinGradStep(float delta, float& gradStep) { PiLinearGradations::chooseStep(delta, gradStep); }

void PoLinearAxis::getLinGradFirstGrad(GradFit fit, float gradStart, float gradEnd, float gradStep, float& first,
                                       int& num) {
  PiLinearGradations::findFirst(fit != GRAD_FIT, gradStart, gradEnd, gradStep, first, num);
}

void PoLinearAxis::getLinGrads(GradFit fit, float gradStart, float gradEnd, float& gradStep, float& first, int& num) {
  getLinGradStep(gradEnd - gradStart, gradStep);
  getLinGradFirstGrad(fit, gradStart, gradEnd, gradStep, first, num);
}

void PoLinearAxis::preRebuild() {
  inherited::preRebuild();
  const bool isTraversed = isStateValid() != 0;
  m_linear->formatInUse = m_linear->formatInput.resolve(
      isTraversed, isTraversed ? PoNumericDisplayFormatElement::get(getState()) : nullptr);
  if (!m_linear->formatInput.given()) dependOn(PoNumericDisplayFormatElement::getClassStackIndex());
}

void PoLinearAxis::addElementsAllCaches() {
  inherited::addElementsAllCaches();
  PoNumericDisplayFormatElement::get(getState());
}

void PoLinearAxis::saveAxisAttr() {
  inherited::saveAxisAttr();
  m_linear->multiplier = multiplierOf(multFactorPosition, multFactorDistAxis);
  m_linear->gradations.step = step.getValue();
  if (getGradLegibility() != LEGIBILITY_DEPEND) return;
  if (step.getValue() != 0 || !isAutomaticFormat(m_linear->formatInUse)) state().isLegible = false;
}

void PoLinearAxis::rebuild() {
  preRebuild();
  float axisStart, axisEnd;
  if (beginAxis(axisStart, axisEnd)) {
    float gradStart, gradEnd;
    computeGradLimit(axisStart, axisEnd, gradStart, gradEnd);
    chooseGradations(gradStart, gradEnd);
    writeGradations(gradStart, gradEnd);
    buildAxisLine(axisStart, axisEnd);
    buildTicksAndGrids();
    buildGradTextPart();
    const int power = m_linear->format.getTenPower();
    buildMultiplierPart(m_linear->gradations.num > 0 ? power : 0, m_linear->multiplier);
    buildTitlePart(axisStart, axisEnd);
  }
  postRebuild();
}

/// Values of gradations, split into main and sub.
void PoLinearAxis::chooseGradations(float gradStart, float gradEnd) {
  const bool isOnMultiples = PiEnumField::get(gradFit, GRAD_UNFIT, GRAD_UNFIT) == GRAD_UNFIT;
  PiLinearGradations& gradations = m_linear->gradations;
  const float wanted = std::isfinite(step.getValue()) ? step.getValue() : 0;
  gradations = state().isLegible && wanted == 0 ? PiLinearGradations::makeResolved(isOnMultiples, gradStart, gradEnd)
                                                : PiLinearGradations::make(isOnMultiples, gradStart, gradEnd, wanted);
  gradations.values(gradEnd, state().allCoords);
}

/// Texts of gradations in the shared slots.
void PoLinearAxis::writeGradations(float gradStart, float gradEnd) {
  const PiLinearGradations& gradations = m_linear->gradations;
  const std::vector<float>& values = state().allCoords;
  PiNumericFormat& format = m_linear->format;
  char** slots = allocGradString(gradations.num);
  if (gradations.num > 0) {
    const float last = gradations.first + static_cast<float>(gradations.num) * gradations.step;
    format.setFormat(m_linear->formatInUse, gradations.first, last, gradations.step, gradations.num);
    PiGradFormat::write(format, values, slots);
    if (state().isLegible && isAutomaticFormat(m_linear->formatInUse)) PiGradFormat::addDecimals(format, values, slots);
    char exponent[16] = "";
    if (format.getTenPower() != 0 && m_linear->multiplier.position == PiMultiplier::GRAD) {
      exponent[0] = 'E';
      *std::to_chars(exponent + 1, exponent + sizeof exponent - 1, format.getTenPower()).ptr = 0;
    }
    for (int i = 0; i < gradations.num; ++i) {
      PiGradStrings::append(slots[i], exponent);
      PiGradStrings::append(slots[i], state().attributes.addedString());
    }
  }
  computeGradList(gradStart, gradEnd, gradations.step, gradations.num, const_cast<const char**>(slots), values.data());
  // Of every tenth text, say, those stay that are multiples of ten steps.
  const std::vector<int>& mains = state().mainIndices;
  if (mains.empty()) return;
  const long period = mains.size() > 1 ? mains[1] - mains[0] : 1;
  const long firstMain = gradations.firstMultiple() + mains[0];
  if (firstMain % period == 0) state().firstMultiple = firstMain / period;
}
