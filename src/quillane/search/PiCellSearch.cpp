#include "quillane/search/PiCellSearch.h"

#include <Ormelle/PbMesh2D.h>
#include <Ormelle/PbMesh3D.h>

#include <algorithm>
#include <utility>

#include "quillane/search/PiCellBox.h"
#include "quillane/search/PiCellReaders.h"
#include "quillane/view/PiIndexedView2D.h"

namespace {

/// Cells of which a point tells the only one that may hold it.
template <PiDirectReader Reader>
class AxisSearch : public PiCellSearch {
 public:
  explicit AxisSearch(Reader reader) : m_reader(std::move(reader)) {}

  bool read(int index, PiPlainCell& cell) const override { return m_reader.read(index, cell); }
  bool find(const SbVec3f& point, float tolerance, PiPlainCell& cell, SbVec3f& pcoord) const override {
    PiPlainCell candidate;
    if (!m_reader.read(m_reader.cellOf(point), candidate) || !candidate.locate(point, tolerance, pcoord)) return false;
    cell = candidate;
    return true;
  }

 private:
  Reader m_reader;
};

/// Any cells, by their boxes.
template <PiCellReader Reader>
class BoxSearch : public PiCellSearch {
 public:
  BoxSearch(Reader reader, const SbBox3f& box, bool isVolume, double tolerance)
      : m_reader(std::move(reader)), m_isVolume(isVolume) {
    for (int a = 0; a < 3; ++a) {
      const double min = box.getMin()[a], max = box.getMax()[a];
      const double center = (min + max) / 2, half = (max - min) * 0.505;
      m_domain.min[a] = center - half;
      m_domain.max[a] = center + half;
    }
    PiPlainCell cell;
    m_tree.build(m_domain, m_reader.numCells(), [&](int index, PiBoxTree::Box& cellBox) {
      return m_reader.read(index, cell) && findCellBox(cell, tolerance, cellBox);
    });
  }

  bool read(int index, PiPlainCell& cell) const override { return m_reader.read(index, cell); }
  bool find(const SbVec3f& point, float tolerance, PiPlainCell& cell, SbVec3f& pcoord) const override {
    const float place[3] = {point[0], point[1], point[2]};
    if (m_isVolume)
      for (int a = 0; a < 3; ++a)
        if (!(place[a] >= m_domain.min[a] && place[a] <= m_domain.max[a])) return false;
    PiPlainCell candidate;
    const int found = m_tree.findFirst(
        place, [&](int index) { return m_reader.read(index, candidate) && candidate.locate(point, tolerance, pcoord); },
        [&](int index) { m_reader.announce(index); });
    if (found < 0) return false;
    cell = candidate;
    return true;
  }
  const PiBoxTree* tree() const override { return &m_tree; }

 private:
  Reader m_reader;
  bool m_isVolume;
  PiBoxTree::Box m_domain;
  PiBoxTree m_tree;
};

/// What has no cells, or none that can be asked.
class NoSearch : public PiCellSearch {
 public:
  bool read(int, PiPlainCell& cell) const override {
    cell.reset(PiPlainCell::NONE, -1);
    return false;
  }
  bool find(const SbVec3f&, float, PiPlainCell&, SbVec3f&) const override { return false; }
};

template <class Reader>
std::unique_ptr<PiCellSearch> searchBy(Reader reader, const PbMesh& mesh, bool isVolume, double tolerance) {
  if constexpr (PiDirectReader<Reader>)
    return std::make_unique<AxisSearch<Reader>>(std::move(reader));
  else
    return std::make_unique<BoxSearch<Reader>>(std::move(reader), mesh.PbMesh::getBoundingBox(), isVolume, tolerance);
}

// Calls `use` with the reader for cells that all have kSmall or kLarge nodes, or that have any number.
template <int kSmall, int kLarge, class Mesh, class Use>
std::unique_ptr<PiCellSearch> withIndexedReader(const Mesh& mesh, Use&& use) {
  const PiConnectivity& cells = mesh.getConnectivity();
  const float *x, *y, *z;
  int numX, numY, numZ;
  mesh.getCoordinates(x, y, z, numX, numY, numZ);
  if (cells.cellSize() == kSmall) return use(PiIndexedReader<kSmall>(cells, x, y, z));
  if (cells.cellSize() == kLarge) return use(PiIndexedReader<kLarge>(cells, x, y, z));
  return use(PiIndexedReader<0>(cells, x, y, z));
}

std::unique_ptr<PiCellSearch> searchOf(const PbMesh2D& mesh, double tolerance) {
  const auto by = [&](auto reader) { return searchBy(std::move(reader), mesh, false, tolerance); };
  if (const auto* regular = dynamic_cast<const PbRegularCartesianGrid2D*>(&mesh))
    return by(PiGridReader2D(viewOf(*regular)));
  if (const auto* parallel = dynamic_cast<const PbParalCartesianGrid2D*>(&mesh))
    return by(PiGridReader2D(viewOf(*parallel)));
  if (const auto* grid = dynamic_cast<const PbCartesianGrid2D*>(&mesh)) return by(PiGridReader2D(viewOf(*grid)));
  if (const auto* indexed = dynamic_cast<const PbIndexedMesh2D*>(&mesh)) return withIndexedReader<3, 4>(*indexed, by);
  return by(PiGatheredReader(mesh));
}

std::unique_ptr<PiCellSearch> searchOf(const PbMesh3D& mesh, double tolerance) {
  const auto by = [&](auto reader) { return searchBy(std::move(reader), mesh, true, tolerance); };
  if (const auto* regular = dynamic_cast<const PbRegularCartesianGrid3D*>(&mesh))
    return by(PiGridReader3D(viewOf(*regular)));
  if (const auto* parallel = dynamic_cast<const PbParalCartesianGrid3D*>(&mesh))
    return by(PiGridReader3D(viewOf(*parallel)));
  if (const auto* grid = dynamic_cast<const PbCartesianGrid3D*>(&mesh)) return by(PiGridReader3D(viewOf(*grid)));
  if (const auto* indexed = dynamic_cast<const PbIndexedMesh3D*>(&mesh)) return withIndexedReader<4, 8>(*indexed, by);
  return by(PiGatheredReader(mesh));
}

// Beyond the limit nothing is left out any more, and infinity would make boxes of no number.
double toleranceOf(float tolerance) { return tolerance > 0 ? std::min<double>(tolerance, 1e6) : 0; }

}  // namespace

PiCellSearch::~PiCellSearch() = default;

std::unique_ptr<const PiCellSearch> PiCellSearch::make(const PbMesh& mesh, float tolerance) {
  std::unique_ptr<PiCellSearch> search;
  const double wanted = toleranceOf(tolerance);
  if (const auto* surface = dynamic_cast<const PbMesh2D*>(&mesh))
    search = searchOf(*surface, wanted);
  else if (const auto* volume = dynamic_cast<const PbMesh3D*>(&mesh))
    search = searchOf(*volume, wanted);
  else
    search = std::make_unique<NoSearch>();
  search->m_tolerance = wanted;
  return search;
}

const std::shared_ptr<const PiCellSearch>& PiCellSearch::of(const PbMesh& mesh, float tolerance) {
  std::shared_ptr<const PiCellSearch>& search = mesh.m_search;
  const double wanted = toleranceOf(tolerance);
  if (!search)
    search = make(mesh, tolerance);
  else if (wanted > search->m_tolerance)
    search = make(mesh, static_cast<float>(std::max(wanted, 2 * search->m_tolerance)));
  return search;
}
