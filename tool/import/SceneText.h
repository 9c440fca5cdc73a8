#ifndef ORMELLE_TOOL_IMPORT_SCENETEXT_H
#define ORMELLE_TOOL_IMPORT_SCENETEXT_H

#include <string>

class SoGroup;

namespace importer {

/// A number as scenes have it, with all digits of a float.
std::string numberText(double number);

/// Text between the quotation marks of a scene.
std::string quoted(const std::string& text);

/// Adds the nodes that a text describes. Throws Failure if it describes none.
void addNodes(SoGroup* group, const std::string& nodes);

/// Round numbers that span a range: `first` to `last`, whole numbers, times `step`.
struct RoundSteps {
  double first, last, step;
};

/// About `count` steps of 1, 2 or 5 times a power of ten, or with quarters 2.5 times it. A range of one value, or as
/// good as one, is widened.
RoundSteps roundSteps(double low, double high, double count, bool withQuarters);

/// How many decimals a step needs, up to the first that isn't 0.
int decimalsOf(double step);

}  // namespace importer

#endif
