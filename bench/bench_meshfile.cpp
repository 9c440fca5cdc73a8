// Meshes to and from files, against a copy of the bytes: a curvilinear grid of a million nodes with one set of values.

#include <Inventor/SoInput.h>
#include <Inventor/SoOutput.h>
#include <Ormelle/PoOrmelle.h>
#include <Ormelle/PoSFCartesianGrid2D.h>
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>
#include <vector>

namespace {

// Memory for a file, kept between the rounds so that they measure no page faults.
std::vector<char>& fileMemory() {
  static std::vector<char> s_memory(200'000'000);
  return s_memory;
}

using Field = PoSFCartesianGrid2D;

std::unique_ptr<Field> makeGrid(int num) {
  PoOrmelle::init();
  std::mt19937 random(1);
  std::uniform_real_distribution<float> place(-1000, 1000);
  std::vector<float> coords[4];
  for (auto& array : coords)
    for (int i = 0; i < num * num; ++i) array.push_back(place(random));
  auto grid = std::make_unique<Field>();
  grid->getMesh()->setGeometry(num, num, coords[0].data(), coords[1].data(), coords[2].data());
  grid->getMesh()->addValuesSet(0, coords[3].data(), "Heat");
  return grid;
}

size_t writeGrid(const Field& grid, bool isBinary) {
  SoOutput out;
  out.setBinary(isBinary);
  out.setStage(SoOutput::WRITE);
  out.setBuffer(fileMemory().data(), fileMemory().size(), [](void* memory, size_t) { return memory; });
  grid.writeValue(&out);
  void* buffer;
  size_t size;
  out.getBuffer(buffer, size);
  return size;
}

void setBytes(benchmark::State& state, size_t size) {
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(size));
}

void writeMesh(benchmark::State& state, bool isBinary) {
  const auto grid = makeGrid(static_cast<int>(state.range(0)));
  size_t size = 0;
  for (auto _ : state) size = writeGrid(*grid, isBinary);
  setBytes(state, size);
}

void readMesh(benchmark::State& state, bool isBinary) {
  const auto grid = makeGrid(static_cast<int>(state.range(0)));
  const size_t size = writeGrid(*grid, isBinary);
  Field read;
  for (auto _ : state) {
    SoInput in;
    in.setBuffer(fileMemory().data(), size);
    if (!read.readValue(&in)) state.SkipWithError("the mesh couldn't be read");
  }
  if (!read.isSame(*grid)) state.SkipWithError("another mesh was read");
  setBytes(state, size);
}

void MeshFileWriteText(benchmark::State& state) { writeMesh(state, false); }
void MeshFileReadText(benchmark::State& state) { readMesh(state, false); }
void MeshFileWriteBinary(benchmark::State& state) { writeMesh(state, true); }
void MeshFileReadBinary(benchmark::State& state) { readMesh(state, true); }

// What the toolkit needs to hand out the bytes of the binary file, without a mesh to be made of them.
void MeshFileReadBinaryToolkitAlone(benchmark::State& state) {
  const auto grid = makeGrid(static_cast<int>(state.range(0)));
  const size_t size = writeGrid(*grid, true);
  std::vector<unsigned char> bytes(size);
  for (auto _ : state) {
    SoInput in;
    in.setBuffer(fileMemory().data(), size);
    in.readBinaryArray(bytes.data(), static_cast<int>(size) - 64);
  }
  setBytes(state, size);
}

void MeshFileCopyBytes(benchmark::State& state) {
  const size_t size = static_cast<size_t>(state.range(0) * state.range(0)) * 4 * sizeof(float);
  std::vector<char> from(size, 1), to(size, 2);
  for (auto _ : state) {
    std::memcpy(to.data(), from.data(), size);
    benchmark::DoNotOptimize(to.data());
    benchmark::ClobberMemory();
  }
  setBytes(state, size);
}

}  // namespace

BENCHMARK(MeshFileWriteText)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(MeshFileReadText)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(MeshFileWriteBinary)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(MeshFileReadBinary)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(MeshFileReadBinaryToolkitAlone)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(MeshFileCopyBytes)->Arg(1000)->Unit(benchmark::kMillisecond);
