// Writes the data sets as mesh nodes or curves, one file each, for the scenes of the gallery. What a scene can't do
// itself happens here: cutting sections and windows out of a set, or changing its coordinates.

#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbDateFormatMapping.h>
#include <Ormelle/PoCurve.h>
#include <Ormelle/PoIndexedMesh3D.h>
#include <Ormelle/PoIrregularMesh1D.h>
#include <Ormelle/PoParalCartesianGrid2D.h>
#include <Ormelle/PoParalCartesianGrid3D.h>
#include <Ormelle/PoPolarGrid2D.h>
#include <Ormelle/PoQuadrangleMesh2D.h>
#include <Ormelle/PoRegularCartesianGrid2D.h>
#include <Ormelle/PoTetrahedronMesh3D.h>
#include <Ormelle/PoTriangleMesh2D.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <stdexcept>

#include "Atmosphere.h"
#include "graph/toolkit/offscreen/PiWholeFile.h"

namespace {

using gallery::Atmosphere;
using gallery::DataSet;
using gallery::lastIndexFastest;

constexpr float kRadiansPerDegree = 0.0174532925f;

std::filesystem::path g_folder;

int sizeOf(const std::vector<float>& numbers) { return static_cast<int>(numbers.size()); }

// Writes `mesh`, a new node, to the file `<name>.iv`.
void write(const std::string& name, SoNode* mesh) {
  mesh->ref();
  const std::string file = (g_folder / (name + ".iv")).string();
  PiWholeFile whole(file);
  if (whole.stream()) {
    SoOutput out;
    out.setFilePointer(whole.stream());
    SoWriteAction(&out).apply(mesh);
  }
  const std::string problem = whole.close();
  mesh->unref();
  if (!problem.empty()) throw std::runtime_error(file + ": " + problem);
}

// ---- The land around the Jacksboro Fault ----------------------------------------------------------------------------

struct Terrain {
  int numX, numY;
  float sizeX, sizeY;  // in kilometres
  std::vector<float> heights;

  Terrain() {
    const DataSet data("jacksboro_fault_dem");
    numX = data.dims()[0];
    numY = data.dims()[1];
    constexpr float kilometresPerDegree = 111.2f;
    const float latitude = data.origin()[1] + data.spacing()[1] * static_cast<float>(numY) / 2;
    sizeX =
        static_cast<float>(numX - 1) * data.spacing()[0] * kilometresPerDegree * std::cos(latitude * kRadiansPerDegree);
    sizeY = static_cast<float>(numY - 1) * data.spacing()[1] * kilometresPerDegree;
    heights = lastIndexFastest(data.floats("elevation"), numX, numY);
  }

  // Twice a weighted mean of 5 x 5 nodes, which takes away what is below some 130 m: lines of a survey by radar are
  // rough.
  void smooth() {
    constexpr float weights[] = {1, 4, 6, 4, 1};
    for (int pass = 0; pass < 2; ++pass) {
      for (const auto& [stepX, stepY] : {std::pair(1, 0), std::pair(0, 1)}) {
        const std::vector<float> before = heights;
        for (int i = 0; i < numX; ++i) {
          for (int j = 0; j < numY; ++j) {
            float sum = 0;
            for (int k = -2; k <= 2; ++k) {
              const int x = std::clamp(i + k * stepX, 0, numX - 1), y = std::clamp(j + k * stepY, 0, numY - 1);
              sum += weights[k + 2] * before[static_cast<std::size_t>(x * numY + y)];
            }
            heights[static_cast<std::size_t>(i * numY + j)] = sum / 16;
          }
        }
      }
    }
  }

  // The nodes from (firstX, firstY), of which only every `step`th is taken. Set 0 is the height in metres; set 1 is
  // what to raise the mesh by, in kilometres like the sides and four times too large.
  PoRegularCartesianGrid2D* window(int firstX, int firstY, int countX, int countY, int step = 1) const {
    std::vector<float> metres;
    std::vector<float> raised;
    for (int i = 0; i < countX; ++i) {
      for (int j = 0; j < countY; ++j) {
        metres.push_back(heights[static_cast<std::size_t>((firstX + i * step) * numY + firstY + j * step)]);
        raised.push_back(metres.back() * 4 / 1000);
      }
    }
    auto* grid = new PoRegularCartesianGrid2D;
    grid->setGeometry(countX, countY, 0, 0,
                      sizeX * static_cast<float>((countX - 1) * step) / static_cast<float>(numX - 1),
                      sizeY * static_cast<float>((countY - 1) * step) / static_cast<float>(numY - 1));
    grid->addValuesSet(0, metres.data(), "height in m");
    grid->addValuesSet(1, raised.data(), "height in km, times 4");
    return grid;
  }
};

void writeTerrain() {
  Terrain terrain;
  write("terrain", terrain.window(0, 0, terrain.numX, terrain.numY));
  write("terrain_coarse", terrain.window(0, 0, (terrain.numX - 1) / 8 + 1, (terrain.numY - 1) / 8 + 1, 8));
  write("terrain_window", terrain.window(60, 60, 120, 120));
  terrain.smooth();
  write("terrain_smooth", terrain.window(0, 0, terrain.numX, terrain.numY));
}

// ---- The atmosphere of a January ------------------------------------------------------------------------------------

// One level as a map in degrees: temperature, speed of the wind, and the wind as vectors.
PoParalCartesianGrid2D* atmosphereLevel(const Atmosphere& air, int level) {
  auto* map = new PoParalCartesianGrid2D;
  map->setGeometry(air.numLongitudes(), air.numLatitudes(), air.longitudes().data(), air.latitudes().data());
  map->addValuesSet(0, air.map([&](int i, int j) { return air.temperature(level, i, j); }).data(), "temperature in K");
  map->addValuesSet(1, air.map([&](int i, int j) { return air.speed(level, i, j); }).data(),
                    "speed of the wind in m/s");
  map->addValuesSet(2, air.map([&](int i, int j) { return air.temperature(level, i, j) - 273.15F; }).data(),
                    "temperature in degrees Celsius");
  map->addVecsSet(0, air.map([&](int i, int j) { return air.wind(level, i, j); }).data(), "wind in m/s");
  return map;
}

// From 20 degrees north to the pole, and once round to the first meridian again: the radius is the distance from the
// pole in degrees.
PoPolarGrid2D* atmosphereRoundPole(const Atmosphere& air, int level) {
  std::vector<int> parallels;
  for (int j = air.numLatitudes() - 1; j >= 0 && air.latitudes()[static_cast<std::size_t>(j)] > 20; --j)
    parallels.push_back(j);
  std::vector<float> radii = {0};
  for (const int j : parallels) radii.push_back(90 - air.latitudes()[static_cast<std::size_t>(j)]);
  std::vector<float> angles;
  for (const float longitude : air.longitudes()) angles.push_back((longitude - 90) * kRadiansPerDegree);
  angles.push_back(angles.front() + 360 * kRadiansPerDegree);

  // The pole itself is one point, with the mean of the ring round it.
  const auto celsius = [&](int i, int j) { return air.temperature(level, i % air.numLongitudes(), j) - 273.15f; };
  float pole = 0;
  for (int i = 0; i < air.numLongitudes(); ++i)
    pole += celsius(i, parallels.front()) / static_cast<float>(air.numLongitudes());
  std::vector<float> values(angles.size(), pole);
  for (const int j : parallels)
    for (int i = 0; i <= air.numLongitudes(); ++i) values.push_back(celsius(i, j));

  auto* polar = new PoPolarGrid2D;
  polar->setGeometry(sizeOf(radii), sizeOf(angles), radii.data(), angles.data());
  polar->addValuesSet(0, values.data(), "temperature in degrees Celsius");
  return polar;
}

// In kilometres: the height of a pressure in an atmosphere of one temperature.
float heightOf(float pressure) {
  constexpr float scaleHeight = 7.4f;
  return scaleHeight * std::log(1000 / pressure);
}

// The whole of it, in degrees and kilometres, or so many units a kilometre.
PoParalCartesianGrid3D* atmosphereVolume(const Atmosphere& air, float kilometre = 1) {
  std::vector<float> heights;
  for (const float pressure : air.pressures()) heights.push_back(kilometre * heightOf(pressure));
  std::vector<float> temperatures;
  std::vector<float> celsius;
  std::vector<SbVec3f> winds;
  for (int i = 0; i < air.numLongitudes(); ++i) {
    for (int j = 0; j < air.numLatitudes(); ++j) {
      for (int level = 0; level < sizeOf(heights); ++level) {
        temperatures.push_back(air.temperature(level, i, j));
        celsius.push_back(temperatures.back() - 273.15f);
        winds.push_back(air.wind(level, i, j));
      }
    }
  }
  auto* grid = new PoParalCartesianGrid3D;
  grid->setGeometry(air.numLongitudes(), air.numLatitudes(), sizeOf(heights), air.longitudes().data(),
                    air.latitudes().data(), heights.data());
  grid->addValuesSet(0, temperatures.data(), "temperature in K");
  grid->addValuesSet(1, celsius.data(), "temperature in degrees Celsius");
  grid->addVecsSet(0, winds.data(), "wind in m/s");
  return grid;
}

// The whole of it round a ball of radius 10, north upwards: hexahedra that meet again at the first meridian, and wedges
// at the poles, which have the mean of the last parallel. A kilometre of height is 0.15, some 95 times too much beside
// the radius of the earth. Set 1 is the layer of a cell, from 0 at the ground.
PoIndexedMesh3D* atmosphereRoundBall(const Atmosphere& air) {
  constexpr int kStep = 2;  // of the meridians
  const int numX = air.numLongitudes() / kStep, numY = air.numLatitudes(), numZ = sizeOf(air.pressures());
  std::vector<float> x, y, z, temperatures;
  const auto addNode = [&](float longitude, float latitude, int level, float kelvin) {
    const float radius = 10 + 0.15f * heightOf(air.pressures()[static_cast<std::size_t>(level)]);
    const float phi = longitude * kRadiansPerDegree, theta = latitude * kRadiansPerDegree;
    x.push_back(radius * std::cos(theta) * std::cos(phi));
    y.push_back(radius * std::cos(theta) * std::sin(phi));
    z.push_back(radius * std::sin(theta));
    temperatures.push_back(kelvin - 273.15f);
  };
  for (int i = 0; i < numX; ++i)
    for (int j = 0; j < numY; ++j)
      for (int k = 0; k < numZ; ++k)
        addNode(air.longitudes()[static_cast<std::size_t>(i * kStep)], air.latitudes()[static_cast<std::size_t>(j)], k,
                air.temperature(k, i * kStep, j));
  for (const int j : {0, numY - 1})
    for (int k = 0; k < numZ; ++k) {
      float sum = 0;
      for (int i = 0; i < air.numLongitudes(); ++i) sum += air.temperature(k, i, j);
      addNode(0, j == 0 ? -90.0f : 90.0f, k, sum / static_cast<float>(air.numLongitudes()));
    }

  std::vector<int> nodes, sizes;
  std::vector<float> layers;
  const auto node = [=](int i, int j, int k) { return (i % numX * numY + j) * numZ + k; };
  for (int i = 0; i < numX; ++i)
    for (int j = -1; j < numY; ++j)
      for (int k = 0; k + 1 < numZ; ++k) {
        const std::size_t before = nodes.size();
        for (const int level : {k, k + 1}) {
          if (j < 0)
            nodes.insert(nodes.end(), {numX * numY * numZ + level, node(i + 1, 0, level), node(i, 0, level)});
          else if (j == numY - 1)
            nodes.insert(nodes.end(), {node(i, j, level), node(i + 1, j, level), (numX * numY + 1) * numZ + level});
          else
            nodes.insert(nodes.end(),
                         {node(i, j, level), node(i + 1, j, level), node(i + 1, j + 1, level), node(i, j + 1, level)});
        }
        sizes.push_back(static_cast<int>(nodes.size() - before));
        layers.push_back(static_cast<float>(k));
      }
  auto* mesh = new PoIndexedMesh3D;
  mesh->setGeometry(sizeOf(x), x.data(), y.data(), z.data(), sizeOf(layers), nodes.data(), sizes.data());
  mesh->addValuesSet(0, temperatures.data(), "temperature in degrees Celsius");
  mesh->addValuesSet(1, layers.data(), PbMesh::PER_CELL, "layer");
  return mesh;
}

// The wind on a map of the world in degrees, from -180 to 180: set 0 is the temperature in degrees Celsius, set 1 the
// speed in m/s; vectors 0 are the wind in m/s, vectors 1 the same in degrees of the map in an hour. Only every
// `stepX`th meridian and `stepY`th parallel is taken.
PoParalCartesianGrid2D* windMap(const Atmosphere& air, int level, int stepX, int stepY) {
  std::vector<float> longitudes, latitudes, celsius, speeds;
  std::vector<SbVec3f> winds, degrees;
  for (int j = stepY / 2; j < air.numLatitudes(); j += stepY)
    latitudes.push_back(air.latitudes()[static_cast<std::size_t>(j)]);
  for (int i = 0; i <= air.numLongitudes(); i += stepX) {
    longitudes.push_back(i < air.numLongitudes() ? air.longitudes()[static_cast<std::size_t>(i)] : 180);
    for (int j = stepY / 2; j < air.numLatitudes(); j += stepY) {
      const int x = i % air.numLongitudes();
      const SbVec3f wind = air.wind(level, x, j);
      constexpr float hourly = 3600 / 111.2e3f;  // degrees of a meridian for each m/s
      celsius.push_back(air.temperature(level, x, j) - 273.15f);
      speeds.push_back(air.speed(level, x, j));
      winds.push_back(wind);
      const float shrunk = std::cos(air.latitudes()[static_cast<std::size_t>(j)] * kRadiansPerDegree);
      degrees.emplace_back(hourly * wind[0] / shrunk, hourly * wind[1], 0.0f);
    }
  }
  auto* map = new PoParalCartesianGrid2D;
  map->setGeometry(sizeOf(longitudes), sizeOf(latitudes), longitudes.data(), latitudes.data());
  map->addValuesSet(0, celsius.data(), "temperature in degrees Celsius");
  map->addValuesSet(1, speeds.data(), "speed of the wind in m/s");
  map->addVecsSet(0, winds.data(), "wind in m/s");
  map->addVecsSet(1, degrees.data(), "wind in degrees of the map an hour");
  return map;
}

// A level from 15 degrees north to a degree from the pole and all round it: coordinates are degrees from the pole, with
// the meridian of Greenwich downwards. Set 0 is the speed in m/s, vectors 0 the wind in degrees of the map in an hour.
PoQuadrangleMesh2D* windRoundPole(const Atmosphere& air, int level) {
  const int numX = air.numLongitudes();
  std::vector<float> x, y, speeds;
  std::vector<SbVec3f> winds;
  std::vector<int> quadrangles;
  for (int j = air.numLatitudes() - 1; j >= 0 && air.latitudes()[static_cast<std::size_t>(j)] > 15; --j) {
    const float latitude = air.latitudes()[static_cast<std::size_t>(j)], radius = 90 - latitude;
    const int first = sizeOf(x);
    for (int i = 0; i < numX; ++i) {
      if (first > 0) {
        const int next = (i + 1) % numX;
        quadrangles.insert(quadrangles.end(), {first - numX + i, first + i, first + next, first - numX + next});
      }
      constexpr float hourly = 3600 / 111.2e3f;  // degrees of a meridian for each m/s
      const SbVec3f wind = air.wind(level, i, j) * hourly;
      const float round = wind[0] * radius * kRadiansPerDegree / std::cos(latitude * kRadiansPerDegree);
      const float angle = (air.longitudes()[static_cast<std::size_t>(i)] - 90) * kRadiansPerDegree;
      const float cosine = std::cos(angle), sine = std::sin(angle);
      x.push_back(radius * cosine);
      y.push_back(radius * sine);
      winds.emplace_back(-wind[1] * cosine - round * sine, -wind[1] * sine + round * cosine, 0.0f);
      speeds.push_back(air.speed(level, i, j));
    }
  }
  auto* mesh = new PoQuadrangleMesh2D;
  mesh->setGeometry(sizeOf(x), x.data(), y.data(), static_cast<int>(quadrangles.size() / 4), quadrangles.data());
  mesh->addValuesSet(0, speeds.data(), "speed of the wind in m/s");
  mesh->addVecsSet(0, winds.data(), "wind in degrees of the map an hour");
  return mesh;
}

void writeAtmosphere() {
  const Atmosphere air;
  write("atmosphere_1000hPa", atmosphereLevel(air, 0));
  write("atmosphere_200hPa", atmosphereLevel(air, 7));
  write("atmosphere_100hPa", atmosphereLevel(air, 9));
  write("atmosphere_north_850hPa", atmosphereRoundPole(air, 1));
  write("atmosphere", atmosphereVolume(air));
  write("atmosphere_high", atmosphereVolume(air, 3));
  write("atmosphere_ball", atmosphereRoundBall(air));
  write("wind_850hPa", windMap(air, 1, 1, 1));
  write("wind_850hPa_sparse", windMap(air, 1, 3, 2));
  write("wind_north_200hPa", windRoundPole(air, 7));
}

// ---- Oxygen in the ocean, without a value on land -------------------------------------------------------------------

constexpr const char* kOxygen = "oxygen saturation in percent";

PoParalCartesianGrid2D* oxygenGrid(const std::vector<float>& x, const std::vector<float>& y,
                                   const std::vector<float>& oxygen) {
  auto* grid = new PoParalCartesianGrid2D;
  grid->setGeometry(sizeOf(x), sizeOf(y), x.data(), y.data());
  grid->addValuesSet(0, oxygen.data(), kOxygen);
  return grid;
}

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
  write("ocean_section_11S", oxygenGrid(longitudes, roots, section(39)));    // 11.5 degrees south
  write("ocean_section_50N", oxygenGrid(longitudes, heights, section(70)));  // 50.5 degrees north
  write("ocean_400m", oxygenGrid(longitudes, latitudes, layer(12)));

  auto* volume = new PoParalCartesianGrid3D;
  volume->setGeometry(numX, numY, numZ, longitudes.data(), latitudes.data(), heights.data());
  volume->addValuesSet(0, oxygen.data(), kOxygen);
  write("ocean", volume);
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
  write("ocean_from_20E", volume);
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
  write("land", map);

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
  write("land_north", polar);
}

// ---- Carbon dioxide at Mauna Loa ------------------------------------------------------------------------------------

// The points of a curve above a level (side 1) or below it (-1); in between it runs along the level. None if it is
// nowhere there.
std::vector<SbVec2f> pointsBeyond(const std::vector<SbVec2f>& points, float level, float side) {
  const auto isBeyond = [&](const SbVec2f& point) { return (point[1] - level) * side > 0; };
  std::vector<SbVec2f> beyond;
  if (points.size() < 2 || std::none_of(points.begin(), points.end(), isBeyond)) return beyond;
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (i > 0 && isBeyond(points[i]) != isBeyond(points[i - 1])) {
      float x = 0;
      PoCurve::calculateInterpolation2(points[i - 1], points[i], level, x);
      beyond.emplace_back(x, level);
    }
    beyond.push_back(isBeyond(points[i]) ? points[i] : SbVec2f(points[i][0], level));
  }
  return beyond;
}

// The weeks from one date to another, `numDays` later, as curves, whose x are days: for each stretch without a missing
// week what is above a level and what is below it, filled, and the line.
void writeCarbonDioxide(const std::string& name, const char* from, const char* to, float numDays, float level) {
  const gallery::Table table = DataSet("mauna_loa_co2_weekly").table();
  const std::vector<std::string> dates = table.texts("date");
  const std::vector<float> parts = table.numbers("co2_ppmv");
  const PbDateFormatMapping days(from, to, 0, numDays, "Ymd");
  std::vector<std::vector<SbVec2f>> stretches;
  bool isMissing = true;
  for (std::size_t i = 0; i < dates.size(); ++i) {
    const bool wasMissing = std::exchange(isMissing, std::isnan(parts[i]) || dates[i] < from || dates[i] > to);
    if (isMissing) continue;
    if (wasMissing) stretches.emplace_back();
    float day = 0;
    days.getCoordinate(dates[i].c_str(), day);
    stretches.back().emplace_back(day, parts[i]);
  }

  auto* all = new SoSeparator;
  for (const std::vector<SbVec2f>& points : stretches) {
    for (const float side : {1.0F, -1.0F}) {
      const std::vector<SbVec2f> beyond = pointsBeyond(points, level, side);
      if (beyond.empty()) continue;
      auto* filled = new PoCurve(static_cast<int>(beyond.size()), beyond.data(), PoCurve::CURVE_NONE);
      all->addChild(filled);
      filled->isCurveFilled = TRUE;
      filled->fillingThreshold = level;
      filled->set("curveFillingApp.material",
                  side > 0 ? "diffuseColor 0.965 0.80 0.70" : "diffuseColor 0.745 0.84 0.92");
    }
    all->addChild(new PoCurve(static_cast<int>(points.size()), points.data()));
  }
  write(name, all);
}

// ---- Meshes that are meshes in the data already ---------------------------------------------------------------------

// The coordinates of nodes that are stored together.
std::vector<std::vector<float>> separated(const std::vector<float>& points, std::size_t dimensions) {
  std::vector<std::vector<float>> coordinates(dimensions);
  for (std::size_t i = 0; i < points.size(); ++i) coordinates[i % dimensions].push_back(points[i]);
  return coordinates;
}

void writeChesapeakeBay() {
  const DataSet data("chesapeake_bay_mesh");
  const auto xy = separated(data.floats("points"), 2);
  const std::vector<int32_t> cells = data.ints("triangle_cells");
  auto* mesh = new PoTriangleMesh2D;
  mesh->setGeometry(sizeOf(xy[0]), xy[0].data(), xy[1].data(), static_cast<int>(cells.size() / 3), cells.data());
  mesh->addValuesSet(0, data.floats("depth").data(), "depth in m");
  write("chesapeake_bay", mesh);
}

void addResults(PoMeshProperty* mesh, const DataSet& data) {
  mesh->addValuesSet(0, data.floats("stress").data(), "equivalent stress in MPa");
  mesh->addValuesSet(1, data.floats("temperature").data(), "temperature in degrees Celsius");
  mesh->addValuesSet(2, data.floats("cell_stress").data(), PbMesh::PER_CELL, "equivalent stress of cells in MPa");
  std::vector<SbVec3f> displacements;
  const std::vector<float> moved = data.floats("displacement");
  for (std::size_t i = 0; i < moved.size(); i += 3) displacements.emplace_back(moved[i], moved[i + 1], moved[i + 2]);
  mesh->addVecsSet(0, displacements.data(), "displacement in mm");
}

void writeBrackets() {
  {
    const DataSet data("bracket_tetrahedra");
    const auto xyz = separated(data.floats("points"), 3);
    const std::vector<int32_t> cells = data.ints("tetrahedron_cells");
    auto* mesh = new PoTetrahedronMesh3D;
    mesh->setGeometry(sizeOf(xyz[0]), xyz[0].data(), xyz[1].data(), xyz[2].data(), static_cast<int>(cells.size() / 4),
                      cells.data());
    addResults(mesh, data);
    write("bracket_tetrahedra", mesh);
  }
  const DataSet data("bracket_mixed");
  const auto xyz = separated(data.floats("points"), 3);
  std::vector<int> indices;
  std::vector<int> sizes;
  for (const auto& [name, size] : {std::pair("tetrahedron", 4), {"pyramid", 5}, {"wedge", 6}, {"hexahedron", 8}}) {
    const std::vector<int32_t> cells = data.ints(std::string(name) + "_cells");
    indices.insert(indices.end(), cells.begin(), cells.end());
    sizes.insert(sizes.end(), cells.size() / static_cast<std::size_t>(size), size);
  }
  auto* mesh = new PoIndexedMesh3D;
  mesh->setGeometry(sizeOf(xyz[0]), xyz[0].data(), xyz[1].data(), xyz[2].data(), static_cast<int>(sizes.size()),
                    indices.data(), sizes.data());
  addResults(mesh, data);
  write("bracket_mixed", mesh);
}

// ---- Carbon dioxide in air ------------------------------------------------------------------------------------------

// Means of `numWeeks` weeks each from one year up to another, without a value where no week has one. x is in years,
// counted from `origin`; set 0 in parts per million, set 1 what that is beyond the first of them.
void writeCarbonDioxide(const std::string& name, int firstYear, int endYear, float origin, std::size_t numWeeks) {
  const gallery::Table table = DataSet("mauna_loa_co2_weekly").table();
  const std::vector<std::string> dates = table.texts("date");
  const std::vector<float> parts = table.numbers("co2_ppmv");
  const auto yearOf = [&](std::size_t week) { return std::stoi(dates[week].substr(0, 4)); };
  std::vector<float> years, values, beyond;
  for (std::size_t first = 0; first + numWeeks <= dates.size(); first += numWeeks) {
    while (first + numWeeks < dates.size() && yearOf(first) < firstYear) ++first;
    if (yearOf(first + numWeeks - 1) >= endYear) break;
    float sumOfYears = 0, sum = 0;
    int num = 0;
    for (std::size_t week = first; week < first + numWeeks; ++week) {
      constexpr int daysBefore[] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};
      const int month = std::stoi(dates[week].substr(5, 2)), day = std::stoi(dates[week].substr(8, 2));
      sumOfYears +=
          static_cast<float>(yearOf(week)) - origin + (static_cast<float>(daysBefore[month - 1] + day) - 0.5f) / 366;
      if (std::isnan(parts[week])) continue;
      sum += parts[week];
      ++num;
    }
    years.push_back(sumOfYears / static_cast<float>(numWeeks));
    values.push_back(sum / static_cast<float>(num));
    beyond.push_back(values.back() - *std::find_if(values.begin(), values.end(), [](float v) { return v == v; }));
  }
  auto* mesh = new PoIrregularMesh1D;
  mesh->setGeometry(sizeOf(years), years.data());
  mesh->addValuesSet(0, values.data(), "carbon dioxide in ppmv");
  mesh->addValuesSet(1, beyond.data(), "beyond the first, in ppmv");
  write(name, mesh);
}

void writeCarbonDioxide() {
  writeCarbonDioxide("co2_weeks", 1958, 2002, 0, 1);
  for (int year = 1966; year < 2002; year += 5)
    writeCarbonDioxide("co2_" + std::to_string(year), year, year + 1, static_cast<float>(year), 4);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: gallery_meshes FOLDER\n");
    return 2;
  }
  return gallery::run([argv] {
    g_folder = argv[1];
    std::filesystem::create_directories(g_folder);
    writeTerrain();
    writeAtmosphere();
    writeOcean();
    writeOceanFrom20East();
    writeLand();
    writeCarbonDioxide("mauna_loa_1958", "1958-01-01", "2002-01-01", 16071, 340);
    writeCarbonDioxide("mauna_loa_1962", "1962-07-01", "1965-12-31", 1279, 320);
    writeChesapeakeBay();
    writeBrackets();
    writeCarbonDioxide();
  });
}
