// Start and end of the library, in all orders. Each test runs in a process of its own, where nothing was started
// before.

#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/errors/SoDebugError.h>
#include <Inventor/nodes/SoCube.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PoDebugError.h>
#include <Ormelle/PoDomain.h>
#include <Ormelle/PoDomainElement.h>
#include <Ormelle/PoLibOrmelleP.h>
#include <Ormelle/PoLinearDataMapping.h>
#include <Ormelle/PoOrmelle.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

bool isRegistered(const char* name) { return SoType::fromName(name) != SoType::badType(); }

/// Whether the toolkit still works: a scene of its own nodes has a box.
bool isToolkitAlive() {
  auto* root = new SoSeparator;
  root->ref();
  root->addChild(new SoCube);
  SoGetBoundingBoxAction action(SbViewportRegion(10, 10));
  action.apply(root);
  root->unref();
  return action.getBoundingBox().getMax()[0] == 1;
}

/// Reads a scene with a node of ours and traverses it.
bool isUsable() {
  char text[] = "#Inventor V2.1 ascii\nSeparator { PoDomain { max 2 1 1 } PoLinearDataMapping { value2 3 } Cube {} }";
  SoInput in;
  in.setBuffer(text, sizeof(text) - 1);
  SoSeparator* root = SoDB::readAll(&in);
  if (!root) return false;
  root->ref();
  const bool isKnown = root->getNumChildren() == 3 && root->getChild(0)->isOfType(PoDomain::getClassTypeId()) &&
                       root->getChild(1)->isOfType(PoDataMapping::getClassTypeId());
  SoGetBoundingBoxAction action(SbViewportRegion(10, 10));
  action.apply(root);
  root->unref();
  return isKnown;
}

TEST(Start, CountedByTheApplication) {
  EXPECT_FALSE(PoOrmelle::isInitialized());
  PoOrmelle::finish();  // nothing to undo
  PoOrmelle::init();
  PoOrmelle::init();
  PoOrmelle::finish();
  EXPECT_TRUE(PoOrmelle::isInitialized());
  EXPECT_TRUE(isUsable());
  PoOrmelle::finish();
  EXPECT_FALSE(PoOrmelle::isInitialized());
  EXPECT_FALSE(isRegistered("PoDomain"));
  EXPECT_TRUE(isToolkitAlive());
  PoOrmelle::finish();
  EXPECT_FALSE(PoOrmelle::isInitialized());
}

TEST(Start, ComesBackAfterItsEnd) {
  for (int round = 0; round < 5; ++round) {
    PoOrmelle::init();
    EXPECT_TRUE(isUsable()) << round;
    PoOrmelle::finish();
    EXPECT_FALSE(isRegistered("PoDomain"));
  }
}

TEST(Start, NodesStartItAndHoldIt) {
  auto* node = new PoDomain;  // nothing was started before
  node->ref();
  EXPECT_TRUE(PoOrmelle::isInitialized());
  PoOrmelle::finish();  // not the application's to give back
  EXPECT_TRUE(PoOrmelle::isInitialized());
  PoOrmelle::init();
  PoOrmelle::finish();
  EXPECT_TRUE(isUsable());
  node->unref();
  EXPECT_FALSE(PoOrmelle::isInitialized());
  EXPECT_FALSE(isRegistered("PoDomain")) << "the application was through, so the last node ends it";
  EXPECT_TRUE(isToolkitAlive());
}

TEST(Start, NodesAloneDoNotUseUpTheTypes) {
  // Each registration takes type keys that the toolkit never gives back.
  for (int i = 0; i < 20000; ++i) {
    auto* node = new PoDomain;
    node->ref();
    node->unref();
  }
  EXPECT_FALSE(PoOrmelle::isInitialized());
  EXPECT_TRUE(isUsable());
}

TEST(Start, SurvivesTheEndOfTheToolkit) {
  SoDB::init();
  for (int round = 0; round < 3; ++round) {
    PoOrmelle::init();
    EXPECT_TRUE(isUsable()) << round;
    SoDB::finish();  // the application's to call; our own count is void with it
    EXPECT_FALSE(PoOrmelle::isInitialized());
    PoOrmelle::finish();
    SoDB::init();
    EXPECT_TRUE(isToolkitAlive());
    EXPECT_EQ(PoDomainElement::getClassTypeId(), SoType::badType());
  }
}

TEST(Start, ErrorsReachTheHandler) {
  PoOrmelle::init();
  std::vector<std::string> heard;
  PoDebugError::setHandlerCallback(
      [](const SoError* error, void* data) {
        const auto* ours = static_cast<const PoDebugError*>(error);
        static_cast<std::vector<std::string>*>(data)->push_back(std::to_string(ours->getSeverity()) +
                                                                error->getDebugString().getString());
      },
      &heard);
  PoDebugError::post("PoMesh::rebuild", "%d of %s", 3, "four");
  PoDebugError::postWarning("f", "w");
  PoDebugError::postInfo("f", "i");
  PoDebugError::post("f", "%s", std::string(20000, 'x').c_str());
  ASSERT_EQ(heard.size(), 4u);
  EXPECT_EQ(heard[0], "0Ormelle error in PoMesh::rebuild(): 3 of four");
  EXPECT_EQ(heard[1], "1Ormelle warning in f(): w");
  EXPECT_EQ(heard[2], "2Ormelle: in f(): i");
  EXPECT_EQ(heard[3].size(), std::string("0Ormelle error in f(): ").size() + 9999) << "cut, not written past the end";
  PoDebugError::setHandlerCallback(nullptr, nullptr);
}

TEST(Start, TheViewLibraryMayBeMissing) {
  PoOrmelle::init();
  std::string heard;
  SoDebugError::setHandlerCallback(
      [](const SoError* error, void* data) { *static_cast<std::string*>(data) = error->getDebugString().getString(); },
      &heard);
  PoLibOrmelleP::setWindowSystem(PoLibOrmelleP::WINDOW_SYSTEM_QT);
  EXPECT_EQ(PoLibOrmelleP::instance(), nullptr);
  EXPECT_NE(heard.find("Could not load OrmelleQt.so"), std::string::npos) << heard;
  EXPECT_FALSE(PoLibOrmelleP::isAvailable());
  PoLibOrmelleP::finish();
  SoDebugError::setHandlerCallback(nullptr, nullptr);
  PoOrmelle::finish();
}

}  // namespace
