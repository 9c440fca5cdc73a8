#ifndef ORMELLE_TOOL_TEMPLATES_H
#define ORMELLE_TOOL_TEMPLATES_H

#include <span>
#include <string_view>

namespace tool {

/// A scene to start from. Its first comment tells what it shows.
struct Template {
  std::string_view kind;
  std::string_view scene;
};

/// All of them, by name; written by the build from templates/.
std::span<const Template> templates();

}  // namespace tool

#endif
