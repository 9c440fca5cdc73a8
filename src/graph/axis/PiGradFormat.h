#ifndef ORMELLE_PIGRADFORMAT_H
#define ORMELLE_PIGRADFORMAT_H

#include <span>

#include "graph/format/PiNumericFormat.h"

/// Texts of gradation values, all of them with the same decimals and the same power of ten.
namespace PiGradFormat {

/// Writes each value into its slot.
void write(const PiNumericFormat& format, std::span<const float> values, char** slots);

/// Gives `format` just so many decimals more that neighbours of `values` that differ read differently, and each reads
/// as itself within a tenth of the least gap. Without need it changes nothing. `slots` holds the texts before and
/// after.
void addDecimals(PiNumericFormat& format, std::span<const float> values, char** slots);

}  // namespace PiGradFormat

#endif
