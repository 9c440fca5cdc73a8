#ifndef ORMELLE_PIFLATCASES_H
#define ORMELLE_PIFLATCASES_H

#include <array>
#include <cstdint>
#include <vector>

/// One kind of solid cell, as an index of tables.
enum class PiSolidKind : std::uint8_t { TETRAHEDRON, PYRAMID, WEDGE, HEXAHEDRON };

/// A case of a marching table laid out for walks over many cells: edge numbers in a fixed place, no pointers. An entry
/// kEnd closes each strip or polygon, the last one too.
struct PiFlatCase {
  static constexpr std::uint8_t kEnd = 12;  ///< behind the edges of any cell

  std::uint8_t numEntries = 0;
  std::uint8_t numFacets = 0;
  std::uint8_t numEdges = 0;  ///< mixed edges, each once
  std::uint8_t numQuads = 0;  ///< optional quadrangles
  std::array<std::uint8_t, 16> entries{};
  std::array<std::uint8_t, 12> edges{};
};

/// The marching cases of one kind of cell by id, as strips or as polygons. Of a mirrored cell, whose nodes run the
/// other way round, ids and edge numbers are those of its nodes as they stand; the surface faces as in an unmirrored
/// one.
class PiFlatCases {
 public:
  /// The table belongs to the library and stands to the end of the program.
  static const PiFlatCases& of(PiSolidKind kind, bool asStrips, bool isMirrored);

  const PiFlatCase& operator[](unsigned id) const { return m_cases[id]; }
  /// Four edges a quadrangle, in the order of the perimeter.
  const std::uint8_t* quads(unsigned id) const { return m_quads[id].data(); }
  /// The two local nodes of an edge.
  const std::array<std::uint8_t, 2>& ends(unsigned edge) const { return m_ends[edge]; }
  int numNodes() const { return m_numNodes; }

 private:
  PiFlatCases(PiSolidKind kind, bool asStrips, bool isMirrored);

  int m_numNodes = 0;
  std::array<PiFlatCase, 256> m_cases;
  std::array<std::vector<std::uint8_t>, 256> m_quads;
  std::array<std::array<std::uint8_t, 2>, 12> m_ends{};
};

#endif
