#ifndef ORMELLE_TOOL_PARSEDOPTION_H
#define ORMELLE_TOOL_PARSEDOPTION_H

#include <CLI/CLI.hpp>

#include <stdexcept>
#include <string>

namespace tool {

/// Lets an option's value go through `parse`, whose std::invalid_argument becomes the command line's complaint.
template <class Value>
CLI::Option* addParsed(CLI::App* app, const std::string& name, Value& value, Value (*parse)(const std::string&),
                       const std::string& help) {
  return app->add_option_function<std::string>(
      name,
      [&value, parse, name](const std::string& text) {
        try {
          value = parse(text);
        } catch (const std::invalid_argument& problem) {
          throw CLI::ValidationError(name, problem.what());
        }
      },
      help);
}

}  // namespace tool

#endif
