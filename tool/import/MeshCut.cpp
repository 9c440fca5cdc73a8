#include "MeshCut.h"

#include <Ormelle/PbArrayOfInt.h>
#include <Ormelle/PbCell.h>
#include <Ormelle/PbGrid3D.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "MeshSets.h"

namespace importer {

namespace {

constexpr const char* kCutName = "OrmelleCut";

// The way to the viewer of the first view.
SbVec3f viewOf(const Dataset& data) { return data.upAxis == 1 ? SbVec3f(0.75F, 0.75F, 1) : SbVec3f(0.75F, -1, 0.75F); }

// Calls take(cell, nodes) for each facet of each cell.
template <class Take>
void forEachFacet(const PbMesh& mesh, Take take) {
  PbArrayOfInt nodes;
  for (int index = 0; index < mesh.getNumCells(); ++index) {
    const PbCell* cell = mesh.getTopoCell(index);
    for (int facet = 0; cell && facet < cell->getNumFacets(); ++facet) {
      cell->getNodesIndexOfFacet(facet, nodes);
      take(*cell, nodes);
    }
  }
}

template <class Nodes>
SbVec3f middleOf(const PbMesh& mesh, const Nodes& nodes, int count) {
  SbVec3f sum(0, 0, 0);
  for (int i = 0; i < count; ++i) sum += mesh.getNodeCoord(nodes[i]);
  return sum / static_cast<float>(std::max(1, count));
}

// A number for the nodes of a facet, in whichever order.
std::uint64_t keyOf(const PbArrayOfInt& nodes) {
  std::uint64_t key = 0;
  for (int i = 0; i < nodes.getNum(); ++i) {
    std::uint64_t bits = static_cast<std::uint64_t>(nodes[i]) + 0x9e3779b97f4a7c15U;  // mixed as splitmix64 does
    bits = (bits ^ (bits >> 30)) * 0xbf58476d1ce4e5b9U;
    bits = (bits ^ (bits >> 27)) * 0x94d049bb133111ebU;
    key += bits ^ (bits >> 31);
  }
  return key;
}

// Calls take(node, outwards) for the nodes on the outside, once for each side or facet that they are on.
template <class Take>
void forEachOuterNode(const PbGrid3D& grid, Take take) {
  std::array<int, 3> counts{}, at{};
  grid.getDim(counts[0], counts[1], counts[2]);
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const std::size_t second = (axis + 1) % 3, third = (axis + 2) % 3;
    for (const bool isLast : {false, true})
      for (at[second] = 0; at[second] < counts[second]; ++at[second])
        for (at[third] = 0; at[third] < counts[third]; ++at[third]) {
          at[axis] = isLast ? counts[axis] - 2 : 1;
          const SbVec3f inner = grid.getNodeCoord(at[0], at[1], at[2]);
          at[axis] = isLast ? counts[axis] - 1 : 0;
          take(grid.getNodeIndex(at[0], at[1], at[2]), grid.getNodeCoord(at[0], at[1], at[2]) - inner);
        }
  }
}

template <class Take>
void forEachOuterNode(const PbMesh& mesh, Take take) {
  std::vector<std::uint64_t> keys;
  forEachFacet(mesh, [&](const PbCell&, const PbArrayOfInt& nodes) { keys.push_back(keyOf(nodes)); });
  std::sort(keys.begin(), keys.end());
  // Those that are there once: few, so that looking them up is quick.
  std::size_t numOuter = 0;
  for (std::size_t i = 0, next = 0; i < keys.size(); i = next) {
    for (next = i + 1; next < keys.size() && keys[next] == keys[i];) ++next;
    if (next - i == 1) keys[numOuter++] = keys[i];
  }
  keys.resize(numOuter);
  forEachFacet(mesh, [&](const PbCell& cell, const PbArrayOfInt& nodes) {
    if (!std::binary_search(keys.begin(), keys.end(), keyOf(nodes))) return;
    const SbVec3f outwards =
        middleOf(mesh, nodes, nodes.getNum()) - middleOf(mesh, cell.getNodeIndexPtr(), cell.getNumNodes());
    for (int i = 0; i < nodes.getNum(); ++i) take(nodes[i], outwards);
  });
}

// Whether four fifths of what is seen from there have less than a fifth of the colours, and most nodes with others are
// inside.
bool isDull(const PbMesh& mesh, const BuiltMesh::Shown& shown, const SbVec3f& view) {
  constexpr double kFew = 0.2, kRest = 0.1, kBeside = 0.1;
  constexpr std::size_t kMost = 3;
  const float* values = mesh.getValuesSet(shown.index);
  const double all = static_cast<double>(shown.high) - static_cast<double>(shown.low);
  if (!values || mesh.getValuesBinding(shown.index) != PbMesh::PER_NODE || !(all > 0)) return false;
  std::vector<float> seen;
  std::vector<bool> isOutside(sizeOf(mesh.getNumNodes()));
  const auto take = [&](int node, const SbVec3f& outwards) {
    isOutside[sizeOf(node)] = true;
    if (outwards.dot(view) > 0) seen.push_back(values[node]);
  };
  if (const auto* grid = dynamic_cast<const PbGrid3D*>(&mesh))
    forEachOuterNode(*grid, take);
  else
    forEachOuterNode(mesh, take);
  if (seen.empty()) return false;
  const auto at = [&](double part) {
    const auto place = seen.begin() + static_cast<std::ptrdiff_t>(part * static_cast<double>(seen.size() - 1));
    std::nth_element(seen.begin(), place, seen.end());
    return std::clamp(static_cast<double>(*place), static_cast<double>(shown.low), static_cast<double>(shown.high));
  };
  const double low = at(kRest), high = at(1 - kRest);
  if (high - low >= kFew * all) return false;
  std::array<std::size_t, 2> counts{};  // of nodes with other colours: inside, outside
  for (std::size_t node = 0; node < isOutside.size(); ++node) {
    const auto value = static_cast<double>(values[node]);
    if (value < low - kBeside * all || value > high + kBeside * all) ++counts[isOutside[node] ? 1 : 0];
  }
  return counts[0] > kMost * counts[1];
}

// A coordinate of the middle of each cell.
std::vector<float> middlesOfCells(const PbMesh& mesh, int axis) {
  std::vector<float> middles(sizeOf(mesh.getNumCells()), 0.0F);
  for (int index = 0; index < mesh.getNumCells(); ++index)
    if (const PbCell* cell = mesh.getTopoCell(index))
      middles[sizeOf(index)] = middleOf(mesh, cell->getNodeIndexPtr(), cell->getNumNodes())[axis];
  return middles;
}

}  // namespace

void cutOpen(BuiltMesh& mesh, Dataset& data) {
  if (mesh.dimension != 3 || !mesh.shown || mesh.cells) return;
  auto* node = static_cast<PoMeshProperty*>(mesh.node);
  const PbMesh& built = *node->getMesh();
  if (!isDull(built, *mesh.shown, viewOf(data))) return;
  // Its front is -y where z is up, and z where y is.
  const std::size_t axis = data.upAxis == 1 ? 2 : 1;
  const double middle = (mesh.low[axis] + mesh.high[axis]) / 2;
  const std::string name = std::string(1, static_cast<char>('x' + axis)) + " of the middle of the cell";
  const int index = intOf(mesh.scalars.size() + mesh.cellScalars.size());
  node->addValuesSet(index, middlesOfCells(built, static_cast<int>(axis)).data(), PbMesh::PER_CELL, name.c_str());
  mesh.cellScalars.push_back(name);
  mesh.cells = {index, axis == 1 ? middle : -3e38, axis == 1 ? 3e38 : middle, kCutName};
  data.note("the volume is shown cut open, as its outside has few of the colours: the node " + std::string(kCutName) +
            " says which cells are shown, by an added set, \"" + name + "\"");
}

}  // namespace importer
