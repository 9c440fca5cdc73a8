#include "MeshNodeKinds.h"

#include <Inventor/SoInput.h>
#include <Inventor/SoOutput.h>
#include <Ormelle/PoOrmelle.h>

#include <cmath>
#include <cstdlib>
#include <limits>

#include "nodes/mesh/PiMeshNodeClasses.h"

namespace {

// 0.1 reads back from 8 digits, 1000.00006 only from 9.
constexpr float kX[] = {0, 0.1F, 1000.00006F, 1e-40F, -2.5e30F, 6, 7, 8, 9, 10, 11, 12};
constexpr float kY[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 16777216};
constexpr float kZ[] = {0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 1, -0.0F};

constexpr int kCells[] = {0, 1, 2, 3, 4, 5, 0, 1, 2, 3, 4, 5, 0, 1, 2, 3, 4, 5, 0, 1, 2, 3, 4};
constexpr int kTypes2D[] = {4, 3};
constexpr int kTypes3D[] = {8, 4, 5, 6};

template <class Node, class... Arguments>
MeshNodeKind kind(std::string name, std::string geometryText, Arguments... arguments) {
  return {std::move(name),
          [=] {
            PoOrmelle::init();
            NodePtr<Node> node(new Node);
            node->setGeometry(arguments...);
            return NodePtr<PoMeshProperty>(node.get());
          },
          std::move(geometryText)};
}

constexpr const char* kX6 = "0 0.1 1000.00006 9.9999461e-41 -2.5e+30 6 \n";
constexpr const char* kX12 = "0 0.1 1000.00006 9.9999461e-41 -2.5e+30 6 7 8 9 10 11 12 \n";
constexpr const char* kY6 = "0 1 2 3 4 5 \n";
constexpr const char* kY12 = "0 1 2 3 4 5 6 7 8 9 10 16777216 \n";
constexpr const char* kZ6 = "0 0 0 0 0 0 \n";
constexpr const char* kZ12 = "0 0 0 0 0 0 1 1 1 1 1 -0 \n";

constexpr const char* kNodes6 =
    "6   # num nodes\n# x coordinates of mesh nodes\n0 0.1 1000.00006 9.9999461e-41 -2.5e+30 6 \n"
    "# y coordinates of mesh nodes\n0 1 2 3 4 5 \n";

std::string text(std::initializer_list<const char*> parts) {
  std::string all;
  for (const char* part : parts) all += part;
  return all;
}

std::vector<MeshNodeKind> makeKinds() {
  return {
      kind<PoCartesianGrid2D>("PoCartesianGrid2D",
                              text({"2 3   # num_x, num_y\n# x coordinates of mesh nodes\n", kX6,
                                    "# y coordinates of mesh nodes\n", kY6, "0   # 2D mesh\n"}),
                              2, 3, kX, kY),
      kind<PoCartesianGrid2D>(
          "PoCartesianGrid2D",
          text({"2 3   # num_x, num_y\n# x coordinates of mesh nodes\n", kX6, "# y coordinates of mesh nodes\n", kY6,
                "1   # 3D mesh\n# z coordinates of mesh nodes\n", kZ6}),
          2, 3, kX, kY, kZ),
      kind<PoParalCartesianGrid2D>(
          "PoParalCartesianGrid2D",
          text({"6 2   # num_x, num_y\n# x coordinates of mesh\n", kX6,
                "# y coordinates of mesh\n0 1 \n1   # 3D mesh\n# z coordinates of mesh\n", kZ12}),
          6, 2, kX, kY, kZ),
      kind<PoPolarGrid2D>("PoPolarGrid2D",
                          text({"2 6   # num_r, num_t\n# r coordinates of mesh nodes\n0 1 \n"
                                "# t coordinates of mesh nodes\n",
                                kX6, "1   # 3D mesh\n# z coordinates of mesh nodes\n", kZ12}),
                          2, 6, kY, kX, kZ),
      kind<PoRegularCartesianGrid2D>("PoRegularCartesianGrid2D",
                                     "4 3   # num_x, num_y\n0.1 1000.00006   # x_min, y_min\n1 -2   # x_max, y_max\n"
                                     "0   # 2D mesh\n",
                                     4, 3, 0.1F, 1000.00006F, 1.0F, -2.0F),
      kind<PoRegularCartesianGrid2D>("PoRegularCartesianGrid2D",
                                     text({"4 3   # num_x, num_y\n0.1 1000.00006   # x_min, y_min\n"
                                           "1 -2   # x_max, y_max\n1   # 3D mesh\n# z coordinates of mesh\n",
                                           kZ12}),
                                     4, 3, 0.1F, 1000.00006F, 1.0F, -2.0F, kZ),
      kind<PoCartesianGrid3D>("PoCartesianGrid3D",
                              text({"2 2 3   # num_x, num_y, num_z\n# x coordinates of mesh nodes\n", kX12,
                                    "# y coordinates of mesh nodes\n", kY12, "# z coordinates of mesh nodes\n", kZ12}),
                              2, 2, 3, kX, kY, kZ),
      kind<PoParalCartesianGrid3D>(
          "PoParalCartesianGrid3D",
          text({"6 2 3   # num_x, num_y, num_z\n# x coordinates of mesh\n", kX6,
                "# y coordinates of mesh\n0 1 \n# z coordinates of mesh\n0 0.1 1000.00006 \n"}),
          6, 2, 3, kX, kY, kX),
      kind<PoRegularCartesianGrid3D>("PoRegularCartesianGrid3D",
                                     "3 4 5   # num_x, num_y, num_z\n0 0.1 0.2   # x_min, y_min, z_min\n"
                                     "1 2 3   # x_max, y_max, z_max\n",
                                     3, 4, 5, 0.0F, 0.1F, 0.2F, 1.0F, 2.0F, 3.0F),
      kind<PoIndexedMesh2D>("PoIndexedMesh2D",
                            text({kNodes6, "1   # 3D mesh\n# z coordinates of mesh nodes\n", kZ6,
                                  "2   # num cells\n# cell's type\n4 3 \n# cell's indices\n0 1 2 3 4 5 0 \n"}),
                            6, kX, kY, kZ, 2, kCells, kTypes2D),
      kind<PoTriangleMesh2D>("PoTriangleMesh2D",
                             text({kNodes6, "0   # 2D mesh\n2   # num cells\n# cell's indices\n0 1 2 3 4 5 \n"}), 6, kX,
                             kY, 2, kCells),
      kind<PoQuadrangleMesh2D>("PoQuadrangleMesh2D",
                               text({kNodes6, "1   # 3D mesh\n# z coordinates of mesh nodes\n", kZ6,
                                     "2   # num cells\n# cell's indices\n0 1 2 3 4 5 0 1 \n"}),
                               6, kX, kY, kZ, 2, kCells),
      kind<PoIndexedMesh3D>("PoIndexedMesh3D",
                            text({kNodes6, "# z coordinates of mesh nodes\n", kZ6,
                                  "4   # num cells\n# cell's type\n8 4 5 6 \n# cell's indices\n"
                                  "0 1 2 3 4 5 0 1 2 3 4 5 0 1 2 \n3 4 5 0 1 2 3 4 \n"}),
                            6, kX, kY, kZ, 4, kCells, kTypes3D),
      kind<PoTetrahedronMesh3D>("PoTetrahedronMesh3D",
                                text({kNodes6, "# z coordinates of mesh nodes\n", kZ6,
                                      "3   # num cells\n# cell's indices\n0 1 2 3 4 5 0 1 2 3 4 5 \n"}),
                                6, kX, kY, kZ, 3, kCells),
      kind<PoHexahedronMesh3D>("PoHexahedronMesh3D",
                               text({kNodes6, "# z coordinates of mesh nodes\n", kZ6,
                                     "2   # num cells\n# cell's indices\n0 1 2 3 4 5 0 1 2 3 4 5 0 1 2 \n3 \n"}),
                               6, kX, kY, kZ, 2, kCells),
      kind<PoRegularMesh1D>("PoRegularMesh1D", "7   # size\n0.1 -3   # xmin and xmax coordinates of mesh nodes\n", 7,
                            0.1F, -3.0F),
      kind<PoIrregularMesh1D>("PoIrregularMesh1D", text({"6   # size\n# x coordinates of mesh nodes\n", kX6}), 6, kX),
  };
}

}  // namespace

const std::vector<MeshNodeKind>& meshNodeKinds() {
  static const std::vector<MeshNodeKind> s_kinds = makeKinds();
  return s_kinds;
}

const MeshNodeKind& meshNodeKind(const std::string& name) {
  PoOrmelle::init();
  for (const MeshNodeKind& kind : meshNodeKinds())
    if (kind.name == name) return kind;
  std::abort();
}

void addSets(PoMeshProperty& node) {
  const auto numNodes = static_cast<std::size_t>(node.getMesh()->getNumNodes());
  const auto numCells = static_cast<std::size_t>(node.getMesh()->getNumCells());
  std::vector<float> values;
  std::vector<SbString> strings;
  std::vector<SbVec3f> vecs;
  const char* const awkward[] = {"", "a b", "say \"no\"", "C:\\", "\\\"", "# no comment", "two\nlines", "\\\\", "~"};
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  for (std::size_t i = 0; i < std::max(numNodes, numCells); ++i) {
    const float f = static_cast<float>(i);
    values.push_back(i == 1 ? std::nanf("") : i == 2 ? kInfinity : i == 3 ? -kInfinity : f / 7);
    strings.emplace_back(awkward[i % std::size(awkward)]);
    vecs.emplace_back(f, 0.1F * f, -f);
  }
  node.addValuesSet(7, values.data(), "Heat of the \"inner\" side");
  node.addValuesSet(-3, values.data(), PbMesh::PER_CELL, "Cells\\");
  node.addStringsSet(40, strings.data(), "");
  node.addStringsSet(2, strings.data(), "per cell");
  node.addVecsSet(5, vecs.data(), "Wind");
  node.addVecsSet(9, vecs.data(), PbMesh::PER_CELL, "Flow");
}

std::string describeSets(const PbMesh& mesh) {
  std::string all;
  const auto add = [&](const char* kindOfSet, const SbString* name, PbMesh::DataBinding binding) {
    all += std::string(kindOfSet) + (binding == PbMesh::PER_CELL ? "/cell " : " ") + (name ? name->getString() : "?") +
           "; ";
  };
  for (int i = 0; i < mesh.getNumValuesSet(); ++i) add("values", mesh.getValuesSetName(i), mesh.getValuesBinding(i));
  for (int i = 0; i < mesh.getNumStringsSet(); ++i) add("strings", mesh.getStringsSetName(i), PbMesh::PER_NODE);
  for (int i = 0; i < mesh.getNumVecsSet(); ++i) add("vecs", mesh.getVecsSetName(i), mesh.getVecsBinding(i));
  return all;
}

PoSFMesh& fieldOf(PoMeshProperty& node) { return *static_cast<PoSFMesh*>(node.getField("mesh")); }

std::string fileOf(PoSFMesh& field, bool isBinary) {
  SoOutput out;
  out.setBinary(isBinary);
  out.setStage(SoOutput::WRITE);
  const size_t size = 4096;
  out.setBuffer(std::malloc(size), size, [](void* memory, size_t wanted) { return std::realloc(memory, wanted); });
  field.writeValue(&out);
  void* buffer;
  size_t used;
  out.getBuffer(buffer, used);
  std::string file(static_cast<const char*>(buffer), used);
  std::free(buffer);
  return file;
}

bool readFile(PoSFMesh& field, const std::string& file) {
  SoInput in;
  in.setBuffer(file.data(), file.size());
  return field.readValue(&in);
}
