#ifndef ORMELLE_TOOL_FAILURE_H
#define ORMELLE_TOOL_FAILURE_H

#include <stdexcept>

namespace tool {

/// Ends the command with one sentence on the error output and exit status 1.
struct Failure : std::runtime_error {
  using std::runtime_error::runtime_error;
};

}  // namespace tool

#endif
