#ifndef ORMELLE_PISTREAMWALK_H
#define ORMELLE_PISTREAMWALK_H

#include <Inventor/SbVec3f.h>

#include <cmath>
#include <concepts>

#include "quillane/stream/PiStreamIntegrator.h"

/// Where a point is, seen from a cell. `NOWHERE`: its place can't be told, as in a degenerate cell.
enum class PiStreamPlace { INSIDE, OUTSIDE, NOWHERE };

/// The cell in which a path is, for one thread.
template <class C>
concept PiStreamCells = requires(C cells, const SbVec3f& point, SbVec3f& pcoord) {
  /// Goes to the cell that holds `point`; false if there is none.
  { cells.start(point, pcoord) } -> std::same_as<bool>;
  /// The same for a point that left the current cell.
  { cells.move(point, pcoord) } -> std::same_as<bool>;
  /// Goes to a cell of known index.
  { cells.enter(0) } -> std::same_as<bool>;
  /// Of the current cell.
  { cells.index() } -> std::same_as<int>;
  { cells.longestEdge() } -> std::same_as<float>;
  { cells.locate(point, pcoord) } -> std::same_as<PiStreamPlace>;
  { cells.vector(pcoord) } -> std::same_as<SbVec3f>;
  { cells.value(pcoord) } -> std::same_as<float>;
};

inline bool isFinitePoint(const SbVec3f& p) {
  return std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]);
}

/// Integrates from `point`, which is at `pcoord` in the current cell.
template <PiStreamCells Cells>
void walkStream(Cells& cells, const PiStreamField& field, const PiStreamLimits& limits, SbVec3f point, SbVec3f pcoord,
                PiStreamTrack& track) {
  const float direction = limits.isBackward ? -1.0F : 1.0F;
  const auto mostSteps = static_cast<std::size_t>(limits.numSteps);
  SbVec3f velocity = cells.vector(pcoord);
  float speed = velocity.length();
  float step = limits.stepFactor * cells.longestEdge();
  float time = 0, length = 0;
  // Written so that what is undefined stops.
  while (track.steps.size() < mostSteps && speed > limits.minSpeed && time < limits.time && length < limits.length) {
    track.steps.push_back({point, velocity, pcoord, time, field.values ? cells.value(pcoord) : speed, cells.index()});
    if (!(step > 0)) break;

    const SbVec3f ahead = point + velocity * (direction * step / speed);
    SbVec3f aheadCoord;
    // Ahead may be outside the cell, whose field is extrapolated then; where that can't be, this step is one of
    // Euler's.
    const SbVec3f aheadVelocity =
        cells.locate(ahead, aheadCoord) == PiStreamPlace::NOWHERE ? velocity : cells.vector(aheadCoord);
    const SbVec3f next = point + (velocity + aheadVelocity) * (direction * step * 0.5F / speed);
    const float moved = (next - point).length();
    if (!(moved > 0) || !isFinitePoint(next)) break;
    time += moved / speed;
    length += moved;

    if (cells.locate(next, pcoord) != PiStreamPlace::INSIDE) {
      const int left = cells.index();
      if (!cells.move(next, pcoord) || (field.accepts && cells.index() != left && !field.accepts(cells.index()))) {
        track.endsAtSkin = true;
        break;
      }
      step = limits.stepFactor * cells.longestEdge();
    }
    point = next;
    velocity = cells.vector(pcoord);
    speed = velocity.length();
  }
  track.time = time;
  track.length = length;
}

#endif
