#ifndef ORMELLE_POMESH3D_H
#define ORMELLE_POMESH3D_H

#include <memory>

#include <Inventor/SbVec3f.h>

#include <Ormelle/PoMesh.h>

class PbCartesianGrid3D;
class PbIndexedMesh3D;
class PbMesh3D;
class PbParalCartesianGrid3D;
class PbRegularCartesianGrid3D;
class PiCellBlocks;
class PiCrossContour;
class SoGroup;
class SoIndexedLineSet;
struct PiSectionPlane;
struct PiSurfaceStore;

/// Root of the kits that draw a volume mesh. It makes the surface that kits show of a volume: where a set of values,
/// one for each node, passes through a level. The catalog is that of PoBase.
///
/// Points of the surface lie on edges of the mesh and are shared by all cells round the edge. Group, shape and
/// coordinates stay from one rebuild to the next, and a rebuild only does again what its inputs ask for: topology,
/// coordinates, normals, colours and texture coordinates each for themselves.
///
/// Facets are triangle strips that run through many cells, or where each cell has its own colour one or more a cell;
/// with the environment variable `ZEL_QUILLANE_USE_TRIANGLE_STRIP_SET` set to FALSE they are polygons. Strips draw
/// faster, polygons are made faster.
class ORMELLE_API PoMesh3D : public PoMesh {
  PO_KIT_ABSTRACT_HEADER(PoMesh3D, PoMesh);

 public:
  /// The mesh to use instead of that on the traversal state; null goes back to the state. Not owned.
  void setMesh(PbMesh3D* mesh);
  /// What was set, else during a traversal the volume mesh on the state, else null.
  PbMesh3D* getMesh() const;

  void basicObjectChange(PbBase* object) override;
  /// Bytes of the buffers that the kit keeps: the base's, the points of the surface, and getHashTableMemorySize().
  std::size_t getMemorySize() const override;
  /// Bytes of the table in which the points of the surface are found by their edge.
  std::size_t getHashTableMemorySize() const;

  /// @name What surface is made; a kit overrides what differs
  /// The data of the level surface are one value for each node of the mesh, null if there are none. Their id differs
  /// whenever they differ. An orientation of 1 lets the front face the greater values, 0 the smaller ones. A normal
  /// other than null is that of all facets.
  /// @{
  virtual void addOptQuadrangle(int p0, int p1, int p2, int p3, int cell);
  virtual const float* getIsosurfDataSet();
  virtual float getIsosurfValue();
  virtual int getSurfOrientation();
  virtual void initOptQuadrangleList();
  virtual void addLevelSurfOptQuadrangle();
  virtual unsigned int getIsosurfDataSetId();
  virtual int getIsosurfDataSetIndex();
  virtual SbVec3f getOverallNormal();
  /// @}

  /// @name For the workers of a rebuild
  /// @{
  /// Forgets all points of the surface and the indices collected.
  void initSurfPointList();
  /// Gives the point on the edge between nodes `a` and `b`, in either order, its index: the same each time. With a
  /// equal to b the point is the node. Returns 1 if the point is new, else 0.
  int addSurfPoint(int a, int b, int& index);
  /// Appends the coordinates of a point that addSurfPoint() called new to the points collected, and its value unless
  /// `values` is null: on the edge from `n1` to `n2`, where a quantity that is `s1` and `s2` at the ends is 0. The
  /// arrays hold one element for each node of the mesh.
  static void computeCrossPointCoord(int isNew, const float* x, const float* y, const float* z, const float* values,
                                     int n1, int n2, float s1, float s2);
  /// Cuts the quadrangle of the nodes `nodeIndices` with the plane a*x + b*y + c*z = d. `edgeTable` holds its four
  /// edges as pairs of corners, 0 to 3; null stands for the perimeter. `ok` is 1 if there are exactly two cut points,
  /// at corners or between two, whose indices `points` then holds; else 0.
  void crossPlaneAndQuadrangle(const float* x, const float* y, const float* z, const float* values,
                               const int* nodeIndices, const int (*edgeTable)[2], float a, float b, float c, float d,
                               int& ok, int* points);
  /// @}

  /// @name Outlines of sections by the plane a*x + b*y + c*z = d
  /// They put the lines where the plane meets the outside of a mesh into `lines`, two points and -1 a segment, and the
  /// points into `coordinates`. If `values` isn't null, it has one value for each node, and the values of the points
  /// take the place of those collected, for mapColor(). They return the number of segments.
  /// @{
  int getRegularGrid3DCrossContour(const PbRegularCartesianGrid3D* mesh, const float* values, float a, float b, float c,
                                   float d, SoIndexedLineSet* lines, SoCoordinate3* coordinates);
  int getParalCartGrid3DCrossContour(const PbParalCartesianGrid3D* mesh, const float* values, float a, float b, float c,
                                     float d, SoIndexedLineSet* lines, SoCoordinate3* coordinates);
  int getCartGrid3DCrossContour(const PbCartesianGrid3D* mesh, const float* values, float a, float b, float c, float d,
                                SoIndexedLineSet* lines, SoCoordinate3* coordinates);
  /// The same for the mesh of this rebuild, of whatever class, and the cells that the cell filter accepts. If there are
  /// segments, coordinates and a SoIndexedLineSet are appended to `group`.
  int makeCrossContour(float a, float b, float c, float d, const float* values, SoGroup* group);
  /// @}

  /// @name Called back by the mesh whose level surface is made
  /// @{
  void regularGrid3DLevelSurf(const PbRegularCartesianGrid3D* mesh, const float* values);
  void paralCartGrid3DLevelSurf(const PbParalCartesianGrid3D* mesh, const float* values);
  void cartGrid3DLevelSurf(const PbCartesianGrid3D* mesh, const float* values);
  void indexedMeshLevelSurf(const PbIndexedMesh3D* mesh, const float* values);
  /// @}

 protected:
  PoMesh3D();
  ~PoMesh3D() override;

  void preRebuild() override;

  /// The mesh of the rebuild under way if there is something to draw of it, else null.
  PbMesh3D* drawnMesh() const;

  /// @name Steps of a rebuild that draws a surface
  /// @{
  /// Makes the group of this rebuild with its hints for light, unless it is there from the last one.
  void startSurface();
  /// Brings the nodes that say how the surface is bound and lit up to date: material, texture coordinates, normal. It
  /// comes before the geometry. Settles the colouring: with no values it is inherited, and bands need values of nodes.
  /// `perPart` tells that a facet is a part of its shape and not a face.
  void updateSurfaceShapeBindings(int perPart);
  /// Brings the level surface in the group up to date with its inputs.
  void meshLevelSurf(PbMesh3D* mesh);
  /// Says that the next level surface is the section of an indexed mesh by a plane whose blocks of cells these are;
  /// null says that it isn't.
  void setSectionBlocks(std::shared_ptr<const PiCellBlocks> blocks, const PiSectionPlane& plane);
  /// Hands the group, the material and the texture to the parts, and takes the transparent parts away.
  void showSurface(const char* groupPart);
  /// Clears the parts and forgets all nodes.
  void removeSurface(const char* groupPart);
  /// @}

  /// Cuts outlines, and keeps its memory from one to the next.
  PiCrossContour& crossContour();

  PbMesh3D* m_currentMesh3D = nullptr;  ///< settled by preRebuild()

 private:
  friend struct PiSurfaceStore;

  PbMesh3D* givenMesh() const;
  void updateLevelSurfTopology(const float* values, float iso);
  void updateLevelSurfNormals();
  void makeLevelSurfNormals(SoIndexedShape& shape);
  void updateLevelSurfColors(const float* values);
  void updateLevelSurfTextures();
  void updateLevelSurfContouring();
  void updateLevelSurfPointValues(const float* colorValues);
  template <class View>
  void makeLevelSurf(const View& view, const float* values);
  void makeLevelSurfOfCells(const float* values);
  void joinStrips();
  void placeShape();
  bool isColoredPerCell() const;

  int getCrossContour(const PbMesh3D& mesh, const float* values, float a, float b, float c, float d,
                      SoIndexedLineSet& lines, SoCoordinate3& coordinates);

  std::unique_ptr<PiSurfaceStore> m_surface;
};

#endif
