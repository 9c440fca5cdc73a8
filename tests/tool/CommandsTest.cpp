#include <nlohmann/json.hpp>

#include "ToolRun.h"

namespace {

class Commands : public ToolTest {};

TEST_F(Commands, ExplainThemselvesAndTheirMisuse) {
  EXPECT_EQ(run("--version").out, "ormelle 8.6.0\n");
  for (const char* command : {"", "render", "info", "geometry", "convert"}) {
    const ToolRun help = run(std::string(command) + " --help");
    EXPECT_EQ(help.status, 0);
    EXPECT_NE(help.out.find("Usage"), std::string::npos);
  }
  writeScene("a.iv", "Cube {}");
  for (const char* misuse : {"",
                             "paint a.iv",
                             "render a.iv",
                             "render -o a.png",
                             "render a.iv -o a.png --size 0x10",
                             "render a.iv -o a.png --size 10",
                             "render a.iv -o a.png --view sideways",
                             "render a.iv -o a.png --view 0,0,0",
                             "render a.iv -o a.png --view front-back",
                             "render a.iv -o a.png --view 1,nan,0",
                             "render a.iv -o a.png --background mauve-ish",
                             "render a.iv -o a.png --background 2,0,0",
                             "render a.iv -o a.png --samples 0",
                             "render a.iv -o a.png --samples many",
                             "render a.iv -o a.png --up w",
                             "render a.iv -o a.png --up z",
                             "geometry a.iv",
                             "geometry a.iv -o a.ply --format obj",
                             "convert a.iv",
                             "info",
                             "info a.iv b.iv"}) {
    const ToolRun result = run(misuse);
    EXPECT_EQ(result.status, 2) << misuse;
    EXPECT_EQ(result.out, "") << misuse;
    EXPECT_NE(result.err, "") << misuse;
  }
  EXPECT_EQ(countFiles(), 1u);
}

TEST_F(Commands, RefuseFilesThatAreNoScenes) {
  std::string noise;
  uint32_t state = 12345;
  for (int i = 0; i < 4000; ++i) noise += static_cast<char>((state = state * 1664525u + 1013904223u) >> 24);
  std::string deep;
  for (int i = 0; i < 200000; ++i) deep += "Group{";
  writeFile("empty.iv", "");
  writeFile("noise.iv", noise);
  writeFile("noise-behind-header.iv", "#Inventor V2.1 ascii\n" + noise);
  writeFile("noise-binary.iv", "#Inventor V2.1 binary   \n" + noise);
  writeScene("cut.iv", "Separator { Cube { width");
  writeScene("unknown.iv", "Separator { Cube {} PoSomething { a 1 } }");
  writeScene("unknown-with-fields.iv", "Separator { Cube {} DEF x PoSomething { fields [ SFFloat a ] a 1 } }");
  writeScene("value.iv", "Cube { width wide }");
  writeScene("rest.iv", "Cube {} }");
  writeScene("picture.iv", "Texture2 { filename \"missing.png\" } Cube {}");
  writeScene("inner.iv", "File { name \"missing.iv\" }");
  writeScene("deep.iv", deep);
  std::filesystem::create_directory(path("folder.iv"));
  const std::vector<std::pair<std::string, std::string>> files = {
      {"missing.iv", "no such file"},
      {"empty.iv", "not a scene"},
      {"noise.iv", "not a scene"},
      {"noise-behind-header.iv", ""},
      {"noise-binary.iv", ""},
      {"cut.iv", "end of file"},
      {"unknown.iv", "unknown node PoSomething"},
      {"unknown-with-fields.iv", "unknown node PoSomething"},
      {"value.iv", "width"},
      {"rest.iv", "}"},
      {"picture.iv", "missing.png"},
      {"inner.iv", "missing.iv"},
      {"deep.iv", "nested"},
      {"folder.iv", "directory"},
  };
  const std::size_t before = countFiles();
  for (const auto& [file, part] : files) {
    SCOPED_TRACE(file);
    runBadly("info " + file, file);
    runBadly("info --json " + file, part);
    runBadly("render " + file + " -o o.png", part);
    runBadly("geometry " + file + " -o o.ply", part);
    runBadly("convert " + file + " o.iv", part);
  }
  EXPECT_EQ(countFiles(), before) << "an output file was left";
}

// A count that lies: 2,000,000,000 colours.
TEST_F(Commands, RefuseCountsThatLie) {
  writeScene("a.iv", "Material { diffuseColor [ 1 0 0, 0 1 0, 0 0 1 ] }");
  runWell("convert --binary a.iv b.iv");
  std::string bytes = readFile(path("b.iv"));
  const std::size_t count = bytes.find(std::string("\0\0\0\3", 4));
  ASSERT_NE(count, std::string::npos);
  for (const char* lie : {"\x77\x35\x94\x00", "\x0f\xff\xff\xff", "\xff\xff\xff\xff"}) {
    bytes.replace(count, 4, std::string(lie, 4));
    writeFile("c.iv", bytes);
    runBadly("info c.iv", "c.iv");
  }
}

// However a file is cut or damaged, the tool ends by itself, well or with one sentence.
TEST_F(Commands, SurviveDamagedFiles) {
  writeScene(
      "good.iv",
      "Separator { Material { diffuseColor [ 1 0 0, 0 1 0 ] } MaterialBinding { value PER_FACE } Coordinate3 { point [ "
      "0 0 0, 1 0 0, 1 1 "
      "0, 0 1 0 ] } IndexedFaceSet { coordIndex [ 0 1 2 -1 0 2 3 -1 ] } Separator { Translation { translation 1 2 3 } "
      "QuadMesh { verticesPerRow 2 verticesPerColumn 2 } } Text3 { string [ \"a\", \"b\" ] } }");
  runWell("convert --binary good.iv good-binary.iv");
  uint32_t state = 99;
  const auto random = [&state](std::size_t below) {
    state = state * 1664525u + 1013904223u;
    return static_cast<std::size_t>(state >> 8) % below;
  };
  for (const char* source : {"good.iv", "good-binary.iv"}) {
    const std::string good = readFile(path(source));
    for (int round = 0; round < 25; ++round) {
      std::string bad = good;
      if (round % 2 == 0)
        bad.resize(25 + random(good.size() - 25));
      else
        for (int change = 0; change < 3; ++change) bad[25 + random(bad.size() - 25)] = static_cast<char>(random(256));
      writeFile("bad.iv", bad);
      const ToolRun result = run("info bad.iv");
      EXPECT_TRUE(result.status == 0 || result.status == 1) << source << " round " << round << "\n" << result.err;
      EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), result.status) << result.err;
    }
  }
}

TEST_F(Commands, InfoCountsWhatIsOutsideKits) {
  writeScene("a.iv",
             "Separator { Translation { translation 10 0 0 } Cube {} Coordinate3 { point [ 0 0 0, 3 4 0 ] } LineSet {} "
             "PointSet {} "
             "Text2 { string \"x\" } Text3 { string \"\" } }");
  const auto json = nlohmann::json::parse(runWell("info --json a.iv").out);
  EXPECT_TRUE(json["kits"].empty());
  EXPECT_EQ(json["total"]["triangles"], 0);
  EXPECT_TRUE(json["total"]["bbox"].is_null());
  const auto& outside = json["outside"];
  EXPECT_EQ(outside["triangles"], 12);
  EXPECT_NEAR(outside["area"].get<double>(), 24.0, 1e-9);
  EXPECT_EQ(outside["lines"], 1);
  EXPECT_NEAR(outside["length"].get<double>(), 5.0, 1e-9);
  EXPECT_EQ(outside["points"], 2);
  EXPECT_EQ(outside["texts"], 1);
  EXPECT_EQ(outside["bbox"], (nlohmann::json{9.0, -1.0, -1.0, 13.0, 4.0, 1.0}));
  EXPECT_NE(runWell("info a.iv").out.find("outside kits"), std::string::npos);
}

TEST_F(Commands, ConvertWritesTheSameScene) {
  const std::string scene =
      "DEF top Separator { DEF m Material { diffuseColor 0.1 0.2 0.3 } Cube { width 7 } USE m Sphere {} }";
  writeScene("a.iv", scene);
  runWell("convert a.iv b.iv");
  runWell("convert --binary b.iv c.iv");
  runWell("convert c.iv d.iv");
  EXPECT_EQ(readFile(path("b.iv")).rfind("#Inventor V2.1 ascii", 0), 0u);
  EXPECT_EQ(readFile(path("c.iv")).rfind("#Inventor V2.1 binary", 0), 0u);
  EXPECT_EQ(readFile(path("b.iv")), readFile(path("d.iv")));
  EXPECT_NE(readFile(path("d.iv")).find("DEF m"), std::string::npos);

  // A link is followed, and the file it leads to replaced.
  std::filesystem::create_symlink("b.iv", path("link.iv"));
  writeFile("b.iv", "old");
  runWell("convert a.iv link.iv");
  EXPECT_TRUE(std::filesystem::is_symlink(path("link.iv")));
  EXPECT_EQ(readFile(path("b.iv")), readFile(path("d.iv")));

  // A scene may be written onto itself.
  runWell("convert a.iv a.iv");
  EXPECT_EQ(readFile(path("a.iv")), readFile(path("d.iv")));

  writeFile("v.wrl", "#VRML V2.0 utf8\nShape { geometry Box {} }\n");
  runWell("convert v.wrl w.wrl");
  EXPECT_EQ(readFile(path("w.wrl")).rfind("#VRML V2.0 utf8", 0), 0u);
  runWell("info w.wrl");
  runBadly("convert a.iv /dev/full", "No space");
  runBadly("convert a.iv nowhere/b.iv", "nowhere/b.iv");
}

}  // namespace
