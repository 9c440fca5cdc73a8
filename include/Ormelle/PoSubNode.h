#ifndef ORMELLE_POSUBNODE_H
#define ORMELLE_POSUBNODE_H

/// @file
/// The members and the class data that every attribute node needs, in the manner of the toolkit's own sub-class macros.
///
/// The toolkit's macros queue a clean-up that runs only in `SoDB::finish`; the classes of this library can also be
/// removed and registered again before that, so they bring `exitClass` and a second `initClass` of their own.
///
/// A node class writes `PO_NODE_HEADER(Class, Parent)` first in its class body and `PO_NODE_SOURCE(Class)` once in its
/// source file. Its constructor reads
/// @code
/// PoSwitch::PoSwitch() {
///   PO_NODE_CONSTRUCTOR(PoSwitch);
///   PO_NODE_ADD_FIELD(on, (TRUE));
///   PO_NODE_CONSTRUCTED(PoSwitch);
/// }
/// @endcode
/// An abstract class uses the `_ABSTRACT_` forms of the header and the source macro.

#include <Inventor/SoType.h>
#include <Inventor/fields/SoFieldData.h>
#include <Inventor/nodes/SoNode.h>
#include <Inventor/threads/SbThreadAutoLock.h>
#include <Inventor/threads/SbThreadMutex.h>

#include <Ormelle/OrmelleExport.h>

#define PO_NODE_ABSTRACT_HEADER(Class, Parent)                           \
 public:                                                                 \
  /** Registers the class, and its parent where needed; a second call */ \
  /** does nothing. Called by the library's start-up.                 */ \
  static void initClass();                                               \
  /** Removes the class from the type system and frees its data.      */ \
  static void exitClass();                                               \
  static SoType getClassTypeId();                                        \
  SoType getTypeId() const override;                                     \
                                                                         \
 protected:                                                              \
  static const SoFieldData** getFieldDataPtr();                          \
  const SoFieldData* getFieldData() const override;                      \
                                                                         \
 private:                                                                \
  typedef Parent inherited;                                              \
  static SoType classTypeId;                                             \
  static SoFieldData* fieldData;                                         \
  static const SoFieldData** parentFieldData;                            \
  static int firstInstance;                                              \
  static SbThreadMutex classMutex

#define PO_NODE_HEADER(Class, Parent)     \
  PO_NODE_ABSTRACT_HEADER(Class, Parent); \
                                          \
 public:                                  \
  static void* createInstance()

#define PO_PRIVATE_NODE_STATICS(Class)                                                                 \
  SoType Class::classTypeId;                                                                           \
  SoFieldData* Class::fieldData = nullptr;                                                             \
  const SoFieldData** Class::parentFieldData = nullptr;                                                \
  int Class::firstInstance = 1;                                                                        \
  SbThreadMutex Class::classMutex;                                                                     \
  SoType Class::getClassTypeId() { return classTypeId; }                                               \
  SoType Class::getTypeId() const { return classTypeId; }                                              \
  const SoFieldData** Class::getFieldDataPtr() { return const_cast<const SoFieldData**>(&fieldData); } \
  const SoFieldData* Class::getFieldData() const { return fieldData; }

// Registration shared by nodes and kits; the class mutex is held.
#define PO_PRIVATE_INIT_CLASS(Class, Create)                                                   \
  if (inherited::getClassTypeId() == SoType::badType()) inherited::initClass();                \
  classTypeId = SoType::createType(inherited::getClassTypeId(), #Class, Create,                \
                                   static_cast<uint16_t>(SoNode::getNextActionMethodIndex())); \
  if (!parentFieldData) SoNode::incNextActionMethodIndex();                                    \
  parentFieldData = inherited::getFieldDataPtr()

#define PO_PRIVATE_EXIT_CLASS(Class)         \
  SoType::removeType(classTypeId.getName()); \
  classTypeId = SoType::badType();           \
  delete fieldData;                          \
  fieldData = nullptr;                       \
  parentFieldData = nullptr;                 \
  firstInstance = 1

#define PO_PRIVATE_NODE_REGISTRATION(Class, Create) \
  PO_PRIVATE_NODE_STATICS(Class)                    \
  void Class::initClass() {                         \
    SbThreadAutoLock lock(&classMutex);             \
    if (classTypeId != SoType::badType()) return;   \
    PO_PRIVATE_INIT_CLASS(Class, Create);           \
  }                                                 \
  void Class::exitClass() {                         \
    SbThreadAutoLock lock(&classMutex);             \
    if (classTypeId == SoType::badType()) return;   \
    PO_PRIVATE_EXIT_CLASS(Class);                   \
  }

#define PO_NODE_SOURCE(Class)                                 \
  PO_PRIVATE_NODE_REGISTRATION(Class, &Class::createInstance) \
  void* Class::createInstance() { return new Class; }

#define PO_NODE_ABSTRACT_SOURCE(Class) PO_PRIVATE_NODE_REGISTRATION(Class, nullptr)

/// Opens the constructor of a node class. The class mutex is held to the end of the constructor.
#define PO_NODE_CONSTRUCTOR(Class)                                                           \
  SbThreadAutoLock poConstructorLock(&classMutex);                                           \
  if (!fieldData) fieldData = new SoFieldData(parentFieldData ? *parentFieldData : nullptr); \
  this->isBuiltIn = FALSE

/// Gives a field its default, in parentheses, and makes it known to the class.
#define PO_NODE_ADD_FIELD(field, defaultValue)                          \
  do {                                                                  \
    this->field.setValue defaultValue;                                  \
    this->field.setContainer(this);                                     \
    if (firstInstance) fieldData->addField(this, #field, &this->field); \
  } while (0)

/// The same for a multiple-value field, which starts empty.
#define PO_NODE_ADD_EMPTY_MFIELD(field)                                 \
  do {                                                                  \
    this->field.setNum(0);                                              \
    this->field.setContainer(this);                                     \
    this->field.setDefault(TRUE);                                       \
    if (firstInstance) fieldData->addField(this, #field, &this->field); \
  } while (0)

/// Names one value of an enumeration, for the fields of that enumeration.
#define PO_NODE_DEFINE_ENUM_VALUE(EnumType, value)                                          \
  do {                                                                                      \
    if (firstInstance) fieldData->addEnumValue(#EnumType, #value, static_cast<int>(value)); \
  } while (0)

/// Binds an enumeration field (`SoSFEnum`, `SoMFEnum`, `SoSFBitMask`) to its enumeration.
#define PO_NODE_SET_ENUM_TYPE(field, EnumType)                   \
  do {                                                           \
    int poNum;                                                   \
    const int* poValues;                                         \
    const SbName* poNames;                                       \
    fieldData->getEnumData(#EnumType, poNum, poValues, poNames); \
    this->field.setEnums(poNum, poValues, poNames);              \
  } while (0)

/// Closes the part of the constructor that fills class data.
#define PO_NODE_CONSTRUCTED(Class) firstInstance = 0

#endif
