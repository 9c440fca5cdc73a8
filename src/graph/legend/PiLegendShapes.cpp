#include "graph/legend/PiLegendShapes.h"

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoPolygonOffset.h>

#include <algorithm>
#include <vector>

namespace PiLegendShapes {

void beginFilled(SoGroup* group) {
  auto* light = new SoLightModel;
  group->addChild(light);
  light->model = SoLightModel::BASE_COLOR;
  auto* behind = new SoPolygonOffset;
  group->addChild(behind);
  behind->factor = 1;
  behind->units = 2;
  auto* binding = new SoMaterialBinding;
  group->addChild(binding);
  binding->value = SoMaterialBinding::PER_VERTEX;
}

void addFilled(const SbVec2f& min, const SbVec2f& max, Direction direction,
               std::span<const PiLegendColors::Piece> pieces, SoGroup* group) {
  if (pieces.empty()) return;
  const bool isUpright = direction == Direction::UP || direction == Direction::DOWN;
  const int along = isUpright ? 1 : 0;
  const bool isBackwards = direction == Direction::DOWN || direction == Direction::LEFT;
  std::vector<SbVec3f> points;
  std::vector<SbColor> colors;
  std::vector<float> transparencies;
  const auto add = [&](float part, float across, const SbColor& color, float transparency) {
    const float place =
        isBackwards ? max[along] + (min[along] - max[along]) * part : min[along] + (max[along] - min[along]) * part;
    points.push_back(isUpright ? SbVec3f(across, place, 0) : SbVec3f(place, across, 0));
    colors.push_back(color);
    transparencies.push_back(transparency);
  };
  const float low = min[1 - along], high = max[1 - along];
  // Anticlockwise, as the front is.
  const bool isFlipped = isUpright != isBackwards;
  for (const PiLegendColors::Piece& piece : pieces) {
    const float first = isFlipped ? high : low, second = isFlipped ? low : high;
    add(piece.from, first, piece.color1, piece.transparency1);
    add(piece.to, first, piece.color2, piece.transparency2);
    add(piece.to, second, piece.color2, piece.transparency2);
    add(piece.from, second, piece.color1, piece.transparency1);
  }
  const auto num = static_cast<int>(points.size());
  auto* material = new SoMaterial;
  group->addChild(material);
  material->diffuseColor.setValues(0, num, colors.data());
  if (*std::max_element(transparencies.begin(), transparencies.end()) > 0)
    material->transparency.setValues(0, num, transparencies.data());
  auto* coordinates = new SoCoordinate3;
  group->addChild(coordinates);
  coordinates->point.setValues(0, num, points.data());
  auto* faces = new SoFaceSet;
  group->addChild(faces);
  const std::vector<int32_t> counts(pieces.size(), 4);
  faces->numVertices.setValues(0, static_cast<int>(counts.size()), counts.data());
}

void addBorder(const SbVec2f& min, const SbVec2f& max, SoGroup* group) {
  const SbVec3f corners[] = {SbVec3f(min[0], min[1], 0), SbVec3f(max[0], min[1], 0), SbVec3f(max[0], max[1], 0),
                             SbVec3f(min[0], max[1], 0), SbVec3f(min[0], min[1], 0)};
  auto* coordinates = new SoCoordinate3;
  group->addChild(coordinates);
  coordinates->point.setValues(0, 5, corners);
  auto* line = new SoLineSet;
  group->addChild(line);
  line->numVertices = 5;
}

}  // namespace PiLegendShapes
