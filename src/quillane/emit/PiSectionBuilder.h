#ifndef ORMELLE_PISECTIONBUILDER_H
#define ORMELLE_PISECTIONBUILDER_H

#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoIndexedLineSet.h>
#include <Inventor/nodes/SoMaterial.h>

#include "graph/toolkit/PiNodeRef.h"
#include "quillane/contour/PiContouringFilled.h"
#include "quillane/emit/PiMeshEmitter.h"
#include "quillane/surface/PiGridSlice.h"
#include "quillane/surface/PiSection.h"

class PbIsovaluesList;

/// How a section is to be coloured.
struct PiSectionColoring {
  int coloring = PoMesh::COLOR_INHERITED;      ///< a PoMesh::ColoringType
  const float* cellValues = nullptr;           ///< if not null, the values to colour with, one for each cell
  const PbDataMapping* mapping = nullptr;      ///< as long as the material isn't inherited
  const PiTextureContouring* bands = nullptr;  ///< for COLOR_TEXTURE_CONTOURING
  const PbIsovaluesList* isovalues = nullptr;  ///< for COLOR_CONTOURING
  PiContouringFilled* contouring = nullptr;    ///< likewise
};

/// Nodes whose memory is used again when the next section is shown.
struct PiSectionNodes {
  PiNodeRef<SoCoordinate3> coordinate;
  PiNodeRef<SoIndexedFaceSet> faces;
  PiNodeRef<SoIndexedLineSet> lines;
  PiNodeRef<SoMaterial> material;
};

/// Shows what a plane cuts out of a volume. It appends to the group: a binding, coordinates and a shape; and fills the
/// material, with a colour for each point or, by values of cells, for each part.
class PiSectionBuilder : private PiMeshEmitter {
 public:
  PiSectionBuilder(const PiSectionColoring& coloring, PiMeshNodes& nodes, PiSectionNodes& kept);

  /// Polygons, as a SoIndexedFaceSet, or as bands.
  void build(const PiSection& section);
  /// A SoQuadMesh, or bands.
  void build(const PiGridSlice& slice);
  /// Segments, as a SoIndexedLineSet, whose colours are mapped whatever the colouring.
  void buildLines(const PiSection& section);

 private:
  void bind(SoMaterialBinding::Binding perCell);
  void emitPoints(const PiGrowBuffer<SbVec3f>& points);
  void emitColors(const PiGrowBuffer<float>& values, const PiGrowBuffer<int>& cells);
  void emitBands(const PiGrowBuffer<float>& values);
  bool isMapped() const { return m_request.coloring != PoMesh::COLOR_INHERITED; }

  const PiSectionColoring m_coloring;
  PiSectionNodes& m_kept;
};

#endif
