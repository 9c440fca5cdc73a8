#ifndef ORMELLE_PODATAMAPPING_H
#define ORMELLE_PODATAMAPPING_H

#include <memory>

#include <Inventor/fields/SoSFBool.h>
#include <Inventor/fields/SoSFColor.h>
#include <Inventor/fields/SoSFFloat.h>

#include <Ormelle/PoNode.h>

class PbDataMapping;
class PiFieldWatch;

/// Root of the nodes that give the kits behind them the colours of values; puts a PbDataMapping of its own in
/// PoDataMappingElement.
///
/// It holds what all mappings share. A value at or beyond an enabled threshold gets the threshold's colour or, when
/// that has none, no colour at all: kits then leave the part out.
/// @code
/// auto* mapping = new PoLinearDataMapping;
/// mapping->minThreshold = 0.2f;  // nothing is drawn up to 0.2
/// mapping->minThresholdEnabled = TRUE;
/// separator->addChild(mapping);
/// separator->addChild(contours);
/// @endcode
class ORMELLE_API PoDataMapping : public PoNode {
  PO_NODE_ABSTRACT_HEADER(PoDataMapping, PoNode);

 public:
  SoSFBool minThresholdEnabled;        ///< FALSE by default
  SoSFFloat minThreshold;              ///< 0 by default
  SoSFBool minThresholdHasColor;       ///< FALSE by default
  SoSFColor minThresholdColor;         ///< black by default
  SoSFFloat minThresholdTransparency;  ///< 0 by default
  SoSFBool maxThresholdEnabled;        ///< FALSE by default
  SoSFFloat maxThreshold;              ///< 1 by default
  SoSFBool maxThresholdHasColor;       ///< FALSE by default
  SoSFColor maxThresholdColor;         ///< black by default
  SoSFFloat maxThresholdTransparency;  ///< 0 by default
  SoSFBool transparencyEnabled;        ///< whether kits use the transparencies, FALSE by default
  /// Parts at least this transparent are taken out of a shape, 0.95 by default; see PoBase::deleteTransparencyParts().
  SoSFFloat transparencyValueDeletedParts;

  void doAction(SoAction* action) override;

 protected:
  /// Takes `mapping` over.
  explicit PoDataMapping(PbDataMapping* mapping);
  ~PoDataMapping() override;

  /// Brings the object up to the fields of the subclass. Returns whether it called a setter.
  virtual int updateValues();

  std::unique_ptr<PbDataMapping> m_mapping;

 private:
  void updateDataMapping();

  std::unique_ptr<PiFieldWatch> m_watch;
};

#endif
