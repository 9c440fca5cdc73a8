#include "ToolRun.h"

namespace {

using Color = std::array<int, 4>;

constexpr Color kWhite{255, 255, 255, 255};
// Half the picture: a square without light, seen by a camera of its own 2 units high.
const std::string kSquare =
    "Separator { OrthographicCamera { position 0 0 5 height 2 nearDistance 1 farDistance 10 } "
    "LightModel { model BASE_COLOR } Material { diffuseColor 1 0 0 } Coordinate3 { point [ -0.5 -0.5 0, 0.5 -0.5 0, "
    "0.5 0.5 0, "
    "-0.5 0.5 0 ] } FaceSet { numVertices 4 } }";

class Render : public ToolTest {};

TEST_F(Render, MakesThePictureOfTheSizeAndTheBackground) {
  writeScene("a.iv", kSquare);
  runWell("render a.iv -o a.png --size 60x40");
  Png png = readPng(path("a.png"));
  EXPECT_EQ(png.width, 60);
  EXPECT_EQ(png.height, 40);
  EXPECT_FALSE(png.hasAlpha);
  EXPECT_EQ(png.at(30, 20), (Color{255, 0, 0, 255}));
  EXPECT_EQ(png.at(0, 0), kWhite);
  EXPECT_EQ(png.at(59, 39), kWhite);

  const std::vector<std::pair<std::string, Color>> backgrounds = {
      {"navy", {0, 0, 128, 255}},      {"'#102030'", {16, 32, 48, 255}}, {"'#abc'", {170, 187, 204, 255}},
      {"1,0.5,0", {255, 128, 0, 255}}, {"Black", {0, 0, 0, 255}},
  };
  for (const auto& [name, color] : backgrounds) {
    runWell("render a.iv -o a.png --size 60x40 --background " + name);
    EXPECT_EQ(readPng(path("a.png")).at(0, 0), color) << name;
  }
  EXPECT_EQ(countFiles(), 2u) << "a temporary file was left";
}

TEST_F(Render, KeepsTransparencyOfBackgroundAndScene) {
  writeScene("a.iv",
             "Separator { OrthographicCamera { position 0 0 5 height 2 } LightModel { model BASE_COLOR } "
             "Material { diffuseColor 0 0 1 transparency 0.5 } Cube { width 1 height 1 depth 0.1 } }");
  for (const char* samples : {"1", "9"}) {
    runWell(std::string("render a.iv -o a.png --size 40x40 --background transparent --samples ") + samples);
    const Png png = readPng(path("a.png"));
    EXPECT_TRUE(png.hasAlpha);
    EXPECT_EQ(png.at(1, 1)[3], 0);
    const Color inside = png.at(20, 20);  // two faces behind one another let a quarter through
    EXPECT_NEAR(inside[3], 191, 2);
    EXPECT_NEAR(inside[2], 255, 2);
    EXPECT_NEAR(inside[0], 0, 2);
  }
  runWell("render a.iv -o a.png --size 40x40 --background '#ff000080'");
  EXPECT_NEAR(readPng(path("a.png")).at(1, 1)[3], 128, 1);
}

// Shades along an edge that cuts pixels: as many as there are samples, however the camera stands in the scene (a render
// cache round a camera must not keep the shift of one sample).
TEST_F(Render, SamplesSoftenEdges) {
  const std::string triangle =
      "LightModel { model BASE_COLOR } Material { diffuseColor 0 0 0 } Coordinate3 { point [ -1 -1 0, 1 -1 0, 1 -0.9 0 "
      "] } "
      "FaceSet { numVertices 3 }";
  const std::string camera = "OrthographicCamera { position 0 0 5 height 2 }";
  writeScene("plain.iv", camera + triangle);
  writeScene("cached.iv", "Separator { renderCaching ON Separator { renderCaching ON " + camera + triangle + "} }");
  for (const char* scene : {"plain.iv", "cached.iv"}) {
    runWell(std::string("render ") + scene + " -o one.png --size 64x64 --samples 1");
    runWell(std::string("render ") + scene + " -o many.png --size 64x64 --samples 16");
    std::vector<int> one;
    std::vector<int> many;
    const Png hard = readPng(path("one.png"));
    const Png soft = readPng(path("many.png"));
    for (int y = 0; y < 64; ++y)
      for (int x = 0; x < 64; ++x) {
        one.push_back(hard.at(x, y)[0]);
        many.push_back(soft.at(x, y)[0]);
      }
    const auto shades = [](std::vector<int> all) {
      std::sort(all.begin(), all.end());
      return std::unique(all.begin(), all.end()) - all.begin();
    };
    EXPECT_EQ(shades(one), 2) << scene;
    EXPECT_GE(shades(many), 15) << scene;
  }
}

// Each side of a cube has its own colour, so a view is known by the colour in the middle.
TEST_F(Render, LooksFromTheSideAsked) {
  writeScene(
      "a.iv",
      "LightModel { model BASE_COLOR } MaterialBinding { value PER_PART } Material { diffuseColor [ 1 0 0, 0 1 0, "
      "0 0 1, 1 1 0, 0 1 1, 1 0 1 ] } Cube {}");
  const Color front{255, 0, 0, 255}, back{0, 255, 0, 255}, left{0, 0, 255, 255}, right{255, 255, 0, 255},
      top{0, 255, 255, 255}, bottom{255, 0, 255, 255};
  const std::vector<std::pair<std::string, Color>> views = {
      {"front", front},
      {"back", back},
      {"left", left},
      {"right", right},
      {"top", top},
      {"bottom", bottom},
      {"0,0,-3", front},
      {"-1,0,0", right},
      {"front --up z", bottom},
      {"top --up z", front},
      {"right --up z", right},
      {"front --orthographic", front},
      {"0,0,-1 --up x", front},
  };
  for (const auto& [view, color] : views) {
    runWell("render a.iv -o a.png --size 64x48 --view " + view);
    EXPECT_EQ(readPng(path("a.png")).at(32, 24), color) << view;
  }
  // With y up, a view from above on the front has the front at the bottom and the top at the top of the picture.
  runWell("render a.iv -o a.png --size 64x64 --view front-top");
  EXPECT_EQ(readPng(path("a.png")).at(32, 14), top);
  EXPECT_EQ(readPng(path("a.png")).at(32, 50), front);
  // From the usual corner, three sides show.
  runWell("render a.iv -o a.png --size 64x64");
  const Png iso = readPng(path("a.png"));
  EXPECT_EQ(iso.at(32, 16), top);
  EXPECT_EQ(iso.at(18, 40), front);
  EXPECT_EQ(iso.at(46, 40), right);
}

// A camera of our own sees everything, whatever the size and place of the scene, and uses the picture well.
TEST_F(Render, SeesTheWholeSceneClosely) {
  const std::vector<std::string> places = {"", "Translation { translation 1000 -500 200 }",
                                           "Scale { scaleFactor 1e-4 1e-4 1e-4 }", "Scale { scaleFactor 1e6 1e6 1e6 }",
                                           "Scale { scaleFactor 20 3 3 }"};
  for (const std::string& place : places) {
    writeScene("a.iv", place + " LightModel { model BASE_COLOR } Material { diffuseColor 0 0 0 } Sphere {} ");
    for (const char* options :
         {"--size 90x60 --view iso", "--size 40x90 --view front", "--size 90x60 --view -1,-2,0.3 --orthographic"}) {
      runWell(std::string("render a.iv -o a.png ") + options);
      const Png png = readPng(path("a.png"));
      int left = png.width, right = -1, top = png.height, bottom = -1;
      for (int y = 0; y < png.height; ++y)
        for (int x = 0; x < png.width; ++x)
          if (png.at(x, y)[0] < 128) {
            left = std::min(left, x);
            right = std::max(right, x);
            top = std::min(top, y);
            bottom = std::max(bottom, y);
          }
      SCOPED_TRACE(place + options);
      EXPECT_GT(left, 0);
      EXPECT_LT(right, png.width - 1);
      EXPECT_GT(top, 0);
      EXPECT_LT(bottom, png.height - 1);
      EXPECT_TRUE(right - left >= 0.85 * png.width || bottom - top >= 0.85 * png.height);
    }
  }
}

// A view asked for counts, whatever cameras the scene has; without one the scene's own does.
TEST_F(Render, AsksTheScenesCameraUnlessToldOtherwise) {
  const std::string cube =
      "LightModel { model BASE_COLOR } MaterialBinding { value PER_PART } Material { diffuseColor [ 1 0 0, 0 1 0, 0 0 "
      "1, 1 1 0, 0 1 1, 1 0 1 ] } Cube {}";
  const std::string camera = "PerspectiveCamera { position 0 0 -5 orientation 0 1 0 3.14159265 }";
  for (const std::string& scene :
       {camera + cube, "Separator { Separator { " + camera + "} " + camera + cube + "}",
        "SceneKit { cameraList NodeKitListPart { containerTypeName \"Switch\" childTypeNames \"CameraKit\" "
        "containerNode "
        "Switch { whichChild 0 CameraKit { camera " +
            camera +
            " } } } childList NodeKitListPart { containerTypeName "
            "\"Separator\" childTypeNames \"ShapeKit\" containerNode Separator { ShapeKit { } } } } " +
            cube}) {
    writeScene("a.iv", scene);
    runWell("render a.iv -o a.png --size 64x48 --view right");
    EXPECT_EQ(readPng(path("a.png")).at(32, 24), (Color{255, 255, 0, 255})) << scene;
    if (scene.rfind("SceneKit", 0) == 0) continue;
    runWell("render a.iv -o a.png --size 64x48");
    EXPECT_EQ(readPng(path("a.png")).at(32, 24), (Color{0, 255, 0, 255})) << scene;
  }
}

// A title with a camera of its own is no part of the scene: it stays where it is, from wherever the scene is seen, and
// the scene gets the rest of the picture.
TEST_F(Render, LeavesTitlesWhereTheyAre) {
  const Color white{255, 255, 255, 255}, red{255, 0, 0, 255}, blue{0, 0, 255, 255};
  const std::string title =
      "LightModel { model BASE_COLOR } Annotation { OrthographicCamera { position 0 0 1 height 2 } "
      "BaseColor { rgb 1 0 0 } Coordinate3 { point [ -0.5 0.6 0, 0.5 0.6 0, 0.5 0.9 0, -0.5 0.9 0 ] } FaceSet {} } ";
  const std::string cube = "BaseColor { rgb 0 0 1 } Scale { scaleFactor 500 500 500 } Cube {}";
  for (const std::string& camera :
       {std::string(), std::string("PerspectiveCamera { position 0 0 4400 nearDistance 1 farDistance 10 } ")}) {
    writeScene("a.iv", "Separator { " + title + camera + cube + " }");
    for (const std::string view : {"", " --view left", " --view top --orthographic"}) {
      SCOPED_TRACE(camera + view);
      runWell("render a.iv -o a.png --size 100x100" + view);
      const Png png = readPng(path("a.png"));
      EXPECT_EQ(png.at(50, 12), red);
      EXPECT_EQ(png.at(28, 12), red);
      EXPECT_EQ(png.at(20, 12), white);
      EXPECT_EQ(png.at(50, 60), blue);
      if (!camera.empty() && view.empty()) continue;
      EXPECT_EQ(png.at(50, 21), white) << "the scene comes too near to the title";
      int lowest = 0;
      for (int y = 0; y < 100; ++y)
        if (png.at(50, y) == blue) lowest = y;
      EXPECT_GT(lowest, 85) << "the scene is too small";
    }
  }
}

// Depth limits that a file happens to hold don't cut the scene, as they don't in a viewer.
TEST_F(Render, MovesDepthLimitsOfTheScenesCamera) {
  writeScene("a.iv",
             "Separator { PerspectiveCamera { position 0 0 100 nearDistance 1 farDistance 10 heightAngle 0.03 } "
             "LightModel { model BASE_COLOR } Material { diffuseColor 0 1 0 } Cube {} }");
  runWell("render a.iv -o a.png --size 32x32");
  EXPECT_EQ(readPng(path("a.png")).at(16, 16), (Color{0, 255, 0, 255}));
}

TEST_F(Render, LightsAndKeepsLights) {
  writeScene("dark.iv", "Material { diffuseColor 1 1 1 } Cube {}");
  writeScene("lit.iv",
             "DirectionalLight { direction 0 0 1 } Material { diffuseColor 1 1 1 ambientColor 0 0 0 } Cube {}");
  runWell("render dark.iv -o a.png --size 32x32 --view front");
  EXPECT_GT(readPng(path("a.png")).at(16, 16)[1], 230);
  runWell("render lit.iv -o a.png --size 32x32 --view front");
  EXPECT_LT(readPng(path("a.png")).at(16, 16)[1], 20) << "a light was added to a scene with lights of its own";
}

// A surface that has no light of its own is seen from below, too, where the lamps above don't reach.
TEST_F(Render, LightsSurfacesFromBelow) {
  writeScene("s.iv",
             "ShapeHints { vertexOrdering COUNTERCLOCKWISE } Material { diffuseColor 1 1 1 } "
             "Coordinate3 { point [ -1 0 1, 1 0 1, 1 0 -1, -1 0 -1 ] } FaceSet {}");
  for (const char* view : {"--view 0,1,-0.4", "--view 1,0.4,0", "--view=-1,0.4,0.3"}) {
    runWell(std::string("render s.iv --size 64x64 -o s.png ") + view);
    EXPECT_GT(readPng(path("s.png")).at(32, 32)[0], 90) << view;
  }
}

TEST_F(Render, ReadsPicturesBesideTheScene) {
  std::filesystem::create_directory(path("sub"));
  // A texture of one red pixel, in the toolkit's own SGI picture format's stead: the field holds it as a file would.
  writeScene("sub/tex.iv", "LightModel { model BASE_COLOR } Texture2 { image 1 1 3 0xff0000 model REPLACE } Cube {}");
  writeScene("sub/a.iv", "File { name \"tex.iv\" }");
  runWell("render sub/a.iv -o a.png --size 32x32 --view front");
  EXPECT_EQ(readPng(path("a.png")).at(16, 16), (Color{255, 0, 0, 255}));
}

TEST_F(Render, RefusesWhatItCannotDo) {
  writeScene("a.iv", kSquare);
  runBadly("render a.iv -o a.png", "no OpenGL", "__EGL_VENDOR_LIBRARY_FILENAMES=/nonexistent");
  runBadly("render a.iv -o a.png --size 20000x20000 --scale 2", "out of range");
  runBadly("render a.iv -o a.png --frames 3", "one place for their number");
  runBadly("render a.iv -o a%d%s.png --frames 3", "one place for their number");
  runBadly("render a.iv -o nowhere/a.png", "nowhere/a.png");
  runBadly("render a.iv -o .", "directory");
  runBadly("render a.iv -o /dev/full", "No space");
  EXPECT_EQ(countFiles(), 1u);

  // A failure leaves an earlier picture as it was.
  writeFile("old.png", "old");
  runBadly("render missing.iv -o old.png", "no such file");
  EXPECT_EQ(readFile(path("old.png")), "old");
}

TEST_F(Render, EmptySceneIsBackground) {
  writeScene("a.iv", "");
  runWell("render a.iv -o a.png --size 8x8");
  EXPECT_EQ(readPng(path("a.png")).at(4, 4), kWhite);
}

// The physical size of pixels, in pixels a metre (11811 are 300 an inch).
TEST_F(Render, NotesTheResolution) {
  writeScene("a.iv", kSquare);
  runWell("render a.iv -o a.png --size 8x8 --dpi 300");
  const std::string bytes = readFile(path("a.png"));
  const std::size_t at = bytes.find("pHYs");
  ASSERT_NE(at, std::string::npos);
  EXPECT_EQ(bytes.substr(at + 4, 9), std::string("\0\0\x2e\x23\0\0\x2e\x23\x01", 9));
  runWell("render a.iv -o a.png --size 8x8");
  EXPECT_EQ(readFile(path("a.png")).find("pHYs"), std::string::npos);
}

// An enlarged picture, made small again, is the picture.
TEST_F(Render, EnlargesAllThatIsMeasuredInPixels) {
  writeScene(
      "a.iv",
      "OrthographicCamera { position 0 0 5 height 2 } LightModel { model BASE_COLOR } BaseColor { rgb 0 0 0 } "
      "DrawStyle { lineWidth 3 pointSize 8 } Coordinate3 { point [ -0.8 0.7 0, 0.8 0.7 0, 0 0.3 0, -0.8 0 0, 0.8 0 0 ] "
      "} "
      "LineSet { numVertices 2 } PointSet { startIndex 2 numPoints 1 } Separator { DrawStyle { linePattern 0xff00 "
      "lineWidth 5 } LineSet { startIndex 3 numVertices 2 } } Separator { DrawStyle {} Translation { translation 0 "
      "-0.7 0 } "
      "LineSet { startIndex 3 numVertices 2 } } ");
  runWell("render a.iv -o a.png --size 120x80");
  runWell("render a.iv -o b.png --size 120x80 --scale 3");
  const Png small = readPng(path("a.png"));
  const Png large = readPng(path("b.png"));
  ASSERT_EQ(large.width, 360);
  ASSERT_EQ(large.height, 240);
  // The ink of each third of the picture: a line and a point, a pattern, a line of the usual width.
  for (int third = 0; third < 3; ++third) {
    const auto inkOf = [third](const Png& png, int scale) {
      double ink = 0.0;
      for (int y = third * 27 * scale; y < std::min((third + 1) * 27 * scale, png.height); ++y)
        for (int x = 0; x < png.width; ++x) ink += (255 - png.at(x, y)[0]) / 255.0;
      return ink / scale / scale;
    };
    const double expected = inkOf(small, 1);
    EXPECT_GT(expected, 30.0);
    EXPECT_NEAR(inkOf(large, 3), expected, 0.25 * expected) << "third " << third;
  }
}

// A square that a clock of the scene moves to the right, and one that the camera goes round.
TEST_F(Render, DrawsTheFramesOfAnAnimation) {
  writeScene("a.iv",
             "OrthographicCamera { position 0 0 5 height 2 } LightModel { model BASE_COLOR } BaseColor { rgb 0 0 0 } "
             "Translation { translation 0 0 0 = ComposeVec3f { x 0 = ElapsedTime { } . timeOut } . vector } "
             "Cube { width 0.5 height 2 depth 0.1 }");
  runWell("render a.iv -o f%02d.png --size 40x40 --frames 3 --fps 4 --samples 1");
  EXPECT_EQ(countFiles(), 4u);
  const auto leftOf = [](const Png& png) {
    int x = 0;
    while (x < png.width && png.at(x, 20)[0] > 128) ++x;
    return x;
  };
  EXPECT_NEAR(leftOf(readPng(path("f00.png"))), 15, 1);
  EXPECT_NEAR(leftOf(readPng(path("f01.png"))), 20, 1);
  EXPECT_NEAR(leftOf(readPng(path("f02.png"))), 25, 1);

  runWell("render a.iv -o f.apng --size 40x40 --frames 3 --fps 4 --samples 1");
  const std::string bytes = readFile(path("f.apng"));
  EXPECT_EQ(bytes.substr(bytes.find("acTL") + 4, 4), std::string("\0\0\0\x03", 4));
  EXPECT_NE(bytes.find("fdAT"), std::string::npos);
  EXPECT_EQ(readPng(path("f.apng")).rgba, readPng(path("f00.png")).rgba) << "other programs see the first frame";

  // Four sides of a cube, a quarter turn each; with a camera of its own and with one of the tool.
  const std::string cube =
      "LightModel { model BASE_COLOR } MaterialBinding { value PER_PART } Material { diffuseColor [ 1 0 0, 0 1 0, 0 0 "
      "1, "
      "1 1 0, 0 1 1, 1 0 1 ] } Cube {}";
  writeScene("b.iv", cube);
  writeScene("c.iv", "PerspectiveCamera { position 0 0 6 } " + cube);
  for (const char* options : {"b.iv --view front", "c.iv"}) {
    runWell(std::string("render ") + options + " -o t%d.png --size 40x40 --frames 4 --turn 360 --samples 1");
    const Color sides[] = {{255, 0, 0, 255}, {0, 0, 255, 255}, {0, 255, 0, 255}, {255, 255, 0, 255}};
    for (int i = 0; i < 4; ++i) EXPECT_EQ(readPng(path("t" + std::to_string(i) + ".png")).at(20, 20), sides[i]) << i;
  }
}

}  // namespace
