// Indexed meshes: topology of a million triangles, triangulation, location in volumes.

#include <Ormelle/PbCell.h>
#include <Ormelle/PbHexahedronMesh3D.h>
#include <Ormelle/PbTetrahedronMesh3D.h>
#include <Ormelle/PbTriangleMesh2D.h>
#include <benchmark/benchmark.h>

#include <memory>

#include "Workloads.h"
#include "quillane/mesh/PiConnectivity.h"
#include "quillane/search/PiCellSearch.h"
#include "quillane/search/PiOwnerCells.h"

namespace {

constexpr int kNumPoints = 1000000;

// 708 by 708 nodes: 999,698 triangles, or with 1001 two millions.
struct Surface {
  Workloads::Square square;
  std::vector<std::int32_t> cells;
};
const Surface& surfaceOf(int num) {
  static std::unique_ptr<Surface> s_surface;
  if (!s_surface || s_surface->square.num != num) {
    s_surface = std::make_unique<Surface>(Surface{Workloads::square(num, true), {}});
    s_surface->cells = Workloads::triangles(s_surface->square);
  }
  return *s_surface;
}
std::unique_ptr<PbTriangleMesh2D> triangleMesh(int num, int isDataDuplicate = 0) {
  const Surface& surface = surfaceOf(num);
  return std::make_unique<PbTriangleMesh2D>(num * num, surface.square.x.data(), surface.square.y.data(),
                                            static_cast<int>(surface.cells.size() / 3), surface.cells.data(),
                                            isDataDuplicate);
}

// The same triangles with cells and nodes in random order, as mesh generators leave them.
std::unique_ptr<PbTriangleMesh2D> shuffledMesh(int num) {
  const Surface& surface = surfaceOf(num);
  Workloads::Random random;
  const auto order = [&random](std::size_t size) {
    std::vector<int> result(size);
    for (std::size_t n = 0; n < size; ++n) {
      const auto other = static_cast<std::size_t>(random.next() * static_cast<double>(n + 1));
      result[n] = result[other];
      result[other] = static_cast<int>(n);
    }
    return result;
  };
  const std::vector<int> node = order(surface.square.x.size()), cell = order(surface.cells.size() / 3);
  std::vector<float> x(node.size()), y(node.size());
  for (std::size_t n = 0; n < node.size(); ++n) {
    x[static_cast<std::size_t>(node[n])] = surface.square.x[n];
    y[static_cast<std::size_t>(node[n])] = surface.square.y[n];
  }
  std::vector<int> cells;
  for (const int c : cell)
    for (int corner = 0; corner < 3; ++corner)
      cells.push_back(node[static_cast<std::size_t>(surface.cells[static_cast<std::size_t>(3 * c + corner)])]);
  return std::make_unique<PbTriangleMesh2D>(num * num, x.data(), y.data(), static_cast<int>(cell.size()), cells.data(),
                                            1);
}

std::unique_ptr<PbTriangleMesh2D> meshOf(const benchmark::State& state) {
  return state.range(0) ? shuffledMesh(708) : triangleMesh(708);
}

void ownerLists(benchmark::State& state) {
  const auto mesh = meshOf(state);
  for (auto _ : state) {
    const PiOwnerCells owners(mesh->getConnectivity());
    benchmark::DoNotOptimize(owners.of(0).data());
  }
  state.SetItemsProcessed(state.iterations() * mesh->getNumCells());
}
BENCHMARK(ownerLists)->ArgName("shuffled")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void limits(benchmark::State& state) {
  const auto mesh = meshOf(state);
  PbArrayOfInt sizes, indices;
  for (auto _ : state) mesh->getLimitIndices(sizes, indices);
  state.counters["nodes"] = indices.getNum();
  state.SetItemsProcessed(state.iterations() * mesh->getNumCells());
}
BENCHMARK(limits)->ArgName("shuffled")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void orientation(benchmark::State& state) {
  const auto mesh = meshOf(state);
  for (auto _ : state) {
    mesh->setElemOrientation(PbIndexedMesh2D::ORIENTATION_COUNTERCLOCKWISE);
    mesh->setElemOrientation(PbIndexedMesh2D::ORIENTATION_NONE);
  }
  state.SetItemsProcessed(state.iterations() * mesh->getNumCells());
}
BENCHMARK(orientation)->ArgName("shuffled")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void storeTriangles(benchmark::State& state) {
  triangleMesh(708);
  for (auto _ : state) benchmark::DoNotOptimize(triangleMesh(708, static_cast<int>(state.range(0)))->getNumCells());
}
BENCHMARK(storeTriangles)->ArgName("copied")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// The neighbours by edge of every triangle; the owner lists are there.
void facetNeighbours(benchmark::State& state) {
  const auto mesh = meshOf(state);
  mesh->updateOwnerCellsList();
  PbArrayOfInt found;
  for (auto _ : state)
    for (int c = 0; c < mesh->getNumCells(); ++c) mesh->getAdjacentCellsIndByFacet(c, found);
  state.SetItemsProcessed(state.iterations() * mesh->getNumCells());
}
BENCHMARK(facetNeighbours)->ArgName("shuffled")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void triangulation(benchmark::State& state) {
  if (!PbTriangleMesh2D::canTriangulate()) return state.SkipWithError("built without Triangle");
  const int num = static_cast<int>(state.range(0));
  Workloads::Random random;
  std::vector<float> x, y;
  for (int n = 0; n < num; ++n) {
    x.push_back(static_cast<float>(random.next()));
    y.push_back(static_cast<float>(random.next()));
  }
  PbTriangleMesh2D mesh(0);
  for (auto _ : state) mesh.setGeometry(num, x.data(), y.data());
  state.counters["triangles"] = mesh.getNumCells();
}
BENCHMARK(triangulation)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

void locateInTriangles(benchmark::State& state) {
  const auto mesh = meshOf(state);
  const std::vector<float> points = Workloads::randomPoints(kNumPoints);
  SbVec3f pcoord;
  mesh->findContainingCell(SbVec3f(0, 0, 0), 0, pcoord);
  int numFound = 0;
  for (auto _ : state) {
    numFound = 0;
    for (std::size_t p = 0; p < points.size(); p += 3)
      numFound += mesh->findContainingCell(SbVec3f(3 * points[p], 3 * points[p + 1], 0), 0, pcoord) != nullptr;
  }
  state.counters["found"] = numFound;
}
BENCHMARK(locateInTriangles)->ArgName("shuffled")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// The cube of the shared workloads as hexahedra or as five times as many tetrahedra.
template <class Mesh>
std::unique_ptr<Mesh> cubeMesh(int cells) {
  static std::unique_ptr<Workloads::WarpedCube> s_cube;
  static std::vector<std::int32_t> s_nodes;
  constexpr bool isHexahedron = std::is_same_v<Mesh, PbHexahedronMesh3D>;
  constexpr std::size_t cellSize = isHexahedron ? 8 : 4;
  if (!s_cube || s_cube->num != cells + 1) {
    s_cube = std::make_unique<Workloads::WarpedCube>(Workloads::warpedCube(cells, Workloads::gyroid));
    s_nodes = isHexahedron ? Workloads::hexahedra(*s_cube) : Workloads::tetrahedra(*s_cube);
  }
  return std::make_unique<Mesh>(static_cast<int>(s_cube->x.size()), s_cube->x.data(), s_cube->y.data(),
                                s_cube->z.data(), static_cast<int>(s_nodes.size() / cellSize), s_nodes.data(), 0);
}

template <class Mesh>
void buildSearchIn(benchmark::State& state) {
  const auto mesh = cubeMesh<Mesh>(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    const auto search = PiCellSearch::make(*mesh, 0);
    state.counters["bytes/cell"] = double(search->tree()->memorySize()) / mesh->getNumCells();
  }
  state.counters["cells"] = mesh->getNumCells();
}
BENCHMARK(buildSearchIn<PbHexahedronMesh3D>)
    ->Name("locate_hex/build")
    ->Arg(50)
    ->Arg(100)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(buildSearchIn<PbTetrahedronMesh3D>)
    ->Name("locate_tet/build")
    ->Arg(50)
    ->Arg(100)
    ->Unit(benchmark::kMillisecond);

// A million points at random places, all of which are in a cell; the index is there.
template <class Mesh>
void locateIn(benchmark::State& state) {
  const auto mesh = cubeMesh<Mesh>(static_cast<int>(state.range(0)));
  const std::vector<float> points = Workloads::randomPoints(kNumPoints);
  if (Workloads::hash(points) != 0xbb0d644892d2c599ULL) return state.SkipWithError("the points aren't those meant");
  SbVec3f pcoord;
  mesh->findContainingCell(SbVec3f(0, 0, 0), 0, pcoord);
  int numFound = 0;
  for (auto _ : state) {
    numFound = 0;
    for (std::size_t p = 0; p < points.size(); p += 3)
      numFound += mesh->findContainingCell(SbVec3f(points[p], points[p + 1], points[p + 2]), 0, pcoord) != nullptr;
  }
  state.counters["found"] = numFound;
}
BENCHMARK(locateIn<PbHexahedronMesh3D>)->Name("locate_hex/query1e6")->Arg(50)->Arg(100)->Unit(benchmark::kMillisecond);
BENCHMARK(locateIn<PbTetrahedronMesh3D>)->Name("locate_tet/query1e6")->Arg(50)->Arg(100)->Unit(benchmark::kMillisecond);

}  // namespace
