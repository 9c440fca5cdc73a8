#include <Ormelle/PoDataMapping.h>

#include <Inventor/actions/SoAction.h>
#include <Ormelle/PbDataMapping.h>
#include <Ormelle/PoDataMappingElement.h>

#include "nodes/attribute/PiFieldWatch.h"
#include "nodes/attribute/PiSingleNotification.h"

PO_NODE_ABSTRACT_SOURCE(PoDataMapping)

PoDataMapping::PoDataMapping(PbDataMapping* mapping) : m_mapping(mapping) {
  PO_NODE_CONSTRUCTOR(PoDataMapping);
  PO_NODE_ADD_FIELD(minThresholdEnabled, (FALSE));
  PO_NODE_ADD_FIELD(minThreshold, (0));
  PO_NODE_ADD_FIELD(minThresholdHasColor, (FALSE));
  PO_NODE_ADD_FIELD(minThresholdColor, (0, 0, 0));
  PO_NODE_ADD_FIELD(minThresholdTransparency, (0));
  PO_NODE_ADD_FIELD(maxThresholdEnabled, (FALSE));
  PO_NODE_ADD_FIELD(maxThreshold, (1));
  PO_NODE_ADD_FIELD(maxThresholdHasColor, (FALSE));
  PO_NODE_ADD_FIELD(maxThresholdColor, (0, 0, 0));
  PO_NODE_ADD_FIELD(maxThresholdTransparency, (0));
  PO_NODE_ADD_FIELD(transparencyEnabled, (FALSE));
  PO_NODE_ADD_FIELD(transparencyValueDeletedParts, (0.95f));
  PO_NODE_CONSTRUCTED(PoDataMapping);
  m_watch = std::make_unique<PiFieldWatch>(minThresholdEnabled, minThreshold, minThresholdHasColor, minThresholdColor,
                                           minThresholdTransparency, maxThresholdEnabled, maxThreshold,
                                           maxThresholdHasColor, maxThresholdColor, maxThresholdTransparency,
                                           transparencyEnabled, transparencyValueDeletedParts);
}

PoDataMapping::~PoDataMapping() = default;

int PoDataMapping::updateValues() { return 0; }

void PoDataMapping::doAction(SoAction* action) {
  updateDataMapping();
  PoDataMappingElement::set(action->getState(), this, m_mapping.get());
}

void PoDataMapping::updateDataMapping() {
  PiSingleNotification notification(*m_mapping);
  if (updateValues()) notification.setChanged();
  if (!m_watch->take()) return;
  notification.setChanged();
  if (minThresholdHasColor.getValue())
    m_mapping->setMinThreshold(minThreshold.getValue(), minThresholdColor.getValue(),
                               minThresholdTransparency.getValue());
  else
    m_mapping->setMinThreshold(minThreshold.getValue());
  if (maxThresholdHasColor.getValue())
    m_mapping->setMaxThreshold(maxThreshold.getValue(), maxThresholdColor.getValue(),
                               maxThresholdTransparency.getValue());
  else
    m_mapping->setMaxThreshold(maxThreshold.getValue());
  m_mapping->enableThresholds(minThresholdEnabled.getValue(), maxThresholdEnabled.getValue());
  m_mapping->enableTransparency(transparencyEnabled.getValue());
  m_mapping->setTransparencyValueDeletedParts(transparencyValueDeletedParts.getValue());
}
