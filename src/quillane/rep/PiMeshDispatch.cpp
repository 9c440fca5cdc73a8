// The second half of the double dispatch: each concrete mesh calls the representation back with its own type.

#include <Ormelle/PbCartesianGrid2D.h>
#include <Ormelle/PbIndexedMesh2D.h>
#include <Ormelle/PbParalCartesianGrid2D.h>
#include <Ormelle/PbPolarGrid2D.h>
#include <Ormelle/PbQuadrangleMesh2D.h>
#include <Ormelle/PbRegularCartesianGrid2D.h>
#include <Ormelle/PbTriangleMesh2D.h>
#include <Ormelle/PoMeshFilled.h>
#include <Ormelle/PoMeshLines.h>

#include "quillane/contour/PiContouring.h"

void PbCartesianGrid2D::meshFilled(PoMeshFilled* rep) const { rep->cartGridFilled(this); }
void PbCartesianGrid2D::meshContouring(PiContouring* contouring, const float* z) const {
  contouring->setMesh(*this, z);
}
void PbCartesianGrid2D::meshLines(PoMeshLines* rep) const { rep->cartGridLines(this); }

void PbParalCartesianGrid2D::meshFilled(PoMeshFilled* rep) const { rep->paralCartGridFilled(this); }
void PbParalCartesianGrid2D::meshContouring(PiContouring* contouring, const float* z) const {
  contouring->setMesh(*this, z);
}
void PbParalCartesianGrid2D::meshLines(PoMeshLines* rep) const { rep->paralCartGridLines(this); }

void PbRegularCartesianGrid2D::meshFilled(PoMeshFilled* rep) const { rep->regularCartGridFilled(this); }
void PbRegularCartesianGrid2D::meshContouring(PiContouring* contouring, const float* z) const {
  contouring->setMesh(*this, z);
}
void PbRegularCartesianGrid2D::meshLines(PoMeshLines* rep) const { rep->regularCartGridLines(this); }

void PbPolarGrid2D::meshFilled(PoMeshFilled* rep) const { rep->polarGridFilled(this); }
void PbPolarGrid2D::meshContouring(PiContouring* contouring, const float* z) const { contouring->setMesh(*this, z); }
void PbPolarGrid2D::meshLines(PoMeshLines* rep) const { rep->polarGridLines(this); }

void PbIndexedMesh2D::meshFilled(PoMeshFilled* rep) const { rep->indexedMeshFilled(this); }
void PbIndexedMesh2D::meshContouring(PiContouring* contouring, const float* z) const { contouring->setMesh(*this, z); }
void PbIndexedMesh2D::meshLines(PoMeshLines* rep) const { rep->indexedLines(this); }

void PbTriangleMesh2D::meshFilled(PoMeshFilled* rep) const { rep->triangleMeshFilled(this); }
void PbTriangleMesh2D::meshContouring(PiContouring* contouring, const float* z) const { contouring->setMesh(*this, z); }
void PbTriangleMesh2D::meshLines(PoMeshLines* rep) const { rep->triangleLines(this); }

void PbQuadrangleMesh2D::meshFilled(PoMeshFilled* rep) const { rep->quadrangleMeshFilled(this); }
void PbQuadrangleMesh2D::meshContouring(PiContouring* contouring, const float* z) const {
  contouring->setMesh(*this, z);
}
void PbQuadrangleMesh2D::meshLines(PoMeshLines* rep) const { rep->quadrangleLines(this); }
