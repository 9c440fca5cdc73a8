#ifndef ORMELLE_PICONTOURING_H
#define ORMELLE_PICONTOURING_H

#include <Inventor/SbVec3f.h>

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

class PbCartesianGrid2D;
class PbIndexedMesh2D;
class PbIsovaluesList;
class PbParalCartesianGrid2D;
class PbPolarGrid2D;
class PbQuadrangleMesh2D;
class PbRegularCartesianGrid2D;
class PbTriangleMesh2D;
class SoCoordinate3;
struct PiContourSurface;

/// What is cut along isovalues: a surface of triangles and quadrangles, and the levels. PiContouringFilled makes bands
/// of it, PiContouringLines lines.
///
/// The surface is either a mesh, or points and polygons that are handed in. A worker is made once and used again and
/// again: it keeps its memory from one call to the next. It belongs to one thread at a time.
///
/// A cell has no part in anything if a node of it has a coordinate that isn't finite or a value that is NaN, if it
/// names a node that there isn't, or if it runs to and fro on one line of nodes and so has no inside.
class PiContouring {
 public:
  /// The levels, ascending; null is none. Not owned, and read only while something is extracted.
  void setIsovaluesList(const PbIsovaluesList* list) { m_list = list; }

  /// @name A mesh as the surface
  /// `z` holds a height for each node, or is null for a flat mesh. Nothing is copied: mesh and heights must stay as
  /// they are until the surface has been cut. PbMesh2D::meshContouring() calls the one that a mesh needs, and does
  /// nothing for mesh classes of an application.
  /// @{
  void setMesh(const PbCartesianGrid2D& mesh, const float* z);
  void setMesh(const PbParalCartesianGrid2D& mesh, const float* z);
  void setMesh(const PbRegularCartesianGrid2D& mesh, const float* z);
  void setMesh(const PbPolarGrid2D& mesh, const float* z);
  void setMesh(const PbIndexedMesh2D& mesh, const float* z);
  void setMesh(const PbTriangleMesh2D& mesh, const float* z);
  void setMesh(const PbQuadrangleMesh2D& mesh, const float* z);
  /// @}

  /// @name Points and polygons as the surface
  /// First initGeometry() or setGeometryGrid(), then points and polygons in any order. Everything is copied.
  ///
  ///     worker.initGeometry();
  ///     worker.setPoints(numPoints, x, y, z);
  ///     for (const std::vector<int>& face : faces) worker.addElems(face);
  /// @{
  /// Starts a surface without points and polygons.
  void initGeometry();
  /// Starts a surface whose points, which setPoints() is to give, are the nodes of a grid of `nx` rows of `ny`, the
  /// second index running fastest.
  void setGeometryGrid(int nx, int ny);
  /// The points, in place of those before. A null `z` makes them flat; a null `x` or `y` leaves no points.
  void setPoints(int n, const float* x, const float* y, const float* z);
  void setPoints(int n, const SoCoordinate3* coordinate);
  void setPoints(std::span<const SbVec3f> points);
  /// Adds a convex polygon by its corners in order, as a fan of quadrangles and perhaps a triangle round its first
  /// corner. Fewer than 3 corners are no polygon.
  void addElems(int n, const int* indices);
  void addElems(const std::vector<int>& indices);
  /// Adds polygons from a list like that of a SoIndexedFaceSet: after each polygon stands a -1, which the last may
  /// lack.
  void addPolygons(std::span<const int> coordIndex);
  /// Adds the triangles of a strip, all facing as the first one does.
  void addStripElems(int n, const int* indices);
  void addStripElems(const std::vector<int>& indices);
  /// @}

  /// Bytes of the memory that is kept from call to call.
  std::size_t memorySize() const;

 protected:
  PiContouring();
  ~PiContouring();
  PiContouring(const PiContouring&) = delete;
  PiContouring& operator=(const PiContouring&) = delete;

  const PbIsovaluesList* m_list = nullptr;
  std::unique_ptr<PiContourSurface> m_surface;
};

#endif
