#ifndef ORMELLE_PBLINEARDATAMAPPING_H
#define ORMELLE_PBLINEARDATAMAPPING_H

#include <Ormelle/PbDataMapping.h>

/// Colours on the straight line through two points; at first black at 0 and white at 1, both opaque.
///
/// Values beyond the two points are extrapolated until a channel reaches 0 or 1. If both points have the same value,
/// every value gets the first colour.
class ORMELLE_API PbLinearDataMapping : public PbDataMapping {
 public:
  PbLinearDataMapping() = default;
  PbLinearDataMapping(const PbLinearDataMapping& other) = default;
  PbLinearDataMapping& operator=(const PbLinearDataMapping& other);

  ClassType getClassType() const override { return LINEAR; }

  /// The forms without transparencies set both to 0.
  /// @{
  void setValues(float value1, const SbColor& color1, float value2, const SbColor& color2);
  void setValues(float value1, const SbColor& color1, float transparency1, float value2, const SbColor& color2,
                 float transparency2);
  void setValues(float value1, const float hls1[3], float value2, const float hls2[3]);
  void setValues(float value1, const float hls1[3], float transparency1, float value2, const float hls2[3],
                 float transparency2);
  /// @}
  void getValues(float& value1, SbColor& color1, float& value2, SbColor& color2) const;
  void getValues(float& value1, SbColor& color1, float& transparency1, float& value2, SbColor& color2,
                 float& transparency2) const;
  void getValues(float& value1, float hls1[3], float& value2, float hls2[3]) const;
  void getValues(float& value1, float hls1[3], float& transparency1, float& value2, float hls2[3],
                 float& transparency2) const;

 protected:
  const SbColor* computeColor(float value, float& transparency) const override;
  const SbColor* computeColor(float value) const override;

 private:
  struct Point {
    float value;
    float transparency;
    SbColor color;
  };
  Point m_point1{0, 0, SbColor(0, 0, 0)};
  Point m_point2{1, 0, SbColor(1, 1, 1)};
};

#endif
