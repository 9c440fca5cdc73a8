#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoCallback.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PbRegularCartesianGrid2D.h>
#include <Ormelle/PoDataMappingElement.h>
#include <Ormelle/PoMeshElement.h>
#include <Ormelle/PoMeshFilled.h>
#include <Ormelle/PoMeshLimit.h>
#include <Ormelle/PoMeshLines.h>
#include <Ormelle/PoMeshSides.h>
#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

#include "support/NodePtr.h"
#include "support/Soup.h"

namespace {

std::unique_ptr<PbRegularCartesianGrid2D> newMesh(float size = 2) {
  auto mesh = std::make_unique<PbRegularCartesianGrid2D>(3, 3, 0.0F, 0.0F, size, size, 1);
  const float values[9] = {0, 1, 2, 3, 4, 5, 6, 7, 8};
  mesh->addValuesSet(0, values, "values");
  return mesh;
}

std::unique_ptr<PbLinearDataMapping> newMapping() {
  auto mapping = std::make_unique<PbLinearDataMapping>();
  mapping->setValues(0, SbColor(0, 0, 0), 8, SbColor(1, 1, 1));
  return mapping;
}

/// Counts the rebuilds of a kit.
class RebuildCount {
 public:
  explicit RebuildCount(PoBase* kit) { kit->addPostRebuildCallback(&RebuildCount::add, this); }
  /// Those since it was last asked.
  int take() { return std::exchange(m_count, 0); }

 private:
  static void add(void* count, PoBase*) { ++static_cast<RebuildCount*>(count)->m_count; }
  int m_count = 0;
};

void traverse(SoNode* scene) { SoGetBoundingBoxAction(SbViewportRegion(100, 100)).apply(scene); }

float widthOf(SoNode* scene) {
  SoGetBoundingBoxAction box(SbViewportRegion(100, 100));
  box.apply(scene);
  return box.getBoundingBox().isEmpty() ? 0 : box.getBoundingBox().getMax()[0];
}

/// An attribute node for one object that the test owns.
template <class Element, class Object>
SoCallback* carrier(const Object** object) {
  struct Carry {
    static void put(void* data, SoAction* action) {
      if (Element::getClassStackIndex() >= 0)
        Element::set(action->getState(), action->getCurPathTail(), *static_cast<const Object**>(data));
    }
  };
  auto* node = new SoCallback;
  node->setCallback(&Carry::put, object);
  return node;
}

class MeshKitLifeTest : public testing::Test {
 protected:
  MeshKitLifeTest() {
    kit->valuesIndex = 0;
    kit->coloringType = PoMesh::COLOR_MAPPING;
    traverse(kit.get());
    rebuilds.take();
  }
  int numColors() { return Soup::of(kit.get()).numColors(); }

  NodePtr<PoMeshFilled> kit{new PoMeshFilled};
  RebuildCount rebuilds{kit.get()};
};

TEST_F(MeshKitLifeTest, ChangesAreSeenOnceATraversal) {
  const auto mesh = newMesh();
  const auto mapping = newMapping();
  kit->setMesh(mesh.get());
  kit->setDataMapping(mapping.get());
  EXPECT_EQ(rebuilds.take(), 0);
  EXPECT_EQ(numColors(), 9);
  EXPECT_EQ(rebuilds.take(), 1);
  traverse(kit.get());
  EXPECT_EQ(rebuilds.take(), 0);

  const float values[9] = {0, 0, 0, 0, 0, 0, 0, 0, 8};
  mesh->addValuesSet(0, values, "values");
  mapping->setValues(0, SbColor(1, 0, 0), 8, SbColor(0, 0, 1));
  kit->creaseAngle = 1;
  EXPECT_EQ(numColors(), 2);
  EXPECT_EQ(rebuilds.take(), 1);

  PbDomain domain;
  kit->setDomain(&domain);
  domain.setTransformType(PbDomain::TRANSFORM_01);
  traverse(kit.get());
  EXPECT_EQ(rebuilds.take(), 0) << "a domain moves what is drawn, it doesn't change it";
  kit->setDomain(nullptr);
}

TEST_F(MeshKitLifeTest, ImmediateChangesRebuildOnceEachHoweverOftenAnObjectIsHeld) {
  const auto mesh = newMesh();
  auto mapping = newMapping();
  kit->setMesh(mesh.get());
  kit->setDataMapping(mapping.get());
  kit->setModuleDataMapping(mapping.get());
  kit->setUpdateMethod(PoBase::UPDATE_IMMEDIATE);
  rebuilds.take();
  mapping->enableThresholds(1, 0);
  EXPECT_EQ(rebuilds.take(), 1);
  mesh->touch();
  EXPECT_EQ(rebuilds.take(), 1) << "held as a mesh and as a mesh of two dimensions";

  kit->setModuleDataMapping(nullptr);
  rebuilds.take();
  mapping->enableThresholds(0, 0);
  EXPECT_EQ(rebuilds.take(), 1) << "still the data mapping";
  kit->setModuleDataMapping(mapping.get());
  rebuilds.take();
  mapping.reset();
  EXPECT_EQ(rebuilds.take(), 1);
  EXPECT_EQ(numColors(), 1);
}

TEST_F(MeshKitLifeTest, DeletedObjectsAreForgotten) {
  for (const PoBase::UpdateMethodType method : {PoBase::UPDATE_AT_TRAVERSAL, PoBase::UPDATE_IMMEDIATE}) {
    auto mesh = newMesh();
    auto mapping = newMapping();
    auto isovalues = std::make_unique<PbIsovaluesList>();
    kit->setUpdateMethod(method);
    kit->setMesh(mesh.get());
    kit->setDataMapping(mapping.get());
    kit->setIsovaluesList(isovalues.get());
    EXPECT_EQ(numColors(), 9);
    isovalues.reset();
    EXPECT_EQ(kit->getIsovaluesList(), nullptr);
    mapping.reset();
    EXPECT_EQ(kit->getDataMapping(), nullptr);
    EXPECT_EQ(numColors(), 1);
    mesh.reset();
    EXPECT_EQ(kit->getMesh(), nullptr);
    EXPECT_EQ(Soup::of(kit.get()).triangles.size(), 0U);
    EXPECT_EQ(kit->getPart("groupFilled", FALSE), nullptr);
  }
}

TEST_F(MeshKitLifeTest, ReplacedObjectsAreLetGo) {
  const auto first = newMesh();
  const auto second = newMesh(5);
  kit->setMesh(first.get());
  kit->setMesh(second.get());
  EXPECT_EQ(widthOf(kit.get()), 5);
  rebuilds.take();
  first->touch();
  traverse(kit.get());
  EXPECT_EQ(rebuilds.take(), 0);
  // A mesh given through the base class is drawn where it has two dimensions.
  kit->setMesh(nullptr);
  static_cast<PoMesh*>(kit.get())->setMesh(first.get());
  EXPECT_EQ(widthOf(kit.get()), 2);
}

TEST_F(MeshKitLifeTest, KitsShareObjectsAndOutliveEachOther) {
  auto mesh = newMesh();
  const auto mapping = newMapping();
  NodePtr<PoMeshLines> lines(new PoMeshLines);
  NodePtr<PoMeshLimit> limit(new PoMeshLimit);
  NodePtr<PoMeshSides> sides(new PoMeshSides);
  NodePtr<SoSeparator> root(new SoSeparator);
  for (PoMesh2D* each : std::vector<PoMesh2D*>{kit.get(), lines.get(), limit.get(), sides.get()}) {
    root->addChild(each);
    each->setMesh(mesh.get());
    each->setDataMapping(mapping.get());
    each->zValuesIndex = 0;
  }
  const Soup soup = Soup::of(root.get());
  EXPECT_FALSE(soup.triangles.empty());
  EXPECT_FALSE(soup.segments.empty());
  root->removeChild(lines.get());
  lines.reset();
  mesh->touch();
  traverse(root.get());
  mesh.reset();
  EXPECT_TRUE(Soup::of(root.get()).triangles.empty());
}

// The node that carries an object is in front of a separator that caches: a change of the object itself touches no
// node.
TEST_F(MeshKitLifeTest, ObjectsOnTheStateAreWatchedThroughCaches) {
  auto mesh = newMesh();
  auto mapping = newMapping();
  const PbMesh2D* meshOnState = mesh.get();
  const PbDataMapping* mappingOnState = mapping.get();
  NodePtr<SoSeparator> root(new SoSeparator);
  NodePtr<SoCallback> meshNode(carrier<PoMeshElement>(&meshOnState));
  NodePtr<SoCallback> mappingNode(carrier<PoDataMappingElement>(&mappingOnState));
  root->addChild(meshNode.get());
  root->addChild(mappingNode.get());
  auto* cached = new SoSeparator;
  cached->boundingBoxCaching = SoSeparator::ON;
  root->addChild(cached);
  cached->addChild(kit.get());

  EXPECT_EQ(widthOf(root.get()), 2);
  EXPECT_EQ(widthOf(root.get()), 2);
  EXPECT_EQ(rebuilds.take(), 1);
  EXPECT_EQ(kit->getMesh(), nullptr) << "outside a traversal there is no state";

  mesh->setGeometry(3, 3, 0, 0, 7, 7);
  EXPECT_EQ(widthOf(root.get()), 7);
  EXPECT_EQ(rebuilds.take(), 1);
  mapping->setMinThreshold(3);
  mapping->enableThresholds(1, 0);
  EXPECT_LT(Soup::of(root.get()).area(), 49);

  const auto other = newMesh(4);
  meshOnState = other.get();
  meshNode->touch();
  EXPECT_EQ(widthOf(root.get()), 4) << "another object by the same node";
  rebuilds.take();
  mesh->touch();
  traverse(root.get());
  EXPECT_EQ(rebuilds.take(), 0) << "the one before is let go";

  mappingOnState = nullptr;
  mapping.reset();
  EXPECT_EQ(Soup::of(root.get()).numColors(), 1);

  const auto given = newMesh(9);
  kit->setMesh(given.get());
  EXPECT_EQ(widthOf(root.get()), 9) << "what is given comes before the state";
}

// A colouring that is switched on later depends on more of the state than the rebuilds before it.
TEST_F(MeshKitLifeTest, TheMappingOnTheStateIsWatchedFromWhenItIsUsed) {
  const auto mesh = newMesh();
  const auto grey = newMapping();
  PbLinearDataMapping red;
  red.setValues(0, SbColor(1, 0, 0), 8, SbColor(1, 0, 0));
  const PbDataMapping* onState = grey.get();
  NodePtr<SoSeparator> root(new SoSeparator);
  NodePtr<SoCallback> mappingNode(carrier<PoDataMappingElement>(&onState));
  root->addChild(mappingNode.get());
  root->addChild(kit.get());
  kit->setMesh(mesh.get());
  kit->coloringType = PoMesh::COLOR_INHERITED;
  traverse(root.get());
  kit->coloringType = PoMesh::COLOR_MAPPING;
  EXPECT_EQ(Soup::of(root.get()).numColors(), 9);
  onState = &red;
  mappingNode->touch();
  EXPECT_EQ(Soup::of(root.get()).numColors(), 1);
}

TEST_F(MeshKitLifeTest, ImmediateRebuildsOfAKitFedByTheStateKeepItsObjects) {
  const auto mesh = newMesh();
  const PbMesh2D* meshOnState = mesh.get();
  NodePtr<SoSeparator> root(new SoSeparator);
  root->addChild(carrier<PoMeshElement>(&meshOnState));
  root->addChild(kit.get());
  traverse(root.get());
  kit->setUpdateMethod(PoBase::UPDATE_IMMEDIATE);
  kit->creaseAngle = 0.5F;
  mesh->setGeometry(3, 3, 0, 0, 6, 6);
  EXPECT_EQ(widthOf(root.get()), 6);
}

TEST_F(MeshKitLifeTest, CopiesUseTheSameObjects) {
  auto mesh = newMesh();
  const auto mapping = newMapping();
  kit->setMesh(mesh.get());
  kit->setDataMapping(mapping.get());
  NodePtr<PoMeshFilled> copy(static_cast<PoMeshFilled*>(kit->copy()));
  EXPECT_EQ(copy->getMesh(), mesh.get());
  EXPECT_EQ(Soup::of(copy.get()).numColors(), 9);
  mesh->setGeometry(3, 3, 0, 0, 8, 8);
  EXPECT_EQ(widthOf(copy.get()), 8);
  copy->coloringType = PoMesh::COLOR_INHERITED;
  EXPECT_EQ(numColors(), 9) << "its fields are its own";
  mesh.reset();
  EXPECT_EQ(widthOf(copy.get()), 0);
  EXPECT_EQ(widthOf(kit.get()), 0);
}

}  // namespace
