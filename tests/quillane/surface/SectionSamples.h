#ifndef ORMELLE_TESTS_SECTIONSAMPLES_H
#define ORMELLE_TESTS_SECTIONSAMPLES_H

#include <Inventor/SbVec3f.h>

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <random>
#include <span>
#include <vector>

#include "quillane/surface/PiMeshSection.h"
#include "support/MeshFamily.h"

/// Meshes to be cut, and other ways to what a section must be.

/// All kinds of cells in one mesh of the box: columns of wedges, and hexahedra of which some are cut into pyramids
/// round their middle. Facets match throughout.
MeshSample<PbMesh3D> makeMixedMesh(const BoxSpec& spec);

/// The kinds of the family and the mixed mesh.
std::vector<MeshKind3D> sectionKinds();

/// Cuts a mesh of whatever class.
void cutMesh(PiMeshSection& section, const PbMesh3D& mesh, const PiSectionRequest& request);

/// The area and the outline of the plane inside the box, by clipping a large square.
struct BoxSection {
  BoxSection(const BoxSpec& box, const PiSectionPlane& plane);
  double area() const;
  double perimeter() const;

 private:
  std::vector<std::array<double, 3>> m_corners;
};

/// What the polygons of a section are like.
struct SectionFacts {
  explicit SectionFacts(const PiSection& section, const PiSectionPlane& plane);

  double area = 0;
  double openLength = 0;  ///< of edges that one polygon has
  int numShared = 0;      ///< edges that three polygons or more have
  int numTwins = 0;       ///< points with the same coordinates as another
  int numUnused = 0;      ///< points that no polygon has
  int numBackwards = 0;   ///< polygons that don't face the front
  double furthest = 0;    ///< from a point to the plane
};

#endif
