#ifndef ORMELLE_PIMESHNODECLASSES_H
#define ORMELLE_PIMESHNODECLASSES_H

// All mesh nodes, for the tables of classes.

#include <Ormelle/PoCartesianGrid2D.h>
#include <Ormelle/PoCartesianGrid3D.h>
#include <Ormelle/PoHexahedronMesh3D.h>
#include <Ormelle/PoIndexedMesh2D.h>
#include <Ormelle/PoIndexedMesh3D.h>
#include <Ormelle/PoIrregularMesh1D.h>
#include <Ormelle/PoParalCartesianGrid2D.h>
#include <Ormelle/PoParalCartesianGrid3D.h>
#include <Ormelle/PoPolarGrid2D.h>
#include <Ormelle/PoQuadrangleMesh2D.h>
#include <Ormelle/PoRegularCartesianGrid2D.h>
#include <Ormelle/PoRegularCartesianGrid3D.h>
#include <Ormelle/PoRegularMesh1D.h>
#include <Ormelle/PoTetrahedronMesh3D.h>
#include <Ormelle/PoTriangleMesh2D.h>

#endif
