#ifndef ORMELLE_PODATEFORMATMAPPING_H
#define ORMELLE_PODATEFORMATMAPPING_H

#include <memory>

#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFString.h>

#include <Ormelle/PbDateFormatMapping.h>
#include <Ormelle/PoNode.h>

class PiFieldWatch;

/// Says which dates the coordinates of the kits behind it stand for, and how dates are written; puts a
/// PbDateFormatMapping of its own in PoDateFormatMappingElement.
///
/// A format or a date that can't be read leaves the former format or mapping in force. The dates are read by the format
/// of the node, also when only that changes.
/// @code
/// auto* dates = new PoDateFormatMapping;
/// dates->date2 = "31-12-70";
/// dates->coord2 = 364;
/// separator->addChild(dates);
/// separator->addChild(timeAxis);
/// @endcode
class ORMELLE_API PoDateFormatMapping : public PoNode {
  PO_NODE_HEADER(PoDateFormatMapping, PoNode);

 public:
  SoSFString date1;   ///< "1-01-70" by default
  SoSFString date2;   ///< "2-01-70" by default
  SoSFFloat coord1;   ///< coordinate of `date1`, 0 by default
  SoSFFloat coord2;   ///< coordinate of `date2`, 1 by default
  SoSFString format;  ///< "dmy" by default, see PbDateFormatMapping

  PoDateFormatMapping();

  /// The coordinate of `date`, which is written in the format of the node. Returns 0 and leaves `coord` if the date
  /// can't be read, else 1.
  int getCoordinate(const char* date, float& coord);

  void doAction(SoAction* action) override;

 protected:
  ~PoDateFormatMapping() override;

 private:
  void updateDateFormatMapping();

  PbDateFormatMapping m_mapping;
  std::unique_ptr<PiFieldWatch> m_formatWatch;
  std::unique_ptr<PiFieldWatch> m_dateWatch;
};

#endif
