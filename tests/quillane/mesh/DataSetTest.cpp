#include <Inventor/SbVec2f.h>
#include <Ormelle/PbCell.h>
#include <Ormelle/PbCellFilterIterator.h>
#include <Ormelle/PbRegularCartesianGrid2D.h>
#include <Ormelle/PoIntervalCellFilter.h>
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "support/NodePtr.h"

namespace {

// 6 nodes, 2 cells.
class Mesh : public PbRegularCartesianGrid2D {
 public:
  explicit Mesh(int isDataDuplicate) : PbRegularCartesianGrid2D(3, 2, 0, 0, 2, 1, isDataDuplicate) {}
};

const float kNaN = std::nanf("");

}  // namespace

TEST(DataSet, IsReplacedUnderItsIndex) {
  const std::vector<float> nodeValues = {1, 2, 3, 4, 5, 6}, cellValues = {7, 8};
  for (const int isDataDuplicate : {0, 1}) {
    Mesh mesh(isDataDuplicate);
    mesh.addValuesSet(-5, nodeValues.data(), "first");
    const unsigned int id = mesh.getFltDataSetId(-5);
    const float* stored = mesh.getValuesSet(-5);
    EXPECT_EQ(stored == nodeValues.data(), !isDataDuplicate);
    EXPECT_EQ(mesh.getValuesBinding(-5), PbMesh::PER_NODE);

    mesh.addValuesSet(-5, cellValues.data(), PbMesh::PER_CELL, "second");
    EXPECT_EQ(mesh.getNumValuesSet(), 1);
    EXPECT_GT(mesh.getFltDataSetId(-5), id);
    EXPECT_EQ(mesh.getValuesBinding(-5), PbMesh::PER_CELL);
    EXPECT_STREQ(mesh.getValuesSetName(-5)->getString(), "second");
    EXPECT_EQ(mesh.getValuesSet(-5)[1], 8);
    EXPECT_EQ(mesh.getValuesSet(-5) == stored, isDataDuplicate) << "a smaller set goes into the same array";
    float max;
    EXPECT_TRUE(mesh.getMaxValuesSet(-5, max));
    EXPECT_EQ(max, 8) << "two values, not six";

    mesh.addValuesSet(-5, nullptr, "none");
    EXPECT_EQ(mesh.getValuesSet(-5), nullptr);
    EXPECT_FALSE(mesh.getMaxValuesSet(-5, max));
  }
}

TEST(DataSet, MayBeGivenItsOwnData) {
  Mesh mesh(1);
  const std::vector<float> values = {1, 2, 3, 4, 5, 6};
  mesh.addValuesSet(0, values.data(), "a");
  mesh.addValuesSet(0, mesh.getValuesSet(0), *mesh.getValuesSetName(0));
  mesh.addValuesSet(0, mesh.getValuesSet(0) + 3, PbMesh::PER_CELL, *mesh.getValuesSetName(0));
  EXPECT_EQ(mesh.getValuesSet(0)[0], 4);
  EXPECT_STREQ(mesh.getValuesSetName(0)->getString(), "a");
}

TEST(DataSet, HasThreeKindsThatDontMix) {
  Mesh mesh(1);
  const SbString strings[6] = {"a", "b", "c", "d", "e", "f"};
  const SbVec3f vecs[6] = {{3, 4, 0}, {0, 0, 1}, {0, 2, 0}, {kNaN, 0, 0}, {1, 1, 1}, {1e38F, 1e38F, 1e38F}};
  mesh.addStringsSet(1, strings, "s");
  EXPECT_EQ(mesh.getChangeType(), PbBase::MESH_STRINGS_CHANGE);
  mesh.addVecsSet(1, vecs, "v");
  EXPECT_EQ(mesh.getChangeType(), PbBase::MESH_VECS_CHANGE);
  EXPECT_STREQ(mesh.getStringsSet(1)[5].getString(), "f");
  EXPECT_EQ(mesh.getVecsSet(1)[0], SbVec3f(3, 4, 0));
  float length = 0;
  EXPECT_TRUE(mesh.getMinVecsSet(1, length));
  EXPECT_EQ(length, 1);
  EXPECT_TRUE(mesh.getMaxVecsSet(1, length));
  EXPECT_NEAR(length, 1.732e38, 1e36) << "no overflow on the way";
  EXPECT_EQ(mesh.getValuesSet(1), nullptr);
  EXPECT_EQ(mesh.getNumValuesSet(), 0);

  EXPECT_EQ(mesh.removeVecsSet(1), 1);
  EXPECT_EQ(mesh.getChangeType(), PbBase::MESH_VALUES_CHANGE);
  EXPECT_EQ(mesh.removeStringsSet(2), 0);
  EXPECT_EQ(mesh.getChangeType(), PbBase::MESH_STRINGS_CHANGE) << "posted whether there was one or not";
  mesh.removeAllStringsSet();
  EXPECT_EQ(mesh.getNumStringsSet() + mesh.getNumVecsSet(), 0);
}

TEST(DataSet, WidensPlaneVectorsIntoACopy) {
  Mesh mesh(0);
  const std::vector<SbVec3f> borrowed(6, SbVec3f(9, 9, 9));
  mesh.addVecsSet(0, borrowed.data(), "v");
  {
    const std::vector<SbVec2f> plane(6, SbVec2f(1, 2));
    mesh.addVecsSet(0, plane.data(), "p");
  }
  ASSERT_NE(mesh.getVecsSet(0), borrowed.data());
  EXPECT_EQ(mesh.getVecsSet(0)[5], SbVec3f(1, 2, 0));
  EXPECT_EQ(mesh.getChangeType(), PbBase::MESH_VECS_CHANGE);
}

TEST(DataSet, AnswersForUnknownIndices) {
  const Mesh mesh(1);
  float untouched = 42;
  EXPECT_EQ(mesh.getValuesSet(0), nullptr);
  EXPECT_EQ(mesh.getVecsSetName(0), nullptr);
  EXPECT_EQ(mesh.getValuesBinding(0), PbMesh::PER_NODE);
  EXPECT_EQ(mesh.getVecsBinding(0), PbMesh::PER_NODE);
  EXPECT_EQ(mesh.getFltDataSetId(0), 0xFFFFFFFFU);
  EXPECT_EQ(mesh.getVecDataSetId(0), 0xFFFFFFFFU);
  EXPECT_EQ(mesh.getMinValuesSet(0, untouched) + mesh.getMaxVecsSet(0, untouched), 0);
  EXPECT_EQ(untouched, 42);
}

TEST(DataSet, MinimumAndMaximumSkipNaN) {
  Mesh mesh(1);
  const std::vector<float> some = {kNaN, 5, kNaN, -3, HUGE_VALF, kNaN}, none(6, kNaN);
  mesh.addValuesSet(0, some.data(), "some");
  mesh.addValuesSet(1, none.data(), "none");
  float value = 42;
  EXPECT_EQ(mesh.getMinValuesSet(1, value), 0);
  EXPECT_EQ(value, 42);
  EXPECT_EQ(mesh.getMinValuesSet(0, value), 1);
  EXPECT_EQ(value, -3);
  EXPECT_EQ(mesh.getMaxValuesSet(0, value), 1);
  EXPECT_EQ(value, HUGE_VALF);
}

TEST(DataSet, DoesntOutliveItsSize) {
  const std::vector<float> values(24, 1.0F);
  const std::vector<SbVec3f> vecs(24, SbVec3f(1, 0, 0));
  // The call that removes the sets finds the new geometry in place: whoever is told by it sees a whole mesh.
  struct Watched : PbRegularCartesianGrid2D {
    using PbRegularCartesianGrid2D::PbRegularCartesianGrid2D;
    void removeAllValuesSet() override {
      getDim(numX, numY);
      PbRegularCartesianGrid2D::removeAllValuesSet();
    }
    int numX = 0, numY = 0;
  };
  for (const int isDataDuplicate : {0, 1})
    for (const auto& [numX, numY] : {std::pair(4, 6), std::pair(3, 8), std::pair(2, 12), std::pair(24, 2)}) {
      Watched mesh(2, 12, 0, 0, 1, 1, isDataDuplicate);
      mesh.addValuesSet(0, values.data(), "v");
      mesh.addValuesSet(1, values.data(), PbMesh::PER_CELL, "c");
      mesh.addVecsSet(0, vecs.data(), "v");
      const unsigned int geometry = mesh.getGeometryId(), topology = mesh.getTopologyId();
      mesh.setGeometry(numX, numY, 0, 0, 2, 2);
      const bool isSame = numX == 2;
      EXPECT_EQ(mesh.getNumValuesSet(), isDataDuplicate && !isSame ? 0 : 2) << numX;
      EXPECT_EQ(mesh.getNumVecsSet(), isDataDuplicate && !isSame ? 0 : 1);
      EXPECT_EQ(mesh.getChangeType(), PbBase::MESH_GEOMETRY_CHANGE);
      EXPECT_NE(mesh.getGeometryId(), geometry);
      EXPECT_EQ(mesh.getTopologyId() == topology, isSame);
      EXPECT_TRUE(!isDataDuplicate || isSame || mesh.numX == numX);
    }
}

TEST(CellIterator, WalksAllCellsOrThoseThatAFilterAccepts) {
  PbRegularCartesianGrid2D mesh(4, 3, 0, 0, 1, 1, 1);
  const std::vector<float> values = {0, 5, 1, 5, 5, 2};
  mesh.addValuesSet(3, values.data(), PbMesh::PER_CELL, "v");
  const auto walk = [](PbCellIterator&& cells) {
    std::vector<int> found;
    for (cells.first(); cells.notDone(); cells.next()) found.push_back(cells.getTopoCell()->getIndex());
    cells.next();
    EXPECT_FALSE(cells.notDone());
    EXPECT_EQ(cells.getCell(), nullptr);
    return found;
  };
  NodePtr<PoIntervalCellFilter> filter(new PoIntervalCellFilter);
  filter->min = 3;
  filter->max = 7;
  filter->in = TRUE;
  const std::vector<int> all = {0, 1, 2, 3, 4, 5};
  EXPECT_EQ(walk(PbCellIterator(&mesh)), all);
  EXPECT_EQ(walk(PbCellFilterIterator(&mesh, nullptr, 3)), all);
  EXPECT_EQ(walk(PbCellFilterIterator(&mesh, filter.get(), 3)), (std::vector<int>{1, 3, 4}));
  EXPECT_EQ(walk(PbCellFilterIterator(&mesh, filter.get())), std::vector<int>()) << "without values all are 0";
  EXPECT_EQ(walk(PbCellFilterIterator(nullptr, filter.get(), 3)), std::vector<int>());
}
