#ifndef ORMELLE_PBNUMERICDISPLAYFORMAT_H
#define ORMELLE_PBNUMERICDISPLAYFORMAT_H

#include <Ormelle/PbBase.h>

/// How axes, legends and labels write numbers: by themselves, or with the decimals and the power of ten given here.
///
/// With a power of ten p every number is written divided by 10^p, and the text's owner shows "x 10^p" once beside it:
/// 1500 with power 3 and one decimal reads "1.5". Texts never depend on the locale: the decimal mark is a point.
///
/// Read by axes, value legends, histograms, pies and contour labels; carried by `PoNumericDisplayFormat`.
class ORMELLE_API PbNumericDisplayFormat : public PbBase {
 public:
  enum FormatType {
    AUTO_FORMAT = 0,    ///< power (a multiple of three) and decimals are chosen from the values; the rest is ignored
    FLOAT_FORMAT = 1,   ///< the given power and number of decimals
    INTEGER_FORMAT = 2  ///< the given power, rounded half away from zero, no decimals
  };

  /// `AUTO_FORMAT`.
  PbNumericDisplayFormat() = default;
  PbNumericDisplayFormat(FormatType type, int tenPower, int numDecimal);
  PbNumericDisplayFormat(const PbNumericDisplayFormat& other) = default;
  /// Announces `OBJECT_CHANGE` once the values are in.
  PbNumericDisplayFormat& operator=(const PbNumericDisplayFormat& other);

  /// Stores the values as they are and announces `OBJECT_CHANGE`. Where texts are made, `numDecimal` counts as at
  /// least 0 and at most 45, which shows the smallest float.
  void setFormat(FormatType type, int tenPower, int numDecimal);
  void getFormat(FormatType& type, int& tenPower, int& numDecimal) const;

 private:
  FormatType m_formatType = AUTO_FORMAT;
  int m_tenPower = 0;
  int m_numDecimal = 0;
};

#endif
