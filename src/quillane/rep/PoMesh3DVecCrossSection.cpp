#include <Ormelle/PoMesh3DVecCrossSection.h>

#include <cmath>
#include <limits>

#include <Ormelle/PbCartesianGrid3D.h>
#include <Ormelle/PbIndexedMesh3D.h>
#include <Ormelle/PbParalCartesianGrid3D.h>
#include <Ormelle/PbRegularCartesianGrid3D.h>
#include <Ormelle/PoCellFilterElement.h>

#include "quillane/mesh/PiNodeValues.h"
#include "quillane/rep/PiSectionValues.h"
#include "quillane/surface/PiMeshSection.h"

PO_KIT_SOURCE(PoMesh3DVecCrossSection)

PoMesh3DVecCrossSection::PoMesh3DVecCrossSection() : m_section(std::make_unique<PiMeshSection>()) {
  PO_KIT_CONSTRUCTOR(PoMesh3DVecCrossSection);
  PO_KIT_DEFINE_ENUM_VALUE(ProjectionType, NO_PROJECTION);
  PO_KIT_DEFINE_ENUM_VALUE(ProjectionType, PROJECTION_ON_PLANE);
  PO_KIT_DEFINE_ENUM_VALUE(ProjectionType, PROJECTION_ON_NORMAL);
  PO_KIT_ADD_FIELD(plane, (SbPlane(SbVec3f(1, 0, 0), 0)));
  PO_KIT_ADD_FIELD(projectionType, (NO_PROJECTION));
  PO_KIT_SET_ENUM_TYPE(projectionType, ProjectionType);
  PO_KIT_CONSTRUCTED(PoMesh3DVecCrossSection);
  watchField(plane);
  watchField(projectionType);
  beginWatching();
}

PoMesh3DVecCrossSection::~PoMesh3DVecCrossSection() = default;

void PoMesh3DVecCrossSection::preRebuild() {
  inherited::preRebuild();
  addCellFilterInCache();
}

void PoMesh3DVecCrossSection::addElementsAllCaches() {
  inherited::addElementsAllCaches();
  PoCellFilterElement::get(getState());
}

const float* PoMesh3DVecCrossSection::vectorScalars(const PbMesh3D& mesh) {
  m_points.clear();
  m_sampled.clear();
  m_values.clear();
  const SbVec3f* vectors = mesh.getVecsSet(vecsIndex.getValue());
  if (mesh.getVecsBinding(vecsIndex.getValue()) != PbMesh::PER_CELL && vectors &&
      std::isfinite(plane.getValue().getDistanceFromOrigin()))
    sample(mesh, vectors, findNodeValues(mesh, valuesIndex.getValue()));
  return m_values.empty() ? nullptr : m_values.data();
}

void PoMesh3DVecCrossSection::addVectors(PbMesh3D&) {
  const SbVec3f normal = plane.getValue().getNormal();
  const int projection = projectionType.getValue();
  for (std::size_t i = 0; i < m_points.size(); ++i) {
    const SbVec3f across = normal * m_sampled[i].dot(normal);
    addVector(m_points[i], projection == PROJECTION_ON_PLANE    ? m_sampled[i] - across
                           : projection == PROJECTION_ON_NORMAL ? across
                                                                : m_sampled[i]);
  }
}

namespace {

void cutMesh(PiMeshSection& section, const PbMesh3D& mesh, const PiSectionRequest& request) {
  if (const auto* regular = dynamic_cast<const PbRegularCartesianGrid3D*>(&mesh))
    section.cut(*regular, request);
  else if (const auto* parallel = dynamic_cast<const PbParalCartesianGrid3D*>(&mesh))
    section.cut(*parallel, request);
  else if (const auto* curvilinear = dynamic_cast<const PbCartesianGrid3D*>(&mesh))
    section.cut(*curvilinear, request);
  else if (const auto* indexed = dynamic_cast<const PbIndexedMesh3D*>(&mesh))
    section.cut(*indexed, request);
  else
    section.section.clear();
}

}  // namespace

void PoMesh3DVecCrossSection::sample(const PbMesh3D& mesh, const SbVec3f* vectors, const float* values) {
  const auto num = static_cast<std::size_t>(mesh.getNumNodes());
  PiSectionRequest request = sectionRequest(PiSectionPlane(plane.getValue()), nullptr, mesh, getCellFilter(),
                                            valuesIndexForCellFilter.getValue());

  // A section carries one number a point: it is made once for each component. A vector that isn't finite keeps its
  // cells out of all of them, so that their points are the same.
  std::vector<float> numbers(num);
  const int numPasses = values ? 4 : 3;
  for (int pass = 0; pass < numPasses; ++pass) {
    for (std::size_t i = 0; i < num; ++i) {
      const SbVec3f& v = vectors[i];
      const bool isFinite =
          std::isfinite(v[0]) && std::isfinite(v[1]) && std::isfinite(v[2]) && (!values || std::isfinite(values[i]));
      numbers[i] = !isFinite ? std::numeric_limits<float>::quiet_NaN() : pass < 3 ? v[pass] : values[i];
    }
    request.values = numbers.data();
    cutMesh(*m_section, mesh, request);
    const PiSection& section = m_section->section;
    if (pass == 0) {
      m_points.assign(section.points.data(), section.points.data() + section.points.size());
      m_sampled.resize(m_points.size());
      if (values) m_values.resize(m_points.size());
    }
    for (std::size_t i = 0; i < m_points.size(); ++i) {
      if (pass < 3)
        m_sampled[i][pass] = section.values[i];
      else
        m_values[i] = section.values[i];
    }
  }
}
