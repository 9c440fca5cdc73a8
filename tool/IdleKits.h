#ifndef ORMELLE_TOOL_IDLEKITS_H
#define ORMELLE_TOOL_IDLEKITS_H

#include <string>
#include <vector>

class SoNode;

namespace tool {

/// A sentence, without its end, for each kind of kit in `scene` that shows nothing, or shows a mesh without the colours
/// that it is to have, with the reason where it can be told. Kits rebuild themselves first where they must.
std::vector<std::string> idleKits(SoNode* scene);

/// Tells them on the error output, as notes about `file`.
void tellIdleKits(SoNode* scene, const std::string& file);

}  // namespace tool

#endif
