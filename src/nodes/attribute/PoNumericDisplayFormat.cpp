#include <Ormelle/PoNumericDisplayFormat.h>

#include <Inventor/actions/SoAction.h>
#include <Ormelle/PoNumericDisplayFormatElement.h>

#include "nodes/attribute/PiEnumField.h"
#include "nodes/attribute/PiFieldWatch.h"

PO_NODE_SOURCE(PoNumericDisplayFormat)

PoNumericDisplayFormat::PoNumericDisplayFormat() {
  PO_NODE_CONSTRUCTOR(PoNumericDisplayFormat);
  PO_NODE_ADD_FIELD(formatType, (AUTO_FORMAT));
  PO_NODE_ADD_FIELD(numDecimal, (0));
  PO_NODE_ADD_FIELD(tenPower, (0));
  PO_NODE_DEFINE_ENUM_VALUE(FormatType, AUTO_FORMAT);
  PO_NODE_DEFINE_ENUM_VALUE(FormatType, FLOAT_FORMAT);
  PO_NODE_DEFINE_ENUM_VALUE(FormatType, INTEGER_FORMAT);
  PO_NODE_SET_ENUM_TYPE(formatType, FormatType);
  PO_NODE_CONSTRUCTED(PoNumericDisplayFormat);
  m_watch = std::make_unique<PiFieldWatch>(formatType, numDecimal, tenPower);
}

PoNumericDisplayFormat::~PoNumericDisplayFormat() = default;

void PoNumericDisplayFormat::doAction(SoAction* action) {
  if (m_watch->take()) {
    const FormatType type = PiEnumField::get(formatType, INTEGER_FORMAT, AUTO_FORMAT);
    m_format.setFormat(static_cast<PbNumericDisplayFormat::FormatType>(type), tenPower.getValue(),
                       numDecimal.getValue());
  }
  PoNumericDisplayFormatElement::set(action->getState(), this, &m_format);
}
