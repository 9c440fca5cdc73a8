// Fields and gradations of a logarithmic axis; how they are written stands in PoLogAxisTexts.cpp.

#include <Ormelle/PoLogAxis.h>

#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoSeparator.h>

#include <algorithm>
#include <cmath>

#include "graph/axis/PiAxisState.h"
#include "graph/axis/PiGradations.h"
#include "graph/axis/PiLogAxisState.h"
#include "nodes/attribute/PiEnumField.h"

PO_KIT_SOURCE(PoLogAxis)

PoLogAxis::PoLogAxis() : m_log(std::make_unique<PiLogAxisState>()) {
  PO_KIT_CONSTRUCTOR(PoLogAxis);
  PO_KIT_ADD_TRIPLE(multFactor);
  PO_KIT_ADD_TRIPLE(decadeText);
  PO_KIT_DEFINE_ENUM_VALUE(TenPowGradRep, TEN_POWER_POW10);
  PO_KIT_DEFINE_ENUM_VALUE(TenPowGradRep, TEN_POWER_DECIMAL);
  PO_KIT_DEFINE_ENUM_VALUE(TenPowGradRep, TEN_POWER_AUTO);
  PO_KIT_DEFINE_ENUM_VALUE(DecadeRep, DECADE_NONE);
  PO_KIT_DEFINE_ENUM_VALUE(DecadeRep, DECADE_AS_TEN_POWER);
  PO_KIT_DEFINE_ENUM_VALUE(DecadeRep, DECADE_DECIMAL);
  PO_KIT_DEFINE_ENUM_VALUE(DecadeRep, DECADE_DIGIT);
  PO_KIT_DEFINE_ENUM_VALUE(DecadeRep, DECADE_AUTO);
  PO_KIT_DEFINE_ENUM_VALUE(DecadeListDef, DECADE_LIST_AUTO);
  PO_KIT_DEFINE_ENUM_VALUE(DecadeListDef, DECADE_LIST_NON_AUTO);
  PO_KIT_DEFINE_ENUM_VALUE(MultFactorPosition, MULT_FACTOR_START);
  PO_KIT_DEFINE_ENUM_VALUE(MultFactorPosition, MULT_FACTOR_END);
  PO_KIT_DEFINE_ENUM_VALUE(MultFactorPosition, MULT_FACTOR_EXTR);
  PO_KIT_DEFINE_ENUM_VALUE(MultFactorPosition, MULT_FACTOR_GRAD);
  PO_KIT_ADD_EMPTY_MFIELD(decadeList);
  PO_KIT_ADD_FIELD(decadeListDef, (DECADE_LIST_AUTO));
  PO_KIT_ADD_FIELD(tenPowerRep, (TEN_POWER_POW10));
  PO_KIT_ADD_FIELD(decadeRep, (DECADE_NONE));
  PO_KIT_ADD_FIELD(decadeFontName, (""));
  PO_KIT_ADD_FIELD(decadeFontSize, (0));
  PO_KIT_ADD_FIELD(multFactorPosition, (MULT_FACTOR_END));
  PO_KIT_ADD_FIELD(multFactorDistAxis, (0));
  PO_KIT_SET_ENUM_TYPE(decadeListDef, DecadeListDef);
  PO_KIT_SET_ENUM_TYPE(tenPowerRep, TenPowGradRep);
  PO_KIT_SET_ENUM_TYPE(decadeRep, DecadeRep);
  PO_KIT_SET_ENUM_TYPE(multFactorPosition, MultFactorPosition);
  PO_KIT_CONSTRUCTED(PoLogAxis);
  for (SoField* field :
       std::initializer_list<SoField*>{&decadeList, &decadeListDef, &tenPowerRep, &decadeRep, &decadeFontName,
                                       &decadeFontSize, &multFactorPosition, &multFactorDistAxis})
    watchField(*field);
  beginWatching();
}

PoLogAxis::PoLogAxis(const SbVec3f& axisStart, float axisEnd, PoCartesianAxis::Type axisType, DecadeListDef def,
                     const unsigned short* list, short num)
    : PoLogAxis() {
  start = axisStart;
  end = axisEnd;
  type = axisType;
  decadeListDef = def;
  if (list && num > 0) decadeList.setValues(0, std::min<int>(num, MAX_DECADE_LIST), list);
}

PoLogAxis::PoLogAxis(const PoLogAxis& other) : PoLogAxis() { *this = other; }

PoLogAxis& PoLogAxis::operator=(const PoLogAxis& other) {
  if (this != &other) copyAxis(other);
  return *this;
}

PoLogAxis::~PoLogAxis() = default;

void PoLogAxis::getLogGrad(unsigned short& num, unsigned short* list, TenPowGradRep& powerRep, DecadeRep& digitRep,
                           SbString& fontName, float& fontSize) const {
  if (!state().isSaved) {
    num = static_cast<unsigned short>(std::min<int>(decadeList.getNum(), MAX_DECADE_LIST));
    for (int i = 0; i < num; ++i) list[i] = decadeList[i];
    powerRep = PiEnumField::get(tenPowerRep, TEN_POWER_AUTO, TEN_POWER_POW10);
    digitRep = PiEnumField::get(decadeRep, DECADE_AUTO, DECADE_NONE);
    fontName = decadeFontName.getValue();
    fontSize = decadeFontSize.getValue();
    return;
  }
  num = static_cast<unsigned short>(m_log->numList);
  for (int i = 0; i < num; ++i) list[i] = static_cast<unsigned short>(m_log->list[i]);
  powerRep = m_log->choice.powerRep;
  digitRep = m_log->choice.digitRep;
  fontName = m_log->fontName;
  fontSize = m_log->fontSize;
}

void PoLogAxis::getMultFactor(MultFactorPosition& position, float& distAxis) const {
  const PiMultiplier multiplier =
      state().isSaved ? m_log->multiplier : multiplierOf(multFactorPosition, multFactorDistAxis);
  position = static_cast<MultFactorPosition>(multiplier.position);
  distAxis = multiplier.distAxis;
}

void PoLogAxis::saveAxisAttr() {
  inherited::saveAxisAttr();
  PiLogAxisState& log = *m_log;
  log.numList = std::min<int>(decadeList.getNum(), MAX_DECADE_LIST);
  for (int i = 0; i < log.numList; ++i) log.list[i] = decadeList[i];
  log.listDef = PiEnumField::get(decadeListDef, DECADE_LIST_NON_AUTO, DECADE_LIST_AUTO);
  log.choice = {PiEnumField::get(tenPowerRep, TEN_POWER_AUTO, TEN_POWER_POW10),
                PiEnumField::get(decadeRep, DECADE_AUTO, DECADE_NONE), false};
  log.fontName = decadeFontName.getValue().getLength() > 0 ? decadeFontName.getValue() : state().text.getFontName();
  log.fontSize = std::isfinite(decadeFontSize.getValue()) ? decadeFontSize.getValue() : 0;
  log.multiplier = multiplierOf(multFactorPosition, multFactorDistAxis);
  const bool isAutomatic = !(log.fontSize > 0) && log.listDef == DECADE_LIST_AUTO &&
                           (tenPowerRep.isDefault() || log.choice.powerRep == TEN_POWER_AUTO) &&
                           (decadeRep.isDefault() || log.choice.digitRep == DECADE_AUTO);
  if (getGradLegibility() == LEGIBILITY_DEPEND && !isAutomatic) state().isLegible = false;
}

void PoLogAxis::computeTickLen(int numMainGrads, float& mainLen, float& subLen) {
  inherited::computeTickLen(numMainGrads, mainLen, subLen);
  // What is written alike is ticked alike.
  if (state().attributes.gradVisibility == VISIBILITY_ON && m_log->choice.isOneLine())
    subLen = state().attributes.tickSubLength = mainLen;
}

void PoLogAxis::rebuild() {
  preRebuild();
  float axisStart, axisEnd;
  if (beginAxis(axisStart, axisEnd)) {
    float gradStart, gradEnd;
    computeGradLimit(axisStart, axisEnd, gradStart, gradEnd);
    const float low = std::min(gradStart, gradEnd), high = std::max(gradStart, gradEnd);
    chooseGradations(low, high);
    chooseTexts(low, high);
    buildAxisLine(axisStart, axisEnd);
    buildTicksAndGrids();
    buildTexts();
    const bool needsMultiplier = state().mainCoords.empty() && !m_log->digits.empty() &&
                                 m_log->choice.digitRep != DECADE_DECIMAL && !m_log->choice.isOneLine();
    buildMultiplierPart(needsMultiplier ? m_log->digits.front().exponent : 0, m_log->multiplier);
    buildTitlePart(axisStart, axisEnd);
  }
  postRebuild();
}

void PoLogAxis::chooseGradations(float low, float high) {
  PiLogAxisState& log = *m_log;
  PiLogGradations::powers(low, high, state().mainCoords);
  if (log.listDef == DECADE_LIST_AUTO) {
    const std::span<const int> list = PiGradations::decadeDigits(static_cast<int>(state().mainCoords.size()));
    log.numList = static_cast<int>(list.size());
    std::copy(list.begin(), list.end(), log.list);
  }
  PiLogGradations::digits(low, high, {log.list, static_cast<size_t>(log.numList)}, log.digits);
}
