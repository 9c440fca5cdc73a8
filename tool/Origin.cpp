#include "Origin.h"

#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoInfo.h>

#include <charconv>
#include <cmath>
#include <string_view>

namespace tool {

namespace {

constexpr std::string_view kWord = "origin";

}  // namespace

std::string textOf(const Origin& origin) {
  std::string text(kWord);
  for (const double number : origin) {
    std::array<char, 32> digits{};
    const std::to_chars_result end = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    text += " " + std::string(digits.data(), end.ptr);
  }
  return text;
}

std::optional<Origin> parseOrigin(const std::string& text) {
  std::string_view rest = text;
  if (!rest.starts_with(kWord)) return std::nullopt;
  rest.remove_prefix(kWord.size());
  Origin origin{};
  for (double& number : origin) {
    if (rest.empty() || rest.front() != ' ') return std::nullopt;
    while (!rest.empty() && rest.front() == ' ') rest.remove_prefix(1);
    const std::from_chars_result end = std::from_chars(rest.data(), rest.data() + rest.size(), number);
    if (end.ec != std::errc() || !std::isfinite(number)) return std::nullopt;
    rest.remove_prefix(static_cast<std::size_t>(end.ptr - rest.data()));
  }
  return rest.empty() ? std::optional(origin) : std::nullopt;
}

SoNode* makeOriginNode(const Origin& origin) {
  auto* info = new SoInfo;
  info->setName(kOriginName);
  info->string = textOf(origin).c_str();
  return info;
}

std::optional<Origin> findOrigin(SoNode* root) {
  SoSearchAction search;
  search.setName(kOriginName);
  search.setType(SoInfo::getClassTypeId());
  search.setInterest(SoSearchAction::FIRST);
  search.setSearchingAll(TRUE);
  search.apply(root);
  if (!search.getPath()) return std::nullopt;
  return parseOrigin(static_cast<SoInfo*>(search.getPath()->getTail())->string.getValue().getString());
}

}  // namespace tool
