// The examples that the reference shows of the fields that hold meshes; compiled, so that they stay right. Each stands
// between two marks with the name of its class.

#include <Ormelle/PbCartesianGrid2D.h>
#include <Ormelle/PbCartesianGrid3D.h>
#include <Ormelle/PbHexahedronMesh3D.h>
#include <Ormelle/PbIndexedMesh2D.h>
#include <Ormelle/PbIndexedMesh3D.h>
#include <Ormelle/PbIrregularMesh1D.h>
#include <Ormelle/PbParalCartesianGrid2D.h>
#include <Ormelle/PbParalCartesianGrid3D.h>
#include <Ormelle/PbPolarGrid2D.h>
#include <Ormelle/PbQuadrangleMesh2D.h>
#include <Ormelle/PbRegularCartesianGrid2D.h>
#include <Ormelle/PbRegularCartesianGrid3D.h>
#include <Ormelle/PbRegularMesh1D.h>
#include <Ormelle/PbTetrahedronMesh3D.h>
#include <Ormelle/PbTriangleMesh2D.h>
#include <Ormelle/PoCartesianGrid2D.h>
#include <Ormelle/PoCartesianGrid3D.h>
#include <Ormelle/PoHexahedronMesh3D.h>
#include <Ormelle/PoIndexedMesh2D.h>
#include <Ormelle/PoIndexedMesh3D.h>
#include <Ormelle/PoIrregularMesh1D.h>
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

void examplePoSFRegularCartesianGrid2D(PoRegularCartesianGrid2D& node, PoRegularCartesianGrid2D& other,
                                       const PbRegularCartesianGrid2D& mesh, const float* heat) {
  //! [PoSFRegularCartesianGrid2D]
  node.mesh.setValue(mesh);  // a copy, data sets included; kits see it at the next traversal
  node.mesh.getMesh()->addValuesSet(1, heat, "heat");
  SbString text;
  node.mesh.get(text);  // as it stands in a scene file
  other.mesh.connectFrom(&node.mesh);
  //! [PoSFRegularCartesianGrid2D]
}

void examplePoSFParalCartesianGrid2D(PoParalCartesianGrid2D& node, PoParalCartesianGrid2D& other,
                                     const PbParalCartesianGrid2D& mesh, const float* heat) {
  //! [PoSFParalCartesianGrid2D]
  node.mesh.setValue(mesh);  // a copy, data sets included; kits see it at the next traversal
  node.mesh.getMesh()->addValuesSet(1, heat, "heat");
  SbString text;
  node.mesh.get(text);  // as it stands in a scene file
  other.mesh.connectFrom(&node.mesh);
  //! [PoSFParalCartesianGrid2D]
}

void examplePoSFCartesianGrid2D(PoCartesianGrid2D& node, PoCartesianGrid2D& other, const PbCartesianGrid2D& mesh,
                                const float* heat) {
  //! [PoSFCartesianGrid2D]
  node.mesh.setValue(mesh);  // a copy, data sets included; kits see it at the next traversal
  node.mesh.getMesh()->addValuesSet(1, heat, "heat");
  SbString text;
  node.mesh.get(text);  // as it stands in a scene file
  other.mesh.connectFrom(&node.mesh);
  //! [PoSFCartesianGrid2D]
}

void examplePoSFPolarGrid2D(PoPolarGrid2D& node, PoPolarGrid2D& other, const PbPolarGrid2D& mesh, const float* heat) {
  //! [PoSFPolarGrid2D]
  node.mesh.setValue(mesh);  // a copy, data sets included; kits see it at the next traversal
  node.mesh.getMesh()->addValuesSet(1, heat, "heat");
  SbString text;
  node.mesh.get(text);  // as it stands in a scene file
  other.mesh.connectFrom(&node.mesh);
  //! [PoSFPolarGrid2D]
}

void examplePoSFTriangleMesh2D(PoTriangleMesh2D& node, PoTriangleMesh2D& other, const PbTriangleMesh2D& mesh,
                               const float* heat) {
  //! [PoSFTriangleMesh2D]
  node.mesh.setValue(mesh);  // a copy, data sets included; kits see it at the next traversal
  node.mesh.getMesh()->addValuesSet(1, heat, "heat");
  SbString text;
  node.mesh.get(text);  // as it stands in a scene file
  other.mesh.connectFrom(&node.mesh);
  //! [PoSFTriangleMesh2D]
}

void examplePoSFQuadrangleMesh2D(PoQuadrangleMesh2D& node, PoQuadrangleMesh2D& other, const PbQuadrangleMesh2D& mesh,
                                 const float* heat) {
  //! [PoSFQuadrangleMesh2D]
  node.mesh.setValue(mesh);  // a copy, data sets included; kits see it at the next traversal
  node.mesh.getMesh()->addValuesSet(1, heat, "heat");
  SbString text;
  node.mesh.get(text);  // as it stands in a scene file
  other.mesh.connectFrom(&node.mesh);
  //! [PoSFQuadrangleMesh2D]
}

void examplePoSFIndexedMesh2D(PoIndexedMesh2D& node, PoIndexedMesh2D& other, const PbIndexedMesh2D& mesh,
                              const float* heat) {
  //! [PoSFIndexedMesh2D]
  node.mesh.setValue(mesh);  // a copy, data sets included; kits see it at the next traversal
  node.mesh.getMesh()->addValuesSet(1, heat, "heat");
  SbString text;
  node.mesh.get(text);  // as it stands in a scene file
  other.mesh.connectFrom(&node.mesh);
  //! [PoSFIndexedMesh2D]
}

void examplePoSFRegularCartesianGrid3D(PoRegularCartesianGrid3D& node, PoRegularCartesianGrid3D& other,
                                       const PbRegularCartesianGrid3D& mesh, const float* heat) {
  //! [PoSFRegularCartesianGrid3D]
  node.mesh.setValue(mesh);  // a copy, data sets included; kits see it at the next traversal
  node.mesh.getMesh()->addValuesSet(1, heat, "heat");
  SbString text;
  node.mesh.get(text);  // as it stands in a scene file
  other.mesh.connectFrom(&node.mesh);
  //! [PoSFRegularCartesianGrid3D]
}

void examplePoSFParalCartesianGrid3D(PoParalCartesianGrid3D& node, PoParalCartesianGrid3D& other,
                                     const PbParalCartesianGrid3D& mesh, const float* heat) {
  //! [PoSFParalCartesianGrid3D]
  node.mesh.setValue(mesh);  // a copy, data sets included; kits see it at the next traversal
  node.mesh.getMesh()->addValuesSet(1, heat, "heat");
  SbString text;
  node.mesh.get(text);  // as it stands in a scene file
  other.mesh.connectFrom(&node.mesh);
  //! [PoSFParalCartesianGrid3D]
}

void examplePoSFCartesianGrid3D(PoCartesianGrid3D& node, PoCartesianGrid3D& other, const PbCartesianGrid3D& mesh,
                                const float* heat) {
  //! [PoSFCartesianGrid3D]
  node.mesh.setValue(mesh);  // a copy, data sets included; kits see it at the next traversal
  node.mesh.getMesh()->addValuesSet(1, heat, "heat");
  SbString text;
  node.mesh.get(text);  // as it stands in a scene file
  other.mesh.connectFrom(&node.mesh);
  //! [PoSFCartesianGrid3D]
}

void examplePoSFTetrahedronMesh3D(PoTetrahedronMesh3D& node, PoTetrahedronMesh3D& other,
                                  const PbTetrahedronMesh3D& mesh, const float* heat) {
  //! [PoSFTetrahedronMesh3D]
  node.mesh.setValue(mesh);  // a copy, data sets included; kits see it at the next traversal
  node.mesh.getMesh()->addValuesSet(1, heat, "heat");
  SbString text;
  node.mesh.get(text);  // as it stands in a scene file
  other.mesh.connectFrom(&node.mesh);
  //! [PoSFTetrahedronMesh3D]
}

void examplePoSFHexahedronMesh3D(PoHexahedronMesh3D& node, PoHexahedronMesh3D& other, const PbHexahedronMesh3D& mesh,
                                 const float* heat) {
  //! [PoSFHexahedronMesh3D]
  node.mesh.setValue(mesh);  // a copy, data sets included; kits see it at the next traversal
  node.mesh.getMesh()->addValuesSet(1, heat, "heat");
  SbString text;
  node.mesh.get(text);  // as it stands in a scene file
  other.mesh.connectFrom(&node.mesh);
  //! [PoSFHexahedronMesh3D]
}

void examplePoSFIndexedMesh3D(PoIndexedMesh3D& node, PoIndexedMesh3D& other, const PbIndexedMesh3D& mesh,
                              const float* heat) {
  //! [PoSFIndexedMesh3D]
  node.mesh.setValue(mesh);  // a copy, data sets included; kits see it at the next traversal
  node.mesh.getMesh()->addValuesSet(1, heat, "heat");
  SbString text;
  node.mesh.get(text);  // as it stands in a scene file
  other.mesh.connectFrom(&node.mesh);
  //! [PoSFIndexedMesh3D]
}

void examplePoSFRegularMesh1D(PoRegularMesh1D& node, PoRegularMesh1D& other, const PbRegularMesh1D& mesh,
                              const float* heat) {
  //! [PoSFRegularMesh1D]
  node.mesh.setValue(mesh);  // a copy, data sets included; kits see it at the next traversal
  node.mesh.getMesh()->addValuesSet(1, heat, "heat");
  SbString text;
  node.mesh.get(text);  // as it stands in a scene file
  other.mesh.connectFrom(&node.mesh);
  //! [PoSFRegularMesh1D]
}

void examplePoSFIrregularMesh1D(PoIrregularMesh1D& node, PoIrregularMesh1D& other, const PbIrregularMesh1D& mesh,
                                const float* heat) {
  //! [PoSFIrregularMesh1D]
  node.mesh.setValue(mesh);  // a copy, data sets included; kits see it at the next traversal
  node.mesh.getMesh()->addValuesSet(1, heat, "heat");
  SbString text;
  node.mesh.get(text);  // as it stands in a scene file
  other.mesh.connectFrom(&node.mesh);
  //! [PoSFIrregularMesh1D]
}

}  // namespace docs
