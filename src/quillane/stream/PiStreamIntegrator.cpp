#include "quillane/stream/PiStreamIntegrator.h"

#include <Ormelle/PbMesh.h>

#include <algorithm>
#include <cmath>

#include "graph/data/PiFinite.h"
#include "graph/frame/PiParallel.h"
#include "quillane/search/PiCellLocator.h"

namespace {

constexpr int kMostPointsOfAll = 4'000'000;
constexpr int kMostPoints = 1'000'000;
constexpr int kAlwaysGranted = 1000;

bool canFlow(const PiStreamField& field, const PiStreamLimits& limits) {
  return field.mesh && !field.mesh->isEmpty() && field.vectors && limits.stepFactor > 0;
}

/// Follows paths, one after the other. Each thread has its own.
class StreamWalk {
 public:
  StreamWalk(const PiStreamField& field, const PiStreamLimits& limits, int numPaths, const PiCellLocator& locator)
      : m_field(field),
        m_limits(limits),
        m_mostSteps(std::min(limits.numSteps, PiStreamIntegrator::boundOfSteps(numPaths))),
        m_locator(locator) {}

  void walkFrom(const SbVec3f& start, PiStreamTrack& track) {
    SbVec3f pcoord;
    if (!isFinitePoint(start) || !m_locator.find(start, m_cell, pcoord)) return;
    if (m_field.accepts && !m_field.accepts(m_cell.index())) return;
    walk(start, pcoord, track);
  }

  void walkFrom(int cell, const SbVec3f& pcoord, const SbVec3f& start, PiStreamTrack& track) {
    if (isFinitePoint(start) && isFinitePoint(pcoord) && m_locator.read(cell, m_cell)) walk(start, pcoord, track);
  }

 private:
  SbVec3f vectorAt(const SbVec3f& pcoord) const {
    return m_field.areVectorsPerCell ? m_field.vectors[m_cell.index()] : m_cell.value(pcoord, m_field.vectors);
  }
  float valueAt(const SbVec3f& pcoord, float speed) const {
    if (!m_field.values) return speed;
    return m_field.areValuesPerCell ? m_field.values[m_cell.index()] : m_cell.value(pcoord, m_field.values);
  }

  /// Goes to the cell that holds a point outside the current one; false if there is none that may be entered.
  bool enterCellOf(const SbVec3f& point, SbVec3f& pcoord) {
    return m_locator.find(point, m_cell, pcoord) && (!m_field.accepts || m_field.accepts(m_cell.index()));
  }

  /// From a point of the current cell.
  void walk(SbVec3f point, SbVec3f pcoord, PiStreamTrack& track) {
    const float direction = m_limits.isBackward ? -1.0F : 1.0F;
    const auto mostSteps = static_cast<std::size_t>(std::max(0, m_mostSteps));
    SbVec3f velocity = vectorAt(pcoord);
    float speed = velocity.length();
    float step = m_limits.stepFactor * m_cell.longestEdge();
    float time = 0, length = 0;
    // Written so that what is undefined stops.
    while (track.steps.size() < mostSteps && speed > m_limits.minSpeed && std::isfinite(speed) &&
           time < m_limits.time && length < m_limits.length) {
      track.steps.push_back({point, velocity, pcoord, time, valueAt(pcoord, speed), m_cell.index()});

      const SbVec3f ahead = point + velocity * (direction * step / speed);
      SbVec3f aheadCoord;
      bool isKnown = false;
      m_cell.locate(ahead, 0, aheadCoord, &isKnown);
      // Ahead may be outside the cell, whose field is extrapolated then. Where that can't be, this is a step of
      // Euler's.
      const SbVec3f aheadVelocity = isKnown ? vectorAt(aheadCoord) : velocity;
      const SbVec3f next = point + (velocity + aheadVelocity) * (direction * step * 0.5F / speed);
      const float moved = (next - point).length();
      if (!(moved > 0) || !isFinitePoint(next)) break;
      time += moved / speed;
      length += moved;

      if (!m_cell.locate(next, 0, pcoord)) {
        if (!enterCellOf(next, pcoord)) {
          track.endsAtSkin = true;
          break;
        }
        step = m_limits.stepFactor * m_cell.longestEdge();
      }
      point = next;
      velocity = vectorAt(pcoord);
      speed = velocity.length();
    }
    track.time = time;
    track.length = length;
  }

  const PiStreamField& m_field;
  const PiStreamLimits& m_limits;
  int m_mostSteps;
  const PiCellLocator& m_locator;
  PiPlainCell m_cell;
};

}  // namespace

int PiStreamIntegrator::boundOfSteps(int numPaths) {
  return std::clamp(kMostPointsOfAll / std::max(1, numPaths), kAlwaysGranted, kMostPoints);
}

void PiStreamIntegrator::integrate(const PiStreamField& field, const PiStreamLimits& limits, int numStarts,
                                   const SbVec3f* starts, std::vector<PiStreamTrack>& tracks) {
  tracks.resize(static_cast<std::size_t>(std::max(0, numStarts)));
  for (PiStreamTrack& track : tracks) track.clear();
  if (tracks.empty() || !canFlow(field, limits)) return;
  const PiCellLocator locator(*field.mesh);
  const auto integrateBlock = [&](std::size_t begin, std::size_t end) {
    StreamWalk walk(field, limits, numStarts, locator);
    for (std::size_t path = begin; path < end; ++path) walk.walkFrom(starts[path], tracks[path]);
  };
  // A filter is the application's: it may not bear to be asked by several threads.
  if (field.accepts)
    integrateBlock(0, tracks.size());
  else
    PiParallel::forBlocks(tracks.size(), 8, integrateBlock);
}

void PiStreamIntegrator::integrateFrom(const PiStreamField& field, const PiStreamLimits& limits, int cell,
                                       const SbVec3f& pcoord, const SbVec3f& start, PiStreamTrack& track) {
  track.clear();
  if (!canFlow(field, limits)) return;
  const PiCellLocator locator(*field.mesh);
  StreamWalk(field, limits, 1, locator).walkFrom(cell, pcoord, start, track);
}
