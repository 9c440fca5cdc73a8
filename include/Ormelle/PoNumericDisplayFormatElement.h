#ifndef ORMELLE_PONUMERICDISPLAYFORMATELEMENT_H
#define ORMELLE_PONUMERICDISPLAYFORMATELEMENT_H

#include <Ormelle/PoSubElement.h>

class PbNumericDisplayFormat;

/// How numbers are written, set by PoNumericDisplayFormat.
class ORMELLE_API PoNumericDisplayFormatElement : public SoReplacedElement {
  PO_POINTER_ELEMENT_HEADER(PoNumericDisplayFormatElement, const PbNumericDisplayFormat);
};

#endif
