#ifndef ORMELLE_PBMESH_H
#define ORMELLE_PBMESH_H

#include <Inventor/SbBox3f.h>
#include <Inventor/SbString.h>
#include <Inventor/SbVec3f.h>
#include <Ormelle/OrmelleExport.h>
#include <Ormelle/PbArrayOfInt.h>
#include <Ormelle/PbBase.h>

#include <cstdio>
#include <memory>

class PbCell;
class PiCellSearch;
struct PiMeshDataSets;

/// Root of all meshes: nodes, cells, and any number of named sets of values, strings and vectors.
///
/// Sets are found by an index that the caller chooses; any int will do. A set holds one element for each node or, bound
/// `PER_CELL`, for each cell. Whether a mesh copies the arrays it is given or borrows them is settled when it is made;
/// a borrowing mesh frees nothing, and the caller keeps the arrays alive and unchanged.
///
/// `getCell`, `getTopoCell` and `findContainingCell` hand out objects that belong to the mesh and that the next such
/// call on the same mesh fills anew: use the cell before that, and never delete it. A mesh, with all its const
/// operations, belongs to one thread at a time, since cells, boxes and search structures are filled on demand.
class ORMELLE_API PbMesh : public PbBase {
 public:
  /// What the elements of a data set belong to.
  enum DataBinding { PER_CELL = 0, PER_NODE = 1 };

  ~PbMesh() override;

  /// Coordinates of a node. `node` must be one of the mesh.
  virtual SbVec3f getNodeCoord(int node) const = 0;

  /// @name Data sets
  /// Adding a set under an index in use replaces its data, name and binding. Null data leave a set without data, of
  /// which the getters answer null. Every addition gives the set a new data id and notifies.
  /// @{
  /// `val` holds one value for each node.
  virtual void addValuesSet(int set_index, const float* val, const SbString& set_name);
  /// `val` holds one string for each node.
  virtual void addStringsSet(int set_index, const SbString* val, const SbString& set_name);
  /// `val` holds one vector for each node.
  virtual void addVecsSet(int set_index, const SbVec3f* val, const SbString& set_name);
  /// Name of a set, null for an unknown index. Valid until the set changes.
  virtual const SbString* getValuesSetName(int set_index) const;
  virtual const SbString* getStringsSetName(int set_index) const;
  virtual const SbString* getVecsSetName(int set_index) const;
  /// Data of a set, null for an unknown index. Valid until the set changes.
  virtual const float* getValuesSet(int set_index) const;
  virtual const SbString* getStringsSet(int set_index) const;
  virtual const SbVec3f* getVecsSet(int set_index) const;
  /// Removes a set. Returns 1, or 0 if there was none; notifies in both cases.
  virtual int removeValuesSet(int set_index);
  virtual int removeStringsSet(int set_index);
  /// Announces `MESH_VALUES_CHANGE`, as does removeAllVecsSet().
  virtual int removeVecsSet(int set_index);
  virtual void removeAllValuesSet();
  virtual void removeAllStringsSet();
  virtual void removeAllVecsSet();
  virtual int getNumValuesSet() const;
  virtual int getNumStringsSet() const;
  virtual int getNumVecsSet() const;
  /// Smallest and largest value of a set, and length of a vector of a set. NaN counts as no value. Returns 0, and
  /// leaves the reference as it is, when the index is unknown or the set holds nothing but NaN; else 1.
  virtual int getMinValuesSet(int set_index, float& min) const;
  virtual int getMinVecsSet(int set_index, float& min) const;
  virtual int getMaxValuesSet(int set_index, float& max) const;
  virtual int getMaxVecsSet(int set_index, float& max) const;
  /// @}

  /// @name Neighbourhood
  /// Each empties its result first. Indices outside the mesh give an empty result.
  /// @{
  /// The cells that have the node as a corner.
  virtual void getNodeOwnerCellsInd(int nod_index, PbArrayOfInt& owner_cells) const = 0;
  /// The cells that have all of the nodes as corners, in the order of the first node's owner cells.
  virtual void getNodesOwnerCellsInd(const PbArrayOfInt& nod_indices, PbArrayOfInt& owner_cells) const;
  /// The other cells that share a node with the cell, each once.
  virtual void getAdjacentCellsIndByNode(int cell_index, PbArrayOfInt& adjacent_cells) const;
  /// The other cells that share a whole facet with the cell, each once.
  virtual void getAdjacentCellsIndByFacet(int cell_index, PbArrayOfInt& adjacent_cells) const;
  /// @}

  /// The cell with its coordinates. Null if the index is out of range or the mesh has no cell objects.
  virtual const PbCell* getCell(int cell_index) const = 0;

  /// Bounding box with the smallest or biggest volume among those of the cells, and the index of that cell: the first
  /// of equals. Cells with a non-finite coordinate don't count. Without a cell the box is empty and the index -1.
  virtual SbBox3f getSmallestCellBox(int& cell_index) const;
  virtual SbBox3f getBiggestCellBox(int& cell_index) const;

  /// Sum of the volumes of the cells; 0 for a surface.
  virtual float getVolume() const = 0;
  /// Sum of the areas of the cells; 0 for a solid.
  virtual float getArea() const = 0;

  /// The cell that holds `point`, null if there is none. `tolerance` widens the cells in parametric coordinates: a cell
  /// of size 1 with tolerance 0.01 reaches 0.01 further. `pcoord` gets the place of the point in the cell found.
  virtual const PbCell* findContainingCell(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const;
  /// The same, looking first in `adjacent_cell` (may be null) and in the cells round it, which is faster when the point
  /// moved little since that cell was found.
  virtual const PbCell* findContainingCell(const SbVec3f& point, float tolerance, SbVec3f& pcoord,
                                           const PbCell* adjacent_cell) const;

  /// Replaces the coordinates and keeps the topology, on meshes that hold coordinate arrays. Does nothing on others.
  virtual void setCoordinates(const float* x, const float* y, const float* z);
  /// Gives the coordinate arrays and how many nodes there are along each axis, on meshes that hold such arrays. Leaves
  /// the arguments as they are on others.
  virtual void getCoordinates(const float*& x, const float*& y, const float*& z, int& num_x, int& num_y,
                              int& num_z) const;
  /// Length of the longest edge of all cells; 0 if the mesh class doesn't say.
  virtual float getLongestEdgeLength() const;
  /// Writes what the mesh holds.
  virtual void print(FILE* file) const;
  /// True when there is no node.
  virtual int isEmpty() const;
  /// The cell with index and nodes only: its coordinates are those of another cell. Null if there is none.
  virtual const PbCell* getTopoCell(int cell_index) const;

  int getNumNodes() const { return m_numMeshNodes; }
  int getNumCells() const { return m_numMeshCells; }
  int isDataDuplicated() const { return m_isDataDuplicate; }
  /// Changes with every change of coordinates. A copy has the id of its source.
  unsigned int getGeometryId() const { return m_geometryId; }
  /// Changes when cells or nodes come, go, or are connected otherwise. A copy has the id of its source.
  unsigned int getTopologyId() const { return m_topologyId; }
  /// Box of all nodes; nodes with a non-finite coordinate don't count. Empty when there are none.
  SbBox3f getBoundingBox() const;
  /// print() on the standard output.
  void printInfo() const { print(stdout); }

  /// Binding of a set; `PER_NODE` for an unknown index.
  DataBinding getValuesBinding(int set_index) const;
  DataBinding getVecsBinding(int set_index) const;
  /// How many values were stored in a set; 0 for an unknown index or a set without data. A set that a borrowing mesh
  /// got before its nodes or cells changed in number differs from them.
  int getNumValues(int set_index) const;
  /// Id of the data of a set, new each time data are stored; 0xFFFFFFFF for an unknown index.
  unsigned int getFltDataSetId(int set_index) const;
  unsigned int getVecDataSetId(int set_index) const;
  /// As the three-argument forms, with one element for each node or each cell.
  void addValuesSet(int set_index, const float* val, DataBinding binding, const SbString& set_name);
  void addVecsSet(int set_index, const SbVec3f* val, DataBinding binding, const SbString& set_name);

 protected:
  explicit PbMesh(int isDataDuplicate);
  PbMesh(const PbMesh& other);
  /// Copies counters, ids and data sets, then notifies. A subclass copies its own members first and calls this last, so
  /// that whoever is told sees a whole mesh.
  PbMesh& operator=(const PbMesh& other);

  /// Computes the bounding box if it isn't valid, and stores it by setBoundingBox().
  virtual void updateBoundingBox() const = 0;
  /// Computes the smallest and biggest cell box.
  virtual void updateCellBoundingBox() const;
  /// Searches all cells but those listed in `excluded`.
  virtual const PbCell* findContainingCellProtected(const SbVec3f& point, float tolerance, SbVec3f& pcoord,
                                                    PbArrayOfInt& excluded) const = 0;

  /// Stores the box and marks it valid.
  void setBoundingBox(const SbBox3f& box) const;
  int isBoundingBoxValid() const { return m_isBoundingBoxValid; }
  /// Forgets boxes and the index of the cells. For coordinates that change without a new geometry, as while z is
  /// pushed.
  void resetBoxes() const;
  /// Starts the comparison of cell boxes anew and marks the result valid.
  void resetCellBoxes() const;
  /// Lets a cell box take part in the comparison of cell boxes. Call it by rising index.
  void compareCellBox(const SbBox3f& box, int cell_index) const;
  /// Stores new counts, forgets boxes and takes new ids: of the geometry, and of the topology if `isTopologyNew`. In a
  /// duplicating mesh it removes the data sets when a count changes, so that no set outlives its size. Doesn't notify.
  void setCounts(int numNodes, int numCells, int isTopologyNew);
  /// Announces `MESH_GEOMETRY_CHANGE`.
  void notifyGeometryChange();
  /// Stores vectors for each node that are always copied, whatever the mesh does with arrays, then notifies.
  void addCopiedVecsSet(int set_index, const SbVec3f* val, const SbString& set_name);

  void updateGeometryId() { m_geometryId = sm_nextGeometryId++; }
  void updateTopologyId() { m_topologyId = sm_nextTopologyId++; }
  static void updateFltDataId(unsigned int& id) { id = sm_nextFltDataId++; }
  static void updateVecDataId(unsigned int& id) { id = sm_nextVecDataId++; }
  static void updateStrDataId(unsigned int& id) { id = sm_nextStrDataId++; }

  static unsigned int sm_nextGeometryId;
  static unsigned int sm_nextTopologyId;
  static unsigned int sm_nextFltDataId;
  static unsigned int sm_nextVecDataId;
  static unsigned int sm_nextStrDataId;

  int m_isDataDuplicate;
  int m_numMeshNodes = 0;
  int m_numMeshCells = 0;

 private:
  friend class PiCellSearch;
  friend struct PiMeshDataSets;

  mutable SbBox3f m_boundingBox;
  mutable int m_isBoundingBoxValid = 0;
  std::unique_ptr<PiMeshDataSets> m_dataSets;
  mutable int m_areCellBoxesValid = 0;
  mutable SbBox3f m_smallestCellBox;
  mutable SbBox3f m_biggestCellBox;
  mutable int m_smallestCellIndex = -1;
  mutable int m_biggestCellIndex = -1;
  mutable float m_smallestCellVolume = 0;
  mutable float m_biggestCellVolume = 0;
  unsigned int m_geometryId = 0;
  unsigned int m_topologyId = 0;
  mutable PbArrayOfInt m_adjacentCells;
  mutable std::shared_ptr<const PiCellSearch> m_search;  // shared with those who still search in it
};

#endif
