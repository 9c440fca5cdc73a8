#include "graph/frame/PiParallel.h"

#include <algorithm>

#include <oneapi/tbb/parallel_for.h>
#include <oneapi/tbb/partitioner.h>
#include <oneapi/tbb/task_arena.h>

// Tells the thread sanitizer in which order things happen: the library that shares out the tasks is built without it,
// and so is this source, which holds half of that library.
#ifdef ORMELLE_THREAD_SANITIZER
#include <sanitizer/tsan_interface.h>
#define PI_HAPPENS_BEFORE(sign) __tsan_release(sign)
#define PI_HAPPENS_AFTER(sign) __tsan_acquire(sign)
#else
#define PI_HAPPENS_BEFORE(sign) static_cast<void>(sign)
#define PI_HAPPENS_AFTER(sign) static_cast<void>(sign)
#endif

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
  char started = 0;
  char finished = 0;
  PI_HAPPENS_BEFORE(&started);
  arena.execute([&] {
    tbb::parallel_for(
        0, num, 1,
        [&](int index) {
          PI_HAPPENS_AFTER(&started);
          task(data, index);
          PI_HAPPENS_BEFORE(&finished);
        },
        tbb::simple_partitioner());
  });
  PI_HAPPENS_AFTER(&finished);
}
