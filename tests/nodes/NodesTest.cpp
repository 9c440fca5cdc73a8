#include "NodesTest.h"

PO_KIT_SOURCE(CountingKit)

CountingKit::CountingKit() {
  PO_KIT_CONSTRUCTOR(CountingKit);
  PO_KIT_CONSTRUCTED(CountingKit);
}
