#ifndef ORMELLE_PIDATESPAN_H
#define ORMELLE_PIDATESPAN_H

#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "graph/format/PiDate.h"

/// The time between two dates, whichever is earlier, as whole days and what remains of a day.
struct PiDateSpan {
  int days = 0;
  int hours = 0;       // 0 to 23
  int minutes = 0;     // 0 to 59
  double seconds = 0;  // below 60

  PiDateSpan() = default;
  PiDateSpan(const PiDate& start, const PiDate& end) {
    const auto timeOfDay = [](const PiDate& d) { return d.m_hour * 3600.0 + d.m_minute * 60.0 + d.m_second; };
    int64_t numDays = PiDate::getDeltaDays(end, start);
    double rest = timeOfDay(end) - timeOfDay(start);
    if (numDays < 0 || (numDays == 0 && rest < 0)) {
      numDays = -numDays;
      rest = -rest;
    }
    if (rest < 0) {
      --numDays;
      rest += 86400;
    }
    days = static_cast<int>(numDays);
    hours = static_cast<int>(rest / 3600);
    rest -= hours * 3600.0;
    minutes = static_cast<int>(rest / 60);
    seconds = rest - minutes * 60.0;
  }

  int64_t inHours() const { return int64_t{days} * 24 + hours; }
  int64_t inMinutes() const { return inHours() * 60 + minutes; }
  double inSeconds() const { return static_cast<double>(inMinutes()) * 60 + seconds; }
};

#endif
