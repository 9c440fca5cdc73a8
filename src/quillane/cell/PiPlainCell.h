#ifndef ORMELLE_PIPLAINCELL_H
#define ORMELLE_PIPLAINCELL_H

#include <Inventor/SbVec3f.h>

/// A cell of a mesh as a plain value: its nodes and where they are. It answers what a PbCell answers, and any thread
/// may hold one of its own. PiCellLocator fills it.
class PiPlainCell {
 public:
  enum Kind { NONE, TRIANGLE, QUADRANGLE, PIXEL, TETRAHEDRON, PYRAMID, WEDGE, HEXAHEDRON, VOXEL };

  /// The kind of a cell of a mesh of this dimension that has this number of nodes.
  static Kind kindOf(int dimension, int numNodes);

  Kind kind() const { return m_kind; }
  /// Index in the mesh; -1 for a cell of kind NONE.
  int index() const { return m_index; }
  int numNodes() const { return m_numNodes; }
  bool isSurface() const { return m_kind >= TRIANGLE && m_kind <= PIXEL; }
  /// Index in the mesh of a node of the cell, and its place.
  int node(int local) const { return m_nodes[local]; }
  const SbVec3f& point(int local) const { return m_points[local]; }

  /// As PbCell::locatePoint: whether the cell holds the point, and `pcoord`, its parametric coordinates. Those of a
  /// point outside are good too, to extrapolate, unless they couldn't be told (a degenerate cell, or no convergence):
  /// then `isKnown`, if given, is false.
  bool locate(const SbVec3f& point, float tolerance, SbVec3f& pcoord, bool* isKnown = nullptr) const;

  /// The weight of each node at a place of the cell, `numNodes()` of them.
  void weights(const SbVec3f& pcoord, float* weights) const;

  /// The value there; `values` has one for each node of the mesh.
  template <class Value>
  Value value(const SbVec3f& pcoord, const Value* values) const {
    float weight[8];
    weights(pcoord, weight);
    Value sum = values[m_nodes[0]] * weight[0];
    for (int n = 1; n < m_numNodes; ++n) sum += values[m_nodes[n]] * weight[n];
    return sum;
  }

  /// Length of the longest edge, as PbCell::getLongestEdgeLength.
  float longestEdge() const;

  /// Makes this another cell, whose nodes are still to be set.
  void reset(Kind kind, int index);
  void setNode(int local, int node, const SbVec3f& point) {
    m_nodes[local] = node;
    m_points[local] = point;
  }

 private:
  Kind m_kind = NONE;
  int m_index = -1;
  int m_numNodes = 0;
  int m_nodes[8] = {};
  SbVec3f m_points[8];
};

#endif
