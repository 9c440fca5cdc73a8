#ifndef ORMELLE_BENCH_ALLOCATIONCOUNT_H
#define ORMELLE_BENCH_ALLOCATIONCOUNT_H

#include <cstddef>

/// How often memory was asked for through operator new, by anything in the process, so far.
std::size_t allocationCount();

#endif
