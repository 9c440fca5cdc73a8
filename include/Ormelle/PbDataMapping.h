#ifndef ORMELLE_PBDATAMAPPING_H
#define ORMELLE_PBDATAMAPPING_H

#include <atomic>

#include <Inventor/SbColor.h>

#include <Ormelle/PbBase.h>

/// Turns a scalar value into a colour and a transparency.
///
/// There are three kinds: linear between two points (PbLinearDataMapping), any function of the application
/// (PbNonLinearDataMapping) and a table of levels (PbNonLinearDataMapping2). All share thresholds: at or beyond one the
/// result is its colour or, if it has none, null, which tells a representation to leave that part out. A value that is
/// no number has no colour, whatever the thresholds and functions say.
///
/// Colours are RGB or HLS; HLS triples are ordered hue, lightness, saturation, each in 0..1. A pointer returned is
/// valid up to the next call for any mapping, so mappings belong to one thread at a time.
///
/// Every setter announces `OBJECT_CHANGE`, but for the exceptions stated.
class ORMELLE_API PbDataMapping : public PbBase {
 public:
  enum ClassType {
    LINEAR = 1,      ///< PbLinearDataMapping
    NON_LINEAR = 2,  ///< PbNonLinearDataMapping
    NON_LINEAR2 = 3  ///< PbNonLinearDataMapping2
  };
  virtual ClassType getClassType() const = 0;

  /// The colour of `value`; null if it has none. With thresholds passed over and a transparency wanted, `transparency`
  /// is set too (0 opaque to 1), whether transparency is enabled or not; for what is no number it is 1.
  /// @{
  const SbColor* getRGBColor(float value) const { return value == value ? computeColor(value) : nullptr; }
  const SbColor* getRGBColor(float value, float& transparency) const {
    if (value == value) return computeColor(value, transparency);
    transparency = 1;
    return nullptr;
  }
  const float* getHLSColor(float value) const;
  const float* getHLSColor(float value, float& transparency) const;
  /// @}

  /// Values at or below the minimum threshold, and those at or above the maximum, get its colour; the form without a
  /// colour cuts them off. Announced only while that threshold is enabled. At first 0 and 1, without colours.
  /// @{
  void setMinThreshold(float value);
  void setMinThreshold(float value, const SbColor& color, float transparency = 0);
  void setMinThreshold(float value, const float hls[3], float transparency = 0);
  void setMaxThreshold(float value);
  void setMaxThreshold(float value, const SbColor& color, float transparency = 0);
  void setMaxThreshold(float value, const float hls[3], float transparency = 0);
  /// @}
  /// The threshold and its colour, null if it has none.
  /// @{
  const SbColor* getMinRGBThreshold(float& value) const;
  const SbColor* getMinRGBThreshold(float& value, float& transparency) const;
  const float* getMinHLSThreshold(float& value) const;
  const float* getMinHLSThreshold(float& value, float& transparency) const;
  const SbColor* getMaxRGBThreshold(float& value) const;
  const SbColor* getMaxRGBThreshold(float& value, float& transparency) const;
  const float* getMaxHLSThreshold(float& value) const;
  const float* getMaxHLSThreshold(float& value, float& transparency) const;
  /// @}
  /// Off at first.
  void enableThresholds(int min, int max);
  void thresholdsEnabled(int& min, int& max) const;

  /// Whether representations use the transparencies; off at first.
  void enableTransparency(int enabled);
  int isTransparencyEnabled() const { return m_isTransparencyEnabled; }
  /// The transparency from which on a representation leaves a part out, 0.95 at first. Not announced.
  void setTransparencyValueDeletedParts(float transparency) { m_transparencyValueDeletedParts = transparency; }
  float getTransparencyValueDeletedParts() const { return m_transparencyValueDeletedParts; }

  /// Differs between any two mappings and after every change, so that a cache needs no connection.
  unsigned getId() const { return m_id; }

 protected:
  PbDataMapping() = default;
  PbDataMapping(const PbDataMapping& other);
  PbDataMapping& operator=(const PbDataMapping&) = delete;
  /// Copies the state of this class without telling anybody: the subclass calls PbBase::operator= when it is done.
  void copySettings(const PbDataMapping& other);

  /// The colour of `value`, a number; null if it has none. Asks isBeyondThreshold() first.
  /// @{
  virtual const SbColor* computeColor(float value, float& transparency) const = 0;
  virtual const SbColor* computeColor(float value) const = 0;
  /// @}
  /// Whether a threshold decides about `value`; then `color` is its colour or null.
  bool isBeyondThreshold(float value, const SbColor*& color) const {
    const Threshold* threshold = thresholdOf(value);
    if (threshold) color = threshold->hasColor ? &threshold->color : nullptr;
    return threshold != nullptr;
  }
  bool isBeyondThreshold(float value, const SbColor*& color, float& transparency) const {
    const Threshold* threshold = thresholdOf(value);
    if (!threshold) return false;
    color = threshold->hasColor ? &threshold->color : nullptr;
    transparency = threshold->transparency;
    return true;
  }
  /// What computeColor() fills and returns.
  SbColor* getResultColor() const { return &m_resultColor; }

  /// The colour at `v` on the line through `c1` at `v1` and `c2` at `v2`, each channel kept in 0..1. `v` may lie beyond
  /// both. If `v1` equals `v2` the result is `c1`.
  /// @{
  static void colorInterpolation(const SbColor& c1, float v1, const SbColor& c2, float v2, float v, SbColor* result);
  static void colorInterpolation(const SbColor& c1, float t1, float v1, const SbColor& c2, float t2, float v2, float v,
                                 SbColor* result, float& transparency);
  /// @}

  /// Announces `OBJECT_CHANGE`.
  void notifyObjectChange() {
    setChangeType(OBJECT_CHANGE);
    notifyChange();
  }
  /// Gives the object a new identifier and tells the connections.
  void notifyChange() override;

 private:
  struct Threshold {
    float value;
    float transparency = 0;
    SbColor color = SbColor(0, 0, 0);
    int isEnabled = 0;
    int hasColor = 0;
  };

  const Threshold* thresholdOf(float value) const {
    if (m_minThreshold.isEnabled && value <= m_minThreshold.value) return &m_minThreshold;
    if (m_maxThreshold.isEnabled && value >= m_maxThreshold.value) return &m_maxThreshold;
    return nullptr;
  }
  void setThreshold(Threshold& threshold, float value, const SbColor* color, float transparency);
  static const SbColor* colorOf(const Threshold& threshold, float& value, float* transparency);

  static std::atomic<unsigned> sm_nextUniqueId;

  float m_transparencyValueDeletedParts = 0.95f;
  mutable SbColor m_resultColor;
  int m_isTransparencyEnabled = 0;
  unsigned m_id = sm_nextUniqueId++;
  Threshold m_minThreshold{0};
  Threshold m_maxThreshold{1};
};

#endif
