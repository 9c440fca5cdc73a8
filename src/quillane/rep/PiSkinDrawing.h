#ifndef ORMELLE_PISKINDRAWING_H
#define ORMELLE_PISKINDRAWING_H

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

#include <Inventor/SbVec3f.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoNormal.h>
#include <Inventor/nodes/SoNormalBinding.h>
#include <Inventor/nodes/SoQuadMesh.h>
#include <Ormelle/PoMeshSkin.h>

#include "graph/toolkit/PiNodeRef.h"
#include "quillane/contour/PiContouringFilled.h"
#include "quillane/emit/PiDrawnNodes.h"
#include "quillane/emit/PiFacetWriter.h"
#include "quillane/emit/PiMeshNodes.h"
#include "quillane/surface/PiGridSides.h"
#include "quillane/surface/PiSurfaceNormals.h"

class PbDataMapping;
class PbIsovaluesList;
class PiTextureContouring;

/// What a skin is made of: points and facets. Its points are the nodes of the mesh, or for the sides of a grid those of
/// `sides`.
struct PiSkinForm {
  unsigned geometryId = 0;  ///< of the mesh
  unsigned facetsId = 0;    ///< new whenever the facets are others
  int numPoints = 0;
  std::size_t numFacets = 0;           ///< at most
  const PiGridSides* sides = nullptr;  ///< null where the facets are of any shape
  /// Fills in the points: those of the nodes listed, or of all nodes if the list is empty.
  std::function<void(const std::vector<int>& nodes, SbVec3f* points)> readPoints;
  /// Writes the facets of which all can be drawn; `points` are those that were read.
  std::function<void(const SbVec3f* points, const PiDrawnNodes& drawn, PiFacetWriter& facets)> writeFacets;
};

/// How a skin is to look.
struct PiSkinLook {
  int coloring = 0;               ///< a PoMesh::ColoringType
  const float* values = nullptr;  ///< null if the colour is inherited
  bool arePerCell = false;        ///< one value for each cell, not for each node
  unsigned valuesId = 0;
  const PbDataMapping* mapping = nullptr;
  const PbIsovaluesList* isovalues = nullptr;
  const PiTextureContouring* bands = nullptr;
  float creaseAngle = 0;
};

/// How often each pass has run. For tests.
struct PiSkinPasses {
  int points = 0, facets = 0, normals = 0, colors = 0, textures = 0, contouring = 0;
  bool operator==(const PiSkinPasses&) const = default;
};

/// The nodes of a skin, which stay from one rebuild to the next, and the passes that bring them up to date: each runs
/// when what it depends on has changed.
///
/// In the group, behind the nodes that say how colours are bound: normals, coordinates, and the shape. It is a
/// SoIndexedFaceSet, or without colours a SoQuadMesh for each side of a grid. The toolkit counts materials, texture
/// coordinates and normals of a quad mesh from 0, whatever its first point is: one set of colours can't serve six of
/// them, and their normals are in the shapes.
class PiSkinDrawing {
 public:
  /// Brings the group and the material of `nodes` up to date. If they have a normal, it is that of all facets.
  void draw(const PiSkinForm& form, const PiSkinLook& look, PiMeshNodes& nodes);
  /// Makes the normals of what is drawn. `isReduced` tells that since draw() parts were taken out of the shape.
  void light(const PiSkinLook& look, PiMeshNodes& nodes, bool isReduced);
  void forget();

  static const PiSkinPasses& passesOf(const PoMeshSkin& kit) { return kit.m_drawing->m_passes; }
  static int numFacetsOf(const PoMeshSkin& kit) { return static_cast<int>(kit.m_drawing->m_cells.size()); }
  std::size_t memorySize() const;

 private:
  /// What the passes depend on. Passes count as what those behind them depend on.
  struct PointsKey {
    bool areSides, isMirrored;
    unsigned geometry, sides, undefinedValues;
    bool operator==(const PointsKey&) const = default;
  };
  struct FacetsKey {
    bool arePolygons;
    unsigned facets;
    int points;
    bool operator==(const FacetsKey&) const = default;
  };
  struct ColorsKey {
    int points, facets;
    unsigned values, mapping;
    bool arePerCell;
    const void* material;
    bool operator==(const ColorsKey&) const = default;
  };
  struct TexturesKey {
    int points;
    unsigned values;
    std::vector<float> isovalues;
    const void* node;
    bool operator==(const TexturesKey&) const = default;
  };
  struct NormalsKey {
    int points, facets;
    bool areFacets;
    float creaseAngle;
    bool operator==(const NormalsKey&) const = default;
  };

  void updatePoints(const PiSkinForm& form, const PiSkinLook& look);
  void updateFacets(const PiSkinForm& form, bool arePolygons);
  void makeSides(const PiGridSides& sides);
  void findUsedPoints();
  void updateColors(const PiSkinLook& look, PiMeshNodes& nodes);
  void colorPoints(const PiSkinLook& look, SoMaterial& material);
  void updateTextures(const PiSkinLook& look, PiMeshNodes& nodes);
  void drawBands(const PiSkinLook& look, PiMeshNodes& nodes);
  void place(PiMeshNodes& nodes);
  void lightSides();
  void lightFacets(SoCoordinate3& coordinate, SoIndexedFaceSet& shape, float creaseAngle);
  /// The value of each point.
  const float* pointValues(const PiSkinLook& look);
  int numPoints() const { return m_coordinate ? m_coordinate->point.getNum() : 0; }

  PiNodeRef<SoGroup> m_group;
  PiNodeRef<SoNormalBinding> m_normalBinding;
  PiNodeRef<SoNormal> m_normal;
  PiNodeRef<SoCoordinate3> m_coordinate;
  PiNodeRef<SoIndexedFaceSet> m_faces;
  std::vector<PiNodeRef<SoQuadMesh>> m_quads;  // empty if the shape is the face set
  std::optional<PiGridSides> m_sides;
  bool m_isReduced = false;

  std::optional<PiDrawnNodes> m_drawn;
  std::vector<int> m_pointNodes;  // empty if the points are the nodes
  std::vector<int> m_usedPoints;  // those that a facet has, as of a run of the facets pass
  int m_usedPointsOf = 0;
  PiGrowBuffer<int> m_cells;  // of each facet
  std::vector<float> m_values;
  PiSurfaceNormals m_surfaceNormals;
  PiContouringFilled m_bands;

  std::optional<PointsKey> m_pointsKey;
  std::optional<FacetsKey> m_facetsKey;
  std::optional<ColorsKey> m_colorsKey;
  std::optional<TexturesKey> m_texturesKey;
  std::optional<NormalsKey> m_normalsKey;
  unsigned m_undefinedOf = 0;  // the values that were last looked at for NaN
  bool m_areSomeUndefined = false;
  PiSkinPasses m_passes;
};

#endif
