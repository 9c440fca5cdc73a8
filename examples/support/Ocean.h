#ifndef ORMELLE_GALLERY_OCEAN_H
#define ORMELLE_GALLERY_OCEAN_H

#include <Ormelle/PbNonLinearDataMapping2.h>

#include <cmath>
#include <vector>

#include "Gallery.h"

namespace gallery {

/// Oxygen saturation of the world ocean in percent; land has no value.
class Ocean {
 public:
  Ocean() : m_data("ocean_oxygen"), m_oxygen(m_data.floats("oxygen_saturation")) {}

  const DataSet& data() const { return m_data; }
  std::vector<float> longitudes() const { return m_data.floats("x"); }
  std::vector<float> latitudes() const { return m_data.floats("y"); }
  /// Metres below the surface, rising.
  std::vector<float> depths() const { return m_data.floats("z"); }

  /// The nodes of one latitude, depth fastest.
  std::vector<float> section(int latitude) const {
    std::vector<float> values;
    for (int i = 0; i < m_data.dims()[0]; ++i)
      for (int k = 0; k < m_data.dims()[2]; ++k) values.push_back(at(i, latitude, k));
    return values;
  }
  /// The nodes of one depth, latitude fastest.
  std::vector<float> layer(int depth) const {
    std::vector<float> values;
    for (int i = 0; i < m_data.dims()[0]; ++i)
      for (int j = 0; j < m_data.dims()[1]; ++j) values.push_back(at(i, j, depth));
    return values;
  }

  /// Colours for the saturation, dark where there is little oxygen.
  static PbNonLinearDataMapping2 colors() {
    const float levels[] = {0, 20, 40, 60, 80, 100, 112};
    const SbColor colors[] = {{0.19f, 0.07f, 0.23f}, {0.40f, 0.16f, 0.43f}, {0.76f, 0.29f, 0.40f},
                              {0.96f, 0.56f, 0.37f}, {0.99f, 0.85f, 0.56f}, {0.48f, 0.78f, 0.72f},
                              {0.13f, 0.50f, 0.65f}};
    PbNonLinearDataMapping2 mapping;
    mapping.setValues(PbNonLinearDataMapping2::LINEAR_PER_LEVEL, 7, levels, colors);
    return mapping;
  }

 private:
  float at(int longitude, int latitude, int depth) const {
    const std::vector<int>& dims = m_data.dims();
    return m_oxygen[static_cast<std::size_t>((depth * dims[1] + latitude) * dims[0] + longitude)];
  }

  DataSet m_data;
  std::vector<float> m_oxygen;
};

}  // namespace gallery

#endif
