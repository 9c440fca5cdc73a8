// Surfaces and points of scanners in PLY files, as text and in both byte orders: all that vertices, faces and edges
// have.

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <limits>
#include <sstream>

#include "Readers.h"

namespace importer {

namespace {

enum class PlyType { INT8, UINT8, INT16, UINT16, INT32, UINT32, FLOAT32, FLOAT64 };

struct PlyProperty {
  std::string name;
  PlyType type = PlyType::FLOAT32;
  bool isList = false;
  PlyType countType = PlyType::UINT8;
};

struct PlyElement {
  std::string name;
  std::size_t count = 0;
  std::vector<PlyProperty> properties;
};

std::size_t byteSizeOf(PlyType type) {
  constexpr std::array<std::size_t, 8> sizes{1, 1, 2, 2, 4, 4, 4, 8};
  return sizes[static_cast<std::size_t>(type)];
}

bool isWholeType(PlyType type) { return type < PlyType::FLOAT32; }

PlyType typeNamed(const std::string& name) {
  constexpr std::array<std::array<const char*, 2>, 8> names{{{"char", "int8"},
                                                             {"uchar", "uint8"},
                                                             {"short", "int16"},
                                                             {"ushort", "uint16"},
                                                             {"int", "int32"},
                                                             {"uint", "uint32"},
                                                             {"float", "float32"},
                                                             {"double", "float64"}}};
  for (std::size_t i = 0; i < names.size(); ++i)
    if (name == names[i][0] || name == names[i][1]) return static_cast<PlyType>(i);
  throw Failure("its header names a type that there isn't: " + name.substr(0, 30));
}

// ---- The header -----------------------------------------------------------------------------------------------------

struct PlyHeader {
  bool isText = false, isReversed = false;
  std::vector<PlyElement> elements;
  std::size_t size = 0;

  explicit PlyHeader(std::string_view bytes) {
    std::string_view rest = bytes;
    bool isOver = false;
    while (!rest.empty() && !isOver) {
      const std::size_t end = std::min(rest.find_first_of("\r\n"), rest.size());
      isOver = takeLine(std::string(rest.substr(0, end)));
      const bool isPair = rest.substr(end).starts_with("\r\n");
      rest.remove_prefix(std::min(rest.size(), end + (isPair ? 2 : 1)));
    }
    if (!isOver) throw Failure("its header has no end");
    size = bytes.size() - rest.size();
    checkCounts(rest.size());
  }

 private:
  // Whether it was the last one.
  bool takeLine(const std::string& text) {
    std::istringstream line(text);
    std::string word;
    line >> word;
    if (word == "end_header") return true;
    if (word == "format") {
      line >> word;
      isText = word == "ascii";
      const bool isBig = word == "binary_big_endian";
      if (!isText && !isBig && word != "binary_little_endian") throw Failure("its header names no format");
      isReversed = !isText && isBig != (std::endian::native == std::endian::big);
    } else if (word == "element") {
      PlyElement& element = elements.emplace_back();
      long long count = -1;
      if (!(line >> element.name >> count) || count < 0) throw Failure("an element of its header has no number");
      element.count = static_cast<std::size_t>(count);
    } else if (word == "property") {
      if (elements.empty()) throw Failure("its header has a property before the first element");
      PlyProperty property;
      line >> word;
      if (word == "list") {
        property.isList = true;
        line >> word;
        property.countType = typeNamed(word);
        line >> word;
      }
      property.type = typeNamed(word);
      if (!(line >> property.name)) throw Failure("a property of its header has no name");
      elements.back().properties.push_back(property);
    }
    return false;
  }

  // Whether the file can hold what the header promises.
  void checkCounts(std::size_t numBytes) const {
    std::size_t left = numBytes + 1;  // the last line of a text may go without its end
    for (const PlyElement& element : elements) {
      std::size_t least = 0;
      for (const PlyProperty& property : element.properties)
        least += isText ? 2 : byteSizeOf(property.isList ? property.countType : property.type);
      if (least > 0 && element.count > left / least) throw Failure("its header promises more than the file holds");
      if (least == 0 && element.count > 0) throw Failure("an element of its header has no property");
      left -= element.count * least;
    }
  }
};

// ---- Numbers --------------------------------------------------------------------------------------------------------

class PlyCursor {
 public:
  PlyCursor(std::string_view bytes, const PlyHeader& header)
      : m_rest(bytes.substr(header.size)), m_isText(header.isText), m_isReversed(header.isReversed) {}

  double number(PlyType type) { return m_isText ? textNumber() : binaryNumber(type); }

  std::size_t count(PlyType type) {
    const double number = this->number(type);
    if (!(number >= 0) || number > static_cast<double>(m_rest.size()))
      throw Failure("one of its lists has more entries than the file holds");
    return static_cast<std::size_t>(number);
  }

  int index(PlyType type) {
    const double number = this->number(type);
    if (!(std::abs(number) <= std::numeric_limits<int>::max())) throw Failure("one of its indices is no number");
    return static_cast<int>(number);
  }

 private:
  double textNumber() {
    m_rest.remove_prefix(std::min(m_rest.find_first_not_of(" \t\r\n"), m_rest.size()));
    if (m_rest.empty()) throw Failure("it breaks off");
    if (m_rest.front() == '+') m_rest.remove_prefix(1);
    double value = 0;
    const std::from_chars_result result = std::from_chars(m_rest.data(), m_rest.data() + m_rest.size(), value);
    if (result.ec == std::errc::invalid_argument) throw Failure("there are words in it where numbers are due");
    m_rest.remove_prefix(static_cast<std::size_t>(result.ptr - m_rest.data()));
    return result.ec == std::errc() ? value : std::numeric_limits<double>::quiet_NaN();
  }

  double binaryNumber(PlyType type) {
    std::array<char, 8> bytes{};
    const std::size_t size = byteSizeOf(type);
    if (m_rest.size() < size) throw Failure("it breaks off");
    std::copy_n(m_rest.begin(), size, bytes.begin());
    m_rest.remove_prefix(size);
    if (m_isReversed) std::reverse(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size));
    switch (type) {
      case PlyType::INT8:
        return as<std::int8_t>(bytes);
      case PlyType::UINT8:
        return as<std::uint8_t>(bytes);
      case PlyType::INT16:
        return as<std::int16_t>(bytes);
      case PlyType::UINT16:
        return as<std::uint16_t>(bytes);
      case PlyType::INT32:
        return as<std::int32_t>(bytes);
      case PlyType::UINT32:
        return as<std::uint32_t>(bytes);
      case PlyType::FLOAT32:
        return static_cast<double>(as<float>(bytes));
      default:
        return as<double>(bytes);
    }
  }

  template <class Number>
  static Number as(const std::array<char, 8>& bytes) {
    Number number{};
    std::memcpy(&number, bytes.data(), sizeof number);
    return number;
  }

  std::string_view m_rest;
  bool m_isText, m_isReversed;
};

// ---- Elements -------------------------------------------------------------------------------------------------------

// The numbers of an element, property by property.
struct PlyColumns {
  std::vector<PlyProperty> properties;
  std::vector<std::vector<double>> values;

  explicit PlyColumns(const PlyElement& element) {
    for (const PlyProperty& property : element.properties)
      if (!property.isList) properties.push_back(property);
    values.resize(properties.size());
  }
  const std::vector<double>* named(const std::string& name) const {
    for (std::size_t i = 0; i < properties.size(); ++i)
      if (properties[i].name == name) return &values[i];
    return nullptr;
  }
  double scaleOf(const std::string& name) const {
    for (const PlyProperty& property : properties)
      if (property.name == name && isWholeType(property.type)) return property.type == PlyType::UINT16 ? 65535 : 255;
    return 1;
  }
};

class PlyTaker {
 public:
  PlyTaker(std::string_view bytes, Dataset& data) : m_header(bytes), m_cursor(bytes, m_header), m_data(data) {}

  Piece take() {
    for (const PlyElement& element : m_header.elements) takeElement(element);
    if (m_piece.points.empty()) throw Failure("it has no vertices");
    finishCells();
    return std::move(m_piece);
  }

 private:
  void takeElement(const PlyElement& element) {
    const bool isVertex = element.name == "vertex", isFace = element.name == "face", isEdge = element.name == "edge",
               isStrip = element.name == "tristrips";
    PlyColumns columns(element);
    std::vector<int> nodes;
    for (std::size_t i = 0; i < element.count; ++i) {
      std::size_t column = 0;
      for (const PlyProperty& property : element.properties) {
        if (!property.isList) {
          columns.values[column++].push_back(m_cursor.number(property.type));
          continue;
        }
        const bool isNodes =
            (isFace || isStrip) && (property.name == "vertex_indices" || property.name == "vertex_index");
        if (!isNodes && i == 0)
          m_data.note("the lists \"" + property.name + "\" of the element " + element.name + " were left out");
        const std::size_t count = m_cursor.count(property.countType);
        nodes.clear();
        for (std::size_t k = 0; k < count; ++k) {
          if (isNodes)
            nodes.push_back(m_cursor.index(property.type));
          else
            m_cursor.number(property.type);
        }
        if (isFace && isNodes) m_faces.push_back(nodes);
        if (isStrip && isNodes) addStrips(nodes);
      }
    }
    if (isVertex)
      takeVertices(columns);
    else if (isFace)
      takeSets(columns, Binding::CELL, {});
    else if (isEdge)
      takeEdges(columns);
    else if (!isStrip && element.count > 0)
      m_data.note(counted(element.count, "element", "elements") + " \"" + element.name +
                  (element.count == 1 ? "\" was left out" : "\" were left out"));
  }

  void takeVertices(const PlyColumns& columns) {
    const std::vector<double>*x = columns.named("x"), *y = columns.named("y"), *z = columns.named("z");
    if (!x || !y) throw Failure("its vertices have no x and y");
    for (std::size_t i = 0; i < x->size(); ++i) m_piece.points.push_back({(*x)[i], (*y)[i], z ? (*z)[i] : 0.0});
    takeSets(columns, Binding::NODE, {"x", "y", "z"});
  }

  // Numbers that belong together become vectors.
  void takeSets(const PlyColumns& columns, Binding binding, std::vector<std::string> taken) {
    const auto takeVector = [&](const std::string& name, const std::array<std::string, 3>& names, bool isColor) {
      std::array<const std::vector<double>*, 3> parts{};
      for (std::size_t i = 0; i < 3; ++i) parts[i] = columns.named(names[i]);
      if (!parts[0] || !parts[1] || !parts[2]) return;
      const double scale = isColor ? columns.scaleOf(names[0]) : 1;
      VectorSet set{name, binding, {}};
      for (std::size_t i = 0; i < parts[0]->size(); ++i)
        set.values.push_back(
            {toFloat((*parts[0])[i] / scale), toFloat((*parts[1])[i] / scale), toFloat((*parts[2])[i] / scale)});
      m_piece.vectors.push_back(std::move(set));
      taken.insert(taken.end(), names.begin(), names.end());
    };
    takeVector("normal", {"nx", "ny", "nz"}, false);
    takeVector("colour", {"red", "green", "blue"}, true);
    takeVector("colour", {"diffuse_red", "diffuse_green", "diffuse_blue"}, true);
    for (std::size_t i = 0; i < columns.properties.size(); ++i) {
      const std::string& name = columns.properties[i].name;
      if (std::find(taken.begin(), taken.end(), name) != taken.end()) continue;
      ScalarSet set{name, binding, {}};
      for (const double value : columns.values[i]) set.values.push_back(toFloat(value));
      m_piece.scalars.push_back(std::move(set));
    }
  }

  void takeEdges(const PlyColumns& columns) {
    const std::vector<double>*from = columns.named("vertex1"), *to = columns.named("vertex2");
    for (const PlyProperty& property : columns.properties)
      if (property.name != "vertex1" && property.name != "vertex2")
        m_data.note("the property \"" + property.name + "\" of edges was left out");
    if (!from || !to) return;
    for (std::size_t i = 0; i < from->size(); ++i) m_lines.push_back({nodeOf((*from)[i]), nodeOf((*to)[i])});
  }

  static int nodeOf(double number) {
    if (!(number >= 0 && number <= std::numeric_limits<int>::max())) throw Failure("an edge has no such vertex");
    return static_cast<int>(number);
  }

  // Strips follow each other in one list, ended by -1.
  void addStrips(const std::vector<int>& nodes) {
    std::size_t start = 0;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      if (nodes[i] < 0) {
        start = i + 1;
      } else if (i >= start + 2) {
        const bool isOdd = (i - start) % 2 == 1;
        m_triangles.push_back({nodes[i - 2], nodes[isOdd ? i : i - 1], nodes[isOdd ? i - 1 : i]});
      }
    }
  }

  // Faces may come before the vertices that they name. Only they have sets: the other cells' values are undefined.
  void finishCells() {
    int source = 0;
    for (const std::vector<int>& face : m_faces)
      m_piece.addPolygon(face.data(), static_cast<int>(face.size()), source++);
    for (const std::array<int, 3>& triangle : m_triangles)
      m_piece.addCell(CellKind::TRIANGLE, triangle.data(), source++);
    for (const std::array<int, 2>& line : m_lines) m_piece.addCell(CellKind::LINE, line.data(), source++);
    if (m_piece.cellKinds.empty())
      for (int i = 0; i < static_cast<int>(m_piece.points.size()); ++i) m_piece.addCell(CellKind::VERTEX, &i, source++);
    constexpr float kNothing = std::numeric_limits<float>::quiet_NaN();
    for (ScalarSet& set : m_piece.scalars)
      if (set.binding == Binding::CELL) set.values.resize(static_cast<std::size_t>(source), kNothing);
    for (VectorSet& set : m_piece.vectors)
      if (set.binding == Binding::CELL)
        set.values.resize(static_cast<std::size_t>(source), {kNothing, kNothing, kNothing});
  }

  PlyHeader m_header;
  PlyCursor m_cursor;
  Dataset& m_data;
  Piece m_piece;
  std::vector<std::vector<int>> m_faces;
  std::vector<std::array<int, 3>> m_triangles;
  std::vector<std::array<int, 2>> m_lines;
};

}  // namespace

Dataset readPly(const std::string& file) {
  const std::string bytes = readWhole(file);
  Dataset data;
  Piece piece = PlyTaker(bytes, data).take();
  piece.name = std::filesystem::path(file).stem().string();
  data.pieces.push_back(std::move(piece));
  return data;
}

}  // namespace importer
