#ifndef ORMELLE_POBASESTREAMLINE_H
#define ORMELLE_POBASESTREAMLINE_H

#include <memory>
#include <vector>

#include <Inventor/fields/SoMFColor.h>
#include <Inventor/fields/SoMFVec3f.h>

#include <Ormelle/PoMesh.h>

class PbCell;
class PiStreamPath;
struct PiStreamStore;

/// Root of the kits that follow a set of vectors through a mesh, from start points on.
///
/// A path goes through the mesh cell by cell, in steps of a length that is a part of the longest edge of the cell it is
/// in. Each step is a step of Heun's method over arc length (the mean of the vector where it starts and of that where
/// it would lead, the latter by the shape functions of the cell where it starts), so the error falls with the square of
/// the step. A path ends
/// - with as many points as `integrationMaxStepNumber`,
/// - where the speed is `minSpeed` or less, or undefined,
/// - when it has taken `maxLifetime` or is as long as `maxLength`,
/// - where the mesh ends or the cell filter refuses the next cell: only then it ends at the skin,
/// - where a step doesn't move it.
///
/// Its points are those where steps started: the last is inside the mesh. A start point outside the mesh, in a cell
/// that the filter refuses or at a vector that is zero or undefined makes no path. However large the limits are, paths
/// have an end: a path is cut after a million points, and those of one kit when they have four million together, but
/// never before its 1000th.
///
/// All classes of meshes with cells serve, surfaces too. The vectors are the set `vecsIndex`, bound to nodes or cells.
/// With a data mapping and a set `valuesIndex`, the value of a point is that of the set, else it is the speed.
///
/// Reads from the state, unless set: the mesh, the data mapping, and the cell filter. A filter is asked on the thread
/// of the rebuild; without one, paths share the threads of PoBase::setNumThreads(), and are the same for any number.
///
/// The catalog is that of PoBase.
class ORMELLE_API PoBaseStreamLine : public PoMesh {
  PO_KIT_ABSTRACT_HEADER(PoBaseStreamLine, PoMesh);

 public:
  enum IntegrationDirection {
    FORWARD = 0,  ///< with the vectors
    BACKWARD = 1  ///< against them; the time rises all the same
  };

  /// Where paths start, one for each point. Empty by default.
  SoMFVec3f startPoints;
  /// The longest time, in units of length of the mesh over those of the vectors; 0 (the default) and below: no limit.
  SoSFFloat maxLifetime;
  /// The longest length, in coordinates of the mesh; 0 (the default) and below: no limit.
  SoSFFloat maxLength;
  /// The speed at which a path ends, 0 by default.
  SoSFFloat minSpeed;
  /// The length of a step in longest edges of the current cell, 0.3 by default. There is no path unless it is above 0.
  /// Where cells are far longer than high, a smaller one keeps the look ahead of a step near the cell.
  SoSFFloat integrationStepLengthFactor;
  /// The greatest number of points of a path; 0 (the default) and below: no limit.
  SoSFInt32 integrationMaxStepNumber;
  /// An IntegrationDirection, `FORWARD` by default.
  SoSFEnum integrationDirection;
  /// Colours of the paths where no data mapping colours them, in the order of `startPoints`; the last holds for all
  /// further paths. Empty by default: the material of the traversal state.
  SoMFColor colors;

  /// Follows the vectors from a point and fills `path`, which stays empty if the point is in no cell that the filter
  /// accepts. `length` and `time` get those at the end of the last step. Uses the objects that getMesh() and its like
  /// give.
  void integrateStreamLine(const SbVec3f& start, PiStreamPath& path, float& length, float& time);
  /// The same from a place in a known cell of that mesh. `filter` (may be null) is asked of each cell that the path
  /// comes to, with the element of `filter_values`, which are null or one value for each cell.
  void integrateStreamLine(const PbCell* cell, const SbVec3f& pcoord, const SbVec3f& start, PiStreamPath& path,
                           float& length, float& time, const PoCellFilter* filter, const float* filter_values);

  /// @name What a subclass keeps of each point
  /// They are called in this order behind each point that was added to the path, on the thread of the caller, and here
  /// keep nothing.
  /// @{
  /// `pcoord` is the place of the point in `cell`, which is good during the call.
  virtual void saveNorm(PiStreamPath& path, const PbCell* cell, SbVec3f& pcoord, SbVec3f& velocity);
  /// The time since the start.
  virtual void saveTime(PiStreamPath& path, float time);
  virtual void saveSpeed(PiStreamPath& path, SbVec3f& velocity);
  /// @}

  /// Another number whenever the paths of the kit were integrated anew; 0 before the first time.
  unsigned int getPathsId() const;

  /// Bytes of the buffers that the kit keeps: the base's and the paths.
  std::size_t getMemorySize() const override;

 protected:
  PoBaseStreamLine();
  ~PoBaseStreamLine() override;

  void preRebuild() override;
  void addElementsAllCaches() override;

  /// The paths from these points, one each, for a rebuild between preRebuild() and postRebuild(). They are those of the
  /// last call if nothing changed that they depend on: mesh, vectors, values, filter, start points and the fields that
  /// say how they are integrated. Good until the next call.
  const std::vector<PiStreamPath>& integratePaths(int numStarts, const SbVec3f* starts);
  /// From the field `startPoints`.
  const std::vector<PiStreamPath>& integratePaths();

 private:
  std::unique_ptr<PiStreamStore> m_streams;
};

#endif
