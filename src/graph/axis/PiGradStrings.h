#ifndef ORMELLE_PIGRADSTRINGS_H
#define ORMELLE_PIGRADSTRINGS_H

#include <memory>
#include <vector>

/// A table of texts of up to 99 characters that grows and is used again and again, so that gradations allocate nothing.
class PiGradStrings {
 public:
  static constexpr int SLOT_SIZE = 100;

  /// At least `n` slots. Whatever they held is lost when the table grows.
  char** alloc(int n);

  /// Appends to a slot what fits, and whole letters only.
  static void append(char* slot, const char* text);

 private:
  std::unique_ptr<char[]> m_block;
  std::vector<char*> m_slots;
};

#endif
