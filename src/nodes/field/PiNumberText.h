#ifndef ORMELLE_PINUMBERTEXT_H
#define ORMELLE_PINUMBERTEXT_H

/// Numbers as text, whatever the locale.
class PiNumberText {
 public:
  /// The longest text that write() makes.
  static constexpr int kMaxLength = 16;

  /// Writes `number` to `text` without a zero byte and returns the end of what was written. A float gets 8 digits, and
  /// 9 if it isn't read back the same from 8.
  /// @{
  static char* write(char* text, float number);
  static char* write(char* text, int number);
  /// @}

  /// Reads a number that starts at `begin` and returns the end of its text, or null if there is none. A float that is
  /// too large becomes infinite, one that is too small 0; an int that doesn't fit is none.
  /// @{
  static const char* read(const char* begin, const char* end, float& number);
  static const char* read(const char* begin, const char* end, int& number);
  /// @}
};

#endif
