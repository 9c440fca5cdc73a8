#ifndef ORMELLE_PBNONLINEARDATAMAPPING_H
#define ORMELLE_PBNONLINEARDATAMAPPING_H

#include <Ormelle/PbDataMapping.h>

/// Colours by a function of the application; without one the ramp from black at 0 to white at 1, opaque.
///
/// A colour function answers null for a value that has no colour. What it points to must stay valid until it is called
/// again; it is copied at once. It isn't asked about values beyond a threshold or about what is no number. Setting one
/// of the colour functions, null included, clears the others and their data; the same holds for the two forms of the
/// transparency function. When what a function answers changes, announce it with `touch()`.
class ORMELLE_API PbNonLinearDataMapping : public PbDataMapping {
 public:
  typedef const SbColor* RGBFunction(float value);
  typedef const SbColor* RGBDataFunction(void* userData, float value);
  typedef const float* HLSFunction(float value);
  typedef const float* HLSDataFunction(void* userData, float value);
  typedef float TransparencyFunction(float value);
  typedef float TransparencyDataFunction(void* userData, float value);

  PbNonLinearDataMapping() = default;
  PbNonLinearDataMapping(const PbNonLinearDataMapping& other) = default;
  PbNonLinearDataMapping& operator=(const PbNonLinearDataMapping& other);

  ClassType getClassType() const override { return NON_LINEAR; }

  void setRGBFunction(RGBFunction* function);
  void setRGBFunction(RGBDataFunction* function, void* userData);
  void setHLSFunction(HLSFunction* function);
  void setHLSFunction(HLSDataFunction* function, void* userData);
  void setTransparencyFunction(TransparencyFunction* function);
  void setTransparencyFunction(TransparencyDataFunction* function, void* userData);

 protected:
  const SbColor* computeColor(float value, float& transparency) const override;
  const SbColor* computeColor(float value) const override;

 private:
  /// At most one function is set.
  struct ColorSource {
    RGBFunction* rgb = nullptr;
    RGBDataFunction* rgbData = nullptr;
    HLSFunction* hls = nullptr;
    HLSDataFunction* hlsData = nullptr;
    void* userData = nullptr;
  };
  struct TransparencySource {
    TransparencyFunction* plain = nullptr;
    TransparencyDataFunction* withData = nullptr;
    void* userData = nullptr;
  };

  void setSource(const ColorSource& function);
  void setSource(const TransparencySource& function);
  const SbColor* colorOf(float value) const;

  ColorSource m_color;
  TransparencySource m_transparency;
};

#endif
