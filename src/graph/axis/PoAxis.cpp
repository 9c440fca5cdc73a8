// Fields, data objects and answers of an axis; how it is built stands in PoAxisShapes.cpp.

#include <Ormelle/PoAxis.h>

#include <Inventor/caches/SoCache.h>
#include <Inventor/misc/SoState.h>
#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbMiscTextAttr.h>
#include <Ormelle/PoMiscTextAttrElement.h>

#include "graph/axis/PiAxisState.h"

PO_KIT_ABSTRACT_SOURCE(PoAxis)

// --- life -----------------------------------------------------------------------------------------------------------

PoAxis::PoAxis() : m_axisState(std::make_unique<PiAxisState>(this)) {
  PO_KIT_CONSTRUCTOR(PoAxis);
  PO_KIT_ADD_CATALOG_ENTRY(transform, SoMatrixTransform, alternateRep);
  PO_KIT_ADD_TRIPLE(body);
  PO_KIT_ADD_TRIPLE(arrow);
  PO_KIT_ADD_TRIPLE(title);
  PO_KIT_ADD_TRIPLE(subGradTick);
  PO_KIT_ADD_TRIPLE(subGradGrid);
  PO_KIT_ADD_TRIPLE(mainGradTick);
  PO_KIT_ADD_TRIPLE(mainGradGrid);
  PO_KIT_ADD_TRIPLE(mainGradText);
  ownPart(transform);

  PO_KIT_DEFINE_ENUM_VALUE(Visibility, VISIBILITY_OFF);
  PO_KIT_DEFINE_ENUM_VALUE(Visibility, VISIBILITY_ON);
  PO_KIT_DEFINE_ENUM_VALUE(Visibility, VISIBILITY_DEPEND);
  PO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_RIGHT);
  PO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_LEFT);
  PO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_UP);
  PO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_DOWN);
  PO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_DEPEND);
  PO_KIT_DEFINE_ENUM_VALUE(GradPosition, GRAD_ABOVE);
  PO_KIT_DEFINE_ENUM_VALUE(GradPosition, GRAD_BELOW);
  PO_KIT_DEFINE_ENUM_VALUE(GradPosition, GRAD_DEPEND);
  PO_KIT_DEFINE_ENUM_VALUE(MarginType, REL_MARGIN);
  PO_KIT_DEFINE_ENUM_VALUE(MarginType, FIXED_MARGIN);
  PO_KIT_DEFINE_ENUM_VALUE(TickPosition, TICK_GRAD_SIDE);
  PO_KIT_DEFINE_ENUM_VALUE(TickPosition, TICK_GRAD_OTHER_SIDE);
  PO_KIT_DEFINE_ENUM_VALUE(TickPosition, TICK_ACROSS_AXIS);
  PO_KIT_DEFINE_ENUM_VALUE(TitlePosition, TITLE_MIDDLE);
  PO_KIT_DEFINE_ENUM_VALUE(TitlePosition, TITLE_END);
  PO_KIT_DEFINE_ENUM_VALUE(TitlePosition, TITLE_DEPEND);
  PO_KIT_DEFINE_ENUM_VALUE(TickSubDef, NUM_SUB_TICK);
  PO_KIT_DEFINE_ENUM_VALUE(TickSubDef, PERIOD_MAIN_TICK);
  PO_KIT_DEFINE_ENUM_VALUE(AxisReverse, AXIS_NO_REVERSE);
  PO_KIT_DEFINE_ENUM_VALUE(AxisReverse, AXIS_REVERSE);
  PO_KIT_DEFINE_ENUM_VALUE(AxisReverse, AXIS_REVERSE_DEPEND);

  PO_KIT_ADD_FIELD(gradVisibility, (VISIBILITY_DEPEND));
  PO_KIT_ADD_FIELD(gradPosition, (GRAD_DEPEND));
  PO_KIT_ADD_FIELD(gradPath, (PATH_DEPEND));
  PO_KIT_ADD_FIELD(gradFontName, (""));
  PO_KIT_ADD_FIELD(gradFontSize, (0));
  PO_KIT_ADD_FIELD(gradDistAxis, (0));
  PO_KIT_ADD_FIELD(gradAddStringVisibility, (2));
  PO_KIT_ADD_FIELD(gradAddString, (""));
  PO_KIT_ADD_FIELD(marginType, (REL_MARGIN));
  PO_KIT_ADD_FIELD(marginStart, (0));
  PO_KIT_ADD_FIELD(marginEnd, (0));
  PO_KIT_ADD_FIELD(titleVisibility, (VISIBILITY_DEPEND));
  PO_KIT_ADD_FIELD(titlePosition, (TITLE_DEPEND));
  PO_KIT_ADD_FIELD(titlePath, (PATH_DEPEND));
  PO_KIT_ADD_FIELD(titleFontName, (""));
  PO_KIT_ADD_FIELD(titleFontSize, (0));
  PO_KIT_ADD_FIELD(titleDistAxis, (0));
  PO_KIT_ADD_FIELD(titleString, (""));
  PO_KIT_ADD_FIELD(gridVisibility, (VISIBILITY_DEPEND));
  PO_KIT_ADD_FIELD(gridLengthGradSide, (0));
  PO_KIT_ADD_FIELD(gridLengthGradOtherSide, (1));
  PO_KIT_ADD_FIELD(arrowVisibility, (VISIBILITY_DEPEND));
  PO_KIT_ADD_FIELD(arrowHeight, (0));
  PO_KIT_ADD_FIELD(arrowLength, (0));
  PO_KIT_ADD_FIELD(tickVisibility, (VISIBILITY_DEPEND));
  PO_KIT_ADD_FIELD(tickPosition, (TICK_GRAD_SIDE));
  PO_KIT_ADD_FIELD(tickMainLength, (0));
  PO_KIT_ADD_FIELD(tickSubLength, (0));
  PO_KIT_ADD_FIELD(tickSubDef, (PERIOD_MAIN_TICK));
  PO_KIT_ADD_FIELD(tickNumOrPeriod, (1));
  PO_KIT_ADD_FIELD(tickFirstGrad, (1));
  PO_KIT_ADD_FIELD(tickLastGrad, (1));
  PO_KIT_ADD_FIELD(reverseFlag, (AXIS_REVERSE_DEPEND));

  PO_KIT_SET_ENUM_TYPE(gradVisibility, Visibility);
  PO_KIT_SET_ENUM_TYPE(gradPosition, GradPosition);
  PO_KIT_SET_ENUM_TYPE(gradPath, TextPath);
  PO_KIT_SET_ENUM_TYPE(marginType, MarginType);
  PO_KIT_SET_ENUM_TYPE(titleVisibility, Visibility);
  PO_KIT_SET_ENUM_TYPE(titlePosition, TitlePosition);
  PO_KIT_SET_ENUM_TYPE(titlePath, TextPath);
  PO_KIT_SET_ENUM_TYPE(gridVisibility, Visibility);
  PO_KIT_SET_ENUM_TYPE(arrowVisibility, Visibility);
  PO_KIT_SET_ENUM_TYPE(tickVisibility, Visibility);
  PO_KIT_SET_ENUM_TYPE(tickPosition, TickPosition);
  PO_KIT_SET_ENUM_TYPE(tickSubDef, TickSubDef);
  PO_KIT_SET_ENUM_TYPE(reverseFlag, AxisReverse);
  PO_KIT_CONSTRUCTED(PoAxis);

  for (SoField* field : std::initializer_list<SoField*>{&gradVisibility,
                                                        &gradPosition,
                                                        &gradPath,
                                                        &gradFontName,
                                                        &gradFontSize,
                                                        &gradDistAxis,
                                                        &gradAddStringVisibility,
                                                        &gradAddString,
                                                        &marginType,
                                                        &marginStart,
                                                        &marginEnd,
                                                        &titleVisibility,
                                                        &titlePosition,
                                                        &titlePath,
                                                        &titleFontName,
                                                        &titleFontSize,
                                                        &titleDistAxis,
                                                        &titleString,
                                                        &gridVisibility,
                                                        &gridLengthGradSide,
                                                        &gridLengthGradOtherSide,
                                                        &arrowVisibility,
                                                        &arrowHeight,
                                                        &arrowLength,
                                                        &tickVisibility,
                                                        &tickPosition,
                                                        &tickMainLength,
                                                        &tickSubLength,
                                                        &tickSubDef,
                                                        &tickNumOrPeriod,
                                                        &tickFirstGrad,
                                                        &tickLastGrad,
                                                        &reverseFlag})
    watchField(*field);
}

PoAxis::~PoAxis() = default;

void PoAxis::copyContents(const SoFieldContainer* from, SbBool copyConnections) {
  inherited::copyContents(from, copyConnections);
  const auto* source = static_cast<const PoAxis*>(from);
  state().textInput.give(source->state().textInput.given());
  m_legibility = source->m_legibility;
}

void PoAxis::copyAxis(const PoAxis& other) {
  copyWatchedFields(other);
  setMiscTextAttr(other.state().textInput.given());
  setGradLegibility(other.m_legibility);
}

// --- data objects ---------------------------------------------------------------------------------------------------

void PoAxis::setMiscTextAttr(PbMiscTextAttr* attributes) {
  state().textInput.give(attributes);
  touchKit();
}

const PbMiscTextAttr* PoAxis::getMiscTextAttr() const {
  if (const PbMiscTextAttr* given = state().textInput.given()) return given;
  const PbMiscTextAttr* found = isStateValid() ? PoMiscTextAttrElement::get(getState()) : nullptr;
  return found ? found : &state().defaultText;
}

void PoAxis::setGradLegibility(GradLegibility legibility) {
  if (legibility == m_legibility) return;
  m_legibility = legibility;
  touchKit();
}

void PoAxis::basicObjectChange(PbBase* object) {
  inherited::basicObjectChange(object);
  if (!state().slots.holds(object)) return;
  if (object->getChangeType() == PbBase::OBJECT_DELETED) state().slots.forget(object);
  PbBase* held = object;
  manageBasicObjectChange(object, &held);
}

void PoAxis::preRebuild() {
  inherited::preRebuild();
  const bool isTraversed = isStateValid() != 0;
  const PbMiscTextAttr* text =
      state().textInput.resolve(isTraversed, isTraversed ? PoMiscTextAttrElement::get(getState()) : nullptr);
  state().text = text ? *text : state().defaultText;
  if (!state().textInput.given()) dependOn(PoMiscTextAttrElement::getClassStackIndex());
}

void PoAxis::dependOn(int elementStackIndex) {
  // Also when the cache is still valid: then this rebuild may depend on more than the last one. Twice does no harm.
  if (isStateValid() && getAllCache()) getAllCache()->addElement(getState()->getConstElement(elementStackIndex));
}

void PoAxis::addElementsAllCaches() {
  inherited::addElementsAllCaches();
  PoMiscTextAttrElement::get(getState());
}

// --- answers --------------------------------------------------------------------------------------------------------

void PoAxis::getGrad(Visibility& visibility, GradPosition& position, TextPath& path, SbString& fontName,
                     float& fontSize, float& distAxis, int& addStringVisibility, SbString& addString) const {
  const PiAxisAttributes a = answers();
  visibility = a.gradVisibility;
  position = a.gradPosition;
  path = a.gradPath;
  fontName = a.gradFontName;
  fontSize = a.gradFontSize;
  distAxis = a.gradDistAxis;
  addStringVisibility = a.gradAddStringVisibility;
  addString = a.gradAddString;
}

void PoAxis::getMargin(MarginType& marginKind, float& atStart, float& atEnd) const {
  const PiAxisAttributes a = answers();
  marginKind = a.marginType;
  atStart = a.marginStart;
  atEnd = a.marginEnd;
}

void PoAxis::getTitle(Visibility& visibility, TitlePosition& position, TextPath& path, SbString& fontName,
                      float& fontSize, float& distAxis, SbString& text) const {
  const PiAxisAttributes a = answers();
  visibility = a.titleVisibility;
  position = a.titlePosition;
  path = a.titlePath;
  fontName = a.titleFontName;
  fontSize = a.titleFontSize;
  distAxis = a.titleDistAxis;
  text = a.titleString;
}

void PoAxis::getGrid(Visibility& visibility, float& gradSide, float& otherSide) const {
  const PiAxisAttributes a = answers();
  visibility = a.gridVisibility;
  gradSide = a.gridLengthGradSide;
  otherSide = a.gridLengthGradOtherSide;
}

void PoAxis::getArrow(Visibility& visibility, float& height, float& length) const {
  const PiAxisAttributes a = answers();
  visibility = a.arrowVisibility;
  height = a.arrowHeight;
  length = a.arrowLength;
}

void PoAxis::getTick(Visibility& visibility, TickPosition& position, float& mainLen, float& subLen, TickSubDef& subDef,
                     unsigned short& numOrPeriod, unsigned short& first, unsigned short& last) const {
  const PiAxisAttributes a = answers();
  visibility = a.tickVisibility;
  position = a.tickPosition;
  mainLen = a.tickMainLength;
  subLen = a.tickSubLength;
  subDef = a.tickSubDef;
  numOrPeriod = a.tickNumOrPeriod;
  first = a.tickFirstGrad;
  last = a.tickLastGrad;
}

PoAxis::AxisReverse PoAxis::getReverseFlag() const { return answers().reverseFlag; }

int PoAxis::getMainGradCoords(const float*& coords) const {
  coords = state().mainCoords.empty() ? nullptr : state().mainCoords.data();
  return static_cast<int>(state().mainCoords.size());
}

int PoAxis::getSubGradCoords(const float*& coords) const {
  coords = state().subCoords.empty() ? nullptr : state().subCoords.data();
  return static_cast<int>(state().subCoords.size());
}

PiAxisAttributes PoAxis::answers() const { return state().isSaved ? state().attributes : PiAxisAttributes::of(*this); }
