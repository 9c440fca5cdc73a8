#ifndef ORMELLE_POMESH2D_H
#define ORMELLE_POMESH2D_H

#include <Inventor/fields/SoSFShort.h>

#include <Ormelle/PoMesh.h>

class PbMesh2D;

/// Root of the kits that draw a two-dimensional mesh, flat or raised by a height at each node. The catalog is that of
/// PoBase.
class ORMELLE_API PoMesh2D : public PoMesh {
  PO_KIT_ABSTRACT_HEADER(PoMesh2D, PoMesh);

 public:
  /// Index of the set of values that gives the heights; below 0 they are the mesh's own. A set that isn't there or
  /// hasn't one value for each node is passed over.
  SoSFShort zValuesIndex;

  /// The mesh to use instead of that on the traversal state; null goes back to the state. Not owned.
  void setMesh(PbMesh2D* mesh);
  /// What was set, else during a traversal the two-dimensional mesh on the state, else null.
  PbMesh2D* getMesh() const;

  /// Makes the coordinates of this rebuild: all nodes of the mesh, with the heights `z`, one for each node, or 0
  /// where `z` is null. For the workers of a rebuild.
  void makeSoCoordinate3(const float* z);

  void basicObjectChange(PbBase* object) override;

 protected:
  PoMesh2D();
  ~PoMesh2D() override;

  void preRebuild() override;

  /// The mesh of the rebuild under way if there is something to draw of it, else null.
  const PbMesh2D* drawnMesh() const;
  /// The heights to draw with, one for each node; null for a flat mesh.
  const float* heights(const PbMesh2D& mesh) const;
  /// The set of values that gives the heights instead of the mesh's own, -1 if none does.
  int heightsIndex(const PbMesh2D& mesh) const;
  /// The values to colour with, one for each node. Null if the material is inherited, which it also is from here on if
  /// the set that `valuesIndex` names has no value for each node.
  const float* nodeValuesToColor(const PbMesh2D& mesh);

  PbMesh2D* m_currentMesh2D = nullptr;  ///< settled by preRebuild()

 private:
  PbMesh2D* givenMesh() const;
};

#endif
