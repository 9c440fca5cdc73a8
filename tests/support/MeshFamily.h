#ifndef ORMELLE_TESTS_MESHFAMILY_H
#define ORMELLE_TESTS_MESHFAMILY_H

#include <Ormelle/PbMesh2D.h>
#include <Ormelle/PbMesh3D.h>

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

/// One rectangle as every 2D mesh class that can hold it, and one box as every 3D class: what the classes answer must
/// agree. A new mesh class joins the family by a line in MeshFamily.cpp.

/// What to build. Nodes stand at equal distances, so that every class holds the same ones; limits may fall.
struct RectangleSpec {
  int numX = 5, numY = 4;
  float xMin = 1, yMin = -2, xMax = 3, yMax = 4;
  /// Height over (x, y); flat without.
  std::function<float(float, float)> z;
};
struct BoxSpec {
  int numX = 5, numY = 4, numZ = 3;
  float min[3] = {1, -2, 0}, max[3] = {3, 4, 5};
};

/// A mesh with the arrays that it may borrow.
template <class Mesh>
struct MeshSample {
  std::vector<std::vector<float>> arrays;
  std::unique_ptr<Mesh> mesh;
  std::vector<std::vector<int>> indices = {};

  const Mesh* operator->() const { return mesh.get(); }
  Mesh* operator->() { return mesh.get(); }
};

struct MeshKind2D {
  std::string name;
  std::function<MeshSample<PbMesh2D>(const RectangleSpec&, int isDataDuplicate)> make;
  /// A copy by the copy constructor.
  std::function<std::unique_ptr<PbMesh2D>(const PbMesh2D&)> copy;
  /// Assigns the second to the first; both are of this kind.
  std::function<void(PbMesh2D&, const PbMesh2D&)> assign;
  /// How many cells make up a quadrangle of the grid.
  int numParts = 1;
};
struct MeshKind3D {
  std::string name;
  std::function<MeshSample<PbMesh3D>(const BoxSpec&, int isDataDuplicate)> make;
  /// How many cells make up a hexahedron of the grid.
  int numParts = 1;
};

const std::vector<MeshKind2D>& meshKinds2D();
const std::vector<MeshKind3D>& meshKinds3D();

inline std::ostream& operator<<(std::ostream& out, const MeshKind2D& kind) { return out << kind.name; }
inline std::ostream& operator<<(std::ostream& out, const MeshKind3D& kind) { return out << kind.name; }

/// Name of a parameterised test.
struct MeshKindName {
  template <class Info>
  std::string operator()(const Info& info) const {
    return info.param.name;
  }
};

#endif
