#include <cmath>
#include <string>

#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PoDomain.h>
#include <Ormelle/PoPieChart2D.h>
#include <Ormelle/PoPieChart3D.h>

#include "Quality.h"
#include "SceneTexts.h"

namespace {

std::string randomName(QualityRandom& random) {
  static const char* const kNames[] = {
      "A",       "Pacific", "New England", "East North Central", "Mountain", "Others and the rest",
      "Élevage", "3rd",     "R & D",       "Iron ore",           "Tin",      "Miscellaneous"};
  return kNames[random.index(12)];
}

/// Values of all kinds: alike, of several orders of magnitude, with zeros.
float randomValue(QualityRandom& random, int kind) {
  if (kind == 0) return static_cast<float>(random.uniform(1, 10));
  if (kind == 1) return static_cast<float>(std::pow(10.0, random.uniform(-2, 3)));
  return random.chance(0.2) ? 0 : static_cast<float>(random.index(50));
}

/// Pies with random slices, pieces of annotations and places, in a domain that holds them.
bool runPies(const QualityOptions& options, nlohmann::json& summary) {
  const int numCases = options.cases(10000);
  int numOverlapping = 0;
  int numOverlaps = 0;
  int numOutside = 0;
  int numWithAHundred = 0;
  int numWithPercents = 0;
  long numWanted = 0;
  long numShown = 0;
  for (int i = 0; i < numCases; ++i) {
    QualityRandom random(93, i);
    auto* scene = new SoSeparator;
    scene->ref();
    auto* domain = new PoDomain;
    scene->addChild(domain);
    domain->min.setValue(-1.3f, -1.3f, 0);
    domain->max.setValue(1.3f, 1.3f, 2.6f);
    PoPieChart* pie = nullptr;
    if (random.chance(0.5)) {
      auto* flat = new PoPieChart2D;
      flat->radius = static_cast<float>(random.uniform(0.4, 0.8));
      pie = flat;
    } else {
      auto* solid = new PoPieChart3D;
      solid->radius = static_cast<float>(random.uniform(0.4, 0.8));
      pie = solid;
    }
    scene->addChild(pie);
    const int num = 1 + random.index(24);
    const int kind = random.index(3);
    int numPositive = 0;
    for (int k = 0; k < num; ++k) {
      pie->sliceValue.set1Value(k, randomValue(random, kind));
      numPositive += pie->sliceValue[k] > 0;
      pie->sliceText.set1Value(k, randomName(random).c_str());
    }
    if (random.chance(0.3)) pie->setSliceToTranslate(random.index(num), static_cast<float>(random.uniform(0, 0.2)));
    pie->sliceGroupActive = random.chance(0.3);
    pie->sliceGroupFlagMin = PoPieChart::PERCENTAGE;
    pie->sliceGroupMinValue = 4;
    pie->intAnnotPosition = random.index(2);
    pie->extAnnotPosition = random.index(5);
    pie->extAnnotAlignment = random.index(5);
    pie->intAnnotPercentVisibility = PoAxis::VISIBILITY_ON;
    const bool hasValues = random.chance(0.5);
    pie->extAnnotTextVisibility = PoAxis::VISIBILITY_ON;
    if (hasValues) pie->extAnnotValueVisibility = PoAxis::VISIBILITY_ON;

    const std::vector<SceneText> texts = textsOf(scene);
    const int overlaps = countOverlaps(texts, 1e-4f);
    numOverlapping += overlaps > 0;
    numOverlaps += overlaps;
    int percent = 0;
    int numPercents = 0;
    for (const SceneText& text : texts) {
      numOutside += !text.isInside(SbVec2f(-1.3f, -1.3f), SbVec2f(1.3f, 1.3f), 1e-4f);
      if (text.text.back() != '%') continue;
      percent += std::stoi(text.text);
      ++numPercents;
    }
    // What is shown must sum to 100 where no annotation was left out.
    if (numPercents == numPositive && numPositive > 0 && !pie->sliceGroupActive.getValue()) {
      ++numWithPercents;
      numWithAHundred += percent == 100;
    }
    numWanted += static_cast<long>(numPositive) * (hasValues ? 3 : 2);
    numShown += static_cast<long>(texts.size());
    scene->unref();
  }
  summary["pies"] = numCases;
  summary["pies_with_overlapping_texts"] = numOverlapping;
  summary["overlapping_texts"] = numOverlaps;
  summary["texts_outside_the_domain"] = numOutside;
  summary["texts_shown"] = numShown;
  summary["texts_left_out_or_grouped"] = numWanted - numShown;
  summary["pies_with_all_percentages"] = numWithPercents;
  summary["of_them_that_sum_to_100"] = numWithAHundred;
  return numOverlapping == 0 && numOutside == 0 && numWithAHundred == numWithPercents;
}

const QualityRun pies("pies", "pies with inner and outer annotations", runPies);

}  // namespace
