// What charts ask of a one-dimensional mesh: the curve of a set of its values, with its colours.

#include <Inventor/SbVec2f.h>
#include <Inventor/misc/SoState.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Ormelle/PbArrayOfFloat.h>
#include <Ormelle/PbMesh1D.h>
#include <Ormelle/PoMesh1DFilter.h>
#include <Ormelle/PoMesh1DFilterElement.h>
#include <Ormelle/PoMesh1DHintsElement.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>
#include <vector>

#include "graph/chart/PiCurveColoring.h"
#include "graph/chart/PiCurvePath.h"
#include "graph/chart/PiCurveSearch.h"
#include "graph/chart/PiNewArray.h"
#include "quillane/mesh/PiFiniteBox.h"
#include "quillane/mesh/PiNodeValues.h"

namespace {

constexpr int kMaxPlaces = 1 << 24;

/// The state as the elements want it: reading them notes in the caches of the traversal that they were read.
SoState* toRead(const SoState* state) { return const_cast<SoState*>(state); }

/// A curve as `getXYGeometry` gives it, freed unless it is handed over.
class DrawnCurve {
 public:
  DrawnCurve(const PbMesh1D& mesh, const PoChart* chart, const SoState* state, int wantsIndex) {
    float *x, *y;
    int* index;
    mesh.getXYGeometry(chart, state, m_num, x, y, m_material, wantsIndex, index);
    m_x = PiNewArray<float>(x, static_cast<size_t>(m_num));
    m_y = PiNewArray<float>(y, static_cast<size_t>(m_num));
    m_index = PiNewArray<int>(index, index ? static_cast<size_t>(mesh.getNumNodes()) : 0);
    if (m_material) m_material->ref();
  }
  ~DrawnCurve() {
    if (m_material) m_material->unref();
  }
  DrawnCurve(const DrawnCurve&) = delete;
  DrawnCurve& operator=(const DrawnCurve&) = delete;

  void handOver(int& num, float*& x, float*& y, SoMaterial*& material, int*& index) {
    num = m_num;
    x = m_x.release();
    y = m_y.release();
    index = m_index.release();
    material = std::exchange(m_material, nullptr);
    if (material) material->unrefNoDelete();
  }

  std::span<const float> x() const { return m_x.span(); }
  std::span<const float> y() const { return m_y.span(); }
  const SoMaterial* material() const { return m_material; }
  std::span<const int> index() const { return m_index.span(); }

 private:
  int m_num = 0;
  PiNewArray<float> m_x, m_y;
  PiNewArray<int> m_index;
  SoMaterial* m_material = nullptr;
};

/// The points of a curve with points between them.
struct CutCurve {
  PiNewArray<float> x, y;
  std::vector<PiMaterialMix> mixes;  ///< of the entries of the curve's material, if it has one
  PiNewArray<int> index;             ///< of the nodes, if the curve has one
  PiNewArray<int> added;             ///< indices of the points added

  CutCurve(const DrawnCurve& curve, std::span<const PiCurvePlace> places, bool isPerPart)
      : x(curve.x().size() + places.size()),
        y(curve.x().size() + places.size()),
        index(curve.index().size()),
        added(places.size()),
        m_hasMaterial(curve.material() != nullptr) {
    if (m_hasMaterial) mixes.reserve(curve.x().size() + places.size());
    size_t former = 0;  // points of the curve, already copied
    for (const PiCurvePlace& place : places) {
      const int end = place.segment + 1;
      copy(curve, former, static_cast<size_t>(end));
      former = static_cast<size_t>(end);
      added.add(static_cast<int>(x.num()));
      add(place.x, place.y, isPerPart ? PiMaterialMix::of(end) : PiMaterialMix{place.segment, end, place.t});
    }
    copy(curve, former, curve.x().size());
    for (const int point : curve.index()) {
      const auto* next = std::lower_bound(places.data(), places.data() + places.size(), point,
                                          [](const PiCurvePlace& place, int p) { return place.segment < p; });
      index.add(point + static_cast<int>(next - places.data()));
    }
  }

 private:
  void copy(const DrawnCurve& curve, size_t begin, size_t end) {
    for (size_t p = begin; p < end; ++p) add(curve.x()[p], curve.y()[p], PiMaterialMix::of(static_cast<int>(p)));
  }
  void add(float pointX, float pointY, const PiMaterialMix& mix) {
    x.add(pointX);
    y.add(pointY);
    if (m_hasMaterial) mixes.push_back(mix);
  }

  bool m_hasMaterial;
};

/// The nodes that a filter of indices picks; all without a filter.
std::vector<int> pickNodes(const PoMesh1DFilter* filter, int numNodes) {
  std::vector<int> nodes;
  if (!filter) {
    nodes.resize(static_cast<size_t>(numNodes));
    std::iota(nodes.begin(), nodes.end(), 0);
    return nodes;
  }
  PbArrayOfInt indices;
  filter->getIndices(numNodes, indices);
  nodes.reserve(static_cast<size_t>(indices.getNum()));
  for (int i = 0; i < indices.getNum(); ++i)
    if (indices.get(i) >= 0 && indices.get(i) < numNodes) nodes.push_back(indices.get(i));
  return nodes;
}

std::vector<PiCurvePlace> pickPlaces(const PoMesh1DFilter& filter, const DrawnCurve& curve) {
  const PiCurveSearch search(curve.x(), curve.y(), filter.getAxis() == PoMesh1DFilter::X);
  const PiFiniteRange range = search.range();
  if (range.isEmpty()) return {};
  PbArrayOfFloat coordinates;
  filter.getCoordinates(range.low, range.high, coordinates);
  return search.find({coordinates.get(), static_cast<size_t>(coordinates.getNum())}, kMaxPlaces);
}

/// The unit vector along a segment that isn't a point.
SbVec2f directionOf(const DrawnCurve& curve, size_t segment) {
  const double dx = static_cast<double>(curve.x()[segment + 1]) - curve.x()[segment];
  const double dy = static_cast<double>(curve.y()[segment + 1]) - curve.y()[segment];
  const double length = std::sqrt(dx * dx + dy * dy);
  return SbVec2f(static_cast<float>(dx / length), static_cast<float>(dy / length));
}

}  // namespace

void PbMesh1D::getXYGeometry(const PoChart* chart, const SoState* state, int& num, float*& x, float*& y,
                             SoMaterial*& material, int want_index, int*& index) const {
  num = 0;
  x = y = nullptr;
  material = nullptr;
  index = nullptr;
  const float* values = chart ? findNodeValues(*this, chart->yValuesIndex.getValue()) : nullptr;
  if (!values || isEmpty()) return;

  const auto numNodes = static_cast<size_t>(getNumNodes());
  std::vector<float> nodeX(numNodes);
  for (size_t n = 0; n < numNodes; ++n) nodeX[n] = getXCoord(static_cast<int>(n));
  const PiCurveColoring coloring(*chart, toRead(state), *this);
  const PoMesh1DHints::GeomInterpretation interpretation =
      state ? PoMesh1DHintsElement::get(toRead(state)) : PoMesh1DHints::AS_IS;
  const bool isMixed = coloring.isColored() && interpretation != PoMesh1DHints::AS_IS;
  PiCurvePath path =
      PiCurvePath::make(interpretation, nodeX, {values, numNodes},
                        {.nodePoints = want_index != 0, .mixes = isMixed, .isPerPart = coloring.isPerPart()});
  num = static_cast<int>(path.x.num());
  x = path.x.release();
  y = path.y.release();
  index = path.nodePoints.release();
  material = isMixed ? coloring.makeMaterial(path.mixes) : coloring.makeMaterial();
}

void PbMesh1D::getFilteredXYGeometry(const PoChart* chart, const SoState* state, int& num, float*& x, float*& y,
                                     SoMaterial*& material, float*& param_a, float*& param_b) const {
  const bool wantsPositions = std::exchange(param_a, nullptr) != nullptr;
  const bool wantsDirections = std::exchange(param_b, nullptr) != nullptr;
  num = 0;
  x = y = nullptr;
  material = nullptr;
  const float* values = chart ? findNodeValues(*this, chart->yValuesIndex.getValue()) : nullptr;
  if (!values || isEmpty()) return;

  PiNewArray<float> pointX, pointY;
  const PoMesh1DFilter* filter = state ? PoMesh1DFilterElement::get(toRead(state)) : nullptr;
  if (!filter || filter->isIndexFilter()) {
    const std::vector<int> nodes = pickNodes(filter, getNumNodes());
    pointX = PiNewArray<float>(nodes.size());
    pointY = PiNewArray<float>(nodes.size());
    for (const int node : nodes) {
      pointX.add(getXCoord(node));
      pointY.add(values[node]);
    }
    material = PiCurveColoring(*chart, toRead(state), *this).makeMaterial(nodes);
  } else {
    const DrawnCurve curve(*this, chart, state, 0);
    const std::vector<PiCurvePlace> places = pickPlaces(*filter, curve);
    pointX = PiNewArray<float>(places.size());
    pointY = PiNewArray<float>(places.size());
    std::vector<PiMaterialMix> mixes;
    PiNewArray<float> positions(wantsPositions ? places.size() : 0);
    PiNewArray<float> directions(wantsDirections ? 2 * places.size() : 0);
    for (const PiCurvePlace& place : places) {
      pointX.add(place.x);
      pointY.add(place.y);
      if (curve.material()) mixes.push_back({place.segment, place.segment + 1, place.t});
      if (wantsPositions) positions.add(place.t);
      if (!wantsDirections) continue;
      const SbVec2f direction = directionOf(curve, static_cast<size_t>(place.segment));
      directions.add(direction[0]);
      directions.add(direction[1]);
    }
    if (!mixes.empty()) material = mixMaterial(*curve.material(), mixes);
    param_a = positions.release();
    param_b = directions.release();
  }
  num = static_cast<int>(pointX.num());
  x = pointX.release();
  y = pointY.release();
}

void PbMesh1D::getFilteredXYGeometry(const PoChart* chart, const SoState* state, int& num, float*& x, float*& y,
                                     SoMaterial*& material, float*& param_a) const {
  float* unwanted = nullptr;
  getFilteredXYGeometry(chart, state, num, x, y, material, param_a, unwanted);
}

void PbMesh1D::getFilteredXYGeometry(const PoChart* chart, const SoState* state, int& num, float*& x, float*& y,
                                     SoMaterial*& material) const {
  float *unwantedA = nullptr, *unwantedB = nullptr;
  getFilteredXYGeometry(chart, state, num, x, y, material, unwantedA, unwantedB);
}

void PbMesh1D::getGeometryInterThreshold(const PoChart* chart, const SoState* state, int axis, float threshold,
                                         int& num, float*& x, float*& y, SoMaterial*& material, int want_index,
                                         int*& index, int& num_inter, int*& inter_index) const {
  num_inter = 0;
  inter_index = nullptr;
  DrawnCurve curve(*this, chart, state, want_index);
  const PiCurveSearch search(curve.x(), curve.y(), axis == 0);
  const std::vector<PiCurvePlace> crossings = search.findCrossings(threshold);
  if (crossings.empty()) {
    curve.handOver(num, x, y, material, index);
    return;
  }
  const bool isPerPart = chart && chart->getColorBinding() == PoChart::PER_PART;
  CutCurve cut(curve, crossings, isPerPart);
  num = static_cast<int>(cut.x.num());
  x = cut.x.release();
  y = cut.y.release();
  material = curve.material() ? mixMaterial(*curve.material(), cut.mixes) : nullptr;
  index = cut.index.release();
  num_inter = static_cast<int>(cut.added.num());
  inter_index = cut.added.release();
}
