#include <cmath>
#include <vector>

#include <benchmark/benchmark.h>

#include <Ormelle/PbRegularCartesianGrid3D.h>
#include <Ormelle/PoBase.h>
#include <Ormelle/PoOrmelle.h>
#include <Ormelle/PoStreamLineMotion.h>
#include <Ormelle/PoStreamPointMotion.h>
#include <Ormelle/PoStreamSphereMotion.h>
#include <Ormelle/PoStreamTadpoleMotion.h>

namespace {

/// 1000 paths through a vortex about the middle of a cube, with some 500,000 samples in 5 frames of 100,000 particles.
template <class Kit>
class Vortex {
 public:
  Vortex() : m_mesh(33, 33, 33, -1.0F, -1.0F, -1.0F, 1.0F, 1.0F, 1.0F, 1) {
    std::vector<SbVec3f> vectors;
    for (int i = 0; i < 33 * 33 * 33; ++i) {
      const SbVec3f p = m_mesh.getNodeCoord(i);
      vectors.emplace_back(-p[1], p[0], 0.0F);
    }
    m_mesh.addVecsSet(0, vectors.data(), "vortex");
    std::vector<SbVec3f> starts;
    for (int i = 0; i < 1000; ++i)
      starts.emplace_back(0.1F + 0.0008F * static_cast<float>(i), 0.0F, -0.9F + 0.0018F * static_cast<float>(i));
    m_kit = new Kit;
    m_kit->ref();
    m_kit->startPoints.setValues(0, 1000, starts.data());
    m_kit->setMesh(&m_mesh);
    m_kit->vecsIndex = 0;
    m_kit->maxLifetime = 25;
    m_kit->timeStep = 0.05F;
    m_kit->isBlinking = FALSE;
  }
  ~Vortex() { m_kit->unref(); }
  Vortex(const Vortex&) = delete;
  Vortex& operator=(const Vortex&) = delete;

  Kit* kit() const { return m_kit; }

 private:
  PbRegularCartesianGrid3D m_mesh;
  Kit* m_kit;
};

/// The frames alone: the paths are there from the first time.
template <class Kit>
void motionFrames(benchmark::State& state) {
  PoOrmelle::init();
  PoBase::setNumThreads(static_cast<int>(state.range(0)));
  {
    const Vortex<Kit> vortex;
    vortex.kit()->rebuild();
    const unsigned int paths = vortex.kit()->getPathsId();
    for (auto _ : state) vortex.kit()->rebuild();
    if (vortex.kit()->getPathsId() != paths) state.SkipWithError("the paths were integrated again");
  }
  PoBase::setNumThreads(0);
  PoOrmelle::finish();
}

void motion_points(benchmark::State& state) { motionFrames<PoStreamPointMotion>(state); }
void motion_spheres(benchmark::State& state) { motionFrames<PoStreamSphereMotion>(state); }
void motion_pulses(benchmark::State& state) { motionFrames<PoStreamLineMotion>(state); }
void motion_tadpoles(benchmark::State& state) { motionFrames<PoStreamTadpoleMotion>(state); }
BENCHMARK(motion_points)->ArgName("threads")->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);
BENCHMARK(motion_spheres)->ArgName("threads")->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);
BENCHMARK(motion_pulses)->ArgName("threads")->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);
BENCHMARK(motion_tadpoles)->ArgName("threads")->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

/// Another frame.
void motion_view_frame(benchmark::State& state) {
  PoOrmelle::init();
  {
    const Vortex<PoStreamPointMotion> vortex;
    vortex.kit()->setUpdateMethod(PoBase::UPDATE_IMMEDIATE);
    vortex.kit()->rebuild();
    int frame = 0;
    for (auto _ : state) vortex.kit()->viewFrame = ++frame;
  }
  PoOrmelle::finish();
}
BENCHMARK(motion_view_frame)->Unit(benchmark::kMicrosecond);

}  // namespace
