#ifndef ORMELLE_TOOL_PROGRAM_H
#define ORMELLE_TOOL_PROGRAM_H

#include <string>

namespace tool {

/// The other program `name` of the build or the installation, beside this one or where the installation keeps what only
/// the tool starts. Empty if it isn't there.
std::string findProgram(const std::string& name);

}  // namespace tool

#endif
