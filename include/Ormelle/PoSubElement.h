#ifndef ORMELLE_POSUBELEMENT_H
#define ORMELLE_POSUBELEMENT_H

/// @file
/// The class data of a traversal element, see PoSubNode.h.
///
/// An element that an action has enabled once can't be taken away again before the toolkit's own end: the next action
/// would use it. So `exitClass` hides the type from `getClassTypeId` and keeps type and stack index, and `initClass`
/// shows them again; only the end of the toolkit itself lets them go.

#include <Inventor/elements/SoReplacedElement.h>
#include <Inventor/errors/SoDebugError.h>

#include <Ormelle/OrmelleExport.h>

#define PO_ELEMENT_HEADER(Class)                                    \
 public:                                                            \
  static void initClass();                                          \
  static void exitClass();                                          \
  static SoType getClassTypeId();                                   \
  static int getClassStackIndex();                                  \
  static void* createInstance();                                    \
                                                                    \
 protected:                                                         \
  Class();                                                          \
  ~Class() override;                                                \
                                                                    \
 private:                                                           \
  static SoType classTypeId;                                        \
  static int classStackIndex;                                       \
                                                                    \
 public:                                                            \
  void init(SoState* state) override

#endif
