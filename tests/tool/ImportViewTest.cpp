// The first view of what is imported: the range of its colours, and how volumes are shown.

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <initializer_list>
#include <sstream>
#include <tuple>

#include "ImportedScene.h"

namespace {

using Numbers = std::vector<double>;

class ImportView : public ImportTest {
 protected:
  // A grid of n x n x n nodes at 0, 1, 2, ... as a table.
  static std::string volume(int n, const std::function<double(int x, int y, int z)>& value) {
    std::ostringstream text;
    text << "x,y,z,heat\n";
    for (int i = 0; i < n * n * n; ++i) {
      const int x = i % n, y = i / n % n, z = i / n / n;
      text << x << ',' << y << ',' << z << ',' << value(x, y, z) << '\n';
    }
    return text.str();
  }

  // The numbers of a field between its brackets.
  static Numbers numbersOf(const std::string& scene, const std::string& field) {
    const std::size_t start = scene.find(field + " [");
    std::string text = scene.substr(start, scene.find(']', start) - start).substr(field.size() + 2);
    std::replace(text.begin(), text.end(), ',', ' ');
    Numbers numbers;
    std::istringstream in(text);
    for (double number = 0; in >> number;) numbers.push_back(number);
    return numbers;
  }

  // How far the triangles reach that aren't of the legend: those with a node off the plane z = 0.
  float leastOf(int axis) {
    runWell("geometry scene.iv -o a.ply");
    const Ply ply = readPly(path("a.ply"));
    float least = 1e9F;
    for (const Ply::Vertex& vertex : ply.vertices)
      if (vertex.position[2] >= 1) least = std::min(least, vertex.position[static_cast<std::size_t>(axis)]);
    return least;
  }
};

// The scale ends where the data do, and names round numbers.
TEST_F(ImportView, ColoursExactlyTheRangeOfTheData) {
  const auto table = [](const std::function<double(int)>& value) {
    std::ostringstream text;
    text << "x,y,depth\n";
    for (int i = 0; i < 100; ++i) text << i % 10 << ',' << i / 10 << ',' << value(i) << '\n';
    return text.str();
  };
  std::string scene = imported("a.csv", table([](int i) { return 0.93 + 0.1 * i; }));
  Numbers levels = numbersOf(scene, "value");
  ASSERT_GT(levels.size(), 6U);
  EXPECT_NEAR(levels.front(), 0.93, 1e-6);
  EXPECT_NEAR(levels.back(), 10.83, 1e-5);
  EXPECT_TRUE(std::is_sorted(levels.begin(), levels.end()));
  EXPECT_EQ(run("render scene.iv -o a.svg").status, 0);
  const std::string picture = readFile(path("a.svg"));
  for (const char* number : {">2<", ">4<", ">6<", ">8<", ">10<"}) EXPECT_NE(picture.find(number), std::string::npos);
  for (const char* number : {">0<", ">12<", ">&lt;<"}) EXPECT_EQ(picture.find(number), std::string::npos) << number;

  // Numbers in place of missing values leave the others their colours, and are told.
  scene = imported("a.csv", table([](int i) { return i == 7 ? 1e30 : i < 5 || i > 60 ? -9999.0 : 0.1 * i; }));
  levels = numbersOf(scene, "value");
  EXPECT_NEAR(levels.front(), 0.5, 1e-6);
  EXPECT_NEAR(levels.back(), 6, 1e-6);
  EXPECT_NE(said().find("45 values of \"depth\" far from the others are grey; the colours are those from 0.5 to 6"),
            std::string::npos)
      << said();
  EXPECT_EQ(valuesOf(scene, "depth").size(), 100U);
  EXPECT_EQ(valuesOf(scene, "depth")[0], -9999) << "the values themselves are kept";

  // Two values are a range, and so are a few that rise by steps, and one value.
  for (const auto& [low, high, value] : std::initializer_list<std::tuple<double, double, std::function<double(int)>>>{
           {0, 1, [](int i) { return i == 50 ? 1.0 : 0.0; }},
           {0, 1e5, [](int i) { return i < 90 ? 0.0 : std::pow(10, (i - 90) * 5 / 9.0); }},
           {6.6, 7.4, [](int) { return 7.0; }}}) {
    levels = numbersOf(imported("a.csv", table(value)), "value");
    EXPECT_NEAR(levels.front(), low, 1e-4);
    EXPECT_NEAR(levels.back(), high, 1e-4 * high);
    EXPECT_EQ(said().find("grey"), std::string::npos) << said();
  }
}

// A volume whose outside tells nothing is shown cut open; one with its extremes outside isn't.
TEST_F(ImportView, CutsVolumesOpenThatHideWhatTheyHold) {
  const auto blobAt = [](int px, int py, int pz) {
    return [=](int x, int y, int z) {
      const int dx = x - px, dy = y - py, dz = z - pz;
      return 100 * std::exp(-(dx * dx + dy * dy + dz * dz) / 8.0);
    };
  };
  std::string scene = imported("a.csv", volume(13, blobAt(6, 6, 6)));
  EXPECT_NE(said().find("OrmelleCut"), std::string::npos) << said();
  EXPECT_EQ(leastOf(1), 6) << "what is in front of the middle is left out";
  EXPECT_EQ(leastOf(0), 0);
  const Numbers middles = valuesOf(scene, "y of the middle of the cell");
  ASSERT_EQ(middles.size(), 12U * 12 * 12);
  EXPECT_EQ(middles[0], 0.5);
  EXPECT_EQ(middles[12], 1.5);
  // Without the node the whole is there again.
  const std::size_t node = scene.find("DEF OrmelleCut");
  ASSERT_NE(node, std::string::npos);
  std::string whole = scene;
  whole.erase(node, scene.find('}', node) + 1 - node);
  writeFile("scene.iv", whole);
  EXPECT_EQ(leastOf(1), 0);

  for (const auto& [x, y, z] : {std::array{12, 0, 6}, {0, 6, 12}}) {
    imported("a.csv", volume(13, blobAt(x, y, z)));
    EXPECT_EQ(said().find("OrmelleCut"), std::string::npos) << "its extreme lies on the outside";
    EXPECT_EQ(leastOf(1), 0);
  }
}

// Numbers of a binary scene are no braces, whatever their bytes: here each has four.
TEST_F(ImportView, ReadsBinaryScenesOfAnyNumbers) {
  std::string table = "x,y,heat\n";
  for (int i = 0; i < 2000; ++i) table += std::to_string(i % 50) + "," + std::to_string(i / 50) + ",1.30577099e36\n";
  writeFile("a.csv", table);
  runWell("convert a.csv scene.iv --binary");
  EXPECT_NE(readFile(path("scene.iv")).find("{{{{{{{{"), std::string::npos);
  runWell("info scene.iv");
}

#ifdef ORMELLE_IMPORT_HAS_VTK

// The same for cells that name their nodes.
TEST_F(ImportView, CutsMeshesOpen) {
  constexpr int n = 13;
  std::ostringstream points, cells, types, heat;
  for (int i = 0; i < n * n * n; ++i) {
    const int x = i % n, y = i / n % n, z = i / n / n;
    points << x << ' ' << y << ' ' << z << '\n';
    const int dx = x - 6, dy = y - 6, dz = z - 6;
    heat << 100 * std::exp(-(dx * dx + dy * dy + dz * dz) / 8.0) << '\n';
    if (x == n - 1 || y == n - 1 || z == n - 1) continue;
    cells << 8;
    for (const int node : {0, 1, n + 1, n, n * n, n * n + 1, n * n + n + 1, n * n + n}) cells << ' ' << i + node;
    cells << '\n';
    types << "12\n";
  }
  const int numCells = (n - 1) * (n - 1) * (n - 1);
  std::ostringstream file;
  file << "# vtk DataFile Version 3.0\na\nASCII\nDATASET UNSTRUCTURED_GRID\nPOINTS " << n * n * n << " float\n"
       << points.str() << "CELLS " << numCells << ' ' << 9 * numCells << '\n'
       << cells.str() << "CELL_TYPES " << numCells << '\n'
       << types.str() << "POINT_DATA " << n * n * n << "\nSCALARS heat float 1\nLOOKUP_TABLE default\n"
       << heat.str();
  imported("a.vtk", file.str());
  EXPECT_NE(said().find("OrmelleCut"), std::string::npos) << said();
  EXPECT_EQ(leastOf(1), 6);
  EXPECT_EQ(leastOf(0), 0);
}

// What could not be read back isn't written.
TEST_F(ImportView, RefusesMoreThanASceneHolds) {
  writeFile(
      "a.vti",
      "<VTKFile type=\"ImageData\"><ImageData WholeExtent=\"0 599 0 599 0 599\"><Piece Extent=\"0 599 0 599 0 599\">"
      "</Piece></ImageData></VTKFile>" +
          std::string(250000, ' '));
  runBadly("convert a.vti scene.iv", "more than the 130 million nodes");
}

#endif

}  // namespace
