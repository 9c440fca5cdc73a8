#ifndef ORMELLE_TOOL_NOTES_H
#define ORMELLE_TOOL_NOTES_H

#include <cstdio>
#include <string>

namespace tool {

/// What an output file can't carry, told in one line on the error output once the file is there.
class Notes {
 public:
  /// Does nothing with an empty note.
  void add(const std::string& note) { m_all += (m_all.empty() || note.empty() ? "" : "; ") + note; }
  const std::string& all() const { return m_all; }
  void tell(const std::string& file) const {
    if (!m_all.empty()) std::fprintf(stderr, "ormelle: %s: %s.\n", file.c_str(), m_all.c_str());
  }

 private:
  std::string m_all;
};

/// "1 text is", "3 texts are".
inline std::string counted(std::size_t count, const std::string& one, const std::string& many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

}  // namespace tool

#endif
