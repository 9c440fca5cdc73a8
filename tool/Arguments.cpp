#include "Arguments.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace tool {

namespace {

std::vector<std::string_view> split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  for (;;) {
    const std::size_t end = text.find(separator);
    parts.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

template <class Number>
bool parseNumber(std::string_view text, Number& number, int base = 10) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  const char* end = text.data() + text.size();
  std::from_chars_result result{};
  if constexpr (std::is_floating_point_v<Number>)
    result = std::from_chars(text.data(), end, number);
  else
    result = std::from_chars(text.data(), end, number, base);
  return result.ec == std::errc() && result.ptr == end && !text.empty();
}

// Fills `numbers` if `text` is that many finite numbers joined by commas.
bool parseNumbers(std::string_view text, std::vector<float>& numbers) {
  numbers.clear();
  for (const std::string_view part : split(text, ',')) {
    float number = 0.0f;
    if (!parseNumber(part, number) || !std::isfinite(number)) return false;
    numbers.push_back(number);
  }
  return true;
}

bool parseVector(std::string_view text, SbVec3f& vector) {
  std::vector<float> numbers;
  if (!parseNumbers(text, numbers) || numbers.size() != 3) return false;
  vector.setValue(numbers[0], numbers[1], numbers[2]);
  return vector.length() > 0.0f;
}

}  // namespace

Size parseSize(const std::string& text) {
  const auto parts = split(text, 'x');
  Size size{};
  if (parts.size() != 2 || !parseNumber(parts[0], size.width) || !parseNumber(parts[1], size.height))
    throw std::invalid_argument("\"" + text + "\" is not a size: write width and height in pixels, such as 1600x1200");
  if (std::min(size.width, size.height) < 1 || std::max(size.width, size.height) > 32767)
    throw std::invalid_argument("the size " + text + " is out of range: both numbers go from 1 to 32767");
  return size;
}

SbVec3f parseAxis(const std::string& text) {
  SbVec3f vector;
  if (parseVector(text, vector)) return vector;
  std::string_view axis = text;
  float sign = 1.0f;
  if (!axis.empty() && (axis.front() == '-' || axis.front() == '+')) {
    if (axis.front() == '-') sign = -1.0f;
    axis.remove_prefix(1);
  }
  if (axis == "x") return SbVec3f(sign, 0.0f, 0.0f);
  if (axis == "y") return SbVec3f(0.0f, sign, 0.0f);
  if (axis == "z") return SbVec3f(0.0f, 0.0f, sign);
  throw std::invalid_argument("\"" + text +
                              "\" is not an axis: write x, y, z, -x, -y, -z, or a vector x,y,z other than 0,0,0");
}

SbVec3f parseView(const std::string& text, const SbVec3f& up) {
  SbVec3f direction;
  if (parseVector(text, direction)) return direction;

  SbVec3f top = up;
  top.normalize();
  // The side that faces the viewer of a scene: +z when y is up, as the toolkit's cameras have it, and -y when z is up,
  // so that x points to the right in both.
  SbVec3f front = std::abs(top[2]) > 0.7f ? SbVec3f(0.0f, -1.0f, 0.0f) : SbVec3f(0.0f, 0.0f, 1.0f);
  front -= top * front.dot(top);
  front.normalize();
  const SbVec3f right = top.cross(front);

  SbVec3f side(0.0f, 0.0f, 0.0f);
  for (const std::string_view word : split(text, '-')) {
    if (word == "front")
      side += front;
    else if (word == "back")
      side -= front;
    else if (word == "right")
      side += right;
    else if (word == "left")
      side -= right;
    else if (word == "top")
      side += top;
    else if (word == "bottom")
      side -= top;
    else if (word == "iso")
      side += front + right + top;
    else
      throw std::invalid_argument(
          "\"" + text +
          "\" is not a view: write front, back, left, right, top, bottom, several of them joined "
          "by \"-\", iso, or a direction x,y,z other than 0,0,0");
  }
  if (side.length() < 0.5f) throw std::invalid_argument("the sides of the view \"" + text + "\" cancel each other");
  return -side;
}

Background parseBackground(const std::string& text) {
  const std::string lower = lowerCase(text);
  if (lower == "transparent" || lower == "none") return {SbColor(1.0f, 1.0f, 1.0f), 0.0f};
  if (const auto named = namedColor(text)) return *named;
  std::vector<float> numbers;
  if (parseNumbers(text, numbers) && (numbers.size() == 3 || numbers.size() == 4) &&
      std::all_of(numbers.begin(), numbers.end(), [](float n) { return n >= 0.0f && n <= 1.0f; }))
    return {SbColor(numbers[0], numbers[1], numbers[2]), numbers.size() == 4 ? numbers[3] : 1.0f};
  throw std::invalid_argument(
      "\"" + text +
      "\" is not a colour: write a name such as white, grey or navy, #rrggbb, r,g,b with numbers "
      "from 0 to 1, or transparent");
}

}  // namespace tool
