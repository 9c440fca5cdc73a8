#include "quillane/emit/PiIndexList.h"

#include <limits>

#include <Inventor/fields/SoMFInt32.h>

void PiIndexList::hand(PiGrowBuffer<std::int32_t>& indices, SoMFInt32& field) {
  const std::size_t num = indices.size();
  if (num == 0 || num > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
    field.setNum(0);
    indices.clear();
    return;
  }
  field.setValuesPointer(static_cast<int>(num), indices.release().release());
  field.enableDeleteValues();
}
