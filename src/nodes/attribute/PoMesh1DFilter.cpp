#include <Ormelle/PoMesh1DFilter.h>

#include <algorithm>
#include <cmath>

#include <Inventor/actions/SoAction.h>
#include <Ormelle/PbArrayOfFloat.h>
#include <Ormelle/PbArrayOfInt.h>
#include <Ormelle/PoCoordinateListFilter.h>
#include <Ormelle/PoIndexListFilter.h>
#include <Ormelle/PoMesh1DFilterElement.h>
#include <Ormelle/PoPeriodFilter.h>
#include <Ormelle/PoPeriodIndexFilter.h>

PO_NODE_ABSTRACT_SOURCE(PoMesh1DFilter)
PO_NODE_SOURCE(PoPeriodIndexFilter)
PO_NODE_SOURCE(PoIndexListFilter)
PO_NODE_SOURCE(PoPeriodFilter)
PO_NODE_SOURCE(PoCoordinateListFilter)

PoMesh1DFilter::PoMesh1DFilter() {
  PO_NODE_CONSTRUCTOR(PoMesh1DFilter);
  PO_NODE_CONSTRUCTED(PoMesh1DFilter);
}

PoMesh1DFilter::~PoMesh1DFilter() = default;

void PoMesh1DFilter::getIndices(int /*numNodes*/, PbArrayOfInt& indices) const { indices.empty(); }

PoMesh1DFilter::Axis PoMesh1DFilter::getAxis() const { return X; }

void PoMesh1DFilter::getCoordinates(float /*min*/, float /*max*/, PbArrayOfFloat& coordinates) const {
  coordinates.empty();
}

void PoMesh1DFilter::doAction(SoAction* action) { PoMesh1DFilterElement::set(action->getState(), this, this); }

PoPeriodIndexFilter::PoPeriodIndexFilter() {
  PO_NODE_CONSTRUCTOR(PoPeriodIndexFilter);
  PO_NODE_ADD_FIELD(period, (1));
  PO_NODE_CONSTRUCTED(PoPeriodIndexFilter);
}

PoPeriodIndexFilter::~PoPeriodIndexFilter() = default;

void PoPeriodIndexFilter::getIndices(int numNodes, PbArrayOfInt& indices) const {
  indices.empty();
  const int step = std::max(period.getValue(), 1);
  const int num = numNodes / step;
  for (int k = 0; k < num; ++k) indices.add(k * step);
}

PoIndexListFilter::PoIndexListFilter() {
  PO_NODE_CONSTRUCTOR(PoIndexListFilter);
  PO_NODE_ADD_EMPTY_MFIELD(index);
  PO_NODE_CONSTRUCTED(PoIndexListFilter);
}

PoIndexListFilter::~PoIndexListFilter() = default;

void PoIndexListFilter::getIndices(int numNodes, PbArrayOfInt& indices) const {
  indices.empty();
  for (int i = 0; i < index.getNum(); ++i)
    if (index[i] >= 0 && index[i] < numNodes) indices.add(index[i]);
}

PoPeriodFilter::PoPeriodFilter() {
  PO_NODE_CONSTRUCTOR(PoPeriodFilter);
  PO_NODE_ADD_FIELD(period, (1));
  PO_NODE_ADD_FIELD(axis, (X));
  PO_NODE_DEFINE_ENUM_VALUE(Axis, X);
  PO_NODE_DEFINE_ENUM_VALUE(Axis, Y);
  PO_NODE_SET_ENUM_TYPE(axis, Axis);
  PO_NODE_CONSTRUCTED(PoPeriodFilter);
}

PoPeriodFilter::~PoPeriodFilter() = default;

PoMesh1DFilter::Axis PoPeriodFilter::getAxis() const { return axis.getValue() == X ? X : Y; }

void PoPeriodFilter::getCoordinates(float min, float max, PbArrayOfFloat& coordinates) const {
  constexpr int kMaxNum = 1 << 20;
  coordinates.empty();
  const double step = period.getValue();
  if (!(step > 0) || !std::isfinite(min) || !std::isfinite(max)) return;
  for (int k = 0; k < kMaxNum; ++k) {
    const float coordinate = k ? static_cast<float>(min + k * step) : min;  // a running sum would drift
    if (!(coordinate <= max)) return;
    // A period below the spacing of floats gives some of them several times.
    if (k == 0 || coordinate > coordinates[coordinates.getNum() - 1]) coordinates.add(coordinate);
  }
}

PoCoordinateListFilter::PoCoordinateListFilter() {
  PO_NODE_CONSTRUCTOR(PoCoordinateListFilter);
  PO_NODE_ADD_EMPTY_MFIELD(coord);
  PO_NODE_ADD_FIELD(axis, (X));
  PO_NODE_DEFINE_ENUM_VALUE(Axis, X);
  PO_NODE_DEFINE_ENUM_VALUE(Axis, Y);
  PO_NODE_SET_ENUM_TYPE(axis, Axis);
  PO_NODE_CONSTRUCTED(PoCoordinateListFilter);
}

PoCoordinateListFilter::~PoCoordinateListFilter() = default;

PoMesh1DFilter::Axis PoCoordinateListFilter::getAxis() const { return axis.getValue() == X ? X : Y; }

void PoCoordinateListFilter::getCoordinates(float min, float max, PbArrayOfFloat& coordinates) const {
  coordinates.empty();
  for (int i = 0; i < coord.getNum(); ++i)
    if (coord[i] >= min && coord[i] <= max) coordinates.add(coord[i]);
}
