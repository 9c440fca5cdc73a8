// From the fields of a node to the data object it owns.
#include <Inventor/engines/SoCalculator.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Ormelle/PbDateFormatMapping.h>
#include <Ormelle/PbDomain.h>
#include <Ormelle/PbIsovaluesList.h>
#include <Ormelle/PbLinearDataMapping.h>
#include <Ormelle/PbNonLinearDataMapping2.h>
#include <Ormelle/PoDataMappingElement.h>
#include <Ormelle/PoDateFormatMapping.h>
#include <Ormelle/PoDateFormatMappingElement.h>
#include <Ormelle/PoDebugError.h>
#include <Ormelle/PoDomain.h>
#include <Ormelle/PoDomainElement.h>
#include <Ormelle/PoIsovaluesList.h>
#include <Ormelle/PoIsovaluesListElement.h>
#include <Ormelle/PoLinearDataMapping.h>
#include <Ormelle/PoMiscTextAttr.h>
#include <Ormelle/PoMiscTextAttrElement.h>
#include <Ormelle/PoNonLinearDataMapping.h>
#include <Ormelle/PoNonLinearDataMapping2.h>
#include <Ormelle/PoNumericDisplayFormat.h>
#include <Ormelle/PoNumericDisplayFormatElement.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "NodesTest.h"

namespace {

const float kNaN = std::numeric_limits<float>::quiet_NaN();

// A scene of one node, and what that puts in its element.
template <class Element, class Node>
struct Place {
  Place() : scene(newScene({node.get(), newProbe(look)})) { run(); }
  void run() { traverse(scene.get()); }

  NodePtr<Node> node{new Node};
  decltype(Element::get(nullptr)) object = nullptr;
  std::function<void(SoState*)> look = [this](SoState* state) { object = Element::get(state); };
  NodePtr<SoSeparator> scene;
};

template <class Node>
using MappingPlace = Place<PoDataMappingElement, Node>;

float redOf(const PbDataMapping* mapping, float value) {
  const SbColor* color = mapping->getRGBColor(value);
  return color ? (*color)[0] : -1;
}

}  // namespace

class FieldUpdate : public ::testing::Test {
 protected:
  FieldUpdate() {
    PoOrmelle::init();
    CountingKit::initClass();
  }
};

TEST_F(FieldUpdate, EditsCostOneUpdateAtTheNextTraversal) {
  MappingPlace<PoLinearDataMapping> place;
  NodePtr<CountingKit> kit(new CountingKit);
  kit->connect(place.object);
  const unsigned id = place.object->getId();
  place.node->value2 = 10;
  place.node->color2.setValue(0, 0, 0);
  place.node->minThresholdEnabled = TRUE;
  place.node->minThreshold = -1;
  EXPECT_EQ(kit->changes, 0);
  EXPECT_EQ(redOf(place.object, 1), 1);
  place.run();
  EXPECT_EQ(kit->changes, 1);
  EXPECT_NE(place.object->getId(), id);
  EXPECT_EQ(redOf(place.object, 1), 0);
  EXPECT_EQ(place.object->getRGBColor(-1), nullptr);
  place.run();
  EXPECT_EQ(kit->changes, 1);
}

TEST_F(FieldUpdate, ValuesThatAreReadOrComeOverAConnectionCount) {
  MappingPlace<PoLinearDataMapping> place;
  ASSERT_TRUE(place.node->set("value2 4 color2 0.5 0 0"));
  place.run();
  EXPECT_EQ(redOf(place.object, 4), 0.5f);

  NodePtr<SoNode> source(new PoLinearDataMapping);
  auto* value1 = static_cast<SoSFFloat*>(source->getField("value1"));
  place.node->value2.connectFrom(value1);
  *value1 = 8;
  place.run();
  EXPECT_EQ(redOf(place.object, 8), 0.5f);
  *value1 = 16;
  *value1 = 2;
  place.run();
  EXPECT_EQ(redOf(place.object, 2), 0.5f);
  place.node->value2.disconnect();

  auto* calculator = new SoCalculator;
  calculator->a = 1;
  calculator->expression = "oa = a * 2";
  place.node->value2.connectFrom(&calculator->oa);
  calculator->a = 3;
  place.run();
  EXPECT_EQ(redOf(place.object, 6), 0.5f);
  calculator->a = 4;
  place.run();
  EXPECT_EQ(redOf(place.object, 8), 0.5f);
}

TEST_F(FieldUpdate, ADeletedNodeTellsTheKitsOfItsObject) {
  NodePtr<CountingKit> kit(new CountingKit);
  {
    MappingPlace<PoNonLinearDataMapping2> place;
    kit->connect(place.object);
  }
  EXPECT_EQ(kit->deletions, 1);
  {
    Place<PoDomainElement, PoDomain> place;
    kit->connect(place.object);
  }
  EXPECT_EQ(kit->deletions, 2);
}

TEST_F(FieldUpdate, ACopyHasItsOwnObject) {
  MappingPlace<PoLinearDataMapping> place;
  place.node->color2.setValue(0.5f, 0, 0);
  const PbDataMapping* copied = nullptr;
  const std::function<void(SoState*)> look = [&](SoState* state) { copied = PoDataMappingElement::get(state); };
  NodePtr<PoLinearDataMapping> copy(static_cast<PoLinearDataMapping*>(place.node->copy()));
  NodePtr<SoSeparator> scene = newScene({copy.get(), newProbe(look)});
  traverse(scene.get());
  EXPECT_NE(copied, place.object);
  EXPECT_EQ(redOf(copied, 1), 0.5f);
  copy->color2.setValue(0.25f, 0, 0);
  traverse(scene.get());
  place.run();
  EXPECT_EQ(redOf(copied, 1), 0.25f);
  EXPECT_EQ(redOf(place.object, 1), 0.5f);
}

TEST_F(FieldUpdate, FunctionsTakeEffectAtOnceAndAreCopied) {
  static const SbColor kRed(1, 0, 0);
  MappingPlace<PoNonLinearDataMapping> place;
  NodePtr<CountingKit> kit(new CountingKit);
  kit->connect(place.object);
  EXPECT_EQ(redOf(place.object, 0.25f), 0.25f);
  float factor = 0.5f;
  place.node->setRGBFunction([](float) { return &kRed; });
  EXPECT_EQ(redOf(place.object, 0.25f), 1);
  place.node->setTransparencyFunction([](void* data, float value) { return *static_cast<float*>(data) * value; },
                                      &factor);
  EXPECT_EQ(kit->changes, 2);
  float transparency;
  place.object->getRGBColor(1, transparency);
  EXPECT_EQ(transparency, 0.5f);

  const PbDataMapping* copied = nullptr;
  const std::function<void(SoState*)> look = [&](SoState* state) { copied = PoDataMappingElement::get(state); };
  NodePtr<SoNode> copy(place.node->copy());
  NodePtr<SoSeparator> scene = newScene({copy.get(), newProbe(look)});
  traverse(scene.get());
  EXPECT_EQ(redOf(copied, 0.25f), 1);
}

TEST_F(FieldUpdate, ATableThatIsNoneLeavesTheFormerOneInForce) {
  static std::vector<std::string> messages;
  PoDebugError::setHandlerCallback(
      [](const SoError* error, void*) { messages.push_back(error->getDebugString().getString()); }, nullptr);
  MappingPlace<PoNonLinearDataMapping2> place;
  EXPECT_EQ(redOf(place.object, 0.5f), 0.5f);

  const float values[] = {2, 0, kNaN, 1};
  const SbColor colors[] = {SbColor(0.3f, 0, 0), SbColor(0.1f, 0, 0), SbColor(1, 0, 0), SbColor(0.2f, 0, 0),
                            SbColor(0.4f, 0, 0)};
  place.node->value.setValues(0, 4, values);
  place.node->color.setValues(0, 5, colors);
  place.node->transparency.setValue(0.5f);
  place.node->type = PoNonLinearDataMapping2::NON_LINEAR_PER_LEVEL;
  place.run();
  EXPECT_EQ(redOf(place.object, 0), 0.1f);
  EXPECT_EQ(redOf(place.object, 0.5f), 0.2f);
  EXPECT_EQ(redOf(place.object, 1.5f), 0.3f);
  EXPECT_EQ(redOf(place.object, 2), 0.4f);
  float transparency = -1;
  place.object->getRGBColor(1.5f, transparency);
  EXPECT_EQ(transparency, 0.5f);
  place.object->getRGBColor(3, transparency);
  EXPECT_EQ(transparency, 0);
  EXPECT_TRUE(messages.empty());

  place.node->color.setNum(4);
  place.run();
  place.run();
  ASSERT_EQ(messages.size(), 1u);
  EXPECT_EQ(messages[0],
            "Ormelle error in PoNonLinearDataMapping2(): The number of colours must be >= to number of values + 1");
  EXPECT_EQ(redOf(place.object, 2), 0.4f);
  place.node->type = PoNonLinearDataMapping2::LINEAR_PER_LEVEL;
  place.run();
  EXPECT_EQ(redOf(place.object, 2), 0.3f);
  place.node->color.setNum(0);
  place.run();
  EXPECT_EQ(messages.size(), 2u);
  place.node->value.setNum(0);
  place.node->type.setValue(77);
  place.run();
  EXPECT_EQ(redOf(place.object, 2), 0.3f);
}

TEST_F(FieldUpdate, ARampNeedsFiniteValues) {
  MappingPlace<PoLinearDataMapping> place;
  for (const float bad : {kNaN, INFINITY, -INFINITY}) {
    place.node->value1 = bad;
    place.run();
    EXPECT_EQ(redOf(place.object, 0.5f), 0.5f) << bad;
  }
}

TEST_F(FieldUpdate, IsovaluesAreSortedAndRegularOnesStaySo) {
  Place<PoIsovaluesListElement, PoIsovaluesList> place;
  int num, isRegular;
  float min, max, step;
  EXPECT_EQ(place.object->getIsoList(num, min, max, step, isRegular)[9], 10);
  const float values[] = {3, kNaN, 1, 2.5f};
  place.node->isovaluesList.setValues(0, 4, values);
  place.node->isovaluesList.setNum(4);
  EXPECT_EQ(place.object->getLowerIsovalue(2.75f), 2);
  place.run();
  EXPECT_EQ(place.object->getLowerIsovalue(2.75f), 2.5f);
  place.node->isovaluesList.setNum(0);
  place.run();
  const float* list = place.object->getIsoList(num, min, max, step, isRegular);
  ASSERT_EQ(num, 3);
  EXPECT_EQ(list[0], 1);

  place.node->setRegularIsoList(0.0f, 1.0f, 11);
  EXPECT_EQ(place.node->isovaluesList.getNum(), 11);
  place.run();
  list = place.node->getIsoList(num, min, max, step, isRegular);
  ASSERT_EQ(num, 11);
  EXPECT_EQ(list[10], 1);
  EXPECT_TRUE(isRegular);  // though its gaps differ by rounding
  place.node->setRegularIsoList(5);
  EXPECT_EQ(place.node->isovaluesList[1], 0.25f);
}

TEST_F(FieldUpdate, ADomainIgnoresWhatIsNoBox) {
  Place<PoDomainElement, PoDomain> place;
  NodePtr<CountingKit> kit(new CountingKit);
  kit->connect(place.object);
  place.node->max.setValue(1000, 1, 1);
  place.run();
  EXPECT_EQ(place.object->getDeltaX(), 1000);
  EXPECT_EQ(kit->lastChange, PbBase::OBJECT_CHANGE);
  place.node->transformType = PbDomain::SCALE_Y_FIXED;
  place.run();
  EXPECT_EQ(kit->changes, 2);
  EXPECT_EQ(kit->lastChange, PbBase::DOMAIN_TRANSFORM_TYPE_CHANGE);
  for (const SbVec3f& bad : {SbVec3f(0, 1, 1), SbVec3f(kNaN, 1, 1), SbVec3f(1, -1, 1)}) {
    place.node->max = bad;
    place.run();
    EXPECT_EQ(place.object->getDeltaX(), 1000);
  }
  place.node->transformType.setValue(-3);
  place.run();
  EXPECT_EQ(place.object->getTransformType(), PbDomain::SCALE_Y_FIXED);

  place.node->setValues(SbVec2f(0, 0), SbVec2f(10, 5), PbDomain::BOX_LARGEST_SIDE);
  EXPECT_EQ(place.node->min.getValue(), SbVec3f(0, -2.5f, 0));
  EXPECT_EQ(place.node->max.getValue(), SbVec3f(10, 7.5f, 1));
  place.node->setValues(SbVec3f(1, 1, 1), SbVec3f(2, 1, 2));
  EXPECT_EQ(place.node->min.getValue(), SbVec3f(0, -2.5f, 0));
  NodePtr<SoMatrixTransform> transform(place.node->getMatrixTransform());
  EXPECT_EQ(transform->matrix.getValue(), place.object->getMatrix());
  EXPECT_EQ(place.object->getDeltaX(), 10);
}

TEST_F(FieldUpdate, DatesAreReadByTheFormatOfTheNode) {
  Place<PoDateFormatMappingElement, PoDateFormatMapping> place;
  NodePtr<CountingKit> kit(new CountingKit);
  kit->connect(place.object);
  float coord = -1;
  EXPECT_TRUE(place.node->getCoordinate("3-01-70", coord));
  EXPECT_EQ(coord, 2);
  place.node->date2 = "01-31-70";  // no such month
  place.node->coord2 = 60;
  place.run();
  EXPECT_EQ(kit->changes, 0);
  EXPECT_TRUE(place.node->getCoordinate("3-01-70", coord));
  EXPECT_EQ(coord, 2);
  place.node->format = "mdy";
  place.run();
  EXPECT_EQ(kit->changes, 1);
  EXPECT_TRUE(place.node->getCoordinate("01-11-70", coord));
  EXPECT_EQ(coord, 20);
  place.node->format = "ddd";
  EXPECT_TRUE(place.node->getCoordinate("01-16-70", coord));
  EXPECT_EQ(coord, 30);
  EXPECT_FALSE(place.node->getCoordinate(nullptr, coord));
  EXPECT_EQ(kit->changes, 1);
}

TEST_F(FieldUpdate, FormatAndTextAttributesFollowTheirFields) {
  Place<PoNumericDisplayFormatElement, PoNumericDisplayFormat> number;
  number.node->formatType = PoNumericDisplayFormat::FLOAT_FORMAT;
  number.node->tenPower = 3;
  number.node->numDecimal = 2;
  number.run();
  PbNumericDisplayFormat::FormatType type;
  int tenPower, numDecimal;
  number.object->getFormat(type, tenPower, numDecimal);
  EXPECT_EQ(type, PbNumericDisplayFormat::FLOAT_FORMAT);
  EXPECT_EQ(tenPower, 3);
  EXPECT_EQ(numDecimal, 2);

  Place<PoMiscTextAttrElement, PoMiscTextAttr> text;
  NodePtr<CountingKit> kit(new CountingKit);
  kit->connect(text.object);
  text.node->fontName = "Helvetica";
  text.node->lineLength = 12;
  text.node->endLineChar = '/';
  text.node->outliningEnabled = FALSE;
  text.run();
  EXPECT_EQ(kit->changes, 1);
  char endLineChar;
  int length;
  text.object->getLineLength(endLineChar, length);
  EXPECT_EQ(endLineChar, '/');
  EXPECT_EQ(length, 12);
  EXPECT_EQ(text.object->getFontName(), "Helvetica");
  EXPECT_FALSE(text.object->isOutliningEnabled());
}
