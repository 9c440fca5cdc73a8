#ifndef ORMELLE_POMESH_H
#define ORMELLE_POMESH_H

#include <cstddef>
#include <memory>

#include <Inventor/SbVec3f.h>
#include <Inventor/fields/SoSFBool.h>
#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFInt32.h>

#include <Ormelle/PoQuillane.h>

class PbIsovaluesList;
class PbMesh;
class PoCellFilter;
class SoCoordinate3;
class SoIndexedShape;
class PiMeshBuffers;
class PiMeshInputs;
class PiMeshScratch;
struct PiMeshNodes;

/// Root of every kit that draws a mesh: it finds the mesh, the data mapping and the isovalues to use and decides which
/// colouring really applies.
///
/// Each object comes from the `set...` call, or where none was made from the attribute node in force when the kit is
/// traversed. The kit is connected to what it uses, wherever it came from, so that a change of the object itself is
/// seen too. Objects are never owned, and deleting one that a kit uses is safe.
///
/// A colouring needs a data mapping and a set of values in the mesh, without which the kit takes the material of the
/// traversal state; contours need isovalues, without which the values are mapped to colours node by node.
///
/// The kit keeps the parts `appearance.material`, `appearance.texture2` and `appearance.complexity` (its texture
/// quality) to itself; the other parts of `appearance` are the application's. The catalog is that of PoBase.
///
/// A mesh, its kits and the traversal belong to one thread at a time.
class ORMELLE_API PoMesh : public PoQuillane {
  PO_KIT_ABSTRACT_HEADER(PoMesh, PoQuillane);

 public:
  enum ColoringType {
    COLOR_INHERITED = 0,          ///< the material of the traversal state
    COLOR_AVERAGE = 1,            ///< one colour a cell, that of the mean of its node values
    COLOR_MAPPING = 2,            ///< one colour a node, interpolated between the nodes
    COLOR_CONTOURING = 3,         ///< cells cut into bands of one colour each
    COLOR_TEXTURE_CONTOURING = 4  ///< bands by a one-dimensional texture
  };

  /// Index of the set of values that colours; below 0 there is none.
  SoSFInt32 valuesIndex;
  /// Index of the set of values that the cell filter is asked with; below 0 there is none.
  SoSFInt32 valuesIndexForCellFilter;
  /// Index of the set of vectors; below 0 there is none.
  SoSFInt32 vecsIndex;
  /// The ColoringType that is asked for.
  SoSFEnum coloringType;
  /// Whether the edges of texture bands are blended.
  SoSFBool smoothTextureContouring;
  /// Facets that meet at less than this angle, in radians, are shaded smoothly, where the toolkit finds the normals: on
  /// indexed shapes. A SoQuadMesh is always smooth. The default is the number in the environment variable
  /// `ZEL_QUILLANE_CREASE_ANGLE` when the kit is made, else 0: flat facets.
  SoSFFloat creaseAngle;

  /// @name The objects to use instead of those on the traversal state
  /// Null goes back to the state. Not owned.
  /// @{
  void setMesh(PbMesh* mesh);
  void setDataMapping(PbDataMapping* mapping);
  /// The mapping that colours by the length of vectors.
  void setModuleDataMapping(PbDataMapping* mapping);
  void setIsovaluesList(PbIsovaluesList* list);
  /// @}

  /// @name The objects that are used
  /// What was set, else during a traversal what is on the state, else null. The module mapping on the state is the
  /// data mapping there.
  /// @{
  PbMesh* getMesh() const;
  const PbDataMapping* getDataMapping() const;
  const PbDataMapping* getModuleDataMapping() const;
  const PbIsovaluesList* getIsovaluesList() const;
  const PoCellFilter* getCellFilter() const;
  /// @}

  /// Bytes of the buffers that the kit keeps from one rebuild to the next.
  virtual std::size_t getMemorySize() const;

  void basicObjectChange(PbBase* object) override;

  /// @name For the workers of a rebuild
  /// @{
  /// Fills the material from the current mapping, a colour for each value. Null `values` stand for the values
  /// collected by push_back_value(); without any, nothing happens. `newMaterial` first makes a new node.
  void mapColor(int numValues, const float* values, int newMaterial);
  /// A buffer of at least `count` vectors, valid until the next call; null if `count` is below 1.
  SbVec3f* newSbVec3f(int count);
  void push_back_coord_index(int index);
  void push_back_cell_index(int index);
  /// Hands the collected coordinate indices to `shape` without a copy, and starts a new collection.
  void update_coord_index(SoIndexedShape* shape);
  /// Makes a unit normal for each polygon of `shape`, from its first three points, and puts the `PER_FACE` binding and
  /// the normals in front of the group of this rebuild. A polygon without a plane gets (0, 0, 1).
  void computeNormal(SoIndexedShape* shape, SoCoordinate3* coordinate);
  static void push_back_point(const SbVec3f& point);
  static void push_back_value(float value);
  /// Moves an isovalue off the values given, so that no edge has an end exactly on it; the second form takes three
  /// lists as one. Returns 1 if it moved.
  int adjustIsoval(int num, const float* values, float& isovalue);
  int adjustIsovalMultiple(int num1, const float* values1, int num2, const float* values2, int num3,
                           const float* values3, float& isovalue);
  /// Does the same to a copy of the isovalues in use, which getAdjustedIsovalues() gives until the next call.
  int adjustIsovalList(int num1, const float* values1, int num2, const float* values2, int num3, const float* values3);
  const float* getAdjustedIsovalues(int& num) const;
  /// @}

 protected:
  PoMesh();
  ~PoMesh() override;

  void preRebuild() override;
  void postRebuild() override;
  void addElementsAllCaches() override;
  /// Adds the hints that light surfaces, `CLOCKWISE` and with the crease angle, to the group of this rebuild.
  virtual void insertDefaultShapeHints();

  void copyContents(const SoFieldContainer* from, SbBool copyConnections) override;

  /// @name Steps of a rebuild
  /// @{
  /// Lets the kit's cache depend on the data mapping or the isovalues of the state, if they can matter; `force` skips
  /// the look at the colouring.
  void addDataMappingInCache();
  void addIsovaluesListInCache(int force);
  /// The same for the cell filter, whatever the colouring.
  void addCellFilterInCache();
  /// The same for any element.
  void addInAllCache(int elementStackIndex);
  /// Whether `mesh` has the set of values that `valuesIndex` names.
  bool hasValuesToColor(const PbMesh* mesh) const;
  /// Forgets the nodes of the last rebuild, which belong to its group.
  void clearZelNodes();
  /// The set of values `index` of `mesh`, if it is there and has one value for each node; else null.
  static const float* findNodeValues(const PbMesh& mesh, int index);
  /// Sets a part below `appearance`; null doesn't make the parts on the way.
  void setAppearancePart(const char* name, SoNode* node);
  /// @}

  PiMeshInputs& inputs() const { return *m_inputs; }
  PiMeshNodes& nodes() const { return *m_nodes; }
  PiMeshBuffers& buffers() const { return *m_buffers; }

  /// @name What the rebuild under way uses, settled by preRebuild()
  /// @{
  const PbMesh* m_currentMesh = nullptr;
  const PbDataMapping* m_currentDataMapping = nullptr;
  const PbDataMapping* m_currentModuleDataMapping = nullptr;
  const PbIsovaluesList* m_currentIsovaluesList = nullptr;
  int m_currentColoring = COLOR_INHERITED;   ///< a ColoringType
  int m_previousColoring = COLOR_INHERITED;  ///< that of the last finished rebuild
  /// @}

  /// @name Points and values collected by the rebuild under way
  /// Shared by all kits, which rebuild one at a time.
  /// @{
  static float (*m_points)[3];
  static int m_numPoints;
  static int m_allocPoints;
  static float* m_pointValues;
  static int m_numValues;
  static int m_allocPointValues;
  /// @}

 private:
  friend class PiMeshScratch;

  void forgetCurrentObjects();
  void setTextureQuality();

  std::unique_ptr<PiMeshInputs> m_inputs;
  std::unique_ptr<PiMeshNodes> m_nodes;
  std::unique_ptr<PiMeshBuffers> m_buffers;
};

#endif
