#include <cstdlib>
#include <nlohmann/json.hpp>
#include <sstream>

#include "ToolRun.h"

using NewTest = ToolTest;

TEST_F(NewTest, EveryKindIsListedAndDraws) {
  std::istringstream list(runWell("new --list").out);
  std::string inDocs;
  int count = 0;
  for (std::string line; std::getline(list, line); ++count) {
    inDocs += "    " + line + "\n";
    const std::string kind = line.substr(0, line.find(' '));
    SCOPED_TRACE(kind);
    EXPECT_GT(line.size(), kind.size() + 20) << "no word on what it shows";
    runWell("new " + kind + " " + kind + ".iv");
    EXPECT_EQ(runWell("new " + kind).out, readFile(path(kind + ".iv")));
    const auto built = nlohmann::json::parse(runWell("info --json " + kind + ".iv").out);
    ASSERT_FALSE(built["kits"].empty());
    for (const auto& kit : built["kits"])
      EXPECT_GT(kit["triangles"].get<int>() + kit["lines"].get<int>() + kit["points"].get<int>() +
                    static_cast<int>(kit["texts"].size()),
                0)
          << kit["type"];
    EXPECT_EQ(runWell("render " + kind + ".iv -o " + kind + ".png --size 160x120 --samples 1").err, "");
    const Png png = readPng(path(kind + ".png"));
    int drawn = 0;
    for (int y = 0; y < png.height; ++y)
      for (int x = 0; x < png.width; ++x)
        if (png.at(x, y) != std::array{255, 255, 255, 255}) ++drawn;
    EXPECT_GT(drawn, 160 * 120 / 20);
    // Shades become bitmaps, which a note tells.
    EXPECT_EQ(run("render " + kind + ".iv -o " + kind + ".svg").status, 0);
    EXPECT_NE(readFile(path(kind + ".svg")).find("</text>"), std::string::npos);
  }
  EXPECT_GE(count, 13);
  const char* sources = std::getenv("ORMELLE_SOURCE_DIR");
  ASSERT_NE(sources, nullptr);
  EXPECT_NE(readFile(std::string(sources) + "/docs/tool.md").find("\n\n" + inDocs + "\n"), std::string::npos)
      << "docs/tool.md doesn't list these kinds:\n"
      << inDocs;
}

// Edits that leave a kit with nothing to show, or without its colours, and what is said about them.
TEST_F(NewTest, EditsThatShowNothingGetASentence) {
  struct Edit {
    const char* kind;
    const char* from;
    const char* to;
    const char* sentence;
  };
  const Edit edits[] = {
      {"map", "valuesIndex 0", "valuesIndex 3",
       "PoMeshFilled has no colours of its own: the mesh has no set of values 3, only 0 \"height\""},
      {"map", "COLOR_MAPPING", "COLOR_CONTOURING",
       "has no colours of its own: there is no list of isovalues before it"},
      {"map", "PoMeshFilled {", "PoMeshSkin {", "PoMeshSkin shows nothing: it is for volumes, and the mesh is none"},
      {"contours", "isovaluesList [ 350, 400, 450, 500, 550, 600, 650, 700 ]", "isovaluesList [ 5000, 6000 ]",
       "PoMeshContouring shows nothing: the isovalues, 5000 to 6000, lie outside the values \"height\", 355 to 738"},
      {"level", "levelValue 700", "levelValue 7000",
       "PoMeshLevelSurf shows nothing: its levelValue 7000 lies outside the values \"temperature\", 60 to 1020"},
      {"section", "plane 0 1 0 2.3", "plane 0 1 0 23", "PoMeshCrossSection shows nothing: its plane meets no cell"},
      {"flow", "vecsIndex 0", "vecsIndex 1", "PoStreamLine shows nothing: the mesh has no set of vectors 1, only 0"},
      {"flow", "maxLength 9.5", "startPoints 99 99 0",
       "PoStreamLine shows nothing: nothing flows from its startPoints"},
      {"timeseries", "endDate \"31-12-2024\"", "endDate \"2024-12-31\"", "PoTimeAxis shows nothing"},
  };
  for (const Edit& edit : edits) {
    SCOPED_TRACE(std::string(edit.kind) + ": " + edit.to);
    std::string scene = runWell(std::string("new ") + edit.kind).out;
    const std::size_t place = scene.find(edit.from);
    ASSERT_NE(place, std::string::npos);
    scene.replace(place, std::string(edit.from).size(), edit.to);
    writeFile("edited.iv", scene);
    for (const char* picture : {"edited.png", "edited.svg"}) {
      const ToolRun told = run(std::string("render edited.iv --size 80x60 -o ") + picture);
      EXPECT_EQ(told.status, 0);
      EXPECT_NE(told.err.find("edited.iv: "), std::string::npos) << told.err;
      EXPECT_NE(told.err.find(edit.sentence), std::string::npos) << told.err;
    }
  }
}

TEST_F(NewTest, OverwritesOnlyByForce) {
  writeFile("mine.iv", "precious");
  runBadly("new map mine.iv", "mine.iv: this file is there already");
  EXPECT_EQ(readFile(path("mine.iv")), "precious");
  runWell("new map mine.iv --force");
  EXPECT_EQ(readFile(path("mine.iv")).rfind("#Inventor", 0), 0u);
  runBadly("new sculpture", "no kind of scene called sculpture; there are bars");
  runBadly("new map nowhere/map.iv", "nowhere/map.iv: ");
  EXPECT_EQ(run("new").status, 2);
  EXPECT_EQ(run("new map --list").status, 2);
}
