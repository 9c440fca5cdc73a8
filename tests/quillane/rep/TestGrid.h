#ifndef ORMELLE_TESTS_TESTGRID_H
#define ORMELLE_TESTS_TESTGRID_H

#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PbMesh2D.h>

#include <memory>
#include <string>
#include <vector>

#include <Inventor/nodes/SoGroup.h>

/// Nodes of a grid and a value for each, from which any grid class that can hold them is made.
struct TestGrid {
  int numX = 0;
  int numY = 0;
  std::vector<float> x, y;  // one for each node
  std::vector<float> z;     // one for each node, or none for a flat grid
  std::vector<float> values;

  /// Unit cells from the origin; the value of a node is x + 10 y.
  static TestGrid unitCells(int numX, int numY);

  int node(int i, int j) const { return i * numY + j; }
  int numCells() const { return (numX - 1) * (numY - 1); }
  /// A PbCartesianGrid2D of these nodes, which copies them, with the values as set 0.
  std::unique_ptr<PbMesh2D> make() const;
};

/// A ring as a PbPolarGrid2D and its nodes as a PbCartesianGrid2D, raised by the same heights if `isRaised`, with the
/// same values as set 0.
struct PolarPair {
  explicit PolarPair(bool isRaised);
  std::unique_ptr<PbMesh2D> polar;
  std::unique_ptr<PbMesh2D> cartesian;
};

/// Grey from 0 at value 0 to 1 at value 100.
std::unique_ptr<PbLinearDataMapping> greyMapping();
inline float greyOf(float value) { return value / 100; }

/// The class names of the children, divided by blanks.
std::string childTypes(const SoGroup* group);

#endif
