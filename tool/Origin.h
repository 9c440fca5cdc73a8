#ifndef ORMELLE_TOOL_ORIGIN_H
#define ORMELLE_TOOL_ORIGIN_H

#include <array>
#include <optional>
#include <string>

class SoNode;

/// Where the coordinates of a scene are counted from.
///
/// Coordinates in scenes are floats, which tell points of a map in metres apart only near zero. A scene made from such
/// data keeps its coordinates relative to an origin, and that origin as text in a node
///
///     DEF OrmelleOrigin Info { string "origin 500000 5200000 0" }
///
/// What is told to users (sizes, picked points) has the origin added back, in double.
namespace tool {

using Origin = std::array<double, 3>;

constexpr const char* kOriginName = "OrmelleOrigin";

/// The text of the node, with as many digits as tell the numbers.
std::string textOf(const Origin& origin);
std::optional<Origin> parseOrigin(const std::string& text);

/// A node for `origin`, without a reference.
SoNode* makeOriginNode(const Origin& origin);
/// The origin that a scene names first; none if it names none.
std::optional<Origin> findOrigin(SoNode* root);

}  // namespace tool

#endif
