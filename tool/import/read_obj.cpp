// Surfaces of modellers in OBJ files, by tinyobjloader. What that passes over is found by a look at the lines.

#define TINYOBJLOADER_USE_DOUBLE
#include <tiny_obj_loader.h>

#include <algorithm>
#include <filesystem>
#include <map>

#include "Readers.h"

namespace importer {

namespace {

// What the lines of a file begin with.
struct LineCensus {
  std::map<std::string, std::size_t, std::less<>> words;
  std::size_t numColors = 0, mostCorners = 0;

  std::size_t count(const char* word) const {
    const auto found = words.find(word);
    return found == words.end() ? 0 : found->second;
  }
};

constexpr const char* kBlanks = " \t\r";

std::size_t countWords(std::string_view line) {
  std::size_t count = 0;
  for (std::size_t at = line.find_first_not_of(kBlanks); at != std::string_view::npos;
       at = line.find_first_not_of(kBlanks, std::min(line.find_first_of(kBlanks, at), line.size())))
    ++count;
  return count;
}

LineCensus lineCensusOf(std::string_view text) {
  LineCensus census;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
    if (line.empty() || line.front() == '#') continue;
    const std::string_view word = line.substr(0, std::min<std::size_t>(line.find_first_of(kBlanks), 20));
    ++census.words[std::string(word)];
    if (word == "v" && countWords(line) > 6) ++census.numColors;
    if (word == "f") census.mostCorners = std::max(census.mostCorners, countWords(line) - 1);
  }
  return census;
}

class ObjTaker {
 public:
  ObjTaker(const tinyobj::ObjReader& reader, Dataset& data) : m_reader(reader), m_data(data) {}

  Piece take(bool withColors) {
    const tinyobj::attrib_t& all = m_reader.GetAttrib();
    for (std::size_t i = 0; i + 2 < all.vertices.size(); i += 3)
      m_piece.points.push_back({all.vertices[i], all.vertices[i + 1], all.vertices[i + 2]});
    if (withColors && all.colors.size() == all.vertices.size()) {
      VectorSet colors{"colour", Binding::NODE, {}};
      for (std::size_t i = 0; i + 2 < all.colors.size(); i += 3)
        colors.values.push_back({toFloat(all.colors[i]), toFloat(all.colors[i + 1]), toFloat(all.colors[i + 2])});
      m_piece.vectors.push_back(std::move(colors));
    }
    for (const tinyobj::shape_t& shape : m_reader.GetShapes()) {
      const std::size_t before = m_piece.cellKinds.size();
      takeShape(shape);
      if (m_piece.cellKinds.size() == before) continue;
      m_groups.resize(m_piece.cellKinds.size(), static_cast<float>(m_numGroups));
      if (!shape.name.empty() && m_numGroups < 12)
        m_names += (m_names.empty() ? "" : ", ") + std::to_string(m_numGroups) + " is \"" + shape.name + "\"";
      ++m_numGroups;
    }
    if (m_numGroups > 1) m_piece.scalars.push_back({"group", Binding::CELL, m_groups});
    if (m_numGroups > 1 && !m_names.empty())
      m_data.note("groups are kept as numbers: " + m_names + (m_numGroups > 12 ? " ..." : ""));
    return std::move(m_piece);
  }

 private:
  void takeShape(const tinyobj::shape_t& shape) {
    std::vector<int> nodes;
    std::size_t at = 0;
    for (const std::size_t count : shape.mesh.num_face_vertices) {
      nodes.clear();
      for (std::size_t i = 0; i < count && at < shape.mesh.indices.size(); ++i, ++at)
        nodes.push_back(shape.mesh.indices[at].vertex_index);
      m_piece.addPolygon(nodes.data(), static_cast<int>(nodes.size()));
    }
    at = 0;
    for (const int count : shape.lines.num_line_vertices) {
      for (int i = 0; i + 1 < count && at + 1 < shape.lines.indices.size(); ++i, ++at) {
        const std::array<int, 2> ends{shape.lines.indices[at].vertex_index, shape.lines.indices[at + 1].vertex_index};
        m_piece.addCell(CellKind::LINE, ends.data());
      }
      ++at;
    }
    for (const tinyobj::index_t& point : shape.points.indices) m_piece.addCell(CellKind::VERTEX, &point.vertex_index);
  }

  const tinyobj::ObjReader& m_reader;
  Dataset& m_data;
  Piece m_piece;
  std::vector<float> m_groups;  // of cells
  std::string m_names;
  std::size_t m_numGroups = 0;
};

void noteLinesLeftOut(const LineCensus& census, Dataset& data) {
  if (census.count("vn") > 0) data.note("normals were left out: they are computed anew");
  if (census.count("vt") > 0) data.note("texture coordinates were left out");
  if (census.count("usemtl") + census.count("mtllib") > 0) data.note("materials were left out");
  std::string others;
  for (const auto& [word, times] : census.words) {
    static constexpr std::array<std::string_view, 11> known{"v", "vt", "vn",     "f",      "l", "p",
                                                            "g", "o",  "usemtl", "mtllib", "s"};
    if (std::find(known.begin(), known.end(), word) == known.end()) others += (others.empty() ? "" : ", ") + word;
  }
  constexpr std::size_t kLongest = 100;
  if (others.size() > kLongest) others = others.substr(0, kLongest - 3) + "...";
  if (!others.empty()) data.note("lines of these kinds were left out: " + others);
}

}  // namespace

Dataset readObj(const std::string& file) {
  const std::string text = readWhole(file);
  if (text.find('\0') != std::string::npos) throw Failure("it has bytes in it that no text has");
  const LineCensus census = lineCensusOf(text);
  if (census.count("v") == 0) throw Failure("it has no vertices, which begin with a v");
  // The library counts corners in a byte.
  if (census.mostCorners > 255) throw Failure("one of its faces has more than 255 corners");
  tinyobj::ObjReaderConfig config;
  config.triangulate = false;
  tinyobj::ObjReader reader;
  if (!reader.ParseFromString(text, "", config)) {
    std::string problem = reader.Error();
    problem.resize(std::min(problem.find('\n'), problem.size()));
    throw Failure("tinyobjloader can't read it: " + problem);
  }
  Dataset data;
  data.upAxis = 1;
  Piece piece = ObjTaker(reader, data).take(census.numColors > 0);
  piece.name = std::filesystem::path(file).stem().string();
  data.pieces.push_back(std::move(piece));
  noteLinesLeftOut(census, data);
  return data;
}

}  // namespace importer
