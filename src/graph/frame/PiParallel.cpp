#include "graph/frame/PiParallel.h"

#include <algorithm>

#include <oneapi/tbb/parallel_for.h>
#include <oneapi/tbb/partitioner.h>
#include <oneapi/tbb/task_arena.h>

int PiParallel::s_numThreads = 0;

int PiParallel::numThreads() { return s_numThreads > 0 ? s_numThreads : std::max(1, tbb::info::default_concurrency()); }

void PiParallel::setNumThreads(int num) { s_numThreads = std::max(0, num); }

void PiParallel::runTasks(int num, void (*task)(const void* data, int index), const void* data) {
  const int threads = std::min(num, numThreads());
  if (threads <= 1) {
    for (int index = 0; index < num; ++index) task(data, index);
    return;
  }
  // An arena of our own, so that the application's settings of the library don't change ours.
  tbb::task_arena arena(threads);
  arena.execute([&] {
    tbb::parallel_for(
        0, num, 1, [&](int index) { task(data, index); }, tbb::simple_partitioner());
  });
}
