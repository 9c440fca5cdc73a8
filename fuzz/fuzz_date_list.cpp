// Lists of periods of a time axis. What could be read must read the same after being written, and sort.

#include <algorithm>
#include <cstdint>

#include "AxisLanguage.h"
#include "graph/axis/PiDateRepChoice.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const auto list = PiTimeAxisLanguage::parseDateList(text);
  if (!list) return 0;
  if (PiTimeAxisLanguage::parseDateList(AxisLanguage::textOf(*list)) != list) std::abort();
  const std::vector<double> periods = PiDateRepChoice::sortedPeriods(*list);
  if (periods.empty() || periods.size() > list->size()) std::abort();
  return 0;
}
