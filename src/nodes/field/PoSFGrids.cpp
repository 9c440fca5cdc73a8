#include "nodes/field/PiGridCodecs.h"
#include "nodes/field/PiMeshField.h"
#include "nodes/mesh/PiMeshNodeClasses.h"

PI_MESH_FIELD_SOURCE(PoSFCartesianGrid2D, PbCartesianGrid2D)
PI_MESH_FIELD_SOURCE(PoSFCartesianGrid3D, PbCartesianGrid3D)
PI_MESH_FIELD_SOURCE(PoSFParalCartesianGrid2D, PbParalCartesianGrid2D)
PI_MESH_FIELD_SOURCE(PoSFParalCartesianGrid3D, PbParalCartesianGrid3D)
PI_MESH_FIELD_SOURCE(PoSFPolarGrid2D, PbPolarGrid2D)
PI_MESH_FIELD_SOURCE(PoSFRegularCartesianGrid2D, PbRegularCartesianGrid2D)
PI_MESH_FIELD_SOURCE(PoSFRegularCartesianGrid3D, PbRegularCartesianGrid3D)
