#ifndef ORMELLE_TOOL_FILEKIND_H
#define ORMELLE_TOOL_FILEKIND_H

#include <string>
#include <string_view>

namespace tool {

/// Whether a file name ends like this, in small or capital letters.
inline bool hasEnding(const std::string& file, std::string_view ending) {
  if (file.size() < ending.size()) return false;
  for (std::size_t i = 0; i < ending.size(); ++i) {
    const char c = file[file.size() - ending.size() + i];
    if ((c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c) != ending[i]) return false;
  }
  return true;
}

}  // namespace tool

#endif
