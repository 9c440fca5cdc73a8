#include "graph/axis/PiAxisText.h"

#include <Inventor/nodes/SoScale.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoTranslation.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr int kAcross = PiText::HALF, kTop = PiText::UPPER, kBase = PiText::BASE;

/// Of texts beside an axis by path: above it, below it.
constexpr PiTextAlignment kBeside[][2] = {
    {{PiText::CENTER, kBase}, {PiText::CENTER, kTop}},    // PATH_RIGHT
    {{PiText::CENTER, kTop}, {PiText::CENTER, kBase}},    // PATH_LEFT
    {{PiText::LEFT, kAcross}, {PiText::RIGHT, kAcross}},  // PATH_UP
    {{PiText::RIGHT, kAcross}, {PiText::LEFT, kAcross}},  // PATH_DOWN
};

/// Of texts beyond the end by path: of an increasing axis, of a decreasing one.
constexpr PiTextAlignment kBeyond[][2] = {
    {{PiText::LEFT, kAcross}, {PiText::RIGHT, kAcross}},
    {{PiText::RIGHT, kAcross}, {PiText::LEFT, kAcross}},
    {{PiText::CENTER, kTop}, {PiText::CENTER, kBase}},
    {{PiText::CENTER, kBase}, {PiText::CENTER, kTop}},
};

size_t rowOf(PoAxis::TextPath path) {
  return path >= PoAxis::PATH_RIGHT && path <= PoAxis::PATH_DOWN ? static_cast<size_t>(path) : 0;
}

struct Vectors {
  SbVec3f direction, up;
};

Vectors vectorsOf(PoAxis::TextPath path) {
  switch (path) {
    case PoAxis::PATH_LEFT:
      return {SbVec3f(-1, 0, 0), SbVec3f(0, -1, 0)};
    case PoAxis::PATH_UP:
      return {SbVec3f(0, 1, 0), SbVec3f(-1, 0, 0)};
    case PoAxis::PATH_DOWN:
      return {SbVec3f(0, -1, 0), SbVec3f(1, 0, 0)};
    default:
      return {SbVec3f(1, 0, 0), SbVec3f(0, 1, 0)};
  }
}

}  // namespace

PiTextAlignment PiTextAlignment::beside(PoAxis::TextPath path, bool isAbove) {
  return kBeside[rowOf(path)][isAbove ? 0 : 1];
}

PiTextAlignment PiTextAlignment::beyond(PoAxis::TextPath path, bool isIncreasing) {
  return kBeyond[rowOf(path)][isIncreasing ? 0 : 1];
}

PiAxisText::PiAxisText(const SbString& fontName, const PbMiscTextAttr& attributes, PoAxis::TextPath path,
                       const PiTextAlignment& alignment)
    : m_fontName(fontName), m_path(path), m_alignment(alignment) {
  const Vectors vectors = vectorsOf(path);
  m_direction = vectors.direction;
  m_up = vectors.up;
  m_text.setFont(m_fontName, 1);
  m_text.setDirection(m_direction, m_up);
  m_text.setAttributes(&attributes);
}

int PiAxisText::countLetters(std::string_view text) {
  return static_cast<int>(std::count_if(text.begin(), text.end(), [](char c) { return (c & '\xC0') != '\x80'; }));
}

float PiAxisText::measureLength(const char* text) {
  m_text.setFont(m_fontName, 1);
  m_text.setAlignment(PiText::LEFT, PiText::BASE);
  m_text.setPosition(SbVec3f(0, 0, 0));
  const SbBox3f& box = m_text.measure(text, m_isWrapped);
  if (box.isEmpty()) return 0;
  return std::max(m_direction.dot(box.getMin()), m_direction.dot(box.getMax()));
}

/// One piece of a run: where its own place is from that of the run, and how it is aligned there.
struct PiAxisText::PlacedPiece {
  const char* text;
  int horizontal, vertical;
  SbVec3f offset;
  float scale;
};

/// Calls `use` for each piece of a run at font size `size`.
template <class Use>
void PiAxisText::forPieces(const PiTextRun& run, float size, Use use) {
  if (run.num == 1 && !run.pieces[0].isExponent) {
    use(PlacedPiece{run.pieces[0].text, m_alignment.horizontal, m_alignment.vertical, SbVec3f(0, 0, 0), 1});
    return;
  }
  const auto scaleOf = [&](int p) { return run.pieces[p].isExponent ? EXPONENT_SCALE : 1.0F; };
  float lengths[PiTextRun::MAX_PIECES] = {};
  float all = 0;
  for (int p = 0; p < run.num; ++p) all += lengths[p] = measureLength(run.pieces[p].text) * scaleOf(p);
  float along = m_alignment.horizontal == PiText::RIGHT    ? -all
                : m_alignment.horizontal == PiText::CENTER ? -all / 2
                                                           : 0;
  // The base line of the run, as PiText puts it.
  const float base = m_alignment.vertical == PiText::UPPER ? -0.65F : m_alignment.vertical == PiText::HALF ? -0.32F : 0;
  for (int p = 0; p < run.num; ++p) {
    const bool isExponent = run.pieces[p].isExponent;
    const float across = isExponent ? base + EXPONENT_RAISED : 0;
    use(PlacedPiece{run.pieces[p].text, PiText::LEFT, isExponent ? PiText::BASE : m_alignment.vertical,
                    m_direction * (along * size) + m_up * (across * size), scaleOf(p)});
    along += lengths[p];
  }
}

PiTextBox PiAxisText::measure(const PiTextRun& run) {
  SbBox3f all;
  forPieces(run, 1, [&](const PlacedPiece& piece) {
    m_text.setFont(m_fontName, piece.scale);
    m_text.setAlignment(piece.horizontal, piece.vertical);
    m_text.setPosition(piece.offset);
    const SbBox3f& box = m_text.measure(piece.text, m_isWrapped);
    if (!box.isEmpty()) all.extendBy(box);
  });
  if (all.isEmpty()) return {};
  return {all.getMin()[0], all.getMax()[0], all.getMin()[1], all.getMax()[1]};
}

void PiAxisText::build(const PiTextRun& run, float x, float y, float size, SoGroup* group) {
  forPieces(run, size, [&](const PlacedPiece& piece) {
    const SbVec3f place = SbVec3f(x, y, 0) + piece.offset;
    if (!std::isfinite(place[0]) || !std::isfinite(place[1])) return;
    m_text.setFont("", size);
    m_text.setAlignment(piece.horizontal, piece.vertical);
    m_text.setPosition(place);
    m_text.setGroup(group);
    if (piece.scale != 1) {
      // The font stands before the group, so that a smaller text takes a scale.
      auto* smaller = new SoSeparator;
      group->addChild(smaller);
      auto* translation = new SoTranslation;
      smaller->addChild(translation);
      translation->translation = place;
      auto* scale = new SoScale;
      smaller->addChild(scale);
      scale->scaleFactor.setValue(piece.scale, piece.scale, piece.scale);
      m_text.setPosition(SbVec3f(0, 0, 0));
      m_text.setGroup(smaller);
    }
    m_text.build(piece.text, m_isWrapped);
  });
}
