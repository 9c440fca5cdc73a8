#include <Ormelle/PoMesh3DVec.h>

#include <Inventor/SbBox3f.h>
#include <Inventor/caches/SoCache.h>
#include <Inventor/misc/SoState.h>
#include <Ormelle/PbMesh3D.h>
#include <Ormelle/PoDataMappingElement.h>

#include "quillane/rep/PiMeshScratch.h"
#include "quillane/vector/PiVectorKit.h"

PO_KIT_SOURCE(PoMesh3DVec)

PoMesh3DVec::PoMesh3DVec() : m_vectors(std::make_unique<PiVectorRep>()) {
  PO_KIT_CONSTRUCTOR(PoMesh3DVec);
  PI_VECTOR_KIT_PARTS();
  PI_VECTOR_KIT_FIELDS();
  PO_KIT_CONSTRUCTED(PoMesh3DVec);
  PI_VECTOR_KIT_WATCH();
  beginWatching();
}

PoMesh3DVec::~PoMesh3DVec() = default;

void PoMesh3DVec::addVector(const SbVec3f& point, const SbVec3f& vector) { m_vectors->add(point, vector); }

std::size_t PoMesh3DVec::getMemorySize() const { return inherited::getMemorySize() + m_vectors->getMemorySize(); }

void PoMesh3DVec::addElementsAllCaches() {
  inherited::addElementsAllCaches();
  PoDataMappingElement::get(getState());
}

void PoMesh3DVec::preRebuild() {
  inherited::preRebuild();
  if (!isStateValid() || isCacheValid() || !getAllCache()) return;
  const int index = PoDataMappingElement::getClassStackIndex();
  if (getState()->isElementEnabled(index)) getAllCache()->addElement(getState()->getConstElement(index));
}

void PoMesh3DVec::addVectors(PbMesh3D& mesh) { mesh.mesh3DVec(this); }

const float* PoMesh3DVec::vectorScalars(const PbMesh3D& mesh) {
  return PiVectorKit::scalarsOf(mesh, vecsIndex.getValue(), valuesIndex.getValue());
}

float PoMesh3DVec::vectorSpacing(const PbMesh3D& mesh) const {
  return PiVectorRep::spacingOf(mesh.getBoundingBox(), PiVectorKit::numVectors(mesh, vecsIndex.getValue()),
                                density.getValue());
}

void PoMesh3DVec::rebuild() {
  preRebuild();
  PiRebuildScope scope;
  PbMesh3D* mesh = drawnMesh();
  const int set = vecsIndex.getValue();
  const SbVec3f* vectors = mesh ? mesh->getVecsSet(set) : nullptr;
  const bool isDrawn = vectors && bodyLengthFactor.getValue() > 0;
  PiVectorKit::build(*this, *m_vectors, *this, isDrawn, isDrawn ? vectorSpacing(*mesh) : 0,
                     isDrawn ? PiVectorKit::numVectors(*mesh, set) : 0, vectors, m_currentDataMapping,
                     isDrawn ? vectorScalars(*mesh) : nullptr, [&] { addVectors(*mesh); });
  postRebuild();
}
