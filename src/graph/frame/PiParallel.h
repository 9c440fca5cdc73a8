#ifndef ORMELLE_PIPARALLEL_H
#define ORMELLE_PIPARALLEL_H

#include <cstddef>

/// Shares the work of one rebuild among threads. What a task does may depend on its number alone, never on the thread
/// or on the order in which tasks run: so results are the same to the byte for any number of threads. Tasks don't touch
/// the toolkit, and what one task writes no other touches.
class PiParallel {
 public:
  /// As many as PoBase::setNumThreads says, else as many as the machine has cores; at least 1.
  static int numThreads();

  /// Any number below 1 means all cores.
  static void setNumThreads(int num);

  /// Calls task(0) to task(num - 1), each once, and returns when all are through. With one thread they run in order on
  /// the caller's. An exception of a task reaches the caller.
  template <typename Task>
  static void run(int num, const Task& task) {
    runTasks(
        num, [](const void* data, int index) { (*static_cast<const Task*>(data))(index); }, &task);
  }

  /// Calls task(begin, end) for blocks of `size` (at least 1) that make up 0 to num, the last one shorter. The blocks
  /// don't depend on the number of threads.
  template <typename Task>
  static void forBlocks(std::size_t num, std::size_t size, const Task& task) {
    if (num == 0) return;
    run(static_cast<int>((num - 1) / size + 1), [&](int block) {
      const std::size_t begin = static_cast<std::size_t>(block) * size;
      task(begin, num - begin < size ? num : begin + size);
    });
  }

 private:
  static void runTasks(int num, void (*task)(const void* data, int index), const void* data);

  static int s_numThreads;  ///< 0: all cores
};

#endif
