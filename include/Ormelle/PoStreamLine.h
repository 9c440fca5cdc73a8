#ifndef ORMELLE_POSTREAMLINE_H
#define ORMELLE_POSTREAMLINE_H

#include <Inventor/fields/SoSFFloat.h>

#include <Ormelle/PoBaseStreamLine.h>

/// Draws the paths of PoBaseStreamLine as lines.
///
/// With a data mapping a line has the colour of the value at each of its points, mixed in between, and a gap where the
/// mapping has no colour; else it has its entry of `colors`, or without those the material of the traversal state.
///
/// @code
/// auto* lines = new PoStreamLine;
/// lines->setMesh(&mesh);
/// lines->vecsIndex = 0;
/// lines->startPoints.setValues(0, num, points);
/// separator->addChild(lines);
/// @endcode
///
/// Catalog, behind the parts of PoBase:
/// @code
/// alternateRep
///   groupStreamLine   SoGroup   draw style, coordinates, material and binding, one SoLineSet
/// @endcode
class ORMELLE_API PoStreamLine : public PoBaseStreamLine {
  PO_KIT_HEADER(PoStreamLine, PoBaseStreamLine);
  PO_KIT_CATALOG_ENTRY_HEADER(groupStreamLine);

 public:
  /// In pixels, 2 by default; the toolkit's own where it isn't above 0.
  SoSFFloat lineWidth;

  PoStreamLine();

  void rebuild() override;

 protected:
  ~PoStreamLine() override;
};

#endif
