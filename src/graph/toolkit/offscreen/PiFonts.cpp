#include "graph/toolkit/offscreen/PiFonts.h"

#include <cstdlib>

void useInstalledFonts() {
  setenv("COIN_FREETYPE2_LIBNAME", "libfreetype.so.6", 0);
  setenv("COIN_FONTCONFIG_LIBNAME", "libfontconfig.so.1", 0);
}
