#include "support/MeshFamily.h"

#include <Ormelle/PbCartesianGrid2D.h>
#include <Ormelle/PbCartesianGrid3D.h>
#include <Ormelle/PbParalCartesianGrid2D.h>
#include <Ormelle/PbParalCartesianGrid3D.h>
#include <Ormelle/PbRegularCartesianGrid2D.h>
#include <Ormelle/PbRegularCartesianGrid3D.h>

namespace {

std::vector<float> axis(int num, float min, float max) {
  std::vector<float> coords;
  for (int i = 0; i < num; ++i) coords.push_back(num > 1 ? min + (max - min) * float(i) / float(num - 1) : min);
  return coords;
}

// The arrays of a grid: x and y, for each line or for each node, then z if there is one.
std::vector<std::vector<float>> arraysOf(const RectangleSpec& spec, bool isPerNode) {
  const std::vector<float> x = axis(spec.numX, spec.xMin, spec.xMax), y = axis(spec.numY, spec.yMin, spec.yMax);
  std::vector<std::vector<float>> arrays = {x, y};
  if (spec.z) arrays.emplace_back();
  if (isPerNode) arrays[0] = arrays[1] = {};
  for (const float xi : x)
    for (const float yj : y) {
      if (isPerNode) arrays[0].push_back(xi), arrays[1].push_back(yj);
      if (spec.z) arrays[2].push_back(spec.z(xi, yj));
    }
  return arrays;
}

const float* zOf(const MeshSample<PbMesh2D>& sample, std::size_t index) {
  return sample.arrays.size() > index ? sample.arrays[index].data() : nullptr;
}

template <class Grid, bool isPerNode>
MeshSample<PbMesh2D> makeGrid2D(const RectangleSpec& spec, int isDataDuplicate) {
  MeshSample<PbMesh2D> sample{arraysOf(spec, isPerNode), nullptr};
  sample.mesh = std::make_unique<Grid>(spec.numX, spec.numY, sample.arrays[0].data(), sample.arrays[1].data(),
                                       zOf(sample, 2), isDataDuplicate);
  return sample;
}

MeshSample<PbMesh2D> makeRegular2D(const RectangleSpec& spec, int isDataDuplicate) {
  MeshSample<PbMesh2D> sample{arraysOf(spec, false), nullptr};
  sample.mesh = std::make_unique<PbRegularCartesianGrid2D>(spec.numX, spec.numY, spec.xMin, spec.yMin, spec.xMax,
                                                           spec.yMax, zOf(sample, 2), isDataDuplicate);
  return sample;
}

template <class Mesh>
MeshKind2D kind2D(std::string name, MeshSample<PbMesh2D> (*make)(const RectangleSpec&, int)) {
  return {std::move(name), make,
          [](const PbMesh2D& mesh) { return std::make_unique<Mesh>(dynamic_cast<const Mesh&>(mesh)); },
          [](PbMesh2D& to, const PbMesh2D& from) { dynamic_cast<Mesh&>(to) = dynamic_cast<const Mesh&>(from); }};
}

template <class Grid, bool isPerNode>
MeshSample<PbMesh3D> makeGrid3D(const BoxSpec& spec, int isDataDuplicate) {
  const int num[3] = {spec.numX, spec.numY, spec.numZ};
  std::vector<float> axes[3];
  for (int a = 0; a < 3; ++a) axes[a] = axis(num[a], spec.min[a], spec.max[a]);
  MeshSample<PbMesh3D> sample;
  if (isPerNode) {
    sample.arrays.resize(3);
    for (const float x : axes[0])
      for (const float y : axes[1])
        for (const float z : axes[2])
          sample.arrays[0].push_back(x), sample.arrays[1].push_back(y), sample.arrays[2].push_back(z);
  } else {
    sample.arrays.assign(axes, axes + 3);
  }
  sample.mesh = std::make_unique<Grid>(spec.numX, spec.numY, spec.numZ, sample.arrays[0].data(),
                                       sample.arrays[1].data(), sample.arrays[2].data(), isDataDuplicate);
  return sample;
}

MeshSample<PbMesh3D> makeRegular3D(const BoxSpec& spec, int isDataDuplicate) {
  return {
      {},
      std::make_unique<PbRegularCartesianGrid3D>(spec.numX, spec.numY, spec.numZ, spec.min[0], spec.min[1], spec.min[2],
                                                 spec.max[0], spec.max[1], spec.max[2], isDataDuplicate)};
}

}  // namespace

const std::vector<MeshKind2D>& meshKinds2D() {
  static const std::vector<MeshKind2D> s_kinds = {
      kind2D<PbCartesianGrid2D>("CartesianGrid2D", makeGrid2D<PbCartesianGrid2D, true>),
      kind2D<PbParalCartesianGrid2D>("ParalCartesianGrid2D", makeGrid2D<PbParalCartesianGrid2D, false>),
      kind2D<PbRegularCartesianGrid2D>("RegularCartesianGrid2D", makeRegular2D)};
  return s_kinds;
}

const std::vector<MeshKind3D>& meshKinds3D() {
  static const std::vector<MeshKind3D> s_kinds = {{"CartesianGrid3D", makeGrid3D<PbCartesianGrid3D, true>},
                                                  {"ParalCartesianGrid3D", makeGrid3D<PbParalCartesianGrid3D, false>},
                                                  {"RegularCartesianGrid3D", makeRegular3D}};
  return s_kinds;
}
