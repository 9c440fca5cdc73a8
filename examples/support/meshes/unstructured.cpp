// Meshes that are meshes in the data already.

#include <Ormelle/PoIndexedMesh3D.h>
#include <Ormelle/PoTetrahedronMesh3D.h>
#include <Ormelle/PoTriangleMesh2D.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "MeshFiles.h"

namespace gallery {

namespace {

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
  writeMesh("chesapeake_bay", mesh);
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
    writeMesh("bracket_tetrahedra", mesh);
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
  writeMesh("bracket_mixed", mesh);
}

}  // namespace

void writeUnstructured() {
  writeChesapeakeBay();
  writeBrackets();
}

}  // namespace gallery
