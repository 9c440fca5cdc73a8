#include <Ormelle/PoMeshContouring.h>

#include <Inventor/caches/SoCache.h>
#include <Inventor/misc/SoState.h>
#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbMiscTextAttr.h>
#include <Ormelle/PbNumericDisplayFormat.h>
#include <Ormelle/PoDataMappingElement.h>
#include <Ormelle/PoIsovaluesListElement.h>
#include <Ormelle/PoMiscTextAttrElement.h>
#include <Ormelle/PoNumericDisplayFormatElement.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "nodes/attribute/PiEnumField.h"
#include "quillane/contour/PiLabelSpace.h"
#include "quillane/contour/PiSurfaceHeights.h"
#include "quillane/emit/PiIsolineDrawing.h"
#include "quillane/rep/PiBoundary.h"
#include "quillane/rep/PiMeshInputs.h"
#include "quillane/rep/PiMeshScratch.h"

PO_KIT_SOURCE(PoMeshContouring)

/// What the kit keeps: the worker, whose memory serves the next rebuild too, and the objects that say how labels are
/// written.
class PoMeshContouring::Workers {
 public:
  explicit Workers(PiConnectedSlots& slots) : format(slots), attributes(slots) {}

  PiContouringLines lines;
  PiDataInput<PbNumericDisplayFormat> format;
  PiDataInput<PbMiscTextAttr> attributes;
  PbNumericDisplayFormat defaultFormat;
  PbMiscTextAttr defaultAttributes;
  /// Of the rebuild under way; null stands for the default.
  const PbNumericDisplayFormat* currentFormat = nullptr;
  const PbMiscTextAttr* currentAttributes = nullptr;
};

namespace {

/// Lines and what belongs to them, in the space in which labels are fitted. Copies only where that isn't their own.
class FittingSpace {
 public:
  explicit FittingSpace(const PiLabelSpace& space) : m_space(space) {}

  std::vector<PiIsoline> map(std::span<const PiIsoline> lines) {
    std::vector<PiIsoline> mapped(lines.begin(), lines.end());
    for (PiIsoline& line : mapped) line.points = map(line.points);
    return mapped;
  }
  PiPolyline map(PiPolyline points) {
    if (!m_space.isMapped()) return points;
    std::vector<SbVec3f>& mapped = m_points.emplace_back();
    mapped.reserve(points.size());
    for (const SbVec3f& point : points) {
      mapped.push_back(m_space.map(point));
      for (int a = 0; a < 3; ++a) m_isFinite = m_isFinite && std::isfinite(mapped.back()[a]);
    }
    return mapped;
  }
  std::vector<float> heightsAt(const PiSurfaceHeights& surface, std::span<const SbVec2f> places) const {
    if (!m_space.isMapped()) return surface.at(places);
    std::vector<SbVec2f> unmapped(places.begin(), places.end());
    for (SbVec2f& place : unmapped) place = m_space.unmap(place);
    std::vector<float> heights = surface.at(unmapped);
    for (float& height : heights) height = m_space.mapHeight(height);
    return heights;
  }
  /// Whether floats could hold all that was mapped.
  bool isFinite() const { return m_isFinite; }
  /// The corners of a polygon that is one; none otherwise.
  std::vector<SbVec2f> map(const SoMFVec2f& polygon) const {
    std::vector<SbVec2f> mapped;
    if (polygon.getNum() > 2) mapped.assign(polygon.getValues(0), polygon.getValues(0) + polygon.getNum());
    if (m_space.isMapped())
      for (SbVec2f& corner : mapped) corner = m_space.map(corner);
    return mapped;
  }

 private:
  const PiLabelSpace& m_space;
  std::vector<std::vector<SbVec3f>> m_points;
  bool m_isFinite = true;
};

/// The greater side of the box of a polygon.
float greaterSide(std::span<const SbVec2f> polygon) {
  PiRect box;
  for (const SbVec2f& corner : polygon)
    if (std::isfinite(corner[0]) && std::isfinite(corner[1])) box.extendBy(corner[0], corner[1]);
  return static_cast<float>(std::max(box.width(), box.height()));
}

/// Relative to the reference, where the field says 0.
constexpr float kStandardFontSize = 0.04F;

}  // namespace

// --- life -----------------------------------------------------------------------------------------------------------

PoMeshContouring::PoMeshContouring() : m_workers(std::make_unique<Workers>(inputs().slots)) {
#define ADD_TRIPLE(name)                                           \
  PO_KIT_ADD_CATALOG_ENTRY(name##Sep, SoSeparator, alternateRep);  \
  PO_KIT_ADD_CATALOG_ENTRY(name##App, SoAppearanceKit, name##Sep); \
  PO_KIT_ADD_CATALOG_ENTRY(name, SoGroup, name##Sep)

  PO_KIT_CONSTRUCTOR(PoMeshContouring);
  PO_KIT_ADD_CATALOG_ENTRY(transform, SoMatrixTransform, alternateRep);
  ADD_TRIPLE(majorContourLine);
  ADD_TRIPLE(minorContourLine);
  ADD_TRIPLE(annotBackground);
  ADD_TRIPLE(annotBackgroundBorder);
  ADD_TRIPLE(annotText);
  PO_KIT_DEFINE_ENUM_VALUE(AnnotPath, TANGENTIAL_PATH);
  PO_KIT_DEFINE_ENUM_VALUE(AnnotPath, HORIZONTAL_PATH);
  PO_KIT_DEFINE_ENUM_VALUE(AnnotPath, VERTICAL_PATH);
  PO_KIT_DEFINE_ENUM_VALUE(AnnotCrossStatus, CROSS_CONTOUR);
  PO_KIT_DEFINE_ENUM_VALUE(AnnotCrossStatus, CROSS_MINOR_CONTOUR);
  PO_KIT_DEFINE_ENUM_VALUE(AnnotCrossStatus, DONT_CROSS_CONTOUR);
  PO_KIT_ADD_FIELD(majorPeriod, (3));
  PO_KIT_ADD_FIELD(firstMajor, (1));
  PO_KIT_ADD_FIELD(annotIsVisible, (FALSE));
  PO_KIT_ADD_FIELD(annotPath, (TANGENTIAL_PATH));
  PO_KIT_ADD_FIELD(annotCrossStatus, (CROSS_CONTOUR));
  PO_KIT_ADD_FIELD(annotIsBackground, (FALSE));
  PO_KIT_ADD_FIELD(annotIsContourClip, (FALSE));
  PO_KIT_ADD_FIELD(annotGap, (1.0F));
  PO_KIT_ADD_FIELD(annotClippingPolygon, (SbVec2f(0, 0)));
  PO_KIT_ADD_FIELD(annotFontSize, (0.0F));
  PO_KIT_ADD_FIELD(annotFontFactor, (1.0F));
  PO_KIT_SET_ENUM_TYPE(annotPath, AnnotPath);
  PO_KIT_SET_ENUM_TYPE(annotCrossStatus, AnnotCrossStatus);
  PO_KIT_CONSTRUCTED(PoMeshContouring);
#undef ADD_TRIPLE

  for (SoField* field : std::initializer_list<SoField*>{
           &majorPeriod, &firstMajor, &annotIsVisible, &annotPath, &annotCrossStatus, &annotIsBackground,
           &annotIsContourClip, &annotGap, &annotClippingPolygon, &annotFontSize, &annotFontFactor})
    watchField(*field);
  for (SoSFNode* part : {&transform, &majorContourLineSep, &majorContourLine, &minorContourLineSep, &minorContourLine,
                         &annotBackgroundSep, &annotBackground, &annotBackgroundBorderSep, &annotBackgroundBorder,
                         &annotTextSep, &annotText})
    ownPart(*part);
  for (const char* part : {"annotTextApp.lightModel", "annotBackgroundApp.lightModel"}) {
    auto* lightModel = new SoLightModel;
    setPart(part, lightModel);
    lightModel->model = SoLightModel::BASE_COLOR;
  }
  // Labels are fitted in the space of the domain.
  setDomainUsedForRebuild(1);
  beginWatching();
}

PoMeshContouring::~PoMeshContouring() = default;

void PoMeshContouring::copyContents(const SoFieldContainer* from, SbBool copyConnections) {
  inherited::copyContents(from, copyConnections);
  const Workers& source = *static_cast<const PoMeshContouring*>(from)->m_workers;
  m_workers->format.give(source.format.given());
  m_workers->attributes.give(source.attributes.given());
}

// --- data objects ---------------------------------------------------------------------------------------------------

void PoMeshContouring::setFormat(PbNumericDisplayFormat* format) {
  m_workers->format.give(format);
  touchKit();
}

void PoMeshContouring::setMiscTextAttr(PbMiscTextAttr* attributes) {
  m_workers->attributes.give(attributes);
  touchKit();
}

const PbNumericDisplayFormat* PoMeshContouring::getFormat() const {
  const PbNumericDisplayFormat* format = m_workers->format.given();
  if (!format && isStateValid()) format = PoNumericDisplayFormatElement::get(getState());
  return format ? format : &m_workers->defaultFormat;
}

const PbMiscTextAttr* PoMeshContouring::getMiscTextAttr() const {
  const PbMiscTextAttr* attributes = m_workers->attributes.given();
  if (!attributes && isStateValid()) attributes = PoMiscTextAttrElement::get(getState());
  return attributes ? attributes : &m_workers->defaultAttributes;
}

// --- the rebuild cycle ----------------------------------------------------------------------------------------------

void PoMeshContouring::addElementsAllCaches() {
  inherited::addElementsAllCaches();
  PoDataMappingElement::get(getState());
  PoIsovaluesListElement::get(getState());
  if (!annotIsVisible.getValue()) return;
  PoNumericDisplayFormatElement::get(getState());
  PoMiscTextAttrElement::get(getState());
}

void PoMeshContouring::preRebuild() {
  inherited::preRebuild();
  addDataMappingInCache();
  addIsovaluesListInCache(1);
  const bool isTraversed = isStateValid() != 0;
  if (annotIsVisible.getValue() && isTraversed && getAllCache()) {
    if (!m_workers->format.given())
      getAllCache()->addElement(getState()->getConstElement(PoNumericDisplayFormatElement::getClassStackIndex()));
    if (!m_workers->attributes.given())
      getAllCache()->addElement(getState()->getConstElement(PoMiscTextAttrElement::getClassStackIndex()));
  }
  m_workers->currentFormat =
      m_workers->format.resolve(isTraversed, isTraversed ? PoNumericDisplayFormatElement::get(getState()) : nullptr);
  m_workers->currentAttributes =
      m_workers->attributes.resolve(isTraversed, isTraversed ? PoMiscTextAttrElement::get(getState()) : nullptr);
}

std::size_t PoMeshContouring::getMemorySize() const {
  return inherited::getMemorySize() + m_workers->lines.memorySize();
}

void PoMeshContouring::rebuild() {
  preRebuild();
  for (const char* part :
       {"transform", "majorContourLine", "minorContourLine", "annotBackground", "annotBackgroundBorder", "annotText"})
    setPart(part, nullptr);
  if (drawnMesh() && m_currentIsovaluesList) {
    PiRebuildScope scope;
    const float* values = findNodeValues(*m_currentMesh2D, valuesIndex.getValue());
    if (values) drawContourLines(*m_currentMesh2D, values);
  }
  // Lines have colours of their own, not a texture.
  if (m_currentColoring == COLOR_TEXTURE_CONTOURING) m_currentColoring = COLOR_MAPPING;
  postRebuild();
}

void PoMeshContouring::drawContourLines(PbMesh2D& mesh, const float* values) {
  const float* z = heights(mesh);
  PiContouringLines& worker = m_workers->lines;
  worker.setIsovaluesList(m_currentIsovaluesList);
  worker.initGeometry();
  mesh.meshContouring(&worker, z);
  const std::span<const PiIsoline> found = worker.extract(values);

  PiIsolineStyle style;
  style.list = m_currentIsovaluesList;
  style.mapping = m_currentColoring == COLOR_INHERITED ? nullptr : m_currentDataMapping;
  style.majorPeriod = majorPeriod.getValue();
  style.firstMajor = firstMajor.getValue();
  if (found.empty()) return;
  if (!annotIsVisible.getValue()) {
    setLineParts(drawIsolines(style, found, {}));
    return;
  }

  const PiLabelSpace space(*getDomain(), z != nullptr);
  FittingSpace fitting(space);
  const std::vector<PiIsoline> lines = fitting.map(found);
  const PiBoundary boundary(mesh, heightsIndex(mesh));
  std::vector<PiPolyline> limits;
  for (const PiBoundaryPiece& piece : boundary.pieces()) limits.push_back(fitting.map(piece.points));
  if (!fitting.isFinite()) {
    setLineParts(drawIsolines(style, found, {}));
    return;
  }
  const std::vector<SbVec2f> polygon = fitting.map(annotClippingPolygon);
  style.polygon = polygon;
  if (z) {
    style.heightsAt = [&](std::span<const SbVec2f> places) {
      PiSurfaceHeights surface;
      mesh.meshContouring(&surface, z);
      return fitting.heightsAt(surface, places);
    };
  }
  setLabelStyle(style, polygon.empty() ? space.referenceLength() : greaterSide(polygon));
  setLineParts(drawIsolines(style, lines, limits));
  if (!space.isMapped()) return;
  auto* back = new SoMatrixTransform;
  setPart("transform", back);
  back->matrix = space.inverse();
}

void PoMeshContouring::setLabelStyle(PiIsolineStyle& style, float reference) const {
  const AnnotCrossStatus status = PiEnumField::get(annotCrossStatus, DONT_CROSS_CONTOUR, CROSS_CONTOUR);
  style.hasLabels = true;
  style.path = static_cast<PiLabelPlacement::Path>(PiEnumField::get(annotPath, VERTICAL_PATH, TANGENTIAL_PATH));
  style.isMajorForbidden = status != CROSS_CONTOUR;
  style.isMinorForbidden = status == DONT_CROSS_CONTOUR;
  style.hasBox = annotIsBackground.getValue() != 0;
  style.isClipped = annotIsContourClip.getValue() != 0;
  style.gap = annotGap.getValue() * reference;
  style.size = (annotFontSize.getValue() == 0 ? kStandardFontSize : annotFontSize.getValue()) * reference;
  style.format = m_workers->currentFormat;
  style.attributes = m_workers->currentAttributes;
}

void PoMeshContouring::setLineParts(const PiIsolineNodes& made) {
  setPart("majorContourLine", made.major);
  setPart("minorContourLine", made.minor);
  setPart("annotBackground", made.boxes);
  setPart("annotBackgroundBorder", made.borders);
  setPart("annotText", made.texts);
}
