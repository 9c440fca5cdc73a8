// What it takes to make the level surface of a volume anew when its level changes: the surface alone, with the normals,
// and up to the finished frame.

#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedShape.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/system/gl.h>
#include <Ormelle/PbHexahedronMesh3D.h>
#include <Ormelle/PbRegularCartesianGrid3D.h>
#include <Ormelle/PbTetrahedronMesh3D.h>
#include <Ormelle/PoMeshLevelSurf.h>
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <memory>

#include "AllocationCount.h"
#include "Workloads.h"
#include "graph/frame/PiParallel.h"
#include "graph/toolkit/offscreen/PiGlContext.h"

namespace {

enum Mesh { REGULAR, HEXAHEDRA, TETRAHEDRA };
enum Values { GYROID, MARSCHNER_LOBB };

/// A mesh with its values as set 0.
struct Volume {
  std::vector<float> values;
  std::unique_ptr<PbMesh3D> mesh;

  Volume(Mesh kind, int size, Values function) {
    const Workloads::Field field = function == GYROID ? Workloads::gyroid : Workloads::marschnerLobb;
    if (kind == REGULAR) {
      values = Workloads::regularValues(size, field);
      mesh = std::make_unique<PbRegularCartesianGrid3D>(size, size, size, -1.0F, -1.0F, -1.0F, 1.0F, 1.0F, 1.0F, 0);
    } else {
      const Workloads::WarpedCube cube = Workloads::warpedCube(size, field);
      const int numNodes = static_cast<int>(cube.x.size());
      values = cube.values;
      if (kind == HEXAHEDRA) {
        const auto cells = Workloads::hexahedra(cube);
        mesh = std::make_unique<PbHexahedronMesh3D>(numNodes, cube.x.data(), cube.y.data(), cube.z.data(),
                                                    static_cast<int>(cells.size() / 8), cells.data(), 1);
      } else {
        const auto cells = Workloads::tetrahedra(cube);
        mesh = std::make_unique<PbTetrahedronMesh3D>(numNodes, cube.x.data(), cube.y.data(), cube.z.data(),
                                                     static_cast<int>(cells.size() / 4), cells.data(), 1);
      }
    }
    mesh->addValuesSet(0, values.data(), PbMesh::PER_NODE, "level");
  }
};

/// Makes no normals: there is one for all.
class WithoutNormals : public PoMeshLevelSurf {
 public:
  SbVec3f getOverallNormal() override { return SbVec3f(0, 0, 1); }
};

void useStrips(bool areUsed) { setenv("ZEL_QUILLANE_USE_TRIANGLE_STRIP_SET", areUsed ? "TRUE" : "FALSE", 1); }

/// Alternates between two levels, so that nothing of the last surface serves.
struct Alternating {
  PoMeshLevelSurf* kit;
  float levels[2];
  int next = 0;
  void step() { kit->levelValue = levels[next ^= 1]; }
};

Alternating start(PoMeshLevelSurf* kit, const Volume& volume, float level) {
  kit->ref();
  kit->setMesh(volume.mesh.get());
  kit->valuesIndexForLevel = 0;
  Alternating alternating{kit, {level, level + 0.003F}};
  for (int warm = 0; warm < 3; ++warm) {
    alternating.step();
    kit->rebuild();
  }
  return alternating;
}

int numFacetIndices(PoMeshLevelSurf* kit) {
  auto* group = static_cast<SoGroup*>(kit->getPart("groupLevelSurf", FALSE));
  auto* shape = static_cast<SoIndexedShape*>(group->getChild(group->getNumChildren() - 1));
  return shape->coordIndex.getNum();
}

/// Arguments: mesh, its size, values, level in thousandths, strips or polygons, normals (0, 1 of facets, 2 of points),
/// threads.
void BM_LevelSurface(benchmark::State& state) {
  const Volume volume(static_cast<Mesh>(state.range(0)), static_cast<int>(state.range(1)),
                      static_cast<Values>(state.range(2)));
  useStrips(state.range(4) != 0);
  PiParallel::setNumThreads(static_cast<int>(state.range(6)));
  PoMeshLevelSurf* kit = state.range(5) == 0 ? new WithoutNormals : new PoMeshLevelSurf;
  kit->creaseAngle = state.range(5) == 2 ? 1.57F : 0.0F;
  Alternating alternating = start(kit, volume, static_cast<float>(state.range(3)) / 1000);
  const std::size_t before = allocationCount();
  for (auto _ : state) {
    alternating.step();
    kit->rebuild();
  }
  state.counters["allocations"] =
      static_cast<double>(allocationCount() - before) / static_cast<double>(state.iterations());
  state.counters["indices"] = numFacetIndices(kit);
  state.counters["kB kept"] = static_cast<double>(kit->getMemorySize()) / 1024;
  kit->unref();
  PiParallel::setNumThreads(0);
}
BENCHMARK(BM_LevelSurface)
    ->ArgNames({"mesh", "size", "values", "level", "strips", "normals", "threads"})
    ->Args({REGULAR, 257, GYROID, 300, 0, 0, 1})
    ->Args({REGULAR, 257, GYROID, 300, 1, 0, 1})
    ->Args({REGULAR, 257, GYROID, 0, 0, 0, 1})
    ->Args({REGULAR, 257, MARSCHNER_LOBB, 500, 0, 0, 1})
    ->Args({REGULAR, 257, GYROID, 300, 0, 1, 1})
    ->Args({REGULAR, 257, GYROID, 300, 0, 2, 1})
    ->Args({REGULAR, 257, GYROID, 300, 0, 0, 2})
    ->Args({HEXAHEDRA, 100, GYROID, 300, 0, 0, 1})
    ->Args({HEXAHEDRA, 100, MARSCHNER_LOBB, 500, 0, 0, 1})
    ->Args({HEXAHEDRA, 100, GYROID, 300, 0, 0, 2})
    ->Args({HEXAHEDRA, 200, GYROID, 300, 0, 0, 1})
    ->Args({TETRAHEDRA, 100, GYROID, 300, 0, 0, 1})
    ->Args({TETRAHEDRA, 100, MARSCHNER_LOBB, 500, 0, 0, 1})
    ->Args({TETRAHEDRA, 100, GYROID, 300, 0, 0, 2})
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();

/// From a changed level to the finished frame of a million triangles, 800 x 600 in software. Arguments: strips or
/// polygons, normals (0: left to the toolkit), threads.
void BM_LevelSurfaceFrame(benchmark::State& state) {
  const Volume volume(REGULAR, 161, GYROID);
  useStrips(state.range(0) != 0);
  PiParallel::setNumThreads(static_cast<int>(state.range(2)));
  PoMeshLevelSurf* kit = new PoMeshLevelSurf;
  kit->creaseAngle = state.range(1) == 2 ? 1.57F : 0.0F;
  SoSeparator* scene = new SoSeparator;
  scene->ref();
  auto* camera = new SoPerspectiveCamera;
  scene->addChild(camera);
  scene->addChild(new SoDirectionalLight);
  scene->addChild(kit);
  Alternating alternating = start(kit, volume, 0.3F);
  camera->position.setValue(2, 3, 4);
  camera->pointAt(SbVec3f(0, 0, 0));
  camera->nearDistance = 1;
  camera->farDistance = 10;
  PiGlContext context(800, 600);
  if (!context.isValid() || !context.makeCurrent()) {
    state.SkipWithError(context.error().c_str());
    return;
  }
  {
    SoGLRenderAction action(SbViewportRegion(800, 600));
    action.setCacheContext(context.cacheContext());
    const auto draw = [&] {
      glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
      action.apply(scene);
      glFinish();
    };
    glEnable(GL_DEPTH_TEST);
    for (int warm = 0; warm < 3; ++warm) draw();
    for (auto _ : state) {
      alternating.step();
      draw();
    }
  }
  context.release();
  scene->unref();
  kit->unref();
  PiParallel::setNumThreads(0);
}
BENCHMARK(BM_LevelSurfaceFrame)
    ->ArgNames({"strips", "normals", "threads"})
    ->Args({0, 1, 1})
    ->Args({0, 2, 1})
    ->Args({1, 1, 1})
    ->Args({1, 2, 1})
    ->Args({1, 2, 2})
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();

}  // namespace
