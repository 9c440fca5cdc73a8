#include "quillane/contour/CutSurface.h"

#include <Ormelle/PbCartesianGrid2D.h>
#include <Ormelle/PbCell.h>
#include <Ormelle/PbPolarGrid2D.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <random>

#include "graph/data/PiIsovalueAdjustment.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

std::vector<std::vector<int>> cellsOf(const PbMesh2D& mesh) {
  std::vector<std::vector<int>> cells;
  for (int c = 0; c < mesh.getNumCells(); ++c) {
    if (const auto* grid = dynamic_cast<const PbGrid2D*>(&mesh)) {
      const int* nodes = grid->getCellNodeIds(c);
      cells.emplace_back(nodes, nodes + 4);
    } else {
      const PbCell* cell = mesh.getCell(c);
      cells.emplace_back(cell->getNodeIndexPtr(), cell->getNodeIndexPtr() + cell->getNumNodes());
    }
  }
  return cells;
}

CutSurface surfaceOf(std::string name, MeshSample<PbMesh2D> sample, const Field& field) {
  auto owner = std::make_shared<MeshSample<PbMesh2D>>(std::move(sample));
  const PbMesh2D& mesh = *owner->mesh;
  CutSurface surface{std::move(name), {}, cellsOf(mesh), {}, {}, owner};
  for (int n = 0; n < mesh.getNumNodes(); ++n) {
    surface.points.push_back(mesh.getNodeCoord(n));
    surface.values.push_back(field(surface.points.back()[0], surface.points.back()[1]));
  }
  surface.setOn = [&mesh](PiContouring& worker) { mesh.meshContouring(&worker, mesh.getZcoord()); };
  return surface;
}

MeshSample<PbMesh2D> ring(int numRadii, int numAngles) {
  MeshSample<PbMesh2D> sample{{{}, {}}, nullptr};
  for (int i = 0; i < numRadii; ++i) sample.arrays[0].push_back(1 + 0.25F * float(i));
  for (int j = 0; j < numAngles; ++j) sample.arrays[1].push_back(0.05F + 5.5F * float(j) / float(numAngles - 1));
  sample.mesh = std::make_unique<PbPolarGrid2D>(numRadii, numAngles, sample.arrays[0].data(), sample.arrays[1].data(),
                                                nullptr, 1);
  return sample;
}

MeshSample<PbMesh2D> bentGrid(int numX, int numY) {
  MeshSample<PbMesh2D> sample{{{}, {}, {}}, nullptr};
  for (int i = 0; i < numX; ++i)
    for (int j = 0; j < numY; ++j) {
      const float x = float(i) * 0.3F, y = float(j) * 0.2F;
      sample.arrays[0].push_back(x + 0.1F * std::sin(3 * y));
      sample.arrays[1].push_back(y + 0.08F * std::cos(2 * x));
      sample.arrays[2].push_back(0.3F * std::sin(x + y));
    }
  sample.mesh = std::make_unique<PbCartesianGrid2D>(numX, numY, sample.arrays[0].data(), sample.arrays[1].data(),
                                                    sample.arrays[2].data(), 1);
  return sample;
}

struct Point2 {
  double x, y;
};
double squaredDistance(const Point2& a, const Point2& b) {
  return (a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y);
}

}  // namespace

Field smoothField(unsigned seed) {
  struct Wave {
    float x, y, phase;
  };
  std::mt19937 random(seed);
  std::uniform_real_distribution<float> frequency(-2.5F, 2.5F), phase(0, 6.28F);
  std::vector<Wave> waves;
  for (int w = 0; w < 6; ++w) {
    const float x = frequency(random), y = frequency(random);
    waves.push_back({x, y, phase(random)});
  }
  return [waves](float x, float y) {
    float sum = 0;
    for (const Wave& wave : waves) sum += 2.3F * std::sin(wave.x * x + wave.y * y + wave.phase);
    return sum;
  };
}

Field noiseField(unsigned seed) {
  return [random = std::mt19937(seed)](float, float) mutable {
    return std::uniform_real_distribution<float>(-10, 10)(random);
  };
}

Field steppedField(unsigned seed) {
  return [field = smoothField(seed)](float x, float y) { return std::round(2 * field(x, y)) / 2; };
}

CutSurface rectangleOf(const MeshKind2D& kind, const RectangleSpec& spec, const Field& field) {
  return surfaceOf(kind.name, kind.make(spec, 1), field);
}

std::vector<CutSurface> surfacesOfAllClasses(const Field& field) {
  std::vector<CutSurface> surfaces;
  RectangleSpec spec;
  spec.numX = 17;
  spec.numY = 23;
  for (const MeshKind2D& kind : meshKinds2D()) surfaces.push_back(rectangleOf(kind, spec, field));
  spec.z = [](float x, float y) { return x * y; };
  surfaces.push_back(rectangleOf(meshKinds2D().back(), spec, field));
  surfaces.push_back(surfaceOf("PolarGrid2D", ring(9, 31), field));
  surfaces.push_back(surfaceOf("BentGrid", bentGrid(14, 19), field));
  return surfaces;
}

std::vector<float> levelsFor(const PbIsovaluesList& list, const std::vector<float>& values) {
  PiIsovalueAdjustment adjustment;
  adjustment.adjustIsovalList(list, int(values.size()), values.data());
  return {adjustment.getIsovalues().begin(), adjustment.getIsovalues().end()};
}

std::vector<std::vector<int>> drawnCells(const CutSurface& surface) {
  std::vector<std::vector<int>> drawn;
  for (const std::vector<int>& cell : surface.cells) {
    const bool isDrawn = std::all_of(cell.begin(), cell.end(), [&surface](int node) {
      const SbVec3f& point = surface.points[std::size_t(node)];
      return std::isfinite(point[0]) && std::isfinite(point[1]) && std::isfinite(point[2]) &&
             !std::isnan(surface.values[std::size_t(node)]);
    });
    if (isDrawn) drawn.push_back(cell);
  }
  return drawn;
}

double flatArea(const CutSurface& surface, const std::vector<std::vector<int>>& cells) {
  double area = 0;
  for (const std::vector<int>& cell : cells)
    for (std::size_t c = 0; c < cell.size(); ++c) {
      const SbVec3f &a = surface.points[std::size_t(cell[c])],
                    &b = surface.points[std::size_t(cell[(c + 1) % cell.size()])];
      area += (double(a[0]) * b[1] - double(b[0]) * a[1]) / 2;
    }
  return area;
}

EdgeValues::EdgeValues(const CutSurface& surface, std::span<const float> levels)
    : m_surface(surface), m_levels(levels.begin(), levels.end()) {
  std::map<std::pair<int, int>, int> numCells;
  double size = 0;
  for (const std::vector<int>& cell : drawnCells(surface))
    for (std::size_t c = 0; c < cell.size(); ++c) {
      const auto [low, high] = std::pair(std::minmax(cell[c], cell[(c + 1) % cell.size()]));
      ++numCells[{low, high}];
      size = std::max(size, double(surface.points[std::size_t(low)].length()));
    }
  for (const auto& [nodes, num] : numCells) m_edges.push_back({nodes.first, nodes.second, num});
  m_tolerance = 1e-6 * size;
  for (std::size_t e = 0; e < m_edges.size(); ++e) {
    const SbVec3f &a = m_surface.points[std::size_t(m_edges[e].node1)],
                  &b = m_surface.points[std::size_t(m_edges[e].node2)];
    const auto [fromX, fromY] = tileOf(SbVec3f(std::min(a[0], b[0]), std::min(a[1], b[1]), 0));
    const auto [toX, toY] = tileOf(SbVec3f(std::max(a[0], b[0]), std::max(a[1], b[1]), 0));
    for (int i = fromX - 1; i <= toX + 1; ++i)
      for (int j = fromY - 1; j <= toY + 1; ++j) m_tiles[{i, j}].push_back(int(e));
  }
}

std::pair<int, int> EdgeValues::tileOf(const SbVec3f& point) const {
  return {int(std::floor(point[0] * 8)), int(std::floor(point[1] * 8))};
}

const std::vector<int>& EdgeValues::edgesNear(const SbVec3f& point) const {
  static const std::vector<int> s_none;
  const auto found = m_tiles.find(tileOf(point));
  return found == m_tiles.end() ? s_none : found->second;
}

double EdgeValues::distance(const SbVec3f& point, const SbVec3f& from, const SbVec3f& to, double& position) {
  double along[3], rest[3], length2 = 0, product = 0, distance2 = 0;
  for (int c = 0; c < 3; ++c) {
    along[c] = double(to[c]) - from[c];
    rest[c] = double(point[c]) - from[c];
    length2 += along[c] * along[c];
    product += along[c] * rest[c];
  }
  position = std::clamp(length2 > 0 ? product / length2 : 0, 0.0, 1.0);
  for (int c = 0; c < 3; ++c) distance2 += std::pow(rest[c] - position * along[c], 2);
  return std::sqrt(distance2);
}

double EdgeValues::at(const SbVec3f& point) const {
  double best = kNaN, bestGap = std::numeric_limits<double>::infinity();
  for (const int e : edgesNear(point)) {
    const Edge& edge = m_edges[std::size_t(e)];
    double position;
    if (distance(point, m_surface.points[std::size_t(edge.node1)], m_surface.points[std::size_t(edge.node2)],
                 position) > m_tolerance)
      continue;
    const double low = m_surface.values[std::size_t(edge.node1)], high = m_surface.values[std::size_t(edge.node2)];
    const double value = low + position * (high - low);
    for (const float level : m_levels)
      if (std::fabs(value - level) < bestGap) {
        bestGap = std::fabs(value - level);
        best = value;
      }
  }
  return best;
}

bool EdgeValues::isOnBorder(const SbVec3f& point) const {
  double position;
  const std::vector<int>& near = edgesNear(point);
  return std::any_of(near.begin(), near.end(), [&](int e) {
    const Edge& edge = m_edges[std::size_t(e)];
    return edge.numCells == 1 && distance(point, m_surface.points[std::size_t(edge.node1)],
                                          m_surface.points[std::size_t(edge.node2)], position) <= m_tolerance;
  });
}

Segment segmentOf(const SbVec3f& a, const SbVec3f& b) {
  const std::array<float, 3> from = {a[0], a[1], a[2]}, to = {b[0], b[1], b[2]};
  const auto& [low, high] = std::minmax(from, to);
  return {low[0], low[1], low[2], high[0], high[1], high[2]};
}

double lengthOfIsolines(const CutSurface& surface, std::span<const float> levels) {
  double length = 0;
  for (const std::vector<int>& cell : drawnCells(surface))
    for (const float level : levels) {
      std::vector<Point2> cuts;
      for (std::size_t c = 0; c < cell.size(); ++c) {
        const auto a = std::size_t(cell[c]), b = std::size_t(cell[(c + 1) % cell.size()]);
        const double va = surface.values[a], vb = surface.values[b];
        if ((va < level) == (vb < level)) continue;
        const double t = (level - va) / (vb - va);
        cuts.push_back({surface.points[a][0] + t * (double(surface.points[b][0]) - surface.points[a][0]),
                        surface.points[a][1] + t * (double(surface.points[b][1]) - surface.points[a][1])});
      }
      if (cuts.size() == 2) length += std::sqrt(squaredDistance(cuts[0], cuts[1]));
      if (cuts.size() < 4) continue;
      // Around the cell: which two neighbours are nearest decides the pairs.
      double sides[4];
      for (std::size_t e = 0; e < 4; ++e) sides[e] = std::sqrt(squaredDistance(cuts[e], cuts[(e + 1) % 4]));
      const bool isFirstPair = std::min(sides[0], sides[2]) <= std::min(sides[1], sides[3]);
      length += isFirstPair ? sides[0] + sides[2] : sides[1] + sides[3];
    }
  return length;
}
