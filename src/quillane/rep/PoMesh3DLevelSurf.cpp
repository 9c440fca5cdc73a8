// Makes the level surface of a volume: topology, coordinates and normals.

#include <Ormelle/PbCellFilterIterator.h>
#include <Ormelle/PbHexahedronCell.h>
#include <Ormelle/PbPyramidCell.h>
#include <Ormelle/PbTetrahedronCell.h>
#include <Ormelle/PbWedgeCell.h>
#include <Ormelle/PoCellFilter.h>
#include <Ormelle/PoMesh3D.h>

#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoIndexedTriangleStripSet.h>
#include <Inventor/nodes/SoNormal.h>
#include <Inventor/nodes/SoNormalBinding.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <span>
#include <string>
#include <vector>

#include "graph/data/PiFinite.h"
#include "quillane/emit/PiMeshNodes.h"
#include "quillane/rep/PiMeshBuffers.h"
#include "quillane/rep/PiSurfaceStore.h"
#include "quillane/surface/PiSurfacePlacing.h"
#include "quillane/view/PiView3D.h"

namespace {

/// A switch of the environment: on unless it says otherwise.
bool isEnvironmentOn(const char* name) {
  const char* text = std::getenv(name);
  if (!text) return true;
  std::string upper(text);
  std::transform(upper.begin(), upper.end(), upper.begin(), [](unsigned char c) { return std::toupper(c); });
  return !(upper == "FALSE" || upper == "0" || upper == "NO" || upper == "OFF");
}

/// Whether the nodes of all cells of a grid whose coordinates depend on one index each run the same way round.
template <PiGridView3DLike View>
bool isMonotonous(const View& view) {
  const PiGridShape& shape = view.shape();
  const int sizes[3] = {shape.numX, shape.numY, shape.numZ};
  for (int axis = 0; axis < 3; ++axis) {
    int rising = 0;
    for (int i = 0; i + 1 < sizes[axis]; ++i) {
      const int from[3] = {axis == 0 ? i : 0, axis == 1 ? i : 0, axis == 2 ? i : 0};
      const float c = view.point(from[0], from[1], from[2])[axis];
      const float next = view.point(from[0] + (axis == 0), from[1] + (axis == 1), from[2] + (axis == 2))[axis];
      if (next == c) return false;
      if (i == 0) rising = next > c;
      if ((next > c) != (rising != 0)) return false;
    }
  }
  return true;
}

template <PiView3D View>
bool areNodesFinite(const View& view) {
  if constexpr (View::isGrid) {
    if constexpr (View::areAxes) {
      // Along the axes is everywhere.
      const PiGridShape& shape = view.shape();
      bool areFinite = true;
      for (int i = 0; i < shape.numX; ++i) areFinite = areFinite && isFinitePoint(view.point(i, 0, 0));
      for (int j = 0; j < shape.numY; ++j) areFinite = areFinite && isFinitePoint(view.point(0, j, 0));
      for (int k = 0; k < shape.numZ; ++k) areFinite = areFinite && isFinitePoint(view.point(0, 0, k));
      return areFinite;
    }
  }
  auto point = view.walker();
  for (int node = 0; node < view.numNodes(); ++node)
    if (!isFinitePoint(point(node))) return false;
  return true;
}

/// The way round of the first cell that has one.
template <PiView3D View>
bool isFirstCellOutward(const View& view) {
  const auto isKnown = [&view](std::span<const int> nodes, bool& isOutward) {
    const double volume = signedCornerVolume(view, nodes);
    isOutward = volume > 0;
    return std::isfinite(volume) && volume != 0;
  };
  bool isOutward = false;
  if constexpr (View::isGrid) {
    const PiGridShape& shape = view.shape();
    int nodes[8];
    for (int i = 0; i + 1 < shape.numX; ++i)
      for (int j = 0; j + 1 < shape.numY; ++j)
        for (int k = 0; k + 1 < shape.numZ; ++k) {
          shape.cellNodes(i, j, k, nodes);
          if (isKnown(nodes, isOutward)) return isOutward;
        }
  } else {
    for (int cell = 0; cell < view.numCells(); ++cell) {
      const std::span<const int> nodes = view.cells().whole(cell);
      if (!nodes.empty() && isKnown(nodes, isOutward)) return isOutward;
    }
  }
  return isOutward;
}

template <PiView3D View>
PiVolumeTraits traitsOf(const View& view, unsigned geometry) {
  PiVolumeTraits traits;
  traits.geometry = geometry;
  traits.areFinite = areNodesFinite(view);
  traits.isOutward = isFirstCellOutward(view);
  if constexpr (View::isGrid)
    if constexpr (View::areAxes) traits.isUniform = isMonotonous(view);
  return traits;
}

/// A cell of the same kind as `cell` with its nodes the other way round, given to `use`.
template <class Use>
void withMirrored(const PbCell& cell, Use&& use) {
  std::array<int, 8> nodes{};
  const auto renumbered = [&](auto&& mirrored, std::initializer_list<int> order) {
    int n = 0;
    for (const int node : order) nodes[static_cast<std::size_t>(n++)] = cell.getNodeIndex(node);
    mirrored.setTopology(cell.getIndex(), nodes.data());
    use(mirrored);
  };
  switch (cell.getNumNodes()) {
    case 4:
      return renumbered(PbTetrahedronCell(cell.getMesh()), {1, 0, 2, 3});
    case 5:
      return renumbered(PbPyramidCell(cell.getMesh()), {0, 3, 2, 1, 4});
    case 6:
      return renumbered(PbWedgeCell(cell.getMesh()), {3, 4, 5, 0, 1, 2});
    case 8:
      return renumbered(PbHexahedronCell(cell.getMesh()), {4, 5, 6, 7, 0, 1, 2, 3});
    default:
      return;
  }
}

}  // namespace

void PoMesh3D::meshLevelSurf(PbMesh3D* mesh) {
  if (!mesh || !nodes().group) return;
  PiSurfaceStore& surface = *m_surface;
  surface.areStrips = isEnvironmentOn("ZEL_QUILLANE_USE_TRIANGLE_STRIP_SET");
  const float* values = getIsosurfDataSet();
  m_currentMesh3D = mesh;
  updateSurfaceShapeBindings(surface.areStrips);
  surface.areJoined = surface.areStrips && !isColoredPerCell();
  updateLevelSurfTopology(values, getIsosurfValue());
  if (m_currentColoring == COLOR_CONTOURING) {
    updateLevelSurfContouring();
    return;
  }
  placeShape();
  updateLevelSurfNormals();
  updateLevelSurfColors(values);
  updateLevelSurfTextures();
}

void PoMesh3D::updateLevelSurfTopology(const float* values, float iso) {
  PiSurfaceStore& surface = *m_surface;
  const PbMesh3D& mesh = *m_currentMesh3D;
  const PoCellFilter* filter = getCellFilter();
  const int filterIndex = valuesIndexForCellFilter.getValue();
  // The coordinates say which cells can be drawn and which way round they run, so points and facets are made together.
  const PiTopologyKey key{mesh.getTopologyId(),
                          mesh.getGeometryId(),
                          getIsosurfDataSetId(),
                          filter ? static_cast<unsigned>(filter->getNodeId()) : 0,
                          filter ? mesh.getFltDataSetId(filterIndex) : 0,
                          getIsosurfDataSetIndex(),
                          filter ? filterIndex : -1,
                          iso,
                          getSurfOrientation(),
                          surface.areStrips,
                          surface.areJoined};
  if (surface.shape && surface.topologyKey == key) {
    nodes().coordinate = surface.coordinate.get();
    return;
  }
  surface.topologyKey = key;
  ++surface.passes.topology;
  ++surface.passes.coordinates;

  SoIndexedShape* shape = surface.shape.get();
  const bool isStripSet = shape && shape->isOfType(SoIndexedTriangleStripSet::getClassTypeId());
  if (!shape || isStripSet != surface.areStrips) {
    if (shape && surface.group->findChild(shape) >= 0) surface.group->removeChild(shape);
    surface.shape.reset(surface.areStrips ? static_cast<SoIndexedShape*>(new SoIndexedTriangleStripSet)
                                          : new SoIndexedFaceSet);
  }
  if (!surface.coordinate) surface.coordinate.reset(new SoCoordinate3);
  nodes().coordinate = surface.coordinate.get();

  initSurfPointList();
  initOptQuadrangleList();
  surface.iso = iso;
  surface.isMade = false;
  if (values) mesh.meshLevelSurfShapeIndices(this, getIsosurfDataSetIndex(), values);
  if (values && !surface.isMade) makeLevelSurfOfCells(values);
  if (!values) {
    surface.cells.clear();
    surface.shape->coordIndex.setNum(0);
    surface.coordinate->point.setNum(0);
  }
}

template <class View>
void PoMesh3D::makeLevelSurf(const View& view, const float* values) {
  PiSurfaceStore& surface = *m_surface;
  const PbMesh3D& mesh = *m_currentMesh3D;
  PiVolumeTraits& traits = surface.traits;
  if (traits.geometry != mesh.getGeometryId()) traits = traitsOf(view, mesh.getGeometryId());

  PiLevelSurfInput input;
  input.values = values;
  input.iso = surface.iso;
  input.isToMax = (getSurfOrientation() != 0) == traits.isOutward;
  input.asStrips = surface.areStrips && !surface.areJoined;
  input.moveOff = [this, values](float& iso) { adjustIsoval(m_currentMesh3D->getNumNodes(), values, iso); };
  if (const PoCellFilter* filter = getCellFilter()) {
    const int index = valuesIndexForCellFilter.getValue();
    const float* filterValues = index < 0 ? nullptr : mesh.getValuesSet(index);
    const int numValues = filterValues ? mesh.getNumValues(index) : 0;
    input.accepts = [filter, filterValues, numValues](int cell) {
      return filter->acceptCell(cell, cell < numValues ? filterValues[cell] : 0.0F) != 0;
    };
  }
  input.blocks = surface.blocks.get();
  input.plane = surface.plane;
  if (!traits.areFinite) input.isNodeFinite = [&view](int node) { return isFinitePoint(view.point(node)); };
  const auto isMirrored = [&view, isOutward = traits.isOutward](std::span<const int> nodes) {
    const double volume = signedCornerVolume(view, nodes);
    return isOutward ? volume < 0 : volume > 0;
  };

  SoMFInt32& indices = surface.shape->coordIndex;
  const auto sizeIndices = [&surface, &indices](std::size_t count) -> int* {
    if (surface.areJoined) {
      surface.polygons.resize(count);
      return surface.polygons.data();
    }
    indices.setNum(static_cast<int>(count));
    return count == 0 ? nullptr : indices.startEditing();
  };
  PiLevelSurfOutput output{surface.points, surface.quadrangles, surface.cells, sizeIndices};
  if constexpr (View::isGrid) {
    std::function<bool(int, int, int)> isCellMirrored;
    if (!traits.isUniform)
      isCellMirrored = [&view, &isMirrored](int i, int j, int k) {
        int nodes[8];
        view.shape().cellNodes(i, j, k, nodes);
        return isMirrored(nodes);
      };
    surface.gridLevelSurf.make(view.shape(), input, isCellMirrored, output);
  } else {
    surface.indexedLevelSurf.make(view.cells(), input, isMirrored, output);
  }
  if (surface.areJoined)
    joinStrips();
  else
    indices.finishEditing();
  surface.iso = output.iso;

  PiGrowBuffer<PiSurfacePoint>& points = surface.points.points();
  SoMFVec3f& places = surface.coordinate->point;
  places.setNum(static_cast<int>(points.size()));
  if (!points.empty()) {
    placeSurfacePoints(view, values, surface.iso, std::span(points.data(), points.size()), places.startEditing());
    places.finishEditing();
  }
  surface.isMade = true;
}

/// Gives the shape the strips that the polygons make.
void PoMesh3D::joinStrips() {
  PiSurfaceStore& surface = *m_surface;
  SoMFInt32& indices = surface.shape->coordIndex;
  surface.joiner.join(std::span<const int>(surface.polygons.data(), surface.polygons.size()));
  indices.setNum(static_cast<int>(surface.joiner.numIndices()));
  if (surface.joiner.numIndices() == 0) return;
  surface.joiner.write(indices.startEditing());
  indices.finishEditing();
}

void PoMesh3D::regularGrid3DLevelSurf(const PbRegularCartesianGrid3D* mesh, const float* values) {
  makeLevelSurf(viewOf(*mesh), values);
}
void PoMesh3D::paralCartGrid3DLevelSurf(const PbParalCartesianGrid3D* mesh, const float* values) {
  makeLevelSurf(viewOf(*mesh), values);
}
void PoMesh3D::cartGrid3DLevelSurf(const PbCartesianGrid3D* mesh, const float* values) {
  makeLevelSurf(viewOf(*mesh), values);
}
void PoMesh3D::indexedMeshLevelSurf(const PbIndexedMesh3D* mesh, const float* values) {
  makeLevelSurf(viewOf(*mesh), values);
}

/// The same cell by cell, for mesh classes of the application, which don't call back.
void PoMesh3D::makeLevelSurfOfCells(const float* values) {
  PiSurfaceStore& surface = *m_surface;
  const PbMesh3D& mesh = *m_currentMesh3D;
  const auto numNodes = static_cast<std::size_t>(mesh.getNumNodes());
  adjustIsoval(mesh.getNumNodes(), values, surface.iso);
  const auto isUsable = [values](const PbCell& cell) {
    for (int n = 0; n < cell.getNumNodes(); ++n)
      if (std::isnan(values[cell.getNodeIndex(n)]) || !isFinitePoint(cell.getNodeCoord(n))) return false;
    return true;
  };

  const bool asStrips = surface.areStrips && !surface.areJoined;
  std::vector<bool> flags;
  int ordering = -1;
  PbCellFilterIterator cells(&mesh, getCellFilter(), valuesIndexForCellFilter.getValue());
  for (cells.first(); cells.notDone(); cells.next()) {
    const PbCell* cell = cells.getCell();
    if (!cell || !isUsable(*cell)) continue;
    if (ordering < 0) {
      ordering = cell->getOrdering();
      const bool isToMax = (getSurfOrientation() != 0) == (ordering != 0);
      flags.resize(numNodes);
      for (std::size_t n = 0; n < numNodes; ++n) flags[n] = isToMax ? values[n] > surface.iso : values[n] < surface.iso;
    }
    if (cell->getOrdering() == ordering)
      cell->addLevelSurfPart(this, flags, asStrips);
    else
      withMirrored(*cell, [&](const PbCell& mirrored) { mirrored.addLevelSurfPart(this, flags, asStrips); });
  }
  addLevelSurfOptQuadrangle();

  const PiIndexList& facets = buffers().cellIndices;
  surface.cells.reset(facets.size());
  std::copy(facets.data(), facets.data() + facets.size(), surface.cells.begin());
  if (surface.areJoined) {
    const PiIndexList& polygons = buffers().coordIndices;
    surface.polygons.reset(polygons.size());
    std::copy(polygons.data(), polygons.data() + polygons.size(), surface.polygons.begin());
    joinStrips();
  } else {
    update_coord_index(surface.shape.get());
  }
  SoMFVec3f& places = surface.coordinate->point;
  places.setNum(static_cast<int>(surface.points.size()));
  if (surface.points.size() == 0) return;
  SbVec3f* place = places.startEditing();
  for (PiSurfacePoint& cut : surface.points.points())
    *place++ = placedSurfacePoint(mesh.getNodeCoord(cut.a), mesh.getNodeCoord(cut.b), values[cut.a], values[cut.b],
                                  surface.iso, cut.t);
  places.finishEditing();
}

void PoMesh3D::updateLevelSurfNormals() {
  PiSurfaceStore& surface = *m_surface;
  PiMeshNodes& made = nodes();
  if (getOverallNormal() != SbVec3f(0, 0, 0)) return;
  const float angle = creaseAngle.getValue();
  const bool isSmooth = angle > 0;
  const PiNormalsKey key{surface.passes.coordinates, angle};
  const bool isThere = made.normal && made.normalBinding;
  if (isThere && surface.normalsKey == key) return;
  surface.normalsKey = key;
  ++surface.passes.normals;

  if (!isThere) {
    SoGroup& group = *surface.group;
    made.normalBinding = new SoNormalBinding;
    group.insertChild(made.normalBinding, group.findChild(surface.coordinate.get()));
    made.normal = new SoNormal;
    group.insertChild(made.normal, group.findChild(surface.coordinate.get()));
  }
  const int binding = isSmooth ? SoNormalBinding::PER_VERTEX_INDEXED : SoNormalBinding::PER_FACE;
  if (made.normalBinding->value.getValue() != binding) made.normalBinding->value = binding;

  makeLevelSurfNormals(*surface.shape);
}

/// Fills the normal node with the normals of a shape that uses the points of the surface.
void PoMesh3D::makeLevelSurfNormals(SoIndexedShape& shape) {
  const bool areStrips = shape.isOfType(SoIndexedTriangleStripSet::getClassTypeId());
  const SoMFInt32& indices = shape.coordIndex;
  const SoMFVec3f& points = m_surface->coordinate->point;
  PiSurfaceNormals& made = m_surface->surfaceNormals;
  made.make(std::span(indices.getValues(0), static_cast<std::size_t>(indices.getNum())),
            std::span(points.getValues(0), static_cast<std::size_t>(points.getNum())), areStrips,
            creaseAngle.getValue());
  SoMFVec3f& vectors = nodes().normal->vector;
  vectors.setNum(static_cast<int>(made.normals().size()));
  if (!made.normals().empty()) {
    std::copy(made.normals().begin(), made.normals().end(), vectors.startEditing());
    vectors.finishEditing();
  }
  const std::span<const std::int32_t> own = made.normalIndices();
  if (own.empty()) {
    // Those of the coordinates.
    if (shape.normalIndex.getNum() != 1 || shape.normalIndex[0] != -1) shape.normalIndex.setValue(-1);
    return;
  }
  shape.normalIndex.setNum(static_cast<int>(own.size()));
  shape.normalIndex.setValues(0, static_cast<int>(own.size()), own.data());
}
