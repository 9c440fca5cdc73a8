#ifndef ORMELLE_PITEXTLINES_H
#define ORMELLE_PITEXTLINES_H

#include <string>
#include <string_view>
#include <vector>

/// What text needs before it goes into a text node.
class PiTextLines {
 public:
  /// `text` as the text nodes want it. What isn't UTF-8 is taken for Latin-1, as a whole.
  static std::string toUtf8(std::string_view text);

  /// Breaks UTF-8 text into lines of at most `lineLength` characters; 0 or below doesn't break. A blank as
  /// `endLineChar` fills each line with as many words as fit. Any other character always ends a line, and isn't shown;
  /// what lies between two of them is filled in by words. A word longer than a line is cut.
  static std::vector<std::string> split(std::string_view text, char endLineChar, int lineLength);
};

#endif
