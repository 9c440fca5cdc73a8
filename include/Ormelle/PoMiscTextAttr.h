#ifndef ORMELLE_POMISCTEXTATTR_H
#define ORMELLE_POMISCTEXTATTR_H

#include <memory>

#include <Inventor/fields/SoSFBool.h>
#include <Inventor/fields/SoSFShort.h>
#include <Inventor/fields/SoSFString.h>

#include <Ormelle/PbMiscTextAttr.h>
#include <Ormelle/PoNode.h>

class PiFieldWatch;

/// Says how the texts of the kits behind it look; puts a PbMiscTextAttr of its own in PoMiscTextAttrElement.
/// @code
/// auto* attributes = new PoMiscTextAttr;
/// attributes->fontName = "Helvetica";
/// attributes->lineLength = 20;
/// separator->addChild(attributes);
/// separator->addChild(legend);
/// @endcode
class ORMELLE_API PoMiscTextAttr : public PoNode {
  PO_NODE_HEADER(PoMiscTextAttr, PoNode);

 public:
  SoSFString fontName;                ///< "defaultFont" by default
  SoSFShort lineLength;               ///< characters in a line, 0 by default: texts aren't broken
  SoSFShort endLineChar;              ///< character code at which texts are broken, 32 by default: a blank
  SoSFBool profileEnabled;            ///< whether solid text has depth, TRUE by default
  SoSFBool predefinedProfileEnabled;  ///< whether that is a bevelled one, TRUE by default
  SoSFBool outliningEnabled;          ///< whether text is outlined, TRUE by default

  PoMiscTextAttr();

  void doAction(SoAction* action) override;

 protected:
  ~PoMiscTextAttr() override;

 private:
  PbMiscTextAttr m_attributes;
  std::unique_ptr<PiFieldWatch> m_fontWatch;
  std::unique_ptr<PiFieldWatch> m_watch;
};

#endif
