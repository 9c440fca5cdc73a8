// Files of other programs: what is read of them, and how their reader ends.

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <set>
#include <sstream>
#include <tuple>

#include "ImportSamples.h"
#include "ImportedScene.h"

namespace {

class Import : public ImportTest {
 protected:
  // A program in the place of the reader.
  std::string fakeReader(const std::string& script) {
    writeFile("reader.sh", "#!/bin/sh\n" + script + "\n");
    std::filesystem::permissions(path("reader.sh"), std::filesystem::perms::owner_all);
    return "ORMELLE_IMPORT=" + path("reader.sh");
  }
};

#ifdef ORMELLE_IMPORT_HAS_VTK

// All kinds of grids are the same grid, and in the library's order: z changes first, then y.
TEST_F(Import, BringsGridsIntoTheOrderOfTheLibrary) {
  std::vector<double> sums, flow;
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 2; ++j)
      for (int k = 0; k < 2; ++k) {
        sums.push_back(i + 10 * j + 100 * k);
        flow.insert(flow.end(), {static_cast<double>(i), static_cast<double>(j), static_cast<double>(k)});
      }
  for (const auto& [name, bytes, mesh] :
       {std::tuple{"a.vti", sampleGridXml("ImageData"), "PoRegularCartesianGrid3D"},
        {"a.vtr", sampleGridXml("RectilinearGrid"), "PoParalCartesianGrid3D"},
        {"a.vts", sampleGridXml("StructuredGrid"), "PoCartesianGrid3D"},
        {"a.vtk", sampleGridLegacy(false), "PoRegularCartesianGrid3D"},
        {"b.vtk", sampleGridLegacy(true), "PoRegularCartesianGrid3D"},
        {"named_by_nothing", sampleGridXml("ImageData"), "PoRegularCartesianGrid3D"}}) {
    SCOPED_TRACE(name);
    const std::string scene = imported(name, bytes);
    EXPECT_NE(scene.find(mesh), std::string::npos);
    EXPECT_EQ(valuesOf(scene, "sum of indices"), sums);
    EXPECT_EQ(valuesOf(scene, "flow"), flow);
    EXPECT_EQ(valuesOf(scene, "cell number"), (std::vector<double>{0, 1}));
    EXPECT_NE(scene.find("binding per cell"), std::string::npos);
    EXPECT_EQ(said().find("Note"), std::string::npos) << said();
  }
  const std::string curvilinear = imported("a.vts", sampleGridXml("StructuredGrid"));
  EXPECT_EQ(numbersAfter(curvilinear, "# x coordinates"),
            (std::vector<double>{1, 1, 1, 1, 1.5, 1.5, 1.5, 1.5, 2, 2, 2, 2}));
  EXPECT_EQ(numbersAfter(curvilinear, "# z coordinates"), (std::vector<double>{3, 5, 3, 5, 3, 5, 3, 5, 3, 5, 3, 5}));
  const std::string regular = imported("a.vti", sampleGridXml("ImageData"));
  EXPECT_NE(regular.find("1 2 3   # x_min, y_min, z_min"), std::string::npos);
  EXPECT_NE(regular.find("2 3 5   # x_max, y_max, z_max"), std::string::npos);
}

// Sections of grids, standing upright or running backwards, and rows of nodes.
TEST_F(Import, KeepsGridsWithOneLayer) {
  const auto image = [](const std::string& dims, const std::string& spacing, int count) {
    std::string bytes = "# vtk DataFile Version 3.0\na\nASCII\nDATASET STRUCTURED_POINTS\nDIMENSIONS " + dims +
                        "\nORIGIN 0 0 0.5\nSPACING " + spacing + "\nPOINT_DATA " + std::to_string(count) +
                        "\nSCALARS v float 1\nLOOKUP_TABLE default\n";
    for (int i = 0; i < count; ++i) bytes += std::to_string(i) + " ";
    return bytes + "\n";
  };
  std::string scene = imported("a.vtk", image("3 2 1", "1 1 1", 6));
  EXPECT_NE(scene.find("PoRegularCartesianGrid2D"), std::string::npos);
  EXPECT_EQ(numbersAfter(scene, "# z coordinates"), std::vector<double>(6, 0.5));
  EXPECT_EQ(valuesOf(scene, "v"), (std::vector<double>{0, 3, 1, 4, 2, 5}));

  scene = imported("a.vtk", image("3 1 2", "1 1 1", 6));
  EXPECT_NE(scene.find("PoCartesianGrid2D"), std::string::npos);
  EXPECT_EQ(numbersAfter(scene, "# x coordinates"), (std::vector<double>{0, 0, 1, 1, 2, 2}));
  EXPECT_EQ(numbersAfter(scene, "# z coordinates"), (std::vector<double>{0.5, 1.5, 0.5, 1.5, 0.5, 1.5}));
  EXPECT_EQ(valuesOf(scene, "v"), (std::vector<double>{0, 3, 1, 4, 2, 5}));

  scene = imported("a.vtk", image("4 1 1", "0.25 1 1", 4));
  EXPECT_NE(scene.find("PoIrregularMesh1D"), std::string::npos);
  EXPECT_EQ(valuesOf(scene, "v"), (std::vector<double>{0, 1, 2, 3}));
}

TEST_F(Import, KeepsCellsOfEveryKindAndForm) {
  std::string first;
  for (const ImportSample& sample : importSamples()) {
    if (sample.name.rfind("cells", 0) != 0) continue;
    SCOPED_TRACE(sample.name);
    std::string scene = imported("cells.vtu", sample.bytes);
    if (first.empty()) first = scene;
    EXPECT_EQ(scene, first) << "text, base64, packed and appended are the same file";
  }
  EXPECT_EQ(numbersAfter(first, "# cell's type"), (std::vector<double>{8, 5, 6, 4}));
  EXPECT_EQ(numbersAfter(first, "# cell's indices"),
            (std::vector<double>{0, 1, 2, 3, 4, 5, 6, 7, 4, 5, 6, 7, 10, 1, 8, 2, 5, 9, 6, 8, 11, 12, 9}));
  EXPECT_EQ(valuesOf(first, "heat in K"), (std::vector<double>{0, .5, 1, 1.5, 2, 2.5, 3, 3.5, 4, 4.5, 5, 5.5, 6}));
  EXPECT_EQ(valuesOf(first, "material"), (std::vector<double>{10, 20, 30, 40}));
  EXPECT_EQ(valuesOf(first, "moved").size(), 39U);
  // The surface has the nodes that it uses, with their values.
  const std::string surface = first.substr(first.find("PoIndexedMesh2D"));
  EXPECT_EQ(valuesOf(surface, "heat in K"), (std::vector<double>{0, .5, 1, 1.5, 4}));
  EXPECT_EQ(valuesOf(surface, "material"), (std::vector<double>{50, 60}));
  EXPECT_NE(said().find("2 cells of the surface became a mesh of their own"), std::string::npos) << said();
}

// A concave polygon becomes triangles of its own area, a strip triangles that all face one way, and each has the value
// of what it comes from.
TEST_F(Import, CutsPolygonsAndStrips) {
  std::string bytes;
  for (const ImportSample& sample : importSamples())
    if (sample.name == "surface.vtp") bytes = sample.bytes;
  const std::string scene = imported("surface.vtp", bytes);
  const std::vector<double> nodes = numbersAfter(scene, "# cell's indices");
  const std::vector<double> x = numbersAfter(scene, "# x coordinates"), y = numbersAfter(scene, "# y coordinates");
  ASSERT_EQ(nodes.size(), 15U);
  std::array<double, 2> areas{};
  for (std::size_t i = 0; i < nodes.size(); i += 3) {
    const auto a = static_cast<std::size_t>(nodes[i]), b = static_cast<std::size_t>(nodes[i + 1]),
               c = static_cast<std::size_t>(nodes[i + 2]);
    const double area = ((x[b] - x[a]) * (y[c] - y[a]) - (y[b] - y[a]) * (x[c] - x[a])) / 2;
    EXPECT_GT(area, 0);
    areas[i < 9 ? 0 : 1] += area;
  }
  EXPECT_NEAR(areas[0], 10, 1e-9);  // the square of 16 without the notch of 6
  EXPECT_NEAR(areas[1], 1, 1e-9);
  EXPECT_EQ(valuesOf(scene, "kind"), (std::vector<double>{2, 2, 2, 3, 3}));
  EXPECT_NE(said().find("1 line was left out"), std::string::npos) << said();
}

TEST_F(Import, SaysWhatItCannotKeep) {
  std::string bytes;
  for (const ImportSample& sample : importSamples())
    if (sample.name == "legacy_cells.vtk") bytes = sample.bytes;
  const std::string scene = imported("a.vtk", bytes);
  for (const char* part : {"1 cell of higher order was cut to the corners", "\"stress\" has 6 values each"})
    EXPECT_NE(said().find(part), std::string::npos) << said();
  EXPECT_EQ(valuesOf(scene, "stress yy"), (std::vector<double>{2, 2}));
  EXPECT_EQ(valuesOf(scene, "zone number"), (std::vector<double>{7, 8}));

  // A hidden cell is left out; what belongs to the whole, too; a set that doesn't fit as well.
  std::string cells = importSamples()[3].bytes;
  cells.insert(cells.find("</CellData>"),
               "<DataArray type=\"UInt8\" Name=\"vtkGhostType\" format=\"ascii\">0 0 32 1 0 0</DataArray>\n");
  cells.insert(cells.find("<Piece"),
               "<FieldData><DataArray type=\"Float32\" Name=\"age\" NumberOfTuples=\"1\" format=\"ascii\">7"
               "</DataArray></FieldData>\n");
  EXPECT_EQ(numbersAfter(imported("a.vtu", cells), "# cell's type"), (std::vector<double>{8, 5}));
  for (const char* part : {"2 hidden or doubled cells were left out", "\"age\" belongs to the whole"})
    EXPECT_NE(said().find(part), std::string::npos) << said();
}

// A volume with values in parts of it only is drawn as the skin of the cells that have them: closed, each edge of it
// run through both ways, round as much as these cells fill.
TEST_F(Import, ClosesTheSkinRoundCellsWithValues) {
  std::string bytes = "x,y,z,v\n";
  for (int i = 0; i < 125; ++i)
    bytes += std::to_string(i % 5) + "," + std::to_string(i / 5 % 5) + "," + std::to_string(i / 25) + "," +
             (i == 124 || i == 62 ? "" : std::to_string(i)) + "\n";
  imported("a.csv", bytes);
  runWell("geometry scene.iv -o a.ply");
  const Ply ply = readPly(path("a.ply"));
  std::map<std::array<float, 6>, int> edges;
  double volume = 0;
  for (const std::array<int, 3>& face : ply.faces) {
    std::array<std::array<float, 3>, 3> p{};
    for (std::size_t i = 0; i < 3; ++i) p[i] = ply.vertices[static_cast<std::size_t>(face[i])].position;
    if (p[0][1] != std::round(p[0][1])) continue;  // of the legend
    for (std::size_t i = 0; i < 3; ++i) {
      const auto &a = p[i], &b = p[(i + 1) % 3];
      const bool isUp = a < b;
      const auto &first = isUp ? a : b, &second = isUp ? b : a;
      edges[{first[0], first[1], first[2], second[0], second[1], second[2]}] += isUp ? 1 : -1;
    }
    const auto cross = [&](std::size_t i, std::size_t j) {
      return double{p[1][i]} * p[2][j] - double{p[1][j]} * p[2][i];
    };
    volume += (p[0][0] * cross(1, 2) + p[0][1] * cross(2, 0) + p[0][2] * cross(0, 1)) / 6;
  }
  for (const auto& [edge, turns] : edges) EXPECT_EQ(turns, 0);
  EXPECT_NEAR(std::abs(volume), 64 - 8 - 1, 1e-4) << "without the 8 cells round the middle and the one of the corner";
}

// What was measured at several times is read at one: the first, or the one that is asked for, and said.
TEST_F(Import, TakesTheTimeStepThatIsAskedFor) {
  std::string bytes = importSamples()[3].bytes;
  bytes.replace(bytes.find("<UnstructuredGrid>"), 18, "<UnstructuredGrid TimeValues=\"0 0.5 2\">");
  const auto step = [](int time) {
    std::string array =
        "<DataArray type=\"Float32\" Name=\"speed\" TimeStep=\"" + std::to_string(time) + "\" format=\"ascii\">";
    for (int i = 0; i < 13; ++i) array += std::to_string(100 * time + i) + " ";
    return array + "</DataArray>";
  };
  bytes.insert(bytes.find("</PointData>"), step(0) + step(1) + step(2));
  writeFile("a.vtu", bytes);
  for (const auto& [option, number] : {std::pair{"", 0}, {" --time-step 2", 1}, {" --time-step 9", 2}}) {
    const std::string said = runWell(std::string("convert a.vtu scene.iv") + option).out;
    EXPECT_NE(said.find("of the 3 time steps number " + std::to_string(number + 1)), std::string::npos) << said;
    EXPECT_EQ(valuesOf(readFile(path("scene.iv")), "speed").at(5), 100 * number + 5);
  }
}

// Far from zero, floats couldn't tell the nodes apart.
TEST_F(Import, KeepsAnOriginForLargeCoordinates) {
  const std::string points = "0 0 0 1 0 0 0 1 0 0 0 1 1 1 1 2 0 0 2 1 0 2.5 0.5 0";
  const std::string near = importSamples()[2].bytes;
  ASSERT_NE(near.find(points), std::string::npos);
  std::vector<double> x, y;
  std::ostringstream moved;
  moved.precision(12);
  std::istringstream in(points);
  for (double a = 0, b = 0, c = 0; in >> a >> b >> c;) {
    x.push_back(a + 500123.25);
    y.push_back(b + 5201456.5);
    moved << x.back() << " " << y.back() << " " << c << " ";
  }
  std::string far = near;
  far.replace(far.find(points), points.size(), moved.str());
  const std::string scene = imported("far.vtk", far);
  const auto json = nlohmann::json::parse(runWell("info --json scene.iv").out);
  ASSERT_TRUE(json.contains("origin"));
  std::vector<double> ownX = numbersAfter(scene, "# x coordinates"), ownY = numbersAfter(scene, "# y coordinates");
  for (double& number : ownX) number += json["origin"][0].get<double>();
  for (double& number : ownY) number += json["origin"][1].get<double>();
  EXPECT_EQ(ownX, x);
  EXPECT_EQ(ownY, y);
  EXPECT_EQ(json["origin"][2], 0.0);
  EXPECT_NE(runWell("info scene.iv").out.find("coordinates are counted from the origin 5001"), std::string::npos);
  EXPECT_NE(said().find("OrmelleOrigin"), std::string::npos) << said();
  imported("near.vtk", near);
  EXPECT_FALSE(nlohmann::json::parse(runWell("info --json scene.iv").out).contains("origin"));
}

// From a file to a picture, in two commands and in one, and the other forms of a scene.
TEST_F(Import, MakesScenesThatShowSomethingAtOnce) {
  for (const ImportSample& sample : importSamples()) {
    if (sample.name.find("grid.vti") == std::string::npos && sample.name != "surface.vtp") continue;
    SCOPED_TRACE(sample.name);
    imported(sample.name, sample.bytes);
    const auto json = nlohmann::json::parse(runWell("info --json scene.iv").out);
    EXPECT_GT(json["kits"][0]["triangles"], 0);
    EXPECT_GT(json["total"]["texts"], 2) << "the legend tells values";
    runWell("render scene.iv -o scene.png --size 200x150");
    const Png png = readPng(path("scene.png"));
    std::set<std::array<int, 4>> colors;
    for (int y = 0; y < png.height; ++y)
      for (int x = 0; x < png.width; ++x) colors.insert(png.at(x, y));
    EXPECT_GT(colors.size(), 50U);
    const ToolRun direct = run("render " + sample.name + " -o direct.png --size 200x150");
    EXPECT_EQ(direct.status, 0) << direct.err;  // and says what was left out
    EXPECT_EQ(readFile(path("direct.png")), readFile(path("scene.png")));
  }
  runWell("convert grid.vti binary.iv --binary");
  EXPECT_EQ(readFile(path("binary.iv")).rfind("#Inventor V2.1 binary", 0), 0U);
  runWell("info binary.iv");
  runWell("convert grid.vti geometry.iv --geometry");
  EXPECT_NE(readFile(path("geometry.iv")).find("Coordinate3"), std::string::npos);
}

TEST_F(Import, RefusesBrokenFilesOfVtk) {
  const std::string good = importSamples()[3].bytes;
  const auto changed = [&](const std::string& from, const std::string& to) {
    std::string bytes = good;
    bytes.replace(bytes.find(from), from.size(), to);
    return bytes;
  };
  writeFile("cut.vtu", good.substr(0, good.size() / 2));
  writeFile("components.vtu", changed("NumberOfComponents=\"3\"", "NumberOfComponents=\"2147483647\""));
  writeFile("points.vtu", changed("NumberOfPoints=\"13\"", "NumberOfPoints=\"99999999999\""));
  writeFile("fewer.vtu", changed("NumberOfPoints=\"13\"", "NumberOfPoints=\"12\""));
  writeFile("node.vtu", changed("5 6 7 10", "5 6 7 1000"));
  writeFile("text.vtk", "# vtk DataFile Version 3.0\nnothing\nASCII\n");
  writeFile("text.vtu", "no XML");
  const std::string legacy = importSamples()[2].bytes;
  writeFile("cut_points.vtk", legacy.substr(0, legacy.find("0 1 1 1 1 2")));
  writeFile("cut_values.vtk", legacy.substr(0, legacy.size() - 5));
  writeFile("word.vtk", std::string(legacy).replace(legacy.find("1 2 3 4 5 6"), 1, "x"));
  writeFile("count.vtk", std::string(legacy).replace(legacy.find("POINTS 8"), 8, "POINTS 99999999999"));
  writeFile("keyword.vtk", std::string(legacy).replace(legacy.find("CELLS 3 17"), 10, "CELLS7"));
  writeFile("cells.vtk", std::string(legacy).replace(legacy.find("CELLS 3 17"), 10, "CELLS 3 9"));
  const std::string binary = sampleGridLegacy(true);
  writeFile("binary.vtk", std::string(binary).replace(binary.find("CELL_DATA 2"), 11, "CELL_DATA -1"));
  for (const char* type : {"ImageData", "RectilinearGrid", "StructuredGrid"}) {
    std::string grid = sampleGridXml(type);
    grid.replace(grid.find("<Piece Extent=\"0 2"), 18, "<Piece Extent=\"0 2147483647");
    writeFile(std::string(type) + ".vti", grid);
  }
  const std::size_t before = countFiles();
  for (const char* type : {"ImageData", "RectilinearGrid", "StructuredGrid"})
    runBadly("convert " + std::string(type) + ".vti out.iv", "its extent of 0 2147483647 0 1 0 1 can't be true");
  for (const auto& [file, part] : {std::pair{"cut_points.vtk", "breaks off in its POINTS"},
                                   {"cut_values.vtk", "breaks off in its FIELD"},
                                   {"word.vtk", "a number of its SCALARS is none"},
                                   {"count.vtk", "a count in its POINTS can't be true"},
                                   {"cells.vtk", "its CELLS have not as many numbers"},
                                   {"keyword.vtk", "begins with CELLS, but is none"},
                                   {"binary.vtk", "a count in its CELL_DATA can't be true"},
                                   {"cut.vtu", "VTK can't read it"},
                                   {"components.vtu", "can't be true"},
                                   {"points.vtu", "can't be true"},
                                   {"fewer.vtu", ""},
                                   {"node.vtu", "node 1000 of 13"},
                                   {"text.vtk", "VTK can't read it"},
                                   {"text.vtu", "VTK can't read it"}})
    runBadly(std::string("convert ") + file + " out.iv", part);
  EXPECT_EQ(countFiles(), before) << "an output file was left";
}

// However a file is damaged, its reader ends with a scene that can be read again, or with one sentence, or crashes or
// loops alone. (The quality run "import" does more of it.)
TEST_F(Import, SurvivesDamagedFiles) {
  std::string files;
  for (const ImportSample& sample : importSamples())
    if (sample.isReadByVtk) files += " '" + writeFile(sample.name, sample.bytes) + "'";
  const std::string command =
      "'" ORMELLE_IMPORT_PROGRAM "' --check-mutations 40 5" + files + " >'" + path("told") + "'";
  EXPECT_EQ(std::system(command.c_str()), 0) << readFile(path("told"));
}

#endif

TEST_F(Import, RefusesWhatItDoesNotKnow) {
  writeFile("empty.vtu", "");
  writeFile("unknown.dat", "what is this");
  writeFile("unknown", std::string(5000, 'x'));
  std::filesystem::create_directory(path("folder.vtu"));
  const std::size_t before = countFiles();
  runBadly("convert missing.vtu out.iv", "no such file");
  runBadly("convert folder.vtu out.iv", "directory");
  runBadly("convert empty.vtu out.iv", "empty");
  runBadly("convert unknown.dat out.iv", ".vtu");
  runBadly("convert unknown out.iv", "neither a scene");
  runBadly("convert unknown nowhere/out.iv", "nowhere");
  writeFile("out.iv", "old");
  runBadly("convert unknown out.iv", "unknown");
  EXPECT_EQ(readFile(path("out.iv")), "old");
  EXPECT_EQ(countFiles(), before + 1);
  EXPECT_EQ(run("convert unknown out.iv --time-limit 0").status, 2);
}

// Whatever the reader of a file does, the tool tells it in one sentence.
TEST_F(Import, OutlivesItsReader) {
  writeFile("a.dat", "some data");
  const std::size_t before = countFiles() + 1;  // the reader itself
  runBadly("convert a.dat out.iv", "a.dat: its reader crashed (Segmentation fault)", fakeReader("kill -SEGV $$"));
  runBadly("convert a.dat out.iv", "crashed (Aborted)", fakeReader("echo some words >&2; kill -ABRT $$"));
  runBadly("convert a.dat out.iv", "status 3: the last words",
           fakeReader("echo one >&2; echo the last words >&2; exit 3"));
  runBadly("convert a.dat out.iv", "a.dat: it is bent.",
           fakeReader("echo half a scene >&3; echo failure it is bent; exit 1"));
  runBadly("convert --time-limit 1 a.dat out.iv", "longer than 1 seconds", fakeReader("exec sleep 60"));
  runBadly("convert a.dat out.iv", "status 1",
           fakeReader("yes | head -c 30000000; yes | head -c 30000000 >&2; exit 1"));
  runBadly("convert a.dat out.iv", "can't be run", "ORMELLE_IMPORT=" + path("nothing"));
  EXPECT_EQ(countFiles(), before) << "an output file was left";

  const ToolRun well =
      run("convert a.dat out.iv",
          fakeReader("echo '#Inventor V2.1 ascii' >&3; echo mesh a surface; echo note b was left out"));
  EXPECT_EQ(well.status, 0) << well.err;
  EXPECT_EQ(well.out, "a surface.\nNote: b was left out.\n");
  EXPECT_EQ(readFile(path("out.iv")), "#Inventor V2.1 ascii\n");

  // Commands that show the scene leave the standard output to what they tell.
  const ToolRun shown =
      run("info --json a.dat",
          fakeReader("printf '#Inventor V2.1 ascii\\nCube {}' >&3; echo mesh a surface; echo note b was left out"));
  EXPECT_EQ(shown.status, 0) << shown.err;
  EXPECT_EQ(shown.err, "Note: b was left out.\n");
  EXPECT_EQ(nlohmann::json::parse(shown.out)["outside"]["triangles"], 12);
  runBadly("convert a.dat a.dat", "would replace", fakeReader("exit 0"));
  EXPECT_EQ(readFile(path("a.dat")), "some data");
}

}  // namespace
