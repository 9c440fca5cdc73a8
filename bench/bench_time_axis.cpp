#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbDateFormatMapping.h>
#include <Ormelle/PbMiscTextAttr.h>
#include <Ormelle/PoTimeAxis.h>
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <string>

#include "graph/axis/PiDateGradations.h"
#include "graph/axis/PiDateRepChoice.h"
#include "graph/axis/PiTimeAxisLanguage.h"

namespace {

// An axis of twenty days with a gradation each, and above them the automatic level of months or one written by hand.
class TwentyDays {
 public:
  explicit TwentyDays(const char* rep) : m_mapping("1-06-1992", "20-06-1992", 0, 19, "dmY") {
    m_text.setLineLength('|', 0);
    m_axis = new PoTimeAxis("1-06-1992", "20-06-1992", 0, PoTimeAxis::X);
    m_axis->ref();
    m_axis->setDateFormatMapping(&m_mapping);
    m_axis->setMiscTextAttr(&m_text);
    m_axis->gradRep = rep;
    m_axis->rebuild();
  }
  ~TwentyDays() { m_axis->unref(); }
  TwentyDays(const TwentyDays&) = delete;
  TwentyDays& operator=(const TwentyDays&) = delete;

  PoTimeAxis* axis() const { return m_axis; }

 private:
  PbDateFormatMapping m_mapping;
  PbMiscTextAttr m_text;
  PoTimeAxis* m_axis;
};

void timeAxisRebuild(benchmark::State& state, const char* rep) {
  const TwentyDays days(rep);
  for (auto _ : state) days.axis()->rebuild();
  const float* coords = nullptr;
  state.counters["gradations"] = days.axis()->getMainGradCoords(coords);
}
BENCHMARK_CAPTURE(timeAxisRebuild, one_level, "1 DAY D");
BENCHMARK_CAPTURE(timeAxisRebuild, two_levels, "1 DAY D | 7 DAY D '.' M");
BENCHMARK_CAPTURE(timeAxisRebuild, automatic, "");

// Bytes that the heap holds more after 10,000 rebuilds.
void timeAxisHeapGrowth(benchmark::State& state) {
  const TwentyDays days("1 DAY D | 1 MON 3 M");
  for (int i = 0; i < 100; ++i) days.axis()->rebuild();
  double growth = 0;
  for (auto _ : state) {
    const auto before = mallinfo2().uordblks;
    for (int i = 0; i < 10000; ++i) days.axis()->rebuild();
    growth = static_cast<double>(mallinfo2().uordblks) - static_cast<double>(before);
  }
  state.counters["bytes"] = growth;
}
BENCHMARK(timeAxisHeapGrowth)->Iterations(2)->Unit(benchmark::kMillisecond);

// Reading two levels, as happens when the field changes.
void timeAxisLanguage(benchmark::State& state) {
  for (auto _ : state)
    benchmark::DoNotOptimize(PiTimeAxisLanguage::parseAxisRep("6 HOU H 'h' | 1 DAY D ' ' 3 M ' ' Y", '|'));
}
BENCHMARK(timeAxisLanguage);

// The gradations of one level without any node.
void timeAxisGradations(benchmark::State& state) {
  PbDateFormatMapping mapping("1-06-1992", "20-06-1992", 0, 19, "dmY");
  PiDateRange range;
  range.start.setDateString("1-06-1992", "dmY");
  range.end.setDateString("20-06-1992", "dmY");
  range.endCoord = 19;
  const PiDateRep rep = PiDateRepChoice::getDateAxisRep(PiDateSpan(range.start, range.end), {}, {}, PiDate::ENGLISH);
  for (auto _ : state)
    benchmark::DoNotOptimize(PiDateGradations::getGradList(range, mapping, rep[0], PiDateGradations::UNFIT, {}));
}
BENCHMARK(timeAxisGradations);

}  // namespace
