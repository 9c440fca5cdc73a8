// The second half of the double dispatch of volumes: each concrete mesh calls the representation back with its own
// type, and each cell writes its part to the representation that makes a surface.

#include <array>

#include <Ormelle/PbCartesianGrid3D.h>
#include <Ormelle/PbCell.h>
#include <Ormelle/PbHexahedronMesh3D.h>
#include <Ormelle/PbIndexedMesh3D.h>
#include <Ormelle/PbParalCartesianGrid3D.h>
#include <Ormelle/PbRegularCartesianGrid3D.h>
#include <Ormelle/PbTetrahedronMesh3D.h>
#include <Ormelle/PoMesh3D.h>
#include <Ormelle/PoMeshCrossContour.h>
#include <Ormelle/PoMeshCrossSection.h>
#include <Ormelle/PoMeshSkeleton.h>
#include <Ormelle/PoMeshSkin.h>

#include "quillane/marching/PiLevelSurfPart.h"

// --- level surface --------------------------------------------------------------------------------------------------

void PbRegularCartesianGrid3D::meshLevelSurfShapeIndices(PoMesh3D* rep, int, const float* values) const {
  rep->regularGrid3DLevelSurf(this, values);
}
void PbParalCartesianGrid3D::meshLevelSurfShapeIndices(PoMesh3D* rep, int, const float* values) const {
  rep->paralCartGrid3DLevelSurf(this, values);
}
void PbCartesianGrid3D::meshLevelSurfShapeIndices(PoMesh3D* rep, int, const float* values) const {
  rep->cartGrid3DLevelSurf(this, values);
}
void PbIndexedMesh3D::meshLevelSurfShapeIndices(PoMesh3D* rep, int, const float* values) const {
  rep->indexedMeshLevelSurf(this, values);
}

namespace {

/// A kit that makes a surface, as what a cell writes to.
struct KitAsSink {
  struct CoordIndices {
    PoMesh3D& kit;
    void push_back(int index) const { kit.push_back_coord_index(index); }
  };
  struct CellIndices {
    PoMesh3D& kit;
    void push_back(int index) const { kit.push_back_cell_index(index); }
  };

  explicit KitAsSink(PoMesh3D& kit) : m_kit(kit), coordIndices{kit}, cellIndices{kit} {}
  void addSurfPoint(int a, int b, int& index) const { m_kit.addSurfPoint(a, b, index); }
  void addOptQuadrangle(const std::array<int, 4>& corners, int cell) const {
    m_kit.addOptQuadrangle(corners[0], corners[1], corners[2], corners[3], cell);
  }

 private:
  PoMesh3D& m_kit;

 public:
  CoordIndices coordIndices;
  CellIndices cellIndices;
};

}  // namespace

int PbCell::addLevelSurfPart(PoMesh3D* mesh3d, const std::vector<bool>& flags, int asStrips) const {
  const unsigned char id = getIsosurfCaseId(flags);
  const PiMarchingCase* part = id ? getMCcase(id) : nullptr;
  if (!part || !mesh3d) return 0;
  KitAsSink sink(*mesh3d);
  ::addLevelSurfPart(*part, m_nodeIndices, m_index, asStrips != 0, sink);
  return 1;
}

// --- sections and their outlines -------------------------------------------------------------------------------------

void PbRegularCartesianGrid3D::meshCrossSection(PoMeshCrossSection* rep) const { rep->regularGrid3DCrossSection(this); }
void PbParalCartesianGrid3D::meshCrossSection(PoMeshCrossSection* rep) const { rep->paralCartGrid3DCrossSection(this); }
void PbCartesianGrid3D::meshCrossSection(PoMeshCrossSection* rep) const { rep->cartGrid3DCrossSection(this); }
void PbIndexedMesh3D::meshCrossSection(PoMeshCrossSection* rep) const { rep->indexedMeshCrossSection(this); }
void PbHexahedronMesh3D::meshCrossSection(PoMeshCrossSection* rep) const { rep->hexahedronMeshCrossSection(this); }
void PbTetrahedronMesh3D::meshCrossSection(PoMeshCrossSection* rep) const { rep->tetrahedronMeshCrossSection(this); }

void PbRegularCartesianGrid3D::meshCrossContour(PoMeshCrossContour* rep) const { rep->regularGrid3DCrossContour(this); }
void PbParalCartesianGrid3D::meshCrossContour(PoMeshCrossContour* rep) const { rep->paralCartGrid3DCrossContour(this); }
void PbCartesianGrid3D::meshCrossContour(PoMeshCrossContour* rep) const { rep->cartGrid3DCrossContour(this); }
void PbIndexedMesh3D::meshCrossContour(PoMeshCrossContour* rep) const { rep->indexedMeshCrossContour(this); }

// --- skin ------------------------------------------------------------------------------------------------------------

void PbGrid3D::meshSkin(PoMeshSkin* rep) const {
  if (const PoCellFilter* filter = rep->getCellFilter())
    rep->grid3DSkinFilter(this, filter);
  else
    grid3DSkin(rep);
}
void PbRegularCartesianGrid3D::grid3DSkin(PoMeshSkin* rep) const { rep->regularGrid3DSkin(this); }
void PbParalCartesianGrid3D::grid3DSkin(PoMeshSkin* rep) const { rep->paralCartGrid3DSkin(this); }
void PbCartesianGrid3D::grid3DSkin(PoMeshSkin* rep) const { rep->cartGrid3DSkin(this); }
void PbIndexedMesh3D::meshSkin(PoMeshSkin* rep) const { rep->indexedMeshSkin(this); }
void PbIndexedMesh3D::meshSkinFilter(PoMeshSkin* rep, const PoCellFilter* filter) const {
  rep->indexedMeshSkinFilter(this, filter);
}

// --- skeleton --------------------------------------------------------------------------------------------------------

void PbRegularCartesianGrid3D::meshSkeleton(PoMeshSkeleton* rep, const float* values, float* x, float* y,
                                            float* z) const {
  rep->regularGrid3DSkeleton(this, values, x, y, z);
}
void PbParalCartesianGrid3D::meshSkeleton(PoMeshSkeleton* rep, const float* values, float* x, float* y,
                                          float* z) const {
  rep->paralCartGrid3DSkeleton(this, values, x, y, z);
}
void PbCartesianGrid3D::meshSkeleton(PoMeshSkeleton* rep, const float* values, float* x, float* y, float* z) const {
  rep->cartGrid3DSkeleton(this, values, x, y, z);
}
void PbIndexedMesh3D::meshSkeleton(PoMeshSkeleton* rep, const float* values, float* x, float* y, float* z) const {
  rep->indexedMeshSkeleton(this, values, x, y, z);
}
