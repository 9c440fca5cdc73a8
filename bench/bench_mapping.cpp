// What colours and levels cost for each value of a mesh.

#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PbNonLinearDataMapping.h>
#include <Ormelle/PbNonLinearDataMapping2.h>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>
#include <vector>

#include "graph/data/PiIsovalueAdjustment.h"

namespace {

constexpr int kNumValues = 10'000'000;

// Scattered over a little more than 0..1.
const std::vector<float>& scatteredValues() {
  static const std::vector<float> values = [] {
    std::mt19937 random(1);
    std::uniform_real_distribution<float> distribution(-0.1f, 1.1f);
    std::vector<float> made(kNumValues);
    for (float& value : made) value = distribution(random);
    return made;
  }();
  return values;
}

const SbColor* rampFunction(float value) {
  static SbColor s_color;
  s_color.setValue(value, 0.5f, 1 - value);
  return &s_color;
}

std::unique_ptr<PbDataMapping> makeLinear() {
  auto mapping = std::make_unique<PbLinearDataMapping>();
  mapping->setValues(0, SbColor(0, 0, 1), 1, SbColor(1, 0, 0));
  return mapping;
}

std::unique_ptr<PbDataMapping> makeFunction() {
  auto mapping = std::make_unique<PbNonLinearDataMapping>();
  mapping->setRGBFunction(rampFunction);
  return mapping;
}

template <PbNonLinearDataMapping2::Type type, int numLevels>
std::unique_ptr<PbDataMapping> makeTable() {
  std::vector<float> levels;
  std::vector<SbColor> colors;
  for (int i = 0; i <= numLevels; ++i) {
    levels.push_back(i / (numLevels - 1.0f));
    colors.emplace_back(i / (numLevels + 1.0f), 0.5f, 0.25f);
  }
  auto mapping = std::make_unique<PbNonLinearDataMapping2>();
  mapping->setValues(type, numLevels, levels.data(), colors.data());
  return mapping;
}

void colors(benchmark::State& state, std::unique_ptr<PbDataMapping> (*make)(), bool hasThresholds, bool isTransparent) {
  const std::unique_ptr<PbDataMapping> mapping = make();
  if (hasThresholds) {
    mapping->setMinThreshold(0.05f);
    mapping->setMaxThreshold(0.95f, SbColor(1, 1, 1));
    mapping->enableThresholds(1, 1);
  }
  const float* values = scatteredValues().data();
  for (auto _ : state) {
    float sum = 0, transparency;
    for (int i = 0; i < state.range(0); ++i) {
      const SbColor* color =
          isTransparent ? mapping->getRGBColor(values[i], transparency) : mapping->getRGBColor(values[i]);
      if (color) sum += (*color)[0];
    }
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

using Table = PbNonLinearDataMapping2;
#define MAPPING_SIZES Arg(kNumValues / 8)->Arg(kNumValues)->Unit(benchmark::kMillisecond)
BENCHMARK_CAPTURE(colors, linear, makeLinear, false, false)->MAPPING_SIZES;
BENCHMARK_CAPTURE(colors, linear_thresholds, makeLinear, true, false)->MAPPING_SIZES;
BENCHMARK_CAPTURE(colors, linear_transparency, makeLinear, false, true)->MAPPING_SIZES;
BENCHMARK_CAPTURE(colors, function, makeFunction, false, false)->MAPPING_SIZES;
BENCHMARK_CAPTURE(colors, table_linear_10, (makeTable<Table::LINEAR_PER_LEVEL, 10>), false, false)->MAPPING_SIZES;
BENCHMARK_CAPTURE(colors, table_linear_1000, (makeTable<Table::LINEAR_PER_LEVEL, 1000>), false, false)->MAPPING_SIZES;
BENCHMARK_CAPTURE(colors, table_constant_10, (makeTable<Table::NON_LINEAR_PER_LEVEL, 10>), false, false)->MAPPING_SIZES;
BENCHMARK_CAPTURE(colors, table_constant_1000, (makeTable<Table::NON_LINEAR_PER_LEVEL, 1000>), false, false)
    ->MAPPING_SIZES;

void levelIndex(benchmark::State& state) {
  const PbIsovaluesList list(0, 1, static_cast<int>(state.range(1)));
  const float* values = scatteredValues().data();
  for (auto _ : state) {
    long sum = 0;
    for (int i = 0; i < state.range(0); ++i) sum += list.getIndex(values[i]);
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(levelIndex)->ArgsProduct({{kNumValues / 8, kNumValues}, {10, 1000}})->Unit(benchmark::kMillisecond);

// Each level is hit. Scattered values, each in another gap than the one before, are the worst case; a mesh has smooth
// ones.
void adjustList(benchmark::State& state, bool isSmooth) {
  const PbIsovaluesList list(0, 1, static_cast<int>(state.range(1)));
  std::vector<float> values(scatteredValues().begin(), scatteredValues().begin() + state.range(0));
  if (isSmooth)
    for (std::size_t i = 0; i < values.size(); ++i) values[i] = 0.5f + 0.5f * std::sin(i * 0.001f);
  int num, isRegular;
  float min, max, step;
  const float* levels = list.getIsoList(num, min, max, step, isRegular);
  std::copy(levels, levels + num, values.begin());
  PiIsovalueAdjustment adjustment;
  for (auto _ : state)
    benchmark::DoNotOptimize(adjustment.adjustIsovalList(list, static_cast<int>(values.size()), values.data()));
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
#define LEVEL_SIZES ArgsProduct({{kNumValues / 8, kNumValues}, {10, 1000}})->Unit(benchmark::kMillisecond)
BENCHMARK_CAPTURE(adjustList, smooth, true)->LEVEL_SIZES;
BENCHMARK_CAPTURE(adjustList, scattered, false)->LEVEL_SIZES;

}  // namespace
