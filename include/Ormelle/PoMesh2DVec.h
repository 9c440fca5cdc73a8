#ifndef ORMELLE_POMESH2DVEC_H
#define ORMELLE_POMESH2DVEC_H

#include <memory>

#include <Ormelle/PoMesh2D.h>
#include <Ormelle/PoVectorGlyphs.h>

class PiVectorRep;

/// The vectors of a surface mesh at its nodes (or in the middle of its cells, for a set bound to cells), as lines or
/// solids with arrows.
///
/// Draws the set `vecsIndex`; its fields choose which vectors and how (PoVectorGlyphs). Colours are those of the data
/// mapping, of the vector's module or of the value of its node in the set `valuesIndex`; without a mapping, or without
/// such a set, they are inherited. A vector whose value has no colour isn't drawn, nor one that isn't finite. A mesh
/// without the set, a negative `vecsIndex` and a length factor of 0 or below draw nothing. Under `zValuesIndex` the
/// values of that set are the heights at which vectors stand.
///
/// Reads from the state, unless set: the mesh and the data mapping.
///
/// Catalog, behind the parts of PoBase: for each of `body`, `startArrow` and `endArrow` the parts `<name>Sep`
/// (SoSeparator), `<name>App` (SoAppearanceKit, to style it) and `<name>Group` (SoGroup). All glyphs of one kind are
/// one shape.
///
/// @code
/// mesh.addVecsSet(0, velocities, "velocity");
/// auto* arrows = new PoMesh2DVec;
/// arrows->setMesh(&mesh);
/// arrows->vecsIndex = 0;
/// root->addChild(arrows);
/// @endcode
class ORMELLE_API PoMesh2DVec : public PoMesh2D, public PoVectorGlyphs {
  PO_KIT_HEADER(PoMesh2DVec, PoMesh2D);
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
  PoMesh2DVec();

  void rebuild() override;

  std::size_t getMemorySize() const override;

  /// Called back by the mesh in a rebuild, for each vector in turn.
  void addVector(const SbVec3f& point, const SbVec3f& vector);

 protected:
  ~PoMesh2DVec() override;

  void addElementsAllCaches() override;
  void preRebuild() override;

 private:
  std::unique_ptr<PiVectorRep> m_vectors;
};

#endif
