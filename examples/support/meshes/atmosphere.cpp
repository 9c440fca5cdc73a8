// The atmosphere of a January.

#include <Ormelle/PoIndexedMesh3D.h>
#include <Ormelle/PoParalCartesianGrid2D.h>
#include <Ormelle/PoParalCartesianGrid3D.h>
#include <Ormelle/PoPolarGrid2D.h>
#include <Ormelle/PoQuadrangleMesh2D.h>

#include <cmath>
#include <vector>

#include "Atmosphere.h"
#include "MeshFiles.h"

namespace gallery {

namespace {

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

}  // namespace

void writeAtmosphere() {
  const Atmosphere air;
  writeMesh("atmosphere_1000hPa", atmosphereLevel(air, 0));
  writeMesh("atmosphere_200hPa", atmosphereLevel(air, 7));
  writeMesh("atmosphere_100hPa", atmosphereLevel(air, 9));
  writeMesh("atmosphere_north_850hPa", atmosphereRoundPole(air, 1));
  writeMesh("atmosphere", atmosphereVolume(air));
  writeMesh("atmosphere_high", atmosphereVolume(air, 3));
  writeMesh("atmosphere_ball", atmosphereRoundBall(air));
  writeMesh("wind_850hPa", windMap(air, 1, 1, 1));
  writeMesh("wind_850hPa_sparse", windMap(air, 1, 3, 2));
  writeMesh("wind_north_200hPa", windRoundPole(air, 7));
}

}  // namespace gallery
