#include <Ormelle/PoLinearDataMapping.h>

#include <cmath>

#include <Ormelle/PbLinearDataMapping.h>

#include "nodes/attribute/PiFieldWatch.h"

PO_NODE_SOURCE(PoLinearDataMapping)

PoLinearDataMapping::PoLinearDataMapping() : PoDataMapping(new PbLinearDataMapping) {
  PO_NODE_CONSTRUCTOR(PoLinearDataMapping);
  PO_NODE_ADD_FIELD(value1, (0));
  PO_NODE_ADD_FIELD(color1, (0, 0, 0));
  PO_NODE_ADD_FIELD(transparency1, (0));
  PO_NODE_ADD_FIELD(value2, (1));
  PO_NODE_ADD_FIELD(color2, (1, 1, 1));
  PO_NODE_ADD_FIELD(transparency2, (0));
  PO_NODE_CONSTRUCTED(PoLinearDataMapping);
  m_rampWatch = std::make_unique<PiFieldWatch>(value1, color1, transparency1, value2, color2, transparency2);
}

PoLinearDataMapping::~PoLinearDataMapping() = default;

int PoLinearDataMapping::updateValues() {
  if (!m_rampWatch->take()) return 0;
  if (!std::isfinite(value1.getValue()) || !std::isfinite(value2.getValue())) return 0;
  static_cast<PbLinearDataMapping&>(*m_mapping)
      .setValues(value1.getValue(), color1.getValue(), transparency1.getValue(), value2.getValue(), color2.getValue(),
                 transparency2.getValue());
  return 1;
}
