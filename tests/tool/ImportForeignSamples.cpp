#include "ImportForeignSamples.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <sstream>

namespace {

template <class Number>
std::string ownBytes(Number number) {
  std::string bytes(sizeof number, '\0');
  std::memcpy(bytes.data(), &number, sizeof number);
  return bytes;
}

template <class Number>
std::string bigBytes(Number number) {
  const std::string own = ownBytes(number);
  return {own.rbegin(), own.rend()};
}

// ---- Gmsh -----------------------------------------------------------------------------------------------------------

constexpr std::array<int, 9> kTags{1, 2, 3, 4, 5, 6, 7, 8, 20};
constexpr std::array<std::array<double, 3>, 9> kNodes{
    {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}, {0.5, 0.5, 2}}};

struct GmshCell {
  int tag, type, dimension, group;
  std::vector<int> nodes;
};

const std::vector<GmshCell>& gmshCells() {
  static const std::vector<GmshCell> cells{
      {11, 5, 3, 7, {1, 2, 3, 4, 5, 6, 7, 8}}, {12, 7, 3, 7, {5, 6, 7, 8, 20}}, {13, 3, 2, 1, {1, 4, 3, 2}}};
  return cells;
}

// Numbers of a section, as text or in binary.
class GmshWriter {
 public:
  explicit GmshWriter(bool isBinary) : m_isBinary(isBinary) {}

  template <class Number>
  GmshWriter& operator<<(Number number) {
    if (m_isBinary) {
      m_bytes += ownBytes(number);
    } else {
      std::ostringstream text;
      text << number << ' ';
      m_bytes += text.str();
    }
    return *this;
  }
  void line() {
    if (!m_isBinary) m_bytes += '\n';
  }
  void text(const std::string& text) { m_bytes += text; }
  const std::string& bytes() const { return m_bytes; }

 private:
  bool m_isBinary;
  std::string m_bytes;
};

using Size = std::uint64_t;

void writeGmsh2(GmshWriter& out, bool isBinary) {
  out.text("$Nodes\n9\n");
  for (std::size_t i = 0; i < kTags.size(); ++i) {
    out << kTags[i] << kNodes[i][0] << kNodes[i][1] << kNodes[i][2];
    out.line();
  }
  out.text(std::string(isBinary ? "\n" : "") + "$EndNodes\n$Elements\n3\n");
  for (const GmshCell& cell : gmshCells()) {
    if (isBinary)
      out << cell.type << 1 << 2 << cell.tag;
    else
      out << cell.tag << cell.type << 2;
    out << cell.group << 1;
    for (const int node : cell.nodes) out << node;
    out.line();
  }
  out.text(std::string(isBinary ? "\n" : "") + "$EndElements\n");
}

void writeGmsh4(GmshWriter& out, bool isBinary) {
  const std::string end = isBinary ? "\n" : "";
  out.text("$Entities\n");
  out << Size{0} << Size{0} << Size{1} << Size{1};
  out.line();
  for (const int group : {1, 7}) {
    out << 1 << 0.0 << 0.0 << 0.0 << 1.0 << 1.0 << (group == 7 ? 2.0 : 0.0) << Size{1} << group << Size{0};
    out.line();
  }
  out.text(end + "$EndEntities\n$Nodes\n");
  out << Size{1} << Size{9} << Size{1} << Size{20};
  out.line();
  out << 3 << 1 << 0 << Size{9};
  out.line();
  for (const int tag : kTags) {
    out << static_cast<Size>(tag);
    out.line();
  }
  for (const auto& node : kNodes) {
    out << node[0] << node[1] << node[2];
    out.line();
  }
  out.text(end + "$EndNodes\n$Elements\n");
  out << Size{3} << Size{3} << Size{11} << Size{13};
  out.line();
  for (const GmshCell& cell : gmshCells()) {
    out << cell.dimension << 1 << cell.type << Size{1};
    out.line();
    out << static_cast<Size>(cell.tag);
    for (const int node : cell.nodes) out << static_cast<Size>(node);
    out.line();
  }
  out.text(end + "$EndElements\n");
}

// The values of each node or cell, with its number in front.
void writeGmshData(GmshWriter& out, bool isBinary, const std::string& section, const std::string& name, int components,
                   const std::vector<std::pair<int, std::vector<double>>>& values) {
  out.text("$" + section + "\n1\n\"" + name + "\"\n1\n0.5\n3\n0\n" + std::to_string(components) + "\n" +
           std::to_string(values.size()) + "\n");
  for (const auto& [tag, numbers] : values) {
    out << tag;
    if (section == "ElementNodeData") out << static_cast<int>(numbers.size()) / components;
    for (const double number : numbers) out << number;
    out.line();
  }
  out.text(std::string(isBinary ? "\n" : "") + "$End" + section + "\n");
}

// ---- NetCDF ---------------------------------------------------------------------------------------------------------

// The classic format, as its specification lays it out: all numbers with the highest byte first, all lists with their
// kind and length in front.
class NetcdfWriter {
 public:
  enum Type : std::int32_t { CHAR = 2, SHORT = 3, INT = 4, FLOAT = 5, DOUBLE = 6 };
  struct Attribute {
    std::string name;
    Type type = CHAR;
    std::string bytes;
    std::int32_t count = 0;
  };
  struct Variable {
    std::string name;
    Type type = FLOAT;
    std::vector<std::int32_t> dimensions;
    std::vector<Attribute> attributes;
    std::string values;
  };

  static Attribute text(const std::string& name, const std::string& value) {
    return {name, CHAR, value, static_cast<std::int32_t>(value.size())};
  }
  template <class Number>
  static Attribute number(const std::string& name, Type type, Number value) {
    return {name, type, bigBytes(value), 1};
  }

  std::vector<std::pair<std::string, std::int32_t>> dimensions;
  std::vector<Attribute> attributes;
  std::vector<Variable> variables;

  std::string file() const {
    // Twice: where values begin is known once the header has its length.
    const std::size_t length = header(0).size();
    std::string bytes = header(length);
    for (const Variable& variable : variables) bytes += padded(variable.values);
    return bytes;
  }

 private:
  static std::string whole(std::size_t number) { return bigBytes(static_cast<std::int32_t>(number)); }
  static std::string padded(std::string bytes) {
    bytes.resize((bytes.size() + 3) / 4 * 4, '\0');
    return bytes;
  }
  static std::string named(const std::string& name) { return whole(name.size()) + padded(name); }
  static std::string list(std::int32_t kind, std::size_t count) {
    return count == 0 ? whole(0) + whole(0) : bigBytes(kind) + whole(count);
  }
  static std::string listed(const std::vector<Attribute>& all) {
    std::string bytes = list(12, all.size());
    for (const Attribute& attribute : all)
      bytes += named(attribute.name) + bigBytes(static_cast<std::int32_t>(attribute.type)) + bigBytes(attribute.count) +
               padded(attribute.bytes);
    return bytes;
  }

  std::string header(std::size_t begin) const {
    std::string bytes = std::string("CDF\x01", 4) + whole(0) + list(10, dimensions.size());
    for (const auto& [name, size] : dimensions) bytes += named(name) + bigBytes(size);
    bytes += listed(attributes) + list(11, variables.size());
    for (const Variable& variable : variables) {
      bytes += named(variable.name) + whole(variable.dimensions.size());
      for (const std::int32_t dimension : variable.dimensions) bytes += bigBytes(dimension);
      const std::size_t size = padded(variable.values).size();
      bytes +=
          listed(variable.attributes) + bigBytes(static_cast<std::int32_t>(variable.type)) + whole(size) + whole(begin);
      begin += size;
    }
    return bytes;
  }
};

template <class Number>
std::string bigBytesOf(const std::vector<Number>& numbers) {
  std::string bytes;
  for (const Number number : numbers) bytes += bigBytes(number);
  return bytes;
}

}  // namespace

std::string sampleGmsh(bool isVersion4, bool isBinary) {
  GmshWriter out(isBinary);
  out.text(std::string("$MeshFormat\n") + (isVersion4 ? "4.1" : "2.2") + (isBinary ? " 1 8\n" : " 0 8\n"));
  if (isBinary) out.text(ownBytes(std::int32_t{1}) + "\n");
  out.text("$EndMeshFormat\n$PhysicalNames\n2\n2 1 \"skin of it\"\n3 7 \"body\"\n$EndPhysicalNames\n");
  if (isVersion4)
    writeGmsh4(out, isBinary);
  else
    writeGmsh2(out, isBinary);

  std::vector<std::pair<int, std::vector<double>>> heat, flow;
  for (const int tag : kTags) {
    if (tag != 20) heat.push_back({tag, {static_cast<double>(tag)}});
    flow.push_back({tag, {static_cast<double>(tag), 0, 1}});
  }
  writeGmshData(out, isBinary, "NodeData", "heat at nodes", 1, heat);
  writeGmshData(out, isBinary, "NodeData", "flow", 3, flow);
  writeGmshData(out, isBinary, "ElementData", "stress", 1, {{11, {10}}, {12, {20}}});
  writeGmshData(out, isBinary, "ElementNodeData", "corner values", 1,
                {{11, {1, 2, 3, 4, 5, 6, 7, 8}}, {12, {2, 4, 6, 8, 10}}});
  return out.bytes();
}

std::string sampleNetcdf() {
  using W = NetcdfWriter;
  W file;
  file.dimensions = {{"lon", 4}, {"lat", 3}, {"lev", 2}, {"time", 2}};
  file.attributes = {W::text("title", "made for tests"), W::text("Conventions", "COARDS")};
  std::vector<std::int16_t> temperatures;
  std::vector<float> u, v, orog;
  for (int t = 0; t < 2; ++t)
    for (int z = 0; z < 2; ++z)
      for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 4; ++x) {
          const bool isMissing = x == 1 && y == 2 && z == 0;
          temperatures.push_back(static_cast<std::int16_t>(isMissing ? -32767 : 100 * t + 24 * z + 4 * y + x));
          u.push_back(static_cast<float>(x));
          v.push_back(static_cast<float>(y));
          if (t == 0 && z == 0) orog.push_back(static_cast<float>(10 * x + y));
        }
  orog[5] = -9;
  const auto add = [&](const std::string& name, W::Type type, std::vector<std::int32_t> dimensions,
                       const std::string& values, std::vector<W::Attribute> attributes) {
    file.variables.push_back({name, type, std::move(dimensions), std::move(attributes), values});
  };
  add("lon", W::FLOAT, {0}, bigBytesOf<float>({10, 20, 30, 50}), {W::text("units", "degrees_east")});
  add("lat", W::FLOAT, {1}, bigBytesOf<float>({-5, 0, 5}), {W::text("units", "degrees_north")});
  add("lev", W::FLOAT, {2}, bigBytesOf<float>({1000, 500}), {W::text("units", "hPa"), W::text("positive", "down")});
  add("time", W::DOUBLE, {3}, bigBytesOf<double>({6, 12}), {W::text("units", "hours since 2000-01-01 00:00:00")});
  add("t", W::SHORT, {3, 2, 1, 0}, bigBytesOf(temperatures),
      {W::text("long_name", "air temperature"), W::text("units", "K"), W::number("scale_factor", W::DOUBLE, 0.01),
       W::number("add_offset", W::DOUBLE, 273.15), W::number("_FillValue", W::SHORT, std::int16_t{-32767})});
  add("u", W::FLOAT, {3, 2, 1, 0}, bigBytesOf(u), {W::text("units", "m/s"), W::text("standard_name", "eastward_wind")});
  add("v", W::FLOAT, {3, 2, 1, 0}, bigBytesOf(v),
      {W::text("units", "m/s"), W::text("standard_name", "northward_wind")});
  add("orog", W::FLOAT, {1, 0}, bigBytesOf(orog), {W::number("missing_value", W::FLOAT, -9.0F)});
  add("index", W::INT, {3}, bigBytesOf<std::int32_t>({3, 5}), {});
  add("code", W::CHAR, {0}, "abcd", {});
  return file.file();
}

std::string sampleNetcdfSeries() {
  using W = NetcdfWriter;
  W file;
  file.dimensions = {{"time", 4}, {"lat", 1}, {"lon", 1}, {"band", 3}, {"site", 2}, {"letters", 5}};
  const auto add = [&](const std::string& name, W::Type type, std::vector<std::int32_t> dimensions,
                       const std::string& values, std::vector<W::Attribute> attributes) {
    file.variables.push_back({name, type, std::move(dimensions), std::move(attributes), values});
  };
  add("time", W::DOUBLE, {0}, bigBytesOf<double>({12, 36, 60, 66}), {W::text("units", "hours since 2000-02-28 00:00")});
  add("lat", W::FLOAT, {1}, bigBytesOf<float>({54}), {W::text("units", "degrees_north")});
  add("lon", W::FLOAT, {2}, bigBytesOf<float>({8}), {W::text("units", "degrees_east")});
  add("wl", W::SHORT, {0, 1, 2}, bigBytesOf<std::int16_t>({150, -32767, -25, 0}),
      {W::text("long_name", "water level"), W::text("units", "m"), W::number("scale_factor", W::DOUBLE, 0.01),
       W::number("add_offset", W::DOUBLE, 5.0), W::number("_FillValue", W::SHORT, std::int16_t{-32767})});
  add("air_pressure", W::FLOAT, {0}, bigBytesOf<float>({1013, 1009.5F, 998, -1}),
      {W::text("units", "hPa"), W::number("valid_min", W::FLOAT, 0.0F)});
  add("site_name", W::CHAR, {4, 5}, std::string("north") + std::string("quay\0", 5), {});
  add("flow", W::FLOAT, {0, 4}, bigBytesOf<float>({10, 20, 11, 21, 12, 22, 13, 23}), {W::text("units", "m3/s")});
  add("gain", W::FLOAT, {3}, bigBytesOf<float>({1, 2, 4}), {});
  return file.file();
}

std::string samplePly(const std::string& format) {
  const bool isText = format == "ascii", isBig = format == "binary_big_endian";
  std::string bytes = "ply\nformat " + format +
                      " 1.0\ncomment made for tests\nelement vertex 4\nproperty float x\nproperty double y\nproperty "
                      "float z\nproperty float nx\nproperty float ny\nproperty float nz\nproperty uchar red\nproperty "
                      "uchar green\nproperty uchar blue\nproperty float quality\nelement face 2\nproperty list uchar "
                      "int vertex_indices\nproperty short label\nelement edge 1\nproperty int vertex1\nproperty int "
                      "vertex2\nend_header\n";
  const auto put = [&](auto number) {
    if (isText)
      bytes += std::to_string(number) + " ";
    else
      bytes += isBig ? bigBytes(number) : ownBytes(number);
  };
  for (int i = 0; i < 4; ++i) {
    put(static_cast<float>(i == 1 || i == 2));
    put(static_cast<double>(i / 2));
    put(0.25F);
    for (const float part : {0.0F, 0.0F, 1.0F}) put(part);
    for (int c = 0; c < 3; ++c) put(static_cast<std::uint8_t>(c == i ? 255 : 0));
    put(0.5F * static_cast<float>(i));
    if (isText) bytes += '\n';
  }
  for (int face = 0; face < 2; ++face) {
    put(std::uint8_t{3});
    for (const int node : {0, face + 1, face + 2}) put(std::int32_t{node});
    put(static_cast<std::int16_t>(-7 + face));
    if (isText) bytes += '\n';
  }
  put(std::int32_t{0});
  put(std::int32_t{3});
  return isText ? bytes + "\n" : bytes;
}

std::string sampleObj() {
  return "# a pyramid\nmtllib colours.mtl\no thing\nv 0 0 0 1 0 0\nv 1 0 0 0 1 0\nv 1 1 0 0 0 1\nv 0 1 0 1 1 1\n"
         "v 0.5 0.5 1 0 0 0\nvn 0 0 -1\ng base\nusemtl red\nf 1//1 4//1 3//1 2//1\ng sides\nf 1 2 5\nf 2 3 5\nf 3 4 5\n"
         "f -2 -5 -1\nl 1 3\nctech cspline\n";
}

std::string sampleStl(bool isBinary) {
  const std::array<std::array<float, 9>, 2> facets{{{0, 0, 0, 1, 0, 0, 1, 1, 0}, {0, 0, 0, 1, 1, 0, 0, 1, 0}}};
  std::string bytes = isBinary ? std::string(80, ' ') + ownBytes(std::uint32_t{2}) : "solid square\n";
  for (const auto& facet : facets) {
    if (isBinary) {
      for (const float part : {0.0F, 0.0F, 1.0F}) bytes += ownBytes(part);
      for (const float part : facet) bytes += ownBytes(part);
      bytes += std::string(2, '\0');
      continue;
    }
    bytes += "facet normal 0 0 1\nouter loop\n";
    for (std::size_t i = 0; i < 9; i += 3)
      bytes += "vertex " + std::to_string(facet[i]) + " " + std::to_string(facet[i + 1]) + " " +
               std::to_string(facet[i + 2]) + "\n";
    bytes += "endloop\nendfacet\n";
  }
  return isBinary ? bytes : bytes + "endsolid square\n";
}

std::string sampleSeriesCsv() {
  return "date;\"level; at noon (m)\";flow\n01.03.2024;1,5;10\n02.03.2024;;12,25\n03.03.2024;1,75;n/a\n"
         "05.03.2024;2;-1.000,5\n";
}

std::string sampleTableCsv() {
  return "class,sex,count\n1st,m,10\n1st,f,4\n2nd,m,20\n2nd,f,8\n\"3rd, or crew\",m,30\n";
}

std::string sampleGridCsv() {
  std::string text = "x (m),y (m),depth of water,kind\n";
  for (int y = 0; y < 3; ++y)
    for (int x = 0; x < 4; ++x)
      if (x != 3 || y != 2)
        text += std::to_string(100 * x) + "," + std::to_string(50 * y) + "," + std::to_string(x + 10 * y) + ",\"" +
                (x == 0 ? "shore" : "open") + "\"\n";
  return text;
}

std::vector<std::pair<std::string, std::string>> foreignSamples() {
  return {
#ifdef ORMELLE_IMPORT_HAS_GMSH
      {"gmsh_2.msh", sampleGmsh(false, false)},
      {"gmsh_2_binary.msh", sampleGmsh(false, true)},
      {"gmsh_4.msh", sampleGmsh(true, false)},
      {"gmsh_4_binary.msh", sampleGmsh(true, true)},
#endif
#ifdef ORMELLE_IMPORT_HAS_NETCDF
      {"grid.nc", sampleNetcdf()},
      {"series.nc", sampleNetcdfSeries()},
#endif
#ifdef ORMELLE_IMPORT_HAS_TINYOBJ
      {"pyramid.obj", sampleObj()},
#endif
#ifdef ORMELLE_IMPORT_HAS_VTK
      {"square.stl", sampleStl(false)},
      {"square_binary.stl", sampleStl(true)},
#endif
      {"square.ply", samplePly("ascii")},
      {"square_little.ply", samplePly("binary_little_endian")},
      {"square_big.ply", samplePly("binary_big_endian")},
      {"series.csv", sampleSeriesCsv()},
      {"table.csv", sampleTableCsv()},
      {"grid.csv", sampleGridCsv()},
  };
}
