#include <Ormelle/PoPieChartRep.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <string>
#include <vector>

#include <Inventor/caches/SoCache.h>
#include <Inventor/misc/SoState.h>
#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoAnnotation.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Ormelle/PbDomain.h>
#include <Ormelle/PbMesh1D.h>
#include <Ormelle/PbMiscTextAttr.h>
#include <Ormelle/PoMeshElement.h>
#include <Ormelle/PoMiscTextAttrElement.h>

#include "graph/chart/PiChartFormat.h"
#include "graph/chart/PiCurveColoring.h"
#include "graph/chart/PiPieAnnotations.h"
#include "graph/chart/PiPieSliceParts.h"
#include "graph/chart/PiPieSlices.h"
#include "graph/frame/PiElementFont.h"
#include "graph/toolkit/PiNodeRef.h"
#include "quillane/mesh/PiNodeValues.h"

PO_KIT_SOURCE(PoPieChartRep)

PoPieChartRep::PoPieChartRep() {
  PO_KIT_CONSTRUCTOR(PoPieChartRep);
  PO_KIT_ADD_CATALOG_ENTRY(slice, SoGroup, alternateRep);
  PO_KIT_ADD_TRIPLE(annotation);
  PO_KIT_ADD_TRIPLE(annotationLine);
  PO_KIT_ADD_FIELD(radiusMin, (0));
  PO_KIT_ADD_FIELD(radiusMax, (0.5f));
  PO_KIT_ADD_FIELD(height, (0));
  PO_KIT_ADD_EMPTY_MFIELD(sliceToTranslateRadius);
  PO_KIT_ADD_FIELD(isNameVisible, (FALSE));
  PO_KIT_ADD_FIELD(isValueVisible, (FALSE));
  PO_KIT_ADD_FIELD(isPercentageVisible, (FALSE));
  PO_KIT_ADD_FIELD(annoDistToCenter, (0));
  PO_KIT_ADD_FIELD(annoHeightFromSlice, (0));
  PO_KIT_ADD_FIELD(isAnnoSliceColor, (FALSE));
  PO_KIT_ADD_FIELD(annoFontSize, (0));
  PO_KIT_CONSTRUCTED(PoPieChartRep);
  ownPart(slice);
  for (SoField* field : std::initializer_list<SoField*>{
           &radiusMin, &radiusMax, &height, &sliceToTranslateRadius, &isNameVisible, &isValueVisible,
           &isPercentageVisible, &annoDistToCenter, &annoHeightFromSlice, &isAnnoSliceColor, &annoFontSize})
    watchField(*field);
  beginWatching();
}

PoPieChartRep::~PoPieChartRep() = default;

void PoPieChartRep::addElementsAllCaches() {
  inherited::addElementsAllCaches();
  PoMiscTextAttrElement::get(getState());
}

void PoPieChartRep::preRebuild() {
  inherited::preRebuild();
  if (!isStateValid() || isCacheValid() || !getAllCache()) return;
  const int index = PoMiscTextAttrElement::getClassStackIndex();
  if (getState()->isElementEnabled(index)) getAllCache()->addElement(getState()->getConstElement(index));
}

void PoPieChartRep::rebuild() {
  preRebuild();
  const PbMesh1D* mesh = isStateValid() ? PoMeshElement::getMesh1D(getState()) : nullptr;
  const float* values = mesh ? findNodeValues(*mesh, yValuesIndex.getValue()) : nullptr;
  for (const char* part : {"slice", "annotation", "annotationLine"}) setPart(part, nullptr);
  if (values && radiusMax.getValue() > radiusMin.getValue() && std::isfinite(radiusMax.getValue()) &&
      std::isfinite(radiusMin.getValue()))
    draw(*mesh, values);
  postRebuild();
}

void PoPieChartRep::draw(const PbMesh1D& mesh, const float* values) {
  const int num = mesh.getNumNodes();
  PiPieSlices slices;
  slices.compute(num, values, {});
  if (slices.displayed().empty()) return;

  const PiCurveColoring coloring(*this, getState(), mesh);
  const PiNodeRef<SoMaterial> resolved(coloring.makeMaterial());
  std::vector<SbColor> colors;
  std::vector<float> pulled;
  float pulledMost = 0;
  std::vector<float> shown;
  for (const PiPieSlices::Slice& each : slices.displayed()) {
    const int node = each.index();
    if (resolved) colors.push_back(resolved->diffuseColor[std::min(node, resolved->diffuseColor.getNum() - 1)]);
    const float distance = node < sliceToTranslateRadius.getNum() ? sliceToTranslateRadius[node] : 0;
    pulled.push_back(std::isfinite(distance) ? distance : 0);
    pulledMost = std::max(pulledMost, std::abs(pulled.back()));
    shown.push_back(static_cast<float>(each.value));
  }

  const float top = std::isfinite(height.getValue()) ? std::max(0.0f, height.getValue()) : 0;
  PiPieSliceParts::Input input{slices, pulled};
  if (resolved) input.colors = &colors;
  input.innerRadius = std::max(0.0f, radiusMin.getValue());
  input.radius = radiusMax.getValue();
  input.isSolid = top > 0;
  input.zMax = top;
  const PiPieSliceParts parts(input);
  setPart("slice", parts.slices());
  PiNodeRef<SoGroup> unused(parts.borders());

  // What annotations say: a name, a value, a percentage.
  const SbString* strings = mesh.getStringsSet(0);  // as many as there are nodes
  const PiChartFormat format(nullptr, shown);
  std::vector<std::string> names, valueTexts;
  for (std::size_t i = 0; i < shown.size(); ++i) {
    names.emplace_back(strings ? strings[slices.displayed()[i].index()].getString() : "");
    valueTexts.push_back(format.text(shown[i]));
  }
  const std::vector<std::string> percents = slices.percentTexts(0);
  const PbMiscTextAttr* onState = isStateValid() ? PoMiscTextAttrElement::get(getState()) : nullptr;
  const PbMiscTextAttr attributes = onState ? *onState : PbMiscTextAttr();
  const float reference = getDomain()->getDeltaX();
  const float asked = annoFontSize.getValue();
  const float fontSize = std::isfinite(asked) && asked > 0 ? asked * reference : 0.1f * input.radius;
  const PiPieAnnotations::Line lines[PiPieAnnotations::MAX_LINES] = {
      {isNameVisible.getValue() != FALSE, "", fontSize, &names},
      {isValueVisible.getValue() != FALSE, "", fontSize, &valueTexts},
      {isPercentageVisible.getValue() != FALSE, "", fontSize, &percents}};
  PiPieAnnotations annotations(lines, attributes);
  std::vector<PiPieLayout::Annotation> wanted;
  for (std::size_t i = 0; i < shown.size(); ++i) {
    const PiPieSlices::Slice& each = slices.displayed()[i];
    const SbVec2f size = annotations.measure(i);
    const SbVec2f out(static_cast<float>(std::cos(each.middle())), static_cast<float>(std::sin(each.middle())));
    wanted.push_back({each.start, each.end, each.value, out * pulled[i], size[0], size[1]});
  }
  PiPieLayout::Pie pie;
  pie.innerRadius = input.innerRadius;
  pie.radius = input.radius;
  pie.clearRadius = input.radius + pulledMost;
  const float begin = std::isfinite(annoDistToCenter.getValue()) ? annoDistToCenter.getValue() : 0;
  const float length = begin > 0 ? begin - pie.radius : pie.radius / 4;
  const std::vector<PiPieLayout::Place> places =
      length < 0
          ? PiPieLayout::placeInner(pie, wanted, false, begin)
          : PiPieLayout::placeOuter(pie, wanted, PiPieLayout::HORIZONTAL_EXT, length / 3, length / 3, length / 3);
  const float lift = std::isfinite(annoHeightFromSlice.getValue()) ? annoHeightFromSlice.getValue() : 0;
  annotations.build(places, PiPieAnnotations::INWARDS, top + lift, 0,
                    isAnnoSliceColor.getValue() && resolved ? &colors : nullptr);

  auto* texts = new SoAnnotation;
  for (int kind = 0; kind < PiPieAnnotations::MAX_LINES; ++kind)
    if (annotations.lines(kind)) texts->addChild(annotations.lines(kind));
  setPart("annotation", texts);
  PiElementFont::set(*this, "annotation", SbName(attributes.getFontName()), fontSize);
  setPart("annotationLine", annotations.leaders());
  PiNodeRef<SoGroup> boxes(annotations.boxes());
  PiNodeRef<SoGroup> borders(annotations.borders());
}
