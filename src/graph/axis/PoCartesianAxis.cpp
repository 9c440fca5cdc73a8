#include <Ormelle/PoCartesianAxis.h>

#include <Inventor/nodes/SoMatrixTransform.h>

#include <Inventor/nodes/SoGroup.h>

#include <cmath>

#include "graph/axis/PiAxisState.h"
#include "graph/axis/PiAxisTransform.h"
#include "graph/axis/PiMultiplier.h"
#include "nodes/attribute/PiEnumField.h"

PO_KIT_ABSTRACT_SOURCE(PoCartesianAxis)

PoCartesianAxis::PoCartesianAxis() {
  PO_KIT_CONSTRUCTOR(PoCartesianAxis);
  PO_KIT_DEFINE_ENUM_VALUE(Type, XY);
  PO_KIT_DEFINE_ENUM_VALUE(Type, XZ);
  PO_KIT_DEFINE_ENUM_VALUE(Type, YX);
  PO_KIT_DEFINE_ENUM_VALUE(Type, YZ);
  PO_KIT_DEFINE_ENUM_VALUE(Type, ZX);
  PO_KIT_DEFINE_ENUM_VALUE(Type, ZY);
  PO_KIT_ADD_FIELD(start, (0, 0, 0));
  PO_KIT_ADD_FIELD(end, (1));
  PO_KIT_ADD_FIELD(type, (XY));
  PO_KIT_SET_ENUM_TYPE(type, Type);
  PO_KIT_CONSTRUCTED(PoCartesianAxis);
  for (SoField* field : std::initializer_list<SoField*>{&start, &end, &type}) watchField(*field);
}

PoCartesianAxis::~PoCartesianAxis() = default;

PoCartesianAxis::Type PoCartesianAxis::getType() const { return PiEnumField::get(type, ZY, XY); }

void PoCartesianAxis::computeTransfo(const SbVec3f& axisStart, SoMatrixTransform* out, float& ref1, float& ref2) {
  SbVec3f deltas;
  getDomain()->getDelta(deltas[0], deltas[1], deltas[2]);
  const PiAxisTransform placed = PiAxisTransform::make(getType(), axisStart, deltas);
  out->matrix = placed.matrix;
  ref1 = placed.along;
  ref2 = placed.across;
}

int PoCartesianAxis::beginAxis(float& axisStart, float& axisEnd) {
  const SbVec3f place = start.getValue();
  axisStart = place[PiAxisTransform::direction(getType())];
  axisEnd = end.getValue();
  saveAxisAttr();
  setDefaultAttr(static_cast<Plane>(getType()));
  for (const float number : {place[0], place[1], place[2], axisEnd})
    if (!std::isfinite(number)) return 0;
  auto* placed = new SoMatrixTransform;
  setPart("transform", placed);
  computeTransfo(place, placed, state().along, state().across);
  SbMatrix matrix = placed->matrix.getValue();
  state().origin = PiAxisTransform::moveOrigin(getType(), axisStart, axisEnd, matrix);
  placed->matrix = matrix;
  return axisStart != axisEnd && std::isfinite(axisEnd - axisStart);
}

PiMultiplier PoCartesianAxis::multiplierOf(const SoSFEnum& position, const SoSFFloat& distAxis) {
  return {PiEnumField::get(position, PiMultiplier::GRAD, PiMultiplier::END),
          std::isfinite(distAxis.getValue()) ? distAxis.getValue() : 0};
}

void PoCartesianAxis::buildMultiplierPart(int power, PiMultiplier& multiplier) {
  const PiAxisState& s = state();
  const PiAxisAttributes& a = s.attributes;
  const bool isShown = power != 0 && a.gradVisibility == VISIBILITY_ON && a.gradFontSize > 0 &&
                       multiplier.position != PiMultiplier::GRAD;
  SoGroup* group = isShown ? new SoGroup : nullptr;
  setPart("multFactor", group);
  setElementFont("multFactor", isShown, a.gradFontName, a.gradFontSize);
  if (!isShown) return;
  const float given = multiplier.distAxis;
  if (multiplier.position == PiMultiplier::START || multiplier.position == PiMultiplier::EXTR)
    buildMultFactorAtExtr(power, s.axisEnd, s.axisStart, multiplier.distAxis, group);
  if (multiplier.position == PiMultiplier::START) return;
  multiplier.distAxis = given;
  buildMultFactorAtExtr(power, s.axisStart, s.axisEnd, multiplier.distAxis, group);
}
