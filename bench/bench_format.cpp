#include <Ormelle/PbDateFormatMapping.h>
#include <benchmark/benchmark.h>

#include <array>
#include <string>

#include "graph/format/PiDate.h"
#include "graph/format/PiNumericFormat.h"

namespace {

constexpr int kNumDates = 1 << 16;

std::string dateText(int i, const char* format) {
  PiDate date;
  date.incDateStep(static_cast<float>(i % 10957), PiDate::DAY);
  date.incDateStep(static_cast<float>(i * 37 % 86400), PiDate::SECOND);
  return date.getDateString(format);
}

void setDateString(benchmark::State& state, const char* format) {
  std::array<std::string, 256> texts;
  for (size_t i = 0; i < texts.size(); ++i) texts[i] = dateText(static_cast<int>(i) * 97, format);
  PiDate date;
  for (auto _ : state)
    for (int i = 0; i < kNumDates; ++i)
      benchmark::DoNotOptimize(date.setDateString(texts[static_cast<size_t>(i) % texts.size()].c_str(), format));
  state.SetItemsProcessed(state.iterations() * kNumDates);
}
BENCHMARK_CAPTURE(setDateString, numbers, "dmy");
BENCHMARK_CAPTURE(setDateString, names, "DdMY");
BENCHMARK_CAPTURE(setDateString, time, "Ymdh'\"");

// Two dates are read and two are written.
void dateMapping(benchmark::State& state, const char* format) {
  std::array<SbString, 256> texts;
  for (size_t i = 0; i < texts.size(); ++i) texts[i] = dateText(static_cast<int>(i) * 97, format).c_str();
  PbDateFormatMapping mapping;
  mapping.setFormat(format);
  SbString date1, date2;
  float coord1, coord2;
  for (auto _ : state)
    for (int i = 0; i < kNumDates / 2; ++i) {
      mapping.setDateMapping(texts[static_cast<size_t>(i) % 256], texts[static_cast<size_t>(i + 1) % 256], 0, 1);
      mapping.getDateMapping(date1, date2, coord1, coord2);
      benchmark::DoNotOptimize(coord2);
    }
  state.SetItemsProcessed(state.iterations() * kNumDates);
}
BENCHMARK_CAPTURE(dateMapping, numbers, "dmy");
BENCHMARK_CAPTURE(dateMapping, time, "Ymdh'\"");

void dateCoordinates(benchmark::State& state) {
  const PbDateFormatMapping mapping("1-01-1970", "1-01-2020", 0, 50, "dmY");
  for (auto _ : state)
    for (int i = 0; i < kNumDates; ++i)
      benchmark::DoNotOptimize(mapping.getCoordinateP(mapping.getDateP(static_cast<float>(i) * 1e-3f)));
  state.SetItemsProcessed(state.iterations() * kNumDates);
}
BENCHMARK(dateCoordinates);

void numberStrings(benchmark::State& state) {
  PiNumericFormat format;
  format.setFormatAuto(0, 1000, 0.25f, 1);
  char text[PiNumericFormat::TEXT_SIZE];
  for (auto _ : state)
    for (int i = 0; i < kNumDates; ++i) {
      format.getString(static_cast<float>(i) * 0.25f, text);
      benchmark::DoNotOptimize(text[0]);
    }
  state.SetItemsProcessed(state.iterations() * kNumDates);
}
BENCHMARK(numberStrings);

}  // namespace
