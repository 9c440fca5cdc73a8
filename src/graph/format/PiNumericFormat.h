#ifndef ORMELLE_PINUMERICFORMAT_H
#define ORMELLE_PINUMERICFORMAT_H

class PbNumericDisplayFormat;

/// Turns numbers into text with a common power of ten and a common number of decimals, whatever the locale.
///
/// A new format writes integers.
class PiNumericFormat {
 public:
  /// What getString() needs, with the closing 0.
  static constexpr int TEXT_SIZE = 100;
  /// As many decimals as the smallest float needs.
  static constexpr int MAX_DECIMALS = 45;

  void setFormatInteger(int tenPower);
  /// `numDecimal` is brought into 0 to `MAX_DECIMALS`.
  void setFormatFloatingPoint(int numDecimal, int tenPower);
  /// The power of ten, a multiple of three, and the fewest decimals that still show values from `a` to `b` in steps of
  /// `delta`. With `round` non-zero, three significant figures of the step and of `a` are enough. Signs don't matter;
  /// what isn't finite counts as 0.
  void setFormatAuto(float a, float b, float delta, int round);
  /// As `format` says; null is automatic, from the other arguments.
  void setFormat(const PbNumericDisplayFormat* format, float a, float b, float delta, int round);
  /// The same for `n` values with their mean step. Values that aren't finite are passed over; without a value, or with
  /// null, nothing changes.
  void setFormat(const PbNumericDisplayFormat* format, int n, const float* values, int round);

  /// Writes `value` divided by 10 to the power, closed by 0, in at most `TEXT_SIZE` characters. Without decimals it is
  /// rounded half away from zero. A text of zeros has no sign. Numbers too long for the text are written with an
  /// exponent; the rest reads "inf", "-inf" and "nan".
  void getString(float value, char* out) const;

  int getTenPower() const { return m_tenPower; }
  int getNumDecimal() const { return m_numDecimal; }
  int isFloatingPointFormat() const { return m_isFloatingPoint; }

 private:
  int m_isFloatingPoint = 0;
  int m_tenPower = 0;
  int m_numDecimal = 0;
};

#endif
