#ifndef ORMELLE_PISTREAMINTEGRATOR_H
#define ORMELLE_PISTREAMINTEGRATOR_H

#include <functional>
#include <vector>

#include <Inventor/SbVec3f.h>

class PbMesh;

/// What paths follow.
struct PiStreamField {
  const PbMesh* mesh = nullptr;
  /// One for each node, or each cell.
  const SbVec3f* vectors = nullptr;
  bool areVectorsPerCell = false;
  /// The same, of which points get their value; null: the speed.
  const float* values = nullptr;
  bool areValuesPerCell = false;
  /// Whether paths may go into a cell; empty: into all. Asked on the thread of the caller.
  std::function<bool(int cell)> accepts;
};

/// How they follow it, and how far.
struct PiStreamLimits {
  float time = 3.4028235e38F;
  float length = 3.4028235e38F;
  float minSpeed = 0;
  float stepFactor = 0.3F;  ///< of the longest edge of a cell
  int numSteps = 2147483647;
  bool isBackward = false;

  bool operator==(const PiStreamLimits&) const = default;
};

/// A point of a path with all that is known there.
struct PiStreamStep {
  SbVec3f point;
  SbVec3f velocity;
  SbVec3f pcoord;  ///< in the cell
  float time;
  float value;
  int cell;
};

/// A path as it is integrated.
struct PiStreamTrack {
  std::vector<PiStreamStep> steps;
  float length = 0;  ///< at the end of the last step
  float time = 0;
  bool endsAtSkin = false;

  void clear() {
    steps.clear();
    length = time = 0;
    endsAtSkin = false;
  }
};

/// Integrates paths through a field, by Heun's method over arc length.
///
/// Whatever the limits, the paths of one call have four million points in all at most, and each a million; but each may
/// have a thousand.
namespace PiStreamIntegrator {

/// The most points a path may have where `numPaths` are integrated.
int boundOfSteps(int numPaths);

/// The path from each start; that of a start outside the mesh or in a cell that isn't accepted is empty. The tracks
/// don't depend on the number of threads.
void integrate(const PiStreamField& field, const PiStreamLimits& limits, int numStarts, const SbVec3f* starts,
               std::vector<PiStreamTrack>& tracks);

/// The path from a place in a known cell, which isn't asked whether it is accepted.
void integrateFrom(const PiStreamField& field, const PiStreamLimits& limits, int cell, const SbVec3f& pcoord,
                   const SbVec3f& start, PiStreamTrack& track);

}  // namespace PiStreamIntegrator

#endif
