// Meshes and results of Gmsh, by its own library: versions 2 and 4 of its format, as text and in binary.

#include <gmsh.h>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <limits>
#include <map>
#include <unordered_map>

#include "Readers.h"
#include "read_gmsh_guard.h"

namespace importer {

namespace {

constexpr float kUndefined = std::numeric_limits<float>::quiet_NaN();

// What the library logged or threw, as part of a sentence without the name under which it knew the file.
std::string cleaned(std::string text, const std::string& file) {
  for (const char* start : {"Error: ", "Warning: "})
    if (text.starts_with(start)) text.erase(0, std::char_traits<char>::length(start));
  for (const std::string& name : {"'" + file + "'", file})
    for (std::size_t at = text.find(name); at != std::string::npos; at = text.find(name))
      text.replace(at, name.size(), "it");
  for (char& c : text)
    if (static_cast<unsigned char>(c) < 32 || static_cast<unsigned char>(c) > 126) c = ' ';
  while (!text.empty() && (text.back() == '.' || text.back() == ' ')) text.pop_back();
  constexpr std::size_t kLongest = 200;
  return text.substr(0, kLongest);
}

// The file under a name that has no extension and no neighbours: the library reads by extensions, and options and
// programs beside its files.
class OpenMesh {
 public:
  explicit OpenMesh(const std::string& file) : m_file(::open(file.c_str(), O_RDONLY)) {
    if (m_file < 0) throw Failure("it can't be opened");
  }
  ~OpenMesh() { ::close(m_file); }
  OpenMesh(const OpenMesh&) = delete;
  OpenMesh& operator=(const OpenMesh&) = delete;
  std::string name() const { return "/proc/self/fd/" + std::to_string(m_file); }

  std::string read(off_t from, std::size_t most) const {
    std::string bytes(most, '\0');
    const ssize_t count = ::pread(m_file, bytes.data(), most, from);
    bytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return bytes;
  }
  off_t size() const { return ::lseek(m_file, 0, SEEK_END); }

 private:
  int m_file;
};

// The library takes what doesn't begin like a mesh for a program, and a mesh that breaks off for a whole one.
void checkFrame(const OpenMesh& file) {
  constexpr std::size_t kTail = 256;
  if (!file.read(0, 64).starts_with("$MeshFormat"))
    throw Failure("it doesn't begin with $MeshFormat, as files of Gmsh do");
  const off_t size = file.size();
  const std::string tail = file.read(std::max<off_t>(0, size - static_cast<off_t>(kTail)), kTail);
  const std::size_t end = tail.find_last_not_of(" \t\r\n");
  const std::size_t start = end == std::string::npos ? end : tail.rfind('$', end);
  static constexpr std::array<std::string_view, 15> kEnds{"$EndMeshFormat",
                                                          "$EndPhysicalNames",
                                                          "$EndEntities",
                                                          "$EndPartitionedEntities",
                                                          "$EndNodes",
                                                          "$EndElements",
                                                          "$EndPeriodic",
                                                          "$EndGhostElements",
                                                          "$EndParametrizations",
                                                          "$EndNodeData",
                                                          "$EndElementNodeData",
                                                          "$EndElementData",
                                                          "$EndComments",
                                                          "$EndNodeStringData",
                                                          "$EndInterpolationScheme"};
  const std::string last = start == std::string::npos ? std::string() : tail.substr(start, end + 1 - start);
  if (std::find(kEnds.begin(), kEnds.end(), last) == kEnds.end()) throw Failure("its last section has no end");
}

// The library, from its start to its end.
class Session {
 public:
  Session() {
    gmsh::initialize(0, nullptr, false);
    gmsh::option::setNumber("General.Terminal", 0);
    gmsh::logger::start();
  }
  ~Session() {
    try {
      gmsh::finalize();
    } catch (...) {  // it has nothing to tell any more
    }
  }
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  void load(const std::string& name, Dataset& data) {
    std::string problem;
    try {
      gmsh::merge(name);
    } catch (const std::string& text) {
      problem = text;
    } catch (const std::exception& error) {
      problem = error.what();
    } catch (...) {
      problem = "Gmsh can't read it";
    }
    std::vector<std::string> log;
    gmsh::logger::get(log);
    constexpr std::size_t kMostWarnings = 3;
    std::size_t numWarnings = 0;
    for (const std::string& line : log) {
      if (line.starts_with("Error")) throw Failure("Gmsh can't read it: " + cleaned(line, name));
      if (line.starts_with("Warning") && numWarnings++ < kMostWarnings) data.note("Gmsh warns: " + cleaned(line, name));
    }
    if (!problem.empty()) throw Failure("Gmsh can't read it: " + cleaned(problem, name));
  }
};

// Numbers that Gmsh gave to nodes or cells, and their places here. They are mostly dense.
class TagIndex {
 public:
  void build(const std::vector<std::size_t>& tags) {
    std::size_t last = 0;
    for (const std::size_t tag : tags) last = std::max(last, tag);
    if (last < 4 * tags.size() + 1024) {
      m_dense.assign(last + 1, -1);
      for (std::size_t i = 0; i < tags.size(); ++i) m_dense[tags[i]] = static_cast<int>(i);
    } else {
      m_sparse.reserve(tags.size());
      for (std::size_t i = 0; i < tags.size(); ++i) m_sparse[tags[i]] = static_cast<int>(i);
    }
  }
  // -1 if there is none.
  int operator()(std::size_t tag) const {
    if (tag < m_dense.size()) return m_dense[tag];
    const auto found = m_sparse.find(tag);
    return found == m_sparse.end() ? -1 : found->second;
  }

 private:
  std::vector<int> m_dense;
  std::unordered_map<std::size_t, int> m_sparse;
};

// A kind of cell by its dimension and its corners; false if the library has none.
bool kindOf(int dimension, int numCorners, CellKind& kind) {
  static const std::map<std::pair<int, int>, CellKind> kinds{
      {{0, 1}, CellKind::VERTEX},      {{1, 2}, CellKind::LINE},      {{2, 3}, CellKind::TRIANGLE},
      {{2, 4}, CellKind::QUADRANGLE},  {{3, 5}, CellKind::PYRAMID},   {{3, 6}, CellKind::WEDGE},
      {{3, 4}, CellKind::TETRAHEDRON}, {{3, 8}, CellKind::HEXAHEDRON}};
  const auto found = kinds.find({dimension, numCorners});
  if (found == kinds.end()) return false;
  kind = found->second;
  return true;
}

class ModelReader {
 public:
  explicit ModelReader(Dataset& data, int timeStep) : m_data(data), m_timeStep(timeStep) {}

  void read(const std::string& name) {
    m_piece.name = name;
    readNodes();
    readCells();
    readViews();
    addGroups();
    takeNotes();
    m_data.pieces.push_back(std::move(m_piece));
  }

 private:
  void readNodes() {
    std::vector<std::size_t> tags;
    std::vector<double> coordinates, parameters;
    gmsh::model::mesh::getNodes(tags, coordinates, parameters, -1, -1, false, false);
    if (tags.empty()) throw Failure("there is no mesh in it");
    if (tags.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
      throw Failure("it has more than 2147483647 nodes");
    m_nodes.build(tags);
    m_piece.points.resize(tags.size());
    for (std::size_t i = 0; i < tags.size(); ++i)
      m_piece.points[i] = {coordinates[3 * i], coordinates[3 * i + 1], coordinates[3 * i + 2]};
  }

  void readCells() {
    gmsh::vectorpair entities;
    gmsh::model::getEntities(entities);
    for (const auto& [dimension, entity] : entities) {
      std::vector<int> types;
      std::vector<std::vector<std::size_t>> tags, nodes;
      gmsh::model::mesh::getElements(types, tags, nodes, dimension, entity);
      if (types.empty()) continue;
      const int group = groupOf(dimension, entity);
      for (std::size_t i = 0; i < types.size(); ++i) {
        addCells(types[i], tags[i], nodes[i]);
        m_groups.resize(m_piece.cellKinds.size(), static_cast<float>(group));
        m_entities.resize(m_piece.cellKinds.size(), static_cast<float>(entity));
      }
    }
    m_cells.build(m_cellTags);
  }

  int groupOf(int dimension, int entity) {
    std::vector<int> groups;
    gmsh::model::getPhysicalGroupsForEntity(dimension, entity, groups);
    if (groups.size() > 1) m_data.note("cells of several physical groups are counted to their first");
    if (groups.empty()) return 0;
    std::string name;
    gmsh::model::getPhysicalName(dimension, std::abs(groups[0]), name);
    m_groupNames[{std::abs(groups[0]), dimension}] = name;
    return std::abs(groups[0]);
  }

  void addCells(int type, const std::vector<std::size_t>& tags, const std::vector<std::size_t>& nodes) {
    std::string name;
    int dimension = 0, order = 0, numNodes = 0, numCorners = 0;
    std::vector<double> places;
    gmsh::model::mesh::getElementProperties(type, name, dimension, order, numNodes, places, numCorners);
    CellKind kind{};
    if (numNodes < 1 || !kindOf(dimension, numCorners, kind)) {
      m_unknown[name] += tags.size();
      return;
    }
    const auto stride = static_cast<std::size_t>(numNodes);
    if (nodes.size() < stride * tags.size()) throw Failure("its cells don't list as many nodes as they have");
    if (numNodes > numCorners) m_numCurved += tags.size();
    m_piece.cellKinds.reserve(m_piece.cellKinds.size() + tags.size());
    m_piece.cellNodes.reserve(m_piece.cellNodes.size() + tags.size() * static_cast<std::size_t>(numCorners));
    for (std::size_t cell = 0; cell < tags.size(); ++cell) {
      std::array<int, 8> corners{};
      for (std::size_t corner = 0; corner < static_cast<std::size_t>(numCorners); ++corner) {
        const int node = m_nodes(nodes[cell * stride + corner]);
        if (node < 0)
          throw Failure("a cell refers to node " + std::to_string(nodes[cell * stride + corner]) +
                        ", which isn't there");
        corners[corner] = node;
      }
      m_piece.addCell(kind, corners.data());
      m_cellTags.push_back(tags[cell]);
    }
  }

  // ---- Results

  void readViews() {
    std::vector<int> views;
    gmsh::view::getTags(views);
    for (const int view : views) {
      const std::string option = "View[" + std::to_string(gmsh::view::getIndex(view)) + "].";
      std::string name;
      double numSteps = 1;
      gmsh::option::getString(option + "Name", name);
      gmsh::option::getNumber(option + "NbTimeStep", numSteps);
      if (name.empty()) name = "values";
      readView(view, name, std::max(1, static_cast<int>(numSteps)));
    }
  }

  void readView(int view, const std::string& name, int numSteps) {
    const int step = std::clamp(m_timeStep, 0, numSteps - 1);
    std::string kind;
    std::vector<std::size_t> tags;
    std::vector<std::vector<double>> values;
    double time = 0;
    int numComponents = 0;
    try {
      gmsh::view::getModelData(view, step, kind, tags, values, time, numComponents);
    } catch (...) {
      kind.clear();
    }
    if (kind.empty() || tags.empty() || numComponents < 1) {
      m_data.note("\"" + name + "\" has no values at nodes or cells of the mesh and was left out");
      return;
    }
    if (numSteps > 1)
      m_data.note("of the " + std::to_string(numSteps) + " time steps of \"" + name + "\" number " +
                  std::to_string(step + 1) + " was taken");
    if (kind == "NodeData")
      addValues(name, Binding::NODE, m_nodes, m_piece.points.size(), tags, values, numComponents);
    else if (kind == "ElementData")
      addValues(name, Binding::CELL, m_cells, m_piece.cellKinds.size(), tags, values, numComponents);
    else if (kind == "ElementNodeData")
      addCornerValues(name, tags, values, numComponents);
    else
      m_data.note("\"" + name + "\" is " + kind + " and was left out");
  }

  // One number for each node or cell and component.
  void addValues(const std::string& name, Binding binding, const TagIndex& places, std::size_t count,
                 const std::vector<std::size_t>& tags, const std::vector<std::vector<double>>& values,
                 int numComponents) {
    const auto width = static_cast<std::size_t>(numComponents);
    std::vector<float> all(count * width, kUndefined);
    std::size_t numLost = 0;
    for (std::size_t i = 0; i < tags.size() && i < values.size(); ++i) {
      const int place = places(tags[i]);
      if (place < 0 || values[i].size() < width) {
        numLost += values[i].empty() ? 0 : 1;
        continue;
      }
      for (std::size_t c = 0; c < width; ++c) all[static_cast<std::size_t>(place) * width + c] = toFloat(values[i][c]);
    }
    if (numLost > 0)
      m_data.note(counted(numLost, "value", "values") + " of \"" + name + "\" belong to nothing in the mesh");
    addSet(name, binding, all, width);
  }

  // Values at the corners of each cell: their mean at each node.
  void addCornerValues(const std::string& name, const std::vector<std::size_t>& tags,
                       const std::vector<std::vector<double>>& values, int numComponents) {
    const auto width = static_cast<std::size_t>(numComponents);
    std::vector<std::size_t> starts(m_piece.cellKinds.size() + 1, 0);
    for (std::size_t i = 0; i < m_piece.cellKinds.size(); ++i)
      starts[i + 1] = starts[i] + static_cast<std::size_t>(numNodesOf(m_piece.cellKinds[i]));
    std::vector<double> sums(m_piece.points.size() * width, 0.0);
    std::vector<int> counts(m_piece.points.size(), 0);
    for (std::size_t i = 0; i < tags.size() && i < values.size(); ++i) {
      const int cell = m_cells(tags[i]);
      if (cell < 0) continue;
      const std::size_t start = starts[static_cast<std::size_t>(cell)];
      const std::size_t numCorners = starts[static_cast<std::size_t>(cell) + 1] - start;
      for (std::size_t corner = 0; corner < numCorners && (corner + 1) * width <= values[i].size(); ++corner) {
        const auto node = static_cast<std::size_t>(m_piece.cellNodes[start + corner]);
        ++counts[node];
        for (std::size_t c = 0; c < width; ++c) sums[node * width + c] += values[i][corner * width + c];
      }
    }
    std::vector<float> all(sums.size(), kUndefined);
    for (std::size_t node = 0; node < counts.size(); ++node)
      for (std::size_t c = 0; c < width && counts[node] > 0; ++c)
        all[node * width + c] = toFloat(sums[node * width + c] / counts[node]);
    m_data.note("the values of \"" + name + "\" at the corners of each cell were averaged at the nodes");
    addSet(name, Binding::NODE, all, width);
  }

  void addSet(const std::string& name, Binding binding, const std::vector<float>& all, std::size_t width) {
    if (width == 1) {
      m_piece.scalars.push_back({name, binding, all});
      return;
    }
    const std::size_t count = all.size() / width;
    if (width == 3) {
      VectorSet set{name, binding, std::vector<Vector>(count)};
      for (std::size_t i = 0; i < count; ++i) set.values[i] = {all[3 * i], all[3 * i + 1], all[3 * i + 2]};
      m_piece.vectors.push_back(std::move(set));
      return;
    }
    static constexpr std::array<const char*, 9> kTensor{"xx", "xy", "xz", "yx", "yy", "yz", "zx", "zy", "zz"};
    for (std::size_t c = 0; c < width; ++c) {
      ScalarSet set{name + " " + (width == 9 ? kTensor[c] : std::to_string(c)), binding, std::vector<float>(count)};
      for (std::size_t i = 0; i < count; ++i) set.values[i] = all[i * width + c];
      m_piece.scalars.push_back(std::move(set));
    }
    m_data.note("\"" + name + "\" has " + std::to_string(width) + " values each, kept as a set for each of them");
  }

  // ---- Groups and what is left to say

  void addGroups() {
    if (m_piece.cellKinds.empty()) return;
    if (!m_groupNames.empty()) {
      m_piece.scalars.push_back({"physical group", Binding::CELL, m_groups});
      std::string names;
      for (const auto& [group, name] : m_groupNames)
        if (!name.empty()) names += (names.empty() ? "" : ", ") + std::to_string(group.first) + " is \"" + name + "\"";
      if (!names.empty()) m_data.note("physical groups are kept as numbers: " + names);
    } else if (std::any_of(m_entities.begin(), m_entities.end(), [&](float tag) { return tag != m_entities[0]; })) {
      m_piece.scalars.push_back({"entity", Binding::CELL, m_entities});
    }
  }

  void takeNotes() {
    if (m_numCurved > 0)
      m_data.note(counted(m_numCurved, "cell of higher order was", "cells of higher order were") +
                  " cut to their corners");
    for (const auto& [name, count] : m_unknown)
      m_data.note(counted(count, "cell", "cells") + " of the kind " + name + (count == 1 ? " was" : " were") +
                  " left out");
    if (m_piece.cellKinds.empty()) throw Failure("there is no cell in it that can be shown");
  }

  Dataset& m_data;
  int m_timeStep;
  Piece m_piece;
  TagIndex m_nodes, m_cells;
  std::vector<std::size_t> m_cellTags;
  std::vector<float> m_groups, m_entities;  // of cells
  std::map<std::pair<int, int>, std::string> m_groupNames;
  std::map<std::string, std::size_t> m_unknown;
  std::size_t m_numCurved = 0;
};

}  // namespace

Dataset readGmsh(const std::string& file) {
  const OpenMesh open(file);
  checkFrame(open);
  refuseBrokenGmsh(file);
  Dataset data;
  Session session;
  session.load(open.name(), data);
  ModelReader(data, readOptions().step).read(std::filesystem::path(file).stem().string());
  return data;
}

}  // namespace importer
