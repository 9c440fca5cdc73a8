#include "quillane/stream/PiStreamIntegrator.h"

#include <algorithm>

#include "quillane/stream/PiMeshCells.h"
#include "quillane/stream/PiStreamWalk.h"

namespace {

constexpr int kMostPointsOfAll = 4'000'000;
constexpr int kMostPoints = 1'000'000;
constexpr int kAlwaysGranted = 1000;

PiStreamLimits bounded(const PiStreamLimits& limits, int numPaths) {
  PiStreamLimits result = limits;
  result.numSteps = std::min(limits.numSteps, PiStreamIntegrator::boundOfSteps(numPaths));
  return result;
}

bool canFlow(const PiStreamField& field, const PiStreamLimits& limits) {
  return field.mesh && !field.mesh->isEmpty() && field.vectors && limits.stepFactor > 0;
}

template <PiStreamCells Cells>
void integrateOne(Cells& cells, const PiStreamField& field, const PiStreamLimits& limits, const SbVec3f& start,
                  PiStreamTrack& track) {
  SbVec3f pcoord;
  if (!isFinitePoint(start) || !cells.start(start, pcoord)) return;
  if (field.accepts && !field.accepts(cells.index())) return;
  walkStream(cells, field, limits, start, pcoord, track);
}

}  // namespace

int PiStreamIntegrator::boundOfSteps(int numPaths) {
  return std::clamp(kMostPointsOfAll / std::max(1, numPaths), kAlwaysGranted, kMostPoints);
}

void PiStreamIntegrator::integrate(const PiStreamField& field, const PiStreamLimits& limits, int numStarts,
                                   const SbVec3f* starts, std::vector<PiStreamTrack>& tracks) {
  tracks.resize(static_cast<std::size_t>(std::max(0, numStarts)));
  for (PiStreamTrack& track : tracks) track.clear();
  if (!canFlow(field, limits)) return;
  const PiStreamLimits bound = bounded(limits, numStarts);
  PiMeshCells cells(field);
  for (std::size_t path = 0; path < tracks.size(); ++path)
    integrateOne(cells, field, bound, starts[path], tracks[path]);
}

void PiStreamIntegrator::integrateFrom(const PiStreamField& field, const PiStreamLimits& limits, int cell,
                                       const SbVec3f& pcoord, const SbVec3f& start, PiStreamTrack& track) {
  track.clear();
  if (!canFlow(field, limits) || !isFinitePoint(start) || !isFinitePoint(pcoord)) return;
  PiMeshCells cells(field);
  if (cells.enter(cell)) walkStream(cells, field, bounded(limits, 1), start, pcoord, track);
}
