#ifndef ORMELLE_TESTS_CUTSURFACE_H
#define ORMELLE_TESTS_CUTSURFACE_H

#include <Inventor/SbVec3f.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PbMesh2D.h>

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "quillane/contour/PiContouring.h"
#include "support/MeshFamily.h"

/// A surface as bare numbers, from which everything that a contour worker answers is worked out again, cell by cell and
/// in another way.
struct CutSurface {
  std::string name;
  std::vector<SbVec3f> points;
  std::vector<std::vector<int>> cells;  // three or four nodes each
  std::vector<float> values;
  std::function<void(PiContouring&)> setOn;
  std::shared_ptr<void> owner;  // of what setOn() uses
};

/// Values of a node by its place.
using Field = std::function<float(float x, float y)>;
Field smoothField(unsigned seed);   ///< hills and hollows, some cells wide, between about -10 and 10
Field noiseField(unsigned seed);    ///< unrelated values: many saddles and cells with many levels
Field steppedField(unsigned seed);  ///< the smooth field in halves, of which many equal levels

/// A rectangle of every mesh class, a polar ring and a bent grid, with the field at their nodes.
std::vector<CutSurface> surfacesOfAllClasses(const Field& field);
/// The rectangle of one class.
CutSurface rectangleOf(const MeshKind2D& kind, const RectangleSpec& spec, const Field& field);

/// The levels that a worker cuts at.
std::vector<float> levelsFor(const PbIsovaluesList& list, const std::vector<float>& values);

/// The cells that no worker leaves out: finite points, and values.
std::vector<std::vector<int>> drawnCells(const CutSurface& surface);
/// Sum of the areas of cells seen from above.
double flatArea(const CutSurface& surface, const std::vector<std::vector<int>>& cells);

/// Value of the surface at points on its edges: the one nearest to a level if several edges meet there. NaN elsewhere.
class EdgeValues {
 public:
  EdgeValues(const CutSurface& surface, std::span<const float> levels);
  double at(const SbVec3f& point) const;
  /// Whether the point is on an edge that only one cell has.
  bool isOnBorder(const SbVec3f& point) const;

 private:
  struct Edge {
    int node1, node2, numCells;
  };
  /// The edges that may pass near a point.
  const std::vector<int>& edgesNear(const SbVec3f& point) const;
  std::pair<int, int> tileOf(const SbVec3f& point) const;
  static double distance(const SbVec3f& point, const SbVec3f& from, const SbVec3f& to, double& position);

  const CutSurface& m_surface;
  std::vector<float> m_levels;
  std::vector<Edge> m_edges;
  std::map<std::pair<int, int>, std::vector<int>> m_tiles;
  double m_tolerance;
};

/// A segment without direction.
using Segment = std::array<float, 6>;
Segment segmentOf(const SbVec3f& a, const SbVec3f& b);

/// Total length of the isolines in the plane of x and y, each cell for itself and in double.
double lengthOfIsolines(const CutSurface& surface, std::span<const float> levels);

#endif
