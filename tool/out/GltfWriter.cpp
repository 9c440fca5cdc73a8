#include <Ormelle/PoOrmelle.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

#include "graph/toolkit/offscreen/PiPicture.h"
#include "out/Base64.h"
#include "out/ModelWriter.h"

namespace tool {

namespace {

using nlohmann::json;

// Numbers of the format.
constexpr int kUnsignedShort = 5123;
constexpr int kUnsignedInt = 5125;
constexpr int kFloat = 5126;
constexpr int kArrayBuffer = 34962;
constexpr int kElementArrayBuffer = 34963;
constexpr int kNearest = 9728;
constexpr int kLinear = 9729;
constexpr int kRepeat = 10497;
constexpr int kClampToEdge = 33071;

// The colours of scenes are those of screens (sRGB); the format wants amounts of light.
double linear(uint32_t byte) {
  const double c = byte / 255.0;
  return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

json colorFactor(uint32_t color) {
  return {linear(color >> 24 & 255), linear(color >> 16 & 255), linear(color >> 8 & 255), (color & 255) / 255.0};
}

class GltfFile {
 public:
  explicit GltfFile(const SceneModel& model) : m_model(model), m_origin(model.origin()) {
    m_json["asset"] = {{"version", "2.0"}, {"generator", std::string("Ormelle ") + PoOrmelle::getVersion()}};
    m_json["scene"] = 0;
    json mesh = json::object();
    for (const ModelPart& part : model.parts()) mesh["primitives"].push_back(primitive(part));
    if (model.parts().empty()) {
      m_json["scenes"] = json::array({json::object()});
      return;
    }
    m_json["meshes"] = json::array({mesh});
    json node = {{"mesh", 0}};
    if (m_origin != std::array<double, 3>{}) node["translation"] = m_origin;
    m_json["nodes"] = json::array({node});
    m_json["scenes"] = json::array({{{"nodes", {0}}}});
    if (m_hasUnlit) m_json["extensionsUsed"] = {"KHR_materials_unlit"};
  }

  std::string write(bool isBinary, std::FILE* stream) {
    if (!m_problem.empty()) return m_problem;
    if (!m_bytes.empty()) {
      m_json["buffers"] = json::array({{{"byteLength", m_bytes.size()}}});
      if (!isBinary) m_json["buffers"][0]["uri"] = "data:application/octet-stream;base64," + base64(m_bytes);
    }
    std::string text = m_json.dump();
    if (!isBinary) {
      std::fwrite(text.data(), 1, text.size(), stream);
      std::fputc('\n', stream);
      return "";
    }
    text.resize((text.size() + 3) / 4 * 4, ' ');
    const std::size_t total = 12 + 8 + text.size() + (m_bytes.empty() ? 0 : 8 + m_bytes.size());
    if (total > std::numeric_limits<uint32_t>::max())
      return "the model is larger than the 4 GB that such a file can be";
    const auto word = [stream](std::size_t value) {
      for (int shift = 0; shift < 32; shift += 8) std::fputc(static_cast<int>(value >> shift & 255), stream);
    };
    word(0x46546C67);  // "glTF"
    word(2);
    word(total);
    word(text.size());
    word(0x4E4F534A);  // "JSON"
    std::fwrite(text.data(), 1, text.size(), stream);
    if (!m_bytes.empty()) {
      word(m_bytes.size());
      word(0x004E4942);  // "BIN"
      std::fwrite(m_bytes.data(), 1, m_bytes.size(), stream);
    }
    return "";
  }

 private:
  template <class Number>
  void put(Number number) {
    const std::size_t at = m_bytes.size();
    m_bytes.resize(at + sizeof(number));
    std::memcpy(m_bytes.data() + at, &number, sizeof(number));
  }

  // What was put since `start` becomes a view of the buffer.
  std::size_t endView(std::size_t start, int target) {
    json view = {{"buffer", 0}, {"byteOffset", start}, {"byteLength", m_bytes.size() - start}};
    if (target) view["target"] = target;
    m_bytes.resize((m_bytes.size() + 3) / 4 * 4, 0);
    m_json["bufferViews"].push_back(std::move(view));
    return m_json["bufferViews"].size() - 1;
  }

  std::size_t endAccessor(std::size_t start, int target, int type, const char* shape, std::size_t count) {
    const std::size_t view = endView(start, target);
    m_json["accessors"].push_back({{"bufferView", view}, {"componentType", type}, {"count", count}, {"type", shape}});
    return m_json["accessors"].size() - 1;
  }

  json primitive(const ModelPart& part) {
    const std::vector<ModelVertex>& vertices = part.vertices;
    json out;
    std::array<float, 3> low{};
    std::array<float, 3> high{};
    std::size_t start = m_bytes.size();
    for (std::size_t i = 0; i < vertices.size(); ++i)
      for (std::size_t axis = 0; axis < 3; ++axis) {
        const auto c = static_cast<float>(vertices[i].position[axis] - m_origin[axis]);
        low[axis] = i == 0 ? c : std::min(low[axis], c);
        high[axis] = i == 0 ? c : std::max(high[axis], c);
        put(c);
      }
    const std::size_t positions = endAccessor(start, kArrayBuffer, kFloat, "VEC3", vertices.size());
    m_json["accessors"][positions]["min"] = low;
    m_json["accessors"][positions]["max"] = high;
    out["attributes"]["POSITION"] = positions;

    if (part.look.isLit) {
      start = m_bytes.size();
      for (const ModelVertex& v : vertices)
        for (const float c : v.normal) put(c);
      out["attributes"]["NORMAL"] = endAccessor(start, kArrayBuffer, kFloat, "VEC3", vertices.size());
    }
    if (part.look.texture >= 0) {
      start = m_bytes.size();
      for (const ModelVertex& v : vertices) {
        put(v.place[0]);
        put(1.0f - v.place[1]);
      }
      out["attributes"]["TEXCOORD_0"] = endAccessor(start, kArrayBuffer, kFloat, "VEC2", vertices.size());
    }
    const bool isUniform = std::all_of(vertices.begin(), vertices.end(),
                                       [&](const ModelVertex& v) { return v.color == vertices.front().color; });
    if (!isUniform) {
      start = m_bytes.size();
      for (const ModelVertex& v : vertices) {
        for (int shift = 24; shift >= 8; shift -= 8)
          put(static_cast<uint16_t>(linear(v.color >> shift & 255) * 65535.0 + 0.5));
        put(static_cast<uint16_t>((v.color & 255) * 257));
      }
      const std::size_t colors = endAccessor(start, kArrayBuffer, kUnsignedShort, "VEC4", vertices.size());
      m_json["accessors"][colors]["normalized"] = true;
      out["attributes"]["COLOR_0"] = colors;
    }
    start = m_bytes.size();
    for (const uint32_t index : part.indices) put(index);
    out["indices"] = endAccessor(start, kElementArrayBuffer, kUnsignedInt, "SCALAR", part.indices.size());
    out["mode"] = part.look.kind == ModelLook::POINTS ? 0 : part.look.kind == ModelLook::LINES ? 1 : 4;
    out["material"] = material(part.look, isUniform ? vertices.front().color : 0xffffffff);
    return out;
  }

  std::size_t material(const ModelLook& look, uint32_t color) {
    json base = {{"baseColorFactor", colorFactor(color)}, {"metallicFactor", 0.0}};
    // The width of the highlight of Blinn's model as a roughness: alpha = sqrt(2 / (exponent + 2)), and alpha is its
    // square.
    const double exponent = look.specular != 0 ? look.shininess / 255.0 * 128.0 : 0.0;
    base["roughnessFactor"] = look.isLit ? std::pow(2.0 / (exponent + 2.0), 0.25) : 1.0;
    json out;
    if (look.texture >= 0) base["baseColorTexture"] = {{"index", texture(look.texture)}};
    out["pbrMetallicRoughness"] = base;
    out["doubleSided"] = look.isTwoSided;
    bool isTransparent = look.isTransparent;
    if (look.texture >= 0) isTransparent = isTransparent || hasTransparentTexel(look.texture);
    if (isTransparent) out["alphaMode"] = "BLEND";
    if (look.emissive != 0)
      out["emissiveFactor"] = {linear(look.emissive >> 16 & 255), linear(look.emissive >> 8 & 255),
                               linear(look.emissive & 255)};
    if (!look.isLit) {
      m_hasUnlit = true;
      out["extensions"]["KHR_materials_unlit"] = json::object();
    }
    m_json["materials"].push_back(std::move(out));
    return m_json["materials"].size() - 1;
  }

  bool hasTransparentTexel(int index) const {
    const ShapeTexture& image = m_model.textures()[static_cast<std::size_t>(index)];
    for (int row = 0; row < image.height(); ++row)
      for (int column = 0; column < image.width(); ++column)
        if ((image.texel(column, row) & 255) < 255) return true;
    return false;
  }

  std::size_t texture(int index) {
    const ShapeTexture& image = m_model.textures()[static_cast<std::size_t>(index)];
    PiPicture picture{image.width(), image.height(), {}};
    for (int row = image.height() - 1; row >= 0; --row)
      for (int column = 0; column < image.width(); ++column) {
        const uint32_t texel = image.texel(column, row);
        for (int shift = 24; shift >= 0; shift -= 8) picture.rgba.push_back(static_cast<uint8_t>(texel >> shift & 255));
      }
    std::vector<uint8_t> png;
    const std::string problem = picture.encodePng(png);
    if (m_problem.empty()) m_problem = problem;
    const std::size_t start = m_bytes.size();
    m_bytes.insert(m_bytes.end(), png.begin(), png.end());
    const std::size_t view = endView(start, 0);
    m_json["images"].push_back({{"bufferView", view}, {"mimeType", "image/png"}});
    const int filter = image.isSharp() ? kNearest : kLinear;
    m_json["samplers"].push_back({{"magFilter", filter},
                                  {"minFilter", filter},
                                  {"wrapS", image.repeatsS() ? kRepeat : kClampToEdge},
                                  {"wrapT", image.repeatsT() ? kRepeat : kClampToEdge}});
    m_json["textures"].push_back({{"source", m_json["images"].size() - 1}, {"sampler", m_json["samplers"].size() - 1}});
    return m_json["textures"].size() - 1;
  }

  const SceneModel& m_model;
  std::array<double, 3> m_origin;
  json m_json;
  std::vector<uint8_t> m_bytes;
  std::string m_problem;
  bool m_hasUnlit = false;
};

}  // namespace

std::string writeGltf(const SceneModel& model, bool isBinary, std::FILE* stream) {
  return GltfFile(model).write(isBinary, stream);
}

}  // namespace tool
