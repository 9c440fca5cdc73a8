#include "quillane/surface/SectionSamples.h"

#include <Ormelle/PbHexahedronMesh3D.h>
#include <Ormelle/PbParalCartesianGrid3D.h>
#include <Ormelle/PbRegularCartesianGrid3D.h>

#include <algorithm>
#include <cmath>
#include <set>

MeshSample<PbMesh3D> makeMixedMesh(const BoxSpec& spec) {
  MeshSample<PbMesh3D> sample;
  sample.arrays.resize(3);
  std::vector<float>&x = sample.arrays[0], &y = sample.arrays[1], &z = sample.arrays[2];
  const int num[3] = {spec.numX, spec.numY, spec.numZ};
  const auto coord = [&](int axis, int i) {
    return spec.min[axis] + (spec.max[axis] - spec.min[axis]) * float(i) / float(num[axis] - 1);
  };
  for (int i = 0; i < num[0]; ++i)
    for (int j = 0; j < num[1]; ++j)
      for (int k = 0; k < num[2]; ++k) x.push_back(coord(0, i)), y.push_back(coord(1, j)), z.push_back(coord(2, k));

  std::vector<int> nodes, sizes;
  const auto add = [&](std::initializer_list<int> cell) {
    nodes.insert(nodes.end(), cell);
    sizes.push_back(int(cell.size()));
  };
  const auto node = [&](int i, int j, int k) { return (i * num[1] + j) * num[2] + k; };
  for (int i = 0; i + 1 < num[0]; ++i)
    for (int j = 0; j + 1 < num[1]; ++j)
      for (int k = 0; k + 1 < num[2]; ++k) {
        const int c[8] = {node(i, j, k),     node(i + 1, j, k),     node(i + 1, j + 1, k),     node(i, j + 1, k),
                          node(i, j, k + 1), node(i + 1, j, k + 1), node(i + 1, j + 1, k + 1), node(i, j + 1, k + 1)};
        if ((i + j) % 3 == 0) {
          add({c[0], c[1], c[2], c[4], c[5], c[6]});
          add({c[0], c[2], c[3], c[4], c[6], c[7]});
        } else if ((i + j + k) % 2 == 0) {
          const int middle = int(x.size());
          x.push_back((x[c[0]] + x[c[6]]) / 2), y.push_back((y[c[0]] + y[c[6]]) / 2),
              z.push_back((z[c[0]] + z[c[6]]) / 2);
          add({c[0], c[1], c[2], c[3], middle});
          add({c[4], c[7], c[6], c[5], middle});
          add({c[0], c[4], c[5], c[1], middle});
          add({c[1], c[5], c[6], c[2], middle});
          add({c[2], c[6], c[7], c[3], middle});
          add({c[3], c[7], c[4], c[0], middle});
        } else {
          add({c[0], c[1], c[2], c[3], c[4], c[5], c[6], c[7]});
        }
      }
  sample.indices = {nodes, sizes};
  sample.mesh = std::make_unique<PbIndexedMesh3D>(int(x.size()), x.data(), y.data(), z.data(), int(sizes.size()),
                                                  sample.indices[0].data(), sample.indices[1].data(), 1);
  return sample;
}

std::vector<MeshKind3D> sectionKinds() {
  std::vector<MeshKind3D> kinds = meshKinds3D();
  kinds.push_back({"MixedMesh3D", [](const BoxSpec& spec, int) { return makeMixedMesh(spec); }, 1});
  return kinds;
}

void cutMesh(PiMeshSection& section, const PbMesh3D& mesh, const PiSectionRequest& request) {
  if (const auto* regular = dynamic_cast<const PbRegularCartesianGrid3D*>(&mesh))
    section.cut(*regular, request);
  else if (const auto* parallel = dynamic_cast<const PbParalCartesianGrid3D*>(&mesh))
    section.cut(*parallel, request);
  else if (const auto* grid = dynamic_cast<const PbCartesianGrid3D*>(&mesh))
    section.cut(*grid, request);
  else
    section.cut(dynamic_cast<const PbIndexedMesh3D&>(mesh), request);
}

namespace {

using Vec = std::array<double, 3>;
double dot(const Vec& a, const Vec& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
Vec cross(const Vec& a, const Vec& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
Vec along(const Vec& from, const Vec& direction, double t) {
  return {from[0] + t * direction[0], from[1] + t * direction[1], from[2] + t * direction[2]};
}
Vec between(const Vec& from, const Vec& to) { return {to[0] - from[0], to[1] - from[1], to[2] - from[2]}; }

}  // namespace

BoxSection::BoxSection(const BoxSpec& box, const PiSectionPlane& plane) {
  const Vec normal = {plane.a, plane.b, plane.c};
  const Vec origin = along({0, 0, 0}, normal, plane.d / dot(normal, normal));
  Vec u = cross(normal, std::fabs(normal[0]) < 0.6 ? Vec{1, 0, 0} : Vec{0, 1, 0});
  Vec v = cross(normal, u);
  const double size = 1000;
  const double lengthU = std::sqrt(dot(u, u)), lengthV = std::sqrt(dot(v, v));
  for (int i = 0; i < 3; ++i) u[i] *= size / lengthU, v[i] *= size / lengthV;
  for (const auto& [s, t] : {std::array{-1, -1}, std::array{1, -1}, std::array{1, 1}, std::array{-1, 1}})
    m_corners.push_back(along(along(origin, u, s), v, t));
  for (int axis = 0; axis < 3; ++axis)
    for (const double sign : {-1.0, 1.0}) {
      const double limit = sign < 0 ? std::min(box.min[axis], box.max[axis]) : std::max(box.min[axis], box.max[axis]);
      const auto beyond = [&](const Vec& point) { return sign * (point[axis] - limit); };
      std::vector<Vec> kept;
      for (std::size_t i = 0; i < m_corners.size(); ++i) {
        const Vec &from = m_corners[i], &to = m_corners[(i + 1) % m_corners.size()];
        const double atFrom = beyond(from), atTo = beyond(to);
        if (atFrom <= 0) kept.push_back(from);
        if ((atFrom < 0 && atTo > 0) || (atFrom > 0 && atTo < 0))
          kept.push_back(along(from, between(from, to), atFrom / (atFrom - atTo)));
      }
      m_corners = kept;
    }
}

double BoxSection::area() const {
  Vec sum = {0, 0, 0};
  for (std::size_t i = 1; i + 1 < m_corners.size(); ++i) {
    const Vec part = cross(between(m_corners[0], m_corners[i]), between(m_corners[0], m_corners[i + 1]));
    sum = along(sum, part, 0.5);
  }
  return std::sqrt(dot(sum, sum));
}

double BoxSection::perimeter() const {
  double length = 0;
  for (std::size_t i = 0; i < m_corners.size(); ++i) {
    const Vec edge = between(m_corners[i], m_corners[(i + 1) % m_corners.size()]);
    length += std::sqrt(dot(edge, edge));
  }
  return length;
}

SectionFacts::SectionFacts(const PiSection& section, const PiSectionPlane& plane) {
  const Vec normal = {plane.a, plane.b, plane.c};
  const auto point = [&](int index) {
    const SbVec3f& p = section.points[std::size_t(index)];
    return Vec{p[0], p[1], p[2]};
  };
  std::map<std::pair<int, int>, int> edges;
  std::set<int> used;
  std::vector<int> corners;
  for (const int index : section.coordIndices) {
    if (index >= 0) {
      corners.push_back(index);
      used.insert(index);
      continue;
    }
    Vec sum = {0, 0, 0};
    for (std::size_t i = 0; i < corners.size(); ++i) {
      ++edges[std::minmax(corners[i], corners[(i + 1) % corners.size()])];
      if (i >= 1 && i + 1 < corners.size())
        sum = along(
            sum,
            cross(between(point(corners[0]), point(corners[i])), between(point(corners[0]), point(corners[i + 1]))),
            0.5);
    }
    area += std::sqrt(dot(sum, sum));
    numBackwards += dot(sum, normal) < 0;
    corners.clear();
  }
  for (const auto& [edge, count] : edges) {
    numShared += count > 2;
    if (count != 1) continue;
    const Vec vector = between(point(edge.first), point(edge.second));
    openLength += std::sqrt(dot(vector, vector));
  }
  std::set<Vec> places;
  for (int index = 0; index < int(section.points.size()); ++index) {
    numUnused += !used.count(index);
    numTwins += !places.insert(point(index)).second;
    furthest = std::max(furthest, std::fabs(dot(point(index), normal) - plane.d));
  }
}
