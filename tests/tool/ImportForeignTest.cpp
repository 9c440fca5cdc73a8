// Files of Gmsh, NetCDF, PLY, OBJ and STL: values are read back from the scene against what the samples were made of.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <sstream>

#include "ImportForeignSamples.h"
#include "ImportedScene.h"

namespace {

using Numbers = std::vector<double>;
[[maybe_unused]] constexpr double kMissing = std::numeric_limits<double>::quiet_NaN();

class ImportForeign : public ImportTest {};

// Equal, where NaN equals NaN.
[[maybe_unused]] void expectValues(const Numbers& got, const Numbers& wanted) {
  ASSERT_EQ(got.size(), wanted.size());
  for (std::size_t i = 0; i < got.size(); ++i) {
    if (std::isnan(wanted[i]))
      EXPECT_TRUE(std::isnan(got[i])) << i << " is " << got[i];
    else
      EXPECT_NEAR(got[i], wanted[i], 1e-4) << i;
  }
}

#ifdef ORMELLE_IMPORT_HAS_GMSH

// Both versions, as text and in binary, are the same mesh.
TEST_F(ImportForeign, ReadsGmsh) {
  for (const bool isVersion4 : {false, true})
    for (const bool isBinary : {false, true}) {
      SCOPED_TRACE(std::string(isVersion4 ? "4.1" : "2.2") + (isBinary ? " binary" : " text"));
      const std::string scene = imported("a.msh", sampleGmsh(isVersion4, isBinary));
      EXPECT_EQ(numbersAfter(scene, "# cell's type"), (Numbers{8, 5}));
      EXPECT_EQ(numbersAfter(scene, "# cell's indices"), (Numbers{0, 1, 2, 3, 4, 5, 6, 7, 4, 5, 6, 7, 8}));
      expectValues(valuesOf(scene, "heat at nodes"), {1, 2, 3, 4, 5, 6, 7, 8, kMissing});
      expectValues(valuesOf(scene, "corner values"), {1, 2, 3, 4, 3.5, 5, 6.5, 8, 10});
      EXPECT_EQ(valuesOf(scene, "stress"), (Numbers{10, 20}));
      EXPECT_EQ(valuesOf(scene, "physical group"), (Numbers{7, 7}));
      const Numbers flow = valuesOf(scene, "flow");
      ASSERT_EQ(flow.size(), 27U);
      EXPECT_EQ(flow[24], 20);
      EXPECT_EQ(flow[26], 1);
      // The quadrangle is a mesh of its own, without stress.
      const std::string surface = scene.substr(scene.find("Mesh2D"));
      EXPECT_EQ(valuesOf(surface, "physical group"), Numbers{1});
      expectValues(valuesOf(surface, "stress"), {kMissing});
      EXPECT_NE(said().find("7 is \"body\""), std::string::npos) << said();
      EXPECT_NE(said().find("averaged"), std::string::npos) << said();
    }
}

TEST_F(ImportForeign, CutsCurvedCellsOfGmshToTheirCorners) {
  const std::string scene =
      imported("a.msh",
               "$MeshFormat\n2.2 0 8\n$EndMeshFormat\n$Nodes\n6\n1 0 0 0\n2 2 0 0\n3 0 2 0\n4 1 0 "
               "0.1\n5 1 1 0\n6 0 1 0\n$EndNodes\n$Elements\n1\n1 9 2 0 1 1 2 3 4 5 6\n$EndElements\n");
  EXPECT_NE(said().find("1 cell of higher order was cut to"), std::string::npos) << said();
  EXPECT_EQ(numbersAfter(scene, "# cell's indices"), (Numbers{0, 1, 2}));
}

// A program that draws and runs commands is no mesh, and what breaks off isn't read in part.
TEST_F(ImportForeign, RefusesWhatIsNoWholeFileOfGmsh) {
  const std::string good = sampleGmsh(true, false);
  for (const char* end : {"$EndNodes", "$EndElements", "$EndNodeData"}) {
    writeFile("cut.msh", good.substr(0, good.rfind(end) - 8));
    runBadly("convert cut.msh a.iv", "no end");
    writeFile("cut.msh", good.substr(0, good.rfind(end) + 6));
    runBadly("convert cut.msh a.iv", "no end");
  }
  writeFile("program.msh", "SystemCall \"touch " + path("touched") + "\";\n");
  runBadly("convert program.msh a.iv", "$MeshFormat");
  writeFile("a.msh.opt", "SystemCall \"touch " + path("touched") + "\";\n");
  imported("a.msh", good);
  EXPECT_FALSE(std::filesystem::exists(path("touched")));
  // Results for a node, a cell or a step that the library would write beyond its arrays.
  for (const bool isVersion4 : {false, true}) {
    for (const auto& [from, to] : {std::pair{"3\n0\n1\n8\n1 1 ", "3\n0\n1\n8\n2147483647 1 "},
                                   {"3\n0\n1\n2\n11 10 ", "3\n2147483647\n1\n2\n11 10 "},
                                   {"12 5 2 4 ", "12 2147483647 2 4 "}}) {
      std::string bytes = sampleGmsh(isVersion4, false);
      bytes.replace(bytes.find(from), std::string(from).size(), to);
      writeFile("results.msh", bytes);
      runBadly("convert results.msh a.iv", "can't be true");
    }
    std::string bytes = sampleGmsh(isVersion4, true);
    bytes.replace(bytes.find("3\n0\n1\n8\n") + 8, 4, "\xff\xff\xff\x7f");
    writeFile("results.msh", bytes);
    runBadly("convert results.msh a.iv", "a number in its NodeData can't be true");
  }
  writeFile("lie.msh", "$MeshFormat\n2.2 0 8\n$EndMeshFormat\n$Nodes\n2000000000\n1 0 0 0\n$EndNodes\n");
  runBadly("convert lie.msh a.iv", "lie.msh");
}

#endif

#ifdef ORMELLE_IMPORT_HAS_NETCDF

TEST_F(ImportForeign, ReadsGridsOfNetcdf) {
  const std::string scene = imported("a.nc", sampleNetcdf());
  Numbers air, u, orog;
  for (int x = 0; x < 4; ++x)
    for (int y = 0; y < 3; ++y) {
      orog.push_back(x == 1 && y == 1 ? kMissing : 10 * x + y);
      for (int z = 0; z < 2; ++z) {
        air.push_back(x == 1 && y == 2 && z == 0 ? kMissing : 273.15 + 0.01 * (24 * z + 4 * y + x));
        u.push_back(x);
      }
    }
  const std::string volume = scene.substr(scene.find("PoParalCartesianGrid3D"));
  EXPECT_EQ(numbersAfter(volume, "# x coordinates"), (Numbers{10, 20, 30, 50}));
  EXPECT_EQ(numbersAfter(volume, "# y coordinates"), (Numbers{-5, 0, 5}));
  EXPECT_EQ(numbersAfter(volume, "# z coordinates"), (Numbers{-1000, -500}));
  expectValues(valuesOf(volume, "air temperature (K)"), air);
  expectValues(valuesOf(volume, "u (m/s)"), u);
  const Numbers wind = valuesOf(volume, "wind (m/s)");
  ASSERT_EQ(wind.size(), 72U);
  EXPECT_EQ((Numbers{wind[69], wind[70], wind[71]}), (Numbers{3, 2, 0}));
  const std::string map = scene.substr(scene.find("PoParalCartesianGrid2D"));
  expectValues(valuesOf(map, "orog"), orog);
  EXPECT_EQ(numbersAfter(scene.substr(scene.find("PoIrregularMesh1D")), "# x coordinates"), (Numbers{6, 12}));
  for (const char* note :
       {"number 1 was taken (2000-01-01 06:00:00)", "count downwards", "\"code\" holds no numbers", "not kept: title"})
    EXPECT_NE(said().find(note), std::string::npos) << said();
}

// Heights of pressures over degrees are drawn so that they are seen, and keep their own numbers.
TEST_F(ImportForeign, DrawsHeightsThatAreNoLengthsAtASizeThatShowsThem) {
  const std::string scene = imported("a.nc", sampleNetcdf());
  const std::string node = "DEF OrmelleStretch Scale {";
  const std::size_t at = scene.find(node);
  ASSERT_NE(at, std::string::npos);
  Numbers factor;
  std::istringstream text(scene.substr(scene.find("scaleFactor", at) + 11));
  for (double number = 0; factor.size() < 3 && text >> number;) factor.push_back(number);
  ASSERT_EQ(factor.size(), 3U);
  EXPECT_EQ(factor[0], 1);
  EXPECT_EQ(factor[1], 1);
  EXPECT_GT(factor[2] * 1000, 40.0 / 5) << "1000 hPa over 40 degrees";
  EXPECT_LT(factor[2] * 1000, 40.0);
  EXPECT_NE(said().find("times as high"), std::string::npos) << said();
  // What is drawn has them, too.
  runWell("geometry scene.iv -o a.ply");
  float low = 0, high = -1e9F;
  for (const Ply::Vertex& vertex : readPly(path("a.ply")).vertices) {
    low = std::min(low, vertex.position[2]);
    high = std::max(high, vertex.position[2]);
  }
  EXPECT_NEAR(high - low, 1000 * factor[2], 1e-3) << "from the map at 0 to 1000 hPa";
}

// Series become curves over dates, with the values, names and units of the file; those of several sites one each.
TEST_F(ImportForeign, MakesChartsOfSeriesOfNetcdf) {
  const std::string scene = imported("gauge.nc", sampleNetcdfSeries());
  expectValues(numbersAfter(scene, "# x coordinates"), {0.5, 1.5, 2.5, 2.75});
  expectValues(valuesOf(scene, "water level (m)"), {6.5, kMissing, 4.75, 5});
  expectValues(valuesOf(scene, "air_pressure (hPa)"), {1013, 1009.5, 998, kMissing});
  expectValues(valuesOf(scene, "flow, north (m3/s)"), {10, 11, 12, 13});
  expectValues(valuesOf(scene, "flow, quay (m3/s)"), {20, 21, 22, 23});
  for (int set = 0; set < 4; ++set)
    EXPECT_NE(scene.find("yValuesIndex " + std::to_string(set)), std::string::npos) << set;
  EXPECT_NE(said().find("1 set over band was left out"), std::string::npos) << said();
  EXPECT_EQ(said().find("site_name"), std::string::npos) << said();
  // What a reader of the picture finds: the axis of time begins at the noon before the day that leap years have.
  runWell("render scene.iv -o a.svg");
  const std::string picture = readFile(path("a.svg"));
  std::size_t at = 0;
  for (const char* text : {">gauge<", "FEB 29 2000", "MAR 1 2000"}) {
    at = picture.find(text, at);
    ASSERT_NE(at, std::string::npos) << text;
  }
  for (const char* text : {">water level (m)<", ">air_pressure (hPa)<", ">flow, quay (m3/s)<", ">m3/s<", ">12h<"})
    EXPECT_NE(picture.find(text), std::string::npos) << text;
}

TEST_F(ImportForeign, RefusesNetcdfThatPromisesTooMuch) {
  std::string bytes = sampleNetcdf();
  writeFile("cut.nc", bytes.substr(0, bytes.size() / 2));
  runBadly("convert cut.nc a.iv", "cut.nc");
  const std::size_t lon = bytes.find("lon") + 4;
  bytes.replace(lon, 4, std::string("\x3f\xff\xff\xff", 4));
  writeFile("lie.nc", bytes);
  runBadly("convert lie.nc a.iv", "lie.nc");
  // A name that would be copied past its room.
  bytes = sampleNetcdf();
  bytes.replace(bytes.find("lon") - 4, 4, std::string("\x00\x00\x03\x84", 4));
  writeFile("name.nc", bytes);
  runBadly("convert name.nc a.iv", "a name in its header is longer");
}

#endif

TEST_F(ImportForeign, ReadsPlyInEachForm) {
  std::string first;
  for (const char* format : {"ascii", "binary_little_endian", "binary_big_endian"}) {
    SCOPED_TRACE(format);
    const std::string scene = imported("a.ply", samplePly(format));
    if (first.empty()) first = scene;
    EXPECT_EQ(scene, first);
  }
  EXPECT_EQ(numbersAfter(first, "# cell's indices").size(), 6U);
  EXPECT_EQ(numbersAfter(first, "# x coordinates"), (Numbers{0, 1, 1, 0}));
  EXPECT_EQ(numbersAfter(first, "# z coordinates"), Numbers(4, 0.25));
  EXPECT_EQ(valuesOf(first, "quality"), (Numbers{0, .5, 1, 1.5}));
  EXPECT_EQ(valuesOf(first, "label"), (Numbers{-7, -6}));
  EXPECT_EQ(valuesOf(first, "colour"), (Numbers{1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0}));
  EXPECT_EQ(valuesOf(first, "normal"), (Numbers{0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0, 1}));
  std::string bytes = samplePly("binary_little_endian");
  writeFile("cut.ply", bytes.substr(0, bytes.size() - 3));
  runBadly("convert cut.ply a.iv", "cut.ply");
  bytes.replace(bytes.find("vertex 4"), 8, "vertex 4000000000");
  writeFile("lie.ply", bytes);
  runBadly("convert lie.ply a.iv", "promises more");
}

#ifdef ORMELLE_IMPORT_HAS_TINYOBJ

TEST_F(ImportForeign, ReadsObj) {
  const std::string scene = imported("a.obj", sampleObj());
  EXPECT_EQ(numbersAfter(scene, "# cell's type"), (Numbers{4, 3, 3, 3, 3}));
  EXPECT_EQ(numbersAfter(scene, "# cell's indices"), (Numbers{0, 3, 2, 1, 0, 1, 4, 1, 2, 4, 2, 3, 4, 3, 0, 4}));
  EXPECT_EQ(valuesOf(scene, "group"), (Numbers{0, 1, 1, 1, 1}));
  EXPECT_EQ(valuesOf(scene, "colour").size(), 15U);
  for (const char* note : {"0 is \"base\"", "normals were left out", "materials were left out", "ctech"})
    EXPECT_NE(said().find(note), std::string::npos) << said();
  writeFile("bad.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 9\n");
  runBadly("convert bad.obj a.iv", "bad.obj");
}

#endif

#ifdef ORMELLE_IMPORT_HAS_VTK

// Facets share their points.
TEST_F(ImportForeign, ReadsStl) {
  for (const bool isBinary : {false, true}) {
    const std::string scene = imported("a.stl", sampleStl(isBinary));
    EXPECT_EQ(numbersAfter(scene, "# x coordinates").size(), 4U);
    EXPECT_EQ(numbersAfter(scene, "# cell's indices").size(), 6U);
  }
  const std::string bytes = sampleStl(true);
  writeFile("cut.stl", bytes.substr(0, bytes.size() - 10));
  runBadly("convert cut.stl a.iv", "breaks off");
}

#endif

// However a file is damaged: a scene that can be read again, one sentence, or a crash that is isolated.
TEST_F(ImportForeign, SurvivesDamagedFiles) {
  std::string files;
  for (const auto& [name, bytes] : foreignSamples()) files += " '" + writeFile(name, bytes) + "'";
  const std::string command =
      "'" ORMELLE_IMPORT_PROGRAM "' --check-mutations 10 3" + files + " >'" + path("told") + "'";
  EXPECT_EQ(std::system(command.c_str()), 0) << readFile(path("told"));
}

}  // namespace
