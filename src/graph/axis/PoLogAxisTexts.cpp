// How a logarithmic axis writes its gradations: powers of ten on one line, digits on another nearer to the axis, or
// both on one.

#include <Inventor/nodes/SoGroup.h>
#include <Ormelle/PoLogAxis.h>

#include <algorithm>

#include "graph/axis/PiAxisLayout.h"
#include "graph/axis/PiAxisState.h"
#include "graph/axis/PiGradStrings.h"
#include "graph/axis/PiGradTextLine.h"
#include "graph/axis/PiLogAxisState.h"

namespace {

/// The least distance along the axis is the room of each text; not all of it is filled.
float roomOf(std::span<const float> powers, std::span<const PiLogGradation> digits) {
  return PiAxisLayout::TEXT_ROOM * PiLogGradations::leastDistance(powers, digits);
}

}  // namespace

/// A line of log texts, with what their formulas need.
class PoLogAxis::TextLine {
 public:
  TextLine(PiAxisState& state, const SbString& fontName)
      : m_line(state, fontName), m_added(state.attributes.addedString()) {}

  PiGradTextLine& line() { return m_line; }
  float fittingWidth() const { return m_fittingWidth; }

  /// Writes a gradation into the next two of `slots`.
  void add(const PiLogGradation& gradation, bool isPower, LogGradType logType, char**& slots) {
    char* text = *slots++;
    char* exponentText = *slots++;
    PiLogText::write(isPower, logType, gradation, text, exponentText);
    const bool isRun = logType == LOG_GRAD_TEN_POWER;
    if (!isRun) PiGradStrings::append(text, m_added);
    PiTextRun run(text);
    run.addExponent(exponentText);
    if (isRun) run.add(m_added);
    m_line.add(gradation.coord, run);
    m_fittingWidth = std::max(m_fittingWidth, PiLogText::fittingWidth(m_line.path(), run, m_line.lastBox()));
  }

 private:
  PiGradTextLine m_line;
  const char* m_added;
  float m_fittingWidth = 0;
};

/// How gradations are written. An automatic axis that would have fewer than two texts gets more: those of its digits,
/// and if that isn't enough, values at equal steps.
void PoLogAxis::chooseTexts(float low, float high) {
  PiLogAxisState& log = *m_log;
  const std::vector<float>& powers = state().mainCoords;
  const PiLogText::Choice asked = log.choice;
  log.choice = PiLogText::choose(asked.powerRep, asked.digitRep, powers, log.digits);
  const auto isScarce = [&] { return powers.size() + (log.choice.hasDigits() ? log.digits.size() : 0) < 2; };
  if (state().isLegible && isScarce()) {
    log.choice = PiLogText::choose(asked.powerRep, DECADE_AUTO, powers, log.digits);
    if (isScarce()) {
      PiLogGradations::between(low, high, log.digits);
      log.choice = PiLogText::choose(asked.powerRep, DECADE_AUTO, powers, log.digits);
    }
    // Beside the power of another decade, a digit alone would be misread.
    if (!powers.empty() && log.choice.digitRep == DECADE_DIGIT) log.choice.digitRep = DECADE_AS_TEN_POWER;
  }
  state().subCoords.clear();
  for (const PiLogGradation& digit : log.digits) state().subCoords.push_back(digit.coord);
}

/// Powers and digits on one line have one size.
void PoLogAxis::fitTogether(TextLine& powerTexts, TextLine& digitTexts) {
  PiAxisState& s = state();
  const bool isGiven = s.attributes.gradFontSize > 0;
  const float width = std::max(powerTexts.fittingWidth(), digitTexts.fittingWidth());
  float size = isGiven ? s.attributes.gradFontSize * s.along
                       : PiLogText::fitSize(width, roomOf(s.mainCoords, m_log->digits), s.along);
  if (s.isLegible) {
    PiGradTextLine all(s, s.attributes.gradFontName);
    all.addMerged(powerTexts.line(), digitTexts.line());
    all.setSize(size, isGiven);
    all.makeLegible(false, 0);
    size = all.size();
  }
  powerTexts.line().setSize(size, isGiven);
  digitTexts.line().setSize(size, isGiven);
}

/// On lines of their own, powers have a decade each, and digits what is between neighbours.
void PoLogAxis::fitApart(TextLine& powerTexts, TextLine& digitTexts) {
  const PiAxisState& s = state();
  const auto fit = [&](TextLine& texts, float given, float room) {
    const bool isGiven = given > 0;
    texts.line().setSize(isGiven ? given * s.along : PiLogText::fitSize(texts.fittingWidth(), room, s.along), isGiven);
  };
  fit(powerTexts, s.attributes.gradFontSize, roomOf(s.mainCoords, {}));
  fit(digitTexts, m_log->fontSize, roomOf(s.mainCoords, m_log->digits));
}

void PoLogAxis::buildTexts() {
  PiLogAxisState& log = *m_log;
  PiAxisState& s = state();
  PiAxisAttributes& a = s.attributes;
  auto* powerGroup = new SoGroup;
  setPart("mainGradText", powerGroup);
  auto* digitGroup = new SoGroup;
  setPart("decadeText", digitGroup);

  std::span<const PiLogGradation> digits = log.digits;
  if (!log.choice.hasDigits() || a.gradVisibility != VISIBILITY_ON) digits = {};
  const bool hasPowers = !s.mainCoords.empty() && a.gradVisibility == VISIBILITY_ON;
  if (!hasPowers && digits.empty()) {
    if (!(a.gradFontSize > 0)) a.gradFontSize = PiAxisLayout::AUTO_GRAD_SIZE;
    setElementFont("mainGradText", 0, "", 0);
    setElementFont("decadeText", 0, "", 0);
    return;
  }

  TextLine powerTexts(s, a.gradFontName), digitTexts(s, log.fontName);
  char** slots = allocGradString(static_cast<int>(2 * (s.mainCoords.size() + digits.size())));
  for (const float power : s.mainCoords)
    powerTexts.add({power, 1, static_cast<int>(power)}, true, log.choice.powerType(), slots);
  for (const PiLogGradation& digit : digits) digitTexts.add(digit, false, log.choice.digitType(), slots);

  const bool isOneLine = log.choice.isOneLine();
  if (isOneLine)
    fitTogether(powerTexts, digitTexts);
  else
    fitApart(powerTexts, digitTexts);

  // Digits say nothing where not all powers are written; where powers don't tell the values, digits have to.
  PiGradTextLine& powerLine = powerTexts.line();
  PiGradTextLine& digitLine = digitTexts.line();
  const long firstPower = PiLogGradations::firstMultiple(s.mainCoords);
  if (!isOneLine) powerLine.makeLegible(true, firstPower);
  const bool isNeeded = s.mainCoords.size() < 2;
  if (!isOneLine) digitLine.makeLegible(isNeeded, 0);
  const bool isIllegible =
      log.choice.isDigitAuto && (!(digitLine.size() > PiLogText::MIN_AUTO_SIZE * s.along) || powerLine.isThinned());
  const bool isDigitDrawn = !digits.empty() && (!isIllegible || isNeeded);
  if (isDigitDrawn && !isOneLine) digitLine.build(PiLogText::digitLine(a, digitLine.size(), s.along), digitGroup);

  const bool hasLineBefore = isDigitDrawn && !isOneLine;
  if (hasLineBefore) powerLine.makeLegible(true, firstPower);
  float y;
  if (hasLineBefore) {
    PiAxisAttributes beyond = a;
    beyond.gradDistAxis = 0;
    y = PiAxisLayout::gradLine(beyond, s.limits, powerLine.size(), s.along);
    if (a.gradDistAxis == 0 && hasPowers) a.gradDistAxis = beyond.gradDistAxis;
  } else {
    y = PiAxisLayout::gradLine(a, s.limits, powerLine.size(), s.along);
  }
  powerLine.build(y, powerGroup);
  if (isDigitDrawn && isOneLine) digitLine.build(y, digitGroup);

  log.fontSize = isDigitDrawn ? digitLine.size() / s.along : 0;
  a.gradFontSize = (hasPowers ? powerLine.size() : digitLine.size()) / s.along;
  setElementFont("mainGradText", hasPowers, a.gradFontName, a.gradFontSize);
  setElementFont("decadeText", isDigitDrawn, log.fontName, log.fontSize);
}
