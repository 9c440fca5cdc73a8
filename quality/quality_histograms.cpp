#include <cmath>
#include <map>
#include <string>

#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PoDomain.h>
#include <Ormelle/PoMultipleHistogram.h>
#include <Ormelle/PoSingleHistogram.h>

#include "Quality.h"
#include "SceneTexts.h"

namespace {

std::string randomName(QualityRandom& random) {
  static const char* const kNames[] = {"A", "Third class", "Q3", "Iron ore and scrap", "2024", "Été", "North", "n/a"};
  return kNames[random.index(8)];
}

/// Bars of all kinds in domains that hold them.
bool runHistograms(const QualityOptions& options, nlohmann::json& summary) {
  const int numCases = options.cases(10000);
  int numOverlapping = 0;
  int numOutside = 0;
  int numWrong = 0;
  long numWanted = 0;
  long numShown = 0;
  for (int i = 0; i < numCases; ++i) {
    QualityRandom random(92, i);
    auto* scene = new SoSeparator;
    scene->ref();
    auto* domain = new PoDomain;
    scene->addChild(domain);
    const bool isMultiple = random.chance(0.6);
    const bool isAlongX = random.chance(0.6);
    const int num = 1 + random.index(24);
    const int numRows = isMultiple ? 1 + random.index(std::min(num, 6)) : 1;
    const double scale = std::pow(10.0, random.index(7) - 2);
    const bool hasNegative = random.chance(0.3);
    std::vector<float> values;
    for (int k = 0; k < num; ++k) {
      double value = random.uniform(hasNegative ? -1 : 0, 1) * scale;
      if (random.chance(0.3)) value = std::round(value);
      values.push_back(static_cast<float>(value));
    }
    PoHistogram* kit = nullptr;
    double low = 0;
    double high = 0;
    bool isPercentage = false;
    if (isMultiple) {
      auto* bars = new PoMultipleHistogram;
      kit = bars;
      bars->value.setValues(0, num, values.data());
      bars->numRows = numRows;
      bars->representation = random.index(3);
      bars->histogPath = random.index(2);
      isPercentage = bars->representation.getValue() == PoMultipleHistogram::PERCENTAGE;
      for (int k = 0; k < num; ++k) bars->columnName.set1Value(k, randomName(random).c_str());
      for (int k = 0; k < numRows; ++k) bars->rowName.set1Value(k, randomName(random).c_str());
    } else {
      auto* bars = new PoSingleHistogram;
      kit = bars;
      bars->value.setValues(0, num, values.data());
      for (int k = 0; k < num; ++k) bars->name.set1Value(k, randomName(random).c_str());
    }
    for (const float value : values) (value < 0 ? low : high) += value;
    if (isPercentage) {
      low = 0;
      high = 1;
    }
    if (high == low) high = low + 1;
    kit->type = isAlongX ? PoHistogram::X : PoHistogram::Y;
    kit->end = static_cast<float>(num);
    kit->barSpaceValue = static_cast<float>(random.uniform(0, 0.6));
    const float across[] = {static_cast<float>(low), static_cast<float>(high)};
    if (isAlongX) {
      domain->min.setValue(0, across[0], 0);
      domain->max.setValue(static_cast<float>(num), across[1], 1);
    } else {
      domain->min.setValue(across[0], 0, 0);
      domain->max.setValue(across[1], static_cast<float>(num), 1);
    }
    domain->transformType = PbDomain::TRANSFORM_01;
    scene->addChild(kit);

    const std::vector<SceneText> texts = textsOf(scene);
    numOverlapping += countOverlaps(texts, 1e-4f) > 0;
    for (const SceneText& text : texts) {
      // The domain is the unit square here, and a third of it is free for texts round it.
      numOutside += !text.isInside(SbVec2f(-0.341f, -0.341f), SbVec2f(1.341f, 1.341f), 1e-3f);
    }
    // Each value that is shown in a row of bars reads as the value within half a unit of its last digit.
    if (!isMultiple) {
      for (const SceneText& text : texts) {
        char* end = nullptr;
        const double read = std::strtod(text.text.c_str(), &end);
        if (end == text.text.c_str() || *end != 0 || text.text == "2024") continue;
        const std::size_t point = text.text.find('.');
        const std::size_t exponent = text.text.find('E');
        const int power = exponent == std::string::npos ? 0 : std::stoi(text.text.substr(exponent + 1));
        const std::size_t last = exponent == std::string::npos ? text.text.size() : exponent;
        const int decimals = point == std::string::npos ? 0 : static_cast<int>(last - point - 1);
        const double half = 0.5001 * std::pow(10.0, power - decimals);
        bool isFound = false;
        for (const float value : values) isFound = isFound || std::abs(read - value) <= half + 1e-6 * std::abs(read);
        numWrong += !isFound;
      }
    }
    numWanted += 2L * num;
    numShown += static_cast<long>(texts.size());
    scene->unref();
  }
  summary["histograms"] = numCases;
  summary["histograms_with_overlapping_texts"] = numOverlapping;
  summary["texts_outside_the_frame"] = numOutside;
  summary["values_that_read_wrong"] = numWrong;
  summary["texts_shown"] = numShown;
  summary["names_and_values_of_all_bars"] = numWanted;
  return numOverlapping == 0 && numOutside == 0 && numWrong == 0;
}

const QualityRun histograms("histograms", "bar charts with names and values", runHistograms);

}  // namespace
