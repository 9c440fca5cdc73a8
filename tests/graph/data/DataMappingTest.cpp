#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PbNonLinearDataMapping.h>
#include <Ormelle/PbNonLinearDataMapping2.h>
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <limits>
#include <memory>

#include "Listener.h"
#include "graph/data/PiHls.h"
#include "support/NodePtr.h"

namespace {

const float kNan = std::nanf("");
const SbColor kBlack(0, 0, 0), kWhite(1, 1, 1), kRed(1, 0, 0), kGreen(0, 1, 0), kBlue(0, 0, 1);

bool isColor(const SbColor& color) {
  for (int i = 0; i < 3; ++i)
    if (!(color[i] >= 0 && color[i] <= 1)) return false;
  return true;
}

const SbColor* redFunction(float) { return &kRed; }
const SbColor* noColorFunction(float) { return nullptr; }
const SbColor* colorOfData(void* data, float) { return static_cast<const SbColor*>(data); }
const float* hlsOfData(void* data, float) { return static_cast<const float*>(data); }
float halfTransparency(float) { return 0.5f; }
float transparencyOfData(void* data, float value) { return value * *static_cast<float*>(data); }

const float kLevels[] = {0, 1, 2};
const SbColor kColors[] = {SbColor(.5f, 0, 0), SbColor(0, .5f, .25f), kBlue, SbColor(1, 1, 0)};

PbNonLinearDataMapping2 table(PbNonLinearDataMapping2::Type type) {
  PbNonLinearDataMapping2 mapping;
  mapping.setValues(type, 3, kLevels, kColors);
  return mapping;
}

std::vector<std::unique_ptr<PbDataMapping>> mappingsOfAllKinds() {
  std::vector<std::unique_ptr<PbDataMapping>> mappings;
  mappings.push_back(std::make_unique<PbLinearDataMapping>());
  mappings.push_back(std::make_unique<PbNonLinearDataMapping>());
  auto function = std::make_unique<PbNonLinearDataMapping>();
  function->setRGBFunction(redFunction);
  mappings.push_back(std::move(function));
  for (auto type : {PbNonLinearDataMapping2::LINEAR_PER_LEVEL, PbNonLinearDataMapping2::NON_LINEAR_PER_LEVEL})
    mappings.push_back(std::make_unique<PbNonLinearDataMapping2>(table(type)));
  return mappings;
}

TEST(DataMapping, ThresholdsCutOffOrColourInEveryKind) {
  for (const auto& mapping : mappingsOfAllKinds()) {
    SCOPED_TRACE(mapping->getClassType());
    mapping->setMinThreshold(0.2f, kGreen, 0.25f);
    mapping->setMinThreshold(0.2f);
    mapping->setMaxThreshold(0.8f, kRed, 0.5f);
    EXPECT_NE(mapping->getRGBColor(0.1f), nullptr);
    mapping->enableThresholds(1, 1);
    float transparency = 0;
    for (float value : {-HUGE_VALF, 0.1f, 0.2f}) {
      EXPECT_EQ(mapping->getRGBColor(value), nullptr);
      EXPECT_EQ(mapping->getRGBColor(value, transparency), nullptr);
      EXPECT_EQ(mapping->getHLSColor(value), nullptr);
    }
    EXPECT_NE(mapping->getRGBColor(0.5f), nullptr);
    for (float value : {0.8f, HUGE_VALF}) {
      ASSERT_NE(mapping->getRGBColor(value, transparency), nullptr);
      EXPECT_EQ(*mapping->getRGBColor(value), kRed);
      EXPECT_EQ(transparency, 0.5f);
    }
    float value = 0;
    EXPECT_EQ(mapping->getMinHLSThreshold(value), nullptr);
    EXPECT_EQ(value, 0.2f);
    EXPECT_EQ(*mapping->getMaxRGBThreshold(value, transparency), kRed);
    EXPECT_EQ(value, 0.8f);
    EXPECT_EQ(mapping->getMaxHLSThreshold(value)[1], 0.5f);
  }
}

TEST(DataMapping, WhatIsNoNumberHasNoColourInAnyKind) {
  for (const auto& mapping : mappingsOfAllKinds()) {
    SCOPED_TRACE(mapping->getClassType());
    mapping->setMinThreshold(0, kRed);
    mapping->setMaxThreshold(1, kRed);
    for (int enabled : {0, 1}) {
      mapping->enableThresholds(enabled, enabled);
      float transparency = 0;
      EXPECT_EQ(mapping->getRGBColor(kNan), nullptr);
      EXPECT_EQ(mapping->getRGBColor(kNan, transparency), nullptr);
      EXPECT_EQ(transparency, 1);
      EXPECT_EQ(mapping->getHLSColor(kNan), nullptr);
    }
  }
}

TEST(DataMapping, EveryChangeIsToldWithANewId) {
  for (const auto& mapping : mappingsOfAllKinds()) {
    SCOPED_TRACE(mapping->getClassType());
    NodePtr<Listener> kit(new Listener);
    unsigned id = mapping->getId();
    kit->react = [&](PbBase*) {
      EXPECT_NE(mapping->getId(), id);  // a kit that rebuilds at once sees the new one
      id = mapping->getId();
    };
    mapping->addConnection(kit.get());
    mapping->setMinThreshold(0.2f, kRed);  // not enabled: not told
    mapping->setTransparencyValueDeletedParts(0.5f);
    EXPECT_TRUE(kit->changes.empty());
    mapping->enableThresholds(1, 0);
    mapping->setMaxThreshold(0.9f);
    mapping->setMinThreshold(0.1f);
    mapping->enableTransparency(1);
    static_cast<PbBase&>(*mapping).touch();
    EXPECT_EQ(kit->changes.size(), 4u);
    mapping->enableConnection(0);
    mapping->touch();
    EXPECT_NE(mapping->getId(), id);
    mapping->removeConnection(kit.get());
  }
  PbLinearDataMapping mapping, copy(mapping);
  EXPECT_NE(mapping.getId(), copy.getId());
}

TEST(DataMapping, AssignmentCopiesAllAndTells) {
  PbLinearDataMapping linear, otherLinear;
  linear.setValues(1, kRed, 0.1f, 3, kBlue, 0.3f);
  linear.setMaxThreshold(2.5f);
  linear.enableThresholds(0, 1);
  const unsigned id = otherLinear.getId();
  otherLinear = linear;
  EXPECT_NE(otherLinear.getId(), id);
  EXPECT_EQ(otherLinear.getRGBColor(2.5f), nullptr);
  EXPECT_EQ(*otherLinear.getRGBColor(1), kRed);

  PbNonLinearDataMapping2 levels, fromTable = table(PbNonLinearDataMapping2::NON_LINEAR_PER_LEVEL);
  levels = fromTable;
  EXPECT_EQ(levels.getType(), PbNonLinearDataMapping2::NON_LINEAR_PER_LEVEL);
  EXPECT_EQ(*levels.getRGBColor(5), kColors[3]);
}

TEST(LinearDataMapping, InterpolatesAndSaturates) {
  PbLinearDataMapping mapping;
  EXPECT_EQ(*mapping.getRGBColor(0), kBlack);
  EXPECT_EQ(*mapping.getRGBColor(0.5f), SbColor(0.5f, 0.5f, 0.5f));
  EXPECT_EQ(*mapping.getRGBColor(1), kWhite);
  for (float value : {2.0f, FLT_MAX, HUGE_VALF}) EXPECT_EQ(*mapping.getRGBColor(value), kWhite);
  for (float value : {-1.0f, -FLT_MAX, -HUGE_VALF}) EXPECT_EQ(*mapping.getRGBColor(value), kBlack);

  // Beyond its points the line goes on until a channel saturates.
  mapping.setValues(0, SbColor(0.5f, 0.5f, 0), 0.2f, 1, SbColor(0.75f, 0.5f, 0), 0.4f);
  float transparency;
  EXPECT_TRUE(mapping.getRGBColor(1.5f, transparency)->equals(SbColor(0.875f, 0.5f, 0), 1e-6f));
  EXPECT_NEAR(transparency, 0.5f, 1e-6f);
  mapping.getRGBColor(1e6f, transparency);
  EXPECT_EQ(transparency, 1);
}

TEST(LinearDataMapping, GivesValidColoursForAnyPoints) {
  const float any[] = {0, 1, -1, 1e-45f, FLT_MAX, -FLT_MAX, HUGE_VALF, -HUGE_VALF, kNan};
  PbLinearDataMapping mapping;
  for (float v1 : any)
    for (float v2 : any) {
      mapping.setValues(v1, kRed, 0, v2, kGreen, 1);
      for (float value : any) {
        float transparency;
        const SbColor* color = mapping.getRGBColor(value, transparency);
        EXPECT_EQ(color == nullptr, std::isnan(value));
        if (!color) continue;
        EXPECT_TRUE(isColor(*color)) << v1 << ' ' << v2 << ' ' << value;
        EXPECT_TRUE(transparency >= 0 && transparency <= 1);
        if (v1 == v2) {
          EXPECT_EQ(*color, kRed);
        }
      }
    }
  // The distance of these points passes the range of a float.
  mapping.setValues(-FLT_MAX, kBlack, FLT_MAX, kWhite);
  EXPECT_TRUE(mapping.getRGBColor(0)->equals(SbColor(0.5f, 0.5f, 0.5f), 1e-6f));
}

TEST(LinearDataMapping, TakesAndGivesHlsTriples) {
  PbLinearDataMapping mapping;
  const float red[] = {0, 0.5f, 1}, blue[] = {2.0f / 3, 0.5f, 1};
  mapping.setValues(0, red, 0.1f, 10, blue, 0.2f);
  EXPECT_TRUE(mapping.getRGBColor(0)->equals(kRed, 1e-6f));
  float v1, v2, t1, t2, hls1[3], hls2[3];
  mapping.getValues(v1, hls1, t1, v2, hls2, t2);
  EXPECT_EQ(v2, 10);
  EXPECT_EQ(t2, 0.2f);
  EXPECT_NEAR(hls2[0], blue[0], 1e-6f);
  EXPECT_NEAR(mapping.getHLSColor(10)[0], blue[0], 1e-6f);
}

TEST(NonLinearDataMapping, AsksTheFunctionSetLast) {
  PbNonLinearDataMapping mapping;
  float transparency = -1;
  EXPECT_TRUE(mapping.getRGBColor(0.25f, transparency)->equals(SbColor(0.25f, 0.25f, 0.25f), 1e-6f));
  EXPECT_EQ(transparency, 0);

  SbColor blue = kBlue;
  float green[] = {1.0f / 3, 0.5f, 1}, factor = 0.5f;
  mapping.setRGBFunction(redFunction);
  EXPECT_EQ(*mapping.getRGBColor(7), kRed);
  mapping.setRGBFunction(colorOfData, &blue);
  EXPECT_EQ(*mapping.getRGBColor(7), kBlue);
  mapping.setHLSFunction(hlsOfData, green);
  EXPECT_TRUE(mapping.getRGBColor(7)->equals(kGreen, 1e-5f));
  mapping.setTransparencyFunction(halfTransparency);
  mapping.getRGBColor(0.5f, transparency);
  EXPECT_EQ(transparency, 0.5f);
  mapping.setTransparencyFunction(transparencyOfData, &factor);
  mapping.getRGBColor(0.5f, transparency);
  EXPECT_EQ(transparency, 0.25f);
  mapping.setRGBFunction(noColorFunction);
  EXPECT_EQ(mapping.getRGBColor(0), nullptr);
  mapping.setHLSFunction(nullptr);
  EXPECT_EQ(*mapping.getRGBColor(2), kWhite);
}

TEST(NonLinearDataMapping2, InterpolatesBetweenLevelsAndBeyondThem) {
  PbNonLinearDataMapping2 mapping = table(PbNonLinearDataMapping2::LINEAR_PER_LEVEL);
  EXPECT_EQ(*mapping.getRGBColor(1), kColors[1]);
  EXPECT_TRUE(mapping.getRGBColor(0.5f)->equals(SbColor(.25f, .25f, .125f), 1e-6f));
  EXPECT_TRUE(mapping.getRGBColor(1.5f)->equals(SbColor(0, .25f, .625f), 1e-6f));
  // The first interval goes on below, the last one above.
  EXPECT_TRUE(mapping.getRGBColor(-0.5f)->equals(SbColor(.75f, 0, 0), 1e-6f));
  EXPECT_EQ(*mapping.getRGBColor(100), kBlue);
}

TEST(NonLinearDataMapping2, GivesAConstantColourBetweenLevels) {
  PbNonLinearDataMapping2 mapping;
  const float levels[] = {0, 1}, transparencies[] = {.1f, .2f, .3f};
  const SbColor colors[] = {kRed, kGreen, kBlue};
  mapping.setValues(PbNonLinearDataMapping2::NON_LINEAR_PER_LEVEL, 2, levels, colors, transparencies);
  const struct {
    float value;
    int entry;
  } cases[] = {{-1, 0}, {0, 0}, {0.5f, 1}, {1, 2}, {2, 2}};
  for (const auto& c : cases) {
    float transparency;
    EXPECT_EQ(*mapping.getRGBColor(c.value, transparency), colors[c.entry]) << c.value;
    EXPECT_EQ(transparency, transparencies[c.entry]);
  }
  // An inner level belongs to the interval above it.
  mapping = table(PbNonLinearDataMapping2::NON_LINEAR_PER_LEVEL);
  EXPECT_EQ(*mapping.getRGBColor(1), kColors[2]);
}

TEST(NonLinearDataMapping2, SortsWhatItIsGiven) {
  PbNonLinearDataMapping2 mapping;
  const float levels[] = {5, 1, kNan, 5, 1, 3}, transparencies[] = {.0f, .1f, .2f, .3f, .4f, .5f, .6f};
  SbColor colors[7];
  for (int i = 0; i < 7; ++i) colors[i].setValue(i / 10.0f, 0, 0);
  mapping.setValues(PbNonLinearDataMapping2::NON_LINEAR_PER_LEVEL, 6, levels, colors, transparencies);
  int num;
  const float* values = mapping.getValuesList(num);
  EXPECT_EQ(std::vector<float>(values, values + num), (std::vector<float>{1, 1, 3, 5, 5}));
  const SbColor* sorted = mapping.getRGBColorsList(num);
  ASSERT_EQ(num, 6);
  const int order[] = {1, 4, 5, 0, 3, 6};
  for (int i = 0; i < num; ++i) EXPECT_EQ(sorted[i], colors[order[i]]);
  EXPECT_EQ(mapping.getTransparencyList(num)[2], 0.5f);
  EXPECT_EQ(mapping.getHLSColorsList(num)[3 * 5 + 1], 0.3f);

  const unsigned id = mapping.getId();
  mapping.setValues(PbNonLinearDataMapping2::LINEAR_PER_LEVEL, 0, levels, colors);
  mapping.setValues(PbNonLinearDataMapping2::LINEAR_PER_LEVEL, -5, levels, colors);
  mapping.setValues(PbNonLinearDataMapping2::LINEAR_PER_LEVEL, 1, &kNan, colors);
  mapping.setValues(PbNonLinearDataMapping2::LINEAR_PER_LEVEL, 2, nullptr, colors);
  EXPECT_EQ(mapping.getId(), id);
  mapping.getValuesList(num);
  EXPECT_EQ(num, 5);
}

// Against the plain walk through the table, with equal levels and values on, beside and beyond them.
TEST(NonLinearDataMapping2, FindsWhatAWalkFinds) {
  const std::vector<float> levels = {-HUGE_VALF, -3, -3, 0, 0.1f, 0.1f, 0.1f, 7, 1e30f};
  const int n = static_cast<int>(levels.size());
  std::vector<SbColor> colors;
  for (int i = 0; i <= n; ++i) colors.emplace_back(i / 20.0f, 1 - i / 20.0f, 0);
  PbNonLinearDataMapping2 constant, linear;
  constant.setValues(PbNonLinearDataMapping2::NON_LINEAR_PER_LEVEL, n, levels.data(), colors.data());
  linear.setValues(PbNonLinearDataMapping2::LINEAR_PER_LEVEL, n, levels.data(), colors.data());
  for (float level : levels)
    for (float value : {level, std::nextafter(level, -HUGE_VALF), std::nextafter(level, HUGE_VALF)}) {
      int expected = n;
      for (int i = n - 1; i >= 0; --i)
        if (levels[i] > value) expected = i;
      if (value <= levels[0]) expected = 0;
      EXPECT_EQ(*constant.getRGBColor(value), colors[expected]) << value;
      EXPECT_TRUE(isColor(*linear.getRGBColor(value))) << value;
      if (value == -3 || value == 0 || value == 7) {
        int first = 0;
        while (levels[first] < value) ++first;
        EXPECT_TRUE(linear.getRGBColor(value)->equals(colors[first], 1e-6f)) << value;
      }
    }
}

TEST(NonLinearDataMapping2, TakesASingleLevel) {
  PbNonLinearDataMapping2 mapping;
  const float level = 4;
  mapping.setValues(PbNonLinearDataMapping2::LINEAR_PER_LEVEL, 1, &level, &kGreen);
  for (float value : {-1.0f, 4.0f, 9.0f}) EXPECT_EQ(*mapping.getRGBColor(value), kGreen);
  mapping.setValues(PbNonLinearDataMapping2::NON_LINEAR_PER_LEVEL, 1, &level, kColors);
  EXPECT_EQ(*mapping.getRGBColor(4), kColors[0]);
  EXPECT_EQ(*mapping.getRGBColor(5), kColors[1]);
}

TEST(Hls, ConvertsThereAndBack) {
  const struct {
    SbColor rgb;
    float hls[3];
  } cases[] = {{kRed, {0, .5f, 1}},
               {kGreen, {1.0f / 3, .5f, 1}},
               {kBlue, {2.0f / 3, .5f, 1}},
               {SbColor(1, 1, 0), {1.0f / 6, .5f, 1}},
               {SbColor(1, 0, .5f), {11.0f / 12, .5f, 1}},
               {SbColor(.25f, .75f, .75f), {.5f, .5f, .5f}},
               {SbColor(.9f, .8f, .8f), {0, .85f, 1.0f / 3}},
               {SbColor(.4f, .4f, .40005f), {0, .400025f, 0}}};
  for (const auto& c : cases) {
    float hls[3];
    PiHls::fromRgb(c.rgb, hls);
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(hls[i], c.hls[i], 1e-5f);
    EXPECT_TRUE(PiHls::toRgb(c.hls).equals(c.rgb, 1e-4f));
  }
  for (float red = 0; red <= 1; red += 0.125f)
    for (float green = 0; green <= 1; green += 0.125f)
      for (float blue = 0; blue <= 1; blue += 0.125f) {
        float hls[3];
        PiHls::fromRgb(SbColor(red, green, blue), hls);
        EXPECT_TRUE(PiHls::toRgb(hls).equals(SbColor(red, green, blue), 1e-5f));
      }
  for (float bad : {-2.0f, 5.0f, HUGE_VALF, kNan})
    for (int i = 0; i < 3; ++i) {
      float hls[] = {.3f, .6f, .8f};
      hls[i] = bad;
      EXPECT_TRUE(isColor(PiHls::toRgb(hls)));
    }
}

}  // namespace
