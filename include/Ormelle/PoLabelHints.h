#ifndef ORMELLE_POLABELHINTS_H
#define ORMELLE_POLABELHINTS_H

#include <Inventor/fields/SoSFBool.h>
#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFString.h>

#include <Ormelle/PoNode.h>

/// Says how the labels behind it are written; puts it in PoLabelHintsElement.
///
/// An ignored `addString` leaves the string of an earlier node in force.
/// @code
/// auto* hints = new PoLabelHints;
/// hints->justification = PoLabelHints::LEFT;
/// hints->addString = " mm";
/// separator->addChild(hints);
/// separator->addChild(labels);
/// @endcode
class ORMELLE_API PoLabelHints : public PoNode {
  PO_NODE_HEADER(PoLabelHints, PoNode);

 public:
  /// Where a text runs to; `PATH_DEPEND` leaves it to the kit.
  enum LabelPath { PATH_RIGHT, PATH_LEFT, PATH_UP, PATH_DOWN, PATH_DEPEND };
  /// Which end of a text stands at its place; `DEPEND` leaves it to the kit.
  enum Justification { LEFT, CENTER, RIGHT, DEPEND };

  SoSFEnum labelPath;           ///< a LabelPath, `PATH_DEPEND` by default
  SoSFEnum justification;       ///< a Justification, `DEPEND` by default
  SoSFString addString;         ///< text behind each label, "" by default
  SoSFBool isLabelLineVisible;  ///< whether a line leads from each label to what it names, FALSE by default

  PoLabelHints();

  void doAction(SoAction* action) override;

 protected:
  ~PoLabelHints() override;
};

#endif
