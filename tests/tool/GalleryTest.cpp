// What the gallery's programs share. Present where the gallery is built.

#ifdef ORMELLE_GALLERY_INDEX

#include <Gallery.h>

#include <cmath>
#include <cstdlib>

#include "ToolRun.h"

namespace {

class Gallery : public ToolTest {};

TEST_F(Gallery, PageShowsEveryPictureWithItsText) {
  writeFile("02_b.json",
            R"({"title": "A < B & \"C\"", "caption": "<script>", "source": "Here", "licence": "public domain",
    "program": "02_x.cpp", "build_seconds": 0.0125, "seconds": 1.5})");
  writeFile("02_b.png", "");
  writeFile("01_a.json", "{}");
  writeFile("01_a.png", "");
  writeFile("03_without_picture.json", "{}");
  writeFile("04_broken.json", "{");
  writeFile("04_broken.png", "");
  // A scene: it lies in a folder of its own, the tool has told of it, and the data set has the source.
  std::filesystem::create_directories(path("scenes"));
  std::filesystem::create_directories(path("data/set"));
  writeFile("scenes/05_s.iv", "");
  writeFile("scenes/05_s.json", R"({"title": "S", "data": "set"})");
  writeFile("data/set/set.json", R"({"source": "Surveyed", "licence": "free"})");
  writeFile("05_s.info.json", R"({"total": {"triangles": 7, "lines": 0, "points": 2, "rebuild_ms": 3.5}})");
  writeFile("05_s.png", std::string(16, ' ') + std::string("\0\0\x06\x40\0\0\x04\xB0", 8));
  setenv("ORMELLE_DATA_DIR", path("data").c_str(), 1);
  const std::string command = std::string("'") + ORMELLE_GALLERY_INDEX + "' '" + path("") + "'";
  ASSERT_EQ(std::system(command.c_str()), 0);
  const std::string page = readFile(path("index.html"));
  EXPECT_NE(page.find("A &lt; B &amp; &quot;C&quot;"), std::string::npos);
  EXPECT_EQ(page.find("<script>"), std::string::npos);
  EXPECT_NE(page.find("public domain"), std::string::npos);
  EXPECT_NE(page.find("1.50 s"), std::string::npos);
  EXPECT_NE(page.find("12.5 ms"), std::string::npos);
  EXPECT_NE(page.find("examples/02_x.cpp"), std::string::npos);
  EXPECT_NE(page.find("href=\"scenes/05_s.iv\""), std::string::npos);
  EXPECT_NE(page.find("Surveyed"), std::string::npos);
  EXPECT_NE(page.find("7 triangles, 2 points, rebuilt in 3.5 ms"), std::string::npos);
  EXPECT_NE(page.find("width=\"1600\" height=\"1200\""), std::string::npos);
  EXPECT_LT(page.find("01_a.png"), page.find("02_b.png"));
  EXPECT_EQ(page.find("03_without"), std::string::npos);
  EXPECT_EQ(page.find("04_broken"), std::string::npos);
}

TEST_F(Gallery, ReadsDataSets) {
  std::filesystem::create_directory(path("set"));
  const float values[6] = {0, 1, 2, 3, 4, 5};
  writeFile("set/v.raw", std::string(reinterpret_cast<const char*>(values), sizeof(values)));
  writeFile("set/cut.raw", "12345");
  writeFile("set/set.json", R"({"title": "T", "source": "S", "licence": "L", "dims": [3, 2]})");
  writeFile("set/set.csv", "name,\"a, b\",c\nx,\"1.5\",\r\n\"q \"\"r\"\"\",2e3,7\n");
  setenv("ORMELLE_DATA_DIR", path("").c_str(), 1);
  const gallery::DataSet set("set");
  EXPECT_EQ(set.source(), "S");
  EXPECT_EQ(set.dims(), (std::vector<int>{3, 2}));
  EXPECT_EQ(gallery::lastIndexFastest(set.floats("v"), 3, 2), (std::vector<float>{0, 3, 1, 4, 2, 5}));
  EXPECT_EQ(gallery::lastIndexFastest(set.floats("v"), 1, 3, 1, 2), set.floats("v"));
  EXPECT_THROW(gallery::lastIndexFastest(set.floats("v"), 2, 2), std::runtime_error);
  const gallery::Table table = set.table();
  EXPECT_EQ(table.texts("name"), (std::vector<std::string>{"x", "q \"r\""}));
  EXPECT_EQ(table.numbers("a, b"), (std::vector<float>{1.5f, 2000.0f}));
  EXPECT_TRUE(std::isnan(table.numbers("c")[0]));
  EXPECT_EQ(table.numbers("c")[1], 7.0f);
  EXPECT_THROW(table.numbers("name"), std::runtime_error);
  EXPECT_THROW(table.numbers("d"), std::runtime_error);
  EXPECT_THROW(set.floats("cut"), std::runtime_error);
  EXPECT_THROW(set.ints("missing"), std::runtime_error);
  EXPECT_THROW(gallery::DataSet("missing"), std::runtime_error);
}

}  // namespace

#endif
