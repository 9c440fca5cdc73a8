#include "CellFamily.h"

#include <Ormelle/PbHexahedronCell.h>
#include <Ormelle/PbPixelCell.h>
#include <Ormelle/PbPyramidCell.h>
#include <Ormelle/PbQuadrangleCell.h>
#include <Ormelle/PbTetrahedronCell.h>
#include <Ormelle/PbTriangleCell.h>
#include <Ormelle/PbVoxelCell.h>
#include <Ormelle/PbWedgeCell.h>

#include <cstring>
#include <stdexcept>

namespace {

template <class Cell>
std::unique_ptr<PbCell> fillByCoordinates(CellSample& s) {
  auto cell = std::make_unique<Cell>(nullptr);
  cell->set(7, s.nodes.data(), s.x.data(), s.y.data(), s.z.data());
  return cell;
}

template <class Cell>
std::unique_ptr<PbCell> fillFlat(CellSample& s) {
  auto cell = std::make_unique<Cell>(nullptr);
  cell->set(7, s.nodes.data(), s.x.data(), s.y.data());
  return cell;
}

std::unique_ptr<PbCell> fillRectangle(CellSample& s) {
  auto cell = std::make_unique<PbQuadrangleCell>(nullptr);
  const SbVec3f &low = s.coords[s.nodes[0]], &high = s.coords[s.nodes[2]];
  cell->set(7, s.nodes.data(), low[0], low[1], high[0], high[1], s.z.data());
  return cell;
}

std::unique_ptr<PbCell> fillPixel(CellSample& s) {
  auto cell = std::make_unique<PbPixelCell>(nullptr);
  const SbVec3f &low = s.coords[s.nodes[0]], &high = s.coords[s.nodes[2]];
  cell->set(7, s.nodes.data(), low[0], low[1], high[0], high[1]);
  return cell;
}

std::unique_ptr<PbCell> fillVoxel(CellSample& s) {
  auto cell = std::make_unique<PbVoxelCell>(nullptr);
  const SbVec3f &low = s.coords[s.nodes[0]], &high = s.coords[s.nodes[6]];
  cell->set(7, s.nodes.data(), low[0], low[1], low[2], high[0], high[1], high[2]);
  return cell;
}

const std::vector<SbVec3f> kCube = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0},
                                    {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}};
const std::vector<SbVec3f> kSquare = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
const std::vector<SbVec3f> kTriangle = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};

}  // namespace

std::ostream& operator<<(std::ostream& out, const CellKind& kind) { return out << kind.name; }

const std::vector<CellKind>& allCellKinds() {
  static const std::vector<CellKind> kinds = {
      {"Hexahedron", kCube, false, false, false, false, fillByCoordinates<PbHexahedronCell>},
      {"Tetrahedron",
       {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
       false,
       false,
       true,
       false,
       fillByCoordinates<PbTetrahedronCell>},
      {"Wedge",
       {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}},
       false,
       false,
       false,
       true,
       fillByCoordinates<PbWedgeCell>},
      {"Pyramid",
       {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0.5f, 0.5f, 1}},
       false,
       false,
       false,
       false,
       fillByCoordinates<PbPyramidCell>},
      {"Voxel", kCube, true, false, false, false, fillVoxel},
      {"Quadrangle", kSquare, false, false, false, false, fillByCoordinates<PbQuadrangleCell>},
      {"FlatQuadrangle", kSquare, false, true, false, false, fillFlat<PbQuadrangleCell>},
      {"Rectangle", kSquare, true, true, false, false, fillRectangle},
      {"Pixel", kSquare, true, true, false, false, fillPixel},
      {"Triangle", kTriangle, false, false, true, false, fillByCoordinates<PbTriangleCell>},
      {"FlatTriangle", kTriangle, false, true, true, false, fillFlat<PbTriangleCell>},
  };
  return kinds;
}

const CellKind& cellKind(const char* name) {
  for (const CellKind& kind : allCellKinds())
    if (!std::strcmp(kind.name, name)) return kind;
  throw std::invalid_argument(name);
}

std::shared_ptr<CellSample> CellKind::make(std::mt19937& random, float warp, float scale, const SbVec3f& offset) const {
  std::uniform_real_distribution<float> shift(-warp, warp);
  const SbVec3f shear(shift(random), shift(random), shift(random));
  std::vector<SbVec3f> corners;
  for (const SbVec3f& node : shape) {
    SbVec3f corner = node;
    if (!isBox) {
      corner += SbVec3f(shift(random), shift(random), shift(random));
      corner[2] += corner.dot(shear);  // tilts surface cells
    }
    if (isFlat) corner[2] = 0;
    corners.push_back(corner * scale + offset);
  }
  return make(corners);
}

std::shared_ptr<CellSample> CellKind::make(const std::vector<SbVec3f>& corners) const {
  auto sample = std::make_shared<CellSample>();
  const std::size_t numMeshNodes = 3 * corners.size() + 2;
  sample->coords.assign(numMeshNodes, SbVec3f(-1000, -1000, -1000));
  for (std::size_t node = 0; node < corners.size(); ++node) {
    const std::size_t meshNode = numMeshNodes - 2 - 3 * node;
    sample->nodes.push_back(static_cast<int>(meshNode));
    sample->coords[meshNode] = corners[node];
  }
  for (const SbVec3f& coord : sample->coords) {
    sample->x.push_back(coord[0]);
    sample->y.push_back(coord[1]);
    sample->z.push_back(coord[2]);
  }
  sample->cell = fill(*sample);
  return sample;
}

SbVec3f CellKind::randomPcoord(std::mt19937& random, float margin) const {
  std::uniform_real_distribution<float> unit(margin, 1 - margin);
  for (;;) {
    const SbVec3f p(unit(random), unit(random), isSolid() ? unit(random) : 0.0f);
    if ((isSimplex && p[0] + p[1] + p[2] > 1 - margin) || (isWedge && p[0] + p[1] > 1 - margin)) continue;
    return p;
  }
}
