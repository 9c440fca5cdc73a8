// What it takes to find the skin of an indexed mesh when its topology has changed, and to draw it.

#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbHexahedronMesh3D.h>
#include <Ormelle/PbTetrahedronMesh3D.h>
#include <Ormelle/PoCellFilter.h>
#include <Ormelle/PoMeshSkin.h>
#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

#include "AllocationCount.h"
#include "Workloads.h"
#include "graph/frame/PiParallel.h"
#include "quillane/rep/PiSkinDrawing.h"
#include "quillane/surface/PiMeshSkin.h"

namespace {

/// A mesh that can say that its topology is another.
template <class Mesh>
class MovingMesh : public Mesh {
 public:
  using Mesh::Mesh;
  using Mesh::updateTopologyId;
};

/// The cells whose value lies within limits.
class IntervalFilter : public PoCellFilter {
 public:
  int acceptCell(int, float value) const override { return value >= -0.3F && value <= 0.3F; }
};

template <class Mesh>
struct Workload {
  Workload(int size, std::vector<std::int32_t> (*cellsOf)(const Workloads::WarpedCube&), bool isFiltered)
      : cube(Workloads::warpedCube(size, Workloads::gyroid)), cells(cellsOf(cube)) {
    constexpr int kNodesPerCell = std::is_same_v<Mesh, PbHexahedronMesh3D> ? 8 : 4;
    const int numCells = static_cast<int>(cells.size()) / kNodesPerCell;
    mesh.setGeometry(static_cast<int>(cube.x.size()), cube.x.data(), cube.y.data(), cube.z.data(), numCells,
                     cells.data());
    if (!isFiltered) return;
    means = Workloads::cellMeans(cube, cells, kNodesPerCell);
    mesh.addValuesSet(1, means.data(), PbMesh::PER_CELL, "means");
    filter = new IntervalFilter;
    filter->ref();
  }
  ~Workload() {
    if (filter) filter->unref();
  }

  Workloads::WarpedCube cube;
  std::vector<std::int32_t> cells;
  std::vector<float> means;
  MovingMesh<Mesh> mesh{0};
  PoCellFilter* filter = nullptr;
};

template <class Mesh>
void findSkin(benchmark::State& state, const Workload<Mesh>& workload) {
  PiParallel::setNumThreads(static_cast<int>(state.range(1)));
  const PiMeshSkin* skin = nullptr;
  unsigned int id = 0;
  const_cast<Workload<Mesh>&>(workload).mesh.getSkinTopology(workload.filter, 1, id);
  for (auto _ : state) {
    const_cast<Workload<Mesh>&>(workload).mesh.updateTopologyId();
    benchmark::DoNotOptimize(skin = workload.mesh.getSkinTopology(workload.filter, 1, id));
  }
  PiParallel::setNumThreads(0);
  state.counters["facets"] = skin->getNumFacets();
  state.counters["cells/s"] =
      benchmark::Counter(workload.mesh.getNumCells(), benchmark::Counter::kIsIterationInvariantRate);
}

void BM_SkinTopologyHex(benchmark::State& state) {
  findSkin<PbHexahedronMesh3D>(state, {static_cast<int>(state.range(0)), Workloads::hexahedra, false});
}
void BM_SkinTopologyTet(benchmark::State& state) {
  findSkin<PbTetrahedronMesh3D>(state, {static_cast<int>(state.range(0)), Workloads::tetrahedra, false});
}
void BM_SkinTopologyFilteredHex(benchmark::State& state) {
  findSkin<PbHexahedronMesh3D>(state, {static_cast<int>(state.range(0)), Workloads::hexahedra, true});
}
/// Makes no normals: there is one for all.
class WithoutNormals : public PoMeshSkin {
 public:
  SbVec3f getOverallNormal() override { return SbVec3f(0, 0, 1); }
};

// The rebuild of a kit that shows the skin in one colour: facets found, turned outwards, written into a face set.
template <class Mesh>
void rebuildSkin(benchmark::State& state, const Workload<Mesh>& workload) {
  PiParallel::setNumThreads(static_cast<int>(state.range(1)));
  auto& mesh = const_cast<MovingMesh<Mesh>&>(workload.mesh);
  PoMeshSkin* kit = state.range(2) == 0 ? new WithoutNormals : new PoMeshSkin;
  kit->setMesh(&mesh);
  kit->valuesIndexForCellFilter = 1;
  auto* root = new SoSeparator;
  root->ref();
  if (workload.filter) root->addChild(workload.filter);
  root->addChild(kit);
  SoCallbackAction action;
  action.apply(root);
  const auto rebuild = [&] {
    mesh.updateTopologyId();
    kit->touchKit();
    action.apply(root);
  };
  rebuild();
  const std::size_t before = allocationCount();
  for (auto _ : state) rebuild();
  state.counters["allocations"] =
      static_cast<double>(allocationCount() - before) / static_cast<double>(state.iterations());
  state.counters["facets"] = PiSkinDrawing::numFacetsOf(*kit);
  state.counters["cells/s"] = benchmark::Counter(mesh.getNumCells(), benchmark::Counter::kIsIterationInvariantRate);
  root->unref();
  PiParallel::setNumThreads(0);
}

void BM_SkinHex(benchmark::State& state) {
  rebuildSkin<PbHexahedronMesh3D>(state, {static_cast<int>(state.range(0)), Workloads::hexahedra, false});
}
void BM_SkinTet(benchmark::State& state) {
  rebuildSkin<PbTetrahedronMesh3D>(state, {static_cast<int>(state.range(0)), Workloads::tetrahedra, false});
}
void BM_SkinFilteredHex(benchmark::State& state) {
  rebuildSkin<PbHexahedronMesh3D>(state, {static_cast<int>(state.range(0)), Workloads::hexahedra, true});
}

using Sizes = std::vector<std::int64_t>;
void search(benchmark::internal::Benchmark* bench, const Sizes& sizes) {
  bench->ArgNames({"size", "threads"})->ArgsProduct({sizes, {1, 2}})->UseRealTime()->MeasureProcessCPUTime();
  bench->Unit(benchmark::kMillisecond);
}
void rebuild(benchmark::internal::Benchmark* bench, const Sizes& sizes) {
  bench->ArgNames({"size", "threads", "normals"})->ArgsProduct({sizes, {1, 2}, {0, 1}});
  bench->UseRealTime()->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);
}
BENCHMARK(BM_SkinTopologyHex)->Apply([](auto* bench) { search(bench, {50, 100, 200}); });
BENCHMARK(BM_SkinTopologyTet)->Apply([](auto* bench) { search(bench, {50, 100}); });
BENCHMARK(BM_SkinTopologyFilteredHex)->Apply([](auto* bench) { search(bench, {100, 200}); });
BENCHMARK(BM_SkinHex)->Apply([](auto* bench) { rebuild(bench, {50, 100, 200}); });
BENCHMARK(BM_SkinTet)->Apply([](auto* bench) { rebuild(bench, {50, 100}); });
BENCHMARK(BM_SkinFilteredHex)->Apply([](auto* bench) { rebuild(bench, {100, 200}); });

}  // namespace
