#include <cmath>
#include <cstdlib>

#include "ToolRun.h"

namespace {

using Color = std::array<int, 4>;

const std::string kCamera = "OrthographicCamera { position 0 0 5 height 2 nearDistance 1 farDistance 10 } ";
const std::string kBase = "LightModel { model BASE_COLOR } ";

// A square of half the size given, about a place.
std::string square(float x, float y, float z, float half) {
  const auto corner = [&](float dx, float dy) {
    return std::to_string(x + dx * half) + " " + std::to_string(y + dy * half) + " " + std::to_string(z) + ", ";
  };
  return "Coordinate3 { point [ " + corner(-1, -1) + corner(1, -1) + corner(1, 1) + corner(-1, 1) +
         "] } FaceSet { numVertices 4 } ";
}

std::string color(float r, float g, float b) {
  return "BaseColor { rgb " + std::to_string(r) + " " + std::to_string(g) + " " + std::to_string(b) + " } ";
}

std::size_t countOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) ++count;
  return count;
}

class Vector : public ToolTest {
 protected:
  static bool has(const std::string& program) {
    return std::system(("command -v " + program + " >/dev/null 2>&1").c_str()) == 0;
  }

  // The picture that an independent program makes of a vector file.
  Png rasterise(const std::string& file) const {
    const std::string png = path(file + ".png");
    const bool isPdf = file.size() > 4 && file.substr(file.size() - 4) == ".pdf";
    const std::string command = isPdf ? "pdftoppm -r 96 -singlefile -png '" + path(file) + "' '" + path(file) + "'"
                                      : "rsvg-convert '" + path(file) + "' -o '" + png + "'";
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
    return readPng(png);
  }

  // The mean difference of two pictures, 0 to 255, and the part of pixels that differ strongly.
  static std::pair<double, double> difference(const Png& a, const Png& b) {
    EXPECT_EQ(a.width, b.width);
    EXPECT_EQ(a.height, b.height);
    if (a.width != b.width || a.height != b.height) return {255.0, 1.0};
    double sum = 0.0;
    double strong = 0.0;
    for (std::size_t i = 0; i < a.rgba.size(); i += 4) {
      int most = 0;
      for (std::size_t c = 0; c < 3; ++c) most = std::max(most, std::abs(int{a.rgba[i + c]} - int{b.rgba[i + c]}));
      sum += most;
      strong += most > 64 ? 1.0 : 0.0;
    }
    const double count = static_cast<double>(a.rgba.size()) / 4.0;
    return {sum / count, strong / count};
  }

  // Draws a scene as pixels, SVG and PDF, and compares what programs see in these.
  void compareFormats(const std::string& scene, double mostMean, double mostStrong) const {
    runWell("render " + scene + " -o p.png --size 300x200 --samples 16");
    const Png expected = readPng(path("p.png"));
    for (const auto& [file, program] : {std::pair{"p.svg", "rsvg-convert"}, std::pair{"p.pdf", "pdftoppm"}}) {
      if (!has(program)) continue;
      ASSERT_EQ(run("render " + scene + " -o " + file + " --size 300x200").status, 0);
      const auto [mean, strong] = difference(rasterise(file), expected);
      EXPECT_LT(mean, mostMean) << scene << " as " << file;
      EXPECT_LT(strong, mostStrong) << scene << " as " << file;
    }
  }
};

// What covers what is OpenGL's: the nearer, and of the same depth the later, unless an offset sets it back.
TEST_F(Vector, PaintsInTheOrderOfOpenGl) {
  writeScene("a.iv", kCamera + kBase + color(1, 0, 0) + square(0, 0, 0, 0.9f) + color(0, 1, 0) +
                         square(-0.4f, 0, 0, 0.3f) + color(0, 0, 1) + square(-0.4f, 0, -1, 0.2f) +
                         "Separator { PolygonOffset {} " + color(1, 1, 0) + square(0.4f, 0.4f, 0, 0.2f) + "} " +
                         color(0, 0, 0) + square(0.4f, -0.4f, 1, 0.2f) + color(1, 1, 1) +
                         square(0.4f, -0.4f, 0.5f, 0.3f));
  compareFormats("a.iv", 1.0, 0.005);
  runWell("render a.iv -o a.svg --size 300x200");
  const std::string svg = readFile(path("a.svg"));
  // Far to near: the hidden ones first.
  EXPECT_LT(svg.find("#0000ff"), svg.find("#ffff00"));
  EXPECT_LT(svg.find("#ffff00"), svg.find("#ff0000"));
  EXPECT_LT(svg.find("#ff0000"), svg.find("#00ff00"));
  EXPECT_LT(svg.rfind("#ffffff"), svg.find("#000000"));
}

TEST_F(Vector, JoinsTrianglesOfOneColourAndLeavesNoSeams) {
  // A fan of 60 triangles in two colours: two areas, and below them the line where they meet.
  std::string points = "0 0 0, ";
  std::string indices;
  std::string materials;
  for (int i = 0; i <= 60; ++i) {
    const double angle = i * 0.1;
    points += std::to_string(0.9 * std::cos(angle)) + " " + std::to_string(0.9 * std::sin(angle)) + " 0, ";
    if (i == 60) break;
    indices += "0, " + std::to_string(i + 1) + ", " + std::to_string(i + 2) + ", -1, ";
    materials += i < 30 ? "0, " : "1, ";
  }
  writeScene("a.iv", kCamera + kBase +
                         "Material { diffuseColor [ 0.2 0.4 0.6, 0.6 0.2 0.2 ] } "
                         "MaterialBinding { value PER_FACE_INDEXED } Coordinate3 { point [ " +
                         points + "] } IndexedFaceSet { coordIndex [ " + indices + "] materialIndex [ " + materials +
                         "] }");
  runWell("render a.iv -o a.svg --size 300x200");
  const std::string svg = readFile(path("a.svg"));
  EXPECT_EQ(countOf(svg, "<path"), 4u) << svg;  // background, seam, two areas
  if (!has("rsvg-convert")) GTEST_SKIP() << "without rsvg-convert, nothing looks at the picture";
  const Png png = rasterise("a.svg");
  for (int x = 155; x < 235; ++x) {
    // No pixel of the inside may let the white page through.
    const Color c = png.at(x, 96);
    EXPECT_LT(c[0] + c[1] + c[2], 420) << x;
  }
}

TEST_F(Vector, KeepsTextAsText) {
  writeScene(
      "a.iv",
      kCamera + kBase + color(0.2f, 0.2f, 0.2f) +
          "Font { name \"DejaVu Sans:Bold Oblique\" size 0.2 } Separator { Translation { translation -0.9 0.5 0 } "
          "AsciiText { string [ \"Depth <m> & more\", \"84.40\xC2\xB0 W\" ] } } "
          "Separator { RotationXYZ { axis Z angle 1.5708 } Text3 { string \"upright\" justification CENTER } } "
          "Separator { Font { size 12 } Translation { translation 0.9 -0.8 0 } Text2 { string \"bitmap\" justification "
          "RIGHT } }");
  runWell("render a.iv -o a.svg --size 300x200");
  const std::string svg = readFile(path("a.svg"));
  EXPECT_NE(svg.find(">Depth &lt;m&gt; &amp; more</text>"), std::string::npos) << svg;
  EXPECT_NE(svg.find("84.40\xC2\xB0 W</text>"), std::string::npos);
  EXPECT_NE(svg.find("font-weight=\"bold\" font-style=\"italic\""), std::string::npos);
  EXPECT_EQ(countOf(svg, "<text"), 4u);
  EXPECT_NE(svg.find("matrix(0 -1 1 0 "), std::string::npos) << "the text that goes upwards";
  if (!has("pdftotext")) GTEST_SKIP() << "without pdftotext, nothing reads the PDF";
  ASSERT_EQ(run("render a.iv -o a.pdf --size 300x200").status, 0);
  ASSERT_EQ(std::system(("pdftotext -raw '" + path("a.pdf") + "' '" + path("a.txt") + "'").c_str()), 0);
  const std::string text = readFile(path("a.txt"));
  for (const char* part : {"Depth <m> & more", "84.40\xC2\xB0 W", "upright", "bitmap"})
    EXPECT_NE(text.find(part), std::string::npos) << part << " in " << text;
}

TEST_F(Vector, DrawsLinesPointsAndTransparencyAsOpenGlDoes) {
  writeScene("a.iv",
             kCamera + kBase + color(0, 0, 0) +
                 "DrawStyle { lineWidth 4 pointSize 9 } Coordinate3 { point [ -0.8 -0.8 0, 0.8 -0.8 0, 0.8 0.8 0, "
                 "-0.5 0.5 0, 0.5 0.5 0, -0.8 0 0, 0.8 0 0 ] } LineSet { numVertices 3 } "
                 "PointSet { startIndex 3 numPoints 2 } Separator { DrawStyle { linePattern 0xff00 lineWidth 3 } "
                 "LineSet { startIndex 5 numVertices 2 } } Material { diffuseColor 1 0 0 transparency 0.5 } " +
                 square(0, 0, 0.5f, 0.4f) + "DrawStyle { style LINES lineWidth 2 } " + color(0, 0, 1) +
                 square(-0.5f, -0.3f, 0.6f, 0.2f));
  compareFormats("a.iv", 2.0, 0.02);
  runWell("render a.iv -o a.svg --size 300x200");
  const std::string svg = readFile(path("a.svg"));
  EXPECT_NE(svg.find("stroke-dasharray=\"8 8\""), std::string::npos);
  EXPECT_NE(svg.find("fill-opacity=\"0.502\""), std::string::npos) << svg;
}

// Lit bodies, lines that bodies hide, and textures: the shades may differ a little, what is seen may not.
TEST_F(Vector, ShowsSpaceAsOpenGlDoes) {
  const std::string light = "DirectionalLight { direction -0.3 -0.4 -1 } ";
  writeScene("cube.iv",
             light +
                 "PerspectiveCamera { position 2 2 4 orientation -0.8 0.6 0 0.6 nearDistance 1 farDistance 10 } "
                 "Material { diffuseColor 0.8 0.5 0.2 } Cube {} "
                 "DrawStyle { lineWidth 2 } BaseColor { rgb 0 0 0 } Coordinate3 { point [ -3 0 0, 3 0 0 ] } "
                 "LineSet { numVertices 2 }");
  compareFormats("cube.iv", 3.0, 0.02);
  writeScene("sphere.iv", kCamera + light +
                              "Complexity { value 0.9 } Material { diffuseColor 0.2 0.5 0.9 specularColor 0.6 0.6 0.6 "
                              "shininess 0.3 } Sphere { radius 0.8 }");
  compareFormats("sphere.iv", 3.0, 0.02);
  writeScene("texture.iv",
             kCamera + kBase +
                 "Complexity { textureQuality 0.1 } Texture2 { image 2 2 3 0xff0000 0x00ff00 0x0000ff 0xffff00 } " +
                 square(0, 0, 0, 0.8f));
  compareFormats("texture.iv", 2.0, 0.02);
}

TEST_F(Vector, HasTheSizeAskedFor) {
  writeScene("a.iv", kCamera + kBase + square(0, 0, 0, 0.5f));
  runWell("render a.iv -o a.svg --size 300x200 --dpi 150 --background transparent");
  const std::string svg = readFile(path("a.svg"));
  EXPECT_NE(svg.find("width=\"2in\" height=\"1.33333in\" viewBox=\"0 0 300 200\""), std::string::npos) << svg;
  EXPECT_EQ(countOf(svg, "<path"), 1u) << "a transparent page has no background";
}

TEST_F(Vector, TakesOddScenes) {
  const std::vector<std::string> scenes = {
      "",
      "Separator {}",
      kCamera +
          "Scale { scaleFactor 1e30 1e30 1e30 } Scale { scaleFactor 1e30 1e30 1e30 } Cube {} AsciiText { string \"no "
          "number\" }",
      kCamera + kBase +
          "Coordinate3 { point [ -1e30 -1e30 0, 1e30 0 0, 0 1e30 0 ] } FaceSet { numVertices 3 } LineSet { numVertices "
          "3 }",
      "PerspectiveCamera { position 0 0 0 nearDistance 0.1 farDistance 10 } Cube {} Text2 { string \"behind\" }",
      kCamera + "Scale { scaleFactor 0 0 0 } Cube {} AsciiText { string \"nowhere\" }",
      kCamera + "Font { size 1e30 } AsciiText { string \"huge\" } Font { size 1e-30 } Text3 { string \"tiny\" }",
      kCamera + "Text2 { string \"\\x01 control\" } AsciiText { string [ \"\", \"  \" ] }",
      "OrthographicCamera { height 0 } Cube {}",
  };
  for (std::size_t i = 0; i < scenes.size(); ++i) {
    writeScene("a.iv", scenes[i]);
    for (const char* file : {"a.svg", "a.pdf", "a.glb", "a.gltf", "a.wrl"}) {
      const bool isPicture = std::string(file) == "a.svg" || std::string(file) == "a.pdf";
      const ToolRun result = run(isPicture ? std::string("render a.iv -o ") + file + " --size 64x48"
                                           : std::string("convert a.iv ") + file);
      EXPECT_EQ(result.status, 0) << "scene " << i << " as " << file << ": " << result.err;
      EXPECT_LE(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
      const std::string bytes = readFile(path(file));
      if (std::string(file) != "a.pdf" && std::string(file) != "a.glb") {
        EXPECT_EQ(bytes.find("nan"), std::string::npos) << "scene " << i << " as " << file;
        EXPECT_EQ(bytes.find("inf"), std::string::npos) << "scene " << i << " as " << file;
      }
    }
    if (has("rsvg-convert")) {
      EXPECT_EQ(rasterise("a.svg").width, 64) << "scene " << i;
    }
  }
}

}  // namespace
