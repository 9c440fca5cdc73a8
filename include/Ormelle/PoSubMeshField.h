#ifndef ORMELLE_POSUBMESHFIELD_H
#define ORMELLE_POSUBMESHFIELD_H

/// @file
/// The members that the toolkit wants of every field class, for the mesh fields.
///
/// A mesh field writes `PO_MESH_FIELD_HEADER(Class)` first in its class body. Like the node macros, these members allow
/// that a class is taken away and registered again before the toolkit ends.

#include <Inventor/SoType.h>
#include <Inventor/fields/SoField.h>
#include <Ormelle/OrmelleExport.h>

#define PO_MESH_FIELD_HEADER(Class)                                                                     \
 public:                                                                                                \
  Class();                                                                                              \
  ~Class() override;                                                                                    \
  /** Registers the class; a second call does nothing. Called by the library's start-up. */             \
  static void initClass();                                                                              \
  /** Removes the class from the type system. */                                                        \
  static void exitClass();                                                                              \
  static void* createInstance();                                                                        \
  static SoType getClassTypeId();                                                                       \
  SoType getTypeId() const override;                                                                    \
  /** Copies the mesh of a field of this class; see setValue(). */                                      \
  void copyFrom(const SoField& field) override;                                                         \
  const Class& operator=(const Class& field);                                                           \
  /** Whether `field` is of this class and its mesh has the same geometry and data sets, bit by bit. */ \
  SbBool isSame(const SoField& field) const override;                                                   \
  SbBool readValue(SoInput* in) override;                                                               \
  void writeValue(SoOutput* out) const override;                                                        \
                                                                                                        \
 private:                                                                                               \
  static SoType classTypeId

#endif
