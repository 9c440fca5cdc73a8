#include <Ormelle/PbDomain.h>

#include <algorithm>
#include <cfloat>

#include <Inventor/SbBox2f.h>
#include <Inventor/SbBox3f.h>
#include <Inventor/SbVec3f.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoTransform.h>

namespace {

bool isSide(float delta) { return delta > 0 && delta <= FLT_MAX; }

// Keeps the transform finite and invertible for boxes whose sides differ by more than a float's range.
float ratio(float numerator, float denominator) { return std::clamp(numerator / denominator, FLT_MIN, FLT_MAX); }

}  // namespace

PbDomain::PbDomain(float xmin, float ymin, float xmax, float ymax, BoundingBoxType type) {
  setDomain(xmin, ymin, xmax, ymax, type);
}

PbDomain::PbDomain(float xmin, float ymin, float zmin, float xmax, float ymax, float zmax, BoundingBoxType type) {
  setDomain(xmin, ymin, zmin, xmax, ymax, zmax, type);
}

PbDomain::PbDomain(const SbBox2f& box, BoundingBoxType type) { setDomain(box, type); }

PbDomain::PbDomain(const SbBox3f& box, BoundingBoxType type) { setDomain(box, type); }

PbDomain& PbDomain::operator=(const PbDomain& other) {
  if (this == &other) return *this;
  std::copy_n(other.m_min, 3, m_min);
  std::copy_n(other.m_max, 3, m_max);
  std::copy_n(other.m_delta, 3, m_delta);
  m_transformType = other.m_transformType;
  PbBase::operator=(other);  // last, since it tells the kits
  return *this;
}

void PbDomain::setDomain(float xmin, float ymin, float xmax, float ymax, BoundingBoxType type) {
  const float min[] = {xmin, ymin};
  const float max[] = {xmax, ymax};
  if (setBox(2, min, max, type)) touch();
}

void PbDomain::setDomain(float xmin, float ymin, float zmin, float xmax, float ymax, float zmax, BoundingBoxType type) {
  const float min[] = {xmin, ymin, zmin};
  const float max[] = {xmax, ymax, zmax};
  if (setBox(3, min, max, type)) touch();
}

void PbDomain::setDomain(const SbBox2f& box, BoundingBoxType type) {
  if (setBox(2, box.getMin().getValue(), box.getMax().getValue(), type)) touch();
}

void PbDomain::setDomain(const SbBox3f& box, BoundingBoxType type) {
  if (setBox(3, box.getMin().getValue(), box.getMax().getValue(), type)) touch();
}

bool PbDomain::setBox(int numAxes, const float* min, const float* max, BoundingBoxType type) {
  float newMin[3] = {0, 0, 0}, newMax[3] = {1, 1, 1};
  std::copy_n(min, numAxes, newMin);
  std::copy_n(max, numAxes, newMax);
  for (int axis = 0; axis < numAxes; ++axis)
    if (!isSide(newMax[axis] - newMin[axis])) return false;

  if (type != BOX_AS_GIVEN) {
    if (type != BOX_LARGEST_SIDE && type != BOX_SMALLEST_SIDE) return false;
    float size = newMax[0] - newMin[0];
    for (int axis = 1; axis < numAxes; ++axis) {
      const float side = newMax[axis] - newMin[axis];
      size = type == BOX_LARGEST_SIDE ? std::max(size, side) : std::min(size, side);
    }
    for (int axis = 0; axis < numAxes; ++axis) {
      newMin[axis] = (min[axis] + max[axis] - size) * 0.5f;
      newMax[axis] = (min[axis] + max[axis] + size) * 0.5f;
      // Far from the origin a small side is lost to rounding.
      if (!isSide(newMax[axis] - newMin[axis])) return false;
    }
  }

  for (int axis = 0; axis < 3; ++axis) {
    m_min[axis] = newMin[axis];
    m_max[axis] = newMax[axis];
    m_delta[axis] = newMax[axis] - newMin[axis];
  }
  return true;
}

void PbDomain::getDomain(float& xmin, float& ymin, float& xmax, float& ymax) const {
  xmin = m_min[0];
  ymin = m_min[1];
  xmax = m_max[0];
  ymax = m_max[1];
}

void PbDomain::getDomain(float& xmin, float& ymin, float& zmin, float& xmax, float& ymax, float& zmax) const {
  getDomain(xmin, ymin, xmax, ymax);
  zmin = m_min[2];
  zmax = m_max[2];
}

void PbDomain::getDomain(SbBox2f& box) const { box.setBounds(m_min[0], m_min[1], m_max[0], m_max[1]); }

void PbDomain::getDomain(SbBox3f& box) const { box.setBounds(SbVec3f(m_min), SbVec3f(m_max)); }

void PbDomain::getDelta(float& deltaX, float& deltaY) const {
  deltaX = m_delta[0];
  deltaY = m_delta[1];
}

void PbDomain::getDelta(float& deltaX, float& deltaY, float& deltaZ) const {
  getDelta(deltaX, deltaY);
  deltaZ = m_delta[2];
}

void PbDomain::setTransformType(TransformType type) {
  m_transformType = type;
  setChangeType(DOMAIN_TRANSFORM_TYPE_CHANGE);
  notifyChange();
}

SbVec3f PbDomain::getScale() const {
  const auto [dx, dy, dz] = m_delta;
  switch (m_transformType) {
    case TRANSFORM_01:
      return SbVec3f(ratio(1, dx), ratio(1, dy), ratio(1, dz));
    case SCALE_X_FIXED:
      return SbVec3f(1, ratio(dx, dy), ratio(dx, dz));
    case SCALE_Y_FIXED:
      return SbVec3f(ratio(dy, dx), 1, ratio(dy, dz));
    case SCALE_Z_FIXED:
      return SbVec3f(ratio(dz, dx), ratio(dz, dy), 1);
    case SCALE_MAX_XYZ_FIXED:
      if (dx > dy && dx > dz) return SbVec3f(1, ratio(dx, dy), ratio(dx, dz));
      if (dy > dx && dy > dz) return SbVec3f(ratio(dy, dx), 1, ratio(dy, dz));
      return SbVec3f(ratio(dz, dx), ratio(dz, dy), 1);
  }
  return SbVec3f(1, 1, 1);
}

SbMatrix PbDomain::getMatrix() const {
  SbMatrix matrix;
  matrix.setScale(getScale());
  if (m_transformType == TRANSFORM_01) {
    SbMatrix translation;
    translation.setTranslate(-SbVec3f(m_min));
    matrix.multLeft(translation);
  }
  return matrix;
}

SoTransform* PbDomain::getTransform() const {
  const SbVec3f scale = getScale();
  SoTransform* transform = new SoTransform;
  transform->scaleFactor = scale;
  // The node scales first, so the translation is in scaled units.
  if (m_transformType == TRANSFORM_01)
    transform->translation.setValue(-m_min[0] * scale[0], -m_min[1] * scale[1], -m_min[2] * scale[2]);
  return transform;
}

SoMatrixTransform* PbDomain::getMatrixTransform() const {
  SoMatrixTransform* transform = new SoMatrixTransform;
  transform->matrix = getMatrix();
  return transform;
}

bool PbDomain::operator==(const PbDomain& other) const {
  return std::equal(m_min, m_min + 3, other.m_min) && std::equal(m_max, m_max + 3, other.m_max) &&
         m_transformType == other.m_transformType;
}
