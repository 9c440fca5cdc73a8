#ifndef ORMELLE_POVALUELEGEND_H
#define ORMELLE_POVALUELEGEND_H

#include <Ormelle/PoLegend.h>

class PbDataMapping;
class PbIsovaluesList;
class PbNumericDisplayFormat;
struct PiValueLegendState;

/// Root of the legends that tell which values colours stand for.
///
/// The values are those of the isovalues in force, else what the data mapping is made of: round steps between the two
/// values of a linear one (or its thresholds, where they are stricter), the levels of a table. The colours are those
/// that the mapping gives to the values, so they are the colours of meshes that it colours.
///
/// Catalog behind that of PoLegend: the triple `multFactor`, the common power of ten of the texts.
class ORMELLE_API PoValueLegend : public PoLegend {
  PO_KIT_ABSTRACT_HEADER(PoValueLegend, PoLegend);
  PO_KIT_TRIPLE_HEADER(multFactor);

 public:
  SoSFString upperUndefString;  ///< for values that the upper threshold of the mapping cuts off; "UNDEF>" by default
  SoSFString lowerUndefString;  ///< "UNDEF<" by default
  SoSFUShort periodValue;       ///< every so many values are shown; 1 by default, 0 acts as 1
  SoSFUShort firstValue;        ///< the first one shown, counted from 1; 1 by default
  SoSFUShort lastValue;         ///< the last one; 32767 by default. Beyond the values it is their last

  /// What to use instead of what is on the traversal state; null goes back to that. Not owned.
  /// @{
  void setDataMapping(PbDataMapping* mapping);
  void setIsovaluesList(PbIsovaluesList* isovalues);
  void setFormat(PbNumericDisplayFormat* format);
  /// @}
  /// What was set, else during a traversal what is on the state, else null.
  /// @{
  const PbDataMapping* getDataMapping() const;
  const PbIsovaluesList* getIsovaluesList() const;
  const PbNumericDisplayFormat* getFormat() const;
  /// @}

 protected:
  PoValueLegend();
  ~PoValueLegend() override;

  /// Finds the values, in ascending order; what isn't finite is left out. Of more than 1024, so many are taken evenly.
  void computeValuesList();
  /// Makes `n` empty records of boxes.
  void newBoxRepresentationList(int n);
  void deleteBoxRepresentationList();
  /// Makes a box the one for what a threshold of the mapping cuts off; a negative index is none.
  void computeUndefBoxRepresentation(int lower, int upper);
  /// Gives a box its colour, or with `twoValues` one for each of its two values.
  void computeBoxColors(int box, int twoValues);
  /// Writes the power of ten that was chosen into `multFactor`, and takes its room away from the limits.
  void drawMultFactor(Plimit& limits);

  PiValueLegendState& values() { return *m_values; }
  const PiValueLegendState& values() const { return *m_values; }

  void preRebuild() override;
  void addElementsAllCaches() override;
  void copyContents(const SoFieldContainer* from, SbBool copyConnections) override;

 private:
  std::unique_ptr<PiValueLegendState> m_values;
};

#endif
