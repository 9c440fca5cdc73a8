// Random value legends: whether their texts keep apart and within the frame, and whether their colours are the
// mapping's.

#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoPrimitiveVertex.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PbNonLinearDataMapping2.h>
#include <Ormelle/PoDomain.h>
#include <Ormelle/PoLinearValueLegend.h>
#include <Ormelle/PoNonLinearValueLegend1.h>
#include <Ormelle/PoNonLinearValueLegend2.h>
#include <Ormelle/PoNonLinearValueLegend3.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "Quality.h"
#include "SceneTexts.h"

namespace {

SbColor randomColor(QualityRandom& random) {
  return SbColor(static_cast<float>(random.uniform(0, 1)), static_cast<float>(random.uniform(0, 1)),
                 static_cast<float>(random.uniform(0, 1)));
}

/// A legend of any class in any rectangle, with a mapping and sometimes isovalues of its own.
class RandomLegend {
 public:
  explicit RandomLegend(int index) {
    QualityRandom random(81, index);
    chooseMapping(random);
    m_scene = new SoSeparator;
    m_scene->ref();
    if (random.chance(0.3)) {
      auto* domain = new PoDomain;
      m_scene->addChild(domain);
      domain->max.setValue(static_cast<float>(std::exp(random.uniform(-2, 2))),
                           static_cast<float>(std::exp(random.uniform(-2, 2))), 1);
      m_stretch = domain->max.getValue()[0] / domain->max.getValue()[1];
    }
    const float width = static_cast<float>(std::exp(random.uniform(-2, 1)));
    const float height = static_cast<float>(std::exp(random.uniform(-2, 1))) / m_stretch;
    const SbVec2f low(static_cast<float>(random.uniform(-3, 3)), static_cast<float>(random.uniform(-3, 3)));
    m_min = low;
    m_max = low + SbVec2f(width, height);
    const bool isReverted = random.chance(0.3);
    const SbVec2f start(m_min[0], isReverted ? m_max[1] : m_min[1]);
    const SbVec2f end(m_max[0], isReverted ? m_min[1] : m_max[1]);
    switch (random.index(4)) {
      case 0: {
        auto* linear =
            new PoLinearValueLegend(start, end, static_cast<PoLinearValueLegend::ValueDistribution>(random.index(3)));
        linear->lowerUpperBoxes = random.chance(0.6);
        linear->maxValueSize = static_cast<float>(random.uniform(0.2, 0.9));
        m_legend = linear;
        break;
      }
      case 1:
        m_legend = new PoNonLinearValueLegend1(start, end);
        break;
      case 2:
        m_legend = new PoNonLinearValueLegend2(start, end);
        break;
      default:
        m_legend = new PoNonLinearValueLegend3(start, end);
    }
    m_scene->addChild(m_legend);
    m_legend->setDataMapping(m_mapping.get());
    if (m_isovalues) m_legend->setIsovaluesList(m_isovalues.get());
    style(random);
  }
  ~RandomLegend() { m_scene->unref(); }
  RandomLegend(const RandomLegend&) = delete;
  RandomLegend& operator=(const RandomLegend&) = delete;

  SoSeparator* scene() const { return m_scene; }
  /// As the scene is drawn.
  SbVec2f min() const { return {m_min[0], m_min[1] * m_stretch}; }
  SbVec2f max() const { return {m_max[0], m_max[1] * m_stretch}; }

 private:
  void chooseMapping(QualityRandom& random) {
    const double scale = std::pow(10.0, random.uniform(-7, 7)),
                 offset = random.chance(0.5) ? 0 : random.uniform(-20, 20);
    const auto value = [&](double v) { return static_cast<float>((v + offset) * scale); };
    if (random.chance(0.6)) {
      auto linear = std::make_unique<PbLinearDataMapping>();
      linear->setValues(value(0), randomColor(random), value(random.uniform(0.5, 10)), randomColor(random));
      m_mapping = std::move(linear);
    } else {
      std::vector<float> levels;
      std::vector<SbColor> colors;
      const int num = 1 + random.index(15);
      for (int i = 0; i < num; ++i) {
        levels.push_back(value(i + random.uniform(0, 0.9)));
        colors.push_back(randomColor(random));
      }
      colors.push_back(randomColor(random));
      auto table = std::make_unique<PbNonLinearDataMapping2>();
      table->setValues(static_cast<PbNonLinearDataMapping2::Type>(random.index(2)), num, levels.data(), colors.data());
      m_mapping = std::move(table);
    }
    if (random.chance(0.2)) {
      m_mapping->setMinThreshold(value(1), randomColor(random));
      m_mapping->setMaxThreshold(value(4), randomColor(random));
      m_mapping->enableThresholds(1, 1);
    }
    if (random.chance(0.4)) {
      std::vector<float> levels;
      for (int i = 1 + random.index(random.chance(0.1) ? 200 : 25); i > 0; --i)
        levels.push_back(value(random.chance(0.3) ? random.uniform(0, 10) : i * 0.5));
      m_isovalues = std::make_unique<PbIsovaluesList>();
      m_isovalues->setIrregularIsoList(static_cast<int>(levels.size()), levels.data());
    }
  }

  void style(QualityRandom& random) {
    m_legend->valuePosition = random.index(4);
    m_legend->numColumns = static_cast<unsigned short>(1 + (random.chance(0.6) ? 0 : random.index(6)));
    m_legend->incrementType = random.index(2);
    m_legend->boxRatio = static_cast<float>(std::exp(random.uniform(-0.7, 1.4)));
    if (random.chance(0.5)) {
      m_legend->titleVisibility = PoLegend::VISIBILITY_ON;
      m_legend->titlePosition = random.index(4);
      m_legend->titlePath = random.index(4);
      m_legend->titleString = random.chance(0.5) ? "Depth" : "Temperature of the water near the ground";
      if (random.chance(0.5)) m_legend->titleFontSize = static_cast<float>(random.uniform(0.01, 0.5));
    }
    if (random.chance(0.3)) {
      m_legend->valueAddStringVisibility = TRUE;
      m_legend->valueAddString = " m/s";
    }
    if (random.chance(0.2)) m_legend->periodValue = static_cast<unsigned short>(random.index(4));
  }

  std::unique_ptr<PbDataMapping> m_mapping;
  std::unique_ptr<PbIsovaluesList> m_isovalues;
  SoSeparator* m_scene = nullptr;
  PoAutoValueLegend* m_legend = nullptr;
  SbVec2f m_min, m_max;
  float m_stretch = 1;
};

/// Coloured faces that reach out of a rectangle.
struct Faces {
  SbVec2f min, max;
  long faces = 0, outside = 0;

  static void see(void* data, SoCallbackAction* action, const SoPrimitiveVertex* a, const SoPrimitiveVertex* b,
                  const SoPrimitiveVertex* c) {
    auto* seen = static_cast<Faces*>(data);
    ++seen->faces;
    const float tolerance = 1e-4F * std::max(seen->max[0] - seen->min[0], seen->max[1] - seen->min[1]);
    bool isOutside = false;
    for (const SoPrimitiveVertex* vertex : {a, b, c}) {
      SbVec3f point;
      action->getModelMatrix().multVecMatrix(vertex->getPoint(), point);
      for (int axis = 0; axis < 2; ++axis)
        isOutside =
            isOutside || !(point[axis] >= seen->min[axis] - tolerance && point[axis] <= seen->max[axis] + tolerance);
    }
    seen->outside += isOutside;
  }
};

bool runLegends(const QualityOptions& options, nlohmann::json& summary) {
  const int numCases = options.cases(10000);
  int overlapping = 0, outside = 0, facesOutside = 0, withoutText = 0, tiny = 0;
  long texts = 0, overlaps = 0, faces = 0;
  std::map<std::string, std::vector<int>> examples;
  const auto note = [&](const char* kind, int& counter, int index) {
    ++counter;
    if (examples[kind].size() < 5) examples[kind].push_back(index);
  };
  for (int i = 0; i < numCases; ++i) {
    const RandomLegend random(i);
    const std::vector<SceneText> all = textsOf(random.scene());
    const float size = std::max(random.max()[0] - random.min()[0], random.max()[1] - random.min()[1]);
    texts += static_cast<long>(all.size());
    const int numOverlaps = countOverlaps(all, 1e-4F * size);
    overlaps += numOverlaps;
    if (numOverlaps > 0) note("overlapping", overlapping, i);
    const bool isInside = std::all_of(all.begin(), all.end(), [&](const SceneText& text) {
      return text.isInside(random.min(), random.max(), 1e-3F * size);
    });
    if (!isInside) note("outside", outside, i);
    if (all.empty()) note("without text", withoutText, i);
    if (std::any_of(all.begin(), all.end(), [&](const SceneText& text) { return text.height() < 0.004F * size; }))
      note("tiny", tiny, i);
    Faces seen{random.min(), random.max()};
    SoCallbackAction action(SbViewportRegion(100, 100));
    action.addTriangleCallback(SoFaceSet::getClassTypeId(), Faces::see, &seen);
    action.apply(random.scene());
    faces += seen.faces;
    if (seen.outside > 0) note("faces outside", facesOutside, i);
  }
  summary = {{"legends", numCases},
             {"texts", texts},
             {"legends_with_overlapping_texts", overlapping},
             {"overlapping_texts", overlaps},
             {"legends_with_a_text_outside_the_frame", outside},
             {"legends_with_a_box_outside_the_frame", facesOutside},
             {"legends_without_a_text", withoutText},
             {"legends_with_texts_below_0.004_of_their_size", tiny},
             {"triangles", faces},
             {"examples", examples}};
  return overlapping == 0 && outside == 0 && facesOutside == 0;
}

const QualityRun legends("legends", "value legends of all four classes", runLegends);

}  // namespace
