#ifndef ORMELLE_GALLERY_ATMOSPHERE_H
#define ORMELLE_GALLERY_ATMOSPHERE_H

#include <Inventor/SbVec3f.h>

#include <cmath>
#include <vector>

#include "Gallery.h"

namespace gallery {

/// The global atmosphere of a January: levels of longitude by latitude, from the ground upwards.
class Atmosphere {
 public:
  Atmosphere()
      : m_data("atmosphere_january"),
        m_temperature(m_data.floats("temperature")),
        m_wind(m_data.floats("wind")),
        m_longitudes(m_data.floats("x")),
        m_latitudes(m_data.floats("y")),
        m_pressures(m_data.floats("z")) {}

  const DataSet& data() const { return m_data; }
  /// Degrees east, rising.
  const std::vector<float>& longitudes() const { return m_longitudes; }
  /// Degrees north, rising.
  const std::vector<float>& latitudes() const { return m_latitudes; }
  /// Hectopascals of the levels, falling.
  const std::vector<float>& pressures() const { return m_pressures; }
  int numLongitudes() const { return static_cast<int>(m_longitudes.size()); }
  int numLatitudes() const { return static_cast<int>(m_latitudes.size()); }

  /// Temperature in kelvin at a node of a level.
  float temperature(int level, int longitude, int latitude) const {
    return m_temperature[at(level, longitude, latitude)];
  }
  /// Speed of the horizontal wind in metres a second.
  float speed(int level, int longitude, int latitude) const {
    const std::size_t node = 2 * at(level, longitude, latitude);
    return std::hypot(m_wind[node], m_wind[node + 1]);
  }

  /// The horizontal wind itself, eastward and northward.
  SbVec3f wind(int level, int longitude, int latitude) const {
    const std::size_t node = 2 * at(level, longitude, latitude);
    return SbVec3f(m_wind[node], m_wind[node + 1], 0);
  }

  /// What a function of (longitude, latitude) gives at all nodes of a map, latitude fastest.
  template <class Function>
  auto map(Function&& value) const {
    std::vector<decltype(value(0, 0))> values;
    values.reserve(m_longitudes.size() * m_latitudes.size());
    for (int i = 0; i < numLongitudes(); ++i)
      for (int j = 0; j < numLatitudes(); ++j) values.push_back(value(i, j));
    return values;
  }

 private:
  std::size_t at(int level, int longitude, int latitude) const {
    return static_cast<std::size_t>((level * numLatitudes() + latitude) * numLongitudes() + longitude);
  }

  DataSet m_data;
  std::vector<float> m_temperature;
  std::vector<float> m_wind;
  std::vector<float> m_longitudes;
  std::vector<float> m_latitudes;
  std::vector<float> m_pressures;
};

}  // namespace gallery

#endif
