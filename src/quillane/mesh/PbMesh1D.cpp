#include <Inventor/misc/SoState.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Ormelle/PbArrayOfFloat.h>
#include <Ormelle/PbMesh1D.h>
#include <Ormelle/PoMesh1DFilter.h>
#include <Ormelle/PoMesh1DFilterElement.h>
#include <Ormelle/PoMesh1DHintsElement.h>

#include <algorithm>
#include <memory>
#include <numeric>
#include <utility>
#include <vector>

#include "quillane/mesh/PiCurveColoring.h"
#include "quillane/mesh/PiCurvePath.h"
#include "quillane/mesh/PiCurveSearch.h"
#include "quillane/mesh/PiFiniteBox.h"
#include "quillane/mesh/PiNodeValues.h"

namespace {

constexpr int kMaxPlaces = 1 << 24;

template <class T>
T* newArray(const std::vector<T>& from) {
  if (from.empty()) return nullptr;
  T* array = new T[from.size()];
  std::copy(from.begin(), from.end(), array);
  return array;
}

/// The state as the elements want it: reading them notes in the caches of the traversal that they were read.
SoState* toRead(const SoState* state) { return const_cast<SoState*>(state); }

/// A curve as `getXYGeometry` gives it, freed unless it is handed over.
class DrawnCurve {
 public:
  DrawnCurve(const PbMesh1D& mesh, const PoChart* chart, const SoState* state, int wantsIndex) {
    float *x, *y;
    int* index;
    mesh.getXYGeometry(chart, state, m_num, x, y, m_material, wantsIndex, index);
    m_x.reset(x);
    m_y.reset(y);
    m_index.reset(index);
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

  std::span<const float> x() const { return {m_x.get(), static_cast<size_t>(m_num)}; }
  std::span<const float> y() const { return {m_y.get(), static_cast<size_t>(m_num)}; }
  const SoMaterial* material() const { return m_material; }
  const int* index() const { return m_index.get(); }

 private:
  int m_num = 0;
  std::unique_ptr<float[]> m_x, m_y;
  std::unique_ptr<int[]> m_index;
  SoMaterial* m_material = nullptr;
};

/// The points of a curve with points between them.
struct CutCurve {
  std::vector<float> x, y;
  std::vector<PiMaterialMix> mixes;
  std::vector<int> newIndices;    ///< of the points that were there
  std::vector<int> addedIndices;  ///< of those added

  CutCurve(const DrawnCurve& curve, std::span<const PiCurvePlace> places, bool isPerPart) {
    auto place = places.begin();
    const std::span<const float> oldX = curve.x(), oldY = curve.y();
    for (int p = 0; p < static_cast<int>(oldX.size()); ++p) {
      for (; place != places.end() && place->segment < p; ++place) {
        addedIndices.push_back(static_cast<int>(x.size()));
        add(place->x, place->y, isPerPart ? PiMaterialMix::of(p) : PiMaterialMix{p - 1, p, place->t});
      }
      newIndices.push_back(static_cast<int>(x.size()));
      add(oldX[static_cast<size_t>(p)], oldY[static_cast<size_t>(p)], PiMaterialMix::of(p));
    }
  }

 private:
  void add(float pointX, float pointY, const PiMaterialMix& mix) {
    x.push_back(pointX);
    y.push_back(pointY);
    mixes.push_back(mix);
  }
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

}  // namespace

PbMesh1D::PbMesh1D() : PbMesh(1) {}
PbMesh1D::PbMesh1D(const PbMesh1D&) = default;
PbMesh1D& PbMesh1D::operator=(const PbMesh1D&) = default;
PbMesh1D::~PbMesh1D() = default;

// --- curves ---------------------------------------------------------------------------------------------------------

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
  const PiCurvePath path = PiCurvePath::make(
      state ? PoMesh1DHintsElement::get(toRead(state)) : PoMesh1DHints::AS_IS, nodeX, {values, numNodes},
      {.nodePoints = want_index != 0, .mixes = coloring.isColored(), .isPerPart = coloring.isPerPart()});
  num = static_cast<int>(path.x.size());
  x = newArray(path.x);
  y = newArray(path.y);
  index = newArray(path.nodePoints);
  material = coloring.makeMaterial(path.mixes);
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

  std::vector<float> pointX, pointY;
  const PoMesh1DFilter* filter = state ? PoMesh1DFilterElement::get(toRead(state)) : nullptr;
  if (!filter || filter->isIndexFilter()) {
    const std::vector<int> nodes = pickNodes(filter, getNumNodes());
    for (const int node : nodes) {
      pointX.push_back(getXCoord(node));
      pointY.push_back(values[node]);
    }
    material = PiCurveColoring(*chart, toRead(state), *this).makeMaterial(nodes);
  } else {
    const DrawnCurve curve(*this, chart, state, 0);
    const std::vector<PiCurvePlace> places = pickPlaces(*filter, curve);
    std::vector<PiMaterialMix> mixes;
    std::vector<float> positions, directions;
    for (const PiCurvePlace& place : places) {
      pointX.push_back(place.x);
      pointY.push_back(place.y);
      if (curve.material()) mixes.push_back({place.segment, place.segment + 1, place.t});
      if (wantsPositions) positions.push_back(place.t);
      if (wantsDirections) {
        const auto s = static_cast<size_t>(place.segment);
        const double dx = static_cast<double>(curve.x()[s + 1]) - curve.x()[s];
        const double dy = static_cast<double>(curve.y()[s + 1]) - curve.y()[s];
        const double length = std::sqrt(dx * dx + dy * dy);
        directions.push_back(static_cast<float>(dx / length));
        directions.push_back(static_cast<float>(dy / length));
      }
    }
    if (!mixes.empty()) material = mixMaterial(*curve.material(), mixes);
    param_a = newArray(positions);
    param_b = newArray(directions);
  }
  num = static_cast<int>(pointX.size());
  x = newArray(pointX);
  y = newArray(pointY);
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
  const CutCurve cut(curve, crossings, isPerPart);
  num = static_cast<int>(cut.x.size());
  x = newArray(cut.x);
  y = newArray(cut.y);
  material = curve.material() ? mixMaterial(*curve.material(), cut.mixes) : nullptr;
  num_inter = static_cast<int>(cut.addedIndices.size());
  inter_index = newArray(cut.addedIndices);
  index = nullptr;
  if (!curve.index()) return;
  std::vector<int> newIndex(curve.index(), curve.index() + getNumNodes());
  for (int& point : newIndex) point = cut.newIndices[static_cast<size_t>(point)];
  index = newArray(newIndex);
}

// --- mesh -----------------------------------------------------------------------------------------------------------

SbVec3f PbMesh1D::getNodeCoord(int node) const { return SbVec3f(getXCoord(node), 0, 0); }

void PbMesh1D::getNodeOwnerCellsInd(int, PbArrayOfInt& owner_cells) const { owner_cells.empty(); }

const PbCell* PbMesh1D::getCell(int) const { return nullptr; }
float PbMesh1D::getVolume() const { return 0; }
float PbMesh1D::getArea() const { return 0; }

const PbCell* PbMesh1D::findContainingCell(const SbVec3f&, float, SbVec3f&) const { return nullptr; }
const PbCell* PbMesh1D::findContainingCell(const SbVec3f&, float, SbVec3f&, const PbCell*) const { return nullptr; }
const PbCell* PbMesh1D::findContainingCellProtected(const SbVec3f&, float, SbVec3f&, PbArrayOfInt&) const {
  return nullptr;
}

void PbMesh1D::print(FILE* file) const {
  PbMesh::print(file);
  std::fprintf(file, "PbMesh1D:: size = %d\n", getNumNodes());
}

void PbMesh1D::updateBoundingBox() const {
  if (isBoundingBoxValid()) return;
  PiFiniteBox box;
  for (int n = 0; n < getNumNodes(); ++n) box.add(getNodeCoord(n));
  setBoundingBox(box.box());
}

void PbMesh1D::storeSize(int size) {
  setCounts(size, 0, size != getNumNodes());
  notifyGeometryChange();
}
