#include <Ormelle/PoSFMesh.h>

#include <iterator>

#include "nodes/field/PiMeshClasses.h"
#include "nodes/mesh/PiMeshNodeClasses.h"

namespace {

struct FieldClass {
  void (*init)();
  void (*exit)();
};

#define PI_FIELD_CLASS(Name) {&PoSF##Name::initClass, &PoSF##Name::exitClass},
constexpr FieldClass kFields[] = {{&PoSFMesh::initClass, &PoSFMesh::exitClass}, PI_FOR_EACH_MESH_CLASS(PI_FIELD_CLASS)};
#undef PI_FIELD_CLASS

}  // namespace

SoType PoSFMesh::classTypeId;

void PoSFMesh::initClasses() {
  for (const FieldClass& field : kFields) field.init();
}

void PoSFMesh::exitClasses() {
  for (auto field = std::rbegin(kFields); field != std::rend(kFields); ++field) field->exit();
}

void PoSFMesh::initClass() {
  if (classTypeId == SoType::badType()) classTypeId = SoType::createType(SoSField::getClassTypeId(), "PoSFMesh");
}

void PoSFMesh::exitClass() {
  if (classTypeId == SoType::badType()) return;
  SoType::removeType(classTypeId.getName());
  classTypeId = SoType::badType();
}

SoType PoSFMesh::getClassTypeId() { return classTypeId; }

PoSFMesh::PoSFMesh() = default;
PoSFMesh::~PoSFMesh() = default;
