#include "graph/format/PiNumericFormat.h"

#include <Ormelle/PbNumericDisplayFormat.h>
#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>

namespace {

std::string textOf(const PiNumericFormat& format, float value) {
  char text[PiNumericFormat::TEXT_SIZE];
  std::memset(text, '#', sizeof text);
  format.getString(value, text);
  EXPECT_NE(std::memchr(text, 0, sizeof text), nullptr);
  return text;
}

PiNumericFormat floating(int numDecimal, int tenPower) {
  PiNumericFormat format;
  format.setFormatFloatingPoint(numDecimal, tenPower);
  return format;
}

PiNumericFormat integer(int tenPower) {
  PiNumericFormat format;
  format.setFormatInteger(tenPower);
  return format;
}

}  // namespace

TEST(PiNumericFormat, WritesNumbers) {
  const float huge = std::numeric_limits<float>::max();
  const float inf = std::numeric_limits<float>::infinity();
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const struct {
    const char* what;
    PiNumericFormat format;
    float value;
    const char* text;
  } rows[] = {
      {"a new format writes integers", PiNumericFormat(), 41.7f, "42"},
      {"the power divides", floating(1, 3), 1500, "1.5"},
      {"a negative power multiplies", integer(-3), 0.052f, "52"},
      {"halves go away from zero", integer(0), -0.5f, "-1"},
      {"halves go away from zero, up", integer(0), 2.5f, "3"},
      {"just below a half", integer(0), 0.49999997f, "0"},
      {"zero has no sign", integer(0), -0.3f, "0"},
      {"zeros have no sign", floating(2, 0), -0.001f, "0.00"},
      {"what isn't zero keeps its sign", floating(2, 0), -0.01f, "-0.01"},
      {"beyond int", integer(0), 3e9f, "3000000000"},
      {"the longest", floating(2, 0), huge, "340282346638528859811704183484516925440.00"},
      {"too long for the text", integer(-200), huge, "3.402823e+238"},
      {"infinite", integer(0), -inf, "-inf"},
      {"no number", floating(1, 0), -nan, "nan"},
      {"negative decimals", floating(-3, 0), 1.5f, "2"},
      {"too many decimals", floating(1000000, 0), 0.5f, "0.500000000000000000000000000000000000000000000"},
      {"a power out of this world", integer(std::numeric_limits<int>::max()), 5, "0"},
  };
  for (const auto& row : rows) EXPECT_EQ(textOf(row.format, row.value), row.text) << row.what;
}

TEST(PiNumericFormat, FindsPowerAndDecimals) {
  const struct {
    float a, b, delta;
    int round;
    int tenPower, numDecimal;
  } rows[] = {
      {0, 0, 1, 0, 0, 0},
      {0, 1000, 250, 0, 3, 2},
      {0, 10, 1, 1, 0, 0},
      {0, 25, 12.5f, 1, 0, 1},
      {0, 999, 100, 1, 0, 0},
      {0, 1e6f, 2e5f, 1, 6, 1},
      {0, 0.05f, 0.01f, 1, -3, 0},
      {0, 0.01f, 0.002f, 1, -3, 0},
      {0, 0.1f, 0.02f, 1, 0, 2},
      {0, 1e-3f, 5e-4f, 1, -3, 1},
      {-20, 5, -5, 1, 0, 0},
      {0.5f, 4.5f, 1, 1, 0, 1},
      {0, 1, 0.2999f, 0, 0, 1},
      {0, 1, 0.1234f, 0, 0, 4},
      {0, 1, 0.1234f, 1, 0, 3},
      {3, 3, 0, 0, 0, 0},
      {1, 2, 1e30f, 1, 0, 0},
      {1e-45f, 1e-45f, 0, 0, -45, 4},
      {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(), 1, 1, 0, 0},
  };
  for (const auto& row : rows) {
    PiNumericFormat format;
    format.setFormatAuto(row.a, row.b, row.delta, row.round);
    EXPECT_EQ(format.getTenPower(), row.tenPower) << row.a << ' ' << row.b << ' ' << row.delta;
    EXPECT_EQ(format.getNumDecimal(), row.numDecimal) << row.a << ' ' << row.b << ' ' << row.delta;
    EXPECT_EQ(format.isFloatingPointFormat(), row.numDecimal != 0);
  }
  PiNumericFormat steps;
  steps.setFormatAuto(0, 25, 12.5f, 1);
  EXPECT_EQ(textOf(steps, 0) + " " + textOf(steps, 12.5f) + " " + textOf(steps, 25), "0.0 12.5 25.0");
}

// An axis of any length with any of the usual steps tells all its gradations apart, in short texts.
TEST(PiNumericFormat, TellsGradationsApart) {
  for (int exponent = -36; exponent <= 36; ++exponent)
    for (const float digit : {1.f, 2.f, 2.5f, 3.f, 4.f, 5.f}) {
      const float step = static_cast<float>(digit * std::pow(10.0, exponent));
      PiNumericFormat format;
      format.setFormatAuto(0, 10 * step, step, 1);
      EXPECT_EQ(format.getTenPower() % 3, 0);
      std::string before;
      for (int i = 0; i <= 10; ++i) {
        const std::string text = textOf(format, static_cast<float>(i) * step);
        EXPECT_NE(text, before) << step;
        EXPECT_LE(text.size(), 6u) << step;
        EXPECT_NEAR(std::atof(text.c_str()) * std::pow(10.0, format.getTenPower() - exponent), i * digit, 1e-3);
        before = text;
      }
    }
}

TEST(PiNumericFormat, FollowsTheFormatObject) {
  PbNumericDisplayFormat object(PbNumericDisplayFormat::FLOAT_FORMAT, 3, 2);
  PiNumericFormat format;
  format.setFormat(&object, 0, 10, 1, 1);
  EXPECT_EQ(textOf(format, 1234), "1.23");
  object.setFormat(PbNumericDisplayFormat::INTEGER_FORMAT, -2, 7);
  format.setFormat(&object, 0, 10, 1, 1);
  EXPECT_EQ(textOf(format, 0.126f), "13");
  object.setFormat(PbNumericDisplayFormat::AUTO_FORMAT, 5, 5);
  format.setFormat(&object, 0, 0.5f, 0.1f, 1);
  EXPECT_EQ(textOf(format, 0.3f), "0.3");
}

TEST(PiNumericFormat, LooksAtAllValues) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const float values[] = {nan, 2, 0, nan, 1, 1.5f, 0.5f};
  PiNumericFormat format;
  format.setFormat(nullptr, 7, values, 1);
  EXPECT_EQ(textOf(format, 1.5f), "1.5");
  format.setFormat(nullptr, 1, values, 1);
  format.setFormat(nullptr, 0, values, 1);
  format.setFormat(nullptr, -5, values, 1);
  format.setFormat(nullptr, 5, nullptr, 1);
  EXPECT_EQ(textOf(format, 1.5f), "1.5") << "without a value nothing changes";
  const float one = 2500;
  format.setFormat(nullptr, 1, &one, 1);
  EXPECT_EQ(textOf(format, one), "2.5");
}

TEST(PiNumericFormat, SurvivesAnyInput) {
  std::mt19937 random(20);
  std::uniform_int_distribution<uint32_t> bits;
  const auto anyFloat = [&] {
    const uint32_t pattern = bits(random);
    float value;
    std::memcpy(&value, &pattern, sizeof value);
    return value;
  };
  for (int i = 0; i < 20000; ++i) {
    PiNumericFormat format;
    format.setFormatAuto(anyFloat(), anyFloat(), anyFloat(), i % 2);
    EXPECT_GE(format.getNumDecimal(), 0);
    textOf(format, anyFloat());
    textOf(floating(static_cast<int>(bits(random)), static_cast<int>(bits(random))), anyFloat());
    textOf(integer(static_cast<int>(bits(random))), anyFloat());
  }
}

TEST(PiNumericFormat, IgnoresTheLocale) {
  for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8", "es_ES.UTF-8", "de_DE"})
    if (std::setlocale(LC_ALL, name)) break;
  if (*std::localeconv()->decimal_point != ',') GTEST_SKIP() << "no locale with a decimal comma is installed";
  EXPECT_EQ(textOf(floating(2, 0), 1.25f), "1.25");
  PiNumericFormat format;
  format.setFormatAuto(0, 1000, 250, 1);
  EXPECT_EQ(format.getNumDecimal(), 2);
}
