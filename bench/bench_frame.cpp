// The start of the library, each time in a process of its own.

#include <benchmark/benchmark.h>

#include <cstdio>

namespace {

// ORMELLE_START_UP is the program that starts the library once and prints the two durations.
void BM_StartUp(benchmark::State& state) {
  double toolkit = 0;
  for (auto _ : state) {
    std::FILE* child = popen(ORMELLE_START_UP, "r");
    double toolkitSeconds = 0;
    double ownSeconds = 0;
    const int read = child ? std::fscanf(child, "%lf %lf", &toolkitSeconds, &ownSeconds) : 0;
    if (!child || pclose(child) != 0 || read != 2) {
      state.SkipWithError("the start-up program failed");
      break;
    }
    toolkit += toolkitSeconds;
    state.SetIterationTime(ownSeconds);
  }
  state.counters["toolkit_s"] = benchmark::Counter(toolkit, benchmark::Counter::kAvgIterations);
}
BENCHMARK(BM_StartUp)->UseManualTime()->Iterations(20)->Unit(benchmark::kMillisecond);

}  // namespace
