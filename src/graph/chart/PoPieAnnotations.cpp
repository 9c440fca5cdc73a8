#include <algorithm>
#include <cmath>
#include <string>

#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Ormelle/PoPieChart.h>

#include "graph/chart/PiPieAnnotations.h"
#include "graph/chart/PiPieState.h"
#include "graph/frame/PiElementFont.h"
#include "nodes/attribute/PiEnumField.h"

namespace {

constexpr float kFontSize = 0.1f;  // in radii, where a field says none

bool isOn(const SoSFEnum& visibility) { return visibility.getValue() == PoAxis::VISIBILITY_ON; }

/// A length that a field gives as a part of the reference length; `automatic` for 0 and below.
float resolved(const SoSFFloat& field, float reference, float automatic) {
  const float value = field.getValue();
  return std::isfinite(value) && value > 0 ? value * reference : automatic;
}

}  // namespace

/// The fields and parts of inner or outer annotations.
struct PoPieChart::Side {
  const char* prefix;
  const SoSFEnum& textVisibility;
  const SoSFEnum& valueVisibility;
  const SoSFEnum& percentVisibility;
  const SoSFEnum& addStringVisibility;
  const SoSFString& textFontName;
  const SoSFFloat& textFontSize;
  const SoSFString& valueFontName;
  const SoSFFloat& valueFontSize;
  const SoSFString& percentFontName;
  const SoSFFloat& percentFontSize;
  const SoSFString& addString;
  const SoSFEnum& alignment;
  bool isInner;
};

void PoPieChart::drawInternalAnnotations() {
  drawAnnotations({"intAnnot", intAnnotTextVisibility, intAnnotValueVisibility, intAnnotPercentVisibility,
                   intAnnotAddStringVisibility, intAnnotTextFontName, intAnnotTextFontSize, intAnnotValueFontName,
                   intAnnotValueFontSize, intAnnotPercentFontName, intAnnotPercentFontSize, intAnnotAddString,
                   intAnnotAlignment, true});
}

void PoPieChart::drawExternalAnnotations() {
  drawAnnotations({"extAnnot", extAnnotTextVisibility, extAnnotValueVisibility, extAnnotPercentVisibility,
                   extAnnotAddStringVisibility, extAnnotTextFontName, extAnnotTextFontSize, extAnnotValueFontName,
                   extAnnotValueFontSize, extAnnotPercentFontName, extAnnotPercentFontSize, extAnnotAddString,
                   extAnnotAlignment, false});
}

void PoPieChart::drawAnnotations(const Side& side) {
  const PiPieState& pie = state();
  const float fontSize = kFontSize * pieRadius();
  std::vector<std::string> values = pie.values;
  if (isOn(side.addStringVisibility))
    for (std::string& value : values) value += side.addString.getValue().getString();
  const PiPieAnnotations::Line lines[PiPieAnnotations::MAX_LINES] = {
      {isOn(side.textVisibility), side.textFontName.getValue(), resolved(side.textFontSize, pie.reference, fontSize),
       &pie.texts},
      {isOn(side.valueVisibility), side.valueFontName.getValue(), resolved(side.valueFontSize, pie.reference, fontSize),
       &values},
      {isOn(side.percentVisibility), side.percentFontName.getValue(),
       resolved(side.percentFontSize, pie.reference, fontSize), &pie.percents}};
  static const char* const kKinds[PiPieAnnotations::MAX_LINES] = {"Text", "Value", "Percent"};

  const std::string prefix = side.prefix;
  const auto setGroup = [&](const std::string& part, SoGroup* group) {
    setPart(SbName((prefix + part).c_str()), group);
  };
  if (!lines[0].isVisible && !lines[1].isVisible && !lines[2].isVisible) {
    for (const char* part : {"Box", "BoxBorder", "Text", "Value", "Percent"}) setGroup(part, nullptr);
    return;
  }

  PiPieAnnotations annotations(lines, pie.text);
  std::vector<PiPieLayout::Annotation> wanted;
  float pulledMost = 0;
  for (std::size_t i = 0; i < pie.slices.displayed().size(); ++i) {
    const PiPieSlices::Slice& shown = pie.slices.displayed()[i];
    const SbVec2f size = annotations.measure(i);
    const SbVec2f out(static_cast<float>(std::cos(shown.middle())), static_cast<float>(std::sin(shown.middle())));
    wanted.push_back({shown.start, shown.end, shown.value, pieCenter() + out * pie.pulled[i], size[0], size[1]});
    pulledMost = std::max(pulledMost, std::abs(pie.pulled[i]));
  }
  PiPieLayout::Pie layout;
  layout.center = pieCenter();
  layout.radius = pieRadius();
  layout.clearRadius = pieRadius() + pulledMost;
  layout.frame = pie.frame;
  const std::vector<PiPieLayout::Place> places =
      side.isInner ? PiPieLayout::placeInner(layout, wanted, intAnnotPosition.getValue() == RADIAL_INT_POS,
                                             resolved(intAnnotDistance, pie.reference, 0))
                   : PiPieLayout::placeOuter(layout, wanted,
                                             static_cast<PiPieLayout::Outer>(PiEnumField::get(
                                                 extAnnotPosition, SQUARE_ALIGNED_EXT_POS, HOR_EXT_POS)),
                                             resolved(extAnnotDistance1, pie.reference, 0.08f * pieRadius()),
                                             resolved(extAnnotDistance2, pie.reference, 0.1f * pieRadius()),
                                             resolved(extAnnotDistance3, pie.reference, 0.08f * pieRadius()));
  annotations.build(
      places, static_cast<PiPieAnnotations::Alignment>(PiEnumField::get(side.alignment, OUTWARDS_ALIGN, CENTER_ALIGN)),
      annotationHeight(), side.isInner ? 0 : resolved(arrowWidth, pie.reference, 0));

  annotations.borders()->addChild(annotations.leaders());

  // Plain paper and a thin line, unless the application styled the element.
  const auto paint = [&](const std::string& part, SoGroup* group, float shade) {
    if (getPart(SbName((prefix + part + "App.material").c_str()), FALSE)) return;
    auto* unlit = new SoLightModel;
    group->insertChild(unlit, 0);
    unlit->model = SoLightModel::BASE_COLOR;
    auto* material = new SoMaterial;
    group->insertChild(material, 1);
    material->diffuseColor.setValue(shade, shade, shade);
  };
  paint("Box", annotations.boxes(), 1);
  paint("BoxBorder", annotations.borders(), 0.55f);
  setGroup("Box", annotations.boxes());
  setGroup("BoxBorder", annotations.borders());
  for (int kind = 0; kind < PiPieAnnotations::MAX_LINES; ++kind) {
    setGroup(kKinds[kind], annotations.lines(kind));
    if (!lines[kind].isVisible) continue;
    const SbString& fontName = lines[kind].fontName;
    PiElementFont::set(*this, prefix + kKinds[kind],
                       fontName.getLength() > 0 ? SbName(fontName) : SbName(pie.text.getFontName()),
                       lines[kind].fontSize);
  }
}
