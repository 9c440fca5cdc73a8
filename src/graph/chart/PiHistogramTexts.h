#ifndef ORMELLE_PIHISTOGRAMTEXTS_H
#define ORMELLE_PIHISTOGRAMTEXTS_H

#include <string>
#include <vector>

#include <Ormelle/PoHistogram.h>

#include "graph/chart/PiBarTexts.h"

struct PiHistogramState;

/// The fields that style one kind of texts of a bar chart.
struct PiHistogramTextFields {
  const char* part;
  const SoSFEnum& position;
  const SoSFEnum& path;
  const SoSFString& fontName;
  const SoSFFloat& fontSize;
};

/// Builds the texts of one rebuild into the parts of a bar chart; what is built first has room first.
class PiHistogramTexts {
 public:
  PiHistogramTexts(PoHistogram& kit, const PiHistogramState& state, const SbBox2f& frame);

  /// Whether a kind of texts is shown, where `depends` says what `VISIBILITY_DEPEND` means.
  static bool isShown(const SoSFEnum& visibility, bool depends);
  /// What a field says, or what `POS_DEPEND` means.
  static PoHistogram::Position positionOf(const SoSFEnum& position, PoHistogram::Position depends);

  /// One text at a bar, or at what reaches as far as one; a text that is to stay within isn't shown where it doesn't
  /// fit.
  void add(const std::string& text, float low, float high, float foot, float top, PoHistogram::Position position,
           bool isWithin = false);
  /// Builds what was added since into a part and sets its font; `width` is what each has along the axis, 0: any.
  /// Returns how far across the axis the texts reach downwards, or the largest float without any.
  float build(const PiHistogramTextFields& fields, float width);

  /// The values as they read, over all of them; empty for what isn't defined.
  static std::vector<std::string> valueTexts(const PiHistogramState& state, const std::string& added);
  /// The sums of the groups, in the same form.
  static std::vector<std::string> sumTexts(const PiHistogramState& state);

 private:
  PoHistogram& m_kit;
  const PiHistogramState& m_state;
  PiBarTexts m_placer;
  std::vector<PiBarTexts::Text> m_texts;
};

#endif
