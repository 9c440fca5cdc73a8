#ifndef ORMELLE_PISWEEP_H
#define ORMELLE_PISWEEP_H

#include <Inventor/SbVec3f.h>

#include <cstddef>
#include <span>
#include <vector>

#include "quillane/emit/PiIndexList.h"

class SoGroup;
class SoMaterial;

/// The surface that a section leaves behind when it moves along a curve: quadrangles between one section and the next.
///
/// @code
/// PiSweep sweep(2, PiSweep::OPEN, numPoints);
/// sweep.startRun();
/// for (...) sweep.add(corners, point);
/// SoGroup* group = sweep.finish({.material = material});
/// @endcode
class PiSweep {
 public:
  enum Kind {
    OPEN,   ///< the last corner isn't joined to the first
    FLAT,   ///< neither, and all of it lies in a plane z = constant, where all faces then run counter-clockwise
    CLOSED  ///< it is, and each run is closed by its first and its last section
  };
  struct Look {
    SoMaterial* material = nullptr;  ///< null where colours are inherited
    bool isPerPart = false;          ///< a quadrangle has the colour of its first section, else they are mixed
  };

  /// @pre numCorners >= 2
  PiSweep(int numCorners, Kind kind, std::size_t numSectionsExpected);

  /// The next section isn't joined to the one before.
  void startRun();
  /// The corners run counter-clockwise for who looks against the way of the curve: then the outside of the surface is
  /// in front. `entry` is that of the material for this section.
  void add(const SbVec3f* corners, int entry);
  /// The group of it all, without a reference; null if there is no quadrangle. Nothing may follow.
  SoGroup* finish(const Look& look);

 private:
  bool isClockwise(const int* quad) const;
  void addFace(std::span<const int> corners, int entry);
  void addCap(std::size_t section, bool isStart);
  void endRun();

  const int m_numCorners;
  const Kind m_kind;
  std::size_t m_runStart = 0;  // its first section
  std::vector<SbVec3f> m_points;
  std::vector<int> m_entries;  // one for each section
  PiIndexList m_coordIndex;
  std::vector<int> m_faceEntries;
};

#endif
