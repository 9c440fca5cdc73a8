#ifndef ORMELLE_PICHARTFORMAT_H
#define ORMELLE_PICHARTFORMAT_H

#include <string>
#include <vector>

#include "graph/format/PiNumericFormat.h"

/// How the values of a chart read: all alike.
class PiChartFormat {
 public:
  /// Null is automatic; whole numbers then stay whole.
  PiChartFormat(const PbNumericDisplayFormat* format, const std::vector<float>& values);

  /// With the common power of ten behind it, if there is one.
  std::string text(double value) const;
  const PiNumericFormat& format() const { return m_format; }

 private:
  PiNumericFormat m_format;
};

#endif
