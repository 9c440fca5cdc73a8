#ifndef ORMELLE_PIMESHINPUTS_H
#define ORMELLE_PIMESHINPUTS_H

#include <Ormelle/PbDataMapping.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PbMesh2D.h>
#include <Ormelle/PbMesh3D.h>

#include "graph/frame/PiConnectedSlot.h"
#include "quillane/emit/PiTextureContouring.h"

/// One data object that a kit uses: given by the application, or else found on the traversal state. The kit is
/// connected to it either way, so that a change of the object itself is seen even where no node was touched.
template <class T>
class PiMeshInput {
 public:
  explicit PiMeshInput(PiConnectedSlots& slots) : m_given(slots), m_found(slots) {}

  void give(T* object) { m_given.set(object); }
  T* given() const { return m_given.get(); }

  /// The object to use. Outside a traversal nothing can be found anew: then the one found last stays in use, which its
  /// connection keeps valid.
  T* resolve(bool isTraversed, const T* onState) {
    if (given())
      m_found.set(nullptr);
    else if (isTraversed)
      m_found.set(const_cast<T*>(onState));
    return given() ? given() : m_found.get();
  }

 private:
  PiConnectedSlot<T> m_given;
  PiConnectedSlot<T> m_found;
};

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
  PiMeshInput<PbMesh> mesh{slots};
  PiMeshInput<PbMesh2D> mesh2D{slots};
  PiMeshInput<PbMesh3D> mesh3D{slots};
  PiMeshInput<PbDataMapping> dataMapping{slots};
  PiMeshInput<PbDataMapping> moduleDataMapping{slots};
  PiMeshInput<PbIsovaluesList> isovaluesList{slots};
  /// Of the mapping and the isovalues of the rebuild under way, if its colouring is COLOR_TEXTURE_CONTOURING.
  PiTextureContouring textureContouring;
};

#endif
