#ifndef ORMELLE_PIMARCHINGCASE_H
#define ORMELLE_PIMARCHINGCASE_H

#include <memory>
#include <vector>

/// How a level surface cuts one cell: a case of a marching table.
///
/// The surface goes through one point on each mixed edge (an edge that has exactly one flagged end). The case names
/// those points by edge number or by the two local nodes of the edge, and joins them in two ways: as triangle strips
/// and as polygons. Strips and polygons are separated by -1, without one at the end. Both run round so that the surface
/// has the flagged nodes on one and the same side in every case.
///
/// A facet whose four edges are all mixed can be cut in two ways, and the cells beside it may choose differently. The
/// optional quadrangles are the patches that close the hole in that event: each names four points by their positions in
/// the strip set (separators not counted), in the order of the perimeter.
///
/// Cases derive from each other by the symmetries of the cell and by exchanging flagged and other nodes.
class PiMarchingCase {
 public:
  virtual ~PiMarchingCase() = default;

  /// The case after `count` turns about an axis of the cell; null if that is no symmetry of the cell.
  virtual std::unique_ptr<PiMarchingCase> getRotX(int count) const = 0;
  virtual std::unique_ptr<PiMarchingCase> getRotY(int count) const = 0;
  virtual std::unique_ptr<PiMarchingCase> getRotZ(int count) const = 0;
  /// The case with the other nodes flagged and the surface turned over.
  virtual std::unique_ptr<PiMarchingCase> getReverse() const = 0;
  virtual int getNumNodes() const = 0;
  virtual int getEdgeNode0(int edge) const = 0;
  virtual int getEdgeNode1(int edge) const = 0;
  /// The complement of the id among the nodes of the cell.
  virtual unsigned char getRevertId() const = 0;

  /// Bit n is set when local node n is flagged.
  unsigned char getId() const { return m_id; }
  void setId(unsigned char id) { m_id = id; }
  /// The number of the base case from which this one was made.
  unsigned char getType() const { return m_type; }

  /// Points as edge numbers: as strips, and as polygons.
  const std::vector<int>& getEdgeStripSet() const { return m_edgeStripSet; }
  const std::vector<int>& getEdgeFaceSet() const { return m_edgeFaceSet; }
  /// The same with two node numbers instead of each edge number.
  const std::vector<int>& getNodeStripSet() const { return m_nodeStripSet; }
  const std::vector<int>& getNodeFaceSet() const { return m_nodeFaceSet; }
  /// Four positions a quadrangle, quadrangles separated by -1.
  const std::vector<int>& getOptQuad() const { return m_optQuad; }
  /// The same for a second ambiguous facet, which getOptQuad() leaves open; mostly empty.
  const std::vector<int>& getCompletion() const { return m_completion; }

  /// Stores the strips of a base case and derives the three other sets.
  void setStripSet(const std::vector<int>& strips);
  void setOptQuad(const std::vector<int>& quadrangles) { m_optQuad = quadrangles; }
  void setCompletion(const std::vector<int>& quadrangles) { m_completion = quadrangles; }

 protected:
  PiMarchingCase(unsigned char type, unsigned char id) : m_id(id), m_type(type) {}
  PiMarchingCase(const PiMarchingCase&) = default;
  PiMarchingCase& operator=(const PiMarchingCase&) = delete;

  /// Turns the case `count` times by the given tables: entry n is the image of node, or edge, n.
  void rot(int count, const int* nodeRot, const int* edgeRot);
  void revert();
  /// Turns each strip over: its first entry stays, the others are exchanged in pairs.
  static void revertStripSet(std::vector<int>& strips);
  /// Makes the polygons from the strips. They are told apart by the total length.
  void setFaceSet(const std::vector<int>& strips);
  void setNodeStripSet();
  void setNodeFaceSet();

 private:
  void rotateIsoPts(int count, const int* edgeRot);
  void revertOptQuad();
  std::vector<int> nodesOfEdges(const std::vector<int>& edges) const;

  unsigned char m_id;
  unsigned char m_type;
  std::vector<int> m_edgeStripSet;
  std::vector<int> m_nodeStripSet;
  std::vector<int> m_edgeFaceSet;
  std::vector<int> m_nodeFaceSet;
  std::vector<int> m_optQuad;
  std::vector<int> m_completion;
};

#endif
