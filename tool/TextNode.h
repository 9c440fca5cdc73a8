#ifndef ORMELLE_TOOL_TEXTNODE_H
#define ORMELLE_TOOL_TEXTNODE_H

#include <string>
#include <vector>

class SoCallbackAction;
class SoNode;

namespace tool {

/// A text node of a scene, with the font that it is written in.
struct TextNode {
  std::vector<std::string> lines;
  std::string font;           ///< as the toolkit names fonts: "DejaVu Sans:Bold"
  double size = 1.0;          ///< of the font, in the text's own units, or in pixels if it is on the screen
  double spacing = 1.0;       ///< from line to line, in sizes
  int justification = -1;     ///< -1: lines begin at the origin, 0: are centred there, 1: end there
  bool isOnScreen = false;    ///< flat on the screen
  bool isAnnotation = false;  ///< drawn in its plain colour, and never mirrored
  bool isSolid = false;       ///< has sides or a back

  /// Where a line as wide as that begins.
  double startOf(double width) const { return justification > 0 ? -width : justification == 0 ? -width / 2.0 : 0.0; }
};

/// Whether the node writes text, flat on the screen or in space.
bool isText(const SoNode* node);
/// The lines of text of such a node.
std::vector<std::string> linesOf(const SoNode* text);
/// Reads the text node at the end of the action's path.
TextNode textNodeOf(SoCallbackAction& action);

}  // namespace tool

#endif
