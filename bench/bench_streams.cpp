#include <cmath>
#include <cstdint>
#include <memory>
#include <vector>

#include <benchmark/benchmark.h>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Ormelle/PbHexahedronMesh3D.h>
#include <Ormelle/PbRegularCartesianGrid3D.h>
#include <Ormelle/PbTetrahedronMesh3D.h>
#include <Ormelle/PoBase.h>
#include <Ormelle/PoOrmelle.h>
#include <Ormelle/PoStreamLine.h>

#include "Workloads.h"

namespace {

constexpr int kNodes = 65, kLines = 1000, kSteps = 1000;

using Vectors = std::vector<SbVec3f>;

Vectors vectorsOf(const std::vector<float>& numbers) {
  Vectors vectors;
  for (std::size_t i = 0; i + 2 < numbers.size(); i += 3) vectors.emplace_back(&numbers[i]);
  return vectors;
}

std::unique_ptr<PbMesh> makeMesh(int kind, const Workloads::FlowCube& flow) {
  if (kind == 0) {
    const auto side = static_cast<float>(2 * Workloads::kPi);
    return std::make_unique<PbRegularCartesianGrid3D>(kNodes, kNodes, kNodes, 0.0F, 0.0F, 0.0F, side, side, side, 1);
  }
  Workloads::WarpedCube cube;
  cube.num = kNodes;
  const int num = static_cast<int>(flow.x.size());
  const float *x = flow.x.data(), *y = flow.y.data(), *z = flow.z.data();
  const std::vector<std::int32_t> cells = kind == 1 ? Workloads::hexahedra(cube) : Workloads::tetrahedra(cube);
  const int numCells = static_cast<int>(cells.size()) / (kind == 1 ? 8 : 4);
  if (kind == 1) {
    auto mesh = std::make_unique<PbHexahedronMesh3D>(1);
    mesh->setGeometry(num, x, y, z, numCells, cells.data());
    return mesh;
  }
  auto mesh = std::make_unique<PbTetrahedronMesh3D>(1);
  mesh->setGeometry(num, x, y, z, numCells, cells.data());
  return mesh;
}

const SoGroup* groupOf(PoStreamLine& kit) { return static_cast<SoGroup*>(kit.getPart("groupStreamLine", FALSE)); }

template <class Node>
const Node* findIn(const SoGroup& group) {
  for (int i = 0; i < group.getNumChildren(); ++i)
    if (group.getChild(i)->isOfType(Node::getClassTypeId())) return static_cast<const Node*>(group.getChild(i));
  return nullptr;
}

/// Points and length of all lines, and how far their 11th points are from the exact flow on the average.
void count(PoStreamLine& kit, benchmark::State& state) {
  const SoGroup* group = groupOf(kit);
  const auto* lines = group ? findIn<SoLineSet>(*group) : nullptr;
  const auto* coordinates = group ? findIn<SoCoordinate3>(*group) : nullptr;
  if (!lines || !coordinates) return;
  const SbVec3f* point = coordinates->point.getValues(0);
  double length = 0, error = 0;
  int numPoints = 0, numLong = 0;
  for (int line = 0; line < lines->numVertices.getNum(); ++line) {
    const int num = lines->numVertices[line];
    double p[3] = {point[0][0], point[0][1], point[0][2]}, arc = 0;
    for (int i = 1; i < num; ++i) {
      length += static_cast<double>((point[i] - point[i - 1]).length());
      if (i <= 10) arc += static_cast<double>((point[i] - point[i - 1]).length());
    }
    if (num >= 12) {
      Workloads::followFlow(p, arc, 1000);
      error += std::hypot(p[0] - point[10][0], p[1] - point[10][1], p[2] - point[10][2]);
      ++numLong;
    }
    point += num;
    numPoints += num;
  }
  state.counters["points"] = numPoints;
  state.counters["length"] = length;
  state.counters["err10"] = numLong > 0 ? error / numLong : 0;
}

/// A rebuild that integrates 1000 lines through the regular grid (0), hexahedra (1) or tetrahedra (2).
void streams(benchmark::State& state, int kind) {
  PoOrmelle::init();
  PoBase::setNumThreads(static_cast<int>(state.range(0)));
  {
    const Workloads::FlowCube flow = Workloads::flowCube(kNodes, kind > 0);
    const Vectors velocities = vectorsOf(flow.velocities);
    const std::unique_ptr<PbMesh> mesh = makeMesh(kind, flow);
    mesh->addVecsSet(0, velocities.data(), "flow");
    const Vectors seeds = vectorsOf(Workloads::streamSeeds(kLines));
    auto* kit = new PoStreamLine;
    kit->ref();
    kit->setMesh(mesh.get());
    kit->vecsIndex = 0;
    kit->startPoints.setValues(0, kLines, seeds.data());
    kit->integrationStepLengthFactor = 0.5196F;
    kit->integrationMaxStepNumber = kSteps;
    kit->rebuild();  // the mesh's index of cells is made once
    int extra = 0;
    for (auto _ : state) {
      // Paths of the same inputs aren't integrated again.
      extra = 1 - extra;
      kit->integrationMaxStepNumber = kSteps + extra;
      kit->rebuild();
    }
    count(*kit, state);
    kit->unref();
  }
  PoBase::setNumThreads(0);
  PoOrmelle::finish();
}
void streams_regular(benchmark::State& state) { streams(state, 0); }
void streams_hex(benchmark::State& state) { streams(state, 1); }
void streams_tet(benchmark::State& state) { streams(state, 2); }
BENCHMARK(streams_regular)->ArgName("threads")->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);
BENCHMARK(streams_hex)->ArgName("threads")->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);
BENCHMARK(streams_tet)->ArgName("threads")->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

}  // namespace
