#include <Ormelle/PoChart.h>

#include <Inventor/caches/SoCache.h>
#include <Inventor/misc/SoState.h>
#include <Ormelle/PbDataMapping.h>
#include <Ormelle/PbMesh1D.h>
#include <Ormelle/PoDataMappingElement.h>
#include <Ormelle/PoMesh1DFilterElement.h>
#include <Ormelle/PoMesh1DHintsElement.h>
#include <Ormelle/PoMeshElement.h>

#include "graph/chart/PiDomainStretch.h"
#include "graph/frame/PiConnectedSlot.h"
#include "nodes/attribute/PiEnumField.h"

PO_KIT_ABSTRACT_SOURCE(PoChart)

struct PoChart::Inputs {
  explicit Inputs(const PoBase* kit) : slots(kit) {}

  PiConnectedSlots slots;
  PiConnectedSlot<PbMesh1D> mesh{slots};
  PiConnectedSlot<PbDataMapping> mapping{slots};
};

PoChart::PoChart() : m_chartInputs(std::make_unique<Inputs>(this)) {
  PO_KIT_CONSTRUCTOR(PoChart);
  PO_KIT_DEFINE_ENUM_VALUE(ColorBinding, INHERITED);
  PO_KIT_DEFINE_ENUM_VALUE(ColorBinding, PER_PART);
  PO_KIT_DEFINE_ENUM_VALUE(ColorBinding, PER_VERTEX);
  PO_KIT_DEFINE_ENUM_VALUE(ColorSource, COLOR_MAPPING_SOURCE);
  PO_KIT_DEFINE_ENUM_VALUE(ColorSource, COLOR_MATERIAL_SOURCE);
  PO_KIT_DEFINE_ENUM_VALUE(ColorSource, COLOR_NONE_SOURCE);
  PO_KIT_ADD_FIELD(colorBinding, (INHERITED));
  PO_KIT_ADD_FIELD(material, (nullptr));
  PO_KIT_ADD_FIELD(colorValuesIndex, (0));
  PO_KIT_ADD_FIELD(yValuesIndex, (0));
  PO_KIT_ADD_FIELD(colorSource, (COLOR_MAPPING_SOURCE));
  PO_KIT_SET_ENUM_TYPE(colorBinding, ColorBinding);
  PO_KIT_SET_ENUM_TYPE(colorSource, ColorSource);
  PO_KIT_CONSTRUCTED(PoChart);

  for (SoField* field :
       std::initializer_list<SoField*>{&colorBinding, &material, &colorValuesIndex, &yValuesIndex, &colorSource})
    watchField(*field);
}

PoChart::~PoChart() = default;

PoChart::ColorBinding PoChart::getColorBinding() const { return PiEnumField::get(colorBinding, PER_PART, INHERITED); }

PoChart::ColorSource PoChart::getColorSource() const {
  return PiEnumField::get(colorSource, COLOR_NONE_SOURCE, COLOR_MATERIAL_SOURCE);
}

void PoChart::preRebuild() {
  inherited::preRebuild();
  if (isStateValid()) {
    m_chartInputs->mesh.set(PoMeshElement::getMesh1D(getState()));
    m_chartInputs->mapping.set(const_cast<PbDataMapping*>(PoDataMappingElement::get(getState())));
  }
  if (!isStateValid() || isCacheValid() || !getAllCache()) return;
  for (const int index : {PoMeshElement::getClassStackIndex(), PoDataMappingElement::getClassStackIndex(),
                          PoMesh1DFilterElement::getClassStackIndex(), PoMesh1DHintsElement::getClassStackIndex()})
    if (getState()->isElementEnabled(index)) getAllCache()->addElement(getState()->getConstElement(index));
}

int PoChart::isPostponed() {
  if (isStateValid()) return 0;
  if (getAllCache()) getAllCache()->invalidate();
  return 1;
}

const PbMesh1D* PoChart::currentMesh() const { return m_chartInputs->mesh.get(); }

SbVec3f PoChart::stretch() const { return PiDomainStretch::of(*getDomain(), isDomainTransformEnabled() != 0); }

void PoChart::basicObjectChange(PbBase* object) {
  inherited::basicObjectChange(object);
  PiConnectedSlots& slots = m_chartInputs->slots;
  if (!slots.holds(object)) return;
  if (object->getChangeType() == PbBase::OBJECT_DELETED) slots.forget(object);
  PbBase* held = object;
  manageBasicObjectChange(object, &held);
}

void PoChart::addElementsAllCaches() {
  inherited::addElementsAllCaches();
  PoMeshElement::getMesh1D(getState());
  PoDataMappingElement::get(getState());
  PoMesh1DFilterElement::get(getState());
  PoMesh1DHintsElement::get(getState());
}
