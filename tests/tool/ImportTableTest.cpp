// Tables in text: how they are read, and the charts that they become.

#include <cmath>

#include "ImportForeignSamples.h"
#include "ImportedScene.h"

namespace {

using Numbers = std::vector<double>;

class ImportTable : public ImportTest {
 protected:
  bool has(const std::string& scene, const std::string& text) const { return scene.find(text) != std::string::npos; }
};

// Dates, decimal commas, a separator within quotes, missing values, thousands.
TEST_F(ImportTable, MakesCurvesOverTime) {
  const std::string scene = imported("gauge.csv", sampleSeriesCsv());
  EXPECT_EQ(numbersAfter(scene, "# x coordinates"), (Numbers{0, 1, 2, 4}));
  const Numbers level = valuesOf(scene, "level; at noon (m)"), flow = valuesOf(scene, "flow");
  ASSERT_EQ(level.size(), 4U);
  ASSERT_EQ(flow.size(), 4U);
  EXPECT_TRUE(std::isnan(level[1]));
  EXPECT_EQ(level[2], 1.75);
  EXPECT_EQ(flow[1], 12.25);
  EXPECT_TRUE(std::isnan(flow[2]));
  EXPECT_EQ(flow[3], -1000.5);
  EXPECT_TRUE(has(scene, "PoTimeAxis"));
  EXPECT_TRUE(has(scene, "\"2024-03-01 00:00:00\""));
  EXPECT_TRUE(has(scene, "\"gauge\""));
  EXPECT_TRUE(has(scene, "yValuesIndex 1"));
  EXPECT_TRUE(has(said(), "day, month, year")) << said();
}

// One table in other dresses.
TEST_F(ImportTable, TakesSeparatorsHeadersAndDatesAsTheyCome) {
  struct Case {
    const char *name, *text;
  };
  for (const Case& each :
       {Case{"commas", "x,y\n1,2.5\n2,3.5\n4,-1\n"}, Case{"tabs", "x\ty\n1\t2,5\n2\t3,5\n4\t-1\n"},
        Case{"semicolons", "x;y\r\n1;2,5\r\n2;3,5\r\n4;-1\r\n"},
        Case{"blanks", "# made by hand\n# x y\n1 2.5\n2   3.5\n4 -1"},
        Case{"quotes", "\xEF\xBB\xBF\"x\",\"y\"\n\"1\",\"2.5\"\n\"2\",\"3.5\"\n\"4\",\"-1\"\n"},
        Case{"units", "x,y\nm,kg\n1,2.5\n2,3.5\n4,-1\n"}, Case{"falling", "x,y\n4,-1\n2,3.5\n1,2.5\n"}}) {
    SCOPED_TRACE(each.name);
    const std::string scene = imported("a.csv", each.text);
    EXPECT_EQ(numbersAfter(scene, "# x coordinates"), (Numbers{1, 2, 4}));
    const bool hasUnits = std::string(each.name) == "units";
    EXPECT_EQ(valuesOf(scene, hasUnits ? "y (kg)" : "y"), (Numbers{2.5, 3.5, -1}));
  }
  for (const char* dates : {"2024-02-28,1\n2024-02-29,2\n2024-03-01,3\n", "28/02/2024,1\n29/02/2024,2\n01/03/2024,3\n",
                            "2/28/2024,1\n2/29/2024,2\n3/1/2024,3\n", "28 Feb 2024,1\n29 Feb 2024,2\n1 March 2024,3\n",
                            "2024-02-28T00:00Z,1\n2024-02-29T00:00Z,2\n2024-03-01T00:00Z,3\n"}) {
    SCOPED_TRACE(dates);
    const std::string scene = imported("a.csv", dates);
    EXPECT_EQ(numbersAfter(scene, "# x coordinates"), (Numbers{0, 1, 2}));
    EXPECT_TRUE(has(scene, "2024-02-28"));
  }
  // Hours of a day, also beyond midnight in another zone.
  const std::string scene = imported("a.csv", "t,v\n2024-01-01 23:00:00+01:00,1\n2024-01-01T23:00:00,2\n");
  ASSERT_EQ(numbersAfter(scene, "# x coordinates").size(), 2U);
  EXPECT_NEAR(numbersAfter(scene, "# x coordinates")[1] - numbersAfter(scene, "# x coordinates")[0], 1.0 / 24, 1e-5);
}

TEST_F(ImportTable, SumsTablesUpAsBars) {
  const std::string scene = imported("aboard.csv", sampleTableCsv());
  EXPECT_TRUE(has(scene, "PoMultipleHistogram"));
  EXPECT_TRUE(has(scene, "\"3rd, or crew\""));
  EXPECT_TRUE(has(scene, "\"sex: f\""));
  for (const char* number : {"10", "20", "30", "4", "8"}) EXPECT_TRUE(has(scene, number));
  EXPECT_TRUE(has(said(), "count is summed for each class and sex")) << said();

  EXPECT_TRUE(has(imported("a.csv", "fruit,kg\napples,1.5\npears,2.5\n"), "PoSingleHistogram"));
  EXPECT_TRUE(has(imported("a.csv", "name\nanna\nbert\nanna\n"), "PoSingleHistogram"));
  EXPECT_TRUE(has(said(), "rows are counted")) << said();
}

TEST_F(ImportTable, MakesGridsAndSurfacesOfPlaces) {
  const std::string scene = imported("bay.csv", sampleGridCsv());
  EXPECT_EQ(numbersAfter(scene, "# x coordinates"), (Numbers{0, 100, 200, 300}));
  EXPECT_EQ(numbersAfter(scene, "# y coordinates"), (Numbers{0, 50, 100}));
  const Numbers depth = valuesOf(scene, "depth of water");
  ASSERT_EQ(depth.size(), 12U);
  EXPECT_EQ(depth[5], 21);
  EXPECT_TRUE(std::isnan(depth[11])) << "the row that isn't there";
  EXPECT_TRUE(has(scene, "\"shore\""));

  const std::string scattered =
      imported("a.csv", "lon,lat,name,height\n1,0,a,5\n4,1,b,6\n2,3,c,7\n5,5,d,8\n0.5,4,e,9\n");
  EXPECT_EQ(valuesOf(scattered, "height"), (Numbers{5, 6, 7, 8, 9}));
  EXPECT_TRUE(has(scattered, "\"e\""));
  EXPECT_TRUE(has(imported("a.csv", "a,b\n3,1\n1,2\n2,5\n7,1\n"), "PoCurve3")) << "marks, as x goes up and down";
  EXPECT_TRUE(has(said(), "neither rises nor falls"));
}

TEST_F(ImportTable, SaysWhatItMakesOfDoubtfulFields) {
  imported("a.csv", "x,y\n1,2\n2,3\n3,4\n4,about 5\n5,6\n6,7\n7,8,9\n8,\n");
  EXPECT_TRUE(has(said(), "1 field of the column y is no number (\"about 5\")")) << said();
  EXPECT_TRUE(has(said(), "1 line has not the 2 fields of the others")) << said();
  imported("a.csv", "name,kg\nM\xFCller,1\nSchmidt,2\n");
  EXPECT_TRUE(has(said(), "Latin-1")) << said();
  for (const auto& [text, part] : {std::pair<std::string, const char*>{"a,b\n", "header"},
                                   {"a,\"b\nc", "no end"},
                                   {"\n\n", ""},
                                   {std::string("a,b\n1,\0", 7), "bytes"},
                                   {"\xFF\xFE"
                                    "a",
                                    "UTF-16"},
                                   {std::string(20000, ','), "10000 fields"}}) {
    writeFile("bad.csv", text);
    runBadly("convert bad.csv a.iv", part);
  }
}

}  // namespace
