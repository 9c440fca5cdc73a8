#include <nlohmann/json.hpp>

#include <cmath>
#include <cstring>
#include <map>

#include "ToolRun.h"

namespace {

using nlohmann::json;

// A glTF file taken apart: what its accessors hold, checked against each other as the format demands.
struct Gltf {
  json document;
  std::string buffer;

  template <class Number>
  std::vector<Number> read(std::size_t accessor) const {
    const json& a = document["accessors"].at(accessor);
    const json& view = document["bufferViews"].at(a["bufferView"].get<std::size_t>());
    const std::map<std::string, std::size_t> sizes{{"SCALAR", 1}, {"VEC2", 2}, {"VEC3", 3}, {"VEC4", 4}};
    const std::size_t count = a["count"].get<std::size_t>() * sizes.at(a["type"].get<std::string>());
    const std::size_t start = view["byteOffset"].get<std::size_t>();
    std::vector<Number> numbers(count);
    EXPECT_EQ(start % 4, 0u);
    EXPECT_LE(count * sizeof(Number), view["byteLength"].get<std::size_t>());
    if (start + count * sizeof(Number) > buffer.size()) {
      ADD_FAILURE() << "the buffer is too short";
      return {};
    }
    std::memcpy(numbers.data(), buffer.data() + start, count * sizeof(Number));
    return numbers;
  }

  const json& primitive(std::size_t i) const { return document["meshes"].at(0)["primitives"].at(i); }
  const json& materialOf(const json& primitive) const {
    return document["materials"].at(primitive["material"].get<std::size_t>());
  }
};

class Model : public ToolTest {
 protected:
  static uint32_t word(const std::string& bytes, std::size_t at) {
    uint32_t value = 0;
    if (at + 4 <= bytes.size()) std::memcpy(&value, bytes.data() + at, 4);
    return value;
  }

  Gltf readGlb(const std::string& file) const {
    const std::string bytes = readFile(path(file));
    Gltf gltf;
    EXPECT_EQ(bytes.substr(0, 4), "glTF");
    EXPECT_EQ(word(bytes, 4), 2u);
    EXPECT_EQ(word(bytes, 8), bytes.size());
    const uint32_t length = word(bytes, 12);
    EXPECT_EQ(bytes.substr(16, 4), "JSON");
    EXPECT_EQ(length % 4, 0u);
    gltf.document = json::parse(bytes.substr(20, length));
    if (20 + length < bytes.size()) {
      EXPECT_EQ(bytes.substr(24 + length, 4), std::string("BIN\0", 4));
      gltf.buffer = bytes.substr(28 + length);
      EXPECT_EQ(gltf.document["buffers"][0]["byteLength"], gltf.buffer.size());
    }
    if (gltf.document.contains("meshes")) {
      for (const json& primitive : gltf.document["meshes"][0]["primitives"]) {
        const std::size_t positions = primitive["attributes"]["POSITION"];
        const json& accessor = gltf.document["accessors"][positions];
        const std::size_t count = accessor["count"];
        for (const auto& [name, index] : primitive["attributes"].items())
          EXPECT_EQ(gltf.document["accessors"].at(index.get<std::size_t>())["count"], count) << name;
        for (const uint32_t index : gltf.read<uint32_t>(primitive["indices"])) EXPECT_LT(index, count);
        const std::vector<float> p = gltf.read<float>(positions);
        for (std::size_t i = 0; i < p.size(); ++i) {
          EXPECT_GE(p[i], accessor["min"][i % 3].get<float>());
          EXPECT_LE(p[i], accessor["max"][i % 3].get<float>());
        }
      }
    }
    return gltf;
  }
};

TEST_F(Model, GltfHasGeometryAndColoursOfTheScene) {
  writeScene(
      "a.iv",
      "Separator { Material { diffuseColor 0.5 0.25 1 transparency 0.5 } Translation { translation 3 0 0 } Cube {} } "
      "Separator { LightModel { model BASE_COLOR } Material { diffuseColor [ 1 0 0, 0 1 0 ] } "
      "MaterialBinding { value PER_VERTEX } Coordinate3 { point [ 0 0 0, 0 5 0 ] } LineSet { numVertices 2 } "
      "BaseColor { rgb 0 0 1 } MaterialBinding {} PointSet { numPoints 1 } }");
  runWell("convert a.iv a.glb");
  const Gltf gltf = readGlb("a.glb");
  ASSERT_EQ(gltf.document["meshes"][0]["primitives"].size(), 3u);

  const json& cube = gltf.primitive(0);
  EXPECT_EQ(cube["mode"], 4);
  EXPECT_EQ(gltf.read<uint32_t>(cube["indices"]).size(), 36u);
  const json& accessor = gltf.document["accessors"][cube["attributes"]["POSITION"].get<std::size_t>()];
  EXPECT_EQ(accessor["min"], json({2.0, -1.0, -1.0}));
  EXPECT_EQ(accessor["max"], json({4.0, 1.0, 1.0}));
  const json& material = gltf.materialOf(cube);
  EXPECT_EQ(material["alphaMode"], "BLEND");
  const json& factor = material["pbrMetallicRoughness"]["baseColorFactor"];
  EXPECT_NEAR(factor[0].get<double>(), 0.2140, 0.004) << "colours are amounts of light";
  EXPECT_NEAR(factor[1].get<double>(), 0.0509, 0.002);
  EXPECT_NEAR(factor[3].get<double>(), 0.5, 0.003);
  EXPECT_FALSE(material.contains("extensions"));
  // Corners turn left as seen from outside, and normals point there.
  const std::vector<float> p = gltf.read<float>(cube["attributes"]["POSITION"]);
  const std::vector<float> n = gltf.read<float>(cube["attributes"]["NORMAL"]);
  const std::vector<uint32_t> indices = gltf.read<uint32_t>(cube["indices"]);
  for (std::size_t i = 0; i < indices.size(); i += 3) {
    const float* a = &p[3 * indices[i]];
    const float* b = &p[3 * indices[i + 1]];
    const float* c = &p[3 * indices[i + 2]];
    const float* normal = &n[3 * indices[i]];
    const float cross[] = {(b[1] - a[1]) * (c[2] - a[2]) - (b[2] - a[2]) * (c[1] - a[1]),
                           (b[2] - a[2]) * (c[0] - a[0]) - (b[0] - a[0]) * (c[2] - a[2]),
                           (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0])};
    EXPECT_GT(cross[0] * normal[0] + cross[1] * normal[1] + cross[2] * normal[2], 0.0f);
    EXPECT_GT(cross[0] * (a[0] - 3.0f) + cross[1] * a[1] + cross[2] * a[2], 0.0f);
    EXPECT_NEAR(std::hypot(normal[0], normal[1], normal[2]), 1.0f, 1e-5f);
  }

  const json& line = gltf.primitive(1);
  EXPECT_EQ(line["mode"], 1);
  EXPECT_TRUE(gltf.materialOf(line)["extensions"].contains("KHR_materials_unlit"));
  EXPECT_EQ(gltf.read<uint16_t>(line["attributes"]["COLOR_0"]),
            (std::vector<uint16_t>{65535, 0, 0, 65535, 0, 65535, 0, 65535}));
  EXPECT_EQ(gltf.primitive(2)["mode"], 0);
  EXPECT_EQ(gltf.document["extensionsUsed"], json({"KHR_materials_unlit"}));

  // The text form holds the same.
  runWell("convert a.iv a.gltf");
  const json text = json::parse(readFile(path("a.gltf")));
  EXPECT_EQ(text["buffers"][0]["uri"].get<std::string>().substr(0, 37), "data:application/octet-stream;base64,");
  EXPECT_EQ(text["accessors"], gltf.document["accessors"]);
}

TEST_F(Model, GltfKeepsTexturesFarPlacesAndLetters) {
  writeScene("a.iv",
             "Translation { translation 700000 5200000 0 } Texture2 { image 2 1 3 0xff0000 0x00ff00 wrapS CLAMP } "
             "TextureCoordinate2 { point [ 0 0, 1 0, 1 0.25 ] } Coordinate3 { point [ 0 0 0, 10 0 0, 0 10 0 ] } "
             "FaceSet { numVertices 3 }");
  runWell("convert a.iv a.glb");
  const Gltf gltf = readGlb("a.glb");
  const json& primitive = gltf.primitive(0);
  EXPECT_NEAR(gltf.document["nodes"][0]["translation"][1].get<double>(), 5200005.0, 1.0);
  const std::vector<float> uv = gltf.read<float>(primitive["attributes"]["TEXCOORD_0"]);
  EXPECT_EQ(uv[5], 0.75f) << "rows count from the top";
  const json& image = gltf.document["images"][0];
  EXPECT_EQ(image["mimeType"], "image/png");
  const json& view = gltf.document["bufferViews"][image["bufferView"].get<std::size_t>()];
  writeFile("t.png", gltf.buffer.substr(view["byteOffset"], view["byteLength"]));
  const Png png = readPng(path("t.png"));
  EXPECT_EQ(png.width, 2);
  EXPECT_EQ(png.at(1, 0), (std::array<int, 4>{0, 255, 0, 255}));
  EXPECT_EQ(gltf.document["samplers"][0]["wrapS"], 33071);

  writeScene("b.iv", "Font { size 1 } AsciiText { string \"A\" } Text2 { string \"left out\" }");
  const ToolRun result = run("convert b.iv b.glb");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "ormelle: b.glb: 1 text of a fixed size on the screen is left out.\n");
  EXPECT_GT(readGlb("b.glb").read<uint32_t>(readGlb("b.glb").primitive(0)["indices"]).size(), 3u)
      << "a letter has triangles";
}

// The toolkit reads the file again and shows the same.
TEST_F(Model, VrmlShowsTheSame) {
  writeScene(
      "a.iv",
      "Separator { Material { diffuseColor 0.5 0.25 1 } Cube {} } Separator { LightModel { model BASE_COLOR } "
      "Material { diffuseColor [ 1 0 0, 0 1 0, 0 0 1 ] } MaterialBinding { value PER_VERTEX } Coordinate3 { point "
      "[ 2 0 0, 4 0 0, 3 2 0 ] } FaceSet { numVertices 3 } LineSet { numVertices 3 } PointSet { numPoints 2 } } "
      "Separator { Translation { translation 0 3 0 } Font { name \"DejaVu Sans:Bold\" size 0.5 } "
      "AsciiText { string [ \"say \\\"so\\\"\", \"below\" ] justification CENTER } }");
  runWell("convert a.iv a.wrl");
  EXPECT_EQ(readFile(path("a.wrl")).rfind("#VRML V2.0 utf8\n", 0), 0u);
  const json before = json::parse(runWell("info --json a.iv").out)["outside"];
  const json after = json::parse(runWell("info --json a.wrl").out)["outside"];
  for (const char* count : {"triangles", "lines", "points", "texts"}) EXPECT_EQ(after[count], before[count]) << count;
  EXPECT_NEAR(after["area"].get<double>(), before["area"].get<double>(), 1e-4);
  for (std::size_t i = 0; i < 6; ++i)
    EXPECT_NEAR(after["bbox"][i].get<double>(), before["bbox"][i].get<double>(), 1e-4);
  runWell("geometry a.iv -o a.ply");
  runWell("geometry a.wrl -o b.ply");
  // The same colours, whatever the order of vertices.
  const auto colors = [this](const char* file) {
    std::map<std::array<int, 4>, int> all;
    const Ply ply = readPly(path(file));
    for (const auto& face : ply.faces)
      for (const int corner : face) ++all[ply.vertices[static_cast<std::size_t>(corner)].color];
    return all;
  };
  EXPECT_EQ(colors("a.ply"), colors("b.ply"));
}

}  // namespace
