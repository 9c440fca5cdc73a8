#include <cmath>
#include <nlohmann/json.hpp>

#include "ToolRun.h"

namespace {

using nlohmann::json;

// A kit as it is written with what it generated: a square of 2 x 2 units in four cells, and whatever else is given.
std::string filledKit(const std::string& name, const std::string& more = "") {
  return "DEF " + name + " PoMeshFilled { groupFilled DEF group" + name +
         " Separator { Coordinate3 { point [ 0 0 0, 0 1 0, 0 2 0, 1 0 0, 1 1 0, 1 2 0, 2 0 0, 2 1 0, 2 2 0 ] } "
         "QuadMesh { verticesPerColumn 3 verticesPerRow 3 } " +
         more + " } alternateRep Separator { USE group" + name + " } } ";
}

class Kits : public ToolTest {
 protected:
  json infoOf(const std::string& nodes) const {
    writeScene("k.iv", nodes);
    return json::parse(runWell("info --json k.iv").out);
  }
};

TEST_F(Kits, AreToldInTraversalOrderAndWorldCoordinates) {
  const json told = infoOf("Cube {} Translation { translation 10 0 0 } Scale { scaleFactor 1 3 1 } " +
                           filledKit("a", "LineSet { numVertices [ 3 ] } PointSet { numPoints 4 }") +
                           "Translation { translation 0 0 5 } PoMeshLines {} USE a");
  const json& kits = told["kits"];
  ASSERT_EQ(kits.size(), 3u);
  EXPECT_EQ(kits[0]["type"], "PoMeshFilled");
  EXPECT_EQ(kits[0]["name"], "a");
  EXPECT_EQ(kits[1]["type"], "PoMeshLines");
  EXPECT_EQ(kits[1]["name"], "");
  EXPECT_EQ(kits[2]["name"], "a");
  for (const std::size_t i : {0u, 2u}) {
    EXPECT_EQ(kits[i]["triangles"], 8);
    EXPECT_EQ(kits[i]["lines"], 2);
    EXPECT_EQ(kits[i]["points"], 4);
    EXPECT_NEAR(kits[i]["area"].get<double>(), 12.0, 1e-9);
    EXPECT_NEAR(kits[i]["length"].get<double>(), 6.0, 1e-9);
    EXPECT_EQ(kits[i]["rebuild_ms"], 0.0) << "what was read was built anew";
  }
  EXPECT_EQ(kits[0]["bbox"], (json{10.0, 0.0, 0.0, 12.0, 6.0, 0.0}));
  EXPECT_EQ(kits[2]["bbox"], (json{10.0, 0.0, 5.0, 12.0, 6.0, 5.0}));
  EXPECT_EQ(kits[1]["triangles"], 0);
  EXPECT_TRUE(kits[1]["bbox"].is_null());
  EXPECT_GT(kits[1]["rebuild_ms"].get<double>(), 0.0);

  const json& total = told["total"];
  EXPECT_EQ(total["triangles"], 16);
  EXPECT_EQ(total["points"], 8);
  EXPECT_NEAR(total["area"].get<double>(), 24.0, 1e-9);
  EXPECT_EQ(total["bbox"], (json{10.0, 0.0, 0.0, 12.0, 6.0, 5.0}));
  EXPECT_EQ(total["rebuild_ms"], kits[1]["rebuild_ms"]);
  EXPECT_EQ(told["outside"]["triangles"], 12);
}

double distance(const json& a, const json& b) {
  double sum = 0.0;
  for (std::size_t axis = 0; axis < 3; ++axis) sum += std::pow(a[axis].get<double>() - b[axis].get<double>(), 2);
  return std::sqrt(sum);
}

TEST_F(Kits, HaveTextsWithTheCornersOfTheirBoxes) {
  // Turned by 30 degrees about z, then twice as large, then moved.
  const std::string turned =
      "Separator { Translation { translation 100 0 7 } Scale { scaleFactor 2 2 2 } Rotation { rotation 0 0 1 0.5235988 "
      "} ";
  const json told = infoOf(turned +
                           filledKit("a",
                                     "Font { size 10 name \"defaultFont\" } Text3 { string \"Width\" } "
                                     "AsciiText { string [ \"two\", \"lines\" ] } Text3 { string \"\" } "
                                     "DrawStyle { style INVISIBLE } Text3 { string \"unseen\" }") +
                           "}");
  const json& kit = told["kits"][0];
  EXPECT_EQ(kit["triangles"], 8) << "text was counted as triangles";
  EXPECT_NEAR(kit["area"].get<double>(), 16.0, 1e-4);
  ASSERT_EQ(kit["texts"].size(), 2u);
  EXPECT_EQ(told["total"]["texts"], 2);
  EXPECT_EQ(kit["texts"][1]["text"], "two\nlines");
  const json& text = kit["texts"][0];
  EXPECT_EQ(text["text"], "Width");
  const json& corners = text["corners"];
  ASSERT_EQ(corners.size(), 4u);
  // The toolkit's own font makes "Width" 26.84 wide and 7.71 high at size 10.
  EXPECT_NEAR(distance(corners[0], corners[1]), 53.68, 0.1);
  EXPECT_NEAR(distance(corners[1], corners[2]), 15.42, 0.1);
  EXPECT_NEAR(distance(corners[2], corners[3]), 53.68, 0.1);
  const double dx = corners[1][0].get<double>() - corners[0][0].get<double>();
  const double dy = corners[1][1].get<double>() - corners[0][1].get<double>();
  EXPECT_NEAR(std::atan2(dy, dx), 0.5235988, 1e-4) << "the box doesn't turn with the text";
  for (const json& corner : corners) EXPECT_NEAR(corner[2].get<double>(), 7.0, 1e-4);
}

TEST_F(Kits, HaveScreenTextsAsTheCameraSeesThem) {
  // 600 pixels are 6 units high: at size 20, a line of text is about 0.2 units high.
  const std::string camera = "OrthographicCamera { position 0 0 5 height 6 farDistance 100 } ";
  const std::string kit =
      filledKit("a", "Font { size 20 } Translation { translation 0.5 0.25 0 } Text2 { string \"On screen\" }");
  const json text = infoOf(camera + kit)["kits"][0]["texts"][0];
  EXPECT_EQ(text["text"], "On screen");
  const double height = distance(text["corners"][1], text["corners"][2]);
  EXPECT_GT(height, 0.08);
  EXPECT_LT(height, 0.4);
  EXPECT_NEAR(text["corners"][0][0].get<double>(), 0.5, 0.1);
  EXPECT_NEAR(text["corners"][0][1].get<double>(), 0.25, 0.1);
  // Without a camera, one is made that sees the square of 2 units: the text is smaller in proportion.
  const json free = infoOf(kit)["kits"][0]["texts"][0];
  const double freeHeight = distance(free["corners"][1], free["corners"][2]);
  EXPECT_GT(freeHeight, 0.2 * height);
  EXPECT_LT(freeHeight, 0.8 * height);
}

TEST_F(Kits, AreConvertedAsFieldsOrAsGeometry) {
  writeScene("k.iv", filledKit("a"));
  for (const char* form : {"", "--binary "}) {
    SCOPED_TRACE(form);
    runWell(std::string("convert --geometry ") + form + "k.iv g.iv");
    const json geometry = json::parse(runWell("info --json g.iv").out)["kits"];
    ASSERT_EQ(geometry.size(), 1u);
    EXPECT_EQ(geometry[0]["triangles"], 8);
    EXPECT_EQ(geometry[0]["name"], "a");
    EXPECT_NE(readFile(path("g.iv")).find("QuadMesh"), std::string::npos);

    runWell(std::string("convert ") + form + "k.iv f.iv");
    EXPECT_EQ(readFile(path("f.iv")).find("QuadMesh"), std::string::npos) << "what was generated is in the file";
    const json fields = json::parse(runWell("info --json f.iv").out)["kits"];
    ASSERT_EQ(fields.size(), 1u);
    EXPECT_EQ(fields[0]["name"], "a");
  }
}

TEST_F(Kits, AreDrawnAndWrittenAsMeshes) {
  writeScene("k.iv", "Translation { translation 3 0 0 } " + filledKit("a", "Text3 { string \"x\" }"));
  runWell("render k.iv -o k.png --size 64x48 --view front");
  EXPECT_NE(readPng(path("k.png")).at(32, 24)[0], 255);
  runWell("geometry k.iv -o k.ply");
  const Ply ply = readPly(path("k.ply"));
  EXPECT_EQ(ply.vertices.size(), 9u);
  EXPECT_EQ(ply.faces.size(), 8u);
  EXPECT_EQ(ply.vertices[0].position[0], 3.0f);
}

// A mesh in the file, its values mapped to colours, from red at 0 to blue at 1.
TEST_F(Kits, AreBuiltFromTheMeshOfTheFile) {
  writeScene("k.iv",
             "PoRegularCartesianGrid2D { mesh 3 2 # num_x, num_y\n 0 0\n 4 1\n 0\n 0 # number of string data-set\n 1\n "
             "0\n # set of scalars, index 0, binding per node\n \"v\"\n 0 0 0.5 0.5 1 1\n } "
             "PoLinearDataMapping { value1 0 color1 1 0 0 value2 1 color2 0 0 1 } "
             "PoMeshFilled { valuesIndex 0 coloringType COLOR_MAPPING } PoMeshLines { valuesIndex 0 }");
  const json built = json::parse(runWell("info --json k.iv").out)["kits"];
  ASSERT_EQ(built.size(), 2u);
  EXPECT_EQ(built[0]["triangles"], 4);
  EXPECT_NEAR(built[0]["area"].get<double>(), 4.0, 1e-9);
  EXPECT_EQ(built[0]["bbox"], (json{0.0, 0.0, 0.0, 4.0, 1.0, 0.0}));
  EXPECT_GT(built[0]["rebuild_ms"].get<double>(), 0.0);
  EXPECT_EQ(built[1]["lines"], 7);
  EXPECT_NEAR(built[1]["length"].get<double>(), 11.0, 1e-9);

  runWell("geometry k.iv -o k.ply");
  for (const Ply::Vertex& vertex : readPly(path("k.ply")).vertices) {
    if (vertex.color[1] != 0) continue;  // of a line
    EXPECT_NEAR(vertex.color[0], 255.0 * (1.0 - vertex.position[0] / 4.0), 1.0);
    EXPECT_NEAR(vertex.color[2], 255.0 * vertex.position[0] / 4.0, 1.0);
  }

  // However it is converted, it shows the same.
  for (const char* options : {"", "--binary", "--geometry", "--binary --geometry"}) {
    runWell(std::string("convert k.iv c.iv ") + options);
    json converted = json::parse(runWell("info --json c.iv").out)["kits"];
    ASSERT_EQ(converted.size(), 2u) << options;
    for (std::size_t i = 0; i < 2; ++i)
      for (const char* key : {"type", "triangles", "lines", "area", "length", "bbox"})
        EXPECT_EQ(converted[i][key], built[i][key]) << options << " " << key;
  }
}

}  // namespace
