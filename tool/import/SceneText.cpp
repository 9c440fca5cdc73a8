#include "SceneText.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/nodes/SoSeparator.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "Dataset.h"

namespace importer {

std::string numberText(double number) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.9g", number);
  return text.data();
}

std::string quoted(const std::string& text) {
  std::string result = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') result += '\\';
    result += c;
  }
  return result + '"';
}

void addNodes(SoGroup* group, const std::string& nodes) {
  const std::string text = "#Inventor V2.1 ascii\nSeparator {\n" + nodes + "}\n";
  SoInput in;
  in.setBuffer(text.data(), text.size());
  SoSeparator* all = SoDB::readAll(&in);
  if (!all) throw Failure("its scene could not be made");
  all->ref();
  for (int i = 0; i < all->getNumChildren(); ++i) group->addChild(all->getChild(i));
  all->unref();
}

RoundSteps roundSteps(double low, double high, double count, bool withQuarters) {
  const double size = std::max(std::abs(low), std::abs(high));
  if (!(high - low > 1e-6 * size)) {
    const double half = size > 0 ? 0.05 * size : 0.5;
    low -= half;
    high += half;
  }
  const double rough = (high - low) / count;
  const double power = std::pow(10.0, std::floor(std::log10(rough)));
  double step = 10 * power;
  for (const double factor : {5.0, 2.5, 2.0, 1.0})
    if ((withQuarters || factor != 2.5) && factor * power >= rough * 0.999) step = factor * power;
  return {std::floor(low / step + 1e-6), std::ceil(high / step - 1e-6), step};
}

int decimalsOf(double step) { return std::max(0, static_cast<int>(-std::floor(std::log10(step) + 1e-9))); }

}  // namespace importer
