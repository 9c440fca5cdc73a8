#include <Ormelle/PoOrmelle.h>
#include <gtest/gtest.h>

#include <cstring>

#include "MeshNodeKinds.h"
#include "NodesTest.h"

namespace {

bool isSameFloat(float a, float b) { return std::memcmp(&a, &b, sizeof(a)) == 0; }

void expectSameNodes(const PbMesh& a, const PbMesh& b) {
  ASSERT_EQ(a.getNumNodes(), b.getNumNodes());
  EXPECT_EQ(a.getNumCells(), b.getNumCells());
  for (int i = 0; i < a.getNumNodes(); ++i)
    for (int c = 0; c < 3; ++c)
      EXPECT_TRUE(isSameFloat(a.getNodeCoord(i)[c], b.getNodeCoord(i)[c])) << "node " << i << ", " << c;
}

// The text of a geometry as the field writes it: every line begins with the indent.
std::string indented(const std::string& text) {
  std::string all;
  bool isLineStart = true;
  for (const char c : text) {
    if (isLineStart) all += "  ";
    all += c;
    isLineStart = c == '\n';
  }
  return all;
}

class MeshFile : public testing::TestWithParam<MeshNodeKind> {
 protected:
  // Not where the kinds are listed: that is before the first test of the program, some of which are about the start.
  static void SetUpTestSuite() { PoOrmelle::init(); }
};

}  // namespace

TEST_P(MeshFile, ComesBackAndIsWrittenTheSameAgain) {
  const NodePtr<PoMeshProperty> node = GetParam().make();
  for (const bool hasSets : {false, true}) {
    if (hasSets) addSets(*node);
    for (const bool isBinary : {false, true}) {
      const NodePtr<SoSeparator> scene = newScene({node.get(), new SoCallback});
      const std::string file = textOf(scene.get(), isBinary);
      const NodePtr<SoSeparator> again = sceneOf(file);
      ASSERT_TRUE(again) << file;
      ASSERT_EQ(again->getNumChildren(), 2);  // whatever follows the mesh is found
      ASSERT_EQ(again->getChild(0)->getTypeId(), node->getTypeId());
      auto& read = static_cast<PoMeshProperty&>(*again->getChild(0));
      EXPECT_EQ(textOf(again.get(), isBinary), file);

      EXPECT_TRUE(read.fieldsAreEqual(node.get()));
      const PbMesh& mesh = *node->getMesh();
      const PbMesh& other = *read.getMesh();
      expectSameNodes(mesh, other);
      EXPECT_EQ(other.isDataDuplicated(), 1);
      if (!hasSets) continue;
      EXPECT_EQ(describeSets(other),
                "values/cell Cells\\; values Heat of the \"inner\" side; strings per cell; strings ; vecs Wind; "
                "vecs/cell Flow; ");
      for (int i = 0; i < mesh.getNumNodes(); ++i) {
        EXPECT_TRUE(isSameFloat(other.getValuesSet(1)[i], mesh.getValuesSet(7)[i])) << i;
        EXPECT_EQ(other.getVecsSet(0)[i], mesh.getVecsSet(5)[i]) << i;
        EXPECT_EQ(other.getStringsSet(0)[i], mesh.getStringsSet(2)[i]) << i;
      }
      for (int i = 0; i < mesh.getNumCells(); ++i) {
        EXPECT_TRUE(isSameFloat(other.getValuesSet(0)[i], mesh.getValuesSet(-3)[i])) << i;
        EXPECT_EQ(other.getVecsSet(1)[i], mesh.getVecsSet(9)[i]) << i;
      }
    }
  }
}

TEST_P(MeshFile, TextHasTheStatedLines) {
  const NodePtr<PoMeshProperty> node = GetParam().make();
  EXPECT_EQ(fileOf(fieldOf(*node), false),
            kTextHeader + "\n" +
                indented(GetParam().geometryText + "0   # number of string data-set\n0   # number of scalar data-set\n"
                                                   "0   # number of vector data-set\n"));
}

TEST_P(MeshFile, CutOffAnywhereItLeavesTheMeshAsItWas) {
  const NodePtr<PoMeshProperty> node = GetParam().make(), other = GetParam().make();
  addSets(*node);
  PoSFMesh& target = fieldOf(*other);
  const std::string before = fileOf(target, true);
  for (const bool isBinary : {false, true}) {
    const std::string file = fileOf(fieldOf(*node), isBinary);
    // In text the last number may lose digits, and blanks behind it.
    std::size_t end = file.size();
    if (!isBinary) end = file.find_last_of(' ', file.find_last_of("0123456789"));
    for (std::size_t size = isBinary ? 1 : kTextHeader.size(); size < end; ++size) {
      ASSERT_FALSE(readFile(target, file.substr(0, size))) << size << " of " << file.size();
      ASSERT_EQ(fileOf(target, true), before) << size;
    }
    EXPECT_TRUE(readFile(target, file));
    EXPECT_TRUE(target.isSame(fieldOf(*node)));
    readFile(target, before);
  }
}

TEST_P(MeshFile, EmptyMeshWithNamedSets) {
  NodePtr<PoMeshProperty> node(static_cast<PoMeshProperty*>(GetParam().make()->getTypeId().createInstance()));
  EXPECT_TRUE(fieldOf(*node).isDefault());
  node->addValuesSet(4, nullptr, "Nothing");
  for (const bool isBinary : {false, true}) {
    const NodePtr<PoMeshProperty> full = GetParam().make();
    addSets(*full);
    ASSERT_TRUE(readFile(fieldOf(*full), fileOf(fieldOf(*node), isBinary)));
    EXPECT_EQ(full->getMesh()->getNumNodes(), 0);
    EXPECT_EQ(describeSets(*full->getMesh()), "values Nothing; ");
  }
}

TEST_P(MeshFile, IsTheSameExactlyIfItsFileIs) {
  const NodePtr<PoMeshProperty> node = GetParam().make();
  addSets(*node);
  const NodePtr<PoMeshProperty> other(static_cast<PoMeshProperty*>(node->copy()));
  EXPECT_TRUE(fieldOf(*other).isSame(fieldOf(*node)));
  const std::string file = fileOf(fieldOf(*node), true);
  int numDifferent = 0;
  for (std::size_t i = file.find('\n') + 1; i < file.size(); ++i) {
    std::string changed = file;
    changed[i] ^= 1;
    if (!readFile(fieldOf(*other), changed)) continue;
    const bool isSame = fieldOf(*other).isSame(fieldOf(*node));
    ASSERT_EQ(isSame, fileOf(fieldOf(*other), true) == file) << "byte " << i;
    numDifferent += !isSame;
  }
  EXPECT_GT(numDifferent, 100);
}

INSTANTIATE_TEST_SUITE_P(Nodes, MeshFile, testing::ValuesIn(meshNodeKinds()), MeshNodeKindName());
