#include "nodes/field/PiNumberText.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>
#include <system_error>

namespace {

// std::from_chars takes no plus.
const char* skipPlus(const char* begin, const char* end) {
  return end - begin > 1 && *begin == '+' && begin[1] != '-' ? begin + 1 : begin;
}

// What a float becomes that no float can hold.
float outOfRange(const char* begin, const char* end) {
  double number = 0;
  if (std::from_chars(begin, end, number).ec == std::errc()) {
    if (std::abs(number) < 1) return std::copysign(0.0F, number < 0 ? -1.0F : 1.0F);
  } else {
    const std::string_view text(begin, static_cast<std::size_t>(end - begin));
    const std::size_t exponent = text.find_first_of("eE");
    const bool isTiny = exponent == std::string_view::npos ? text.find('.') < text.find_first_of("123456789")
                                                           : text[exponent + 1] == '-';
    number = *begin == '-' ? -1 : 1;
    if (isTiny) return std::copysign(0.0F, static_cast<float>(number));
  }
  return std::copysign(std::numeric_limits<float>::infinity(), number > 0 ? 1.0F : -1.0F);
}

}  // namespace

char* PiNumberText::write(char* text, float number) {
  char* const limit = text + kMaxLength;
  char* const end = std::to_chars(text, limit, number, std::chars_format::general, 8).ptr;
  float back = 0;
  std::from_chars(text, end, back);
  if (back == number || std::isnan(number)) return end;
  return std::to_chars(text, limit, number, std::chars_format::general, 9).ptr;
}

char* PiNumberText::write(char* text, int number) { return std::to_chars(text, text + kMaxLength, number).ptr; }

const char* PiNumberText::read(const char* begin, const char* end, float& number) {
  begin = skipPlus(begin, end);
  const auto [rest, error] = std::from_chars(begin, end, number);
  if (error == std::errc()) return rest;
  if (error != std::errc::result_out_of_range) return nullptr;
  number = outOfRange(begin, rest);
  return rest;
}

const char* PiNumberText::read(const char* begin, const char* end, int& number) {
  const auto [rest, error] = std::from_chars(skipPlus(begin, end), end, number);
  return error == std::errc() ? rest : nullptr;
}
