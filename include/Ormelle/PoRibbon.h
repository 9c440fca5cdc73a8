#ifndef ORMELLE_PORIBBON_H
#define ORMELLE_PORIBBON_H

#include <Inventor/fields/SoSFFloat.h>

#include <Ormelle/PoChart.h>

/// The curve of a one-dimensional mesh as a ribbon that stands on its plane, half on either side.
/// @code
/// separator->addChild(meshNode);
/// auto* ribbon = new PoRibbon;
/// ribbon->width = 0.2f;
/// separator->addChild(ribbon);
/// @endcode
///
/// Nodes that aren't finite or have no colour interrupt it.
///
/// Part behind those of PoBase: `ribbon`, SoGroup.
class ORMELLE_API PoRibbon : public PoChart {
  PO_KIT_HEADER(PoRibbon, PoChart);
  PO_KIT_CATALOG_ENTRY_HEADER(ribbon);

 public:
  /// How far it reaches along z, a length of the picture; 0.1 by default. One that isn't above 0 draws nothing.
  SoSFFloat width;

  PoRibbon();

  void rebuild() override;

 protected:
  ~PoRibbon() override;
};

#endif
