#include "MeshSets.h"

#include <Ormelle/PbCell.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "ColorScale.h"

namespace importer {

namespace {

template <class Value, class Target = Value, class Change>
std::vector<Target> picked(const std::vector<Value>& values, const std::vector<int>& from, Change change) {
  std::vector<Target> all;
  all.reserve(from.size());
  for (const int index : from) all.push_back(change(values[sizeOf(index)]));
  return all;
}

PbMesh::DataBinding bindingOf(Binding binding) {
  return binding == Binding::NODE ? PbMesh::PER_NODE : PbMesh::PER_CELL;
}

void noteShown(BuiltMesh& mesh, int index, const std::string& name, const std::vector<float>& values) {
  if (mesh.shown) return;
  const Range range = mainRange(values);
  if (range.count == 0) return;
  const auto isDefined = [](float value) { return std::isfinite(value); };
  const auto numDefined = static_cast<std::size_t>(std::count_if(values.begin(), values.end(), isDefined));
  mesh.shown = {index, name, static_cast<float>(range.low), static_cast<float>(range.high), numDefined - range.count};
}

// A surface is coloured by values of nodes only: the mean of the cells round each.
std::vector<float> meansAtNodes(const PbMesh& mesh, const std::vector<float>& values) {
  std::vector<double> sums(sizeOf(mesh.getNumNodes()));
  std::vector<int> counts(sums.size());
  for (int cell = 0; cell < mesh.getNumCells(); ++cell) {
    const PbCell* nodes = mesh.getTopoCell(cell);
    if (!nodes || !std::isfinite(values[sizeOf(cell)])) continue;
    for (int i = 0; i < nodes->getNumNodes(); ++i) {
      const int node = nodes->getNodeIndex(i);
      if (node < 0) continue;
      sums[sizeOf(node)] += static_cast<double>(values[sizeOf(cell)]);
      ++counts[sizeOf(node)];
    }
  }
  std::vector<float> means(sums.size(), std::numeric_limits<float>::quiet_NaN());
  for (std::size_t i = 0; i < sums.size(); ++i)
    if (counts[i] > 0) means[i] = static_cast<float>(sums[i] / counts[i]);
  return means;
}

// For each cell 1, or NaN if it has a node without a value.
std::vector<float> definedCells(const PbMesh& mesh, const std::vector<float>& values) {
  std::vector<float> defined(sizeOf(mesh.getNumCells()), 1);
  for (int cell = 0; cell < mesh.getNumCells(); ++cell) {
    const PbCell* nodes = mesh.getTopoCell(cell);
    for (int i = 0; nodes && i < nodes->getNumNodes(); ++i) {
      const int node = nodes->getNodeIndex(i);
      if (node >= 0 && !std::isfinite(values[sizeOf(node)])) defined[sizeOf(cell)] = std::nanf("");
    }
  }
  return defined;
}

// Those for which a set has a value.
BuiltMesh::ShownCells cellsWith(int set) { return {set, -3e38, 3e38, {}}; }

// Sees to it that the skin of a volume can close round the cells where the set that is shown has values.
void addDefinedCells(PoMeshProperty* node, BuiltMesh& mesh, int& numScalars) {
  const PbMesh& built = *node->getMesh();
  const int shown = mesh.shown->index;
  const float* start = built.getValuesSet(shown);
  const std::vector<float> values(start, start + built.getNumValues(shown));
  if (std::all_of(values.begin(), values.end(), [](float value) { return std::isfinite(value); })) return;
  if (built.getValuesBinding(shown) == PbMesh::PER_CELL) {
    mesh.cells = cellsWith(shown);
    return;
  }
  const std::string name = "where " + mesh.shown->name + " has values";
  mesh.cells = cellsWith(numScalars++);
  node->addValuesSet(mesh.cells->index, definedCells(built, values).data(), PbMesh::PER_CELL, name.c_str());
  mesh.cellScalars.push_back(name);
}

}  // namespace

void addSets(const Piece& piece, const Sources& sources, PoMeshProperty* node, BuiltMesh& mesh, Dataset& data) {
  int numScalars = 0;
  std::vector<std::pair<std::string, std::vector<float>>> cellSets;
  for (const ScalarSet& set : piece.scalars) {
    if (sources.of(set.binding).empty()) continue;
    const std::string name = cleaned(set.name);
    std::vector<float> values = picked(set.values, sources.of(set.binding), [](float value) { return value; });
    const int index = numScalars++;
    node->addValuesSet(index, values.data(), bindingOf(set.binding), name.c_str());
    (set.binding == Binding::NODE ? mesh.scalars : mesh.cellScalars).push_back(name);
    if (set.binding == Binding::NODE)
      noteShown(mesh, index, name, values);
    else
      cellSets.emplace_back(name, std::move(values));
  }
  for (std::size_t i = 0; i < cellSets.size() && !mesh.shown && mesh.dimension > 1; ++i) {
    auto& [name, values] = cellSets[i];
    if (mesh.dimension == 3) {
      for (int index = 0; index < numScalars; ++index)
        if (node->getMesh()->getValuesSet(index) && *node->getMesh()->getValuesSetName(index) == name.c_str())
          noteShown(mesh, index, name, values);
      continue;
    }
    const std::vector<float> means = meansAtNodes(*node->getMesh(), values);
    const int index = numScalars;
    noteShown(mesh, index, name, means);
    if (!mesh.shown) continue;
    node->addValuesSet(index, means.data(), (name + ", mean at nodes").c_str());
    mesh.scalars.push_back(name + ", mean at nodes");
    ++numScalars;
    data.note("the surface is coloured by an added set, the means of \"" + name + "\" at the nodes");
  }
  if (mesh.dimension == 3 && mesh.shown) addDefinedCells(node, mesh, numScalars);

  int numVectors = 0;
  for (const VectorSet& set : piece.vectors) {
    if (sources.of(set.binding).empty()) continue;
    const auto vectors = picked<Vector, SbVec3f>(set.values, sources.of(set.binding),
                                                 [](const Vector& v) { return SbVec3f(v[0], v[1], v[2]); });
    node->addVecsSet(numVectors++, vectors.data(), bindingOf(set.binding), cleaned(set.name).c_str());
    mesh.vectors.push_back(cleaned(set.name));
  }
  int numStrings = 0;
  for (const StringSet& set : piece.strings) {
    const auto strings = picked<std::string, SbString>(set.values, sources.nodes,
                                                       [](const std::string& text) { return SbString(text.c_str()); });
    node->addStringsSet(numStrings++, strings.data(), cleaned(set.name).c_str());
    mesh.strings.push_back(cleaned(set.name));
  }
}

std::string cleaned(const std::string& name) {
  constexpr std::size_t kLongest = 200;
  std::string text = name.substr(0, kLongest);
  for (char& c : text)
    if (static_cast<unsigned char>(c) < 32 || c == 127) c = ' ';
  return text;
}

}  // namespace importer
