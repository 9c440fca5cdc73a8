#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "ToolRun.h"

namespace {

using Color = std::array<int, 4>;

class Geometry : public ToolTest {
 protected:
  Ply geometryOf(const std::string& nodes, const std::string& options = "") const {
    writeScene("g.iv", nodes);
    runWell("geometry g.iv -o g.ply " + options);
    return readPly(path("g.ply"));
  }
};

double areaOf(const Ply& ply) {
  double area = 0.0;
  for (const auto& face : ply.faces) {
    double e[2][3];
    for (int axis = 0; axis < 3; ++axis) {
      const auto coordinate = [&](int corner) {
        return double(ply.vertices[size_t(face[size_t(corner)])].position[size_t(axis)]);
      };
      e[0][axis] = coordinate(1) - coordinate(0);
      e[1][axis] = coordinate(2) - coordinate(0);
    }
    const double x = e[0][1] * e[1][2] - e[0][2] * e[1][1];
    const double y = e[0][2] * e[1][0] - e[0][0] * e[1][2];
    const double z = e[0][0] * e[1][1] - e[0][1] * e[1][0];
    area += 0.5 * std::sqrt(x * x + y * y + z * z);
  }
  return area;
}

// 4 x 4 points a unit apart, in rows of growing x.
const std::string kGrid =
    "Coordinate3 { point [ 0 0 0, 1 0 0, 2 0 0, 3 0 0, 0 1 0, 1 1 0, 2 1 0, 3 1 0, 0 2 0, 1 2 0, 2 2 0, 3 2 0, 0 3 0, "
    "1 3 0, 2 3 0, 3 3 0 ] } ";

// Colours that all differ, as fully saturated as their number allows.
std::string materials(int count) {
  std::string text = "Material { diffuseColor [ ";
  for (int i = 0; i < count; ++i)
    text += std::to_string((i % 3) / 2.0) + " " + std::to_string((i / 3 % 3) / 2.0) + " " +
            std::to_string((i / 9 % 3) / 2.0) + ", ";
  return text + "] } ";
}

std::string binding(const std::string& value) { return "MaterialBinding { value " + value + " } "; }

const std::string kQuads =
    "0 1 5 4 -1, 1 2 6 5 -1, 2 3 7 6 -1, 4 5 9 8 -1, 5 6 10 9 -1, 6 7 11 10 -1, 8 9 13 12 -1, 9 10 14 13 -1, 10 11 15 "
    "14 "
    "-1";
const std::string kStrips = "0 4 1 5 2 6 3 7 -1, 4 8 5 9 6 10 7 11 -1, 8 12 9 13 10 14 11 15 -1";

std::string countDown(int from) {
  std::string text;
  for (int i = from; i >= 0; --i) text += std::to_string(i) + " ";
  return "materialIndex [ " + text + "] ";
}

struct Coloring {
  const char* name;
  std::string nodes;
  size_t vertices;  // 16 where neighbours share, more where they differ in colour

  friend std::ostream& operator<<(std::ostream& out, const Coloring& coloring) { return out << coloring.name; }
};

class ColoredGeometry : public ToolTest, public testing::WithParamInterface<Coloring> {};

// What is written is what is drawn: close to the corners of each triangle, the picture shows their colours. (In the
// middle it need not: OpenGL may cut a quadrangle along its other diagonal.)
TEST_P(ColoredGeometry, HasTheColorsThatAreDrawn) {
  writeScene("g.iv", "Separator { OrthographicCamera { position 1.5 1.5 5 height 4 } LightModel { model BASE_COLOR } " +
                         kGrid + GetParam().nodes + " }");
  runWell("geometry g.iv -o g.ply");
  runWell("render g.iv -o g.png --size 800x800 --samples 1");
  const Ply ply = readPly(path("g.ply"));
  const Png png = readPng(path("g.png"));
  ASSERT_EQ(ply.faces.size(), 18u);
  EXPECT_NEAR(areaOf(ply), 9.0, 1e-6);
  EXPECT_EQ(ply.vertices.size(), GetParam().vertices);
  std::set<std::pair<std::array<float, 3>, Color>> distinct;
  for (const Ply::Vertex& vertex : ply.vertices)
    EXPECT_TRUE(distinct.emplace(vertex.position, vertex.color).second) << "a vertex is there twice";
  for (const auto& face : ply.faces) {
    double middle[2] = {};
    for (const int corner : face)
      for (size_t axis = 0; axis < 2; ++axis) middle[axis] += ply.vertices[size_t(corner)].position[axis] / 3.0;
    for (const int corner : face) {
      const Ply::Vertex& vertex = ply.vertices[size_t(corner)];
      const double x = 0.95 * vertex.position[0] + 0.05 * middle[0];
      const double y = 0.95 * vertex.position[1] + 0.05 * middle[1];
      const Color drawn = png.at(int((x + 0.5) * 200.0), int((3.5 - y) * 200.0));
      for (size_t c = 0; c < 3; ++c) EXPECT_NEAR(vertex.color[c], drawn[c], 25) << "at " << x << " " << y;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(
    Bindings, ColoredGeometry,
    testing::Values(
        Coloring{"facesOverall", materials(1) + "IndexedFaceSet { coordIndex [ " + kQuads + " ] }", 16},
        Coloring{"facesPerFace",
                 materials(9) + binding("PER_FACE") + "IndexedFaceSet { coordIndex [ " + kQuads + " ] }", 36},
        Coloring{"facesPerFaceIndexed",
                 materials(9) + binding("PER_FACE_INDEXED") + "IndexedFaceSet { coordIndex [ " + kQuads + " ] " +
                     countDown(8) + "}",
                 36},
        Coloring{"facesPerVertexIndexed",
                 materials(16) + binding("PER_VERTEX_INDEXED") + "IndexedFaceSet { coordIndex [ " + kQuads + " ] }",
                 16},
        Coloring{"facesPerVertex",
                 materials(36) + binding("PER_VERTEX") + "IndexedFaceSet { coordIndex [ " + kQuads + " ] }", 36},
        Coloring{"facesOfPacked",
                 "PackedColor { orderedRGBA [ 0xff0000ff, 0x00ff00ff ] } " + binding("PER_FACE_INDEXED") +
                     "IndexedFaceSet { coordIndex [ " + kQuads + " ] materialIndex [ 0 1 0 1 0 1 0 1 0 ] }",
                 28},
        Coloring{"quadsOverall", materials(1) + "QuadMesh { verticesPerRow 4 verticesPerColumn 4 }", 16},
        Coloring{"quadsPerRow",
                 materials(3) + binding("PER_PART") + "QuadMesh { verticesPerRow 4 verticesPerColumn 4 }", 24},
        Coloring{"quadsPerFace",
                 materials(9) + binding("PER_FACE") + "QuadMesh { verticesPerRow 4 verticesPerColumn 4 }", 36},
        Coloring{"quadsPerVertex",
                 materials(16) + binding("PER_VERTEX") + "QuadMesh { verticesPerRow 4 verticesPerColumn 4 }", 16},
        Coloring{"stripsPerPart",
                 materials(3) + binding("PER_PART_INDEXED") + "IndexedTriangleStripSet { coordIndex [ " + kStrips +
                     " ] materialIndex [ 2 0 1 ] }",
                 24},
        Coloring{"stripsPerVertex",
                 materials(16) + binding("PER_VERTEX_INDEXED") + "IndexedTriangleStripSet { coordIndex [ " + kStrips +
                     " ] }",
                 16},
        Coloring{"oneTexel",
                 materials(16) + binding("PER_VERTEX_INDEXED") +
                     "Texture2 { image 1 1 3 0x80ff40 } IndexedFaceSet { coordIndex [ " + kQuads + " ] }",
                 16}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(Geometry, HasItsFormInTextAndBinary) {
  const std::string nodes = "Material { diffuseColor 1 0.5 0 transparency 0.25 } " + kGrid +
                            "IndexedFaceSet { coordIndex [ " + kQuads +
                            " ] } LineSet { numVertices [ 2, 3 ] } PointSet { startIndex 5 numPoints 2 }";
  const Ply binary = geometryOf(nodes);
  EXPECT_EQ(binary.header,
            "ply\nformat binary_little_endian 1.0\ncomment made by ormelle 8.6.0\nelement vertex 23\nproperty float x\n"
            "property float y\nproperty float z\nproperty uchar red\nproperty uchar green\nproperty uchar blue\n"
            "property uchar alpha\nelement face 18\nproperty list uchar int vertex_indices\nelement edge 3\n"
            "property int vertex1\nproperty int vertex2\nend_header\n");
  EXPECT_EQ(binary.vertices[0].color, (Color{255, 128, 0, 191}));
  const Ply text = geometryOf(nodes, "--format ascii");
  ASSERT_EQ(text.vertices.size(), binary.vertices.size());
  for (size_t i = 0; i < text.vertices.size(); ++i) {
    EXPECT_EQ(text.vertices[i].position, binary.vertices[i].position);
    EXPECT_EQ(text.vertices[i].color, binary.vertices[i].color);
  }
  EXPECT_EQ(text.faces, binary.faces);
  EXPECT_EQ(text.edges, binary.edges);
}

TEST_F(Geometry, IsInWorldCoordinates) {
  const Ply ply = geometryOf(
      "Separator { Translation { translation 10 0 0 } Rotation { rotation 0 0 1 1.5707963 } Scale { scaleFactor 2 1 1 "
      "} "
      "Coordinate3 { point [ 1 0 0, 0 1 0, 0.1 0.2 0.3 ] } PointSet {} } DEF again Separator { Coordinate3 { point 7 8 "
      "9 } PointSet {} } "
      "Translation { translation 1 1 1 } USE again");
  ASSERT_EQ(ply.vertices.size(), 5u);
  const float expected[5][3] = {{10, 2, 0}, {9, 0, 0}, {9.8f, 0.2f, 0.3f}, {7, 8, 9}, {8, 9, 10}};
  for (size_t i = 0; i < 5; ++i)
    for (size_t axis = 0; axis < 3; ++axis) EXPECT_NEAR(ply.vertices[i].position[axis], expected[i][axis], 1e-5);
}

TEST_F(Geometry, SharesWhatTheShapeShares) {
  // A face set has four corners of its own for each quadrangle; coordinates that stand in one place stay apart.
  EXPECT_EQ(geometryOf("Coordinate3 { point [ 0 0 0, 1 0 0, 1 1 0, 0 1 0, 1 0 0, 2 0 0, 2 1 0, 1 1 0 ] } FaceSet { "
                       "numVertices [ 4, 4 ] }")
                .vertices.size(),
            8u);
  // Two shapes share nothing, not even with the same coordinates.
  EXPECT_EQ(geometryOf(kGrid + "DEF s IndexedFaceSet { coordIndex [ 0 1 5 4 -1 ] } USE s").vertices.size(), 8u);
  // Unused coordinates are left out, and a polyline shares its inner vertices.
  const Ply lines = geometryOf(kGrid + "IndexedLineSet { coordIndex [ 3 7 11 -1, 7 6 -1 ] }");
  EXPECT_EQ(lines.vertices.size(), 4u);
  EXPECT_EQ(lines.edges.size(), 3u);
  // A segment's colour doubles a vertex where two segments meet.
  const Ply colored =
      geometryOf(kGrid + materials(3) + binding("PER_PART") + "IndexedLineSet { coordIndex [ 0 1 2 -1, 2 3 -1 ] }");
  EXPECT_EQ(colored.vertices.size(), 6u);
  // Shapes without coordinates are closed surfaces.
  const Ply cube = geometryOf("Cube {}");
  EXPECT_EQ(cube.vertices.size(), 8u);
  EXPECT_EQ(cube.faces.size(), 12u);
}

// The toolkit lets the colours of a strip's triangles run into one another on the screen; each still has one.
TEST_F(Geometry, GivesEachTriangleOfAStripItsColor) {
  for (const char* shape : {"TriangleStripSet { numVertices [ 4, 4 ] }",
                            "IndexedTriangleStripSet { coordIndex [ 0 1 2 3 -1 4 5 6 7 -1 ] }"}) {
    const Ply ply = geometryOf(kGrid + materials(4) + binding("PER_FACE") + shape);
    ASSERT_EQ(ply.faces.size(), 4u);
    EXPECT_EQ(ply.vertices.size(), 12u);
    const Color expected[4] = {{0, 0, 0, 255}, {128, 0, 0, 255}, {255, 0, 0, 255}, {0, 128, 0, 255}};
    for (size_t face = 0; face < 4; ++face)
      for (const int corner : ply.faces[face]) EXPECT_EQ(ply.vertices[size_t(corner)].color, expected[face]) << shape;
  }
}

TEST_F(Geometry, TilesPolygonsOfManyCorners) {
  // A comb of 200 teeth, 1 wide and 4 long, on a bar 1 high: one concave polygon of 803 corners.
  std::string points = "0 0 0, ", indices;
  const int teeth = 200;
  for (int i = 0; i < teeth; ++i) {
    const std::string left = std::to_string(2 * i), right = std::to_string(2 * i + 1);
    points += left + " 1 0, " + left + " 5 0, " + right + " 5 0, " + right + " 1 0, ";
  }
  const std::string end = std::to_string(2 * teeth);
  points += end + " 1 0, " + end + " 0 0";
  for (int i = 0; i < 4 * teeth + 3; ++i) indices += std::to_string(i) + " ";
  const Ply ply = geometryOf("ShapeHints { faceType UNKNOWN_FACE_TYPE } Coordinate3 { point [ " + points +
                             " ] } IndexedFaceSet { coordIndex [ " + indices + "-1 ] }");
  EXPECT_LE(ply.vertices.size(), size_t(4 * teeth + 3));
  EXPECT_GE(ply.vertices.size(), size_t(4 * teeth + 2)) << "only the second corner isn't one";
  EXPECT_NEAR(areaOf(ply), 6.0 * teeth, 1e-3);
}

TEST_F(Geometry, LeavesOutTextAndTheInvisible) {
  const Ply ply = geometryOf(
      "Text2 { string \"a\" } Text3 { string \"b\" parts ALL } AsciiText { string \"c\" } Separator { DrawStyle { "
      "style INVISIBLE } Cube {} } "
      "Switch { whichChild -1 Cube {} } Coordinate3 { point [ 0 0 0, 1 0 0 ] } LineSet {}");
  EXPECT_EQ(ply.vertices.size(), 2u);
  EXPECT_EQ(ply.faces.size(), 0u);
  EXPECT_EQ(ply.edges.size(), 1u);
  EXPECT_EQ(geometryOf("").vertices.size(), 0u);
}

// A vertex property with a material for each segment makes the toolkit leave its state pushed.
TEST_F(Geometry, KeepsTheStateBehindAnUnbalancedShape) {
  const Ply ply = geometryOf(
      "Separator { Separator { Translation { translation 5 0 0 } IndexedLineSet { vertexProperty VertexProperty { "
      "vertex [ 0 0 0, 1 0 0 ] "
      "materialBinding PER_PART orderedRGBA [ 0xff0000ff ] } coordIndex [ 0 1 -1 ] } } Material { diffuseColor 0 0 1 } "
      "Coordinate3 { point 0 0 0 } PointSet {} }");
  ASSERT_EQ(ply.vertices.size(), 3u);
  EXPECT_EQ(ply.vertices[0].color, (Color{255, 0, 0, 255}));
  EXPECT_EQ(ply.vertices[2].color, (Color{0, 0, 255, 255}));
  EXPECT_EQ(ply.vertices[2].position[0], 0.0f);
}

TEST_F(Geometry, LooksTexturesUpAtTheVertices) {
  // Two texels, red and green, from left to right.
  const std::string square =
      "Coordinate3 { point [ 0 0 0, 1 0 0, 1 1 0, 0 1 0 ] } TextureCoordinate2 { point [ 0.25 0.5, 0.75 0.5, 1.25 0.5, "
      "-5 "
      "0.5 ] } FaceSet { numVertices 4 }";
  const Ply repeated = geometryOf("Texture2 { image 2 1 3 0xff0000 0x00ff00 } " + square);
  ASSERT_EQ(repeated.vertices.size(), 4u);
  std::map<std::array<float, 3>, Color> colors;
  for (const Ply::Vertex& vertex : repeated.vertices) colors[vertex.position] = vertex.color;
  // The default material is a grey of 0.8.
  EXPECT_EQ((colors[{0, 0, 0}]), (Color{204, 0, 0, 255}));
  EXPECT_EQ((colors[{1, 0, 0}]), (Color{0, 204, 0, 255}));
  EXPECT_EQ((colors[{1, 1, 0}]), (Color{204, 0, 0, 255}));
  const Ply clamped = geometryOf("Texture2 { image 2 1 3 0xff0000 0x00ff00 wrapS CLAMP model REPLACE } " + square);
  colors.clear();
  for (const Ply::Vertex& vertex : clamped.vertices) colors[vertex.position] = vertex.color;
  EXPECT_EQ((colors[{1, 1, 0}]), (Color{0, 255, 0, 255}));
  EXPECT_EQ((colors[{0, 1, 0}]), (Color{255, 0, 0, 255}));
}

TEST_F(Geometry, RefusesShapesThatPointNowhere) {
  const std::vector<std::pair<std::string, std::string>> shapes = {
      {"IndexedFaceSet { coordIndex [ 0 1 1000000 -1 ] }", "coordinate 1000000"},
      {"IndexedFaceSet { coordIndex [ 0 1 -7 -1 ] }", "coordinate -7"},
      {"IndexedLineSet { coordIndex [ 0 16 -1 ] }", "coordinate 16"},
      {"IndexedTriangleStripSet { coordIndex [ 0 1 2 -1 3 -1 4 5 6 ] }", "1 vertices"},
      {"QuadMesh { verticesPerRow 5 verticesPerColumn 4 }", "coordinate 19"},
      {"QuadMesh { verticesPerRow 2147483647 verticesPerColumn 2147483647 }", "coordinate"},
      {"FaceSet { numVertices [ 4, 4, 40 ] }", "coordinate 47"},
      {"TriangleStripSet { startIndex 15 numVertices 3 }", "coordinate 17"},
      {"LineSet { startIndex -3 numVertices 2 }", "coordinate -3"},
      {"PointSet { numPoints 17 }", "coordinate 16"},
      {materials(2) + binding("PER_FACE_INDEXED") + "IndexedFaceSet { coordIndex [ 0 1 5 -1 ] }", "lacks the indices"},
      {materials(2) + binding("PER_FACE_INDEXED") + "IndexedFaceSet { coordIndex [ 0 1 5 -1 ] materialIndex 2 }",
       "material 2"},
      {materials(2) + binding("PER_FACE_INDEXED") +
           "IndexedFaceSet { coordIndex [ 0 1 5 -1 1 5 6 -1 ] materialIndex 1 }",
       "2 are needed"},
      {materials(2) + binding("PER_VERTEX_INDEXED") + "IndexedFaceSet { coordIndex [ 0 1 5 -1 ] }", "material 5"},
      {"Normal { vector 0 0 1 } NormalBinding { value PER_VERTEX_INDEXED } IndexedFaceSet { coordIndex [ 0 1 5 -1 ] }",
       "normal 5"},
  };
  for (const auto& [shape, part] : shapes) {
    writeScene("g.iv", kGrid + shape);
    runBadly("geometry g.iv -o g.ply", part);
    runBadly("render g.iv -o g.png", part);
    runBadly("info g.iv", part);
  }
  EXPECT_EQ(countFiles(), 1u);
}

}  // namespace
