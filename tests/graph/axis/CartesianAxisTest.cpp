// What linear, logarithmic and generalized axes put into their parts.

#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbDomain.h>
#include <Ormelle/PbMiscTextAttr.h>
#include <Ormelle/PbNumericDisplayFormat.h>
#include <Ormelle/PoGenAxis.h>
#include <Ormelle/PoLinearAxis.h>
#include <Ormelle/PoLogAxis.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "graph/toolkit/SoAnnoText3.h"
#include "support/NodePtr.h"
#include "support/Soup.h"

namespace {

template <class Node>
std::vector<Node*> nodesOf(SoNode* root) {
  SoSearchAction search;
  search.setType(Node::getClassTypeId());
  search.setInterest(SoSearchAction::ALL);
  if (root) search.apply(root);
  std::vector<Node*> nodes;
  for (int i = 0; i < search.getPaths().getLength(); ++i)
    nodes.push_back(static_cast<Node*>(search.getPaths()[i]->getTail()));
  return nodes;
}

SoNode* partOf(PoCartesianAxis& axis, const char* name) { return axis.getPart(name, FALSE); }

/// The texts of a part, parts of one line joined by blanks.
std::string textsOf(PoCartesianAxis& axis, const char* part) {
  std::string all;
  for (const SoAnnoText3* text : nodesOf<SoAnnoText3>(partOf(axis, part)))
    all += (all.empty() ? "" : " ") + std::string(text->string[0].getString());
  return all;
}

std::vector<SbVec3f> pointsOf(PoCartesianAxis& axis, const char* part) {
  std::vector<SbVec3f> points;
  for (const SoCoordinate3* coordinates : nodesOf<SoCoordinate3>(partOf(axis, part)))
    for (int i = 0; i < coordinates->point.getNum(); ++i) points.push_back(coordinates->point[i]);
  return points;
}

std::vector<float> mainCoords(const PoAxis& axis) {
  const float* coords;
  const int num = axis.getMainGradCoords(coords);
  return {coords, coords + num};
}

std::vector<float> subCoords(const PoAxis& axis) {
  const float* coords;
  const int num = axis.getSubGradCoords(coords);
  return {coords, coords + num};
}

struct Grad {
  PoAxis::Visibility visibility;
  PoAxis::GradPosition position;
  PoAxis::TextPath path;
  SbString fontName, addString;
  float fontSize, distAxis;
  int addStringVisibility;

  explicit Grad(const PoAxis& axis) {
    axis.getGrad(visibility, position, path, fontName, fontSize, distAxis, addStringVisibility, addString);
  }
};

struct Tick {
  PoAxis::Visibility visibility;
  PoAxis::TickPosition position;
  float mainLength, subLength;
  PoAxis::TickSubDef subDef;
  unsigned short numOrPeriod, first, last;

  explicit Tick(const PoAxis& axis) {
    axis.getTick(visibility, position, mainLength, subLength, subDef, numOrPeriod, first, last);
  }
};

template <class Axis, class... Args>
NodePtr<Axis> make(Args... args) {
  return NodePtr<Axis>(new Axis(args...));
}

}  // namespace

TEST(CartesianAxis, WithDefaultsIsAnXAxisWithGradationsBelow) {
  const auto axis = make<PoLinearAxis>();
  EXPECT_EQ(Grad(*axis).position, PoAxis::GRAD_DEPEND) << "the fields, until the first rebuild";
  EXPECT_EQ(axis->gradAddStringVisibility.getValue(), 2);
  axis->rebuild();
  const Grad grad(*axis);
  EXPECT_EQ(grad.visibility, PoAxis::VISIBILITY_ON);
  EXPECT_EQ(grad.position, PoAxis::GRAD_BELOW);
  EXPECT_EQ(grad.path, PoAxis::PATH_RIGHT);
  EXPECT_EQ(grad.fontName, "defaultFont");
  EXPECT_FLOAT_EQ(grad.fontSize, 0.04F);
  EXPECT_FLOAT_EQ(grad.distAxis, 0.025F + 0.65F * 0.04F);
  EXPECT_EQ(axis->gradFontSize.getValue(), 0) << "a rebuild writes nothing back";
  EXPECT_EQ(axis->gradPosition.getValue(), PoAxis::GRAD_DEPEND);
  EXPECT_EQ(axis->getReverseFlag(), PoAxis::AXIS_NO_REVERSE);
  EXPECT_EQ(axis->getStep(), 0.2F);

  EXPECT_EQ(textsOf(*axis, "mainGradText"), "0.0 0.2 0.4 0.6 0.8 1.0");
  EXPECT_EQ(mainCoords(*axis).size(), 6U);
  EXPECT_TRUE(subCoords(*axis).empty());
  EXPECT_EQ(pointsOf(*axis, "body"), (std::vector{SbVec3f(0, 0, 0), SbVec3f(1, 0, 0)}));
  EXPECT_EQ(pointsOf(*axis, "arrow"),
            (std::vector{SbVec3f(1, 0.015F, 0), SbVec3f(1, -0.015F, 0), SbVec3f(1.05F, 0, 0)}));
  EXPECT_TRUE(pointsOf(*axis, "mainGradGrid").empty());
  EXPECT_TRUE(textsOf(*axis, "title").empty());
  ASSERT_EQ(nodesOf<SoLineSet>(partOf(*axis, "mainGradTick")).size(), 1U) << "all ticks are one shape";
  for (const SbVec3f& point : pointsOf(*axis, "mainGradTick")) EXPECT_TRUE(point[1] == 0 || point[1] == -0.025F);
  auto* font = static_cast<SoFont*>(partOf(*axis, "mainGradTextApp.font"));
  ASSERT_NE(font, nullptr);
  EXPECT_FLOAT_EQ(font->size.getValue(), 0.04F);
  EXPECT_TRUE(nodesOf<SoFont>(partOf(*axis, "mainGradText")).empty()) << "the texts take it from there";
}

TEST(CartesianAxis, SizesAreFractionsOfTheReferenceLengthOnce) {
  PbDomain domain(0, 0, 0, 50, 4, 1, PbDomain::BOX_AS_GIVEN);
  const auto axis = make<PoLinearAxis>(SbVec3f(0, 0, 0), 50.F, PoCartesianAxis::XY, 5.F);
  axis->setDomain(&domain);
  axis->gridVisibility = PoAxis::VISIBILITY_ON;
  axis->gridLengthGradOtherSide = 4;
  axis->gridLengthGradSide = 0.5F;
  axis->tickPosition = PoAxis::TICK_ACROSS_AXIS;
  axis->rebuild();
  const Tick tick(*axis);
  EXPECT_EQ(tick.mainLength, 0.025F);
  EXPECT_EQ(tick.subLength, 0.0125F);
  for (const SbVec3f& point : pointsOf(*axis, "mainGradTick"))
    EXPECT_NEAR(std::abs(point[1]), 0.5F * 0.025F * 50, 1e-5);
  // In axis coordinates; the transform makes them those of y again.
  float low = 0, high = 0;
  for (const SbVec3f& point : pointsOf(*axis, "mainGradGrid")) {
    low = std::min(low, point[1]);
    high = std::max(high, point[1]);
  }
  EXPECT_FLOAT_EQ(high * 4 / 50, 4);
  EXPECT_FLOAT_EQ(low * 4 / 50, -0.5F);
  EXPECT_FLOAT_EQ(static_cast<SoFont*>(partOf(*axis, "mainGradTextApp.font"))->size.getValue(), 0.04F * 50);
}

TEST(CartesianAxis, FramesAreRightHandedAndOffsetInTheSecondDirection) {
  PbDomain domain(0, 0, 0, 2, 8, 32, PbDomain::BOX_AS_GIVEN);
  const float sides[] = {2, 8, 32};
  const struct {
    PoCartesianAxis::Type type;
    int direction, offset;
    float sign;
  } rows[] = {{PoCartesianAxis::XY, 0, 1, 1}, {PoCartesianAxis::XZ, 0, 2, 1}, {PoCartesianAxis::YX, 1, 0, -1},
              {PoCartesianAxis::YZ, 1, 2, 1}, {PoCartesianAxis::ZX, 2, 0, 1}, {PoCartesianAxis::ZY, 2, 1, 1}};
  for (const auto& row : rows) {
    const SbVec3f start(3, 5, 7);
    const auto axis = make<PoLinearAxis>(start, 11.F, row.type, 0.F);
    axis->setDomain(&domain);
    axis->rebuild();
    const SbMatrix matrix = static_cast<SoMatrixTransform*>(partOf(*axis, "transform"))->matrix.getValue();
    SbVec3f onAxis, across;
    matrix.multVecMatrix(SbVec3f(9, 0, 0), onAxis);
    SbVec3f expected = start;
    expected[row.direction] = 9;
    EXPECT_EQ(onAxis, expected) << row.type;
    matrix.multVecMatrix(SbVec3f(9, 1, 0), across);
    expected[row.offset] += row.sign * sides[row.offset] / sides[row.direction];
    EXPECT_TRUE(across.equals(expected, 1e-5F)) << row.type;
    EXPECT_GT(matrix.det3(), 0) << row.type;
  }
}

TEST(CartesianAxis, FarFromZeroCountsFromItsStart) {
  const float start = 1.7e9F, end = 1.7e9F + 86400;
  PbDomain domain(start, 0, end, 1, PbDomain::BOX_AS_GIVEN);
  const auto axis = make<PoLinearAxis>(SbVec3f(start, 0, 0), end, PoCartesianAxis::XY, 0.F);
  axis->setDomain(&domain);
  axis->titleVisibility = PoAxis::VISIBILITY_ON;
  axis->titleString = "Title";
  axis->rebuild();
  const SbMatrix matrix = static_cast<SoMatrixTransform*>(partOf(*axis, "transform"))->matrix.getValue();
  const auto isOnAxis = [&](const SbVec3f& point) {
    SbVec3f inScene;
    matrix.multVecMatrix(point, inScene);
    return std::abs(point[0]) < 2 * 86400 && inScene[0] >= start && inScene[0] <= end + 86400;
  };
  for (const char* part : {"body", "arrow", "mainGradTick"})
    for (const SbVec3f& point : pointsOf(*axis, part)) EXPECT_TRUE(isOnAxis(point)) << part;
  for (const char* part : {"mainGradText", "title"})
    for (const SoMatrixTransform* place : nodesOf<SoMatrixTransform>(partOf(*axis, part)))
      EXPECT_TRUE(isOnAxis(SbVec3f(place->matrix.getValue()[3][0], 0, 0))) << part;
  EXPECT_EQ(mainCoords(*axis).front(), start) << "answers are coordinates all the same";
}

TEST(CartesianAxis, PlanesResolveAsTheyShould) {
  for (int type = PoCartesianAxis::XY; type <= PoCartesianAxis::ZY; ++type) {
    const auto axis = make<PoLinearAxis>(SbVec3f(0, 0, 0), 1.F, static_cast<PoCartesianAxis::Type>(type), 0.F);
    axis->rebuild();
    const bool isXY = type == PoCartesianAxis::XY;
    EXPECT_EQ(Grad(*axis).position, isXY ? PoAxis::GRAD_BELOW : PoAxis::GRAD_ABOVE);
    EXPECT_EQ(Grad(*axis).path, isXY ? PoAxis::PATH_RIGHT : PoAxis::PATH_DOWN);
    PoAxis::Visibility visibility;
    PoAxis::TitlePosition position;
    PoAxis::TextPath path;
    SbString font, string;
    float size, distance;
    axis->getTitle(visibility, position, path, font, size, distance, string);
    EXPECT_EQ(visibility, PoAxis::VISIBILITY_OFF);
    EXPECT_EQ(position, isXY ? PoAxis::TITLE_MIDDLE : PoAxis::TITLE_END);
  }
}

TEST(CartesianAxis, ReversedSwapsUpAndDownOnly) {
  const auto directionOfTexts = [](PoAxis::TextPath path, PoAxis::AxisReverse reverse) {
    const auto axis = make<PoLinearAxis>();
    axis->gradPath = path;
    axis->reverseFlag = reverse;
    axis->rebuild();
    const auto places = nodesOf<SoMatrixTransform>(partOf(*axis, "mainGradText"));
    const SbMatrix matrix = places.at(0)->matrix.getValue();
    return SbVec3f(matrix[0][0], matrix[0][1], matrix[0][2]);
  };
  EXPECT_EQ(directionOfTexts(PoAxis::PATH_UP, PoAxis::AXIS_NO_REVERSE), SbVec3f(0, 1, 0));
  EXPECT_EQ(directionOfTexts(PoAxis::PATH_UP, PoAxis::AXIS_REVERSE), SbVec3f(0, -1, 0));
  EXPECT_EQ(directionOfTexts(PoAxis::PATH_DOWN, PoAxis::AXIS_REVERSE), SbVec3f(0, 1, 0));
  EXPECT_EQ(directionOfTexts(PoAxis::PATH_LEFT, PoAxis::AXIS_REVERSE), SbVec3f(-1, 0, 0));
}

TEST(CartesianAxis, WithoutALengthLeavesWhatThereWas) {
  const auto axis = make<PoLinearAxis>();
  axis->rebuild();
  const std::string before = textsOf(*axis, "mainGradText");
  for (const float end : {0.F, NAN, INFINITY, -INFINITY}) {
    axis->end = end;
    axis->rebuild();
    EXPECT_EQ(textsOf(*axis, "mainGradText"), before) << end;
    EXPECT_FALSE(axis->isModified());
  }
  axis->end = 1;
  axis->start = SbVec3f(0, NAN, 0);
  axis->rebuild();
  EXPECT_EQ(textsOf(*axis, "mainGradText"), before);
}

TEST(CartesianAxis, OfAnySizesEmitsFiniteGeometryOnly) {
  const float wild[] = {NAN, INFINITY, -INFINITY, 1e-45F, -1e38F, 3e38F, 0, -5};
  int count = 0;
  for (const float value : wild) {
    for (const auto& kind : {0, 1, 2}) {
      NodePtr<PoCartesianAxis> axis(kind == 0   ? static_cast<PoCartesianAxis*>(new PoLinearAxis)
                                    : kind == 1 ? static_cast<PoCartesianAxis*>(new PoLogAxis)
                                                : new PoGenAxis);
      for (SoSFFloat* field : {&axis->gradFontSize, &axis->gradDistAxis, &axis->marginStart, &axis->marginEnd,
                               &axis->titleFontSize, &axis->titleDistAxis, &axis->gridLengthGradSide,
                               &axis->arrowHeight, &axis->arrowLength, &axis->tickMainLength, &axis->tickSubLength})
        *field = value;
      axis->end = count % 2 ? 1.F : value;
      axis->titleVisibility = PoAxis::VISIBILITY_ON;
      axis->titleString = "Title";
      axis->gridVisibility = PoAxis::VISIBILITY_ON;
      axis->gradPosition = 17;
      axis->type = -3;
      if (kind == 0 && std::abs(value) > 1) static_cast<PoLinearAxis&>(*axis).step = value;
      EXPECT_TRUE(Soup::of(axis.get()).isFinite()) << value << " kind " << kind;
      ++count;
    }
  }
}

TEST(LinearAxis, WritesACommonPowerOfTenOnce) {
  const auto axis = make<PoLinearAxis>(SbVec3f(0, 0, 0), 40000.F, PoCartesianAxis::XY, 10000.F);
  axis->setGradLegibility(PoAxis::LEGIBILITY_OFF);
  PbDomain domain(0, 0, 40000, 40000, PbDomain::BOX_AS_GIVEN);
  axis->setDomain(&domain);
  axis->rebuild();
  EXPECT_EQ(textsOf(*axis, "mainGradText"), "0 10 20 30 40");
  EXPECT_EQ(textsOf(*axis, "multFactor"), "x 10 3");
  const float endX = nodesOf<SoMatrixTransform>(partOf(*axis, "multFactor"))[0]->matrix.getValue()[3][0];
  EXPECT_GT(endX, 42000) << "beyond the arrow";
  PoLinearAxis::MultFactorPosition position;
  float distance;
  axis->getMultFactor(position, distance);
  EXPECT_NEAR(distance, 0.05F + 0.65F * 0.04F, 1e-5);

  axis->multFactorPosition = PoLinearAxis::MULT_FACTOR_START;
  axis->rebuild();
  EXPECT_LT(nodesOf<SoMatrixTransform>(partOf(*axis, "multFactor"))[0]->matrix.getValue()[3][0], 0);
  axis->multFactorPosition = PoLinearAxis::MULT_FACTOR_EXTR;
  axis->rebuild();
  EXPECT_EQ(textsOf(*axis, "multFactor"), "x 10 3 x 10 3");
  axis->multFactorPosition = PoLinearAxis::MULT_FACTOR_GRAD;
  axis->gradAddString = " m";
  axis->gradAddStringVisibility = TRUE;
  axis->rebuild();
  EXPECT_EQ(textsOf(*axis, "mainGradText"), "0E3 m 10E3 m 20E3 m 30E3 m 40E3 m");
  EXPECT_EQ(textsOf(*axis, "multFactor"), "");
  axis->gradVisibility = PoAxis::VISIBILITY_OFF;
  axis->multFactorPosition = PoLinearAxis::MULT_FACTOR_END;
  axis->rebuild();
  EXPECT_EQ(textsOf(*axis, "multFactor") + textsOf(*axis, "mainGradText"), "");
  EXPECT_EQ(Grad(*axis).fontSize, 0);
}

TEST(LinearAxis, FarFromZeroPrintsDistinctTexts) {
  const struct {
    float start, end;
  } rows[] = {{1.7e9F, 1.7e9F + 86400}, {4500000, 4500100}, {6378137, 6378140}, {1, 1.00001F}, {1e30F, 1.00001e30F}};
  for (const auto& row : rows) {
    PbDomain domain(row.start, 0, row.end, 1, PbDomain::BOX_AS_GIVEN);
    const auto axis = make<PoLinearAxis>(SbVec3f(row.start, 0, 0), row.end, PoCartesianAxis::XY, 0.F);
    axis->setDomain(&domain);
    axis->rebuild();
    const auto texts = nodesOf<SoAnnoText3>(partOf(*axis, "mainGradText"));
    ASSERT_GE(texts.size(), 2U) << row.start;
    for (size_t i = 1; i < texts.size(); ++i)
      EXPECT_NE(texts[i]->string[0], texts[i - 1]->string[0]) << row.start << " text " << i;
  }
}

TEST(LinearAxis, LastPassIsOffWhereSomethingIsGiven) {
  // Ten times shorter than the domain: the texts of the formulas are too small to be read.
  const auto sizeOf = [](auto change) {
    PbDomain domain(0, 0, 100, 100, PbDomain::BOX_AS_GIVEN);
    const auto axis = make<PoLinearAxis>(SbVec3f(0, 0, 0), 1.F, PoCartesianAxis::XY, 0.F);
    axis->setDomain(&domain);
    change(*axis);
    axis->rebuild();
    return nodesOf<SoAnnoText3>(partOf(*axis, "mainGradText")).size();
  };
  PbNumericDisplayFormat format(PbNumericDisplayFormat::FLOAT_FORMAT, 0, 3), automatic;
  EXPECT_LT(sizeOf([](PoLinearAxis&) {}), 6U);
  EXPECT_LT(sizeOf([&](PoLinearAxis& axis) { axis.setFormat(&automatic); }), 6U);
  EXPECT_EQ(sizeOf([](PoLinearAxis& axis) { axis.setGradLegibility(PoAxis::LEGIBILITY_OFF); }), 6U);
  EXPECT_EQ(sizeOf([](PoLinearAxis& axis) { axis.step = 0.2F; }), 6U);
  EXPECT_EQ(sizeOf([&](PoLinearAxis& axis) { axis.setFormat(&format); }), 6U);
  EXPECT_EQ(sizeOf([](PoLinearAxis& axis) { axis.gradFontSize = 0.03F; }), 6U);
  EXPECT_EQ(sizeOf([](PoLinearAxis& axis) { axis.gradDistAxis = 0.1F; }), 6U);
  EXPECT_LT(sizeOf([](PoLinearAxis& axis) {
              axis.gradFontSize = 0.03F;
              axis.setGradLegibility(PoAxis::LEGIBILITY_ON);
            }),
            6U);
}

TEST(LogAxis, GradatesPowersAndDigits) {
  PbDomain domain(0, 0, 3, 3, PbDomain::BOX_AS_GIVEN);
  const auto axis = make<PoLogAxis>(SbVec3f(0, 0, 0), 3.F, PoCartesianAxis::XY, PoLogAxis::DECADE_LIST_AUTO,
                                    static_cast<const unsigned short*>(nullptr), static_cast<short>(0));
  axis->setDomain(&domain);
  EXPECT_EQ(axis->decadeList.getNum(), 0);
  axis->rebuild();
  EXPECT_EQ(mainCoords(*axis), (std::vector{0.F, 1.F, 2.F, 3.F}));
  EXPECT_EQ(subCoords(*axis).size(), 12U);
  EXPECT_EQ(textsOf(*axis, "mainGradText"), "10 0 10 1 10 2 10 3");
  EXPECT_EQ(textsOf(*axis, "decadeText"), "");
  unsigned short num, list[PoLogAxis::MAX_DECADE_LIST];
  PoLogAxis::TenPowGradRep powerRep;
  PoLogAxis::DecadeRep digitRep;
  SbString font;
  float size;
  axis->getLogGrad(num, list, powerRep, digitRep, font, size);
  EXPECT_EQ(num, 4);
  EXPECT_EQ(list[3], 8);

  axis->decadeRep = PoLogAxis::DECADE_DIGIT;
  axis->tenPowerRep = PoLogAxis::TEN_POWER_AUTO;
  axis->rebuild();
  EXPECT_EQ(textsOf(*axis, "mainGradText"), "1 10 100 1000");
  EXPECT_EQ(textsOf(*axis, "decadeText"), "2 4 6 8 2 4 6 8 2 4 6 8");
  const float digitY = nodesOf<SoMatrixTransform>(partOf(*axis, "decadeText"))[0]->matrix.getValue()[3][1];
  const float powerY = nodesOf<SoMatrixTransform>(partOf(*axis, "mainGradText"))[0]->matrix.getValue()[3][1];
  EXPECT_LT(powerY, digitY) << "powers stand beyond the digits";
  axis->getLogGrad(num, list, powerRep, digitRep, font, size);
  EXPECT_EQ(powerRep, PoLogAxis::TEN_POWER_DECIMAL);
  EXPECT_NEAR(digitY, -(0.65F * size + Tick(*axis).subLength) * 3, 1e-5);

  axis->decadeRep = PoLogAxis::DECADE_AS_TEN_POWER;
  axis->decadeListDef = PoLogAxis::DECADE_LIST_NON_AUTO;
  const unsigned short five = 5;
  axis->decadeList.setValues(0, 1, &five);
  axis->rebuild();
  EXPECT_EQ(textsOf(*axis, "decadeText"), "5 50 500");
  EXPECT_EQ(Tick(*axis).subLength, Tick(*axis).mainLength) << "what is written alike is ticked alike";
  EXPECT_EQ(nodesOf<SoMatrixTransform>(partOf(*axis, "decadeText"))[0]->matrix.getValue()[3][1],
            nodesOf<SoMatrixTransform>(partOf(*axis, "mainGradText"))[0]->matrix.getValue()[3][1]);
}

TEST(LogAxis, WithinADecadeIsWrittenByTheLastPass) {
  const auto rebuilt = [](float from, float to, PoAxis::GradLegibility legibility, auto change) {
    PbDomain domain(from, 0, to, 1, PbDomain::BOX_AS_GIVEN);
    const auto axis = make<PoLogAxis>();
    axis->start = SbVec3f(from, 0, 0);
    axis->end = to;
    axis->setDomain(&domain);
    axis->setGradLegibility(legibility);
    change(*axis);
    axis->rebuild();
    return textsOf(*axis, "decadeText") + "|" + textsOf(*axis, "multFactor");
  };
  const auto none = [](PoLogAxis&) {};
  EXPECT_EQ(rebuilt(1.2F, 1.8F, PoAxis::LEGIBILITY_OFF, none), "|x 10 1");
  EXPECT_EQ(rebuilt(1.2F, 1.8F, PoAxis::LEGIBILITY_DEPEND, none), "20 30 40 50 60|");
  EXPECT_EQ(rebuilt(6.2F, 6.8F, PoAxis::LEGIBILITY_DEPEND, none), "2 3 4 5 6|x 10 6");
  EXPECT_EQ(rebuilt(0.31F, 0.36F, PoAxis::LEGIBILITY_DEPEND, none), "2.07 2.10 2.13 2.16 2.19 2.22 2.25 2.28|");
  EXPECT_EQ(
      rebuilt(1.2F, 1.8F, PoAxis::LEGIBILITY_DEPEND, [](PoLogAxis& axis) { axis.decadeRep = PoLogAxis::DECADE_NONE; }),
      "|x 10 1")
      << "no digits were asked for";
}

TEST(GenAxis, SpreadsItsTextsBetweenTheMargins) {
  const char* list[] = {"a", "bb", "c"};
  const auto axis = make<PoGenAxis>(SbVec3f(0, 0, 0), 10.F, PoCartesianAxis::XY, list, static_cast<short>(3));
  axis->marginStart = 0.1F;
  axis->marginEnd = 0.3F;
  axis->gradAddString = "!";
  axis->gradAddStringVisibility = TRUE;
  axis->rebuild();
  EXPECT_EQ(mainCoords(*axis), (std::vector{1.F, 4.F, 7.F}));
  EXPECT_EQ(textsOf(*axis, "mainGradText"), "a! bb! c!");
  axis->gradList.setNum(1);
  axis->rebuild();
  EXPECT_EQ(mainCoords(*axis), (std::vector{1.F}));
  axis->gradList.setNum(0);
  axis->rebuild();
  EXPECT_TRUE(mainCoords(*axis).empty());
  EXPECT_EQ(textsOf(*axis, "mainGradText"), "");
  EXPECT_EQ(pointsOf(*axis, "body").size(), 2U);
  EXPECT_EQ(make<PoGenAxis>()->gradList.getNum(), 1);
}

TEST(AxisTitle, StandsBeyondWhatWasBuiltBefore) {
  for (const auto position : {PoAxis::TITLE_MIDDLE, PoAxis::TITLE_END}) {
    const auto axis = make<PoLinearAxis>();
    axis->titleVisibility = PoAxis::VISIBILITY_ON;
    axis->titlePosition = position;
    axis->titleString = "A title";
    axis->rebuild();
    const auto boxOf = [&](const char* separator) {
      SoGetBoundingBoxAction action(SbViewportRegion(100, 100));
      action.apply(static_cast<SoSFNode*>(axis->getField(separator))->getValue());
      return action.getBoundingBox();
    };
    const SbBox3f title = boxOf("titleSep");
    ASSERT_FALSE(title.isEmpty());
    for (const char* other : {"mainGradTextSep", "arrowSep", "mainGradTickSep", "bodySep"})
      EXPECT_FALSE(title.intersect(boxOf(other))) << other << " at " << position;
    EXPECT_NEAR(static_cast<SoFont*>(partOf(*axis, "titleApp.font"))->size.getValue(), 0.055F, 1e-6);
  }
}
