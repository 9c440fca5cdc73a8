#ifndef ORMELLE_PILABELSPACE_H
#define ORMELLE_PILABELSPACE_H

#include <algorithm>
#include <cmath>

#include <Inventor/SbMatrix.h>
#include <Inventor/SbVec2f.h>
#include <Inventor/SbVec3f.h>
#include <Ormelle/PbDomain.h>

/// The space in which labels are fitted to lines. Where a domain scales its axes differently, it is the space in which
/// the domain is shown: there letters are upright and lengths are equal in all directions.
class PiLabelSpace {
 public:
  PiLabelSpace(const PbDomain& domain, bool hasHeights) : m_reference(domain.getDeltaX()) {
    const auto differ = [](float a, float b) { return std::abs(double(a) - b) >= 1e-20; };
    m_isMapped = differ(domain.getDeltaX(), domain.getDeltaY()) ||
                 (hasHeights && differ(domain.getDeltaX(), domain.getDeltaZ()));
    if (!m_isMapped) return;
    const SbMatrix matrix = domain.getMatrix();
    for (int a = 0; a < 3; ++a) m_factor[a] = matrix[a][a];
    if (domain.getTransformType() == PbDomain::TRANSFORM_01) {
      float max[3];
      domain.getDomain(m_origin[0], m_origin[1], m_origin[2], max[0], max[1], max[2]);
    }
    // The sides of the domain are shown at one length.
    m_reference *= m_factor[0];
  }

  bool isMapped() const { return m_isMapped; }
  /// What sizes of labels are relative to.
  float referenceLength() const { return m_reference; }

  SbVec3f map(const SbVec3f& point) const {
    return SbVec3f((point[0] - m_origin[0]) * m_factor[0], (point[1] - m_origin[1]) * m_factor[1],
                   (point[2] - m_origin[2]) * m_factor[2]);
  }
  SbVec2f map(const SbVec2f& point) const {
    return SbVec2f((point[0] - m_origin[0]) * m_factor[0], (point[1] - m_origin[1]) * m_factor[1]);
  }
  float mapHeight(float z) const { return (z - m_origin[2]) * m_factor[2]; }
  SbVec2f unmap(const SbVec2f& point) const {
    return SbVec2f(point[0] / m_factor[0] + m_origin[0], point[1] / m_factor[1] + m_origin[1]);
  }
  /// Takes what was mapped back.
  SbMatrix inverse() const {
    SbMatrix matrix = SbMatrix::identity();
    for (int a = 0; a < 3; ++a) {
      matrix[a][a] = 1 / m_factor[a];
      matrix[3][a] = m_origin[a];
    }
    return matrix;
  }

 private:
  bool m_isMapped = false;
  float m_reference;
  float m_origin[3] = {0, 0, 0};
  float m_factor[3] = {1, 1, 1};
};

#endif
