#ifndef ORMELLE_PIMOTIONSTORE_H
#define ORMELLE_PIMOTIONSTORE_H

#include <cstdlib>
#include <vector>

#include "graph/toolkit/PiFrameBlinker.h"

/// What a kit of moving particles keeps from one rebuild to the next.
struct PiMotionStore {
  PiFrameBlinker blinking;
  std::vector<int> draws;    ///< one random number for each path
  unsigned int drawsOf = 0;  ///< the paths that they were drawn for

  void draw(unsigned int pathsId, std::size_t num) {
    if (drawsOf == pathsId && draws.size() == num) return;
    drawsOf = pathsId;
    draws.resize(num);
    for (int& number : draws) number = std::rand();
  }
};

#endif
