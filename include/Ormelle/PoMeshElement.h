#ifndef ORMELLE_POMESHELEMENT_H
#define ORMELLE_POMESHELEMENT_H

#include <Ormelle/PoSubElement.h>

class PbMesh;
class PbMesh1D;
class PbMesh2D;
class PbMesh3D;

/// The mesh in force and its dimension, set by the mesh nodes.
class ORMELLE_API PoMeshElement : public SoReplacedElement {
  PO_ELEMENT_HEADER(PoMeshElement);

 public:
  /// Puts `mesh` in force behind `node`. Not owned.
  /// @{
  static void set(SoState* state, SoNode* node, const PbMesh1D* mesh);
  static void set(SoState* state, SoNode* node, const PbMesh2D* mesh);
  static void set(SoState* state, SoNode* node, const PbMesh3D* mesh);
  /// @}

  /// The mesh of whatever dimension; null if no node set one.
  static PbMesh* getMesh(SoState* state);
  /// The mesh if it is of that dimension, else null.
  /// @{
  static PbMesh1D* getMesh1D(SoState* state);
  static PbMesh2D* getMesh2D(SoState* state);
  static PbMesh3D* getMesh3D(SoState* state);
  /// @}

 private:
  enum Dimension { DIMENSION_1, DIMENSION_2, DIMENSION_3 };

  static void store(SoState* state, SoNode* node, PbMesh* mesh, Dimension dimension);
  static PbMesh* find(SoState* state, Dimension dimension);

  PbMesh* m_mesh = nullptr;
  Dimension m_dimension = DIMENSION_1;
};

#endif
