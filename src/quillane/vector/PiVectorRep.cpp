#include "quillane/vector/PiVectorRep.h"

#include <algorithm>
#include <cmath>

#include <Inventor/SbBox3f.h>
#include <Inventor/nodes/SoGroup.h>

namespace {

constexpr float kRadius = 0.04f;  // of a body, in its lengths
constexpr float kHeight = 0.3f;   // of an arrow, in lengths of its body

float longestOf(int num, const SbVec3f* vectors) {
  float longest = 0;
  for (int i = 0; i < num; ++i) {
    const float squared = vectors[i].sqrLength();
    if (squared > longest && std::isfinite(squared)) longest = squared;
  }
  return std::sqrt(longest);
}

float finite(float value) { return std::isfinite(value) ? value : 0; }

}  // namespace

bool PiVectorRep::Arrow::isFilled() const {
  switch (shape) {
    case PoVectorGlyphs::TRIANGLE:
    case PoVectorGlyphs::RECTANGLE:
    case PoVectorGlyphs::CONE:
    case PoVectorGlyphs::INDIRECT_TRIANGLE:
    case PoVectorGlyphs::INDIRECT_CONE:
      return true;
    default:
      return false;
  }
}

float PiVectorRep::spacingOf(const SbBox3f& box, int num, int density) {
  num /= std::max(1, density);
  if (box.isEmpty() || num < 2) return 1;
  const SbVec3f size = box.getMax() - box.getMin();
  const float longest = std::max({size[0], size[1], size[2]});
  double content = 1;
  int numAxes = 0;
  for (int axis = 0; axis < 3; ++axis) {
    if (!(size[axis] > 1e-4f * longest)) continue;
    content *= static_cast<double>(size[axis]);
    ++numAxes;
  }
  return numAxes > 0 ? static_cast<float>(std::pow(content / num, 1.0 / numAxes)) : 1;
}

void PiVectorRep::start(const PoVectorGlyphs& fields, float spacing, int numVectors, const SbVec3f* vectors) {
  PiVectorField::Selection selection;
  selection.density = fields.density.getValue();
  const int elimination = fields.eliminationStatus.getValue();
  selection.hasMin = elimination == PoVectorGlyphs::TOO_SMALL || elimination == PoVectorGlyphs::TOO_SMALL_OR_LONG;
  selection.hasMax = elimination == PoVectorGlyphs::TOO_LONG || elimination == PoVectorGlyphs::TOO_SMALL_OR_LONG;
  selection.minLength = fields.minLength.getValue();
  selection.maxLength = fields.maxLength.getValue();
  selection.isConstantLength = fields.bodyLengthType.getValue() == PoVectorGlyphs::CONSTANT_LENGTH;
  selection.lengthFactor = fields.bodyLengthFactor.getValue();
  if (fields.bodyLengthFactor.isDefault()) {
    const float longest = selection.isConstantLength || !vectors ? 1 : longestOf(numVectors, vectors);
    selection.lengthFactor = longest > 0 ? spacing / longest : 1;
  }
  m_field.start(selection);

  m_bodyShape = fields.bodyShape.getValue();
  m_bodyColoring = fields.bodyColoringType.getValue();
  m_bodyRadius = {};
  if (fields.bodyRadiusType.getValue() == PoVectorGlyphs::RELATIVE_RADIUS)
    m_bodyRadius.ofVector = finite(fields.bodyRadiusFactor.getValue());
  else
    m_bodyRadius.fixed =
        fields.bodyRadiusFactor.isDefault() ? kRadius * spacing : finite(fields.bodyRadiusFactor.getValue());

  const auto arrow = [&](const SoSFEnum& shape, const SoSFEnum& heightType, const SoSFFloat& height,
                         const SoSFFloat& radius, const SoSFEnum& coloring) {
    Arrow result;
    result.shape = shape.getValue();
    if (heightType.getValue() == PoVectorGlyphs::RELATIVE_HEIGHT)
      result.height.ofVector = finite(height.getValue());
    else
      result.height.fixed = height.isDefault() ? kHeight * spacing : finite(height.getValue());
    result.radiusOfHeight = finite(radius.getValue());
    result.coloring = coloring.getValue();
    return result;
  };
  m_arrows[0] = arrow(fields.startArrowShape, fields.startArrowHeightType, fields.startArrowHeightFactor,
                      fields.startArrowRadiusFactor, fields.startArrowColoringType);
  m_arrows[1] = arrow(fields.endArrowShape, fields.endArrowHeightType, fields.endArrowHeightFactor,
                      fields.endArrowRadiusFactor, fields.endArrowColoringType);
}

PiGlyphEmitter::Colors PiVectorRep::colors(int coloring, const PbDataMapping* mapping, const float* scalars) const {
  if (mapping && coloring == PoVectorGlyphs::MODULE_MAPPING_COLOR)
    return PiGlyphEmitter::color(m_field.vectors(), *mapping,
                                 [](const PiVectorField::Vector& vector) { return vector.module; });
  if (mapping && scalars && coloring == PoVectorGlyphs::SCALAR_MAPPING_COLOR)
    return PiGlyphEmitter::color(m_field.vectors(), *mapping,
                                 [scalars](const PiVectorField::Vector& vector) { return scalars[vector.index]; });
  return {};
}

int PiVectorRep::numSides() const {
  const std::size_t num = m_field.vectors().size();
  return num < 3000 ? 20 : num < 30000 ? 10 : 5;
}

void PiVectorRep::buildBodies(const PbDataMapping* mapping, const float* scalars, SoGroup* group) {
  if (m_bodyShape == PoVectorGlyphs::NO_BODY || m_field.vectors().empty()) return;
  PiGlyphEmitter::Size size;
  size.height.ofVector = 1;
  if (m_arrows[0].isFilled()) {
    size.origin = m_arrows[0].height;
    size.height = size.height - m_arrows[0].height;
  }
  if (m_arrows[1].isFilled()) size.height = size.height - m_arrows[1].height;
  const bool isSolid = m_bodyShape == PoVectorGlyphs::CYLINDER;
  if (isSolid) size.radius = m_bodyRadius;
  PiGlyphEmitter::emit(isSolid ? PiGlyphShape::cylinder(numSides()) : PiGlyphShape::line(), size, m_field.vectors(),
                       colors(m_bodyColoring, mapping, scalars), group);
}

void PiVectorRep::buildArrows(bool isAtEnd, const PbDataMapping* mapping, const float* scalars, SoGroup* group) {
  const Arrow& arrow = m_arrows[isAtEnd ? 1 : 0];
  if (m_field.vectors().empty()) return;
  PiGlyphShape shape;
  PiGlyphEmitter::Size size;
  size.height = arrow.height;
  size.radius = arrow.height * arrow.radiusOfHeight;
  if (isAtEnd) size.origin = PiGlyphEmitter::Length{1, 0} - arrow.height;
  switch (arrow.shape) {
    case PoVectorGlyphs::POINT:
      shape = PiGlyphShape::point();
      size.height = {};
      size.origin = {isAtEnd ? 1.0f : 0.0f, 0};
      break;
    case PoVectorGlyphs::CHEVRON:
    case PoVectorGlyphs::INDIRECT_CHEVRON:
      shape = PiGlyphShape::chevron(arrow.shape == PoVectorGlyphs::INDIRECT_CHEVRON);
      break;
    case PoVectorGlyphs::TRIANGLE:
    case PoVectorGlyphs::INDIRECT_TRIANGLE:
      shape = PiGlyphShape::triangle(arrow.shape == PoVectorGlyphs::INDIRECT_TRIANGLE);
      break;
    case PoVectorGlyphs::RECTANGLE:
      shape = PiGlyphShape::rectangle();
      break;
    case PoVectorGlyphs::CONE:
    case PoVectorGlyphs::INDIRECT_CONE:
      shape = (isCoarse() ? PiGlyphShape::coarseCone : PiGlyphShape::cone)(
          numSides(), arrow.radiusOfHeight, arrow.shape == PoVectorGlyphs::INDIRECT_CONE);
      break;
    case PoVectorGlyphs::SPHERE:
      shape = PiGlyphShape::sphere(numSides());
      size.height = size.radius;
      size.origin = {isAtEnd ? 1.0f : 0.0f, 0};
      break;
    default:
      return;
  }
  PiGlyphEmitter::emit(shape, size, m_field.vectors(), colors(arrow.coloring, mapping, scalars), group);
}
