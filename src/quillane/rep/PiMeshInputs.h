#ifndef ORMELLE_PIMESHINPUTS_H
#define ORMELLE_PIMESHINPUTS_H

#include <Ormelle/PbDataMapping.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PbMesh2D.h>
#include <Ormelle/PbMesh3D.h>

#include "graph/frame/PiDataInput.h"
#include "quillane/emit/PiTextureContouring.h"

/// The data objects of a mesh kit, and the texture that is made of two of them.
class PiMeshInputs {
 public:
  explicit PiMeshInputs(const PoBase* kit) : slots(kit) {}

  void copyGiven(const PiMeshInputs& from) {
    mesh.give(from.mesh.given());
    mesh2D.give(from.mesh2D.given());
    mesh3D.give(from.mesh3D.given());
    dataMapping.give(from.dataMapping.given());
    moduleDataMapping.give(from.moduleDataMapping.given());
    isovaluesList.give(from.isovaluesList.given());
  }

  PiConnectedSlots slots;
  PiDataInput<PbMesh> mesh{slots};
  PiDataInput<PbMesh2D> mesh2D{slots};
  PiDataInput<PbMesh3D> mesh3D{slots};
  PiDataInput<PbDataMapping> dataMapping{slots};
  PiDataInput<PbDataMapping> moduleDataMapping{slots};
  PiDataInput<PbIsovaluesList> isovaluesList{slots};
  /// Of the mapping and the isovalues of the rebuild under way, if its colouring is COLOR_TEXTURE_CONTOURING.
  PiTextureContouring textureContouring;
};

#endif
