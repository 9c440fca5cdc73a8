#include "quillane/rep/TestGrid.h"

#include <Ormelle/PbCartesianGrid2D.h>
#include <Ormelle/PbPolarGrid2D.h>

#include <cmath>

namespace {

template <class Place>
TestGrid gridOf(int numX, int numY, Place&& place) {
  TestGrid grid;
  grid.numX = numX;
  grid.numY = numY;
  for (int i = 0; i < numX; ++i) {
    for (int j = 0; j < numY; ++j) {
      const auto [x, y] = place(i, j);
      grid.x.push_back(x);
      grid.y.push_back(y);
      grid.values.push_back(x + 10 * y);
    }
  }
  return grid;
}

}  // namespace

TestGrid TestGrid::unitCells(int numX, int numY) {
  return gridOf(numX, numY, [](int i, int j) { return std::pair(static_cast<float>(i), static_cast<float>(j)); });
}

std::unique_ptr<PbMesh2D> TestGrid::make() const {
  auto mesh = std::make_unique<PbCartesianGrid2D>(numX, numY, x.data(), y.data(), z.empty() ? nullptr : z.data(), 1);
  mesh->addValuesSet(0, values.data(), "values");
  return mesh;
}

PolarPair::PolarPair(bool isRaised) {
  constexpr int kRadii = 6;
  constexpr int kAngles = 4;
  const float radii[kRadii] = {0, 0.5F, 2, 3, 4.5F, 5};
  const float angles[kAngles] = {1, 1.5F, 3, 3.25F};
  TestGrid grid = gridOf(kRadii, kAngles, [&](int i, int j) {
    return std::pair(radii[i] * std::cos(angles[j]), radii[i] * std::sin(angles[j]));
  });
  for (int node = 0; isRaised && node < kRadii * kAngles; ++node)
    grid.z.push_back(static_cast<float>(node % 5) * 0.25F);
  polar = std::make_unique<PbPolarGrid2D>(kRadii, kAngles, radii, angles, isRaised ? grid.z.data() : nullptr, 1);
  polar->addValuesSet(0, grid.values.data(), "values");
  cartesian = grid.make();
}

std::unique_ptr<PbLinearDataMapping> greyMapping() {
  auto mapping = std::make_unique<PbLinearDataMapping>();
  mapping->setValues(0, SbColor(0, 0, 0), 100, SbColor(1, 1, 1));
  return mapping;
}

std::string childTypes(const SoGroup* group) {
  std::string types;
  for (int i = 0; group && i < group->getNumChildren(); ++i) {
    if (i > 0) types += ' ';
    types += group->getChild(i)->getTypeId().getName().getString();
  }
  return types;
}
