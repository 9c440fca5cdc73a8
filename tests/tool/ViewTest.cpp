// The viewer itself, in a display of its own that no screen shows, with clicks and keys from outside.

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "ToolRun.h"

namespace {

// Two cells side by side with values that rise from 0 to 10 along x; `color` at both ends.
std::string twoCells(const std::string& color) {
  return "PoRegularCartesianGrid2D { mesh 3 2 # num_x, num_y\n 0 0\n 2 2\n 0 # 2D mesh\n 0 # number of string "
         "data-set\n"
         " 2 # number of scalar data-set\n 0 # number of vector data-set\n"
         " # set of scalars, index 0, binding per node\n \"heat\"\n 0 0 5 5 10 10\n"
         " # set of scalars, index 1, binding per cell\n \"rock\"\n 7 8\n } "
         "LightModel { model BASE_COLOR } "
         "PoLinearDataMapping { value1 0 color1 " +
         color + " value2 10 color2 " + color + " } PoMeshFilled { valuesIndex 0 coloringType COLOR_MAPPING }";
}

constexpr const char* kDisplay = "xvfb-run -a -s '-screen 0 640x480x24'";

}  // namespace

class ViewTest : public ToolTest {
 protected:
  void SetUp() override {
#ifndef ORMELLE_HAS_VIEW
    GTEST_SKIP() << "the viewer isn't built";
#endif
    if (std::system("command -v xvfb-run >/dev/null && command -v xdotool >/dev/null") != 0)
      GTEST_SKIP() << "there is no xvfb-run or no xdotool";
  }

  // What the viewer tells of a pixel of s.iv, in a picture of 200 x 200.
  std::string tell(const std::string& pixel) { return run("view s.iv --size 200x200 --pick " + pixel, kDisplay).out; }
};

TEST_F(ViewTest, SaysInASentenceWhyItShowsNothing) {
  writeScene("s.iv", "Cube {}");
  runBadly("view s.iv", "there is no display", "env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM");
  runBadly("view s.iv", "the display can't be opened", "DISPLAY=:4711");
  runBadly("view none.iv", "none.iv: there is no such file", kDisplay);
  writeScene("e.iv", "Separator { Coordinate3 { point 1 2 3 } }");
  runBadly("view e.iv", "e.iv: there is nothing to draw", kDisplay);
  EXPECT_EQ(run("view").status, 2);
  EXPECT_EQ(run("view s.iv --pick here").status, 2);
}

TEST_F(ViewTest, DrawsAndTellsWhatIsUnderAPixel) {
  writeScene("s.iv", twoCells("1 0 0"));
  const ToolRun told = run("view s.iv --size 200x200 --screenshot s.png --pick 146,60", kDisplay);
  EXPECT_EQ(told.status, 0) << told.err;
  const Png png = readPng(path("s.png"));
  ASSERT_EQ(png.width, 200);
  ASSERT_EQ(png.height, 200);
  EXPECT_EQ(png.at(100, 100), (std::array{255, 0, 0, 255}));
  EXPECT_EQ(png.at(2, 2), (std::array{255, 255, 255, 255}));
  // Three quarters of the way to the right and in the upper half: the second cell, whose upper nodes are 3 and 5.
  float heat = 0;
  float x = 0;
  float y = 0;
  EXPECT_EQ(std::sscanf(told.out.c_str(), "PoMeshFilled, cell 1, nearest node %*d, \"heat\" %f, \"rock\" 8 at %f %f 0",
                        &heat, &x, &y),
            3)
      << told.out;
  EXPECT_NEAR(x, 1.5f, 0.03f) << told.out;
  EXPECT_NEAR(y, 1.43f, 0.05f) << told.out;
  EXPECT_NEAR(heat, 5 * x, 1e-3f) << told.out;
}

TEST_F(ViewTest, ShowsFilesOfOtherPrograms) {
  writeFile("heights.csv", "x,y,height\n0,0,1\n1,0,2\n0,1,3\n1,1,4\n");
  const ToolRun told = run("view heights.csv --size 200x200 --pick 70,100", kDisplay);
  EXPECT_EQ(told.status, 0) << told.err;
  EXPECT_NE(told.out.find("\"height\""), std::string::npos) << told.out;
}

// The axis of dates counts days from the start of 2020, a leap year; the logarithmic one stands in a separator, moved
// up.
TEST_F(ViewTest, TellsNumbersAsTheAxesWriteThem) {
  writeScene("s.iv",
             "OrthographicCamera { position 50 1 5 height 100 } LightModel { model BASE_COLOR } "
             "PoDateFormatMapping { format \"Ymd\" date1 \"2020-01-01\" date2 \"2021-01-01\" coord2 366 } "
             "PoTimeAxis { startDate \"2020-01-01\" endDate \"2021-01-01\" coord -40 } "
             "PoLinearAxis { type YX start 0 -40 0 end 40 gradAddString \" ppm\" gradAddStringVisibility TRUE } "
             "Separator { PoCurve { point [ 40 0, 60 0, 70 0 ] } } "
             "Separator { Translation { translation 0 30 0 } PoLogAxis { start 0 0 0 end 95 } "
             "PoCurve { point [ 40 3, 60 3 ] } }");
  // Two pixels are a unit: day 60 of a leap year is the first of March.
  const std::string date = tell("118,102");
  EXPECT_EQ(date.rfind("PoCurve, nearest point 1 (2020-03-01 0 ppm) at 2020-0", 0), 0u) << date;
  const std::string power = tell("118,36");
  EXPECT_EQ(power.rfind("PoCurve, nearest point 1 (1e+60 ", 0), 0u) << power;
  EXPECT_EQ(tell("190,150"), "Nothing is there\n");
}

TEST_F(ViewTest, AddsTheOriginToCoordinates) {
  writeScene("s.iv", "DEF OrmelleOrigin Info { string \"origin 500000 5200000 0\" } " + twoCells("1 0 0"));
  const ToolRun told = run("view s.iv --size 200x200 --pick 100,100", kDisplay);
  double x = 0;
  double y = 0;
  EXPECT_EQ(std::sscanf(told.out.substr(told.out.find(" at ")).c_str(), " at %lf %lf 0", &x, &y), 2) << told.out;
  EXPECT_NEAR(x, 500001.0, 0.05);
  EXPECT_NEAR(y, 5200001.0, 0.05);
}

TEST_F(ViewTest, TellsBarsSlicesAndCurvesByNameAndValue) {
  const std::string camera = "OrthographicCamera { position 0 0 5 height 2 } LightModel { model BASE_COLOR } ";
  // Columns of the picture: a bar of a table, a slice of a group, a curve. All lie around the middle of the height.
  writeScene("s.iv", camera +
                         "Separator { Translation { translation -0.8 -0.5 0 } PoMultipleHistogram { end 0.4 numRows 2 "
                         "value [ 1, 1, 1, 1 ] rowName [ \"in\", \"out\" ] columnName [ \"old\", \"new\" ] } } "
                         "PoPieChart2D { radius 0.3 sliceValue [ 6, 1, 1 ] sliceText [ \"rain\", \"fog\", \"ice\" ] "
                         "sliceGroupActive TRUE sliceGroupMinValue 2 sliceGroupString \"rest\" } "
                         "Separator { Translation { translation 0.7 0 0 } "
                         "PoCurve { point [ -0.2 0, 0 0, 0.2 0 ] } }");
  EXPECT_EQ(tell("55,110"), "PoMultipleHistogram, \"out\", \"new\" 1\n");
  EXPECT_EQ(tell("110,110"), "PoPieChart2D, \"rest\" 2, 25 %\n");
  EXPECT_EQ(tell("174,100").rfind("PoCurve, nearest point 1 (0 0) at 0.04", 0), 0u) << tell("174,100");
}

TEST_F(ViewTest, AnswersClicksAndReadsAFileAgainWhenItChanges) {
  writeScene("s.iv", twoCells("1 0 0"));
  writeScene("green.iv", twoCells("0 1 0"));
  writeFile("broken.iv", "#Inventor V2.1 ascii\nSeparator { Cube {");
  writeFile("user.sh", R"(
"$1" view s.iv --size 300x300 >told 2>errors &
viewer=$!
trap 'kill $viewer 2>/dev/null' EXIT
await() { for i in $(seq 80); do grep -q "$1" "$2" && return; sleep 0.1; done; echo "waited for $1 in $2 in vain"; exit 1; }
window=$(xdotool search --sync --onlyvisible --name Ormelle | tail -n 1)
sleep 1
xdotool windowfocus $window mousemove --window $window 130 130
xdotool click 1
await 'cell' told
cp broken.iv s.iv
await 's.iv: ' errors
xdotool key --clearmodifiers p
await 's-1.png: saved' told
cp green.iv s.iv
await 'read again' told
xdotool key --clearmodifiers p
await 's-2.png: saved' told
xdotool key --clearmodifiers q
wait $viewer
)");
  const std::string command = "cd '" + path(".") + "' && " + kDisplay + " sh user.sh '" ORMELLE_TOOL "' >said 2>&1";
  EXPECT_EQ(std::system(command.c_str()), 0)
      << readFile(path("said")) << readFile(path("told")) << readFile(path("errors"));
  EXPECT_NE(readFile(path("told")).find("PoMeshFilled, cell "), std::string::npos) << readFile(path("told"));
  const std::string errors = readFile(path("errors"));
  EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1) << errors;
  const Png kept = readPng(path("s-1.png"));
  const Png fresh = readPng(path("s-2.png"));
  ASSERT_FALSE(kept.rgba.empty() || fresh.rgba.empty());
  EXPECT_EQ(kept.at(kept.width / 2, kept.height / 2), (std::array{255, 0, 0, 255}));
  EXPECT_EQ(fresh.at(fresh.width / 2, fresh.height / 2), (std::array{0, 255, 0, 255}));
}
