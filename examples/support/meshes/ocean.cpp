// Oxygen in the ocean, without a value on land.

#include <Ormelle/PoParalCartesianGrid2D.h>
#include <Ormelle/PoParalCartesianGrid3D.h>
#include <Ormelle/PoPolarGrid2D.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "MeshFiles.h"

namespace gallery {

namespace {

constexpr const char* kOxygen = "oxygen saturation in percent";

PoParalCartesianGrid2D* oxygenGrid(const std::vector<float>& x, const std::vector<float>& y,
                                   const std::vector<float>& oxygen) {
  auto* grid = new PoParalCartesianGrid2D;
  grid->setGeometry(sizeOf(x), sizeOf(y), x.data(), y.data());
  grid->addValuesSet(0, oxygen.data(), kOxygen);
  return grid;
}

// The mean of each node and twice itself with its neighbours along an axis: i, j or k is the node's place on it.
void smoothAlong(std::vector<float>& values, int num, int step) {
  const std::vector<float> before = values;
  for (std::size_t node = 0; node < values.size(); ++node) {
    const int place = static_cast<int>(node) / step % num;
    const std::size_t back = place > 0 ? static_cast<std::size_t>(step) : 0;
    const std::size_t on = place + 1 < num ? static_cast<std::size_t>(step) : 0;
    values[node] = (before[node - back] + 2 * before[node] + before[node + on]) / 4;
  }
}

// The ocean from 60 degrees south to 65 north, from 20 degrees east once round, so that the Pacific lies in the middle.
// Set 0 is the oxygen; set 1 is 1 in the sea and 0 on land, and in between where the two meet. A kilometre of depth is
// as long as ten degrees. Below the lowest layer is one of land, so that the sea has a floor everywhere.
void writeOceanFrom20East() {
  const DataSet data("ocean_oxygen");
  const std::vector<float> meridians = data.floats("x"), parallels = data.floats("y"), depths = data.floats("z");
  const int numX = sizeOf(meridians), numY = sizeOf(parallels), numZ = sizeOf(depths);
  const std::vector<float> oxygen = lastIndexFastest(data.floats("oxygen_saturation"), numX, numY, numZ);
  std::vector<float> longitudes, latitudes, heights, values, water;
  for (const float depth : depths) heights.push_back(-depth / 100);
  heights.push_back(heights.back() - 5);
  for (const float latitude : parallels)
    if (latitude > -60 && latitude < 66) latitudes.push_back(latitude);
  const int firstY =
      static_cast<int>(std::find(parallels.begin(), parallels.end(), latitudes.front()) - parallels.begin());
  const int firstX = static_cast<int>(std::find_if(meridians.begin(), meridians.end(), [](float x) { return x > 20; }) -
                                      meridians.begin());
  for (int i = firstX; i < firstX + numX; ++i) {
    longitudes.push_back(meridians[static_cast<std::size_t>(i % numX)] + (i < numX ? 0 : 360));
    for (int j = firstY; j < firstY + sizeOf(latitudes); ++j)
      for (int k = 0; k <= numZ; ++k) {
        const int given = (i % numX * numY + j) * numZ + k;
        values.push_back(k < numZ ? oxygen[static_cast<std::size_t>(given)] : std::numeric_limits<float>::quiet_NaN());
        water.push_back(std::isnan(values.back()) ? 0.0F : 1.0F);
      }
  }
  for (int pass = 0; pass < 2; ++pass) {
    smoothAlong(water, numX, sizeOf(latitudes) * sizeOf(heights));
    smoothAlong(water, sizeOf(latitudes), sizeOf(heights));
    smoothAlong(water, sizeOf(heights), 1);
  }
  auto* volume = new PoParalCartesianGrid3D;
  volume->setGeometry(numX, sizeOf(latitudes), sizeOf(heights), longitudes.data(), latitudes.data(), heights.data());
  volume->addValuesSet(0, values.data(), kOxygen);
  volume->addValuesSet(1, water.data(), "part of water");
  writeMesh("ocean_from_20E", volume);
}

}  // namespace

void writeOcean() {
  const DataSet data("ocean_oxygen");
  const std::vector<float> longitudes = data.floats("x");
  const std::vector<float> latitudes = data.floats("y");
  std::vector<float> heights = data.floats("z");
  for (float& height : heights) height = -height;
  // The root of the depth gives the upper layers, where most happens, the room that they need.
  std::vector<float> roots(heights);
  for (float& root : roots) root = -2.2f * std::sqrt(-root);
  const int numX = sizeOf(longitudes), numY = sizeOf(latitudes), numZ = sizeOf(heights);
  const std::vector<float> oxygen = lastIndexFastest(data.floats("oxygen_saturation"), numX, numY, numZ);

  const auto at = [&](int i, int j, int k) { return oxygen[static_cast<std::size_t>((i * numY + j) * numZ + k)]; };
  const auto section = [&](int latitude) {
    std::vector<float> values;
    for (int i = 0; i < numX; ++i)
      for (int k = 0; k < numZ; ++k) values.push_back(at(i, latitude, k));
    return values;
  };
  const auto layer = [&](int depth) {
    std::vector<float> values;
    for (int i = 0; i < numX; ++i)
      for (int j = 0; j < numY; ++j) values.push_back(at(i, j, depth));
    return values;
  };
  writeMesh("ocean_section_11S", oxygenGrid(longitudes, roots, section(39)));    // 11.5 degrees south
  writeMesh("ocean_section_50N", oxygenGrid(longitudes, heights, section(70)));  // 50.5 degrees north
  writeMesh("ocean_400m", oxygenGrid(longitudes, latitudes, layer(12)));

  auto* volume = new PoParalCartesianGrid3D;
  volume->setGeometry(numX, numY, numZ, longitudes.data(), latitudes.data(), heights.data());
  volume->addValuesSet(0, oxygen.data(), kOxygen);
  writeMesh("ocean", volume);
  writeOceanFrom20East();
}

// How much of its surroundings is land, on a map of the world in degrees and on one round the north pole like that of
// windRoundPole(): shores are where it is a half.
void writeLand() {
  const DataSet data("ocean_oxygen");
  const std::vector<float> meridians = data.floats("x"), parallels = data.floats("y");
  const int numX = sizeOf(meridians), numY = sizeOf(parallels), numZ = sizeOf(data.floats("z"));
  const std::vector<float> oxygen = lastIndexFastest(data.floats("oxygen_saturation"), numX, numY, numZ);
  std::vector<float> longitudes, land;
  for (int i = -1; i <= numX; ++i) {
    longitudes.push_back(meridians[0] + 360.0f * static_cast<float>(i) / static_cast<float>(numX));
    for (int j = 0; j < numY; ++j)
      land.push_back(std::isnan(oxygen[static_cast<std::size_t>(((i + numX) % numX * numY + j) * numZ)]) ? 1.0f : 0.0f);
  }
  smoothAlong(land, sizeOf(longitudes), numY);
  smoothAlong(land, numY, 1);
  auto* map = new PoParalCartesianGrid2D;
  map->setGeometry(sizeOf(longitudes), numY, longitudes.data(), parallels.data());
  map->addValuesSet(0, land.data(), "part of land");
  writeMesh("land", map);

  std::vector<float> radii, angles, round;
  for (int i = 0; i <= numX; ++i)
    angles.push_back((meridians[0] + 360.0f * static_cast<float>(i) / static_cast<float>(numX) - 90) *
                     kRadiansPerDegree);
  for (int j = numY - 1; j >= 0 && parallels[static_cast<std::size_t>(j)] > 15; --j) {
    radii.push_back(90 - parallels[static_cast<std::size_t>(j)]);
    for (int i = 0; i <= numX; ++i) round.push_back(land[static_cast<std::size_t>((i % numX + 1) * numY + j)]);
  }
  auto* polar = new PoPolarGrid2D;
  polar->setGeometry(sizeOf(radii), sizeOf(angles), radii.data(), angles.data());
  polar->addValuesSet(0, round.data(), "part of land");
  writeMesh("land_north", polar);
}

}  // namespace gallery
