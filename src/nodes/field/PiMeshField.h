#ifndef ORMELLE_PIMESHFIELD_H
#define ORMELLE_PIMESHFIELD_H

#include <Inventor/SoInput.h>
#include <Inventor/SoOutput.h>

#include <new>
#include <type_traits>

#include "nodes/field/PiMeshBinary.h"
#include "nodes/field/PiMeshCodec.h"
#include "nodes/field/PiMeshComparer.h"
#include "nodes/field/PiMeshDataPart.h"
#include "nodes/field/PiMeshText.h"

/// What the field classes do with their mesh.
template <class Mesh>
class PiMeshField {
 public:
  /// An empty mesh that copies the arrays it is given.
  static Mesh make() {
    if constexpr (std::is_constructible_v<Mesh, int>)
      return Mesh(1);
    else
      return Mesh();
  }

  /// Replaces `mesh` by one that is read from `in`, or leaves it as it is and returns false.
  static bool read(SoInput* in, Mesh& mesh) {
    try {
      Mesh fresh = make();
      if (!(in->isBinary() ? readForm(PiBinaryMeshReader(in), fresh) : readForm(PiTextMeshReader(in), fresh)))
        return false;
      fresh.enableConnection(mesh.isConnectionEnabled());
      mesh = fresh;
      return true;
    } catch (const std::bad_alloc&) {
      return false;
    }
  }

  static void write(SoOutput* out, const Mesh& mesh) {
    if (out->isBinary())
      writeForm(PiBinaryMeshWriter(out), mesh);
    else
      writeForm(PiTextMeshWriter(out), mesh);
  }

  /// Whether geometry and data sets are the same.
  static bool isSame(const Mesh& a, const Mesh& b) {
    if (&a == &b) return true;
    PiMeshComparer comparedA, comparedB;
    writeForm(comparedA, a);
    writeForm(comparedB, b);
    return comparedA == comparedB;
  }

 private:
  template <class Writer>
  static void writeForm(Writer&& out, const Mesh& mesh) {
    PiMeshGeometry geometry = PiMeshCodec<Mesh>::of(mesh);
    PiMeshCodec<Mesh>::pass(out, geometry);
    PiMeshDataPart::write(out, mesh);
  }

  template <class Reader>
  static bool readForm(Reader&& in, Mesh& mesh) {
    {
      PiMeshGeometry geometry;
      if (!PiMeshCodec<Mesh>::pass(in, geometry)) return false;
      PiMeshCodec<Mesh>::apply(geometry, mesh);
    }
    return PiMeshDataPart::read(in, mesh);
  }
};

/// Defines the members of a field class and of its registration.
#define PI_MESH_FIELD_SOURCE(Class, Mesh)                                                         \
  SoType Class::classTypeId;                                                                      \
  SoType Class::getClassTypeId() { return classTypeId; }                                          \
  SoType Class::getTypeId() const { return classTypeId; }                                         \
  void* Class::createInstance() { return new Class; }                                             \
  void Class::initClass() {                                                                       \
    if (classTypeId != SoType::badType()) return;                                                 \
    PoSFMesh::initClass();                                                                        \
    classTypeId = SoType::createType(PoSFMesh::getClassTypeId(), #Class, &Class::createInstance); \
  }                                                                                               \
  void Class::exitClass() {                                                                       \
    if (classTypeId == SoType::badType()) return;                                                 \
    SoType::removeType(classTypeId.getName());                                                    \
    classTypeId = SoType::badType();                                                              \
  }                                                                                               \
  Class::Class() : m_mesh(new Mesh(PiMeshField<Mesh>::make())) {}                                 \
  Class::~Class() { enableNotify(FALSE); }                                                        \
  void Class::copyFrom(const SoField& field) { *this = static_cast<const Class&>(field); }        \
  const Class& Class::operator=(const Class& field) {                                             \
    setValue(field.getValue());                                                                   \
    return *this;                                                                                 \
  }                                                                                               \
  SbBool Class::isSame(const SoField& field) const {                                              \
    return field.getTypeId() == getTypeId() &&                                                    \
           PiMeshField<Mesh>::isSame(getValue(), static_cast<const Class&>(field).getValue());    \
  }                                                                                               \
  SbBool Class::readValue(SoInput* in) { return PiMeshField<Mesh>::read(in, *m_mesh); }           \
  void Class::writeValue(SoOutput* out) const { PiMeshField<Mesh>::write(out, getValue()); }      \
  void Class::setValue(const Mesh& mesh) {                                                        \
    *m_mesh = mesh;                                                                               \
    valueChanged();                                                                               \
  }                                                                                               \
  const Mesh& Class::operator=(const Mesh& mesh) {                                                \
    setValue(mesh);                                                                               \
    return *m_mesh;                                                                               \
  }                                                                                               \
  const Mesh& Class::getValue() const {                                                           \
    evaluate();                                                                                   \
    return *m_mesh;                                                                               \
  }                                                                                               \
  Mesh* Class::getMesh() {                                                                        \
    evaluate();                                                                                   \
    setDefault(FALSE);                                                                            \
    return m_mesh.get();                                                                          \
  }

#endif
