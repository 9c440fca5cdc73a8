#include "graph/toolkit/PiToolkit.h"

#include <Inventor/C/tidbits.h>
#include <Inventor/SoDB.h>
#include <Inventor/nodekits/SoNodeKit.h>

int PiToolkit::s_useCount = 0;

void PiToolkit::init() {
  SoDB::init();
  SoNodeKit::init();
  ++s_useCount;
}

void PiToolkit::finish() {
  if (s_useCount > 0) --s_useCount;
}

void PiToolkit::callBeforeEnd(void (*callback)()) { cc_coin_atexit(callback); }
