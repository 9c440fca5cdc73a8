#ifndef ORMELLE_POSUBELEMENT_H
#define ORMELLE_POSUBELEMENT_H

/// @file
/// The class data of a traversal element, see PoSubNode.h.
///
/// A traversal element carries what an attribute node puts on the traversal state to the kits behind it. Each one has
/// - `set(SoState*, SoNode*, ...)`, called by the attribute node from its `doAction`; it puts nothing on a state that
///   knows no such element;
/// - `get(SoState*)`, which answers what is in force, or the default of the element where no node set anything. It
///   makes every open cache of the traversal depend on that answer, so a kit calls it at each traversal.
///
/// The scope is that of the toolkit's own attributes: from the node to the end of the separator around it, the later
/// node of two being in force. What is carried belongs to the node, or to the application, and not to the element: it
/// may be kept no longer than the traversal lasts. Two elements match when the same node, unchanged, set them.
///
/// An element that an action has enabled once can't be taken away again before the toolkit's own end: the next action
/// would use it. So `exitClass` hides the type from `getClassTypeId` and keeps type and stack index, and `initClass`
/// shows them again; only the end of the toolkit itself lets them go.

#include <Inventor/elements/SoReplacedElement.h>

#include <Ormelle/OrmelleExport.h>

/// First in the body of an element class.
#define PO_ELEMENT_HEADER(Class)                                        \
 public:                                                                \
  /** Registers the class and enables it for every action, a second  */ \
  /** call does nothing. Called by the library's start-up.           */ \
  static void initClass();                                              \
  /** Hides the class until the next initClass().                    */ \
  static void exitClass();                                              \
  /** The bad type while the class is hidden.                        */ \
  static SoType getClassTypeId();                                       \
  /** Stays what it is while the class is hidden.                    */ \
  static int getClassStackIndex();                                      \
  static void* createInstance();                                        \
  /** Sets the default; called by the toolkit.                       */ \
  void init(SoState* state) override;                                   \
                                                                        \
 protected:                                                             \
  Class();                                                              \
  ~Class() override;                                                    \
                                                                        \
 private:                                                               \
  typedef SoReplacedElement inherited;                                  \
  static SoType classTypeId;                                            \
  static int classStackIndex;                                           \
  static int isClassShown

/// The whole body of an element that carries one pointer, whose default is null: `Carried` is the type pointed at, with
/// `const` where the element only lends it for reading. It is enough that the type is declared.
#define PO_POINTER_ELEMENT_HEADER(Class, Carried)                       \
  PO_ELEMENT_HEADER(Class);                                             \
                                                                        \
 public:                                                                \
  /** Puts `carried` in force behind `node`. Not owned.              */ \
  static void set(SoState* state, SoNode* node, Carried* carried);      \
  /** What is in force, null if no node set anything.                */ \
  static Carried* get(SoState* state);                                  \
                                                                        \
 private:                                                               \
  Carried* m_carried = nullptr

#endif
