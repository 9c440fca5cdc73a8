#ifndef ORMELLE_POSUBKIT_H
#define ORMELLE_POSUBKIT_H

/// @file
/// What PoSubNode.h is for attribute nodes, for representation kits: a catalog of parts comes with the class data.
///
/// A kit class writes `PO_KIT_HEADER(Class, Parent)` first in its body, declares each part of its own with
/// `PO_KIT_CATALOG_ENTRY_HEADER(name)`, and writes `PO_KIT_SOURCE(Class)` once in its source file. Its constructor
/// reads
/// @code
/// PoSpiral::PoSpiral() {
///   PO_KIT_CONSTRUCTOR(PoSpiral);
///   PO_KIT_ADD_CATALOG_ENTRY(spiral, SoGroup, alternateRep);
///   PO_KIT_ADD_FIELD(turns, (3));
///   PO_KIT_CONSTRUCTED(PoSpiral);
/// }
/// @endcode
/// Every class of the chain, abstract ones too, opens and closes its constructor this way.

#include <Inventor/fields/SoSFNode.h>
#include <Inventor/nodekits/SoNodekitCatalog.h>

#include <Ormelle/PoSubNode.h>

#define PO_PRIVATE_KIT_HEADER(Class)                           \
 public:                                                       \
  static const SoNodekitCatalog* getClassNodekitCatalog();     \
  const SoNodekitCatalog* getNodekitCatalog() const override;  \
                                                               \
 protected:                                                    \
  static const SoNodekitCatalog** getClassNodekitCatalogPtr(); \
                                                               \
 private:                                                      \
  static SoNodekitCatalog* nodekitCatalog;                     \
  static const SoNodekitCatalog** parentNodekitCatalogPtr

#define PO_KIT_ABSTRACT_HEADER(Class, Parent) \
  PO_NODE_ABSTRACT_HEADER(Class, Parent);     \
  PO_PRIVATE_KIT_HEADER(Class)

#define PO_KIT_HEADER(Class, Parent) \
  PO_NODE_HEADER(Class, Parent);     \
  PO_PRIVATE_KIT_HEADER(Class)

/// Declares a part; goes behind the header macro.
#define PO_KIT_CATALOG_ENTRY_HEADER(part) \
 protected:                               \
  SoSFNode part

#define PO_PRIVATE_KIT_REGISTRATION(Class, Create)                                    \
  PO_PRIVATE_NODE_STATICS(Class)                                                      \
  SoNodekitCatalog* Class::nodekitCatalog = nullptr;                                  \
  const SoNodekitCatalog** Class::parentNodekitCatalogPtr = nullptr;                  \
  const SoNodekitCatalog* Class::getClassNodekitCatalog() { return nodekitCatalog; }  \
  const SoNodekitCatalog* Class::getNodekitCatalog() const { return nodekitCatalog; } \
  const SoNodekitCatalog** Class::getClassNodekitCatalogPtr() {                       \
    return const_cast<const SoNodekitCatalog**>(&nodekitCatalog);                     \
  }                                                                                   \
  void Class::initClass() {                                                           \
    SbThreadAutoLock lock(&classMutex);                                               \
    if (classTypeId != SoType::badType()) return;                                     \
    PO_PRIVATE_INIT_CLASS(Class, Create);                                             \
    parentNodekitCatalogPtr = inherited::getClassNodekitCatalogPtr();                 \
  }                                                                                   \
  void Class::exitClass() {                                                           \
    SbThreadAutoLock lock(&classMutex);                                               \
    if (classTypeId == SoType::badType()) return;                                     \
    PO_PRIVATE_EXIT_CLASS(Class);                                                     \
    delete nodekitCatalog;                                                            \
    nodekitCatalog = nullptr;                                                         \
    parentNodekitCatalogPtr = nullptr;                                                \
  }

#define PO_KIT_SOURCE(Class)                                 \
  PO_PRIVATE_KIT_REGISTRATION(Class, &Class::createInstance) \
  void* Class::createInstance() { return new Class; }

#define PO_KIT_ABSTRACT_SOURCE(Class) PO_PRIVATE_KIT_REGISTRATION(Class, nullptr)

/// Opens the constructor of a kit class. The class mutex is held to the end of the constructor.
#define PO_KIT_CONSTRUCTOR(Class) \
  PO_NODE_CONSTRUCTOR(Class);     \
  if (!nodekitCatalog) nodekitCatalog = (*parentNodekitCatalogPtr)->clone(classTypeId)

/// Adds a part below `parent` (an identifier, or `this`). It is null by default, public, not a list, and stands
/// behind the parts added before it.
#define PO_KIT_ADD_CATALOG_ENTRY(part, PartClass, parent)                                                             \
  do {                                                                                                                \
    if (firstInstance &&                                                                                              \
        !nodekitCatalog->addEntry(#part, PartClass::getClassTypeId(), PartClass::getClassTypeId(), TRUE, #parent, "", \
                                  FALSE, SoType::badType(), SoType::badType(), TRUE))                                 \
      this->catalogError();                                                                                           \
    PO_NODE_ADD_FIELD(part, (nullptr));                                                                               \
  } while (0)

#define PO_KIT_ADD_FIELD(field, defaultValue) PO_NODE_ADD_FIELD(field, defaultValue)
#define PO_KIT_ADD_EMPTY_MFIELD(field) PO_NODE_ADD_EMPTY_MFIELD(field)
#define PO_KIT_DEFINE_ENUM_VALUE(EnumType, value) PO_NODE_DEFINE_ENUM_VALUE(EnumType, value)
#define PO_KIT_SET_ENUM_TYPE(field, EnumType) PO_NODE_SET_ENUM_TYPE(field, EnumType)

/// Closes the class data and makes the part list and the default parts of this instance.
#define PO_KIT_CONSTRUCTED(Class) \
  firstInstance = 0;              \
  this->createFieldList();        \
  this->createDefaultParts()

#endif
