#include <Inventor/errors/SoReadError.h>
#include <Inventor/sensors/SoFieldSensor.h>
#include <Ormelle/PoIrregularMesh1D.h>
#include <Ormelle/PoMeshElement.h>
#include <Ormelle/PoParalCartesianGrid2D.h>
#include <Ormelle/PoRegularCartesianGrid2D.h>
#include <Ormelle/PoRegularCartesianGrid3D.h>
#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>

#include "MeshNodeKinds.h"
#include "NodesTest.h"

namespace {

constexpr float kX[] = {1, 2, 3, 4, 5, 6};
constexpr float kY[] = {7, 8, 9};

int s_numReadErrors = 0;

}  // namespace

TEST(MeshNode, PutsItsMeshInForceUnlessIgnored) {
  PoOrmelle::init();
  auto* surface = new PoRegularCartesianGrid2D;
  auto* solid = new PoRegularCartesianGrid3D;
  auto* line = new PoIrregularMesh1D;
  const PbMesh *any = nullptr, *mesh1D = nullptr, *mesh2D = nullptr, *mesh3D = nullptr;
  const std::function<void(SoState*)> look = [&](SoState* state) {
    any = PoMeshElement::getMesh(state);
    mesh1D = PoMeshElement::getMesh1D(state);
    mesh2D = PoMeshElement::getMesh2D(state);
    mesh3D = PoMeshElement::getMesh3D(state);
  };
  NodePtr<SoSeparator> scene = newScene({surface, solid, line, newProbe(look)});
  traverse(scene.get());
  EXPECT_EQ(any, line->getMesh());
  EXPECT_EQ(mesh1D, line->getMesh());
  EXPECT_EQ(mesh2D, nullptr);
  EXPECT_EQ(mesh3D, nullptr);
  line->mesh.setIgnored(TRUE);
  traverse(scene.get());
  EXPECT_EQ(any, solid->getMesh());
  EXPECT_EQ(mesh3D, solid->getMesh());
  EXPECT_EQ(mesh1D, nullptr);
  solid->mesh.setIgnored(TRUE);
  traverse(scene.get());
  EXPECT_EQ(mesh2D, surface->getMesh());
}

TEST(MeshNode, ChangesThroughTheNodeTouchTheFieldAndAreWritten) {
  PoOrmelle::init();
  NodePtr<PoParalCartesianGrid2D> node(new PoParalCartesianGrid2D);
  int numTouches = 0;
  SoFieldSensor sensor([](void* count, SoSensor*) { ++*static_cast<int*>(count); }, &numTouches);
  sensor.setPriority(0);
  sensor.attach(&node->mesh);
  EXPECT_TRUE(node->mesh.isDefault());
  EXPECT_EQ(textOf(node.get()).find("\n  mesh"), std::string::npos);
  const std::function<void()> changes[] = {[&] { node->setGeometry(2, 3, kX, kY); },
                                           [&] { node->setGeometry(2, 3, kX, kY, kX); },
                                           [&] { node->addValuesSet(0, kX, "a"); },
                                           [&] { node->addValuesSet(1, kX, PbMesh::PER_CELL, "b"); },
                                           [&] {
                                             const SbString strings[6];
                                             node->addStringsSet(0, strings, "c");
                                           },
                                           [&] {
                                             const SbVec3f vecs[6];
                                             node->addVecsSet(0, vecs, "d");
                                           },
                                           [&] {
                                             const SbVec3f vecs[6];
                                             node->addVecsSet(1, vecs, PbMesh::PER_CELL, "e");
                                           }};
  int num = 0;
  for (const auto& change : changes) {
    change();
    EXPECT_EQ(numTouches, ++num);
    EXPECT_FALSE(node->mesh.isDefault());
  }
  EXPECT_EQ(describeSets(*node->getMesh()), "values a; values/cell b; strings c; vecs d; vecs/cell e; ");
  EXPECT_NE(textOf(node.get()).find("\n  mesh"), std::string::npos);
}

// An application that fills the mesh itself doesn't lose it either.
TEST(MeshNode, AMeshThatWasGivenOutIsWrittenAndCopied) {
  PoOrmelle::init();
  NodePtr<PoRegularCartesianGrid2D> node(new PoRegularCartesianGrid2D);
  node->getMesh()->setGeometry(2, 3, 0, 0, 1, 1);
  const NodePtr<SoSeparator> read = sceneOf(textOf(node.get()));
  ASSERT_TRUE(read);
  EXPECT_TRUE(read->getChild(0)->fieldsAreEqual(node.get()));

  const NodePtr<PoRegularCartesianGrid2D> copy(static_cast<PoRegularCartesianGrid2D*>(node->copy()));
  EXPECT_NE(copy->getMesh(), node->getMesh());
  EXPECT_EQ(copy->getMesh()->getNumNodes(), 6);
  copy->setGeometry(4, 4, 0, 0, 1, 1);
  copy->addValuesSet(0, std::vector<float>(16).data(), "own");
  EXPECT_EQ(node->getMesh()->getNumNodes(), 6);
  EXPECT_EQ(node->getMesh()->getNumValuesSet(), 0);
  node.reset();
  EXPECT_EQ(copy->getMesh()->getNumNodes(), 16);
}

TEST(MeshNode, AConnectedFieldFollowsWithAMeshOfItsOwn) {
  PoOrmelle::init();
  NodePtr<PoRegularCartesianGrid2D> master(new PoRegularCartesianGrid2D), slave(new PoRegularCartesianGrid2D);
  const PbMesh* const mesh = slave->getMesh();
  slave->mesh.connectFrom(&master->mesh);
  master->setGeometry(2, 3, 0, 0, 1, 1);
  EXPECT_EQ(slave->mesh.getValue().getNumNodes(), 6);
  master->getMesh()->setGeometry(4, 3, 0, 0, 1, 1);
  master->mesh.touch();
  EXPECT_EQ(slave->getMesh()->getNumNodes(), 12);
  EXPECT_EQ(slave->getMesh(), mesh);
  EXPECT_NE(slave->getMesh(), master->getMesh());
  master.reset();
  EXPECT_EQ(slave->getMesh()->getNumNodes(), 12);
}

TEST(MeshNode, ReadingTellsKitsOnceAndKeepsTheMeshObject) {
  PoOrmelle::init();
  NodePtr<PoRegularCartesianGrid2D> node(new PoRegularCartesianGrid2D);
  node->setGeometry(2, 3, 0, 0, 1, 1);
  CountingKit::initClass();
  NodePtr<CountingKit> kit(new CountingKit);
  kit->connect(node->getMesh());
  const PbMesh* const mesh = node->getMesh();
  ASSERT_TRUE(node->mesh.set("3 3 0 0 1 1 0 1 0 a 1 2 3 4 5 6 7 8 9"));
  EXPECT_EQ(kit->changes, 1);
  EXPECT_EQ(node->getMesh(), mesh);
  EXPECT_EQ(mesh->getNumNodes(), 9);
  EXPECT_FALSE(node->mesh.set("3 3 0 0 1 1 0 1 0 a 1 2 3 4 5 6 7 8 nine"));
  EXPECT_EQ(kit->changes, 1);
  EXPECT_EQ(describeSets(*mesh), "values a; ");
  node->getMesh()->enableConnection(0);
  ASSERT_TRUE(node->mesh.set("2 2 0 0 1 1 0 0 0"));
  EXPECT_EQ(kit->changes, 1);
  node.reset();
  EXPECT_EQ(kit->deletions, 1);
}

// A field holds what a borrowing mesh borrows; what it reads is its own.
TEST(MeshNode, BorrowedArraysStayBorrowedUntilAFileIsRead) {
  PoOrmelle::init();
  NodePtr<PoParalCartesianGrid2D> node(new PoParalCartesianGrid2D), again(new PoParalCartesianGrid2D);
  PbParalCartesianGrid2D borrowing(2, 3, kX, kY, 0);
  borrowing.addValuesSet(0, kX, "kept");
  node->mesh = borrowing;
  const float *x, *y;
  node->getMesh()->getXYGeometry(x, y);
  EXPECT_EQ(x, kX);
  EXPECT_EQ(node->getMesh()->getValuesSet(0), kX);
  for (const bool isBinary : {false, true}) {
    ASSERT_TRUE(readFile(again->mesh, fileOf(node->mesh, isBinary)));
    EXPECT_TRUE(again->mesh.isSame(node->mesh));
  }
  const std::string file = fileOf(node->mesh, true);
  ASSERT_TRUE(readFile(node->mesh, file));
  node->getMesh()->getXYGeometry(x, y);
  EXPECT_NE(x, kX);
  EXPECT_NE(node->getMesh()->getValuesSet(0), kX);

  // It keeps its sets when its size changes, but they don't fit it any more and must not be read past their ends.
  borrowing.setGeometry(6, 3, kX, kY);
  ASSERT_EQ(borrowing.getNumValuesSet(), 1);
  again->mesh = borrowing;
  ASSERT_TRUE(readFile(node->mesh, fileOf(again->mesh, true)));
  EXPECT_EQ(node->getMesh()->getNumNodes(), 18);
  EXPECT_EQ(node->getMesh()->getNumValuesSet(), 0);
}

TEST(MeshNode, FlagsBehindTheMeshAreFound) {
  const NodePtr<PoMeshProperty> node = meshNodeKind("PoRegularMesh1D").make();
  NodePtr<PoMeshProperty> master = meshNodeKind("PoRegularMesh1D").make();
  fieldOf(*node).setIgnored(TRUE);
  for (const bool isBinary : {false, true}) {
    const NodePtr<SoSeparator> read = sceneOf(textOf(newScene({node.get()}).get(), isBinary));
    ASSERT_TRUE(read);
    auto& other = static_cast<PoMeshProperty&>(*read->getChild(0));
    EXPECT_TRUE(fieldOf(other).isIgnored());
    EXPECT_TRUE(fieldOf(other).isSame(fieldOf(*node)));
  }
  fieldOf(*node).connectFrom(&fieldOf(*master));
  const NodePtr<SoSeparator> scene = newScene({master.get(), node.get()});
  const NodePtr<SoSeparator> read = sceneOf(textOf(scene.get()));
  ASSERT_TRUE(read);
  SoField* connected = nullptr;
  EXPECT_TRUE(read->getChild(1)->getField("mesh")->getConnectedField(connected));
}

TEST(MeshNode, TheToolkitReportsWhatCannotBeRead) {
  PoOrmelle::init();
  s_numReadErrors = 0;
  SoErrorCB* const handler = SoReadError::getHandlerCallback();
  SoReadError::setHandlerCallback([](const SoError*, void*) { ++s_numReadErrors; }, nullptr);
  EXPECT_FALSE(sceneOf(kTextHeader + "PoRegularMesh1D { mesh 3 0 x }"));
  EXPECT_GT(s_numReadErrors, 0);
  EXPECT_TRUE(sceneOf(kTextHeader + "PoRegularMesh1D { mesh 3 0 1 0 0 }"));
  SoReadError::setHandlerCallback(handler, nullptr);
}

// Files and compressed files reach the fields in other pieces than memory does.
TEST(MeshNode, ComesBackFromFilesOfAllKinds) {
  PoOrmelle::init();
  NodePtr<PoRegularCartesianGrid2D> node(new PoRegularCartesianGrid2D);
  constexpr int kNum = 150;
  std::vector<float> values;
  std::vector<SbString> strings;
  for (int i = 0; i < kNum * kNum; ++i) {
    values.push_back(static_cast<float>(i) / 7);
    strings.emplace_back(i % 2 ? "odd" : "e\"v\\en");
  }
  node->setGeometry(kNum, kNum, 0, 0, 1, 1, values.data());
  node->addValuesSet(0, values.data(), "Heat");
  node->addStringsSet(0, strings.data(), "Names");
  unsigned numMethods;
  const SbName* methods = SoOutput::getAvailableCompressionMethods(numMethods);
  std::vector<SbName> all(methods, methods + numMethods);
  all.emplace_back("NONE");
  const auto path = std::filesystem::temp_directory_path() / ("mesh_node_test_" + std::to_string(getpid()) + ".iv");
  for (const SbName& method : all)
    for (const bool isBinary : {false, true}) {
      {
        SoOutput out;
        out.setBinary(isBinary);
        if (method != "NONE") out.setCompression(method);
        ASSERT_TRUE(out.openFile(path.c_str()));
        SoWriteAction action(&out);
        action.apply(node.get());
      }
      SoInput in;
      ASSERT_TRUE(in.openFile(path.c_str()));
      const NodePtr<SoSeparator> read(SoDB::readAll(&in));
      ASSERT_TRUE(read) << method.getString();
      EXPECT_TRUE(read->getChild(0)->fieldsAreEqual(node.get())) << method.getString();
    }
  std::filesystem::remove(path);
}
