#include "quillane/contour/PiContouringFilled.h"

#include <Ormelle/PbDataMapping.h>

#include "quillane/contour/PiBandPolygons.h"
#include "quillane/contour/PiContourSurface.h"
#include "quillane/contour/PiFilledWork.h"

namespace {

/// The values that are shown: those strictly between thresholds behind which parts are left out.
struct ShownValues {
  explicit ShownValues(const PbDataMapping& mapping) {
    int isMinEnabled, isMaxEnabled;
    mapping.thresholdsEnabled(isMinEnabled, isMaxEnabled);
    float value, transparency;
    if (isMinEnabled) {
      const SbColor* color = mapping.getMinRGBThreshold(value, transparency);
      if (isLeftOut(mapping, color, transparency)) min = value, isLimited = true;
    }
    if (isMaxEnabled) {
      const SbColor* color = mapping.getMaxRGBThreshold(value, transparency);
      if (isLeftOut(mapping, color, transparency)) max = value, isLimited = true;
    }
  }
  static bool isLeftOut(const PbDataMapping& mapping, const SbColor* color, float transparency) {
    if (!color) transparency = 1;
    if (color && !mapping.isTransparencyEnabled()) transparency = 0;
    return transparency >= mapping.getTransparencyValueDeletedParts();
  }

  bool isLimited = false;
  float min = -std::numeric_limits<float>::infinity();
  float max = std::numeric_limits<float>::infinity();
};

void hideNodesBehindThresholds(const ShownValues& shown, const float* values, PiGrowBuffer<int>& bands) {
  for (std::size_t node = 0; node < bands.size(); ++node)
    if (bands[node] >= 0 && !(values[node] > shown.min && values[node] < shown.max)) bands[node] = kHiddenBand;
}

}  // namespace

PiContouringFilled::PiContouringFilled() : m_work(std::make_unique<Work>()) {}
PiContouringFilled::~PiContouringFilled() = default;

void PiContouringFilled::cut(const float* values) {
  PiContourScratch& scratch = m_work->scratch;
  PiBandPolygons& polygons = m_work->polygons;
  scratch.cuts.clear();
  std::visit(
      [&](const auto& view) {
        const int numNodes = values ? view.numNodes() : 0;
        polygons.start(numNodes, numNodes > 0 ? view.numCells() : 0, values, scratch.levels, scratch.cuts);
        if (numNodes == 0) return;
        scratch.levels.findBands(m_list, values, numNodes, scratch.bands);
        hideNonFiniteNodes(view, scratch.bands.data());
        if (m_mapping) {
          const ShownValues shown(*m_mapping);
          if (shown.isLimited) hideNodesBehindThresholds(shown, values, scratch.bands);
        }
        PiContourWalk(view, values, scratch, polygons).run();
      },
      m_surface->view);
}

std::span<const int> PiContouringFilled::coordIndex() const {
  return {m_work->polygons.coordIndex.data(), m_work->polygons.coordIndex.size()};
}
std::span<const int> PiContouringFilled::lowerIsovalues() const {
  return {m_work->polygons.lowerIsovalues.data(), m_work->polygons.lowerIsovalues.size()};
}
std::span<const SbVec3f> PiContouringFilled::cutPoints() const {
  return {m_work->scratch.cuts.points(), static_cast<std::size_t>(m_work->scratch.cuts.num())};
}

std::size_t PiContouringFilled::memorySize() const {
  return PiContouring::memorySize() + m_work->scratch.memorySize() + m_work->polygons.memorySize();
}
