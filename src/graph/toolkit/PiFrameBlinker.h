#ifndef ORMELLE_PIFRAMEBLINKER_H
#define ORMELLE_PIFRAMEBLINKER_H

#include <Inventor/nodes/SoBlinker.h>
#include <Inventor/sensors/SoOneShotSensor.h>

#include "graph/toolkit/PiNodeRef.h"

/// Sets an SoBlinker to a child, from which on it blinks if it shall. The blinker of Coin alone only comes to the child
/// at the next tick of the clock and shows its first till then, so a picture that is drawn without an event loop would
/// never show the one meant. Here the clock takes over when the loop next has time.
class PiFrameBlinker {
 public:
  PiFrameBlinker() : m_start(&PiFrameBlinker::startCB, this) {}
  PiFrameBlinker(const PiFrameBlinker&) = delete;
  PiFrameBlinker& operator=(const PiFrameBlinker&) = delete;

  /// `speed` is in rounds a second; unless it is above 0 and finite, the blinker stands. A `child` that isn't among the
  /// children counts on from their first again, backwards too. Without children nothing happens.
  void show(SoBlinker* blinker, float speed, bool isOn, int child);

 private:
  static void startCB(void* self, SoSensor* sensor);

  SoOneShotSensor m_start;
  PiNodeRef<SoBlinker> m_waiting;  ///< for the clock to take over
};

#endif
