// Who is told what, and in which order, also when those who are told change the list or the object.

#include <Ormelle/PbBase.h>
#include <gtest/gtest.h>

#include "Listener.h"
#include "support/NodePtr.h"

namespace {

class Data : public PbBase {
 public:
  void changeSilently(ChangeType type, int detail) {
    setChangeType(type);
    setDataChange(detail);
  }
  void forget() { removeAllConnection(); }
};

class PbBaseTest : public ::testing::Test {
 protected:
  PbBaseTest() {
    for (int i = 0; i < 3; ++i) {
      kits.emplace_back(new Listener);
      kits[i]->react = [this, i](PbBase*) { told.push_back(i); };
      data->addConnection(kits[i].get());
    }
  }
  ~PbBaseTest() override { delete data; }

  Data* data = new Data;
  std::vector<NodePtr<Listener>> kits;
  std::vector<int> told;
};

using Order = std::vector<int>;

TEST_F(PbBaseTest, TellsTheLatestConnectionFirst) {
  data->touch();
  EXPECT_EQ(told, (Order{2, 1, 0}));
  EXPECT_EQ(kits[0]->changes, (std::vector<PbBase::ChangeType>{PbBase::OBJECT_CHANGE}));
}

TEST_F(PbBaseTest, TellsOfItsEndEvenWhileDisabled) {
  data->enableConnection(0);
  data->touch();
  EXPECT_TRUE(told.empty());
  delete data;
  data = nullptr;
  EXPECT_EQ(told, (Order{2, 1, 0}));
  EXPECT_EQ(kits[0]->changes, (std::vector<PbBase::ChangeType>{PbBase::OBJECT_DELETED}));
}

TEST_F(PbBaseTest, AKitThatConnectedTwiceIsToldTwiceAndLeavesOneByOne) {
  data->addConnection(kits[0].get());
  data->touch();
  EXPECT_EQ(told, (Order{0, 2, 1, 0}));
  EXPECT_EQ(data->removeConnection(kits[0].get()), 1);
  EXPECT_EQ(data->removeConnection(kits[0].get()), 1);
  EXPECT_EQ(data->removeConnection(kits[0].get()), 0);
  told.clear();
  data->touch();
  EXPECT_EQ(told, (Order{2, 1}));
}

TEST_F(PbBaseTest, ConnectionsMayGoAndComeWhileTheyAreTold) {
  NodePtr<Listener> late(new Listener);
  kits[2]->react = [&](PbBase* object) {
    told.push_back(2);
    object->removeConnection(kits[2].get());
    object->removeConnection(kits[1].get());
    object->addConnection(late.get());
  };
  data->touch();
  EXPECT_EQ(told, (Order{2, 0}));
  EXPECT_TRUE(late->changes.empty());

  kits[0]->react = [&](PbBase*) { data->forget(); };
  kits[2]->react = nullptr;
  data->addConnection(kits[2].get());
  data->touch();
  data->touch();
  EXPECT_EQ(late->changes.size(), 1u);
  EXPECT_EQ(kits[2]->changes.size(), 2u);
}

TEST_F(PbBaseTest, ChangesNestAndTheObjectMayDieInsideOne) {
  kits[1]->react = [&](PbBase* object) {
    told.push_back(1);
    if (told.size() < 4)
      object->touch();
    else
      delete std::exchange(data, nullptr);
  };
  data->touch();
  // The second pass deletes the object; that tells all once more, and neither pass goes on.
  EXPECT_EQ(told, (Order{2, 1, 2, 1, 2, 1, 0}));
  EXPECT_EQ(kits[0]->changes.back(), PbBase::OBJECT_DELETED);
}

TEST_F(PbBaseTest, CopiesHaveFlagsButNoConnections) {
  data->enableConnection(0);
  data->changeSilently(PbBase::MESH_VALUES_CHANGE, 3);
  Data copy(*data);
  int detail = 0;
  copy.getDataChange(detail);
  EXPECT_EQ(detail, 3);
  EXPECT_EQ(copy.isConnectionEnabled(), 0);
  EXPECT_EQ(copy.getChangeType(), PbBase::MESH_VALUES_CHANGE);
  copy.enableConnection(1);
  copy.touch();
  EXPECT_TRUE(told.empty());

  *data = copy;  // enables, keeps the connections, tells
  EXPECT_EQ(told, (Order{2, 1, 0}));
  EXPECT_EQ(data->getChangeType(), PbBase::OBJECT_CHANGE);
  const Data& same = *data;
  *data = same;
  EXPECT_EQ(told.size(), 3u);
}

}  // namespace
