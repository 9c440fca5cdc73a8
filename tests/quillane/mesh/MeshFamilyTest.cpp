#include "support/MeshFamily.h"

#include <Inventor/fields/SoMFVec3f.h>
#include <Ormelle/PbCell.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <set>

namespace {

float wave(float x, float y) { return std::sin(2 * x) + 0.5F * y; }

// Corner nodes of all cells, as the cells tell them.
std::vector<std::vector<int>> cellNodes(const PbMesh& mesh) {
  std::vector<std::vector<int>> cells;
  for (int c = 0; c < mesh.getNumCells(); ++c) {
    PbArrayOfInt nodes;
    mesh.getCell(c)->getNodesIndex(nodes);
    cells.emplace_back(nodes.get(), nodes.get() + nodes.getNum());
  }
  return cells;
}

std::set<int> toSet(const PbArrayOfInt& array) { return {array.get(), array.get() + array.getNum()}; }

// Owner and neighbour lists against what the cells' own node lists say.
void expectNeighbours(const PbMesh& mesh, int numSharedByFacet) {
  const auto cells = cellNodes(mesh);
  PbArrayOfInt found;
  for (int node = 0; node < mesh.getNumNodes(); ++node) {
    std::set<int> owners;
    for (int c = 0; c < mesh.getNumCells(); ++c)
      if (std::count(cells[c].begin(), cells[c].end(), node)) owners.insert(c);
    mesh.getNodeOwnerCellsInd(node, found);
    EXPECT_EQ(toSet(found), owners) << "node " << node;
    EXPECT_EQ(found.getNum(), int(owners.size()));
  }
  for (int c = 0; c < mesh.getNumCells(); ++c) {
    std::set<int> byNode, byFacet;
    for (int other = 0; other < mesh.getNumCells(); ++other) {
      const auto numShared = std::count_if(cells[c].begin(), cells[c].end(), [&](int node) {
        return std::count(cells[other].begin(), cells[other].end(), node) > 0;
      });
      if (other == c) continue;
      if (numShared > 0) byNode.insert(other);
      if (numShared == numSharedByFacet) byFacet.insert(other);
    }
    mesh.getAdjacentCellsIndByNode(c, found);
    EXPECT_EQ(toSet(found), byNode) << "cell " << c;
    EXPECT_EQ(found.getNum(), int(byNode.size()));
    mesh.getAdjacentCellsIndByFacet(c, found);
    EXPECT_EQ(toSet(found), byFacet) << "cell " << c;
    EXPECT_EQ(found.getNum(), int(byFacet.size()));
    mesh.PbMesh::getAdjacentCellsIndByNode(c, found);
    EXPECT_EQ(toSet(found), byNode) << "by node lists, cell " << c;
    if (mesh.getCell(c)->getNumFacets() > 1) {
      mesh.PbMesh::getAdjacentCellsIndByFacet(c, found);
      EXPECT_EQ(toSet(found), byFacet) << "by node lists, cell " << c;
    }
  }
  for (const int outside : {-1, std::max(mesh.getNumNodes(), mesh.getNumCells())}) {
    found.add(7);
    mesh.getNodeOwnerCellsInd(outside, found);
    EXPECT_EQ(found.getNum(), 0);
    found.add(7);
    mesh.getAdjacentCellsIndByNode(outside, found);
    EXPECT_EQ(found.getNum(), 0);
    found.add(7);
    mesh.getAdjacentCellsIndByFacet(outside, found);
    EXPECT_EQ(found.getNum(), 0);
    EXPECT_EQ(mesh.getCell(outside), nullptr);
    EXPECT_EQ(mesh.getTopoCell(outside), nullptr);
  }
}

// The point in the cell found is the point searched, and beside the mesh nothing is found.
void expectLocation(const PbMesh& mesh, const SbBox3f& box, bool isFlat) {
  std::mt19937 random(7);
  std::uniform_real_distribution<float> share(0, 0.999F);
  std::vector<SbVec3f> nodes;
  for (int node = 0; node < mesh.getNumNodes(); ++node) nodes.push_back(mesh.getNodeCoord(node));
  const SbVec3f size = box.getMax() - box.getMin();
  for (int n = 0; n < 300; ++n) {
    SbVec3f point = box.getMin() + SbVec3f(share(random) * size[0], share(random) * size[1], share(random) * size[2]);
    SbVec3f pcoord;
    const PbCell* cell = mesh.findContainingCell(point, 0, pcoord);
    ASSERT_TRUE(cell) << point[0] << " " << point[1] << " " << point[2];
    const SbVec3f back = const_cast<PbCell*>(cell)->getValue(pcoord, nodes.data());
    EXPECT_NEAR((back - point).length(), 0, 1e-5) << "cell " << cell->getIndex();
    const int index = cell->getIndex();
    const PbCell* again = mesh.findContainingCell(point, 0, pcoord, mesh.getCell(n % mesh.getNumCells()));
    ASSERT_TRUE(again);
    EXPECT_EQ(again->getIndex(), index);
  }
  const float nan = std::nanf(""), inf = HUGE_VALF;
  SbVec3f pcoord;
  for (const float bad : {nan, inf, -inf, 1e30F, -1e30F})
    for (int axis = 0; axis < (isFlat ? 2 : 3); ++axis) {
      SbVec3f point = box.getCenter();
      point[axis] = bad;
      EXPECT_EQ(mesh.findContainingCell(point, 0.01F, pcoord), nullptr) << bad;
    }
  EXPECT_EQ(mesh.findContainingCell(box.getCenter(), nan, pcoord), nullptr);
}

}  // namespace

class Rectangle : public testing::TestWithParam<MeshKind2D> {
 protected:
  MeshSample<PbMesh2D> make(const RectangleSpec& spec = {}, int isDataDuplicate = 1) const {
    return GetParam().make(spec, isDataDuplicate);
  }
  int numParts() const { return GetParam().numParts; }
};
INSTANTIATE_TEST_SUITE_P(Mesh, Rectangle, testing::ValuesIn(meshKinds2D()), MeshKindName());

TEST_P(Rectangle, HasTheNodesCellsAndExtentOfTheRectangle) {
  for (const bool isRaised : {false, true}) {
    RectangleSpec spec;
    if (isRaised) spec.z = wave;
    const auto sample = make(spec), other = meshKinds2D().front().make(spec, 1);
    ASSERT_EQ(sample->getNumNodes(), 20);
    ASSERT_EQ(sample->getNumCells(), 12 * numParts());
    EXPECT_FALSE(sample->isEmpty());
    SoMFVec3f field;
    sample->getNodesCoord(sample->getZcoord(), field);
    ASSERT_EQ(field.getNum(), 20);
    for (int node = 0; node < 20; ++node) {
      EXPECT_TRUE(sample->getNodeCoord(node).equals(other->getNodeCoord(node), 1e-10F)) << node;
      EXPECT_EQ(field[node], sample->getNodeCoord(node));
    }
    sample->getNodesCoord(nullptr, field);
    EXPECT_EQ(field[19], SbVec3f(3, 4, 0));
    for (int c = 0; c < 12; ++c) EXPECT_EQ(sample->getCell(c)->getIndex(), c);
    if (numParts() == 1) {
      EXPECT_EQ(cellNodes(*sample.mesh), cellNodes(*other.mesh));
      EXPECT_EQ(cellNodes(*sample.mesh)[4], (std::vector<int>{5, 9, 10, 6})) << "cell (1, 1)";
    }

    const SbBox2f box = sample->getBoundingBox();
    EXPECT_EQ(box.getMin(), SbVec2f(1, -2));
    EXPECT_EQ(box.getMax(), SbVec2f(3, 4));
    EXPECT_EQ(sample->PbMesh::getBoundingBox().getMin(), other->PbMesh::getBoundingBox().getMin());
    EXPECT_EQ(sample->PbMesh::getBoundingBox().getMax(), other->PbMesh::getBoundingBox().getMax());

    if (numParts() == 1 || !isRaised) {
      EXPECT_NEAR(sample->getArea(), other->getArea(), 1e-4);
    }
    if (!isRaised) {
      EXPECT_FLOAT_EQ(sample->getArea(), 12);
    }
    EXPECT_EQ(sample->getVolume(), 0);
    if (!isRaised) {
      EXPECT_TRUE(sample->getFirstCellNormal().equals(other->getFirstCellNormal(), 1e-10F));
    }
    EXPECT_GT(sample->getFirstCellNormal()[2], 0) << "x along i and y along j turn counter-clockwise";
    if (numParts() > 1) continue;
    int smallest, biggest, otherSmallest, otherBiggest;
    EXPECT_EQ(sample->getSmallestCellBox(smallest).getMax(), other->getSmallestCellBox(otherSmallest).getMax());
    EXPECT_EQ(sample->getBiggestCellBox(biggest).getMin(), other->getBiggestCellBox(otherBiggest).getMin());
    EXPECT_EQ(smallest, isRaised ? otherSmallest : 0);
    EXPECT_EQ(biggest, isRaised ? otherBiggest : 0);
  }
}

TEST_P(Rectangle, KnowsItsNeighbours) { expectNeighbours(*make().mesh, 2); }

TEST_P(Rectangle, FindsPoints) {
  for (const bool doesFall : {false, true}) {
    RectangleSpec spec;
    if (doesFall) std::swap(spec.yMin, spec.yMax);
    const auto flat = make(spec);
    expectLocation(*flat.mesh, flat->PbMesh::getBoundingBox(), true);
  }
}

TEST_P(Rectangle, FindsPointsOfASurfaceInSpace) {
  RectangleSpec spec;
  spec.numX = spec.numY = 20;
  spec.z = wave;
  const auto sample = make(spec);
  SbVec3f pcoord;
  for (int c = 0; c < sample->getNumCells(); ++c) {
    const SbVec3f center = const_cast<PbCell*>(sample->getCell(c))->getCenter();
    const PbCell* found = sample->findContainingCell(center, 0, pcoord);
    ASSERT_TRUE(found) << c;
    EXPECT_EQ(found->getIndex(), c);
    EXPECT_EQ(sample->findContainingCell(center + SbVec3f(0, 0, 5), 0, pcoord), nullptr) << "far above";
  }
}

TEST_P(Rectangle, WalksItsLimitWithNormalsOutward) {
  for (const auto& [numX, numY] : {std::pair(5, 4), std::pair(2, 2), std::pair(2, 6), std::pair(7, 2)})
    for (const bool doesXFall : {false, true}) {
      RectangleSpec spec;
      spec.numX = numX;
      spec.numY = numY;
      if (doesXFall) std::swap(spec.xMin, spec.xMax);
      const auto sample = make(spec);
      PbArrayOfInt sizes, indices;
      sizes.add(99);
      indices.add(99);
      sample->getLimitIndices(sizes, indices);
      ASSERT_EQ(sizes.getNum(), 1);
      ASSERT_EQ(sizes.get(0), 2 * (numX + numY) - 4);
      ASSERT_EQ(indices.getNum(), sizes.get(0));
      EXPECT_EQ(toSet(indices).size(), std::size_t(sizes.get(0)));
      EXPECT_EQ(indices.get(0), 0);
      EXPECT_EQ(indices.get(1), 1) << "along j first";
      float length = 0;
      SbVec3f* normals = nullptr;
      sample->getSidesNormals(normals, sizes);
      ASSERT_EQ(normals != nullptr, sample->hasSidesNormals() != 0);
      const SbVec3f center = sample->PbMesh::getBoundingBox().getCenter();
      for (int s = 0; s < sizes.get(0); ++s) {
        const SbVec3f a = sample->getNodeCoord(indices.get(s));
        const SbVec3f b = sample->getNodeCoord(indices.get((s + 1) % indices.getNum()));
        length += (b - a).length();
        if (!normals) continue;
        EXPECT_FLOAT_EQ(normals[s].length(), 1);
        EXPECT_EQ(normals[s].dot(b - a), 0) << s;
        EXPECT_GT(normals[s].dot((a + b) / 2 - center), 0) << s;
      }
      EXPECT_NEAR(length, 16, 1e-4);
      delete[] normals;
    }
  for (const auto& [numX, numY] : {std::pair(1, 5), std::pair(5, 1), std::pair(1, 1)}) {
    RectangleSpec spec;
    spec.numX = numX;
    spec.numY = numY;
    const auto sample = make(spec);
    EXPECT_EQ(sample->getNumNodes(), numX * numY);
    EXPECT_EQ(sample->getNumCells(), 0);
    PbArrayOfInt sizes, indices;
    sample->getLimitIndices(sizes, indices);
    EXPECT_EQ(sizes.getNum() + indices.getNum(), 0);
    SbVec3f* normals = nullptr;
    sample->getSidesNormals(normals, sizes);
    EXPECT_EQ(normals, nullptr);
    EXPECT_EQ(sample->getFirstCellNormal(), SbVec3f(0, 0, 0));
    EXPECT_EQ(sample->getArea(), 0);
    SbVec3f pcoord;
    EXPECT_EQ(sample->findContainingCell(sample->getNodeCoord(0), 0.1F, pcoord), nullptr);
  }
}

TEST_P(Rectangle, CopiesWhatItOwnsAndBorrowsTheRest) {
  RectangleSpec spec;
  spec.z = wave;
  for (const int isDataDuplicate : {0, 1}) {
    auto sample = make(spec, isDataDuplicate);
    EXPECT_EQ(sample->isDataDuplicated(), isDataDuplicate);
    EXPECT_EQ(sample->getZcoord() == sample.arrays[2].data(), !isDataDuplicate);
    std::vector<float> values(20, 3.0F);
    sample->addValuesSet(4, values.data(), "heat");
    EXPECT_EQ(sample->getValuesSet(4) == values.data(), !isDataDuplicate);

    std::unique_ptr<PbMesh2D> copy = GetParam().copy(*sample.mesh);
    EXPECT_EQ(copy->getGeometryId(), sample->getGeometryId());
    EXPECT_EQ(copy->getValuesSet(4) == sample->getValuesSet(4), !isDataDuplicate);
    EXPECT_EQ(copy->getZcoord() == sample->getZcoord(), !isDataDuplicate);
    const SbVec3f node = sample->getNodeCoord(7);
    const float area = sample->getArea();

    RectangleSpec small;
    small.numX = small.numY = 2;
    auto target = make(small);
    target->addValuesSet(9, values.data(), "gone");
    GetParam().assign(*target.mesh, *sample.mesh);
    GetParam().assign(*target.mesh, *target.mesh);
    sample.mesh.reset();
    for (const PbMesh2D* mesh : {copy.get(), target.mesh.get()}) {
      EXPECT_EQ(mesh->getNumCells(), 12 * numParts());
      EXPECT_EQ(mesh->getNodeCoord(7), node);
      EXPECT_EQ(mesh->getArea(), area);
      EXPECT_EQ(mesh->getNumValuesSet(), 1);
      EXPECT_EQ(mesh->getValuesSet(4)[19], 3.0F);
      EXPECT_EQ(mesh->getCell(3)->getMesh(), mesh);
    }
  }
}

TEST_P(Rectangle, DrawsZFromAValueSet) {
  RectangleSpec spec;
  spec.z = wave;
  for (const bool isRaised : {false, true}) {
    auto sample = isRaised ? make(spec) : make();
    const std::vector<float> values(20, 50.0F), cellValues(std::size_t(sample->getNumCells()), 1.0F);
    sample->addValuesSet(0, values.data(), "z");
    sample->addValuesSet(1, cellValues.data(), PbMesh::PER_CELL, "per cell");
    const SbBox3f box = sample->PbMesh::getBoundingBox();
    const float area = sample->getArea();
    sample->pushZCoord(0);
    EXPECT_EQ(sample->getNodeCoord(3)[2], 50);
    EXPECT_EQ(sample->PbMesh::getBoundingBox().getMin()[2], 50);
    EXPECT_NEAR(sample->getArea(), 12, 1e-4);
    sample->popZCoord();
    EXPECT_EQ(sample->getArea(), area);
    EXPECT_EQ(sample->PbMesh::getBoundingBox().getMax(), box.getMax());
    for (const int index : {1, 77}) {
      sample->pushZCoord(index);
      EXPECT_EQ(sample->getZcoord(), nullptr) << "values of cells and no values make the mesh flat";
      sample->popZCoord();
    }
    sample->pushZCoord(-1);
    EXPECT_EQ(sample->getZcoord() != nullptr, isRaised);
    sample->popZCoord();
  }
}

class Box : public testing::TestWithParam<MeshKind3D> {
 protected:
  MeshSample<PbMesh3D> make(const BoxSpec& spec = {}) const { return GetParam().make(spec, 1); }
  bool isWhole() const { return GetParam().numParts == 1; }
};
INSTANTIATE_TEST_SUITE_P(Mesh, Box, testing::ValuesIn(meshKinds3D()), MeshKindName());

TEST_P(Box, HasTheNodesCellsAndExtentOfTheBox) {
  const auto sample = make(), other = meshKinds3D().front().make({}, 1);
  ASSERT_EQ(sample->getNumNodes(), 60);
  ASSERT_EQ(sample->getNumCells(), 24 * GetParam().numParts);
  for (int node = 0; node < 60; ++node)
    EXPECT_TRUE(sample->getNodeCoord(node).equals(other->getNodeCoord(node), 1e-10F)) << node;
  if (isWhole()) {
    EXPECT_EQ(cellNodes(*sample.mesh), cellNodes(*other.mesh));
    EXPECT_EQ(cellNodes(*sample.mesh)[9], (std::vector<int>{16, 28, 31, 19, 17, 29, 32, 20})) << "cell (1, 1, 1)";
  }
  EXPECT_EQ(sample->getBoundingBox().getMin(), SbVec3f(1, -2, 0));
  EXPECT_EQ(sample->getBoundingBox().getMax(), SbVec3f(3, 4, 5));
  EXPECT_NEAR(sample->getVolume(), 60, 1e-4);
  EXPECT_EQ(sample->getArea(), 0);
  if (!isWhole()) return;
  EXPECT_FLOAT_EQ(sample->getLongestEdgeLength(), 2.5F);
  if (const int num = sample->evaluateSkinFacesNum()) {
    EXPECT_EQ(num, 2 * (4 * 3 + 3 * 2 + 4 * 2));
  }
  int index;
  EXPECT_NEAR(sample->getSmallestCellBox(index).getVolume(), 2.5, 1e-5);
  PbArrayOfInt nodes;
  const PbCell* topo = sample->getTopoCell(9);
  topo->getNodesIndex(nodes);
  EXPECT_EQ(topo->getIndex(), 9);
  EXPECT_EQ(nodes.get(0), 16);
}

TEST_P(Box, KnowsItsNeighbours) { expectNeighbours(*make().mesh, isWhole() ? 4 : 3); }

TEST_P(Box, FindsPoints) {
  BoxSpec spec;
  for (const bool doesFall : {false, true}) {
    if (doesFall) std::swap(spec.min[1], spec.max[1]);
    const auto sample = make(spec);
    expectLocation(*sample.mesh, sample->getBoundingBox(), false);
  }
}
