#include "quillane/rep/VolumeSamples.h"

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedShape.h>
#include <Inventor/nodes/SoIndexedTriangleStripSet.h>
#include <Ormelle/PbCartesianGrid3D.h>
#include <Ormelle/PbHexahedronMesh3D.h>
#include <Ormelle/PbParalCartesianGrid3D.h>
#include <Ormelle/PbRegularCartesianGrid3D.h>
#include <Ormelle/PbTetrahedronMesh3D.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <random>
#include <set>

namespace {

enum class Cut { WHOLE, TETRAHEDRA, WEDGES, PYRAMIDS };

/// Nodes and cells of a box of cubes.
struct Builder {
  int numX, numY, numZ;
  std::vector<float> x, y, z;
  std::vector<int> nodes, sizes;
  std::mt19937 random{5};

  Builder(int nx, int ny, int nz) : numX(nx), numY(ny), numZ(nz) {
    for (int i = 0; i <= nx; ++i)
      for (int j = 0; j <= ny; ++j)
        for (int k = 0; k <= nz; ++k) addNode(float(i), float(j), float(k));
  }
  int addNode(float px, float py, float pz) {
    x.push_back(px);
    y.push_back(py);
    z.push_back(pz);
    return static_cast<int>(x.size()) - 1;
  }
  std::array<int, 8> cube(int i, int j, int k) const {
    const auto node = [this](int a, int b, int c) { return (a * (numY + 1) + b) * (numZ + 1) + c; };
    return {node(i, j, k),     node(i + 1, j, k),     node(i + 1, j + 1, k),     node(i, j + 1, k),
            node(i, j, k + 1), node(i + 1, j, k + 1), node(i + 1, j + 1, k + 1), node(i, j + 1, k + 1)};
  }
  void addCell(std::vector<int> cell, bool isMirrored) {
    if (isMirrored) {
      const std::vector<int> given = cell;
      const std::map<std::size_t, std::vector<int>> orders = {
          {4, {2, 1, 0, 3}}, {5, {1, 0, 3, 2, 4}}, {6, {1, 0, 2, 4, 3, 5}}, {8, {1, 0, 3, 2, 5, 4, 7, 6}}};
      for (std::size_t n = 0; n < cell.size(); ++n)
        cell[n] = given[static_cast<std::size_t>(orders.at(cell.size())[n])];
    }
    nodes.insert(nodes.end(), cell.begin(), cell.end());
    sizes.push_back(static_cast<int>(cell.size()));
  }
  void addCells(Cut cut, const std::array<int, 8>& c, bool isOdd, bool isMixedUp) {
    const auto add = [&](std::vector<int> cell) { addCell(std::move(cell), isMixedUp && random() % 2 != 0); };
    switch (cut) {
      case Cut::WHOLE:
        add({c.begin(), c.end()});
        break;
      case Cut::TETRAHEDRA:
        for (const auto& t :
             isOdd
                 ? std::vector<std::array<int, 4>>{{1, 2, 0, 5}, {3, 0, 2, 7}, {4, 7, 5, 0}, {6, 5, 7, 2}, {0, 2, 7, 5}}
                 : std::vector<std::array<int, 4>>{
                       {0, 1, 3, 4}, {2, 3, 1, 6}, {5, 4, 6, 1}, {7, 6, 4, 3}, {1, 3, 4, 6}})
          add({c[std::size_t(t[0])], c[std::size_t(t[1])], c[std::size_t(t[2])], c[std::size_t(t[3])]});
        break;
      case Cut::WEDGES:
        add({c[0], c[1], c[2], c[4], c[5], c[6]});
        add({c[0], c[2], c[3], c[4], c[6], c[7]});
        break;
      case Cut::PYRAMIDS: {
        const auto at = [&](const std::vector<float>& p) { return (p[std::size_t(c[0])] + p[std::size_t(c[6])]) / 2; };
        const int apex = addNode(at(x), at(y), at(z));
        for (const auto& f : std::vector<std::array<int, 4>>{
                 {0, 1, 2, 3}, {7, 6, 5, 4}, {0, 4, 5, 1}, {1, 5, 6, 2}, {2, 6, 7, 3}, {3, 7, 4, 0}})
          add({c[std::size_t(f[0])], c[std::size_t(f[1])], c[std::size_t(f[2])], c[std::size_t(f[3])], apex});
        break;
      }
    }
  }
  std::unique_ptr<PbMesh3D> make(const std::function<Cut(int, int, int)>& cutOf, bool isMixedUp) {
    for (int i = 0; i < numX; ++i)
      for (int j = 0; j < numY; ++j)
        for (int k = 0; k < numZ; ++k) addCells(cutOf(i, j, k), cube(i, j, k), (i + j + k) % 2 != 0, isMixedUp);
    return std::make_unique<PbIndexedMesh3D>(static_cast<int>(x.size()), x.data(), y.data(), z.data(),
                                             static_cast<int>(sizes.size()), nodes.data(), sizes.data(), 1);
  }
};

VolumeKind indexed(const std::string& name, const std::function<Cut(int, int, int)>& cutOf, bool isMixedUp) {
  return {name, [=](int nx, int ny, int nz) { return Builder(nx, ny, nz).make(cutOf, isMixedUp); }};
}

std::function<Cut(int, int, int)> all(Cut cut) {
  return [cut](int, int, int) { return cut; };
}

/// Wedges stand in columns of their own: only so do their triangles meet.
Cut several(int i, int j, int k) {
  if ((i + j) % 3 == 0) return Cut::WEDGES;
  return (i + 2 * j + k) % 3 == 0 ? Cut::PYRAMIDS : Cut::WHOLE;
}

std::vector<float> axis(int num, bool isZigzag) {
  std::vector<float> c;
  for (int i = 0; i <= num; ++i) c.push_back(static_cast<float>(i));
  if (isZigzag) std::reverse(c.begin(), c.end());
  return c;
}

}  // namespace

const std::vector<VolumeKind>& volumeKinds() {
  static const std::vector<VolumeKind> s_kinds = {
      {"Regular",
       [](int nx, int ny, int nz) {
         return std::make_unique<PbRegularCartesianGrid3D>(nx + 1, ny + 1, nz + 1, 0.0F, 0.0F, 0.0F, float(nx),
                                                           float(ny), float(nz), 1);
       }},
      {"ParallelFallingAlongY",
       [](int nx, int ny, int nz) {
         return std::make_unique<PbParalCartesianGrid3D>(nx + 1, ny + 1, nz + 1, axis(nx, false).data(),
                                                         axis(ny, true).data(), axis(nz, false).data(), 1);
       }},
      {"Curvilinear",
       [](int nx, int ny, int nz) {
         const Builder box(nx, ny, nz);
         return std::make_unique<PbCartesianGrid3D>(nx + 1, ny + 1, nz + 1, box.x.data(), box.y.data(), box.z.data(),
                                                    1);
       }},
      {"Hexahedra",
       [](int nx, int ny, int nz) {
         Builder box(nx, ny, nz);
         box.make(all(Cut::WHOLE), false);
         return std::make_unique<PbHexahedronMesh3D>(static_cast<int>(box.x.size()), box.x.data(), box.y.data(),
                                                     box.z.data(), static_cast<int>(box.sizes.size()), box.nodes.data(),
                                                     1);
       }},
      {"Tetrahedra",
       [](int nx, int ny, int nz) {
         Builder box(nx, ny, nz);
         box.make(all(Cut::TETRAHEDRA), false);
         return std::make_unique<PbTetrahedronMesh3D>(static_cast<int>(box.x.size()), box.x.data(), box.y.data(),
                                                      box.z.data(), static_cast<int>(box.sizes.size()),
                                                      box.nodes.data(), 1);
       }},
      indexed("Wedges", all(Cut::WEDGES), false),
      indexed("Pyramids", all(Cut::PYRAMIDS), false),
      indexed("SeveralKinds", several, false),
      indexed("HexahedraEitherWayRound", all(Cut::WHOLE), true),
      indexed("TetrahedraEitherWayRound", all(Cut::TETRAHEDRA), true),
      indexed("SeveralKindsEitherWayRound", several, true)};
  return s_kinds;
}

std::vector<float> valuesAt(const PbMesh3D& mesh, const std::function<float(const SbVec3f&)>& function) {
  std::vector<float> values;
  for (int node = 0; node < mesh.getNumNodes(); ++node) values.push_back(function(mesh.getNodeCoord(node)));
  return values;
}

MadeSurface MadeSurface::of(const SoGroup* group) {
  MadeSurface made;
  for (int child = 0; group && child < group->getNumChildren(); ++child) {
    const SoNode* node = group->getChild(child);
    if (node->isOfType(SoCoordinate3::getClassTypeId())) {
      const SoMFVec3f& field = static_cast<const SoCoordinate3*>(node)->point;
      made.points.assign(field.getValues(0), field.getValues(0) + field.getNum());
    }
    if (!node->isOfType(SoIndexedShape::getClassTypeId())) continue;
    const SoMFInt32& field = static_cast<const SoIndexedShape*>(node)->coordIndex;
    const bool areStrips = node->isOfType(SoIndexedTriangleStripSet::getClassTypeId());
    std::vector<int> run;
    for (int i = 0; i < field.getNum(); ++i) {
      if (field[i] >= 0) {
        run.push_back(field[i]);
        continue;
      }
      made.facets.push_back(run);
      if (!areStrips) made.polygons.push_back(run);
      for (std::size_t t = 2; areStrips && t < run.size(); ++t)
        made.polygons.push_back({run[t - 2 + t % 2], run[t - 1 - t % 2], run[t]});
      run.clear();
    }
  }
  return made;
}

int MadeSurface::numFaults() const {
  int num = 0;
  std::set<std::pair<int, int>> edges;
  std::vector<bool> areUsed(points.size());
  for (const std::vector<int>& polygon : polygons) {
    num += polygon.size() < 3 || std::set<int>(polygon.begin(), polygon.end()).size() != polygon.size();
    for (std::size_t c = 0; c < polygon.size(); ++c) {
      areUsed.at(static_cast<std::size_t>(polygon[c])) = true;
      num += !edges.emplace(polygon[c], polygon[(c + 1) % polygon.size()]).second;
    }
  }
  std::set<std::array<float, 3>> places;
  for (std::size_t p = 0; p < points.size(); ++p) {
    num += !areUsed[p];
    num += !places.insert({points[p][0], points[p][1], points[p][2]}).second;
  }
  return num;
}

int MadeSurface::numOpenEdges(const std::function<bool(const SbVec3f&, const SbVec3f&)>& isBorder) const {
  std::set<std::pair<int, int>> edges;
  for (const std::vector<int>& polygon : polygons)
    for (std::size_t c = 0; c < polygon.size(); ++c) edges.emplace(polygon[c], polygon[(c + 1) % polygon.size()]);
  return static_cast<int>(std::count_if(edges.begin(), edges.end(), [&](const auto& edge) {
    return !edges.count({edge.second, edge.first}) &&
           !isBorder(points[static_cast<std::size_t>(edge.first)], points[static_cast<std::size_t>(edge.second)]);
  }));
}

double MadeSurface::area() const {
  double sum = 0;
  for (const std::vector<int>& polygon : polygons)
    for (std::size_t c = 2; c < polygon.size(); ++c) {
      const SbVec3f& a = points[static_cast<std::size_t>(polygon[0])];
      sum += (points[static_cast<std::size_t>(polygon[c - 1])] - a)
                 .cross(points[static_cast<std::size_t>(polygon[c])] - a)
                 .length() /
             2;
    }
  return sum;
}

bool areOnSide(const SbBox3f& box, const SbVec3f& a, const SbVec3f& b) {
  for (int c = 0; c < 3; ++c)
    for (const float side : {box.getMin()[c], box.getMax()[c]})
      if (a[c] == side && b[c] == side) return true;
  return false;
}
