#ifndef ORMELLE_TOOL_IMPORT_MESHBUILDER_H
#define ORMELLE_TOOL_IMPORT_MESHBUILDER_H

#include <optional>
#include <string>
#include <vector>

#include <Ormelle/PoMeshProperty.h>

#include "../Origin.h"
#include "Dataset.h"

class SoNode;

namespace importer {

using tool::Origin;

/// A mesh node made from a piece, or from that part of a mixed one that is a surface, a volume, lines or points.
struct BuiltMesh {
  std::string name;
  /// A mesh node; for lines and points, which the library has no meshes for, a group of the toolkit's shapes.
  SoNode* node = nullptr;
  int dimension = 0;  ///< of the mesh: 1 for a series, 2, 3; 0 for lines and points
  std::size_t numNodes = 0, numCells = 0;
  std::vector<std::string> scalars, cellScalars, vectors, strings;  ///< the names of the sets, for a summary
  /// The set to show first, if there is one with a defined value: its index, name, the range of its colours (see
  /// mainRange()), and how many values lie beyond.
  struct Shown {
    int index;
    std::string name;
    float low, high;
    std::size_t numBeyond;
  };
  std::optional<Shown> shown;
  /// Of a volume of which only a part is shown: a set per cell, and between which values of it the cells are. The node
  /// that says so may have a name.
  struct ShownCells {
    int index;
    double low, high;
    std::string name;
  };
  std::optional<ShownCells> cells;
  Origin low{}, high{};  ///< of the coordinates that are drawn, the origin subtracted; of a series only x
  bool isEmpty = true;   ///< nothing finite to draw
};

/// Where coordinates are counted from, so that floats tell the nodes of `data` apart: 0 for each axis along which they
/// do anyhow, else a round number near the data.
Origin originFor(const Dataset& data);

/// A series, or a grid with nodes along one axis only as the series it is; none of other pieces.
std::optional<Piece> seriesOf(const Piece& piece);

/// Makes the meshes of a piece, whose nodes the caller takes references of. Adds notes to `data`.
std::vector<BuiltMesh> buildMeshes(const Piece& piece, const Origin& origin, Dataset& data);

}  // namespace importer

#endif
