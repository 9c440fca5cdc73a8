#ifndef ORMELLE_PIPRINTARRAY_H
#define ORMELLE_PIPRINTARRAY_H

#include <cstdio>

/// Writes a named array of a mesh, ten values a line.
inline void printArray(FILE* file, const char* className, const char* name, const float* values, int num) {
  std::fprintf(file, "%s:: %s =%s", className, name, values ? "" : " none");
  for (int i = 0; values && i < num; ++i) std::fprintf(file, i % 10 == 0 ? "\n  %g" : " %g", double(values[i]));
  std::fprintf(file, "\n");
}

#endif
