#ifndef ORMELLE_PODOMAIN_H
#define ORMELLE_PODOMAIN_H

#include <memory>

#include <Inventor/SbVec2f.h>
#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFVec3f.h>

#include <Ormelle/PbDomain.h>
#include <Ormelle/PoNode.h>

class PiFieldWatch;

/// Gives the kits behind it the box of user coordinates that they are scaled by; puts a PbDomain of its own in
/// PoDomainElement.
///
/// A box whose maximum isn't above its minimum on every axis is ignored: the former one stays in force.
/// @code
/// auto* domain = new PoDomain;
/// domain->min.setValue(1990, 0, 0);
/// domain->max.setValue(2000, 5e6f, 1);
/// separator->addChild(domain);
/// separator->addChild(axis);
/// @endcode
class ORMELLE_API PoDomain : public PoNode {
  PO_NODE_HEADER(PoDomain, PoNode);

 public:
  SoSFVec3f min;           ///< (0, 0, 0) by default
  SoSFVec3f max;           ///< (1, 1, 1) by default
  SoSFEnum transformType;  ///< a PbDomain::TransformType, `SCALE_X_FIXED` by default

  PoDomain();

  /// Set the fields to the box made of this one. The first form sets z to 0..1. A box that isn't one changes nothing.
  /// @{
  void setValues(const SbVec2f& boxMin, const SbVec2f& boxMax, PbDomain::BoundingBoxType type = PbDomain::BOX_AS_GIVEN);
  void setValues(const SbVec3f& boxMin, const SbVec3f& boxMax, PbDomain::BoundingBoxType type = PbDomain::BOX_AS_GIVEN);
  /// @}

  /// The transform of the domain as a new node, which the caller owns; its reference count is 0.
  /// @{
  SoTransform* getTransform();
  SoMatrixTransform* getMatrixTransform();
  /// @}

  void doAction(SoAction* action) override;

 protected:
  ~PoDomain() override;

 private:
  void updateDomain();
  /// Ignored by `domain` if the fields hold no box.
  void setBox(PbDomain& domain) const;
  PbDomain boxOfFields() const;
  void setFields(const PbDomain& domain);

  PbDomain m_domain;
  std::unique_ptr<PiFieldWatch> m_boxWatch;
  std::unique_ptr<PiFieldWatch> m_typeWatch;
};

#endif
