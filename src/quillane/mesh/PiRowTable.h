#ifndef ORMELLE_PIROWTABLE_H
#define ORMELLE_PIROWTABLE_H

#include <cstddef>
#include <vector>

/// Tables of pointers to the rows of an array that holds row after row, made when somebody asks for them.
struct PiRowTable {
  /// Makes `rows` point to the rows of `values`, unless it does. Clear the table when the dimensions change. Null
  /// without values.
  static const float* const* update(std::vector<const float*>& rows, const float* values, int numRows, int rowSize) {
    if (!values) return nullptr;
    if (rows.empty() || rows.front() != values) {
      rows.resize(numRows);
      for (int i = 0; i < numRows; ++i) rows[i] = values + static_cast<std::ptrdiff_t>(i) * rowSize;
    }
    return rows.data();
  }
};

#endif
