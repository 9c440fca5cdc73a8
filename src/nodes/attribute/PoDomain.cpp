#include <Ormelle/PoDomain.h>

#include <Inventor/SbBox3f.h>
#include <Inventor/actions/SoAction.h>
#include <Ormelle/PoDomainElement.h>

#include "nodes/attribute/PiEnumField.h"
#include "nodes/attribute/PiFieldWatch.h"

PO_NODE_SOURCE(PoDomain)

PoDomain::PoDomain() {
  using enum PbDomain::TransformType;
  PO_NODE_CONSTRUCTOR(PoDomain);
  PO_NODE_ADD_FIELD(min, (0, 0, 0));
  PO_NODE_ADD_FIELD(max, (1, 1, 1));
  PO_NODE_ADD_FIELD(transformType, (SCALE_X_FIXED));
  PO_NODE_DEFINE_ENUM_VALUE(TransformType, TRANSFORM_01);
  PO_NODE_DEFINE_ENUM_VALUE(TransformType, SCALE_X_FIXED);
  PO_NODE_DEFINE_ENUM_VALUE(TransformType, SCALE_Y_FIXED);
  PO_NODE_DEFINE_ENUM_VALUE(TransformType, SCALE_Z_FIXED);
  PO_NODE_DEFINE_ENUM_VALUE(TransformType, SCALE_MAX_XYZ_FIXED);
  PO_NODE_SET_ENUM_TYPE(transformType, TransformType);
  PO_NODE_CONSTRUCTED(PoDomain);
  m_boxWatch = std::make_unique<PiFieldWatch>(min, max);
  m_typeWatch = std::make_unique<PiFieldWatch>(transformType);
}

PoDomain::~PoDomain() = default;

void PoDomain::setValues(const SbVec2f& boxMin, const SbVec2f& boxMax, PbDomain::BoundingBoxType type) {
  PbDomain box = boxOfFields();
  box.setDomain(boxMin[0], boxMin[1], boxMax[0], boxMax[1], type);
  setFields(box);
}

void PoDomain::setValues(const SbVec3f& boxMin, const SbVec3f& boxMax, PbDomain::BoundingBoxType type) {
  PbDomain box = boxOfFields();
  box.setDomain(boxMin[0], boxMin[1], boxMin[2], boxMax[0], boxMax[1], boxMax[2], type);
  setFields(box);
}

SoTransform* PoDomain::getTransform() {
  updateDomain();
  return m_domain.getTransform();
}

SoMatrixTransform* PoDomain::getMatrixTransform() {
  updateDomain();
  return m_domain.getMatrixTransform();
}

void PoDomain::doAction(SoAction* action) {
  updateDomain();
  PoDomainElement::set(action->getState(), this, &m_domain);
}

void PoDomain::updateDomain() {
  if (m_boxWatch->take()) setBox(m_domain);
  if (m_typeWatch->take()) {
    const auto type = PiEnumField::get(transformType, PbDomain::SCALE_MAX_XYZ_FIXED, m_domain.getTransformType());
    // Its kits only make a new transform for this one, and keep their geometry.
    if (type != m_domain.getTransformType()) m_domain.setTransformType(type);
  }
}

void PoDomain::setBox(PbDomain& domain) const {
  const SbVec3f& lower = min.getValue();
  const SbVec3f& upper = max.getValue();
  domain.setDomain(lower[0], lower[1], lower[2], upper[0], upper[1], upper[2], PbDomain::BOX_AS_GIVEN);
}

PbDomain PoDomain::boxOfFields() const {
  PbDomain box(m_domain);
  setBox(box);
  return box;
}

void PoDomain::setFields(const PbDomain& domain) {
  SbBox3f box;
  domain.getDomain(box);
  if (min.getValue() != box.getMin()) min = box.getMin();
  if (max.getValue() != box.getMax()) max = box.getMax();
}
