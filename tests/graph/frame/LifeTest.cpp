// The kits' cycle of changes and rebuilds, counted.

#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoCube.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PoBase.h>
#include <Ormelle/PoOrmelle.h>
#include <gtest/gtest.h>

#include <string>

#include "FakeKit.h"
#include "support/NodePtr.h"

namespace {

/// A kit below a separator, with the actions that reach it.
class LifeTest : public ::testing::Test {
 protected:
  // The test kit isn't in the library's tables.
  static void SetUpTestSuite() {
    PoBase::init();
    FakeKit::initClass();
  }
  static void TearDownTestSuite() {
    FakeKit::exitClass();
    PoBase::finish();
  }

  LifeTest() : kit(new FakeKit), root(new SoSeparator) { root->addChild(kit.get()); }

  SbBox3f box() {
    SoGetBoundingBoxAction action(SbViewportRegion(100, 100));
    action.apply(root.get());
    return action.getBoundingBox();
  }
  void traverse() { box(); }
  std::string write() {
    SoOutput out;
    out.setBuffer(std::malloc(1), 1, std::realloc);
    SoWriteAction action(&out);
    action.apply(root.get());
    void* buffer = nullptr;
    size_t size = 0;
    out.getBuffer(buffer, size);
    std::string text(static_cast<char*>(buffer), size);
    std::free(buffer);
    return text;
  }
  NodePtr<SoSeparator> read(const std::string& text) {
    SoInput in;
    in.setBuffer(const_cast<char*>(text.data()), text.size());
    return NodePtr<SoSeparator>(SoDB::readAll(&in));
  }
  FakeKit* kitIn(SoSeparator* scene) {
    SoSearchAction search;
    search.setType(FakeKit::getClassTypeId());
    search.setSearchingAll(TRUE);
    search.apply(scene);
    return search.getPath() ? static_cast<FakeKit*>(search.getPath()->getTail()) : nullptr;
  }

  NodePtr<FakeKit> kit;
  NodePtr<SoSeparator> root;
};

TEST_F(LifeTest, OnlyATraversalAfterAChangeRebuilds) {
  EXPECT_FALSE(kit->isBuilt());
  EXPECT_FLOAT_EQ(box().getMax()[0], 1) << "the first traversal sees what it has built";
  EXPECT_EQ(kit->rebuilds, 1);
  traverse();
  EXPECT_EQ(kit->rebuilds, 1);

  kit->size = 4;
  kit->size = 6;
  EXPECT_TRUE(kit->isModified());
  EXPECT_EQ(kit->rebuilds, 1);
  EXPECT_FLOAT_EQ(box().getMax()[0], 3);
  EXPECT_EQ(kit->rebuilds, 2);
  kit->touchKit();
  traverse();
  EXPECT_EQ(kit->rebuilds, 3);

  kit->setUpdateMethod(PoBase::UPDATE_IMMEDIATE);
  kit->size = 8;
  kit->size = 10;
  EXPECT_EQ(kit->rebuilds, 5);
  traverse();
  EXPECT_EQ(kit->rebuilds, 5);
}

TEST_F(LifeTest, ActionsRebuildOrDoNot) {
  SoSearchAction searchAll;
  searchAll.setType(SoCube::getClassTypeId());
  searchAll.setSearchingAll(TRUE);
  searchAll.apply(root.get());
  EXPECT_EQ(kit->rebuilds, 0);

  SoSearchAction search;
  search.setType(SoCube::getClassTypeId());
  search.apply(root.get());
  EXPECT_EQ(kit->rebuilds, 1);

  kit->size = 3;
  write();
  EXPECT_EQ(kit->rebuilds, 2);

  kit->size = 5;
  SoRayPickAction pick(SbViewportRegion(100, 100));
  pick.setRay(SbVec3f(2.2f, 2.2f, 10), SbVec3f(0, 0, -1));
  pick.apply(root.get());
  EXPECT_EQ(kit->rebuilds, 3);
  EXPECT_NE(pick.getPickedPoint(), nullptr) << "the pick meets the new size";

  kit->size = 7;
  SoCallbackAction callback;
  callback.apply(root.get());
  EXPECT_EQ(kit->rebuilds, 4);
}

TEST_F(LifeTest, DataObjectsMarkTheKitAndMayDie) {
  auto* data = new FakeData;
  kit->setData(data);
  traverse();
  const int before = kit->rebuilds;
  data->touch();
  data->touch();
  traverse();
  EXPECT_EQ(kit->rebuilds, before + 1);
  data->enableConnection(0);
  data->touch();
  traverse();
  EXPECT_EQ(kit->rebuilds, before + 1);
  delete data;
  EXPECT_EQ(kit->data, nullptr) << "the end of an object is told even while connections are disabled";
  traverse();
  EXPECT_EQ(kit->rebuilds, before + 2);

  FakeData second;
  kit->setData(&second);
  root->removeChild(kit.get());
  kit.reset();
  second.touch();  // nobody is connected any more
}

TEST_F(LifeTest, DomainChangesRefreshTheTransformAlone) {
  kit->useDomainForRebuild(0);
  PbDomain domain(0, 0, 1000, 1, PbDomain::BOX_AS_GIVEN);
  kit->setDomain(&domain);
  EXPECT_EQ(kit->getDomain(), &domain);
  EXPECT_FLOAT_EQ(box().getMax()[1], 1000);
  const int before = kit->rebuilds;
  domain.setDomain(0, 0, 10, 1, PbDomain::BOX_AS_GIVEN);
  EXPECT_FLOAT_EQ(box().getMax()[1], 10);
  EXPECT_EQ(kit->rebuilds, before);

  kit->useDomainForRebuild(1);
  domain.setTransformType(PbDomain::SCALE_Y_FIXED);
  EXPECT_FLOAT_EQ(box().getMax()[1], 1);
  EXPECT_EQ(kit->rebuilds, before) << "the transform type never makes a rebuild";
  domain.setDomain(0, 0, 2, 1, PbDomain::BOX_AS_GIVEN);
  traverse();
  EXPECT_EQ(kit->rebuilds, before + 1);
}

TEST_F(LifeTest, DeletedDomainLeavesTheDefault) {
  for (const int isUsed : {0, 1}) {
    kit->useDomainForRebuild(isUsed);
    auto* domain = new PbDomain(0, 0, 10, 1, PbDomain::BOX_AS_GIVEN);
    kit->setDomain(domain);
    traverse();
    EXPECT_NE(kit->getPart("domainTransform", FALSE), nullptr);
    delete domain;
    ASSERT_NE(kit->getDomain(), nullptr);
    EXPECT_FLOAT_EQ(kit->getDomain()->getDeltaX(), 1);
    EXPECT_EQ(kit->getPart("domainTransform", FALSE), nullptr);
    traverse();
  }
}

TEST_F(LifeTest, OneCallbackBeforeAndAfterARebuild) {
  int first = 0, second = 0, other = 0;
  auto* count = +[](void* data, PoBase*) { ++*static_cast<int*>(data); };
  kit->addPreRebuildCallback(count, &first);
  kit->addPreRebuildCallback(count, &second);
  kit->addPostRebuildCallback(count, &second);
  kit->removePreRebuildCallback(count, &other);
  traverse();
  EXPECT_EQ(first, 0);
  EXPECT_EQ(second, 2);
  kit->removePreRebuildCallback(count, &second);
  kit->touchKit();
  traverse();
  EXPECT_EQ(second, 3);
}

// The parts that a replaced one held are no parts any more: neither its end nor another rebuild looks for them in vain.
TEST_F(LifeTest, AnApplicationMayReplaceAPartThatHoldsOthers) {
  for (const bool isByField : {false, true}) {
    SCOPED_TRACE(isByField);
    const NodePtr<FakeKit> own(new FakeKit);
    root->addChild(own.get());
    traverse();
    const NodePtr<SoSeparator> group(new SoSeparator);
    group->addChild(new SoDrawStyle);
    if (isByField)
      static_cast<SoSFNode*>(own->getField("alternateRep"))->setValue(group.get());
    else
      EXPECT_TRUE(own->setPart("alternateRep", group.get()));
    root->removeChild(own.get());
    const NodePtr<FakeKit> left(new FakeKit);
    EXPECT_TRUE(left->setPart("alternateRep", new SoSeparator)) << "of a kit that goes without a traversal";

    own->touchKit();
    root->addChild(own.get());
    traverse();
    EXPECT_EQ(own->rebuilds, 2);
    const SoNode* cube = own->getPart("cube", FALSE);
    ASSERT_TRUE(cube);
    // What only the field holds was never below the kit, and gives way to a group of its own.
    auto* holder = static_cast<SoGroup*>(static_cast<SoSFNode*>(own->getField("alternateRep"))->getValue());
    ASSERT_TRUE(holder);
    EXPECT_TRUE(isByField || holder == group.get());
    EXPECT_GE(holder->findChild(cube), 0);
    EXPECT_GE(holder->findChild(own->getPart("appearance", FALSE)), 0);
    root->removeChild(own.get());
  }
}

TEST_F(LifeTest, WrittenFieldsBuildTheSameAgain) {
  kit->size = 4;
  auto* style = new SoDrawStyle;
  style->lineWidth = 3;
  kit->setPart("appearance.drawStyle", style);
  const std::string text = write();
  EXPECT_EQ(text.find("alternateRep "), text.find("alternateRep ]")) << text;
  EXPECT_EQ(text.find("Cube"), std::string::npos) << text;
  EXPECT_NE(text.find("size 4"), std::string::npos) << text;
  EXPECT_NE(text.find("lineWidth 3"), std::string::npos) << "what the user styled is kept: " << text;
  EXPECT_EQ(text.find("BASE_COLOR"), std::string::npos) << "what the kit made is not: " << text;
  EXPECT_EQ(write(), text);

  const NodePtr<SoSeparator> again = read(text);
  ASSERT_TRUE(again);
  root = again;
  EXPECT_FLOAT_EQ(box().getMax()[0], 2);
  EXPECT_EQ(write(), text);
}

TEST_F(LifeTest, WrittenGeometryStaysUntilAnInputChanges) {
  kit->size = 4;
  PoBase::setNodeWriteFormat(PoBase::WRITE_GEOMETRY);
  const std::string text = write();
  PoBase::setNodeWriteFormat(PoBase::WRITE_FIELDS);
  EXPECT_NE(text.find("Cube"), std::string::npos) << text;
  EXPECT_EQ(text.find("size 4"), std::string::npos) << text;
  EXPECT_NE(write().find("size 4"), std::string::npos) << "a write as geometry must not cost the fields";

  root = read(text);
  ASSERT_TRUE(root);
  FakeKit* again = kitIn(root.get());
  ASSERT_NE(again, nullptr);
  EXPECT_TRUE(again->isBuilt());
  EXPECT_FLOAT_EQ(box().getMax()[0], 2);
  EXPECT_EQ(again->rebuilds, 0);
  auto* copied = static_cast<FakeKit*>(again->copy());
  copied->ref();
  root->addChild(copied);
  EXPECT_FLOAT_EQ(box().getMax()[0], 2);
  EXPECT_EQ(copied->rebuilds, 0);
  copied->unref();
  again->size = 10;
  EXPECT_FLOAT_EQ(box().getMax()[0], 5);
}

TEST_F(LifeTest, CopiesLiveOnTheirOwn) {
  PbDomain domain(0, 0, 10, 1, PbDomain::BOX_AS_GIVEN);
  kit->setDomain(&domain);
  traverse();
  auto* group = new SoSeparator;
  group->addChild(kit.get());
  const NodePtr<SoSeparator> copied(static_cast<SoSeparator*>(group->copy()));
  group->ref();
  group->unref();
  root = copied;
  FakeKit* twin = kitIn(root.get());
  ASSERT_NE(twin, nullptr);
  ASSERT_NE(twin, kit.get());
  const int before = kit->rebuilds;
  twin->size = 6;
  EXPECT_FLOAT_EQ(box().getMax()[0], 3);
  EXPECT_FLOAT_EQ(box().getMax()[1], 30);
  EXPECT_EQ(kit->rebuilds, before) << "the copy asks itself, not its source";
  domain.setDomain(0, 0, 100, 1, PbDomain::BOX_AS_GIVEN);
  EXPECT_FLOAT_EQ(box().getMax()[1], 300);
}

}  // namespace
