#include "nodes/field/PiIndexedCodecs.h"
#include "nodes/field/PiMeshField.h"
#include "nodes/mesh/PiMeshNodeClasses.h"

PI_MESH_FIELD_SOURCE(PoSFHexahedronMesh3D, PbHexahedronMesh3D)
PI_MESH_FIELD_SOURCE(PoSFIndexedMesh2D, PbIndexedMesh2D)
PI_MESH_FIELD_SOURCE(PoSFIndexedMesh3D, PbIndexedMesh3D)
PI_MESH_FIELD_SOURCE(PoSFQuadrangleMesh2D, PbQuadrangleMesh2D)
PI_MESH_FIELD_SOURCE(PoSFTetrahedronMesh3D, PbTetrahedronMesh3D)
PI_MESH_FIELD_SOURCE(PoSFTriangleMesh2D, PbTriangleMesh2D)
