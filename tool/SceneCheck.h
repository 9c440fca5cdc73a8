#ifndef ORMELLE_TOOL_SCENECHECK_H
#define ORMELLE_TOOL_SCENECHECK_H

#include <string>

class SoNode;
class SoShape;
class SoState;

namespace tool {

/// The toolkit trusts the indices of a shape and reads past its arrays where they lie. Tells what is wrong with those
/// of `shape`, given the traversal state that it is about to meet; empty if the toolkit can take it.
std::string faultOf(const SoShape* shape, SoState* state);

/// Looks at every shape that a traversal of `scene` meets, kits rebuilding themselves meanwhile. Throws Failure, with
/// `file` in its sentence, at the first fault.
void checkScene(SoNode* scene, const std::string& file);

}  // namespace tool

#endif
