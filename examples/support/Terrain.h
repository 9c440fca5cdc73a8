#ifndef ORMELLE_GALLERY_TERRAIN_H
#define ORMELLE_GALLERY_TERRAIN_H

#include <Ormelle/PbNonLinearDataMapping2.h>
#include <Ormelle/PbRegularCartesianGrid2D.h>

#include <cmath>
#include <vector>

#include "Gallery.h"

namespace gallery {

/// The relief around the Jacksboro Fault on a grid in kilometres: value set 0 is the height in metres, set 1 the same
/// in kilometres and exaggerated, to raise the mesh with.
class Terrain {
 public:
  static constexpr float kExaggeration = 4.0f;

  Terrain() : m_data("jacksboro_fault_dem"), m_mesh(1) {
    const int numX = m_data.dims()[0];
    const int numY = m_data.dims()[1];
    constexpr double kilometresPerDegree = 111.2;
    constexpr double radiansPerDegree = 3.14159265358979 / 180;
    const double latitude = (m_data.origin()[1] + m_data.spacing()[1] * numY / 2) * radiansPerDegree;
    m_width = static_cast<float>((numX - 1) * m_data.spacing()[0] * kilometresPerDegree * std::cos(latitude));
    m_depth = static_cast<float>((numY - 1) * m_data.spacing()[1] * kilometresPerDegree);
    m_mesh.setGeometry(numX, numY, 0, 0, m_width, m_depth);
    m_heights = lastIndexFastest(m_data.floats("elevation"), numX, numY);
    std::vector<float> raised(m_heights);
    for (float& height : raised) height *= kExaggeration / 1000;
    m_mesh.addValuesSet(0, m_heights.data(), "height in m");
    m_mesh.addValuesSet(1, raised.data(), "height in km, exaggerated");
  }

  PbRegularCartesianGrid2D& mesh() { return m_mesh; }
  const DataSet& data() const { return m_data; }
  float width() const { return m_width; }
  float depth() const { return m_depth; }
  const std::vector<float>& heights() const { return m_heights; }

  /// Colours from valley to summit, for value set 0.
  static PbNonLinearDataMapping2 colors() {
    const float levels[] = {220, 330, 450, 620, 800, 960, 1080};
    const SbColor colors[] = {{0.13f, 0.33f, 0.25f}, {0.23f, 0.48f, 0.27f}, {0.49f, 0.60f, 0.29f},
                              {0.74f, 0.68f, 0.38f}, {0.74f, 0.55f, 0.35f}, {0.87f, 0.77f, 0.64f},
                              {0.97f, 0.95f, 0.92f}};
    PbNonLinearDataMapping2 mapping;
    mapping.setValues(PbNonLinearDataMapping2::LINEAR_PER_LEVEL, 7, levels, colors);
    return mapping;
  }

 private:
  DataSet m_data;
  PbRegularCartesianGrid2D m_mesh;
  std::vector<float> m_heights;
  float m_width = 0;
  float m_depth = 0;
};

}  // namespace gallery

#endif
