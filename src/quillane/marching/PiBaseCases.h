#ifndef ORMELLE_PIBASECASES_H
#define ORMELLE_PIBASECASES_H

#include <span>

/// One row of the data from which a marching table is built. The position of a row is the type of its cases.
struct PiBaseCase {
  unsigned char id;     ///< bit n set: local node n is flagged
  const char* strips;   ///< points as edge numbers, in triangle strips separated by -1
  const char* optQuad;  ///< four positions in `strips` a quadrangle, separated by -1
  /// The rotated cases that belong to the row beside the row's own, separated by commas. Each is a run of turns that
  /// are applied in turn: an axis, and if it isn't 1 the number of times.
  const char* rotations;
  /// In the form of `optQuad`, the quadrangle of a second ambiguous facet that `optQuad` doesn't list.
  const char* completion = "";
};

/// The rows of each kind of cell. With their rotations and reverses they give every id exactly once.
namespace PiBaseCases {

extern const std::span<const PiBaseCase> kCube;
extern const std::span<const PiBaseCase> kTetra;
extern const std::span<const PiBaseCase> kWedge;
extern const std::span<const PiBaseCase> kPyramid;

}  // namespace PiBaseCases

#endif
