// The examples that the reference shows of the mesh nodes; compiled, so that they stay right. Each stands between two
// marks with the name of its class.

#include <Inventor/nodes/SoSeparator.h>

#include <Ormelle/PoCartesianGrid2D.h>
#include <Ormelle/PoCartesianGrid3D.h>
#include <Ormelle/PoCurveLine.h>
#include <Ormelle/PoHexahedronMesh3D.h>
#include <Ormelle/PoIndexedMesh2D.h>
#include <Ormelle/PoIndexedMesh3D.h>
#include <Ormelle/PoIrregularMesh1D.h>
#include <Ormelle/PoMeshFilled.h>
#include <Ormelle/PoMeshSkin.h>
#include <Ormelle/PoParalCartesianGrid2D.h>
#include <Ormelle/PoParalCartesianGrid3D.h>
#include <Ormelle/PoPolarGrid2D.h>
#include <Ormelle/PoQuadrangleMesh2D.h>
#include <Ormelle/PoRegularCartesianGrid2D.h>
#include <Ormelle/PoRegularCartesianGrid3D.h>
#include <Ormelle/PoRegularMesh1D.h>
#include <Ormelle/PoTetrahedronMesh3D.h>
#include <Ormelle/PoTriangleMesh2D.h>

namespace docs {

void examplePoRegularCartesianGrid2D(SoSeparator* separator) {
  //! [PoRegularCartesianGrid2D]
  const float heat[] = {0, 1, 2, 3, 4, 5};
  auto* node = new PoRegularCartesianGrid2D;
  node->setGeometry(3, 2, 0, 0, 2, 1);
  node->addValuesSet(0, heat, "heat");
  separator->addChild(node);
  separator->addChild(new PoMeshFilled);  // finds the mesh on the state
  //! [PoRegularCartesianGrid2D]
}

void examplePoParalCartesianGrid2D(SoSeparator* separator) {
  //! [PoParalCartesianGrid2D]
  const float x[] = {0, 1, 4}, y[] = {0, 1};
  const float heat[] = {0, 1, 2, 3, 4, 5};
  auto* node = new PoParalCartesianGrid2D;
  node->setGeometry(3, 2, x, y);
  node->addValuesSet(0, heat, "heat");
  separator->addChild(node);
  separator->addChild(new PoMeshFilled);  // finds the mesh on the state
  //! [PoParalCartesianGrid2D]
}

void examplePoCartesianGrid2D(SoSeparator* separator) {
  //! [PoCartesianGrid2D]
  const float x[] = {0, 0, 1, 1.2f, 2, 2.5f}, y[] = {0, 1, 0, 1.2f, 0, 1.5f};  // y runs first
  const float heat[] = {0, 1, 2, 3, 4, 5};
  auto* node = new PoCartesianGrid2D;
  node->setGeometry(3, 2, x, y);
  node->addValuesSet(0, heat, "heat");
  separator->addChild(node);
  separator->addChild(new PoMeshFilled);  // finds the mesh on the state
  //! [PoCartesianGrid2D]
}

void examplePoPolarGrid2D(SoSeparator* separator) {
  //! [PoPolarGrid2D]
  const float radius[] = {1, 2, 3}, angle[] = {0, 0.8f};  // in radians
  const float heat[] = {0, 1, 2, 3, 4, 5};
  auto* node = new PoPolarGrid2D;
  node->setGeometry(3, 2, radius, angle);
  node->addValuesSet(0, heat, "heat");
  separator->addChild(node);
  separator->addChild(new PoMeshFilled);  // finds the mesh on the state
  //! [PoPolarGrid2D]
}

void examplePoTriangleMesh2D(SoSeparator* separator) {
  //! [PoTriangleMesh2D]
  const float x[] = {0, 1, 1, 0}, y[] = {0, 0, 1, 1};
  const int cells[] = {0, 1, 2, 0, 2, 3};
  const float heat[] = {0, 1, 2, 3};
  auto* node = new PoTriangleMesh2D;
  node->setGeometry(4, x, y, 2, cells);
  node->addValuesSet(0, heat, "heat");
  separator->addChild(node);
  separator->addChild(new PoMeshFilled);  // finds the mesh on the state
  //! [PoTriangleMesh2D]
}

void examplePoQuadrangleMesh2D(SoSeparator* separator) {
  //! [PoQuadrangleMesh2D]
  const float x[] = {0, 1, 2, 0, 1, 2}, y[] = {0, 0, 0, 1, 1, 1};
  const int cells[] = {0, 1, 4, 3, 1, 2, 5, 4};
  const float heat[] = {0, 1, 2, 3, 4, 5};
  auto* node = new PoQuadrangleMesh2D;
  node->setGeometry(6, x, y, 2, cells);
  node->addValuesSet(0, heat, "heat");
  separator->addChild(node);
  separator->addChild(new PoMeshFilled);  // finds the mesh on the state
  //! [PoQuadrangleMesh2D]
}

void examplePoIndexedMesh2D(SoSeparator* separator) {
  //! [PoIndexedMesh2D]
  const float x[] = {0, 1, 2, 0, 1}, y[] = {0, 0, 0, 1, 1};
  const int cells[] = {0, 1, 4, 3, 1, 2, 4}, sizes[] = {4, 3};
  const float heat[] = {0, 1, 2, 3, 4};
  auto* node = new PoIndexedMesh2D;
  node->setGeometry(5, x, y, 2, cells, sizes);
  node->addValuesSet(0, heat, "heat");
  separator->addChild(node);
  separator->addChild(new PoMeshFilled);  // finds the mesh on the state
  //! [PoIndexedMesh2D]
}

void examplePoRegularCartesianGrid3D(SoSeparator* separator) {
  //! [PoRegularCartesianGrid3D]
  const float heat[] = {0, 1, 2, 3, 4, 5, 6, 7};
  auto* node = new PoRegularCartesianGrid3D;
  node->setGeometry(2, 2, 2, 0, 0, 0, 1, 1, 1);
  node->addValuesSet(0, heat, "heat");
  separator->addChild(node);
  separator->addChild(new PoMeshSkin);  // finds the mesh on the state
  //! [PoRegularCartesianGrid3D]
}

void examplePoParalCartesianGrid3D(SoSeparator* separator) {
  //! [PoParalCartesianGrid3D]
  const float x[] = {0, 1}, y[] = {0, 2}, z[] = {0, 5};
  const float heat[] = {0, 1, 2, 3, 4, 5, 6, 7};
  auto* node = new PoParalCartesianGrid3D;
  node->setGeometry(2, 2, 2, x, y, z);
  node->addValuesSet(0, heat, "heat");
  separator->addChild(node);
  separator->addChild(new PoMeshSkin);  // finds the mesh on the state
  //! [PoParalCartesianGrid3D]
}

void examplePoCartesianGrid3D(SoSeparator* separator) {
  //! [PoCartesianGrid3D]
  const float x[] = {0, 0, 0, 0, 1, 1, 1, 1}, y[] = {0, 0, 1, 1, 0, 0, 1, 1};
  const float z[] = {0, 1, 0, 1, 0, 1, 0, 1};  // z runs first
  const float heat[] = {0, 1, 2, 3, 4, 5, 6, 7};
  auto* node = new PoCartesianGrid3D;
  node->setGeometry(2, 2, 2, x, y, z);
  node->addValuesSet(0, heat, "heat");
  separator->addChild(node);
  separator->addChild(new PoMeshSkin);  // finds the mesh on the state
  //! [PoCartesianGrid3D]
}

void examplePoTetrahedronMesh3D(SoSeparator* separator) {
  //! [PoTetrahedronMesh3D]
  const float x[] = {0, 1, 0, 0}, y[] = {0, 0, 1, 0}, z[] = {0, 0, 0, 1};
  const int cells[] = {0, 1, 2, 3};
  const float heat[] = {0, 1, 2, 3};
  auto* node = new PoTetrahedronMesh3D;
  node->setGeometry(4, x, y, z, 1, cells);
  node->addValuesSet(0, heat, "heat");
  separator->addChild(node);
  separator->addChild(new PoMeshSkin);  // finds the mesh on the state
  //! [PoTetrahedronMesh3D]
}

void examplePoHexahedronMesh3D(SoSeparator* separator) {
  //! [PoHexahedronMesh3D]
  const float x[] = {0, 1, 1, 0, 0, 1, 1, 0}, y[] = {0, 0, 1, 1, 0, 0, 1, 1};
  const float z[] = {0, 0, 0, 0, 1, 1, 1, 1};
  const int cells[] = {0, 1, 2, 3, 4, 5, 6, 7};
  const float heat[] = {0, 1, 2, 3, 4, 5, 6, 7};
  auto* node = new PoHexahedronMesh3D;
  node->setGeometry(8, x, y, z, 1, cells);
  node->addValuesSet(0, heat, "heat");
  separator->addChild(node);
  separator->addChild(new PoMeshSkin);  // finds the mesh on the state
  //! [PoHexahedronMesh3D]
}

void examplePoIndexedMesh3D(SoSeparator* separator) {
  //! [PoIndexedMesh3D]
  const float x[] = {0, 1, 1, 0, 0.5f}, y[] = {0, 0, 1, 1, 0.5f}, z[] = {0, 0, 0, 0, 1};
  const int cells[] = {0, 1, 2, 3, 4}, sizes[] = {5};  // a pyramid
  const float heat[] = {0, 1, 2, 3, 4};
  auto* node = new PoIndexedMesh3D;
  node->setGeometry(5, x, y, z, 1, cells, sizes);
  node->addValuesSet(0, heat, "heat");
  separator->addChild(node);
  separator->addChild(new PoMeshSkin);  // finds the mesh on the state
  //! [PoIndexedMesh3D]
}

void examplePoRegularMesh1D(SoSeparator* separator) {
  //! [PoRegularMesh1D]
  const float heat[] = {0, 1, 2, 3, 4};
  auto* node = new PoRegularMesh1D;
  node->setGeometry(5, 0, 4);
  node->addValuesSet(0, heat, "heat");
  separator->addChild(node);
  separator->addChild(new PoCurveLine);  // finds the mesh on the state
  //! [PoRegularMesh1D]
}

void examplePoIrregularMesh1D(SoSeparator* separator) {
  //! [PoIrregularMesh1D]
  const float x[] = {0, 1, 4, 9};
  const float heat[] = {0, 1, 2, 3};
  auto* node = new PoIrregularMesh1D;
  node->setGeometry(4, x);
  node->addValuesSet(0, heat, "heat");
  separator->addChild(node);
  separator->addChild(new PoCurveLine);  // finds the mesh on the state
  //! [PoIrregularMesh1D]
}

}  // namespace docs
