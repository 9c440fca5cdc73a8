#ifndef ORMELLE_PIMESHSCRATCH_H
#define ORMELLE_PIMESHSCRATCH_H

#include <Inventor/SbVec3f.h>
#include <Ormelle/PoMesh.h>

/// The one owner of the points and values that a rebuild collects in the statics of PoMesh: their memory, growth and
/// reset. They serve one rebuild at a time.
class PiMeshScratch {
 public:
  static void init();
  static void finish();

  static void pushPoint(const SbVec3f& point);
  static void pushValue(float value);

  static const float* values() { return PoMesh::m_pointValues; }
  static int numValues() { return PoMesh::m_numValues; }
  static const float (*points())[3] { return PoMesh::m_points; }
  static int numPoints() { return PoMesh::m_numPoints; }
  static void clear() { PoMesh::m_numPoints = PoMesh::m_numValues = 0; }
};

/// The part of a rebuild that makes geometry. It starts with empty collections, which no other rebuild may be using.
class PiRebuildScope {
 public:
  PiRebuildScope();
  ~PiRebuildScope();
  PiRebuildScope(const PiRebuildScope&) = delete;
  PiRebuildScope& operator=(const PiRebuildScope&) = delete;

 private:
  static bool s_isOpen;
};

#endif
