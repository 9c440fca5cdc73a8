#include "graph/axis/PiLogText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

#include "graph/axis/PiAxisLayout.h"
#include "graph/axis/PiGradStrings.h"

namespace PiLogText {

namespace {

/// Numbers from 10^-4 to 10^4 are written out.
constexpr int kMaxDecimalExponent = 4;
constexpr int kMaxDecimalPowers = 3;  ///< of an axis whose digits are written as numbers
constexpr float kShrinkStep = 0.00125F;
/// No number is written out with more zeros than that.
constexpr int kMaxZeros = 90;

int exponentOf(float power) { return static_cast<int>(power); }

char* writeValue(const PiLogGradation& gradation, char* out) {
  return std::to_chars(out, out + 32, gradation.value, std::chars_format::fixed, gradation.numDecimal).ptr;
}

void writeDecimal(const PiLogGradation& gradation, char* out) {
  char figures[32];
  char* end = writeValue(gradation, figures);
  if (std::abs(gradation.exponent) > kMaxZeros) {
    out = std::copy(figures + 0, end, out);
    *out++ = 'e';
    *std::to_chars(out, out + 16, gradation.exponent).ptr = 0;
    return;
  }
  end = std::remove(figures + 0, end, '.');
  const auto numFigures = static_cast<int>(end - figures);
  const int before = numFigures - gradation.numDecimal + gradation.exponent;  // figures before the point
  if (before <= 0) {
    *out++ = '0';
    *out++ = '.';
    out = std::fill_n(out, -before, '0');
    out = std::copy(figures + 0, end, out);
  } else {
    out = std::copy_n(figures, std::min(before, numFigures), out);
    if (before >= numFigures) {
      out = std::fill_n(out, before - numFigures, '0');
    } else {
      *out++ = '.';
      out = std::copy(figures + before, end, out);
    }
  }
  *out = 0;
}

void writeInteger(int number, char* out) { *std::to_chars(out, out + 16, number).ptr = 0; }

}  // namespace

PoAxis::LogGradType Choice::powerType() const {
  return powerRep == PoLogAxis::TEN_POWER_DECIMAL ? PoAxis::LOG_GRAD_DECIMAL : PoAxis::LOG_GRAD_TEN_POWER;
}

PoAxis::LogGradType Choice::digitType() const {
  if (isOneLine()) return powerType();
  return digitRep == PoLogAxis::DECADE_DIGIT ? PoAxis::LOG_GRAD_DIGIT : PoAxis::LOG_GRAD_DECIMAL;
}

Choice choose(PoLogAxis::TenPowGradRep powerRep, PoLogAxis::DecadeRep digitRep, std::span<const float> powers,
              std::span<const PiLogGradation> digits) {
  Choice choice{powerRep, digitRep, digitRep == PoLogAxis::DECADE_AUTO};
  if (powerRep == PoLogAxis::TEN_POWER_AUTO) {
    const auto isModerate = [](int exponent, int limit) { return exponent >= -limit && exponent <= limit; };
    bool isDecimal = true;
    if (!powers.empty())
      isDecimal = isModerate(exponentOf(powers.front()), kMaxDecimalExponent) &&
                  isModerate(exponentOf(powers.back()), kMaxDecimalExponent);
    else if (!digits.empty())
      isDecimal = isModerate(digits.front().exponent, kMaxDecimalExponent - 1) &&
                  isModerate(digits.back().exponent, kMaxDecimalExponent - 1);
    choice.powerRep = isDecimal ? PoLogAxis::TEN_POWER_DECIMAL : PoLogAxis::TEN_POWER_POW10;
  }
  if (choice.isDigitAuto) {
    const bool isFar = !digits.empty() && (std::abs(digits.front().exponent) >= kMaxDecimalExponent ||
                                           std::abs(digits.back().exponent) >= kMaxDecimalExponent);
    choice.digitRep = isFar || powers.size() > kMaxDecimalPowers ? PoLogAxis::DECADE_DIGIT : PoLogAxis::DECADE_DECIMAL;
  }
  return choice;
}

void write(bool isDecadeStart, PoAxis::LogGradType type, const PiLogGradation& gradation, char* text,
           char* exponentText) {
  *text = *exponentText = 0;
  switch (type) {
    case PoAxis::LOG_GRAD_DECIMAL:
      writeDecimal(gradation, text);
      break;
    case PoAxis::LOG_GRAD_DIGIT:
      *writeValue(gradation, text) = 0;
      break;
    case PoAxis::LOG_GRAD_TEN_POWER:
      if (!isDecadeStart) {
        *writeValue(gradation, text) = 0;
        PiGradStrings::append(text, gradation.numDecimal == 0 ? "." : " x ");
      }
      PiGradStrings::append(text, "10");
      writeInteger(gradation.exponent, exponentText);
      break;
  }
}

float fittingWidth(PoAxis::TextPath path, const PiTextRun& run, const PiTextBox& box) {
  if (!PiAxisText::isVertical(path)) return box.xmax - box.xmin;
  if (run.num == 0) return 0;
  const auto letters = [&](int piece) { return static_cast<float>(PiAxisText::countLetters(run.pieces[piece].text)); };
  const bool hasExponent = run.num > 1 && run.pieces[1].isExponent;
  if (!hasExponent) return PiAxisLayout::TEXT_GAP + letters(0) - 1;
  return 2 * PiAxisLayout::TEXT_GAP + (run.num > 2 ? letters(2) - 1 : 0);
}

float fitSize(float width, float room, float along) {
  float size = PiAxisLayout::AUTO_GRAD_SIZE * along;
  if (!(width * size > room)) return size;
  const float step = kShrinkStep * along;
  const float fitting = room / width;
  size -= std::ceil((size - fitting) / step) * step;
  return size >= step / 2 ? size : fitting;
}

float digitLine(const PiAxisAttributes& attributes, float size, float along) {
  if (attributes.gradDistAxis != 0) return attributes.gradDistAxis * along * attributes.side();
  float distance = PiAxisLayout::TEXT_GAP * size;
  if (attributes.tickVisibility == PoAxis::VISIBILITY_ON) {
    if (attributes.tickPosition == PoAxis::TICK_GRAD_SIDE) distance += attributes.tickSubLength * along;
    if (attributes.tickPosition == PoAxis::TICK_ACROSS_AXIS) distance += attributes.tickSubLength * along / 2;
  }
  return distance * attributes.side();
}

}  // namespace PiLogText
