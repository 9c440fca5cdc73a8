#include "graph/toolkit/PiFrameBlinker.h"

#include <cmath>

void PiFrameBlinker::show(SoBlinker* blinker, float speed, bool isOn, int child) {
  const int num = blinker->getNumChildren();
  if (num == 0) return;
  const bool isRunning = isOn && speed > 0 && std::isfinite(speed);
  blinker->whichChild.enableConnection(FALSE);
  blinker->speed = std::isfinite(speed) ? speed : 0;
  blinker->on = isOn;
  const int rest = child % num;
  blinker->whichChild = rest < 0 ? rest + num : rest;

  m_waiting.reset(isRunning ? blinker : nullptr);
  if (isRunning)
    m_start.schedule();
  else
    m_start.unschedule();
}

void PiFrameBlinker::startCB(void* self, SoSensor*) {
  PiNodeRef<SoBlinker>& waiting = static_cast<PiFrameBlinker*>(self)->m_waiting;
  if (waiting) waiting->whichChild.enableConnection(TRUE);
  waiting.reset();
}
