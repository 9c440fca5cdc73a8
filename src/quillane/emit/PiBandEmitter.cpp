#include <algorithm>
#include <cmath>
#include <variant>
#include <vector>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Ormelle/PbIsovaluesList.h>

#include "quillane/contour/PiContourSurface.h"
#include "quillane/contour/PiFilledWork.h"
#include "quillane/emit/PiColorWriter.h"
#include "quillane/emit/PiIndexList.h"

namespace {

/// The points of the surface and behind them the cut points.
void emitBandPoints(const PiContourSurface& surface, std::span<const SbVec3f> cutPoints, SoMFVec3f& field) {
  std::visit(
      [&](const auto& view) {
        const int numNodes = view.numNodes(), num = numNodes + static_cast<int>(cutPoints.size());
        field.setNum(num);
        if (num == 0) return;
        SbVec3f* points = field.startEditing();
        const bool hasZ = view.hasZ();
        view.forEachNode([&](int node, SbVec2f xy) {
          SbVec3f point(xy[0], xy[1], hasZ ? view.z(node) : 0.0F);
          // Nothing drawn refers to it, but what measures coordinates may meet it.
          if (!(point[0] * 0 + point[1] * 0 + point[2] * 0 == 0)) point.setValue(0, 0, 0);
          points[node] = point;
        });
        std::copy(cutPoints.begin(), cutPoints.end(), points + numNodes);
        field.finishEditing();
      },
      surface.view);
}

/// A colour for each polygon, asked once for each band.
void emitBandColors(std::span<const int> lowerIsovalues, const PbIsovaluesList* list, const PbDataMapping& mapping,
                    SoMaterial& material) {
  constexpr float kBelowAll = -1e20F;  // as PbIsovaluesList::getLowerIsovalue()
  int numIsovalues = 0, isRegular;
  float min, max, step;
  const float* isovalues = list ? list->getIsoList(numIsovalues, min, max, step, isRegular) : nullptr;
  std::vector<int> firstPolygons(static_cast<std::size_t>(numIsovalues) + 1, -1);
  PiColorWriter colors(mapping, material, static_cast<int>(lowerIsovalues.size()));
  for (std::size_t p = 0; p < lowerIsovalues.size(); ++p) {
    const int lower = lowerIsovalues[p], polygon = static_cast<int>(p);
    int& first = firstPolygons[static_cast<std::size_t>(lower + 1)];
    if (first >= 0) {
      colors.setLike(polygon, first);
    } else {
      colors.set(polygon, lower < 0 ? kBelowAll : isovalues[lower]);
      first = polygon;
    }
  }
}

}  // namespace

void PiContouringFilled::fillSurf(const float* values, SoGroup* group, SoMaterial* material,
                                  SoMaterialBinding* binding) {
  if (!values || !group || !material || !m_mapping) return;
  cut(values);
  if (!binding) binding = new SoMaterialBinding;
  group->addChild(binding);
  binding->value = SoMaterialBinding::PER_FACE;
  auto* coordinate = new SoCoordinate3;
  group->addChild(coordinate);
  emitBandPoints(*m_surface, cutPoints(), coordinate->point);
  auto* shape = new SoIndexedFaceSet;
  group->addChild(shape);
  emitBandColors(lowerIsovalues(), m_list, *m_mapping, *material);
  PiIndexList::hand(m_work->polygons.coordIndex, shape->coordIndex);
}
