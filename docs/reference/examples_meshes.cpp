// The examples that the reference shows of the mesh classes; compiled, so that they stay right. Each stands between two
// marks with the name of its class.

#include <Ormelle/PbCartesianGrid2D.h>
#include <Ormelle/PbCartesianGrid3D.h>
#include <Ormelle/PbHexahedronMesh3D.h>
#include <Ormelle/PbIndexedMesh2D.h>
#include <Ormelle/PbIndexedMesh3D.h>
#include <Ormelle/PbParalCartesianGrid2D.h>
#include <Ormelle/PbParalCartesianGrid3D.h>
#include <Ormelle/PbPolarGrid2D.h>
#include <Ormelle/PbQuadrangleMesh2D.h>
#include <Ormelle/PbRegularCartesianGrid3D.h>
#include <Ormelle/PbTetrahedronMesh3D.h>
#include <Ormelle/PbTriangleMesh2D.h>
#include <Ormelle/PoMeshFilled.h>
#include <Ormelle/PoMeshSkin.h>

namespace docs {

void examplePbParalCartesianGrid2D(PoMeshFilled& kit) {
  //! [PbParalCartesianGrid2D]
  const float x[] = {0, 1, 4}, y[] = {0, 1};
  const float heat[] = {0, 1, 2, 3, 4, 5};
  PbParalCartesianGrid2D mesh(3, 2, x, y, 1);  // 1: copies the arrays
  mesh.addValuesSet(0, heat, "heat");
  kit.setMesh(&mesh);
  //! [PbParalCartesianGrid2D]
}

void examplePbCartesianGrid2D(PoMeshFilled& kit) {
  //! [PbCartesianGrid2D]
  const float x[] = {0, 0, 1, 1.2f, 2, 2.5f}, y[] = {0, 1, 0, 1.2f, 0, 1.5f};  // y runs first
  const float heat[] = {0, 1, 2, 3, 4, 5};
  PbCartesianGrid2D mesh(3, 2, x, y, 1);  // 1: copies the arrays
  mesh.addValuesSet(0, heat, "heat");
  kit.setMesh(&mesh);
  //! [PbCartesianGrid2D]
}

void examplePbPolarGrid2D(PoMeshFilled& kit) {
  //! [PbPolarGrid2D]
  const float radius[] = {1, 2, 3}, angle[] = {0, 0.8f};  // in radians
  const float heat[] = {0, 1, 2, 3, 4, 5};
  PbPolarGrid2D mesh(3, 2, radius, angle, 1);  // 1: copies the arrays
  mesh.addValuesSet(0, heat, "heat");
  kit.setMesh(&mesh);
  //! [PbPolarGrid2D]
}

void examplePbTriangleMesh2D(PoMeshFilled& kit) {
  //! [PbTriangleMesh2D]
  const float x[] = {0, 1, 1, 0}, y[] = {0, 0, 1, 1};
  const int cells[] = {0, 1, 2, 0, 2, 3};
  const float heat[] = {0, 1, 2, 3};
  PbTriangleMesh2D mesh(4, x, y, 2, cells, 1);  // 1: copies the arrays
  mesh.addValuesSet(0, heat, "heat");
  kit.setMesh(&mesh);
  //! [PbTriangleMesh2D]
}

void examplePbQuadrangleMesh2D(PoMeshFilled& kit) {
  //! [PbQuadrangleMesh2D]
  const float x[] = {0, 1, 2, 0, 1, 2}, y[] = {0, 0, 0, 1, 1, 1};
  const int cells[] = {0, 1, 4, 3, 1, 2, 5, 4};
  const float heat[] = {0, 1, 2, 3, 4, 5};
  PbQuadrangleMesh2D mesh(6, x, y, 2, cells, 1);  // 1: copies the arrays
  mesh.addValuesSet(0, heat, "heat");
  kit.setMesh(&mesh);
  //! [PbQuadrangleMesh2D]
}

void examplePbIndexedMesh2D(PoMeshFilled& kit) {
  //! [PbIndexedMesh2D]
  const float x[] = {0, 1, 2, 0, 1}, y[] = {0, 0, 0, 1, 1};
  const int cells[] = {0, 1, 4, 3, 1, 2, 4}, sizes[] = {4, 3};
  const float heat[] = {0, 1, 2, 3, 4};
  PbIndexedMesh2D mesh(5, x, y, 2, cells, sizes, 1);  // 1: copies the arrays
  mesh.addValuesSet(0, heat, "heat");
  kit.setMesh(&mesh);
  //! [PbIndexedMesh2D]
}

void examplePbRegularCartesianGrid3D(PoMeshSkin& kit) {
  //! [PbRegularCartesianGrid3D]
  const float heat[] = {0, 1, 2, 3, 4, 5, 6, 7};
  PbRegularCartesianGrid3D mesh(2, 2, 2, 0, 0, 0, 1, 1, 1, 1);  // 1: copies the arrays
  mesh.addValuesSet(0, heat, "heat");
  kit.setMesh(&mesh);
  //! [PbRegularCartesianGrid3D]
}

void examplePbParalCartesianGrid3D(PoMeshSkin& kit) {
  //! [PbParalCartesianGrid3D]
  const float x[] = {0, 1}, y[] = {0, 2}, z[] = {0, 5};
  const float heat[] = {0, 1, 2, 3, 4, 5, 6, 7};
  PbParalCartesianGrid3D mesh(2, 2, 2, x, y, z, 1);  // 1: copies the arrays
  mesh.addValuesSet(0, heat, "heat");
  kit.setMesh(&mesh);
  //! [PbParalCartesianGrid3D]
}

void examplePbCartesianGrid3D(PoMeshSkin& kit) {
  //! [PbCartesianGrid3D]
  const float x[] = {0, 0, 0, 0, 1, 1, 1, 1}, y[] = {0, 0, 1, 1, 0, 0, 1, 1};
  const float z[] = {0, 1, 0, 1, 0, 1, 0, 1};  // z runs first
  const float heat[] = {0, 1, 2, 3, 4, 5, 6, 7};
  PbCartesianGrid3D mesh(2, 2, 2, x, y, z, 1);  // 1: copies the arrays
  mesh.addValuesSet(0, heat, "heat");
  kit.setMesh(&mesh);
  //! [PbCartesianGrid3D]
}

void examplePbTetrahedronMesh3D(PoMeshSkin& kit) {
  //! [PbTetrahedronMesh3D]
  const float x[] = {0, 1, 0, 0}, y[] = {0, 0, 1, 0}, z[] = {0, 0, 0, 1};
  const int cells[] = {0, 1, 2, 3};
  const float heat[] = {0, 1, 2, 3};
  PbTetrahedronMesh3D mesh(4, x, y, z, 1, cells, 1);  // 1: copies the arrays
  mesh.addValuesSet(0, heat, "heat");
  kit.setMesh(&mesh);
  //! [PbTetrahedronMesh3D]
}

void examplePbHexahedronMesh3D(PoMeshSkin& kit) {
  //! [PbHexahedronMesh3D]
  const float x[] = {0, 1, 1, 0, 0, 1, 1, 0}, y[] = {0, 0, 1, 1, 0, 0, 1, 1};
  const float z[] = {0, 0, 0, 0, 1, 1, 1, 1};
  const int cells[] = {0, 1, 2, 3, 4, 5, 6, 7};
  const float heat[] = {0, 1, 2, 3, 4, 5, 6, 7};
  PbHexahedronMesh3D mesh(8, x, y, z, 1, cells, 1);  // 1: copies the arrays
  mesh.addValuesSet(0, heat, "heat");
  kit.setMesh(&mesh);
  //! [PbHexahedronMesh3D]
}

void examplePbIndexedMesh3D(PoMeshSkin& kit) {
  //! [PbIndexedMesh3D]
  const float x[] = {0, 1, 1, 0, 0.5f}, y[] = {0, 0, 1, 1, 0.5f}, z[] = {0, 0, 0, 0, 1};
  const int cells[] = {0, 1, 2, 3, 4}, sizes[] = {5};  // a pyramid
  const float heat[] = {0, 1, 2, 3, 4};
  PbIndexedMesh3D mesh(5, x, y, z, 1, cells, sizes, 1);  // 1: copies the arrays
  mesh.addValuesSet(0, heat, "heat");
  kit.setMesh(&mesh);
  //! [PbIndexedMesh3D]
}

}  // namespace docs
