#include "nodes/field/PiMesh1DCodecs.h"
#include "nodes/field/PiMeshField.h"
#include "nodes/mesh/PiMeshNodeClasses.h"

PI_MESH_FIELD_SOURCE(PoSFIrregularMesh1D, PbIrregularMesh1D)
PI_MESH_FIELD_SOURCE(PoSFRegularMesh1D, PbRegularMesh1D)
