#include <Ormelle/PoMesh2DVec.h>

#include <Inventor/SbBox3f.h>
#include <Inventor/caches/SoCache.h>
#include <Inventor/misc/SoState.h>
#include <Ormelle/PbMesh2D.h>
#include <Ormelle/PoDataMappingElement.h>

#include "quillane/rep/PiMeshScratch.h"
#include "quillane/vector/PiVectorKit.h"

PO_KIT_SOURCE(PoMesh2DVec)

namespace {

float spacingOf(const PbMesh2D& mesh, int num, int density) {
  const SbBox2f flat = mesh.getBoundingBox();
  if (flat.isEmpty()) return 1;
  const SbBox3f box(flat.getMin()[0], flat.getMin()[1], 0, flat.getMax()[0], flat.getMax()[1], 0);
  return PiVectorRep::spacingOf(box, num, density);
}

}  // namespace

PoMesh2DVec::PoMesh2DVec() : m_vectors(std::make_unique<PiVectorRep>()) {
  PO_KIT_CONSTRUCTOR(PoMesh2DVec);
  PI_VECTOR_KIT_PARTS();
  PI_VECTOR_KIT_FIELDS();
  PO_KIT_CONSTRUCTED(PoMesh2DVec);
  PI_VECTOR_KIT_WATCH();
  beginWatching();
}

PoMesh2DVec::~PoMesh2DVec() = default;

void PoMesh2DVec::addVector(const SbVec3f& point, const SbVec3f& vector) { m_vectors->add(point, vector); }

std::size_t PoMesh2DVec::getMemorySize() const { return inherited::getMemorySize() + m_vectors->getMemorySize(); }

void PoMesh2DVec::addElementsAllCaches() {
  inherited::addElementsAllCaches();
  PoDataMappingElement::get(getState());
}

void PoMesh2DVec::preRebuild() {
  inherited::preRebuild();
  if (!isStateValid() || isCacheValid() || !getAllCache()) return;
  const int index = PoDataMappingElement::getClassStackIndex();
  if (getState()->isElementEnabled(index)) getAllCache()->addElement(getState()->getConstElement(index));
}

void PoMesh2DVec::rebuild() {
  preRebuild();
  PiRebuildScope scope;
  PbMesh2D* mesh = drawnMesh() ? m_currentMesh2D : nullptr;
  const int set = vecsIndex.getValue();
  const SbVec3f* vectors = mesh ? mesh->getVecsSet(set) : nullptr;
  const bool isDrawn = vectors && bodyLengthFactor.getValue() > 0;
  const int num = isDrawn ? PiVectorKit::numVectors(*mesh, set) : 0;
  const float spacing = isDrawn ? spacingOf(*mesh, num, density.getValue()) : 0;
  PiVectorKit::build(*this, *m_vectors, *this, isDrawn, spacing, num, vectors, m_currentDataMapping,
                     isDrawn ? PiVectorKit::scalarsOf(*mesh, set, valuesIndex.getValue()) : nullptr, [&] {
                       mesh->pushZCoord(heightsIndex(*mesh));
                       mesh->mesh2DVec(this);
                       mesh->popZCoord();
                     });
  postRebuild();
}
