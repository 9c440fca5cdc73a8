#ifndef ORMELLE_PITEXTMETRICS_H
#define ORMELLE_PITEXTMETRICS_H

#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>

#include <Inventor/SbBox3f.h>

/// Remembers how large lines of text are at font size 1. Measuring one takes a traversal of a scene made for it, and
/// the texts of axes and legends come again at each rebuild.
///
/// It holds at most `MAX_LINES` lines and starts anew when it is full.
class PiTextMetrics {
 public:
  static constexpr size_t MAX_LINES = 4096;

  /// The box of `line` in the font named `font`, drawn as the kind of text `kind`; `measure` finds it if it isn't
  /// known.
  SbBox3f get(int kind, std::string_view font, std::string_view line, const std::function<SbBox3f()>& measure);

  /// The one that all texts share.
  static PiTextMetrics& shared();

 private:
  std::mutex m_mutex;
  std::unordered_map<std::string, SbBox3f> m_boxes;
  std::string m_key;  // kept for its memory
};

#endif
