#ifndef ORMELLE_PIAXISSEARCH_H
#define ORMELLE_PIAXISSEARCH_H

/// Index i of the interval of a rising or falling axis that holds `c`: from axis[i] up to, but not including, axis[i +
/// 1]. The last node has an index of its own, `num - 1`. Gives -1 outside the axis. By bisection; the first two
/// coordinates tell whether the axis rises.
inline int findAxisInterval(const float* axis, int num, float c) {
  if (num < 2) return -1;
  const bool isRising = axis[0] <= axis[1];
  // Whether `c` comes at or behind node i.
  const auto isReached = [=](int i) { return isRising ? c >= axis[i] : c <= axis[i]; };
  int low = 0, high = num - 1;
  if (!isReached(low)) return -1;
  if (isReached(high)) return c == axis[high] ? high : -1;
  while (high - low > 1) {
    const int middle = low + (high - low) / 2;
    (isReached(middle) ? low : high) = middle;
  }
  return low;
}

/// The same for cells: the last node belongs to none.
inline int findAxisCell(const float* axis, int num, float c) {
  const int interval = findAxisInterval(axis, num, c);
  return interval < num - 1 ? interval : -1;
}

#endif
