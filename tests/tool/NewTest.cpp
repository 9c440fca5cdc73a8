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
    runWell("render " + kind + ".iv -o " + kind + ".png --size 160x120 --samples 1");
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
