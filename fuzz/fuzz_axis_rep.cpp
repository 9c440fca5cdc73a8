// Representations of a time axis. An input is the separator in one byte, an index of a span of time in another, and the
// text. What could be read must read the same after being written, and gradate any span.

#include <Ormelle/PbDateFormatMapping.h>

#include <cstdint>

#include "AxisLanguage.h"
#include "graph/axis/PiDateGradations.h"
#include "graph/axis/PiDateRepChoice.h"

namespace {

constexpr int kMaxGradations = 20;

// From a thousandth of a second to some 9000 years.
PiDateRange rangeOf(unsigned index, const PbDateFormatMapping& mapping) {
  constexpr float kStarts[] = {-63e9F, -1e9F, 0, 12345.5F, 1e9F, 252e9F};
  PiDateRange range;
  range.start = range.end = PiDate();
  range.start.incDateStep(kStarts[index % 6], PiDate::SECOND);
  range.end = range.start;
  float span = 1e-3F;
  for (unsigned i = 0; i < index / 6 % 16; ++i) span *= 8;
  range.end.incDateStep(index % 2 == 0 ? span : -span, PiDate::SECOND);
  range.startCoord = mapping.getCoordinateP(range.start);
  range.endCoord = mapping.getCoordinateP(range.end);
  return range;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const std::string_view text(reinterpret_cast<const char*>(data) + 2, size - 2);
  const auto rep = PiTimeAxisLanguage::parseAxisRep(text, data[0]);
  if (!rep) return 0;
  if (PiTimeAxisLanguage::parseAxisRep(AxisLanguage::textOf(*rep), '|') != rep) std::abort();

  static const PbDateFormatMapping mapping;
  const PiDateRange range = rangeOf(data[1], mapping);
  const PiDateRep complete =
      PiDateRepChoice::getDateAxisRep(PiDateSpan(range.start, range.end), {&*rep, 1}, {}, PiDate::DEUTSCH);
  if (complete.empty()) std::abort();
  for (const PiDateLevel& level : complete) {
    if (level.unit == PiDate::NO_STEP || !(level.numStep > 0)) std::abort();
    for (const auto fit : {PiDateGradations::FIT, PiDateGradations::UNFIT}) {
      const PiDateGradList list = PiDateGradations::getGradList(
          range, mapping, level, fit, {PiDate::DEUTSCH, data[1] % 3 == 0, {}}, kMaxGradations);
      if (list.texts.empty() || list.texts.size() != list.coords.size()) std::abort();
      if (list.texts.size() > kMaxGradations + 1) std::abort();
    }
  }
  return 0;
}
