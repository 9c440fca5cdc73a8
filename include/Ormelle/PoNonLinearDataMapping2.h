#ifndef ORMELLE_PONONLINEARDATAMAPPING2_H
#define ORMELLE_PONONLINEARDATAMAPPING2_H

#include <Inventor/fields/SoMFColor.h>
#include <Inventor/fields/SoMFFloat.h>
#include <Inventor/fields/SoSFEnum.h>

#include <Ormelle/PoDataMapping.h>

/// Colours from a table of levels; its object is a PbNonLinearDataMapping2.
///
/// The values may be given in any order: each takes its colour and transparency along. Those that are no number are
/// left out. While the fields make no table, for want of a value or of colours, the former one stays in force, and too
/// few colours are reported through PoDebugError when the node is traversed.
/// @code
/// auto* mapping = new PoNonLinearDataMapping2;
/// mapping->type = PoNonLinearDataMapping2::NON_LINEAR_PER_LEVEL;
/// mapping->value.setValues(0, 2, levels);
/// mapping->color.setValues(0, 3, colors);
/// separator->insertChild(mapping, 0);
/// @endcode
class ORMELLE_API PoNonLinearDataMapping2 : public PoDataMapping {
  PO_NODE_HEADER(PoNonLinearDataMapping2, PoDataMapping);

 public:
  enum Type {
    NON_LINEAR_PER_LEVEL = 0,  ///< one colour below, between and above the values: one more than values
    LINEAR_PER_LEVEL = 1       ///< colours change evenly from one value to the next: as many as values
  };

  SoSFEnum type;           ///< a Type, `LINEAR_PER_LEVEL` by default
  SoMFFloat value;         ///< 0, 1 by default
  SoMFColor color;         ///< black, white by default; those beyond the number needed aren't used
  SoMFFloat transparency;  ///< one for each colour, empty by default; those that are missing are 0

  PoNonLinearDataMapping2();

 protected:
  ~PoNonLinearDataMapping2() override;

  int updateValues() override;

 private:
  std::unique_ptr<PiFieldWatch> m_tableWatch;
};

#endif
