#ifndef ORMELLE_TOOL_IMPORT_DATASET_H
#define ORMELLE_TOOL_IMPORT_DATASET_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "Chart.h"

namespace importer {

/// What a reader throws for a file that can't be read: part of a sentence, without the name of the file and without a
/// full stop ("its header breaks off").
struct Failure : std::runtime_error {
  using std::runtime_error::runtime_error;
};

using Point = std::array<double, 3>;
using Vector = std::array<float, 3>;

enum class Binding { NODE, CELL };

/// A value that is NaN is undefined.
struct ScalarSet {
  std::string name;
  Binding binding = Binding::NODE;
  std::vector<float> values;
};

struct VectorSet {
  std::string name;
  Binding binding = Binding::NODE;
  std::vector<Vector> values;
};

/// Per node.
struct StringSet {
  std::string name;
  std::vector<std::string> values;
};

/// Of cells that list their nodes. The order of the nodes is that of the library's cells, which VTK and Gmsh share:
/// QUADRANGLE goes round, PYRAMID has its apex last, WEDGE has two triangles and HEXAHEDRON two quadrangles, the first
/// nodes of both joined. The triangle 0 1 2 of a wedge may face either way.
enum class CellKind : std::uint8_t { VERTEX, LINE, TRIANGLE, QUADRANGLE, TETRAHEDRON, PYRAMID, WEDGE, HEXAHEDRON };

int numNodesOf(CellKind kind);
/// 0 for a vertex, to 3 for a tetrahedron.
int dimensionOf(CellKind kind);

enum class PieceKind {
  REGULAR_GRID,      ///< dims, origin, spacing
  RECTILINEAR_GRID,  ///< dims, axes
  CURVILINEAR_GRID,  ///< dims, points
  CELLS,             ///< points, cells
  SERIES             ///< axes[0]: the x of each value; all sets are per node
};

/// One mesh of a file.
///
/// Nodes of a grid are numbered with the first index fastest: node (i, j, k) is i + dims[0] * (j + dims[1] * k), its
/// cell (i, j, k) likewise with the dimensions less one. A grid with dims 1 in a direction is a surface there, in
/// whichever plane. (The writer brings all this into the order of the library.)
struct Piece {
  std::string name;
  PieceKind kind = PieceKind::CELLS;

  std::array<int, 3> dims{1, 1, 1};
  Point origin{0, 0, 0};                    ///< of a regular grid: node (0, 0, 0)
  Point spacing{1, 1, 1};                   ///< of a regular grid; may be negative
  std::array<std::vector<double>, 3> axes;  ///< of a rectilinear grid: dims[a] coordinates along axis a
  std::string axisName;                     ///< of a series: of x, with its unit
  std::vector<double> days;                 ///< of a series over time: x as days since 1970-01-01, else empty
  std::vector<Point> points;                ///< of a curvilinear grid and of cells

  /// Cells one after the other: their kinds, and their nodes. Surfaces, volumes, lines and vertices may be mixed: the
  /// writer sorts them out.
  std::vector<CellKind> cellKinds;
  std::vector<int> cellNodes;
  /// Where one cell of the file was made into several (a polygon into triangles), or was left out: for each cell the
  /// index of its values in the sets per cell. Empty if that is the index of the cell itself.
  std::vector<int> cellSources;

  std::vector<ScalarSet> scalars;
  std::vector<VectorSet> vectors;
  std::vector<StringSet> strings;

  /// Appends a cell with the nodes at `nodes`. `source` >= 0 starts or continues `cellSources`.
  void addCell(CellKind kind, const int* nodes, int source = -1);
  /// Appends a simple, perhaps concave polygon as triangles, or as a quadrangle if it is a convex one.
  void addPolygon(const int* nodes, int count, int source = -1);
};

/// What a reader found in a file. Several pieces share one space.
struct Dataset {
  std::vector<Piece> pieces;
  /// Of a table: what is shown then, without any piece.
  std::optional<Chart> chart;
  /// One sentence each, without a full stop, for what the file has and the scene has not, or not in the same form:
  /// "3 quadratic cells were cut to their corners".
  std::vector<std::string> notes;
  /// Which way is up in most files of the format, where that is known: 1 for y, 2 for z. The first view has it so.
  int upAxis = 2;
  /// Whether z counts something else than x and y do, a pressure over degrees for example. The writer then draws
  /// heights at a size that shows them.
  bool hasOwnHeights = false;

  /// Adds a note unless it is there already.
  void note(const std::string& sentence);
};

/// Checks what the writer relies on and throws Failure otherwise: node indices within the points, sizes of the sets,
/// dimensions that fit the arrays, no more numbers than a scene holds. Readers needn't check these themselves, but must
/// not make room for what a count in a file promises before they know that the file can hold it.
void check(const Dataset& data);

/// "1 cell", "3 cells": for notes.
std::string counted(std::size_t count, const std::string& one, const std::string& many);

/// The nearest float; infinities and what is beyond the range of float become NaN, undefined.
float toFloat(double value);

}  // namespace importer

#endif
