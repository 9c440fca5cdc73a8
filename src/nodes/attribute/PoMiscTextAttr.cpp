#include <Ormelle/PoMiscTextAttr.h>

#include <Inventor/actions/SoAction.h>
#include <Ormelle/PoMiscTextAttrElement.h>

#include "nodes/attribute/PiFieldWatch.h"
#include "nodes/attribute/PiSingleNotification.h"

PO_NODE_SOURCE(PoMiscTextAttr)

PoMiscTextAttr::PoMiscTextAttr() {
  PO_NODE_CONSTRUCTOR(PoMiscTextAttr);
  PO_NODE_ADD_FIELD(fontName, ("defaultFont"));
  PO_NODE_ADD_FIELD(lineLength, (0));
  PO_NODE_ADD_FIELD(endLineChar, (' '));
  PO_NODE_ADD_FIELD(profileEnabled, (TRUE));
  PO_NODE_ADD_FIELD(predefinedProfileEnabled, (TRUE));
  PO_NODE_ADD_FIELD(outliningEnabled, (TRUE));
  PO_NODE_CONSTRUCTED(PoMiscTextAttr);
  m_fontWatch = std::make_unique<PiFieldWatch>(fontName);
  m_watch = std::make_unique<PiFieldWatch>(lineLength, endLineChar, profileEnabled, predefinedProfileEnabled,
                                           outliningEnabled);
}

PoMiscTextAttr::~PoMiscTextAttr() = default;

void PoMiscTextAttr::doAction(SoAction* action) {
  {
    PiSingleNotification notification(m_attributes);
    if (m_fontWatch->take()) {
      m_attributes.setFontName(fontName.getValue());
      notification.setChanged();
    }
    if (m_watch->take()) {
      m_attributes.setLineLength(static_cast<char>(endLineChar.getValue()), lineLength.getValue());
      m_attributes.enableProfile(profileEnabled.getValue());
      m_attributes.enablePredefinedProfile(predefinedProfileEnabled.getValue());
      m_attributes.enableOutlining(outliningEnabled.getValue());
      notification.setChanged();
    }
  }
  PoMiscTextAttrElement::set(action->getState(), this, &m_attributes);
}
