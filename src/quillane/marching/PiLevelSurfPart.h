#ifndef ORMELLE_PILEVELSURFPART_H
#define ORMELLE_PILEVELSURFPART_H

#include <array>
#include <concepts>
#include <vector>

#include "quillane/marching/PiMarchingCase.h"

/// What a level surface is written to. `addSurfPoint` gives the point on the edge between two mesh nodes its index, the
/// same one each time the edge is met. `coordIndices` takes the indices of strips or polygons, each ended by -1, and
/// `cellIndices` the cell of each. `addOptQuadrangle` takes the four points of an optional quadrangle, in the order of
/// its perimeter, and its cell.
template <class Sink>
concept PiLevelSurfSink = requires(Sink sink, int index, std::array<int, 4> corners) {
  sink.addSurfPoint(0, 0, index);
  sink.coordIndices.push_back(index);
  sink.cellIndices.push_back(index);
  sink.addOptQuadrangle(corners, index);
};

/// Writes the part of a level surface inside one cell: as strips, or else as polygons. `nodes` are the mesh indices of
/// the nodes of the cell. The case of a cell wholly on one side writes nothing.
template <PiLevelSurfSink Sink>
void addLevelSurfPart(const PiMarchingCase& part, const int* nodes, int cell, bool asStrips, Sink& sink) {
  const std::vector<int>& edges = asStrips ? part.getEdgeStripSet() : part.getEdgeFaceSet();
  if (edges.empty()) return;
  const auto endPart = [&] {
    sink.coordIndices.push_back(-1);
    sink.cellIndices.push_back(cell);
  };

  std::array<int, 12> pointOfEdge{};
  const int* ends = (asStrips ? part.getNodeStripSet() : part.getNodeFaceSet()).data();
  for (const int edge : edges) {
    if (edge == -1) {
      endPart();
      ++ends;
      continue;
    }
    int& point = pointOfEdge[static_cast<std::size_t>(edge)];
    sink.addSurfPoint(nodes[ends[0]], nodes[ends[1]], point);
    sink.coordIndices.push_back(point);
    ends += 2;
  }
  endPart();

  if (part.getOptQuad().empty() && part.getCompletion().empty()) return;
  // The corners are given by position in the strips, whichever form was written.
  std::array<int, 12> pointAt{};
  std::size_t numPoints = 0;
  for (const int edge : part.getEdgeStripSet())
    if (edge != -1) pointAt[numPoints++] = pointOfEdge[static_cast<std::size_t>(edge)];
  for (const std::vector<int>* quadrangles : {&part.getOptQuad(), &part.getCompletion()}) {
    std::array<int, 4> corners{};
    std::size_t corner = 0;
    for (const int position : *quadrangles) {
      if (position == -1) continue;
      corners[corner++] = pointAt[static_cast<std::size_t>(position)];
      if (corner < corners.size()) continue;
      sink.addOptQuadrangle(corners, cell);
      corner = 0;
    }
  }
}

#endif
