#ifndef ORMELLE_PISURFACESTORE_H
#define ORMELLE_PISURFACESTORE_H

#include <optional>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedShape.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Ormelle/PoMesh3D.h>

#include "graph/toolkit/PiNodeRef.h"
#include "quillane/contour/PiContouringFilled.h"
#include "quillane/surface/PiCrossContour.h"
#include "quillane/surface/PiGridLevelSurf.h"
#include "quillane/surface/PiIndexedLevelSurf.h"
#include "quillane/surface/PiPairTable.h"
#include "quillane/surface/PiQuadMerge.h"
#include "quillane/surface/PiStripJoiner.h"
#include "quillane/surface/PiSurfaceNormals.h"

/// How often each pass of the surface has run in the life of a kit. For tests.
struct PiSurfacePasses {
  int topology = 0, coordinates = 0, normals = 0, colors = 0, textures = 0, contouring = 0;
  bool operator==(const PiSurfacePasses&) const = default;
};

/// What each pass depends on. A pass runs when its key differs from that of its last run.
struct PiTopologyKey {
  unsigned mesh, geometry, values, filter, filterValues;
  int valuesIndex, filterIndex;
  float iso;
  int orientation;
  bool areStrips, areJoined;
  bool operator==(const PiTopologyKey&) const = default;
};
struct PiNormalsKey {
  int coordinates;
  float creaseAngle;
  bool operator==(const PiNormalsKey&) const = default;
};
struct PiColorsKey {
  int topology;
  unsigned values;
  int valuesIndex;
  bool isLevelData;
  unsigned mapping;
  bool operator==(const PiColorsKey&) const = default;
};

/// What a level surface must know of the coordinates of a mesh as a whole. It holds until they change.
struct PiVolumeTraits {
  std::optional<unsigned> geometry;  ///< of which mesh
  bool areFinite = true;
  bool isOutward = false;  ///< the ordering of the first cell that has one is 1
  bool isUniform = false;  ///< all other cells are known to have the same
};

/// The surface that a volume kit keeps between rebuilds: points, indices, and the nodes that hold them.
struct PiSurfaceStore {
  PiPairTable points;
  PiQuadMerge quadrangles;
  PiGrowBuffer<int> cells;  ///< the cell of each facet

  /// What the group and the parts of the kit hold. `shape` also keeps the indices of the whole surface while the group
  /// shows a shape without the transparent parts, or bands.
  PiNodeRef<SoGroup> group;
  PiNodeRef<SoMaterial> material;
  PiNodeRef<SoCoordinate3> coordinate;
  PiNodeRef<SoIndexedShape> shape;
  bool isReduced = false;  ///< the group shows a shape without the transparent parts

  /// A facet is a strip, and strips of several cells are joined unless each has its own colour.
  bool areStrips = true, areJoined = true;
  PiGrowBuffer<int> polygons;  ///< what the strips were joined from
  PiStripJoiner joiner;
  float iso = 0;        ///< moved off the values of the nodes
  bool isMade = false;  ///< the mesh called back with its type
  PiVolumeTraits traits;

  PiGridLevelSurf gridLevelSurf;
  PiIndexedLevelSurf indexedLevelSurf;
  PiSurfaceNormals surfaceNormals;
  PiContouringFilled contouring;
  PiCrossContour crossContour;
  std::shared_ptr<const PiCellBlocks> blocks;  ///< of the indexed mesh, for the section by `plane`
  PiSectionPlane plane{1, 0, 0, 0};

  std::optional<PiTopologyKey> topologyKey;
  std::optional<PiNormalsKey> normalsKey;
  std::optional<PiColorsKey> colorsKey;
  PiSurfacePasses passes;
  PiGrowBuffer<float> pointValues;  ///< scratch: one for each point

  void forget() {
    group.reset();
    material.reset();
    coordinate.reset();
    shape.reset();
    isReduced = false;
    topologyKey.reset();
    normalsKey.reset();
    colorsKey.reset();
  }
  std::size_t memorySize() const {
    return points.pointMemorySize() + quadrangles.memorySize() + cells.capacity() * sizeof(int) +
           pointValues.capacity() * sizeof(float) + gridLevelSurf.memorySize() + indexedLevelSurf.memorySize() +
           surfaceNormals.memorySize() + polygons.capacity() * sizeof(int) + joiner.memorySize() +
           crossContour.memorySize();
  }

  /// That of a kit, and its passes. For tests.
  static const PiSurfaceStore& of(const PoMesh3D& kit) { return *kit.m_surface; }
  static const PiSurfacePasses& passesOf(const PoMesh3D& kit) { return kit.m_surface->passes; }
};

#endif
