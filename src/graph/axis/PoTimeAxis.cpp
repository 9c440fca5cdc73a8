#include <Ormelle/PoTimeAxis.h>

#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbDateFormatMapping.h>
#include <Ormelle/PoDateFormatMappingElement.h>
#include <Ormelle/PoDebugError.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "graph/axis/PiAxisState.h"
#include "graph/axis/PiAxisTransform.h"
#include "graph/axis/PiDateGradations.h"
#include "graph/axis/PiDateRepChoice.h"
#include "graph/axis/PiTimeAxisLanguage.h"
#include "nodes/attribute/PiEnumField.h"

PO_KIT_SOURCE(PoTimeAxis)

struct PiTimeAxisState {
  explicit PiTimeAxisState(PiConnectedSlots& slots) : dateInput(slots) {}

  PiDataInput<PbDateFormatMapping> dateInput;
  PbDateFormatMapping defaultMapping;
  PbDateFormatMapping mapping;  // a copy of the one in use

  // What was read last, and the representations and periods in force, which are older if that was wrong.
  std::vector<SbString> repTexts;
  SbString periodsText;
  char separator = 0;
  bool isRead = false;
  std::vector<PiDateRep> reps;
  std::vector<double> periods;

  PiDateRange axis;   // from one end of the axis to the other
  PiDateRange range;  // the same without the margins
  PiDateRep levels;
  std::vector<PiDateGradList> lists;  // one for each level
};

// --- life -----------------------------------------------------------------------------------------------------------

PoTimeAxis::PoTimeAxis() : m_timeState(std::make_unique<PiTimeAxisState>(state().slots)) {
  PO_KIT_CONSTRUCTOR(PoTimeAxis);
  PO_KIT_DEFINE_ENUM_VALUE(Language, ENGLISH);
  PO_KIT_DEFINE_ENUM_VALUE(Language, FRANCAIS);
  PO_KIT_DEFINE_ENUM_VALUE(Language, DEUTSCH);
  PO_KIT_DEFINE_ENUM_VALUE(Language, ESPANOL);
  PO_KIT_DEFINE_ENUM_VALUE(Type, X);
  PO_KIT_DEFINE_ENUM_VALUE(Type, Y);
  PO_KIT_DEFINE_ENUM_VALUE(GradFit, GRAD_FIT);
  PO_KIT_DEFINE_ENUM_VALUE(GradFit, GRAD_UNFIT);
  PO_KIT_ADD_FIELD(startDate, ("1-01-70"));
  PO_KIT_ADD_FIELD(endDate, ("2-01-70"));
  PO_KIT_ADD_FIELD(coord, (0));
  PO_KIT_ADD_FIELD(type, (X));
  PO_KIT_ADD_FIELD(language, (ENGLISH));
  PO_KIT_ADD_FIELD(gradFit, (GRAD_UNFIT));
  PO_KIT_ADD_FIELD(gradRep, (""));
  PO_KIT_ADD_FIELD(timesPeriod, (""));
  PO_KIT_SET_ENUM_TYPE(type, Type);
  PO_KIT_SET_ENUM_TYPE(language, Language);
  PO_KIT_SET_ENUM_TYPE(gradFit, GradFit);
  PO_KIT_CONSTRUCTED(PoTimeAxis);
  for (SoField* field : std::initializer_list<SoField*>{&startDate, &endDate, &coord, &type, &language, &gradFit,
                                                        &gradRep, &timesPeriod})
    watchField(*field);
  beginWatching();
}

PoTimeAxis::PoTimeAxis(const char* start, const char* end, float acrossCoord, Type axisType) : PoTimeAxis() {
  startDate = start ? start : "";
  endDate = end ? end : "";
  coord = acrossCoord;
  type = axisType;
}

PoTimeAxis::~PoTimeAxis() = default;

void PoTimeAxis::copyContents(const SoFieldContainer* from, SbBool copyConnections) {
  inherited::copyContents(from, copyConnections);
  const auto* source = static_cast<const PoTimeAxis*>(from);
  m_timeState->dateInput.give(source->m_timeState->dateInput.given());
}

PoTimeAxis::Type PoTimeAxis::getType() const { return PiEnumField::get(type, Y, X); }

// --- data objects ---------------------------------------------------------------------------------------------------

void PoTimeAxis::setDateFormatMapping(PbDateFormatMapping* mapping) {
  m_timeState->dateInput.give(mapping);
  touchKit();
}

const PbDateFormatMapping* PoTimeAxis::getDateFormatMapping() const {
  if (const PbDateFormatMapping* given = m_timeState->dateInput.given()) return given;
  const PbDateFormatMapping* found = isStateValid() ? PoDateFormatMappingElement::get(getState()) : nullptr;
  return found ? found : &m_timeState->defaultMapping;
}

void PoTimeAxis::preRebuild() {
  inherited::preRebuild();
  const bool isTraversed = isStateValid() != 0;
  PiDataInput<PbDateFormatMapping>& input = m_timeState->dateInput;
  input.resolve(isTraversed, isTraversed ? PoDateFormatMappingElement::get(getState()) : nullptr);
  if (!input.given()) dependOn(PoDateFormatMappingElement::getClassStackIndex());
}

void PoTimeAxis::addElementsAllCaches() {
  inherited::addElementsAllCaches();
  PoDateFormatMappingElement::get(getState());
}

// --- the rebuild ----------------------------------------------------------------------------------------------------

void PoTimeAxis::rebuild() {
  preRebuild();
  saveAxisAttr();
  if (findDates()) {
    setDefaultAttr(getType() == X ? PLANE_XY : PLANE_YX);
    auto* placed = new SoMatrixTransform;
    setPart("transform", placed);
    computeTransfo(placed);
    const PiDateRange& axis = m_timeState->axis;
    if (axis.startCoord != axis.endCoord) buildAll(axis.startCoord, axis.endCoord);
  }
  postRebuild();
}

void PoTimeAxis::buildAll(float start, float end) {
  setDateAxisRep();
  buildAxisLine(start, end);
  chooseLevels();
  buildTicksAndGrids();
  auto* texts = new SoGroup;
  setPart("mainGradText", texts);
  buildDateGrads(texts);
  const PiAxisAttributes& a = state().attributes;
  setElementFont("mainGradText", a.gradVisibility == VISIBILITY_ON, a.gradFontName, a.gradFontSize);
  buildTitlePart(start, end);
}

void PoTimeAxis::saveAxisAttr() {
  inherited::saveAxisAttr();
  const PbDateFormatMapping* found = m_timeState->dateInput.given();
  m_timeState->mapping = found ? *found : *getDateFormatMapping();
}

// The dates of both ends and their coordinates.
bool PoTimeAxis::findDates() {
  const PbDateFormatMapping& mapping = m_timeState->mapping;
  PiDateRange& axis = m_timeState->axis;
  const char* format = mapping.getFormat().getString();
  for (const auto& [date, text] : {std::pair(&axis.start, &startDate), std::pair(&axis.end, &endDate)})
    if (date->setDateString(text->getValue().getString(), format) != 0) {
      PoDebugError::postWarning("PoTimeAxis::rebuild", "\"%s\" is no date by the format %s",
                                text->getValue().getString(), format);
      return false;
    }
  axis.startCoord = mapping.getCoordinateP(axis.start);
  axis.endCoord = mapping.getCoordinateP(axis.end);
  return std::isfinite(axis.startCoord) && std::isfinite(axis.endCoord);
}

void PoTimeAxis::computeTransfo(SoMatrixTransform* out) {
  SbVec3f deltas;
  getDomain()->getDelta(deltas[0], deltas[1], deltas[2]);
  const bool isX = getType() == X;
  const float across = std::isfinite(coord.getValue()) ? coord.getValue() : 0;
  const SbVec3f start = isX ? SbVec3f(0, across, 0) : SbVec3f(across, 0, 0);
  const PoCartesianAxis::Type direction = isX ? PoCartesianAxis::XY : PoCartesianAxis::YX;
  PiAxisTransform placed = PiAxisTransform::make(direction, start, deltas);
  const PiDateRange& axis = m_timeState->axis;
  state().origin = PiAxisTransform::moveOrigin(direction, axis.startCoord, axis.endCoord, placed.matrix);
  out->matrix = placed.matrix;
  state().along = placed.along;
  state().across = isX ? placed.across : deltas[2];
}

// Reads the representations and the periods, if they aren't those read last.
void PoTimeAxis::setDateAxisRep() {
  PiTimeAxisState& t = *m_timeState;
  char separator;
  int length;
  state().text.getLineLength(separator, length);
  const SbString* texts = gradRep.getValues(0);
  const std::vector<SbString> repTexts(texts, texts + gradRep.getNum());
  if (t.isRead && t.repTexts == repTexts && t.periodsText == timesPeriod.getValue() && t.separator == separator) return;
  t.repTexts = repTexts;
  t.periodsText = timesPeriod.getValue();
  t.separator = separator;
  t.isRead = true;

  constexpr const char* method = "PoTimeAxis::rebuild";
  if (repTexts.empty() || repTexts[0].getLength() == 0) {
    t.reps.clear();
    t.periods.clear();
    return;
  }
  std::vector<PiDateRep> reps;
  for (const SbString& text : repTexts) {
    auto rep = PiTimeAxisLanguage::parseAxisRep(text.getString(), separator);
    if (!rep) {
      PoDebugError::postWarning(method, "\"%s\" is no representation of dates", text.getString());
      return;
    }
    reps.push_back(std::move(*rep));
  }
  std::vector<double> periods;
  if (t.periodsText.getLength() > 0) {
    const auto list = PiTimeAxisLanguage::parseDateList(t.periodsText.getString());
    if (!list) {
      PoDebugError::postWarning(method, "\"%s\" is no list of periods", t.periodsText.getString());
      return;
    }
    if (list->size() + 1 != reps.size()) {
      PoDebugError::postWarning(method, "%d periods can't select one of %d representations",
                                static_cast<int>(list->size()), static_cast<int>(reps.size()));
      return;
    }
    periods = PiDateRepChoice::sortedPeriods(*list);
  }
  t.reps = std::move(reps);
  t.periods = std::move(periods);
}

// The levels and their gradations, and those of the first as main and sub-gradations.
void PoTimeAxis::chooseLevels() {
  PiTimeAxisState& t = *m_timeState;
  PiAxisState& s = state();
  t.range = t.axis;
  computeGradLimit(t.axis.startCoord, t.axis.endCoord, t.range.startCoord, t.range.endCoord);
  // A date that went through its coordinate comes back rounded; without a margin it needn't.
  if (t.range.startCoord != t.axis.startCoord) t.range.start = t.mapping.getDateP(t.range.startCoord);
  if (t.range.endCoord != t.axis.endCoord) t.range.end = t.mapping.getDateP(t.range.endCoord);

  const auto inLanguage = static_cast<PiDate::Language>(PiEnumField::get(language, ESPANOL, ENGLISH));
  t.levels = PiDateRepChoice::getDateAxisRep(PiDateSpan(t.range.start, t.range.end), t.reps, t.periods, inLanguage);
  if (!t.reps.empty() && getGradLegibility() != LEGIBILITY_ON) s.isLegible = false;

  const auto fit =
      PiEnumField::get(gradFit, GRAD_UNFIT, GRAD_UNFIT) == GRAD_FIT ? PiDateGradations::FIT : PiDateGradations::UNFIT;
  const char* added = s.attributes.addedString();
  const PiDateGradations::Style style{inLanguage, s.isLegible && t.reps.empty(), added ? added : ""};
  const int maxGradations = std::max(16, PiDateGradations::kMaxGradations / static_cast<int>(t.levels.size()));
  t.lists.clear();
  for (const PiDateLevel& level : t.levels)
    t.lists.push_back(PiDateGradations::getGradList(t.range, t.mapping, level, fit, style, maxGradations));

  const PiDateGradList& finest = t.lists[0];
  std::vector<const char*> strings;
  for (const std::string& text : finest.texts) strings.push_back(text.c_str());
  computeGradList(t.range.startCoord, t.range.endCoord, 0, static_cast<int>(strings.size()), strings.data(),
                  finest.coords.data());
}

// Each level on a line of its own, beyond the one before it, and in a size of its own.
void PoTimeAxis::buildDateGrads(SoGroup* group) {
  const PiTimeAxisState& t = *m_timeState;
  PiAxisState& s = state();
  const float givenSize = s.attributes.gradFontSize;
  buildGrads(static_cast<int>(s.mainCoords.size()), s.mainCoords.data(), s.mainStrings.data(), group);
  if (s.attributes.gradVisibility != VISIBILITY_ON) return;
  const float finestSize = s.attributes.gradFontSize, finestDistance = s.attributes.gradDistAxis;
  for (size_t i = 1; i < t.lists.size(); ++i) {
    auto* level = new SoSeparator;
    group->addChild(level);
    auto* font = new SoFont;
    level->addChild(font);
    std::vector<const char*> strings;
    for (const std::string& text : t.lists[i].texts) strings.push_back(text.c_str());
    s.attributes.gradFontSize = givenSize;
    s.attributes.gradDistAxis = 0;
    buildGrads(static_cast<int>(strings.size()), t.lists[i].coords.data(), strings.data(), level);
    font->name = s.attributes.gradFontName.getString();
    font->size = s.attributes.gradFontSize * s.along;
  }
  s.attributes.gradFontSize = finestSize;
  s.attributes.gradDistAxis = finestDistance;
}
