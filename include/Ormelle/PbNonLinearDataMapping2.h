#ifndef ORMELLE_PBNONLINEARDATAMAPPING2_H
#define ORMELLE_PBNONLINEARDATAMAPPING2_H

#include <vector>

#include <Ormelle/PbDataMapping.h>

/// Colours by a table of levels; at first black at 0 and white at 1, opaque, interpolated.
///
/// A colour costs the logarithm of the number of levels.
class ORMELLE_API PbNonLinearDataMapping2 : public PbDataMapping {
 public:
  enum Type {
    /// One constant colour between two levels, so one colour more than levels. A value up to the first level gets the
    /// first colour, one from the last level on the last, any other the colour of its interval; a value on an inner
    /// level belongs to the interval above it.
    NON_LINEAR_PER_LEVEL = 0,
    /// One colour for each level, interpolated between them. Beyond the levels the first or last interval is
    /// extrapolated until a channel reaches 0 or 1. With a single level all values get its colour.
    LINEAR_PER_LEVEL = 1
  };

  PbNonLinearDataMapping2();
  PbNonLinearDataMapping2(const PbNonLinearDataMapping2& other) = default;
  PbNonLinearDataMapping2& operator=(const PbNonLinearDataMapping2& other);

  ClassType getClassType() const override { return NON_LINEAR2; }

  /// Copies `numValues` levels and their colours, `numValues + 1` of them for `NON_LINEAR_PER_LEVEL`, and sorts them by
  /// value; equal values keep their order, and the colour above the last level stays last. Transparencies are as many
  /// as colours; none or null is opaque. `hls` has three floats for each colour.
  ///
  /// Levels that are no number are left out with their colour. If none is left, `numValues` isn't positive, an array is
  /// null or the type is unknown, the table stays as it was.
  /// @{
  void setValues(Type type, int numValues, const float* values, const SbColor* colors);
  void setValues(Type type, int numValues, const float* values, const SbColor* colors, const float* transparencies);
  void setValues(Type type, int numValues, const float* values, const float* hls);
  void setValues(Type type, int numValues, const float* values, const float* hls, const float* transparencies);
  /// @}

  /// The sorted table. Lists are owned by the mapping and valid until it changes, that of HLS triples until the list is
  /// asked for again.
  /// @{
  const float* getValuesList(int& num) const;
  const SbColor* getRGBColorsList(int& num) const;
  const float* getHLSColorsList(int& num) const;
  const float* getTransparencyList(int& num) const;
  /// @}
  Type getType() const { return m_type; }

 protected:
  const SbColor* computeColor(float value, float& transparency) const override;
  const SbColor* computeColor(float value) const override;

 private:
  int constantColorOf(float value) const;
  int intervalOf(float value) const;

  Type m_type = LINEAR_PER_LEVEL;
  std::vector<float> m_values;
  std::vector<SbColor> m_colors;
  std::vector<float> m_transparencies;
  mutable std::vector<float> m_hls;
};

#endif
