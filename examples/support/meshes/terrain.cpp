// The land around the Jacksboro Fault.

#include <Ormelle/PoRegularCartesianGrid2D.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "MeshFiles.h"

namespace gallery {

namespace {

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

}  // namespace

void writeTerrain() {
  Terrain terrain;
  writeMesh("terrain", terrain.window(0, 0, terrain.numX, terrain.numY));
  writeMesh("terrain_coarse", terrain.window(0, 0, (terrain.numX - 1) / 8 + 1, (terrain.numY - 1) / 8 + 1, 8));
  writeMesh("terrain_window", terrain.window(60, 60, 120, 120));
  terrain.smooth();
  writeMesh("terrain_smooth", terrain.window(0, 0, terrain.numX, terrain.numY));
}

}  // namespace gallery
