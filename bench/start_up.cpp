// Starts the library once, in a process where nothing has run before, and prints the seconds that it took: first the
// toolkit's own start, then ours.

#include <Inventor/SoDB.h>
#include <Inventor/nodekits/SoNodeKit.h>
#include <Ormelle/PoOrmelle.h>

#include <chrono>
#include <cstdio>

namespace {

double now() { return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count(); }

}  // namespace

int main() {
  const double start = now();
  SoDB::init();
  SoNodeKit::init();
  const double toolkit = now();
  PoOrmelle::init();
  const double end = now();
  std::printf("%.9f %.9f\n", toolkit - start, end - toolkit);
  return PoOrmelle::isInitialized() ? 0 : 1;
}
