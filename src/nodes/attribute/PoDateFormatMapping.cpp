#include <Ormelle/PoDateFormatMapping.h>

#include <Inventor/actions/SoAction.h>
#include <Ormelle/PoDateFormatMappingElement.h>

#include "nodes/attribute/PiFieldWatch.h"
#include "nodes/attribute/PiSingleNotification.h"

PO_NODE_SOURCE(PoDateFormatMapping)

PoDateFormatMapping::PoDateFormatMapping() {
  PO_NODE_CONSTRUCTOR(PoDateFormatMapping);
  PO_NODE_ADD_FIELD(date1, ("1-01-70"));
  PO_NODE_ADD_FIELD(date2, ("2-01-70"));
  PO_NODE_ADD_FIELD(coord1, (0));
  PO_NODE_ADD_FIELD(coord2, (1));
  PO_NODE_ADD_FIELD(format, ("dmy"));
  PO_NODE_CONSTRUCTED(PoDateFormatMapping);
  m_formatWatch = std::make_unique<PiFieldWatch>(format);
  m_dateWatch = std::make_unique<PiFieldWatch>(date1, date2, coord1, coord2);
}

PoDateFormatMapping::~PoDateFormatMapping() = default;

int PoDateFormatMapping::getCoordinate(const char* date, float& coord) {
  updateDateFormatMapping();
  return m_mapping.getCoordinate(date ? date : "", coord);
}

void PoDateFormatMapping::doAction(SoAction* action) {
  updateDateFormatMapping();
  PoDateFormatMappingElement::set(action->getState(), this, &m_mapping);
}

void PoDateFormatMapping::updateDateFormatMapping() {
  PiSingleNotification notification(m_mapping);
  const bool isFormatSet = m_formatWatch->take() && m_mapping.setFormat(format.getValue()) == 0;
  if (isFormatSet) notification.setChanged();
  // Dates that the former format couldn't read may be good in the new one.
  if (!m_dateWatch->take() && !isFormatSet) return;
  if (m_mapping.setDateMapping(date1.getValue(), date2.getValue(), coord1.getValue(), coord2.getValue()))
    notification.setChanged();
}
