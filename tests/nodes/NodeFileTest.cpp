#include <Inventor/nodes/SoCube.h>
#include <Ormelle/PbDataMapping.h>
#include <Ormelle/PoCellFilter.h>
#include <Ormelle/PoDataMappingElement.h>
#include <Ormelle/PoLinearDataMapping.h>
#include <Ormelle/PoNode.h>
#include <gtest/gtest.h>

#include "NodesTest.h"

namespace {

// Every attribute node with fields, none of them at its default.
const char* const kNodes[][2] = {
    {"PoDomain", "min 1 2 3 max 4 5 6 transformType SCALE_MAX_XYZ_FIXED"},
    {"PoNumericDisplayFormat", "formatType INTEGER_FORMAT numDecimal 3 tenPower 6"},
    {"PoIsovaluesList", "isovaluesList [ 0.5, 0.25 ]"},
    {"PoDateFormatMapping", "date1 \"01-05-92\" date2 \"02-05-92\" coord1 2 coord2 3 format \"mdy\""},
    {"PoMiscTextAttr",
     "fontName \"Helvetica\" lineLength 9 endLineChar 47 profileEnabled FALSE predefinedProfileEnabled FALSE "
     "outliningEnabled FALSE"},
    {"PoLinearDataMapping",
     "minThresholdEnabled TRUE minThreshold -1 minThresholdHasColor TRUE minThresholdColor 1 0 0 "
     "minThresholdTransparency 0.5 maxThresholdEnabled TRUE maxThreshold 3 maxThresholdHasColor TRUE "
     "maxThresholdColor 0 1 0 maxThresholdTransparency 0.25 transparencyEnabled TRUE transparencyValueDeletedParts 0.5 "
     "value1 0.5 color1 0 0 1 transparency1 0.125 value2 2 color2 1 1 0 transparency2 0.75"},
    {"PoNonLinearDataMapping", "minThreshold 0.5 transparencyEnabled TRUE"},
    {"PoNonLinearDataMapping2",
     "type NON_LINEAR_PER_LEVEL value [ 0, 2, 4 ] color [ 0 0 0, 1 0 0, 0 1 0, 0 0 1 ] transparency [ 0.5, 0.25 ]"},
    {"PoBevelEdge", "radius 2 radiusFlag PERCENTAGE_RADIUS bevelAngle 1"},
    {"PoPeriodIndexFilter", "period 7"},
    {"PoIndexListFilter", "index [ 3, 1 ]"},
    {"PoPeriodFilter", "period 0.5 axis Y"},
    {"PoCoordinateListFilter", "coord [ 1, 0.5 ] axis Y"},
    {"PoMesh1DHints", "geomInterpretation HISTO_Y"},
    {"PoCircularProfile", "radius 2"},
    {"PoEllipticProfile", "xRadius 2 yRadius 3"},
    {"PoSquareProfile", "width 2 height 3"},
    {"PoProfileCoordinate2", "point [ 0 0, 1 0, 0 1 ]"},
    {"PoLabelHints", "labelPath PATH_UP justification RIGHT addString \"km\" isLabelLineVisible TRUE"},
    {"PoIntervalCellFilter", "min -1 max 2 in FALSE"},
};

class UnnamedFilter : public PoCellFilter {
 public:
  int acceptCell(int, float) const override { return 1; }
};

}  // namespace

TEST(NodeFile, EveryFieldOfEveryNodeComesBack) {
  PoOrmelle::init();
  std::string text = "#Inventor V2.1 ascii\n\nSeparator {\n";
  for (const auto& [name, fields] : kNodes) text += std::string(name) + " { " + fields + " }\n";
  const NodePtr<SoSeparator> scene = sceneOf(text + "}\n");
  ASSERT_TRUE(scene);
  ASSERT_EQ(scene->getNumChildren(), static_cast<int>(std::size(kNodes)));
  for (const bool isBinary : {false, true}) {
    const std::string written = textOf(scene.get(), isBinary);
    const NodePtr<SoSeparator> again = sceneOf(written);
    ASSERT_TRUE(again);
    if (!isBinary) {
      EXPECT_EQ(textOf(again.get()), written);
    }
    ASSERT_EQ(again->getNumChildren(), scene->getNumChildren());
    for (int i = 0; i < again->getNumChildren(); ++i) {
      SoNode* before = scene->getChild(i);
      SoNode* after = again->getChild(i);
      EXPECT_STREQ(after->getTypeId().getName().getString(), kNodes[i][0]);
      EXPECT_TRUE(after->isOfType(PoNode::getClassTypeId()));
      EXPECT_TRUE(after->fieldsAreEqual(before)) << kNodes[i][0];
      if (isBinary) continue;  // there fields are written at their defaults too
      SoFieldList fields;
      after->getFields(fields);
      for (int f = 0; f < fields.getLength(); ++f) {
        SbName name;
        after->getFieldName(fields[f], name);
        const bool isLeftOut = std::string(kNodes[i][1]).find(name.getString()) == std::string::npos;
        EXPECT_EQ(static_cast<bool>(fields[f]->isDefault()), isLeftOut) << kNodes[i][0] << "." << name.getString();
      }
    }
  }
}

// A binary group says how many children follow, so there nothing can be left out, and the file must stay readable.
TEST(NodeFile, GeometryAndFiltersOfTheApplicationLeaveNodesOut) {
  PoOrmelle::init();
  NodePtr<SoSeparator> scene = newScene({new PoLinearDataMapping, new UnnamedFilter, new SoCube});
  for (const auto format : {PoBase::WRITE_GEOMETRY, PoBase::WRITE_FIELDS}) {
    PoBase::setNodeWriteFormat(format);
    const std::string text = textOf(scene.get()), binary = textOf(scene.get(), true);
    EXPECT_EQ(text.find("PoLinearDataMapping") != std::string::npos, format == PoBase::WRITE_FIELDS);
    EXPECT_EQ(text.find("Filter"), std::string::npos);
    for (const std::string& file : {text, binary}) {
      const NodePtr<SoSeparator> read = sceneOf(file);
      ASSERT_TRUE(read);
      EXPECT_TRUE(read->getChild(read->getNumChildren() - 1)->isOfType(SoCube::getClassTypeId()));
    }
  }
}

TEST(NodeFile, AMappingThatIsReadIsInForceAtTheFirstTraversal) {
  PoOrmelle::init();
  NodePtr<SoSeparator> scene = sceneOf(
      "#Inventor V2.1 ascii\nPoLinearDataMapping { value2 4 color2 0.5 0 0 maxThreshold 5 "
      "maxThresholdEnabled TRUE }");
  ASSERT_TRUE(scene);
  float red = -1;
  const std::function<void(SoState*)> look = [&](SoState* state) {
    const PbDataMapping* mapping = PoDataMappingElement::get(state);
    ASSERT_NE(mapping, nullptr);
    red = (*mapping->getRGBColor(4))[0];
    EXPECT_EQ(mapping->getRGBColor(5), nullptr);
  };
  scene->addChild(newProbe(look));
  traverse(scene.get());
  EXPECT_EQ(red, 0.5f);
}
