#include <Ormelle/PoNonLinearDataMapping2.h>

#include <algorithm>
#include <vector>

#include <Ormelle/PbNonLinearDataMapping2.h>
#include <Ormelle/PoDebugError.h>

#include "nodes/attribute/PiEnumField.h"
#include "nodes/attribute/PiFieldWatch.h"

PO_NODE_SOURCE(PoNonLinearDataMapping2)

PoNonLinearDataMapping2::PoNonLinearDataMapping2() : PoDataMapping(new PbNonLinearDataMapping2) {
  PO_NODE_CONSTRUCTOR(PoNonLinearDataMapping2);
  PO_NODE_ADD_FIELD(type, (LINEAR_PER_LEVEL));
  PO_NODE_ADD_FIELD(value, (0.0f));
  PO_NODE_ADD_FIELD(color, (0, 0, 0));
  PO_NODE_ADD_EMPTY_MFIELD(transparency);
  PO_NODE_DEFINE_ENUM_VALUE(Type, NON_LINEAR_PER_LEVEL);
  PO_NODE_DEFINE_ENUM_VALUE(Type, LINEAR_PER_LEVEL);
  PO_NODE_SET_ENUM_TYPE(type, Type);
  PO_NODE_CONSTRUCTED(PoNonLinearDataMapping2);
  value.set1Value(1, 1);
  value.setDefault(TRUE);
  color.set1Value(1, 1, 1, 1);
  color.setDefault(TRUE);
  m_tableWatch = std::make_unique<PiFieldWatch>(type, value, color, transparency);
}

PoNonLinearDataMapping2::~PoNonLinearDataMapping2() = default;

int PoNonLinearDataMapping2::updateValues() {
  if (!m_tableWatch->take()) return 0;
  const Type wantedType = PiEnumField::get(type, LINEAR_PER_LEVEL, LINEAR_PER_LEVEL);
  const int numColors = wantedType == LINEAR_PER_LEVEL ? value.getNum() : value.getNum() + 1;
  if (value.getNum() == 0) return 0;
  if (color.getNum() < numColors) {
    PoDebugError::post("PoNonLinearDataMapping2", wantedType == LINEAR_PER_LEVEL
                                                      ? "The number of colours must be >= to number of values"
                                                      : "The number of colours must be >= to number of values + 1");
    return 0;
  }
  std::vector<float> transparencies(numColors, 0.0f);
  std::copy_n(transparency.getValues(0), std::min(numColors, transparency.getNum()), transparencies.begin());
  static_cast<PbNonLinearDataMapping2&>(*m_mapping)
      .setValues(static_cast<PbNonLinearDataMapping2::Type>(wantedType), value.getNum(), value.getValues(0),
                 color.getValues(0), transparencies.data());
  return 1;
}
