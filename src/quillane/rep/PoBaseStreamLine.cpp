#include <Ormelle/PoBaseStreamLine.h>

#include <algorithm>

#include <Ormelle/PbCell.h>
#include <Ormelle/PbDataMapping.h>
#include <Ormelle/PbMesh.h>
#include <Ormelle/PoCellFilter.h>
#include <Ormelle/PoCellFilterElement.h>
#include <Ormelle/PoDataMappingElement.h>

#include "quillane/rep/PiStreamStore.h"

PO_KIT_ABSTRACT_SOURCE(PoBaseStreamLine)

namespace {

/// What is set to 0 or less, or to no number, doesn't limit.
float limitOf(const SoSFFloat& field) { return field.getValue() > 0 ? field.getValue() : 3.4028235e38F; }

PiStreamLimits limitsOf(const PoBaseStreamLine& kit) {
  PiStreamLimits limits;
  limits.time = limitOf(kit.maxLifetime);
  limits.length = limitOf(kit.maxLength);
  limits.minSpeed = kit.minSpeed.getValue() > 0 ? kit.minSpeed.getValue() : 0;
  limits.stepFactor = kit.integrationStepLengthFactor.getValue() > 0 ? kit.integrationStepLengthFactor.getValue() : 0;
  if (kit.integrationMaxStepNumber.getValue() > 0) limits.numSteps = kit.integrationMaxStepNumber.getValue();
  limits.isBackward = kit.integrationDirection.getValue() == PoBaseStreamLine::BACKWARD;
  return limits;
}

PiStreamField fieldOf(const PoBaseStreamLine& kit, const PbMesh* mesh, const PbDataMapping* mapping) {
  PiStreamField field;
  const int vecs = kit.vecsIndex.getValue(), values = kit.valuesIndex.getValue();
  if (!mesh || vecs < 0) return field;
  field.mesh = mesh;
  field.vectors = mesh->getVecsSet(vecs);
  field.areVectorsPerCell = mesh->getVecsBinding(vecs) == PbMesh::PER_CELL;
  if (!mapping || values < 0) return field;
  field.areValuesPerCell = mesh->getValuesBinding(values) == PbMesh::PER_CELL;
  // None at all are stored where a mesh class of the application computes its values; it knows their number.
  const int num = mesh->getNumValues(values);
  if (num < 1 || num >= (field.areValuesPerCell ? mesh->getNumCells() : mesh->getNumNodes()))
    field.values = mesh->getValuesSet(values);
  return field;
}

std::function<bool(int)> acceptedBy(const PoCellFilter* filter, const float* values, int numValues) {
  if (!filter) return {};
  return [filter, values, numValues](int cell) {
    return filter->acceptCell(cell, values && cell < numValues ? values[cell] : 0.0F) != 0;
  };
}

/// By the set of values that filters are asked with.
std::function<bool(int)> acceptedBy(const PoCellFilter* filter, const PbMesh& mesh, int valuesIndex) {
  const float* values = valuesIndex < 0 ? nullptr : mesh.getValuesSet(valuesIndex);
  return acceptedBy(filter, values, values ? mesh.getNumValues(valuesIndex) : 0);
}

/// Makes the path of a track, and lets the kit keep what it wants of each point.
void storePath(PoBaseStreamLine& kit, const PbMesh* mesh, const PiStreamTrack& track, PiStreamPath& path) {
  path.clear();
  const PbCell* cell = nullptr;
  int current = -1;
  for (const PiStreamStep& step : track.steps) {
    path.addPoint(step.point, step.value);
    if (step.cell != current) {
      current = step.cell;
      cell = mesh->getCell(current);
    }
    SbVec3f pcoord = step.pcoord, velocity = step.velocity;
    kit.saveNorm(path, cell, pcoord, velocity);
    kit.saveTime(path, step.time);
    kit.saveSpeed(path, velocity);
  }
  path.setEndsAtSkin(track.endsAtSkin);
}

}  // namespace

PoBaseStreamLine::PoBaseStreamLine() : m_streams(std::make_unique<PiStreamStore>()) {
  PO_KIT_CONSTRUCTOR(PoBaseStreamLine);
  PO_KIT_DEFINE_ENUM_VALUE(IntegrationDirection, FORWARD);
  PO_KIT_DEFINE_ENUM_VALUE(IntegrationDirection, BACKWARD);
  PO_KIT_ADD_EMPTY_MFIELD(startPoints);
  PO_KIT_ADD_FIELD(maxLifetime, (0.0F));
  PO_KIT_ADD_FIELD(maxLength, (0.0F));
  PO_KIT_ADD_FIELD(minSpeed, (0.0F));
  PO_KIT_ADD_FIELD(integrationStepLengthFactor, (0.3F));
  PO_KIT_ADD_FIELD(integrationMaxStepNumber, (0));
  PO_KIT_ADD_FIELD(integrationDirection, (FORWARD));
  PO_KIT_ADD_EMPTY_MFIELD(colors);
  PO_KIT_SET_ENUM_TYPE(integrationDirection, IntegrationDirection);
  PO_KIT_CONSTRUCTED(PoBaseStreamLine);
  for (SoField* field :
       std::initializer_list<SoField*>{&startPoints, &maxLifetime, &maxLength, &minSpeed, &integrationStepLengthFactor,
                                       &integrationMaxStepNumber, &integrationDirection, &colors})
    watchField(*field);
}

PoBaseStreamLine::~PoBaseStreamLine() = default;

void PoBaseStreamLine::addElementsAllCaches() {
  inherited::addElementsAllCaches();
  PoDataMappingElement::get(getState());
  PoCellFilterElement::get(getState());
}

void PoBaseStreamLine::preRebuild() {
  inherited::preRebuild();
  // A mapping colours whatever the colouring type.
  addInAllCache(PoDataMappingElement::getClassStackIndex());
  addCellFilterInCache();
}

void PoBaseStreamLine::saveNorm(PiStreamPath&, const PbCell*, SbVec3f&, SbVec3f&) {}
void PoBaseStreamLine::saveTime(PiStreamPath&, float) {}
void PoBaseStreamLine::saveSpeed(PiStreamPath&, SbVec3f&) {}

unsigned int PoBaseStreamLine::getPathsId() const { return m_streams->pathsId; }

std::size_t PoBaseStreamLine::getMemorySize() const {
  std::size_t size = inherited::getMemorySize();
  for (const PiStreamPath& path : m_streams->paths) size += path.capacityInBytes();
  for (const PiStreamTrack& track : m_streams->tracks) size += track.steps.capacity() * sizeof(PiStreamStep);
  return size;
}

void PoBaseStreamLine::integrateStreamLine(const SbVec3f& start, PiStreamPath& path, float& length, float& time) {
  path.clear();
  length = time = 0;
  const PbMesh* mesh = getMesh();
  PiStreamField field = fieldOf(*this, mesh, getDataMapping());
  if (!field.mesh) return;
  field.accepts = acceptedBy(getCellFilter(), *mesh, valuesIndexForCellFilter.getValue());
  std::vector<PiStreamTrack> tracks;
  PiStreamIntegrator::integrate(field, limitsOf(*this), 1, &start, tracks);
  storePath(*this, mesh, tracks[0], path);
  length = tracks[0].length;
  time = tracks[0].time;
}

void PoBaseStreamLine::integrateStreamLine(const PbCell* cell, const SbVec3f& pcoord, const SbVec3f& start,
                                           PiStreamPath& path, float& length, float& time, const PoCellFilter* filter,
                                           const float* filter_values) {
  path.clear();
  length = time = 0;
  const PbMesh* mesh = getMesh();
  PiStreamField field = fieldOf(*this, mesh, getDataMapping());
  if (!field.mesh) return;
  if (!cell) {
    path.setEndsAtSkin(1);
    return;
  }
  field.accepts = acceptedBy(filter, filter_values, mesh->getNumCells());
  PiStreamTrack track;
  PiStreamIntegrator::integrateFrom(field, limitsOf(*this), cell->getIndex(), pcoord, start, track);
  storePath(*this, mesh, track, path);
  length = track.length;
  time = track.time;
}

const std::vector<PiStreamPath>& PoBaseStreamLine::integratePaths() {
  return integratePaths(startPoints.getNum(), startPoints.getValues(0));
}

const std::vector<PiStreamPath>& PoBaseStreamLine::integratePaths(int numStarts, const SbVec3f* starts) {
  const PbMesh* mesh = m_currentMesh;
  PiStreamField field = fieldOf(*this, mesh, m_currentDataMapping);
  const PoCellFilter* filter = getCellFilter();
  const int filterValues = valuesIndexForCellFilter.getValue();

  PiStreamStore::Key key;
  key.limits = limitsOf(*this);
  key.starts.assign(starts, starts + std::max(0, numStarts));
  if (field.mesh) {
    key.mesh = mesh;
    key.geometryId = mesh->getGeometryId();
    key.topologyId = mesh->getTopologyId();
    key.vecsIndex = vecsIndex.getValue();
    key.vecsId = mesh->getVecDataSetId(key.vecsIndex);
    key.hasValues = field.values != nullptr;
    if (field.values) key.valuesId = mesh->getFltDataSetId(valuesIndex.getValue());
    key.filter = filter;
    if (filter) {
      key.filterId = static_cast<unsigned int>(filter->getNodeId());
      if (filterValues >= 0) key.filterValuesId = mesh->getFltDataSetId(filterValues);
      field.accepts = acceptedBy(filter, *mesh, filterValues);
    }
  }
  if (m_streams->pathsId > 0 && key == m_streams->key) return m_streams->paths;

  m_streams->key = std::move(key);
  ++m_streams->pathsId;
  PiStreamIntegrator::integrate(field, m_streams->key.limits, numStarts, starts, m_streams->tracks);
  m_streams->paths.resize(m_streams->tracks.size());
  for (std::size_t i = 0; i < m_streams->tracks.size(); ++i)
    storePath(*this, mesh, m_streams->tracks[i], m_streams->paths[i]);
  return m_streams->paths;
}
