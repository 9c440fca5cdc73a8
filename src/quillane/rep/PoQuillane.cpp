#include <Ormelle/PoQuillane.h>

#include <Ormelle/PbHexahedronCell.h>
#include <Ormelle/PbPyramidCell.h>
#include <Ormelle/PbTetrahedronCell.h>
#include <Ormelle/PbWedgeCell.h>
#include <Ormelle/PoBaseStreamLine.h>
#include <Ormelle/PoMesh2DVec.h>
#include <Ormelle/PoMesh3D.h>
#include <Ormelle/PoMesh3DVec.h>
#include <Ormelle/PoMesh3DVecCrossSection.h>
#include <Ormelle/PoMesh3DVecGridCrossSection.h>
#include <Ormelle/PoMeshContouring.h>
#include <Ormelle/PoMeshCrossContour.h>
#include <Ormelle/PoMeshCrossSection.h>
#include <Ormelle/PoMeshFilled.h>
#include <Ormelle/PoMeshLevelSurf.h>
#include <Ormelle/PoMeshLimit.h>
#include <Ormelle/PoMeshLines.h>
#include <Ormelle/PoMeshSides.h>
#include <Ormelle/PoMeshSkeleton.h>
#include <Ormelle/PoMeshSkin.h>
#include <Ormelle/PoStreamLine.h>
#include <Ormelle/PoStreamLineMotion.h>
#include <Ormelle/PoStreamParticleMotion.h>
#include <Ormelle/PoStreamPointMotion.h>
#include <Ormelle/PoStreamSphereMotion.h>
#include <Ormelle/PoStreamSurface.h>
#include <Ormelle/PoStreamTadpoleMotion.h>

#include "graph/frame/PiClassTable.h"
#include "quillane/rep/PiMeshScratch.h"

PO_KIT_ABSTRACT_SOURCE(PoQuillane)

namespace {

// clang-format off
constexpr PiClassEntry kRoots[] = {PI_CLASS(PoQuillane), PI_CLASS(PoMesh), PI_TABLES(PiMeshScratch)};
constexpr PiClassEntry kStreams[] = {
    PI_CLASS(PoBaseStreamLine),
    PI_CLASS(PoStreamLine),
    PI_CLASS(PoStreamSurface),
    PI_CLASS(PoStreamParticleMotion),
    PI_CLASS(PoStreamPointMotion),
    PI_CLASS(PoStreamSphereMotion),
    PI_CLASS(PoStreamLineMotion),
    PI_CLASS(PoStreamTadpoleMotion),
};
constexpr PiClassEntry kSurfaces[] = {
    PI_CLASS(PoMesh2D),
    PI_CLASS(PoMesh2DVec),
    PI_CLASS(PoMeshLines),
    PI_CLASS(PoMeshFilled),
    PI_CLASS(PoMeshSides),
    PI_CLASS(PoMeshLimit),
    PI_CLASS(PoMeshContouring),
};
constexpr PiClassEntry kVolumes[] = {
    PI_CLASS(PoMesh3D),
    PI_CLASS(PoMesh3DVec),
    PI_CLASS(PoMeshSkin),
    PI_CLASS(PoMeshLevelSurf),
    PI_CLASS(PoMeshCrossSection),
    PI_CLASS(PoMeshCrossContour),
    PI_CLASS(PoMeshSkeleton),
    PI_CLASS(PoMesh3DVecCrossSection),
    PI_CLASS(PoMesh3DVecGridCrossSection),
};
// clang-format on
constexpr PiClassEntry kCells[] = {PI_TABLES(PbHexahedronCell), PI_TABLES(PbPyramidCell), PI_TABLES(PbTetrahedronCell),
                                   PI_TABLES(PbWedgeCell)};

}  // namespace

PoQuillane::PoQuillane(void (*catchActionFunction)(void*, SoAction*)) : PoBase(catchActionFunction) {
  PO_KIT_CONSTRUCTOR(PoQuillane);
  PO_KIT_CONSTRUCTED(PoQuillane);
}

PoQuillane::~PoQuillane() = default;

void PoQuillane::initClasses() {
  piInitClasses(kRoots);
  piInitClasses(kStreams);
  piInitClasses(kSurfaces);
  piInitClasses(kCells);
  piInitClasses(kVolumes);
}

void PoQuillane::exitClasses() {
  piExitClasses(kStreams);
  piExitClasses(kSurfaces);
  piExitClasses(kVolumes);
  piExitClasses(kCells);
  piExitClasses(kRoots);
}
