#include <Ormelle/PoHistogram.h>

#include <cmath>
#include <initializer_list>
#include <string>

#include <Inventor/SoFullPath.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/caches/SoCache.h>
#include <Inventor/details/SoFaceDetail.h>
#include <Inventor/misc/SoState.h>
#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbDomain.h>
#include <Ormelle/PoDataMappingElement.h>
#include <Ormelle/PoMiscTextAttrElement.h>
#include <Ormelle/PoNumericDisplayFormatElement.h>

#include "graph/chart/PiChartColors.h"
#include "graph/chart/PiDomainStretch.h"
#include "graph/chart/PiHistogramState.h"
#include "graph/format/PiText.h"
#include "nodes/attribute/PiEnumField.h"

PO_KIT_ABSTRACT_SOURCE(PoHistogram)

PoHistogram::PoHistogram() : m_histogramState(std::make_unique<PiHistogramState>(this)) {
  PO_KIT_CONSTRUCTOR(PoHistogram);
  PO_KIT_ADD_CATALOG_ENTRY(transform, SoMatrixTransform, alternateRep);
  PO_KIT_ADD_TRIPLE(bar);
  PO_KIT_ADD_TRIPLE(valueText);
  PO_KIT_ADD_TRIPLE(nameText);

  using enum PoAxis::Visibility;
  using enum PoAxis::TextPath;
  PO_KIT_DEFINE_ENUM_VALUE(Visibility, VISIBILITY_OFF);
  PO_KIT_DEFINE_ENUM_VALUE(Visibility, VISIBILITY_ON);
  PO_KIT_DEFINE_ENUM_VALUE(Visibility, VISIBILITY_DEPEND);
  PO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_RIGHT);
  PO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_LEFT);
  PO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_UP);
  PO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_DOWN);
  PO_KIT_DEFINE_ENUM_VALUE(TextPath, PATH_DEPEND);
  PO_KIT_DEFINE_ENUM_VALUE(Type, X);
  PO_KIT_DEFINE_ENUM_VALUE(Type, Y);
  PO_KIT_DEFINE_ENUM_VALUE(BarSpaceType, REL_SPACE);
  PO_KIT_DEFINE_ENUM_VALUE(BarSpaceType, FIXED_SPACE);
  PO_KIT_DEFINE_ENUM_VALUE(Coloring, COLOR_LIST);
  PO_KIT_DEFINE_ENUM_VALUE(Coloring, DATA_MAPPING);
  PO_KIT_DEFINE_ENUM_VALUE(Position, POS_TOP_OUT);
  PO_KIT_DEFINE_ENUM_VALUE(Position, POS_TOP_IN);
  PO_KIT_DEFINE_ENUM_VALUE(Position, POS_BOTTOM_OUT);
  PO_KIT_DEFINE_ENUM_VALUE(Position, POS_BOTTOM_IN);
  PO_KIT_DEFINE_ENUM_VALUE(Position, POS_RIGHT_OUT);
  PO_KIT_DEFINE_ENUM_VALUE(Position, POS_RIGHT_IN);
  PO_KIT_DEFINE_ENUM_VALUE(Position, POS_LEFT_OUT);
  PO_KIT_DEFINE_ENUM_VALUE(Position, POS_LEFT_IN);
  PO_KIT_DEFINE_ENUM_VALUE(Position, POS_CENTER);
  PO_KIT_DEFINE_ENUM_VALUE(Position, POS_DEPEND);

  PO_KIT_ADD_FIELD(start, (0, 0));
  PO_KIT_ADD_FIELD(end, (1));
  PO_KIT_ADD_FIELD(type, (X));
  PO_KIT_ADD_FIELD(barSpaceType, (REL_SPACE));
  PO_KIT_ADD_FIELD(barSpaceValue, (0.2f));
  PO_KIT_ADD_FIELD(coloring, (COLOR_LIST));
  PO_KIT_ADD_EMPTY_MFIELD(color);
  PO_KIT_ADD_FIELD(valueVisibility, (VISIBILITY_DEPEND));
  PO_KIT_ADD_FIELD(valuePosition, (POS_DEPEND));
  PO_KIT_ADD_FIELD(valuePath, (PATH_DEPEND));
  PO_KIT_ADD_FIELD(valueFontName, (""));
  PO_KIT_ADD_FIELD(valueFontSize, (0));
  PO_KIT_ADD_FIELD(valueAddStringVisibility, (VISIBILITY_OFF));
  PO_KIT_ADD_FIELD(valueAddString, (""));
  PO_KIT_ADD_FIELD(nameVisibility, (VISIBILITY_DEPEND));
  PO_KIT_ADD_FIELD(namePosition, (POS_DEPEND));
  PO_KIT_ADD_FIELD(namePath, (PATH_DEPEND));
  PO_KIT_ADD_FIELD(nameFontName, (""));
  PO_KIT_ADD_FIELD(nameFontSize, (0));

  PO_KIT_SET_ENUM_TYPE(type, Type);
  PO_KIT_SET_ENUM_TYPE(barSpaceType, BarSpaceType);
  PO_KIT_SET_ENUM_TYPE(coloring, Coloring);
  PO_KIT_SET_ENUM_TYPE(valueVisibility, Visibility);
  PO_KIT_SET_ENUM_TYPE(valuePosition, Position);
  PO_KIT_SET_ENUM_TYPE(valuePath, TextPath);
  PO_KIT_SET_ENUM_TYPE(valueAddStringVisibility, Visibility);
  PO_KIT_SET_ENUM_TYPE(nameVisibility, Visibility);
  PO_KIT_SET_ENUM_TYPE(namePosition, Position);
  PO_KIT_SET_ENUM_TYPE(namePath, TextPath);
  PO_KIT_CONSTRUCTED(PoHistogram);

  ownPart(transform);
  for (SoField* field : std::initializer_list<SoField*>{
           &start, &end, &type, &barSpaceType, &barSpaceValue, &coloring, &color, &valueVisibility, &valuePosition,
           &valuePath, &valueFontName, &valueFontSize, &valueAddStringVisibility, &valueAddString, &nameVisibility,
           &namePosition, &namePath, &nameFontName, &nameFontSize})
    watchField(*field);
}

PoHistogram::~PoHistogram() = default;

// --- data ------------------------------------------------------------------------------------------------------------

void PoHistogram::setDataMapping(PbDataMapping* mapping) {
  state().mappingInput.give(mapping);
  touchKit();
}

const PbDataMapping* PoHistogram::getDataMapping() const {
  if (const PbDataMapping* given = state().mappingInput.given()) return given;
  return isStateValid() ? PoDataMappingElement::get(getState()) : nullptr;
}

void PoHistogram::setMiscTextAttr(PbMiscTextAttr* attributes) {
  state().textInput.give(attributes);
  touchKit();
}

const PbMiscTextAttr* PoHistogram::getMiscTextAttr() const {
  if (const PbMiscTextAttr* given = state().textInput.given()) return given;
  return isStateValid() ? PoMiscTextAttrElement::get(getState()) : nullptr;
}

void PoHistogram::setFormat(PbNumericDisplayFormat* format) {
  state().formatInput.give(format);
  touchKit();
}

const PbNumericDisplayFormat* PoHistogram::getFormat() const {
  if (const PbNumericDisplayFormat* given = state().formatInput.given()) return given;
  return isStateValid() ? PoNumericDisplayFormatElement::get(getState()) : nullptr;
}

void PoHistogram::basicObjectChange(PbBase* object) {
  inherited::basicObjectChange(object);
  if (!state().slots.holds(object)) return;
  if (object->getChangeType() == PbBase::OBJECT_DELETED) {
    state().slots.forget(object);
    state().mapping = nullptr;
    state().format = nullptr;
  }
  PbBase* held = object;
  manageBasicObjectChange(object, &held);
}

int PoHistogram::getPickedBarNumber(const SoPickedPoint* point, int& number) const {
  if (!point || !point->getDetail() || !point->getDetail()->isOfType(SoFaceDetail::getClassTypeId())) return 0;
  const auto* path = static_cast<const SoFullPath*>(point->getPath());
  if (path->findNode(this) < 0 || !bar.getValue() || path->findNode(bar.getValue()) < 0) return 0;
  number = static_cast<const SoFaceDetail*>(point->getDetail())->getFaceIndex();
  return 1;
}

// --- rebuild ---------------------------------------------------------------------------------------------------------

void PoHistogram::preRebuild() {
  inherited::preRebuild();
  PiHistogramState& now = state();
  now.mapping = now.mappingInput.resolve(isStateValid(), getDataMapping());
  now.format = now.formatInput.resolve(isStateValid(), getFormat());
  const PbMiscTextAttr* attributes = now.textInput.resolve(isStateValid(), getMiscTextAttr());
  now.text = attributes ? *attributes : PbMiscTextAttr();
  if (!isStateValid() || isCacheValid() || !getAllCache()) return;
  for (const int index : {PoDataMappingElement::getClassStackIndex(), PoMiscTextAttrElement::getClassStackIndex(),
                          PoNumericDisplayFormatElement::getClassStackIndex()})
    if (getState()->isElementEnabled(index)) getAllCache()->addElement(getState()->getConstElement(index));
}

void PoHistogram::addElementsAllCaches() {
  inherited::addElementsAllCaches();
  PoDataMappingElement::get(getState());
  PoMiscTextAttrElement::get(getState());
  PoNumericDisplayFormatElement::get(getState());
}

void PoHistogram::copyContents(const SoFieldContainer* from, SbBool copyConnections) {
  inherited::copyContents(from, copyConnections);
  const PiHistogramState& other = static_cast<const PoHistogram*>(from)->state();
  state().mappingInput.give(other.mappingInput.given());
  state().textInput.give(other.textInput.given());
  state().formatInput.give(other.formatInput.given());
}

void PoHistogram::setDefaultAttr() {
  PiHistogramState& now = state();
  now.reference = getDomain()->getDeltaX();
  now.ratio = getDomain()->getDeltaX() / getDomain()->getDeltaY();
  const SbVec3f stretch = PiDomainStretch::of(*getDomain(), isDomainTransformEnabled() != 0);
  now.depth = stretch[0] / stretch[2];
  now.isAlongX = type.getValue() != Y;
  const SbVec2f from = start.getValue();
  now.axis.start = now.isAlongX ? from[0] : from[1] * now.ratio;
  now.axis.end = now.isAlongX ? end.getValue() : end.getValue() * now.ratio;
  now.axis.base = now.isAlongX ? from[1] * now.ratio : from[0];
  now.axis.valueScale = now.isAlongX ? now.ratio : 1;
  now.axis.isFixedSpace = barSpaceType.getValue() == FIXED_SPACE;
  now.axis.space = barSpaceValue.getValue() * (now.axis.isFixedSpace ? now.reference : 1);
  if (!std::isfinite(now.axis.space)) now.axis.space = 0;

  auto* scale = new SoMatrixTransform;
  scale->matrix = SbMatrix(1, 0, 0, 0, 0, 1 / now.ratio, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
  setPart("transform", scale);
}

bool PoHistogram::hasPlace() const {
  const PiHistogramBars::Axis& axis = state().axis;
  return std::isfinite(axis.start) && std::isfinite(axis.end) && std::isfinite(axis.base) && axis.start != axis.end;
}

void PoHistogram::resetParts() {
  for (const char* part : {"bar", "valueText", "nameText"}) setPart(part, nullptr);
}

int PoHistogram::colorIndex(int index) const { return index; }

void PoHistogram::colorBars(SoGroup* group) {
  const std::vector<PiHistogramBars::Bar>& bars = state().bars.bars();
  auto* binding = new SoMaterialBinding;
  group->addChild(binding);
  binding->value = SoMaterialBinding::PER_FACE;
  auto* material = new SoMaterial;
  group->addChild(material);
  const int num = static_cast<int>(bars.size());
  const bool isMapped = coloring.getValue() == DATA_MAPPING && state().mapping;
  const bool isTransparent = isMapped && state().mapping->isTransparencyEnabled();
  material->diffuseColor.setNum(num);
  material->transparency.setNum(isTransparent ? num : 1);
  SbColor* colors = material->diffuseColor.startEditing();
  float* transparencies = material->transparency.startEditing();
  for (int i = 0; i < num; ++i) {
    if (!isMapped) {
      colors[i] = PiChartColors::of(color, colorIndex(i));
      continue;
    }
    float transparency = 0;
    const SbColor* rgb =
        state().mapping->getRGBColor(static_cast<float>(bars[static_cast<std::size_t>(i)].value), transparency);
    colors[i] = rgb ? *rgb : SbColor(0, 0, 0);
    if (isTransparent) transparencies[i] = transparency;
  }
  if (!isTransparent) transparencies[0] = 0;
  material->diffuseColor.finishEditing();
  material->transparency.finishEditing();
}

void PoHistogram::buildBars() {
  const std::vector<PiHistogramBars::Bar>& bars = state().bars.bars();
  auto* group = new SoGroup;
  colorBars(group);
  auto* coordinate = new SoCoordinate3;
  group->addChild(coordinate);
  auto* faces = new SoFaceSet;
  group->addChild(faces);
  coordinate->point.setNum(static_cast<int>(4 * bars.size()));
  faces->numVertices.setNum(static_cast<int>(bars.size()));
  SbVec3f* points = coordinate->point.startEditing();
  int32_t* sizes = faces->numVertices.startEditing();
  // Of what is converted to VRML 2, nothing may lie in the plane of the axes.
  const float z = isVRML2Mode() ? -0.01f * state().reference : 0;
  const bool isMapped = coloring.getValue() == DATA_MAPPING && state().mapping;
  for (const PiHistogramBars::Bar& each : bars) {
    PiHistogramBars::Bar drawn = each;
    if (isMapped && !state().mapping->getRGBColor(static_cast<float>(each.value))) drawn.top = drawn.foot;
    SbVec2f min, max;
    state().corners(drawn, min, max);
    *points++ = SbVec3f(min[0], min[1], z);
    *points++ = SbVec3f(max[0], min[1], z);
    *points++ = SbVec3f(max[0], max[1], z);
    *points++ = SbVec3f(min[0], max[1], z);
    *sizes++ = 4;
  }
  coordinate->point.finishEditing();
  faces->numVertices.finishEditing();
  setPart("bar", group);
}

// --- where texts stand -----------------------------------------------------------------------------------------------

void PoHistogram::computeTextPos(const SbVec2f* corners, Position position, float gap, SbVec2f& pos) {
  const SbVec2f& min = corners[0];
  const SbVec2f& max = corners[2];
  pos = (min + max) / 2;
  switch (position) {
    case POS_TOP_OUT:
      pos[1] = max[1] + gap;
      break;
    case POS_TOP_IN:
      pos[1] = max[1] - gap;
      break;
    case POS_BOTTOM_OUT:
      pos[1] = min[1] - gap;
      break;
    case POS_BOTTOM_IN:
      pos[1] = min[1] + gap;
      break;
    case POS_RIGHT_OUT:
      pos[0] = max[0] + gap;
      break;
    case POS_RIGHT_IN:
      pos[0] = max[0] - gap;
      break;
    case POS_LEFT_OUT:
      pos[0] = min[0] - gap;
      break;
    case POS_LEFT_IN:
      pos[0] = min[0] + gap;
      break;
    case POS_CENTER:
    case POS_DEPEND:
      break;
  }
}

void PoHistogram::computeTextAlignPath(Position position, TextPath path, int& horizontal, int& vertical) {
  // Where the text lies as seen from its place: right, left, above or below it.
  int x = 0;
  int y = 0;
  if (position == POS_RIGHT_OUT || position == POS_LEFT_IN) x = 1;
  if (position == POS_LEFT_OUT || position == POS_RIGHT_IN) x = -1;
  if (position == POS_TOP_OUT || position == POS_BOTTOM_IN) y = 1;
  if (position == POS_BOTTOM_OUT || position == POS_TOP_IN) y = -1;
  // The same along the direction of the text and along its upright.
  int along = x;
  int upright = y;
  if (path == PoAxis::PATH_LEFT) {
    along = -x;
    upright = -y;
  } else if (path == PoAxis::PATH_UP) {
    along = y;
    upright = -x;
  } else if (path == PoAxis::PATH_DOWN) {
    along = -y;
    upright = x;
  }
  horizontal = along > 0 ? PiText::LEFT : along < 0 ? PiText::RIGHT : PiText::CENTER;
  vertical = upright > 0 ? PiText::BASE : upright < 0 ? PiText::UPPER : PiText::HALF;
}
