#include <Inventor/SbBox2f.h>
#include <Inventor/SbBox3f.h>
#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGetMatrixAction.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoTransform.h>
#include <Ormelle/PbDomain.h>
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>

#include "Listener.h"
#include "support/NodePtr.h"

namespace {

SbBox3f boxOf(const PbDomain& domain) {
  SbBox3f box;
  domain.getDomain(box);
  return box;
}

SbVec3f transformed(const SbMatrix& matrix, const SbVec3f& point) {
  SbVec3f result;
  matrix.multVecMatrix(point, result);
  return result;
}

TEST(PbDomain, MakesTheBoxSquareAboutItsCentre) {
  EXPECT_EQ(boxOf(PbDomain(0, 0, 10, 5, PbDomain::BOX_LARGEST_SIDE)), SbBox3f(0, -2.5f, 0, 10, 7.5f, 1));
  EXPECT_EQ(boxOf(PbDomain(0, 0, 10, 5, PbDomain::BOX_SMALLEST_SIDE)), SbBox3f(2.5f, 0, 0, 7.5f, 5, 1));
  const SbBox3f brick(0, 0, -1, 10, 4, 1);
  EXPECT_EQ(boxOf(PbDomain(brick, PbDomain::BOX_AS_GIVEN)), brick);
  EXPECT_EQ(boxOf(PbDomain(brick, PbDomain::BOX_LARGEST_SIDE)), SbBox3f(0, -3, -5, 10, 7, 5));
  EXPECT_EQ(boxOf(PbDomain(brick, PbDomain::BOX_SMALLEST_SIDE)), SbBox3f(4, 1, -1, 6, 3, 1));
  PbDomain flat(brick, PbDomain::BOX_AS_GIVEN);
  flat.setDomain(SbBox2f(1, 2, 3, 5), PbDomain::BOX_AS_GIVEN);
  EXPECT_EQ(boxOf(flat), SbBox3f(1, 2, 0, 3, 5, 1));
  EXPECT_EQ(flat.getDeltaZ(), 1);
}

TEST(PbDomain, IgnoresWhatIsNoBox) {
  const float nan = std::nanf("");
  PbDomain domain(0, 0, 1000, 1, PbDomain::BOX_AS_GIVEN);
  const PbDomain before(domain);
  NodePtr<Listener> kit(new Listener);
  domain.addConnection(kit.get());
  domain.setDomain(1, 0, 1, 5, PbDomain::BOX_AS_GIVEN);
  domain.setDomain(0, 5, 1, 0, PbDomain::BOX_LARGEST_SIDE);
  domain.setDomain(nan, 0, 1, 1, PbDomain::BOX_AS_GIVEN);
  domain.setDomain(0, 0, 0, 1, 1, nan, PbDomain::BOX_AS_GIVEN);
  domain.setDomain(0, 0, HUGE_VALF, 1, PbDomain::BOX_AS_GIVEN);
  domain.setDomain(-FLT_MAX, 0, FLT_MAX, 1, PbDomain::BOX_AS_GIVEN);
  domain.setDomain(1e8f, 0, 2e8f, 1, PbDomain::BOX_SMALLEST_SIDE);  // a side of 1 is lost so far out
  domain.setDomain(SbBox2f(), PbDomain::BOX_AS_GIVEN);
  domain.setDomain(SbBox3f(), PbDomain::BOX_AS_GIVEN);
  domain.setDomain(0, 0, 1, 1, static_cast<PbDomain::BoundingBoxType>(3));
  EXPECT_TRUE(domain == before);
  EXPECT_TRUE(kit->changes.empty());
  domain.removeConnection(kit.get());
}

// Whatever the type, the transform brings the box to where the type says, as a matrix and as either node.
TEST(PbDomain, TransformsTheBoxByItsType) {
  struct Case {
    PbDomain::TransformType type;
    SbVec3f min, max, newMin, newMax;
  };
  const SbVec3f min(-2, 10, 3), max(2, 12, 4);
  const Case cases[] = {
      {PbDomain::TRANSFORM_01, min, max, SbVec3f(0, 0, 0), SbVec3f(1, 1, 1)},
      {PbDomain::SCALE_X_FIXED, min, max, SbVec3f(-2, 20, 12), SbVec3f(2, 24, 16)},
      {PbDomain::SCALE_Y_FIXED, min, max, SbVec3f(-1, 10, 6), SbVec3f(1, 12, 8)},
      {PbDomain::SCALE_Z_FIXED, min, max, SbVec3f(-.5f, 5, 3), SbVec3f(.5f, 6, 4)},
      {PbDomain::SCALE_MAX_XYZ_FIXED, min, max, SbVec3f(-2, 20, 12), SbVec3f(2, 24, 16)},
      {PbDomain::SCALE_MAX_XYZ_FIXED, SbVec3f(0, 0, 0), SbVec3f(2, 8, 4), SbVec3f(0, 0, 0), SbVec3f(8, 8, 8)},
      // With two longest sides neither is strictly so, and Z, the short one, stays.
      {PbDomain::SCALE_MAX_XYZ_FIXED, SbVec3f(0, 0, 0), SbVec3f(4, 4, 2), SbVec3f(0, 0, 0), SbVec3f(2, 2, 2)},
      {static_cast<PbDomain::TransformType>(7), min, max, min, max},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.type);
    PbDomain domain(SbBox3f(c.min, c.max), PbDomain::BOX_AS_GIVEN);
    domain.setTransformType(c.type);
    NodePtr<SoNode> transform(domain.getTransform()), matrixTransform(domain.getMatrixTransform());
    EXPECT_EQ(transform->getRefCount(), 1);
    EXPECT_EQ(matrixTransform->getRefCount(), 1);
    SoGetMatrixAction action(SbViewportRegion(10, 10));
    std::vector<SbMatrix> matrices{domain.getMatrix()};
    for (SoNode* node : {transform.get(), matrixTransform.get()}) {
      action.apply(node);
      matrices.push_back(action.getMatrix());
    }
    for (const SbMatrix& matrix : matrices) {
      EXPECT_TRUE(transformed(matrix, c.min).equals(c.newMin, 1e-5f));
      EXPECT_TRUE(transformed(matrix, c.max).equals(c.newMax, 1e-5f));
    }
  }
}

TEST(PbDomain, KeepsTheTransformFiniteForExtremeSides) {
  PbDomain domain(SbBox3f(0, 0, 0, 1e38f, 1e-38f, 1e-44f), PbDomain::BOX_AS_GIVEN);
  for (int type = PbDomain::TRANSFORM_01; type <= PbDomain::SCALE_MAX_XYZ_FIXED; ++type) {
    domain.setTransformType(static_cast<PbDomain::TransformType>(type));
    const SbMatrix matrix = domain.getMatrix();
    for (int i = 0; i < 3; ++i) {
      EXPECT_TRUE(std::isfinite(matrix[i][i]));
      EXPECT_GT(matrix[i][i], 0);
    }
  }
}

TEST(PbDomain, TellsWhatChanged) {
  EXPECT_TRUE(PbDomain().isHomogeneous());
  PbDomain domain;
  NodePtr<Listener> kit(new Listener);
  domain.addConnection(kit.get());
  domain.setDomain(0, 0, 1000, 1, PbDomain::BOX_AS_GIVEN);
  domain.setTransformType(PbDomain::TRANSFORM_01);
  EXPECT_FALSE(domain.isHomogeneous());

  PbDomain source(0, 0, 2, 2, PbDomain::BOX_AS_GIVEN);
  EXPECT_TRUE(source != domain);
  kit->react = [&](PbBase*) { EXPECT_TRUE(domain == source); };  // already copied when it tells
  domain = source;
  EXPECT_EQ(kit->changes, (std::vector<PbBase::ChangeType>{PbBase::OBJECT_CHANGE, PbBase::DOMAIN_TRANSFORM_TYPE_CHANGE,
                                                           PbBase::OBJECT_CHANGE}));
  domain.removeConnection(kit.get());
}

}  // namespace
