#include <Inventor/SbRotation.h>
#include <Inventor/SbVec3f.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

#include "out/ModelWriter.h"

namespace tool {

namespace {

std::string number(double value) {
  char digits[48];
  const auto result = std::to_chars(digits, digits + sizeof(digits), static_cast<float>(value));
  return std::string(digits, result.ptr);
}

std::string rgb(uint32_t color) {
  return number((color >> 24 & 255) / 255.0) + ' ' + number((color >> 16 & 255) / 255.0) + ' ' +
         number((color >> 8 & 255) / 255.0);
}

std::string vector(const SbVec3f& v) {
  return number(static_cast<double>(v[0])) + ' ' + number(static_cast<double>(v[1])) + ' ' +
         number(static_cast<double>(v[2]));
}

std::string rotation(const SbRotation& turn) {
  SbVec3f axis;
  float angle = 0.0f;
  turn.getValue(axis, angle);
  return vector(axis) + ' ' + number(static_cast<double>(angle));
}

std::string quoted(const std::string& text) {
  std::string out = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') out += '\\';
    if (static_cast<unsigned char>(c) >= 0x20) out += c;
  }
  return out + '"';
}

class VrmlFile {
 public:
  explicit VrmlFile(std::FILE* stream) : m_stream(stream) {}

  void write(const SceneModel& model) {
    const std::array<double, 3> origin = model.origin();
    line("#VRML V2.0 utf8");
    line("Transform {");
    if (origin != std::array<double, 3>{})
      line("  translation " + number(origin[0]) + ' ' + number(origin[1]) + ' ' + number(origin[2]));
    line("  children [");
    for (const ModelPart& part : model.parts()) writePart(part, model, origin);
    for (const ModelText& text : model.texts()) writeText(text, origin);
    line("  ]\n}");
  }

 private:
  void line(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), m_stream);
    std::fputc('\n', m_stream);
  }

  // The appearance of what has one opacity. Without a material, nothing is lit and colours are shown as they are.
  static std::string appearance(bool isLit, bool isUniform, uint32_t color, const ModelLook& look) {
    const double transparency = 1.0 - (color & 255) / 255.0;
    std::string material;
    if (isLit) {
      material = "diffuseColor " + rgb(color) + " specularColor " + rgb(look.specular << 8) + " shininess " +
                 number(look.shininess / 255.0);
      if (look.emissive != 0) material += " emissiveColor " + rgb(look.emissive << 8);
    } else if (isUniform) {
      material = "ambientIntensity 0 diffuseColor 0 0 0 emissiveColor " + rgb(color);
    } else if (transparency > 0.0) {
      material = "diffuseColor " + rgb(color);
    } else {
      return "";
    }
    if (transparency > 0.0) material += " transparency " + number(transparency);
    return "material Material { " + material + " }";
  }

  void writePart(const ModelPart& part, const SceneModel& model, const std::array<double, 3>& origin) {
    const std::vector<ModelVertex>& vertices = part.vertices;
    const bool isUniform = std::all_of(vertices.begin(), vertices.end(), [&](const ModelVertex& v) {
      return v.color >> 8 == vertices.front().color >> 8;
    });
    const bool hasTexture = part.look.texture >= 0;
    line("    Shape {");
    line("      appearance Appearance {");
    const std::string material =
        appearance(part.look.isLit || hasTexture, isUniform, vertices.front().color, part.look);
    if (!material.empty()) line("        " + material);
    if (hasTexture) writeTexture(model.textures()[static_cast<std::size_t>(part.look.texture)]);
    line("      }");
    const bool isFaces = part.look.kind == ModelLook::TRIANGLES;
    line(isFaces                              ? "      geometry IndexedFaceSet {"
         : part.look.kind == ModelLook::LINES ? "      geometry IndexedLineSet {"
                                              : "      geometry PointSet {");
    if (isFaces && part.look.isTwoSided) line("        solid FALSE");
    line("        coord Coordinate { point [");
    for (const ModelVertex& v : vertices)
      line(number(v.position[0] - origin[0]) + ' ' + number(v.position[1] - origin[1]) + ' ' +
           number(v.position[2] - origin[2]) + ',');
    line("        ] }");
    if (!isUniform) {
      line("        color Color { color [");
      for (const ModelVertex& v : vertices) line(rgb(v.color) + ',');
      line("        ] }");
    }
    if (isFaces && part.look.isLit) {
      line("        normal Normal { vector [");
      for (const ModelVertex& v : vertices) line(vector(SbVec3f(v.normal[0], v.normal[1], v.normal[2])) + ',');
      line("        ] }");
    }
    if (hasTexture && isFaces) {
      line("        texCoord TextureCoordinate { point [");
      for (const ModelVertex& v : vertices)
        line(number(static_cast<double>(v.place[0])) + ' ' + number(static_cast<double>(v.place[1])) + ',');
      line("        ] }");
    }
    if (part.look.kind != ModelLook::POINTS) {
      line("        coordIndex [");
      const std::size_t corners = isFaces ? 3 : 2;
      std::string row;
      for (std::size_t i = 0; i < part.indices.size(); ++i) {
        row += std::to_string(part.indices[i]) + ' ';
        if ((i + 1) % corners != 0) continue;
        line(row + "-1,");
        row.clear();
      }
      line("        ]");
    }
    line("      }\n    }");
  }

  void writeTexture(const ShapeTexture& image) {
    line("        texture PixelTexture {");
    if (!image.repeatsS()) line("          repeatS FALSE");
    if (!image.repeatsT()) line("          repeatT FALSE");
    line("          image " + std::to_string(image.width()) + ' ' + std::to_string(image.height()) + " 4");
    for (int row = 0; row < image.height(); ++row) {
      std::string texels;
      for (int column = 0; column < image.width(); ++column) {
        char digits[16];
        std::snprintf(digits, sizeof(digits), "0x%08X ", static_cast<unsigned>(image.texel(column, row)));
        texels += digits;
      }
      line(texels);
    }
    line("        }");
  }

  void writeText(const ModelText& text, const std::array<double, 3>& origin) {
    SbVec3f place;
    SbVec3f scale;
    SbRotation turn;
    SbRotation scaleTurn;
    text.toWorld.getTransform(place, turn, scale, scaleTurn);
    place -= SbVec3f(static_cast<float>(origin[0]), static_cast<float>(origin[1]), static_cast<float>(origin[2]));
    for (int axis = 0; axis < 3; ++axis)
      if (!std::isfinite(place[axis]) || !std::isfinite(scale[axis]) || scale[axis] == 0.0f) return;
    if (!std::isfinite(text.node.size) || !(text.node.size > 0.0)) return;
    line("    Transform {");
    line("      translation " + vector(place));
    line("      rotation " + rotation(turn));
    // A mirrored text has negative scales, which the language doesn't know; it reads better upright anyway.
    line("      scale " + vector(SbVec3f(std::abs(scale[0]), std::abs(scale[1]), std::abs(scale[2]))));
    line("      scaleOrientation " + rotation(scaleTurn));
    line("      children Shape {");
    line("        appearance Appearance { " + appearance(text.isLit, true, text.color, ModelLook()) + " }");
    std::string strings;
    for (const std::string& each : text.node.lines) strings += quoted(each) + ", ";
    line("        geometry Text {");
    line("          string [ " + strings + "]");
    const std::size_t colon = text.node.font.find(':');
    std::string style = colon == std::string::npos ? "" : text.node.font.substr(colon + 1);
    std::transform(style.begin(), style.end(), style.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    const bool isBold = style.find("bold") != std::string::npos;
    const bool isItalic = style.find("italic") != std::string::npos || style.find("oblique") != std::string::npos;
    const std::string family = text.node.font.substr(0, colon);
    line("          fontStyle FontStyle {");
    line("            family [ " + (family.empty() || family == "defaultFont" ? "" : quoted(family) + ", ") +
         "\"SANS\" ]");
    line(std::string("            style \"") +
         (isBold && isItalic ? "BOLDITALIC"
          : isBold           ? "BOLD"
          : isItalic         ? "ITALIC"
                             : "PLAIN") +
         '"');
    line(std::string("            justify \"") +
         (text.node.justification > 0    ? "END"
          : text.node.justification == 0 ? "MIDDLE"
                                         : "BEGIN") +
         '"');
    line("            size " + number(text.node.size));
    line("            spacing " + number(text.node.spacing));
    line("          }\n        }\n      }\n    }");
  }

  std::FILE* m_stream;
};

}  // namespace

std::string writeVrml(const SceneModel& model, std::FILE* stream) {
  VrmlFile(stream).write(model);
  return "";
}

}  // namespace tool
