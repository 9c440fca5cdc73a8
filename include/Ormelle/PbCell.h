#ifndef ORMELLE_PBCELL_H
#define ORMELLE_PBCELL_H

#include <Inventor/SbBox3f.h>
#include <Inventor/SbVec3f.h>
#include <Ormelle/PbBase.h>

#include <cstdio>
#include <vector>

class PbArrayOfFloat;
class PbArrayOfInt;
class PbMesh;
class PiMarchingCase;
class PoMesh3D;
class SbPlane;
struct PiCellTopology;

/// The geometric view of one cell of a mesh: which nodes it has, where they are, how they form edges and facets, and
/// the mapping between space and the parametric coordinates of the cell ("pcoord", each in [0, 1] inside the cell).
///
/// A mesh owns one cell object of each kind and refills it at every `getCell`: the pointer that a mesh hands out is
/// valid until the next such call on the same mesh, and the caller never frees it. A cell may also be used on its own:
///
///     float x[] = {0, 1, 0, 0}, y[] = {0, 0, 1, 0}, z[] = {0, 0, 0, 1}, heat[] = {1, 2, 3, 4};
///     int nodes[] = {0, 1, 2, 3};
///     PbTetrahedronCell cell(nullptr);
///     cell.set(0, nodes, x, y, z);
///     SbVec3f pcoord;
///     if (cell.locatePoint(SbVec3f(0.1f, 0.1f, 0.1f), 0, pcoord)) printf("%g\n", cell.getValue(pcoord, heat));
///
/// "Local" node, edge and facet numbers count within the cell and start at 0; node indices are those of the mesh. A
/// local number that is out of range gets null, -1, the origin or an empty array, as the result type has it.
///
/// A cell object belongs to one thread.
class ORMELLE_API PbCell : public PbBase {
 public:
  ~PbCell() override;

  /// Number of facets: polygons that bound a solid; a surface cell is its own single facet.
  int getNumFacets() const { return m_numFaces; }
  int getNumEdges() const { return m_numEdges; }
  int getNumNodes() const { return m_numNodes; }

  /// The index of the cell in its mesh; -1 in a new cell.
  int getIndex() const { return m_index; }
  /// The mesh that owns this object; null for a cell that is used on its own.
  const PbMesh* getMesh() const { return m_mesh; }

  /// The mesh indices of the `getNumNodes()` nodes, as the caller of `set` keeps them; null in a new cell.
  const int* getNodeIndexPtr() const { return m_nodeIndices; }
  /// The mesh index of local node `node`.
  int getNodeIndex(int node) const {
    return m_nodeIndices && node >= 0 && node < m_numNodes ? m_nodeIndices[node] : -1;
  }
  /// Replaces `nodes` by the mesh indices of all nodes, in local order.
  void getNodesIndex(PbArrayOfInt& nodes) const;
  /// Where local node `node` is, as of the last `set`.
  SbVec3f getNodeCoord(int node) const {
    return node >= 0 && node < m_numNodes ? m_nodes[node] : SbVec3f(0.0f, 0.0f, 0.0f);
  }

  /// Gives the cell another identity without coordinates: the cheap form for code that only asks for indices.
  /// Everything that depends on coordinates still answers for the nodes of the last `set`. `nodes` is borrowed.
  void setTopology(int index, const int* nodes);

  /// The length of the longest edge; edges with a non-finite end don't count.
  virtual float getLongestEdgeLength() const;
  /// The box round the nodes; a node with a non-finite coordinate doesn't count, and an empty box is left without
  /// others.
  virtual SbBox3f getBoundingBox() const;
  /// The same box as six numbers. Those of an empty box have minima above maxima.
  virtual void getBounds(float& xmin, float& ymin, float& zmin, float& xmax, float& ymax, float& zmax) const;
  /// The mean of the nodes.
  virtual SbVec3f getCenter() const;
  /// The volume of a solid, never negative; 0 for a surface cell and for a cell with a non-finite coordinate. A facet
  /// of four nodes counts as the bilinear patch through them, so cells that share facets tile without gap or overlap.
  virtual float getVolume() const;
  /// The area of a surface cell (of a quadrangle: of its triangles 0 1 2 and 0 2 3); 0 for a solid and for a cell with
  /// a non-finite coordinate.
  virtual float getArea() const;

  /// Replaces `nodes` by the mesh indices of the two ends of an edge.
  virtual void getNodesIndexOfEdge(int edge, PbArrayOfInt& nodes) const;
  /// Replaces `nodes` by the mesh indices of the corners of a facet, in the order of its perimeter. The facets of a
  /// solid whose `getOrdering` is 1 are counterclockwise seen from outside.
  virtual void getNodesIndexOfFacet(int facet, PbArrayOfInt& nodes) const;
  /// The two local node numbers of an edge: a constant pair that outlives the cell.
  virtual const int* getNodesLocalIndexOfEdge(int edge) const;
  /// Replaces `nodes` by the local node numbers of the two ends of an edge.
  virtual void getNodesLocalIndexOfEdge(int edge, PbArrayOfInt& nodes) const;
  /// Replaces `nodes` by the local node numbers of the corners of a facet.
  virtual void getNodesLocalIndexOfFacet(int facet, PbArrayOfInt& nodes) const;

  /// Finds the parametric coordinates of `point` and tells whether the cell holds it: 1 if each parametric coordinate
  /// lies in [-tolerance, 1 + tolerance], bounds included, else 0.
  ///
  /// With the answer 0 because the point is outside, `pcoord` still is its parametric location, by which values can be
  /// extrapolated. A degenerate cell, a non-finite point or node, and an inversion that doesn't converge answer 0 too,
  /// and `pcoord` is then of no use.
  virtual int locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const = 0;
  /// The weight of each node at `pcoord`; they sum to 1. `weights` holds `getNumNodes()` floats (8 always suffice).
  virtual void getWeight(const SbVec3f& pcoord, float* weights) const = 0;

  /// The value at `pcoord`, interpolated from `values`, which has one entry a node of the whole mesh.
  virtual SbVec3f getValue(const SbVec3f& pcoord, const SbVec3f* values) const;
  virtual float getValue(const SbVec3f& pcoord, const float* values) const;
  /// The same from weights that `getWeight` gave, for several sets at one place.
  float getValue(const float* weights, const float* values) const;
  SbVec3f getValue(const float* weights, const SbVec3f* values) const;

  virtual void print(FILE* file) const;

  /// Which way round the nodes of a solid run: 1 if the facets face outwards, 0 if they face inwards. Surface cells: 1.
  virtual int getOrdering() const;

  /// Finds where a plane cuts the cell, and appends what it finds: to `nodesOnPlane` the local nodes exactly on the
  /// plane, to `edges` the edges whose ends lie strictly on different sides, and to `edgeParams`, unless it is null, at
  /// the place of that edge, the position of the cut as a fraction of the edge from its first node.
  virtual void getEdgesCrossingPlane(const SbPlane& plane, PbArrayOfInt& nodesOnPlane, PbArrayOfInt& edges,
                                     PbArrayOfFloat* edgeParams) const;

  /// How a level surface cuts a cell of this kind when the nodes in the bits of `caseId` are on its far side. Null for
  /// surface cells, for ids beyond the last of the kind and while the library isn't initialised. The library owns it.
  virtual PiMarchingCase* getMCcase(unsigned char caseId) const;

  /// Adds the part of a level surface inside this cell to the surface that `mesh3d` is making: triangle strips, or with
  /// `asStrips` 0 polygons. `flags` has one entry a node of the mesh and tells on which side of the surface the node
  /// is. Returns 1, or 0 if the cell is wholly on one side.
  int addLevelSurfPart(PoMesh3D* mesh3d, const std::vector<bool>& flags, int asStrips) const;

 protected:
  PbCell(const PbMesh* mesh, const PiCellTopology& topology);
  PbCell(const PbCell&) = default;
  PbCell& operator=(const PbCell&) = default;

  /// The case id of the cell: bit n is the flag of local node n, `flags` having one entry a node of the mesh. A cell
  /// wholly on one side has id 0, and so have surface cells.
  virtual unsigned char getIsosurfCaseId(const std::vector<bool>& flags) const;

  /// Stores the identity and copies the coordinates of the nodes; a null `z` means 0 everywhere.
  void setNodes(int index, const int* nodes, const float* x, const float* y, const float* z);
  bool areNodesFinite() const;

  int m_numFaces;
  int m_numEdges;
  int m_numNodes;
  int m_index = -1;
  const int* m_nodeIndices = nullptr;
  SbVec3f m_nodes[8];

 private:
  const PiCellTopology* m_topology;
  const PbMesh* m_mesh;
};

#endif
