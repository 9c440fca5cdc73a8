#ifndef ORMELLE_PIMESHSECTION_H
#define ORMELLE_PIMESHSECTION_H

#include <cstddef>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "quillane/surface/PiCellBlocks.h"
#include "quillane/surface/PiGridAxes.h"
#include "quillane/surface/PiPlaneCutter.h"

class PbCartesianGrid3D;
class PbGrid3D;
class PbIndexedMesh3D;
class PbMesh3D;
class PbParalCartesianGrid3D;
class PbRegularCartesianGrid3D;

/// What is to be cut, and how.
struct PiSectionRequest {
  PiSectionPlane plane{1, 0, 0, 0};
  const float* values = nullptr;  ///< one for each node, to be interpolated; may be null
  /// Whether a cell takes part, asked once for each cell that is cut; empty if all do.
  std::function<bool(int cell)> accepts = {};
};

/// Cuts volume meshes with planes, cell by cell, visiting few more cells than the plane meets. It keeps its memory from
/// one section to the next. Several threads share the work, and make the same section to the byte as one.
///
/// Parts of the plane that run through nodes, along edges or along facets are drawn once. A cell with a coordinate that
/// isn't finite, or a value that isn't a number, is left out.
class PiMeshSection {
 public:
  PiMeshSection() : m_cutter(section) {}
  PiMeshSection(const PiMeshSection&) = delete;
  PiMeshSection& operator=(const PiMeshSection&) = delete;

  /// Replaces `section`.
  void cut(const PbRegularCartesianGrid3D& mesh, const PiSectionRequest& request);
  void cut(const PbParalCartesianGrid3D& mesh, const PiSectionRequest& request);
  void cut(const PbCartesianGrid3D& mesh, const PiSectionRequest& request);
  void cut(const PbIndexedMesh3D& mesh, const PiSectionRequest& request);

  /// Lets go of what is known of the mesh cut last.
  void forgetMesh() { m_blocks.reset(); }

  /// How many cells were looked at in the last section.
  std::size_t numVisited() const { return m_numVisited; }
  /// Without what is shared with others.
  std::size_t memorySize() const;

  PiSection section;

 private:
  /// What one task cuts.
  struct Part {
    PiSection section;
    PiPlaneCutter cutter{section};
    std::size_t numVisited = 0;
  };
  template <class CutRange>
  void cutRange(int num, const PiSectionRequest& request, const CutRange& cut);
  template <class CutRange>
  bool cutInParts(int num, const PiSectionRequest& request, const CutRange& cut);
  /// Whether what this cutter of a part makes can't be used.
  bool isInVain(const PiPlaneCutter& cutter) const { return &cutter != &m_cutter && cutter.hasFacetsInPlane(); }
  template <class Cells>
  void cutBlocks(const Cells& cells, const PiSectionRequest& request);
  void cutAxisGrid(const PbGrid3D& grid, const PiSectionRequest& request);
  std::size_t cutColumns(const PbGrid3D& grid, int begin, int end, const PiSectionRequest& request,
                         PiPlaneCutter& cutter) const;
  void findRowCuts(const PiSectionPlane& plane);

  PiPlaneCutter m_cutter;
  std::shared_ptr<const PiCellBlocks> m_blocks;
  std::size_t m_numVisited = 0;
  std::vector<std::unique_ptr<Part>> m_parts;

  /// Of a row of nodes of a grid: its distance from the plane without the share of z; the first node that isn't
  /// strictly on the side where the row begins; and the first that is strictly on the side where it ends.
  struct Row {
    float base;
    int leaves, arrives;
  };
  PiGridAxes m_axes;
  std::vector<float> m_zShares;
  std::vector<Row> m_rows;
};

#endif
