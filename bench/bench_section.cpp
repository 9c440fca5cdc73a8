// Sections of volumes by planes, on the inputs that peers are measured with.

#include <Ormelle/PbHexahedronMesh3D.h>
#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PbRegularCartesianGrid3D.h>
#include <Ormelle/PbTetrahedronMesh3D.h>
#include <Ormelle/PoMeshCrossSection.h>
#include <Ormelle/PoOrmelle.h>
#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>

#include "Workloads.h"
#include "graph/frame/PiParallel.h"
#include "quillane/surface/PiMeshSection.h"

namespace {

// (1, 1, 1) turned by 5 degrees about (1, -1, 0) at every other turn.
PiSectionPlane obliquePlane(int turn) {
  const double angle = turn % 2 ? Workloads::kPi / 36 : 0, third = 1 / std::sqrt(3.0), sixth = 1 / std::sqrt(6.0);
  const double along = std::cos(angle) * third, across = std::sin(angle) * sixth;
  return {static_cast<float>(along + across), static_cast<float>(along + across),
          static_cast<float>(along - 2 * across), 0.1F};
}

struct Volume {
  int numCells = 0;
  Workloads::WarpedCube cube;
  std::vector<std::int32_t> cells;
};
const Volume& volumeOf(int numCells, bool areTetrahedra) {
  static std::unique_ptr<Volume> s_volume;
  static bool s_areTetrahedra = false;
  if (!s_volume || s_volume->numCells != numCells || s_areTetrahedra != areTetrahedra) {
    s_volume.reset();
    s_volume = std::make_unique<Volume>();
    s_volume->numCells = numCells;
    s_areTetrahedra = areTetrahedra;
    s_volume->cube = Workloads::warpedCube(numCells, &Workloads::gyroid);
    s_volume->cells = areTetrahedra ? Workloads::tetrahedra(s_volume->cube) : Workloads::hexahedra(s_volume->cube);
  }
  return *s_volume;
}

template <class Mesh>
void cut(benchmark::State& state, const Mesh& mesh, const float* values) {
  PiParallel::setNumThreads(1);
  PiMeshSection section;
  int turn = 0;
  double area = 0;
  for (int warmUp = 0; warmUp < 2; ++warmUp) section.cut(mesh, {obliquePlane(turn++), values});
  for (auto _ : state) section.cut(mesh, {obliquePlane(turn++), values});
  section.cut(mesh, {obliquePlane(0), values});
  for (std::size_t first = 0, i = 0; i < section.section.coordIndices.size(); ++i) {
    if (section.section.coordIndices[i] >= 0) continue;
    const auto point = [&](std::size_t place) {
      return section.section.points[static_cast<std::size_t>(section.section.coordIndices[place])];
    };
    SbVec3f normal(0, 0, 0);
    for (std::size_t corner = first + 1; corner + 1 < i; ++corner)
      normal += (point(corner) - point(first)).cross(point(corner + 1) - point(first));
    area += static_cast<double>(normal.length()) / 2;
    first = i + 1;
  }
  state.counters["area"] = area;
  state.counters["points"] = static_cast<double>(section.section.points.size());
  state.counters["parts"] = static_cast<double>(section.section.cells.size());
  state.counters["visited"] = static_cast<double>(section.numVisited());
  state.counters["MB"] = static_cast<double>(section.memorySize()) / 1e6;
}

// The rebuild of a kit, by either method, without colours (range 2 is 0) or with a colour for each point.
void rebuild(benchmark::State& state, PbMesh3D& mesh, const std::vector<float>& values) {
  PoOrmelle::init();
  PiParallel::setNumThreads(1);
  mesh.addValuesSet(0, values.data(), PbMesh::PER_NODE, "gyroid");
  PbLinearDataMapping mapping;
  mapping.setValues(-1, SbColor(0, 0, 1), 1, SbColor(1, 0, 0));
  auto* kit = new PoMeshCrossSection;
  kit->ref();
  kit->setMesh(&mesh);
  kit->setCrossSectionMethod(static_cast<PoMeshCrossSection::CrossSectionMethod>(state.range(1)));
  if (state.range(2)) {
    kit->setDataMapping(&mapping);
    kit->valuesIndex = 0;
    kit->coloringType = PoMesh::COLOR_MAPPING;
  }
  int turn = 0;
  const auto next = [&] {
    const PiSectionPlane plane = obliquePlane(turn++);
    kit->plane = SbPlane(SbVec3f(plane.a, plane.b, plane.c), plane.d);
    kit->rebuild();
  };
  for (int warmUp = 0; warmUp < 4; ++warmUp) next();
  for (auto _ : state) next();
  state.counters["MB"] = static_cast<double>(kit->getMemorySize()) / 1e6;
  kit->setMesh(static_cast<PbMesh3D*>(nullptr));
  kit->unref();
  PoOrmelle::finish();
}

void cutRegular(benchmark::State& state) {
  const int num = static_cast<int>(state.range(0));
  const std::vector<float> values = Workloads::regularValues(num, &Workloads::gyroid);
  const PbRegularCartesianGrid3D mesh(num, num, num, -1, -1, -1, 1, 1, 1, 0);
  cut(state, mesh, values.data());
}
BENCHMARK(cutRegular)->Arg(129)->Arg(257)->Unit(benchmark::kMillisecond);

void cutHexahedra(benchmark::State& state) {
  const Volume& volume = volumeOf(static_cast<int>(state.range(0)), false);
  const auto& cube = volume.cube;
  const PbHexahedronMesh3D mesh(static_cast<int>(cube.x.size()), cube.x.data(), cube.y.data(), cube.z.data(),
                                static_cast<int>(volume.cells.size() / 8), volume.cells.data(), 0);
  cut(state, mesh, cube.values.data());
}
BENCHMARK(cutHexahedra)->Arg(100)->Arg(200)->Unit(benchmark::kMillisecond);

void cutTetrahedra(benchmark::State& state) {
  const Volume& volume = volumeOf(static_cast<int>(state.range(0)), true);
  const auto& cube = volume.cube;
  const PbTetrahedronMesh3D mesh(static_cast<int>(cube.x.size()), cube.x.data(), cube.y.data(), cube.z.data(),
                                 static_cast<int>(volume.cells.size() / 4), volume.cells.data(), 0);
  cut(state, mesh, cube.values.data());
}
BENCHMARK(cutTetrahedra)->Arg(50)->Arg(100)->Unit(benchmark::kMillisecond);

void rebuildHexahedra(benchmark::State& state) {
  const Volume& volume = volumeOf(static_cast<int>(state.range(0)), false);
  const auto& cube = volume.cube;
  PbHexahedronMesh3D mesh(static_cast<int>(cube.x.size()), cube.x.data(), cube.y.data(), cube.z.data(),
                          static_cast<int>(volume.cells.size() / 8), volume.cells.data(), 0);
  rebuild(state, mesh, cube.values);
}
BENCHMARK(rebuildHexahedra)->ArgsProduct({{200}, {1, 2}, {0, 1}})->Unit(benchmark::kMillisecond);

void rebuildTetrahedra(benchmark::State& state) {
  const Volume& volume = volumeOf(static_cast<int>(state.range(0)), true);
  const auto& cube = volume.cube;
  PbTetrahedronMesh3D mesh(static_cast<int>(cube.x.size()), cube.x.data(), cube.y.data(), cube.z.data(),
                           static_cast<int>(volume.cells.size() / 4), volume.cells.data(), 0);
  rebuild(state, mesh, cube.values);
}
BENCHMARK(rebuildTetrahedra)->ArgsProduct({{100}, {1, 2}, {0, 1}})->Unit(benchmark::kMillisecond);

void rebuildRegular(benchmark::State& state) {
  const int num = static_cast<int>(state.range(0));
  const std::vector<float> values = Workloads::regularValues(num, &Workloads::gyroid);
  PbRegularCartesianGrid3D mesh(num, num, num, -1, -1, -1, 1, 1, 1, 0);
  rebuild(state, mesh, values);
}
BENCHMARK(rebuildRegular)->ArgsProduct({{257}, {1, 2}, {0, 1}})->Unit(benchmark::kMillisecond);

// The time that passes with one thread, and with two.
void cutInParallel(benchmark::State& state) {
  const Volume& volume = volumeOf(200, false);
  const auto& cube = volume.cube;
  const PbHexahedronMesh3D mesh(static_cast<int>(cube.x.size()), cube.x.data(), cube.y.data(), cube.z.data(),
                                static_cast<int>(volume.cells.size() / 8), volume.cells.data(), 0);
  PiParallel::setNumThreads(static_cast<int>(state.range(0)));
  PiMeshSection section;
  int turn = 0;
  for (int warmUp = 0; warmUp < 2; ++warmUp) section.cut(mesh, {obliquePlane(turn++), cube.values.data()});
  for (auto _ : state) section.cut(mesh, {obliquePlane(turn++), cube.values.data()});
}
BENCHMARK(cutInParallel)->Arg(1)->Arg(2)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace
