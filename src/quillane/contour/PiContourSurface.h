#ifndef ORMELLE_PICONTOURSURFACE_H
#define ORMELLE_PICONTOURSURFACE_H

#include <utility>
#include <variant>

#include "quillane/contour/PiHandedSurface.h"
#include "quillane/view/PiIndexedView2D.h"
#include "quillane/view/PiView2D.h"

/// The surface to cut, of whatever kind.
struct PiContourSurface {
  template <class Mesh>
  using ViewOf = decltype(viewOf(std::declval<const Mesh&>(), nullptr));

  PiHandedSurface handed;
  std::variant<PiHandedCellsView, PiHandedGridView, ViewOf<PbCartesianGrid2D>, ViewOf<PbParalCartesianGrid2D>,
               ViewOf<PbRegularCartesianGrid2D>, ViewOf<PbPolarGrid2D>, ViewOf<PbIndexedMesh2D>,
               ViewOf<PbTriangleMesh2D>, ViewOf<PbQuadrangleMesh2D>>
      view{PiHandedCellsView(handed)};
};

#endif
