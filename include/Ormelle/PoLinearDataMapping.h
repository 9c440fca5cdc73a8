#ifndef ORMELLE_POLINEARDATAMAPPING_H
#define ORMELLE_POLINEARDATAMAPPING_H

#include <Ormelle/PoDataMapping.h>

/// Colours that change evenly from one value to another; its object is a PbLinearDataMapping.
///
/// Beyond the two values the ramp goes on until a channel is 0 or 1. Values that aren't finite leave the former ramp in
/// force.
/// @code
/// auto* mapping = new PoLinearDataMapping;
/// mapping->value2 = 100;
/// mapping->color1.setValue(0, 0, 1);
/// mapping->color2.setValue(1, 0, 0);
/// separator->insertChild(mapping, 0);
/// @endcode
class ORMELLE_API PoLinearDataMapping : public PoDataMapping {
  PO_NODE_HEADER(PoLinearDataMapping, PoDataMapping);

 public:
  SoSFFloat value1;         ///< 0 by default
  SoSFColor color1;         ///< black by default
  SoSFFloat transparency1;  ///< 0 by default
  SoSFFloat value2;         ///< 1 by default
  SoSFColor color2;         ///< white by default
  SoSFFloat transparency2;  ///< 0 by default

  PoLinearDataMapping();

 protected:
  ~PoLinearDataMapping() override;

  int updateValues() override;

 private:
  std::unique_ptr<PiFieldWatch> m_rampWatch;
};

#endif
