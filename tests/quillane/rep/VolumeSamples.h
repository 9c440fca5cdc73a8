#ifndef ORMELLE_TESTS_VOLUMESAMPLES_H
#define ORMELLE_TESTS_VOLUMESAMPLES_H

#include <Inventor/SbBox3f.h>
#include <Inventor/SbVec3f.h>
#include <Ormelle/PbMesh3D.h>

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

class SoGroup;

/// A box [0, numX] x [0, numY] x [0, numZ] of unit cubes, of which each is one or several cells.
struct VolumeKind {
  std::string name;
  std::function<std::unique_ptr<PbMesh3D>(int numX, int numY, int numZ)> make;
};

/// The box as every mesh class, of every kind of cell, of several kinds together, and of cells whose nodes run either
/// way round.
const std::vector<VolumeKind>& volumeKinds();
inline std::ostream& operator<<(std::ostream& out, const VolumeKind& kind) { return out << kind.name; }

/// One value for each node.
std::vector<float> valuesAt(const PbMesh3D& mesh, const std::function<float(const SbVec3f&)>& function);

/// A surface as a kit has made it: points, and polygons or the triangles of strips.
struct MadeSurface {
  std::vector<SbVec3f> points;
  std::vector<std::vector<int>> facets;    ///< as they stand in the shape
  std::vector<std::vector<int>> polygons;  ///< strips taken apart, all facing the same way

  static MadeSurface of(const SoGroup* group);

  /// Directed edges that occur more than once, polygons that name a point twice, points that no facet uses or that lie
  /// exactly on each other.
  int numFaults() const;
  /// Edges without one that runs the other way and for which `isBorder` of the ends isn't true.
  int numOpenEdges(const std::function<bool(const SbVec3f&, const SbVec3f&)>& isBorder) const;
  double area() const;
};

/// Whether both points lie on one side of the box.
bool areOnSide(const SbBox3f& box, const SbVec3f& a, const SbVec3f& b);

#endif
