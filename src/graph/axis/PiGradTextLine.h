#ifndef ORMELLE_PIGRADTEXTLINE_H
#define ORMELLE_PIGRADTEXTLINE_H

#include <vector>

#include <Ormelle/Plimit.h>

#include "graph/axis/PiAxisText.h"
#include "graph/axis/PiGradLegibility.h"

struct PiAxisState;

/// The gradation texts that stand on one line beside an axis: collected, measured, fitted, and built.
///
/// @code
/// PiGradTextLine line(state, fontName);
/// for (...) line.add(coord, PiTextRun(string));
/// line.setSize(PiAxisLayout::fitGradSize(path, line.maxWidth(), line.maxLetters(), interval, along), false);
/// line.makeLegible(true, 0);
/// line.build(y, group);
/// @endcode
class PiGradTextLine {
 public:
  /// For the axis of `state`, which must be resolved and outlive this.
  PiGradTextLine(PiAxisState& state, const SbString& fontName);

  /// Coordinates must rise or fall steadily.
  void add(float coord, const PiTextRun& run);

  int num() const { return static_cast<int>(m_coords.size()); }
  PoAxis::TextPath path() const { return m_path; }
  /// The greatest extent along the axis, at size 1.
  float maxWidth() const { return m_maxWidth; }
  int maxLetters() const { return m_maxLetters; }
  const PiTextBox& lastBox() const { return m_boxes.back(); }

  /// All texts of two lines of the same axis.
  void addMerged(const PiGradTextLine& a, const PiGradTextLine& b);

  /// In axis coordinates; `isFixed` if the application gave it.
  void setSize(float size, bool isFixed);
  float size() const { return m_choice.size; }
  /// The last pass, if the axis has it on: a smaller size, or, with `isThinned`, fewer texts. `firstMultiple` says
  /// which multiple of the step the first one is.
  void makeLegible(bool isThinned, long firstMultiple);
  /// Whether that left texts out.
  bool isThinned() const { return m_choice.period > 1 || (m_choice.isEnds && num() > 2); }

  /// Adds the texts to `group`, `y` across the axis, and lets the limits of the axis grow.
  void build(float y, SoGroup* group);

 private:
  PiAxisState& m_state;
  const PoAxis::TextPath m_path;
  PiAxisText m_text;
  std::vector<float> m_coords;
  std::vector<PiTextRun> m_runs;
  std::vector<PiTextBox> m_boxes;
  float m_maxWidth = 0;
  int m_maxLetters = 0;
  float m_givenSize = 0;
  bool m_isSizeFixed = false;
  PiGradLegibility::Choice m_choice;
};

#endif
