#include <Ormelle/PoLegend.h>

#include <Inventor/caches/SoCache.h>
#include <Inventor/misc/SoState.h>
#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoPolygonOffset.h>
#include <Inventor/nodes/SoScale.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbDomain.h>
#include <Ormelle/PoMiscTextAttrElement.h>

#include <algorithm>
#include <cmath>

#include "graph/frame/PiElementFont.h"
#include "graph/legend/PiLegendShapes.h"
#include "graph/legend/PiLegendState.h"
#include "nodes/attribute/PiEnumField.h"

PO_KIT_ABSTRACT_SOURCE(PoLegend)

// --- life ------------------------------------------------------------------------------------------------------------

PoLegend::PoLegend() : m_legendState(std::make_unique<PiLegendState>(this)) {
  PO_KIT_CONSTRUCTOR(PoLegend);
  PO_KIT_ADD_TRIPLE(background);
  PO_KIT_ADD_TRIPLE(backgroundBorder);
  PO_KIT_ADD_TRIPLE(box);
  PO_KIT_ADD_TRIPLE(boxBorder);
  PO_KIT_ADD_TRIPLE(title);
  PO_KIT_ADD_TRIPLE(valueText);

  PO_KIT_DEFINE_ENUM_VALUE(Position, POS_BOTTOM);
  PO_KIT_DEFINE_ENUM_VALUE(Position, POS_TOP);
  PO_KIT_DEFINE_ENUM_VALUE(Position, POS_RIGHT);
  PO_KIT_DEFINE_ENUM_VALUE(Position, POS_LEFT);
  PO_KIT_DEFINE_ENUM_VALUE(Visibility, VISIBILITY_OFF);
  PO_KIT_DEFINE_ENUM_VALUE(Visibility, VISIBILITY_ON);
  PO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_RIGHT);
  PO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_LEFT);
  PO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_UP);
  PO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_DOWN);
  PO_KIT_DEFINE_ENUM_VALUE(MarginType, REL_MARGIN);
  PO_KIT_DEFINE_ENUM_VALUE(MarginType, FIXED_MARGIN);
  PO_KIT_DEFINE_ENUM_VALUE(IncrementType, VERTICAL_INCREMENT);
  PO_KIT_DEFINE_ENUM_VALUE(IncrementType, HORIZONTAL_INCREMENT);

  PO_KIT_ADD_FIELD(titleVisibility, (VISIBILITY_OFF));
  PO_KIT_ADD_FIELD(titlePosition, (POS_BOTTOM));
  PO_KIT_ADD_FIELD(titlePath, (PATH_RIGHT));
  PO_KIT_ADD_FIELD(titleFontSize, (0));
  PO_KIT_ADD_FIELD(titleFontName, (""));
  PO_KIT_ADD_FIELD(titleString, (""));
  PO_KIT_ADD_FIELD(valueVisibility, (VISIBILITY_ON));
  PO_KIT_ADD_FIELD(valuePosition, (POS_RIGHT));
  PO_KIT_ADD_FIELD(valueFontName, (""));
  PO_KIT_ADD_FIELD(valueAddStringVisibility, (FALSE));
  PO_KIT_ADD_FIELD(valueAddString, (""));
  PO_KIT_ADD_FIELD(marginType, (REL_MARGIN));
  PO_KIT_ADD_FIELD(marginLeft, (0.05F));
  PO_KIT_ADD_FIELD(marginRight, (0.05F));
  PO_KIT_ADD_FIELD(marginBottom, (0.05F));
  PO_KIT_ADD_FIELD(marginTop, (0.05F));
  PO_KIT_ADD_FIELD(incrementType, (VERTICAL_INCREMENT));
  PO_KIT_ADD_FIELD(numColumns, (1));
  PO_KIT_ADD_FIELD(boxRatio, (1));

  PO_KIT_SET_ENUM_TYPE(titleVisibility, Visibility);
  PO_KIT_SET_ENUM_TYPE(titlePosition, Position);
  PO_KIT_SET_ENUM_TYPE(titlePath, TextPath);
  PO_KIT_SET_ENUM_TYPE(valueVisibility, Visibility);
  PO_KIT_SET_ENUM_TYPE(valuePosition, Position);
  PO_KIT_SET_ENUM_TYPE(marginType, MarginType);
  PO_KIT_SET_ENUM_TYPE(incrementType, IncrementType);
  PO_KIT_CONSTRUCTED(PoLegend);
  for (SoField* field : std::initializer_list<SoField*>{
           &titleVisibility, &titlePosition, &titlePath, &titleFontSize, &titleFontName, &titleString, &valueVisibility,
           &valuePosition, &valueFontName, &valueAddStringVisibility, &valueAddString, &marginType, &marginLeft,
           &marginRight, &marginBottom, &marginTop, &incrementType, &numColumns, &boxRatio})
    watchField(*field);
}

PoLegend::~PoLegend() = default;

void PoLegend::copyContents(const SoFieldContainer* from, SbBool copyConnections) {
  inherited::copyContents(from, copyConnections);
  state().textInput.give(static_cast<const PoLegend*>(from)->state().textInput.given());
}

// --- data objects ----------------------------------------------------------------------------------------------------

void PoLegend::setMiscTextAttr(PbMiscTextAttr* attributes) {
  state().textInput.give(attributes);
  touchKit();
}

const PbMiscTextAttr* PoLegend::getMiscTextAttr() const {
  if (const PbMiscTextAttr* given = state().textInput.given()) return given;
  const PbMiscTextAttr* found = isStateValid() ? PoMiscTextAttrElement::get(getState()) : nullptr;
  return found ? found : &state().defaultText;
}

void PoLegend::basicObjectChange(PbBase* object) {
  inherited::basicObjectChange(object);
  if (!state().slots.holds(object)) return;
  if (object->getChangeType() == PbBase::OBJECT_DELETED) state().slots.forget(object);
  PbBase* held = object;
  manageBasicObjectChange(object, &held);
}

void PoLegend::preRebuild() {
  inherited::preRebuild();
  const bool isTraversed = isStateValid() != 0;
  state().textInput.resolve(isTraversed, isTraversed ? PoMiscTextAttrElement::get(getState()) : nullptr);
  if (!state().textInput.given()) dependOn(PoMiscTextAttrElement::getClassStackIndex());
}

void PoLegend::dependOn(int elementStackIndex) {
  if (isStateValid() && getAllCache()) getAllCache()->addElement(getState()->getConstElement(elementStackIndex));
}

void PoLegend::addElementsAllCaches() {
  inherited::addElementsAllCaches();
  PoMiscTextAttrElement::get(getState());
}

// --- steps of a rebuild ----------------------------------------------------------------------------------------------

void PoLegend::setDefaultAttr() {
  PiLegendState& s = state();
  s.text = *getMiscTextAttr();
  s.titleFontName = titleFontName.getValue().getLength() > 0 ? titleFontName.getValue() : s.text.getFontName();
  s.valueFontName = valueFontName.getValue().getLength() > 0 ? valueFontName.getValue() : s.text.getFontName();
  s.valuePosition = PiEnumField::get(valuePosition, POS_LEFT, POS_RIGHT);
  s.measuring.setAttributes(&s.text);
  s.measuring.setFont(s.valueFontName, 1);
  s.scale.setValue(1, 1);
  const PbDomain* domain = getDomain();
  if (!isDomainTransformEnabled() || domain->isHomogeneous()) return;
  SoMatrixTransform* stretched = domain->getMatrixTransform();
  if (!stretched) return;
  stretched->ref();
  const SbMatrix& matrix = stretched->matrix.getValue();
  if (matrix[0][0] > 0 && matrix[1][1] > 0 && std::isfinite(matrix[0][0]) && std::isfinite(matrix[1][1]))
    s.scale.setValue(matrix[0][0], matrix[1][1]);
  stretched->unref();
}

void PoLegend::setRevertOrder(float first, float second) { state().isFromTop = second < first; }

int PoLegend::isRevertOrder() const { return state().isFromTop ? 1 : 0; }

void PoLegend::computeMarginA(const SbVec2f& start, float width, float height, SbVec2f& newStart, float& newWidth,
                              float& newHeight) {
  PiLegendLayout::Margins margins;
  margins.type = PiEnumField::get(marginType, FIXED_MARGIN, REL_MARGIN);
  const bool isFixed = margins.type == FIXED_MARGIN;
  const auto lengthOf = [&](const SoSFFloat& field, float stretch) {
    const float length = std::isfinite(field.getValue()) ? field.getValue() : 0;
    return isFixed ? std::max(0.0F, length * stretch) : length;
  };
  margins.left = lengthOf(marginLeft, state().scale[0]);
  margins.right = lengthOf(marginRight, state().scale[0]);
  margins.bottom = lengthOf(marginBottom, state().scale[1]);
  margins.top = lengthOf(marginTop, state().scale[1]);
  const PiLegendLayout::Frame inner = PiLegendLayout::withoutMargins(margins, {start, width, height});
  newStart = inner.origin;
  newWidth = inner.width;
  newHeight = inner.height;
}

namespace {

void setTitlePath(PiText& text, PoLegend::TextPath path) {
  switch (path) {
    case PoLegend::PATH_LEFT:
      return text.setDirection(SbVec3f(-1, 0, 0), SbVec3f(0, -1, 0));
    case PoLegend::PATH_UP:
      return text.setDirection(SbVec3f(0, 1, 0), SbVec3f(-1, 0, 0));
    case PoLegend::PATH_DOWN:
      return text.setDirection(SbVec3f(0, -1, 0), SbVec3f(1, 0, 0));
    default:
      return text.setDirection(SbVec3f(1, 0, 0), SbVec3f(0, 1, 0));
  }
}

}  // namespace

void PoLegend::computeTitleSizeA(float width, float height, float& titleWidth, float& titleHeight) {
  PiLegendState& s = state();
  titleWidth = titleHeight = 0;
  s.titleSize = 0;
  if (PiEnumField::get(titleVisibility, VISIBILITY_ON, VISIBILITY_OFF) == VISIBILITY_OFF) return;
  PiText text;
  text.setAttributes(&s.text);
  text.setFont(s.titleFontName, 1);
  setTitlePath(text, PiEnumField::get(titlePath, PATH_DOWN, PATH_RIGHT));
  const SbBox3f& extents = text.measure(titleString.getValue().getString(), 1);
  if (extents.isEmpty()) return;
  const SbVec3f extent = extents.getMax() - extents.getMin();
  const Position side = PiEnumField::get(titlePosition, POS_LEFT, POS_BOTTOM);
  const float wanted = titleFontSize.getValue() > 0 && std::isfinite(titleFontSize.getValue())
                           ? titleFontSize.getValue() * s.scale[0]
                           : 0.12F * std::min(width, height);
  s.titleSize = PiLegendLayout::fitTitle(side, width, height, SbVec2f(extent[0], extent[1]), wanted);
  const float gap = PiLegendLayout::TEXT_GAP * s.titleSize;
  titleWidth = extent[0] * s.titleSize + (PiLegendLayout::isAside(side) ? gap : 0);
  titleHeight = extent[1] * s.titleSize + (PiLegendLayout::isAside(side) ? 0 : gap);
}

void PoLegend::drawBackgroundA(const SbVec2f& origin, float width, float height) {
  const SbVec3f corners[] = {SbVec3f(origin[0], origin[1], 0), SbVec3f(origin[0] + width, origin[1], 0),
                             SbVec3f(origin[0] + width, origin[1] + height, 0),
                             SbVec3f(origin[0], origin[1] + height, 0), SbVec3f(origin[0], origin[1], 0)};
  SoGroup* face = newGroup("background");
  // Behind all that stands in its plane. Unstyled it would have the colour of the texts.
  auto* behind = new SoPolygonOffset;
  face->addChild(behind);
  behind->factor = 2;
  behind->units = 4;
  if (!getPart("backgroundApp.material", FALSE) && !getPart("backgroundApp.drawStyle", FALSE)) {
    auto* hidden = new SoDrawStyle;
    face->addChild(hidden);
    hidden->style = SoDrawStyle::INVISIBLE;
  }
  auto* points = new SoCoordinate3;
  face->addChild(points);
  points->point.setValues(0, 4, corners);
  auto* faces = new SoFaceSet;
  face->addChild(faces);
  faces->numVertices = 4;

  SoGroup* border = newGroup("backgroundBorder");
  auto* linePoints = new SoCoordinate3;
  border->addChild(linePoints);
  linePoints->point.setValues(0, 5, corners);
  auto* line = new SoLineSet;
  border->addChild(line);
  line->numVertices = 5;
}

void PoLegend::drawTitleA(float width, float height, Plimit& limits) {
  PiLegendState& s = state();
  SoGroup* group = newGroup("title");
  setElementFont("title", s.titleSize > 0, s.titleFontName, s.titleSize);
  if (!(s.titleSize > 0)) return;
  const Position side = PiEnumField::get(titlePosition, POS_LEFT, POS_BOTTOM);
  SbVec2f middle = PiLegendLayout::takeStrip(limits, side, width, height);
  // The gap is on the side of the boxes.
  const float gap = PiLegendLayout::TEXT_GAP * s.titleSize / 2;
  if (side == POS_BOTTOM || side == POS_TOP)
    middle[1] += side == POS_BOTTOM ? -gap : gap;
  else
    middle[0] += side == POS_LEFT ? -gap : gap;

  PiText text;
  text.setAttributes(&s.text);
  text.setFont(s.titleFontName, s.titleSize);
  setTitlePath(text, PiEnumField::get(titlePath, PATH_DOWN, PATH_RIGHT));
  text.setAlignment(PiText::CENTER, PiText::HALF);
  const char* string = titleString.getValue().getString();
  const SbVec3f off = text.measure(string, 1).getCenter();
  text.setPosition(SbVec3f(middle[0] - off[0], middle[1] - off[1], 0));
  text.setFont("", s.titleSize);
  text.setGroup(group);
  text.build(string, 1);
}

namespace {

PiLegendLayout::Grid gridOf(const PiLegendState& s, const PoLegend& legend, int numBoxes, int numRows, int numColumns,
                            const float* columnWidths, const SbVec2f& gaps) {
  PiLegendLayout::Grid grid;
  grid.numBoxes = numBoxes;
  grid.numRows = numRows;
  grid.numColumns = numColumns;
  grid.valuePosition = s.valuePosition;
  grid.increment = PiEnumField::get(legend.incrementType, PoLegend::HORIZONTAL_INCREMENT, PoLegend::VERTICAL_INCREMENT);
  grid.isFromTop = s.isFromTop;
  if (columnWidths) grid.columnWidths.assign(columnWidths, columnWidths + numColumns);
  grid.size = s.valueSize;
  grid.gaps = gaps;
  return grid;
}

}  // namespace

void PoLegend::drawBoxesLegendBoxesA(int numBoxes, float boxWidthRatio, float boxHeightRatio, int numRows,
                                     int numColumnsOfBoxes, int lastIndex, const float* columnWidths,
                                     const SbVec2f& gaps, const Plimit& limits) {
  if (numBoxes <= 0) {
    setPart("boxBorder", nullptr);
    setPart("box", nullptr);
    return;
  }
  SoGroup* boxes = newGroup("box");
  SoGroup* borders = newGroup("boxBorder");
  PiLegendShapes::beginFilled(boxes);
  PiLegendLayout::Grid grid =
      gridOf(state(), *this, std::min(numBoxes, lastIndex + 1), numRows, numColumnsOfBoxes, columnWidths, gaps);
  grid.boxWidth = boxWidthRatio;
  grid.boxHeight = boxHeightRatio;
  grid.forEachCell(limits, [&](const PiLegendLayout::Grid::Cell& cell) {
    drawBoxLegendBoxesA(boxes, borders, cell.origin, grid.boxWidth * grid.size, grid.boxHeight * grid.size, cell.box);
  });
  styleBoxBorders();
}

void PoLegend::drawValuesLegendBoxesA(int numRows, int numColumnsOfBoxes, int numBoxes, const SbString* texts,
                                      const float* columnWidths, const SbVec2f& gaps, const Plimit& limits,
                                      PiText& text) {
  const bool isShown = PiEnumField::get(valueVisibility, VISIBILITY_ON, VISIBILITY_OFF) == VISIBILITY_ON && texts;
  SoGroup* group = newGroup("valueText");
  setElementFont("valueText", isShown && numBoxes > 0, state().valueFontName, state().valueSize);
  if (!isShown) return;
  PiLegendLayout::Grid grid = gridOf(state(), *this, numBoxes, numRows, numColumnsOfBoxes, columnWidths, gaps);
  const float ratio = boxRatio.getValue() > 0 && std::isfinite(boxRatio.getValue()) ? boxRatio.getValue() : 1;
  grid.boxWidth = ratio * PiLegendLayout::BOX_HEIGHT;
  const Position side = state().valuePosition;
  text.setAlignment(side == POS_RIGHT ? PiText::LEFT : side == POS_LEFT ? PiText::RIGHT : PiText::CENTER, PiText::HALF);
  text.setFont("", state().valueSize);
  text.setGroup(group);
  grid.forEachCell(limits, [&](const PiLegendLayout::Grid::Cell& cell) {
    text.setPosition(SbVec3f(cell.text[0], cell.text[1], 0));
    text.build(texts[cell.box].getString());
  });
}

// Only the style is the kit's: the width of lines may be the application's.
void PoLegend::styleBoxBorders() {
  auto* style = static_cast<SoDrawStyle*>(getPart("boxBorderApp.drawStyle", TRUE));
  if (style && style->style.getValue() != SoDrawStyle::LINES) style->style = SoDrawStyle::LINES;
}

void PoLegend::drawBoxLegendBoxesA(SoGroup*, SoGroup*, const SbVec2f&, float, float, int) {}

void PoLegend::computeGraphicSizeForValues(float&, float&, float&) {}

SoGroup* PoLegend::newGroup(const char* part) {
  auto* group = new SoGroup;
  setPart(part, group);
  const SbVec2f& stretched = state().scale;
  if (stretched != SbVec2f(1, 1)) {
    auto* back = new SoScale;
    group->addChild(back);
    back->scaleFactor.setValue(1 / stretched[0], 1 / stretched[1], 1);
  }
  return group;
}

void PoLegend::setElementFont(const char* element, int isShown, const SbString& name, float size) {
  if (isShown)
    PiElementFont::set(*this, element, SbName(name), size);
  else
    PiElementFont::remove(*this, element);
}
