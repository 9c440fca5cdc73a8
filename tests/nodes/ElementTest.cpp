#include <Inventor/SoPath.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGetMatrixAction.h>
#include <Inventor/actions/SoGetPrimitiveCountAction.h>
#include <Inventor/actions/SoHandleEventAction.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoCube.h>
#include <Ormelle/PoBevelEdge.h>
#include <Ormelle/PoBevelEdgeElement.h>
#include <Ormelle/PoCellFilterElement.h>
#include <Ormelle/PoCircularProfile.h>
#include <Ormelle/PoDataMappingElement.h>
#include <Ormelle/PoDateFormatMapping.h>
#include <Ormelle/PoDateFormatMappingElement.h>
#include <Ormelle/PoDomain.h>
#include <Ormelle/PoDomainElement.h>
#include <Ormelle/PoIntervalCellFilter.h>
#include <Ormelle/PoIsovaluesList.h>
#include <Ormelle/PoIsovaluesListElement.h>
#include <Ormelle/PoLabelHintsElement.h>
#include <Ormelle/PoLinearDataMapping.h>
#include <Ormelle/PoMesh1DFilterElement.h>
#include <Ormelle/PoMesh1DHintsElement.h>
#include <Ormelle/PoMeshElement.h>
#include <Ormelle/PoMiscTextAttr.h>
#include <Ormelle/PoMiscTextAttrElement.h>
#include <Ormelle/PoNumericDisplayFormat.h>
#include <Ormelle/PoNumericDisplayFormatElement.h>
#include <Ormelle/PoPeriodFilter.h>
#include <Ormelle/PoProfileElement.h>
#include <gtest/gtest.h>

#include <vector>

#include "NodesTest.h"

namespace {

// What a kit at some place of the scene would find, as flags and values that can be compared.
struct Found {
  std::vector<const void*> pointers;
  PoMesh1DHints::GeomInterpretation interpretation;
  PoLabelHints::LabelPath path;
  PoLabelHints::Justification justification;
  SbString string;
  int hasLine;
  int hasBevel;
  float radius, angle;
  PoBevelEdge::RadiusFlag flag;

  void look(SoState* state) {
    pointers = {PoDomainElement::get(state),        PoNumericDisplayFormatElement::get(state),
                PoIsovaluesListElement::get(state), PoDateFormatMappingElement::get(state),
                PoMiscTextAttrElement::get(state),  PoDataMappingElement::get(state),
                PoCellFilterElement::get(state),    PoMesh1DFilterElement::get(state),
                PoProfileElement::get(state)};
    interpretation = PoMesh1DHintsElement::get(state);
    PoLabelHintsElement::get(state, path, justification, string, hasLine);
    hasBevel = PoBevelEdgeElement::get(state, radius, flag, angle);
  }
  int numPointers() const {
    int num = 0;
    for (const void* pointer : pointers) num += pointer != nullptr;
    return num;
  }
};

}  // namespace

TEST(Elements, EveryActionIsLedToTheNodesAndSeparatorsEndTheirScope) {
  PoOrmelle::init();
  Found inside, outside;
  const std::function<void(SoState*)> lookInside = [&](SoState* state) { inside.look(state); };
  const std::function<void(SoState*)> lookOutside = [&](SoState* state) { outside.look(state); };
  auto* hints = new PoMesh1DHints;
  hints->geomInterpretation = PoMesh1DHints::STAIRS_2Y;
  auto* labels = new PoLabelHints;
  labels->addString = "km";
  SoCallback* probe = newProbe(lookInside);
  NodePtr<SoSeparator> inner =
      newScene({new PoDomain, new PoNumericDisplayFormat, new PoIsovaluesList, new PoDateFormatMapping,
                new PoMiscTextAttr, new PoLinearDataMapping, new PoIntervalCellFilter, new PoPeriodFilter,
                new PoCircularProfile, hints, labels, new PoBevelEdge, probe});
  SoCallback* probeOutside = newProbe(lookOutside);
  NodePtr<SoSeparator> scene = newScene({inner.get(), probeOutside});
  SoOutput out;
  char buffer[1 << 14];
  out.setBuffer(buffer, sizeof(buffer), nullptr);
  NodePtr<SoCube> absent(new SoCube);
  const SbViewportRegion viewport(100, 100);

  const auto check = [&](SoAction& action, const char* name) {
    inside = outside = Found();
    if (action.isOfType(SoGetMatrixAction::getClassTypeId())) {
      SoPath* path = new SoPath(scene.get());
      path->ref();
      path->append(inner.get());
      path->append(probe);
      action.apply(path);
      path->unref();
      scene->removeChild(0);  // what is beside the path is only met if it comes before it
      action.apply(scene.get());
      scene->insertChild(inner.get(), 0);
      outside.look(action.getState());
    } else {
      action.apply(scene.get());
    }
    EXPECT_EQ(inside.numPointers(), 9) << name;
    EXPECT_EQ(inside.interpretation, PoMesh1DHints::STAIRS_2Y) << name;
    EXPECT_EQ(inside.string, "km") << name;
    EXPECT_TRUE(inside.hasBevel) << name;
    if (action.isOfType(SoWriteAction::getClassTypeId())) return;  // the toolkit writes separators without a scope
    EXPECT_EQ(outside.numPointers(), 0) << name;
    EXPECT_EQ(outside.interpretation, PoMesh1DHints::AS_IS) << name;
    EXPECT_EQ(outside.string, "") << name;
    EXPECT_EQ(outside.path, PoLabelHints::PATH_DEPEND) << name;
    EXPECT_FALSE(outside.hasBevel) << name;
  };
  SoCallbackAction callback(viewport);
  check(callback, "callback");
  SoGetBoundingBoxAction box(viewport);
  check(box, "box");
  SoGetPrimitiveCountAction count(viewport);
  check(count, "count");
  SoHandleEventAction event(viewport);
  check(event, "event");
  SoRayPickAction pick(viewport);
  pick.setRay(SbVec3f(0, 0, 5), SbVec3f(0, 0, -1));
  check(pick, "pick");
  SoSearchAction search;
  search.setNode(absent.get());
  check(search, "search");
  SoWriteAction write(&out);
  check(write, "write");
  SoGetMatrixAction matrix(viewport);
  check(matrix, "matrix");
}

TEST(Elements, TheLaterNodeIsInForceUntilItsSeparatorEnds) {
  PoOrmelle::init();
  std::vector<const void*> seen;
  const std::function<void(SoState*)> look = [&](SoState* state) { seen.push_back(PoDataMappingElement::get(state)); };
  NodePtr<SoSeparator> scene =
      newScene({new PoLinearDataMapping, newProbe(look), new PoLinearDataMapping, newProbe(look),
                newScene({new PoLinearDataMapping, newProbe(look)}).get(), newProbe(look)});
  traverse(scene.get());
  ASSERT_EQ(seen.size(), 4u);
  EXPECT_NE(seen[0], seen[1]);
  EXPECT_NE(seen[1], seen[2]);
  EXPECT_NE(seen[0], seen[2]);
  EXPECT_EQ(seen[3], seen[1]);
}

TEST(Elements, AMeshIsFoundUnderItsOwnDimensionOnly) {
  PoOrmelle::init();
  // The element never looks into a mesh.
  int place;
  const auto* mesh = reinterpret_cast<const PbMesh3D*>(&place);
  NodePtr<SoCube> node(new SoCube);
  const std::function<void(SoState*)> look = [&](SoState* state) {
    EXPECT_EQ(PoMeshElement::getMesh(state), nullptr);
    PoMeshElement::set(state, node.get(), mesh);
    EXPECT_EQ(PoMeshElement::getMesh3D(state), mesh);
    EXPECT_EQ(PoMeshElement::getMesh2D(state), nullptr);
    EXPECT_EQ(PoMeshElement::getMesh1D(state), nullptr);
    EXPECT_EQ(static_cast<const void*>(PoMeshElement::getMesh(state)), mesh);
  };
  traverse(newScene({newProbe(look)}).get());
}

// The string of an outer node reaches through a node that ignores its own, also in a state that was used before, and a
// cache that depends on it notices when the outer node changes.
TEST(Elements, AnIgnoredLabelStringKeepsTheOneInForce) {
  PoOrmelle::init();
  Found found;
  int traversals = 0;
  const std::function<void(SoState*)> look = [&](SoState* state) {
    found.look(state);
    ++traversals;
  };
  auto* outer = new PoLabelHints;
  outer->addString = "km";
  auto* other = new PoLabelHints;
  other->addString = "miles";
  auto* inner = new PoLabelHints;
  inner->addString.setIgnored(TRUE);
  inner->labelPath = PoLabelHints::PATH_UP;
  NodePtr<SoSeparator> cached = newScene({newProbe(look), new SoCube});
  cached->boundingBoxCaching = SoSeparator::ON;
  NodePtr<SoSeparator> scene = newScene({outer, newScene({other}).get(), newScene({inner, cached.get()}).get()});
  SoGetBoundingBoxAction action(SbViewportRegion(100, 100));
  for (int i = 0; i < 3; ++i) action.apply(scene.get());
  EXPECT_EQ(found.string, "km");
  EXPECT_EQ(found.path, PoLabelHints::PATH_UP);
  EXPECT_EQ(traversals, 1);
  outer->addString = "m";
  action.apply(scene.get());
  EXPECT_EQ(found.string, "m");
  EXPECT_EQ(traversals, 2);
}

TEST(Elements, ACacheFollowsTheNodeOutsideIt) {
  PoOrmelle::init();
  int traversals = 0;
  const std::function<void(SoState*)> look = [&](SoState* state) {
    PoDomainElement::get(state);
    ++traversals;
  };
  auto* domain = new PoDomain;
  NodePtr<SoSeparator> cached = newScene({newProbe(look), new SoCube});
  cached->boundingBoxCaching = SoSeparator::ON;
  NodePtr<SoSeparator> scene = newScene({domain, cached.get()});
  SoGetBoundingBoxAction action(SbViewportRegion(100, 100));
  for (int i = 0; i < 3; ++i) action.apply(scene.get());
  EXPECT_EQ(traversals, 1);
  domain->max.setValue(2, 2, 2);
  for (int i = 0; i < 3; ++i) action.apply(scene.get());
  EXPECT_EQ(traversals, 2);
}

TEST(Elements, ABevelWithAnIgnoredFieldIsNoBevel) {
  PoOrmelle::init();
  Found found;
  const std::function<void(SoState*)> look = [&](SoState* state) { found.look(state); };
  auto* bevel = new PoBevelEdge;
  bevel->radiusFlag = PoBevelEdge::PERCENTAGE_RADIUS;
  bevel->radius = 5;
  NodePtr<SoSeparator> scene = newScene({bevel, newProbe(look)});
  traverse(scene.get());
  EXPECT_TRUE(found.hasBevel);
  EXPECT_EQ(found.radius, 5);
  EXPECT_EQ(found.flag, PoBevelEdge::PERCENTAGE_RADIUS);
  bevel->bevelAngle.setIgnored(TRUE);
  traverse(scene.get());
  EXPECT_FALSE(found.hasBevel);
  EXPECT_EQ(found.radius, 0);
}

TEST(Elements, OutliveTheLibraryAndEndWithTheToolkit) {
  for (int toolkit = 0; toolkit < 3; ++toolkit) {
    SoDB::init();
    {
      SoGetBoundingBoxAction olderAction(SbViewportRegion(100, 100));
      int firstIndex = -1;
      for (int library = 0; library < 3; ++library) {
        PoOrmelle::init();
        ASSERT_NE(PoDomainElement::getClassTypeId(), SoType::badType());
        if (library == 0) firstIndex = PoDomainElement::getClassStackIndex();
        EXPECT_EQ(PoDomainElement::getClassStackIndex(), firstIndex);
        const void* seen = nullptr;
        const std::function<void(SoState*)> look = [&](SoState* state) { seen = PoDomainElement::get(state); };
        {
          NodePtr<SoSeparator> scene = newScene({new PoDomain, newProbe(look)});
          traverse(scene.get());
          EXPECT_NE(seen, nullptr);
          seen = nullptr;
          olderAction.apply(scene.get());
          EXPECT_NE(seen, nullptr);
        }
        PoOrmelle::finish();
        EXPECT_EQ(PoDomainElement::getClassTypeId(), SoType::badType());
        EXPECT_EQ(PoDomain::getClassTypeId(), SoType::badType());
        NodePtr<SoSeparator> plain = newScene({new SoCube});
        traverse(plain.get());
        olderAction.apply(plain.get());
      }
    }
    SoDB::finish();
    EXPECT_EQ(PoDomainElement::getClassStackIndex(), -1);
  }
}

// The state of a traversal that began before the library knows none of its elements.
TEST(Elements, TheLibraryMayStartInsideATraversal) {
  SoDB::init();
  const void* seen = this;
  const std::function<void(SoState*)> look = [&](SoState* state) {
    NodePtr<PoDomain> domain(new PoDomain);
    PoDomainElement::set(state, domain.get(), reinterpret_cast<const PbDomain*>(this));
    seen = PoDomainElement::get(state);
  };
  NodePtr<SoSeparator> scene = newScene({newProbe(look)});
  traverse(scene.get());
  EXPECT_EQ(seen, nullptr);
  traverse(scene.get());
  EXPECT_EQ(seen, this);
}
