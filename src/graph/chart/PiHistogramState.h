#ifndef ORMELLE_PIHISTOGRAMSTATE_H
#define ORMELLE_PIHISTOGRAMSTATE_H

#include <string>
#include <vector>

#include <Inventor/SbBox2f.h>
#include <Ormelle/PbDataMapping.h>
#include <Ormelle/PbMiscTextAttr.h>
#include <Ormelle/PbNumericDisplayFormat.h>
#include <Ormelle/PoHistogram.h>

#include "graph/chart/PiBarTexts.h"
#include "graph/chart/PiHistogramBars.h"
#include "graph/frame/PiDataInput.h"

/// The data objects of a bar chart, and what its rebuild found. Lengths are those in front of the part `transform`.
struct PiHistogramState {
  explicit PiHistogramState(const PoBase* kit) : slots(kit) {}

  PiConnectedSlots slots;
  PiDataInput<PbDataMapping> mappingInput{slots};
  PiDataInput<PbMiscTextAttr> textInput{slots};
  PiDataInput<PbNumericDisplayFormat> formatInput{slots};

  const PbDataMapping* mapping = nullptr;
  const PbNumericDisplayFormat* format = nullptr;
  PbMiscTextAttr text;

  float reference = 1;
  float ratio = 1;  ///< of lengths in x to those in y
  float depth = 1;  ///< of lengths in x to those in z, as the domain shows them
  bool isAlongX = true;
  PiHistogramBars::Axis axis;
  PiHistogramBars bars;

  /// The lower left and the upper right corner of what reaches from `low` to `high` along the axis and from `foot` to
  /// `top` across.
  void corners(float low, float high, float foot, float top, SbVec2f& min, SbVec2f& max) const;
  void corners(const PiHistogramBars::Bar& bar, SbVec2f& min, SbVec2f& max) const {
    corners(bar.low, bar.high, bar.foot, bar.top, min, max);
  }
  /// Beyond the end of a bar, or beyond its foot.
  PoHistogram::Position beyondTop(bool isBelow) const;
  PoHistogram::Position beyondFoot(bool isBelow) const { return beyondTop(!isBelow); }
  /// How much of x a group (or a bar) of this width has.
  float roomAlongX(float width) const { return isAlongX ? std::abs(width) : 0; }
  /// The domain with room round it, if the bars lie in it.
  SbBox2f frame(const PbDomain& domain) const;
};

#endif
