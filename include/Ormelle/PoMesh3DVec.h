#ifndef ORMELLE_POMESH3DVEC_H
#define ORMELLE_POMESH3DVEC_H

#include <memory>

#include <Ormelle/PoMesh3D.h>
#include <Ormelle/PoVectorGlyphs.h>

class PiVectorRep;

/// The vectors of a volume mesh at its nodes (or in the middle of its cells, for a set bound to cells), as lines or
/// solids with arrows.
///
/// Draws the set `vecsIndex`; its fields choose which vectors and how (PoVectorGlyphs). Colours are those of the data
/// mapping, of the vector's module or of the value of its node in the set `valuesIndex`; without a mapping, or without
/// such a set, they are inherited. A vector whose value has no colour isn't drawn, nor one that isn't finite. A mesh
/// without the set, a negative `vecsIndex` and a length factor of 0 or below draw nothing.
///
/// Reads from the state, unless set: the mesh and the data mapping.
///
/// Catalog, behind the parts of PoBase: for each of `body`, `startArrow` and `endArrow` the parts `<name>Sep`
/// (SoSeparator), `<name>App` (SoAppearanceKit, to style it) and `<name>Group` (SoGroup). All glyphs of one kind are
/// one shape.
///
/// @code
/// mesh.addVecsSet(0, velocities, "velocity");
/// auto* arrows = new PoMesh3DVec;
/// arrows->setMesh(&mesh);
/// arrows->vecsIndex = 0;
/// root->addChild(arrows);
/// @endcode
class ORMELLE_API PoMesh3DVec : public PoMesh3D, public PoVectorGlyphs {
  PO_KIT_HEADER(PoMesh3DVec, PoMesh3D);
  PO_KIT_CATALOG_ENTRY_HEADER(bodySep);
  PO_KIT_CATALOG_ENTRY_HEADER(bodyApp);
  PO_KIT_CATALOG_ENTRY_HEADER(bodyGroup);
  PO_KIT_CATALOG_ENTRY_HEADER(startArrowSep);
  PO_KIT_CATALOG_ENTRY_HEADER(startArrowApp);
  PO_KIT_CATALOG_ENTRY_HEADER(startArrowGroup);
  PO_KIT_CATALOG_ENTRY_HEADER(endArrowSep);
  PO_KIT_CATALOG_ENTRY_HEADER(endArrowApp);
  PO_KIT_CATALOG_ENTRY_HEADER(endArrowGroup);

 public:
  PoMesh3DVec();

  void rebuild() override;

  std::size_t getMemorySize() const override;

  /// Called back by the mesh in a rebuild, for each vector in turn.
  void addVector(const SbVec3f& point, const SbVec3f& vector);

 protected:
  ~PoMesh3DVec() override;

  void addElementsAllCaches() override;
  void preRebuild() override;

  /// Hands every vector of the set in use to addVector(): here by the mesh's mesh3DVec().
  virtual void addVectors(PbMesh3D& mesh);
  /// The value of each vector that addVectors() hands over, for colours; null if there are none.
  virtual const float* vectorScalars(const PbMesh3D& mesh);
  /// How far vectors lie apart, which automatic sizes go by.
  virtual float vectorSpacing(const PbMesh3D& mesh) const;

 private:
  std::unique_ptr<PiVectorRep> m_vectors;
};

#endif
