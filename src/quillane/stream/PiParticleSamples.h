#ifndef ORMELLE_PIPARTICLESAMPLES_H
#define ORMELLE_PIPARTICLESAMPLES_H

#include <cstddef>
#include <span>
#include <vector>

#include <Inventor/SbVec3f.h>

/// A path whose points have times, as arrays of somebody else. `velocities` and `values` may be null: then they are 0.
struct PiTimedPath {
  int numPoints = 0;
  const SbVec3f* points = nullptr;
  const float* times = nullptr;
  const SbVec3f* velocities = nullptr;
  const float* values = nullptr;
};

/// Places on paths at equal distances of time, and the paths as lines with those places among their vertices.
///
/// A path counts up to its first point that isn't finite or whose time isn't, or is less than that of the point before.
class PiParticleSamples {
 public:
  struct Sample {
    SbVec3f point;
    SbVec3f velocity;
    float value;
    int vertex;  ///< its place in vertices()
  };

  /// The most samples that are made. If there would be more, each path keeps the first of its own, as many as its equal
  /// share is (and one at least).
  static constexpr std::size_t kMaxSamples = 4'000'000;

  /// Samples each path at `start`, `start` + `step` and so on as long as that is below the time of its last point; what
  /// lies before its first point is passed over. Between two points everything is linear. There are no samples unless
  /// `step` is above 0 and `start` a number. Doesn't depend on the number of threads.
  void sample(const std::vector<PiTimedPath>& paths, float start, float step, std::size_t maxSamples = kMaxSamples);

  int numPaths() const { return static_cast<int>(m_lines.size()); }
  std::size_t numSamples() const { return m_samples.size(); }
  std::span<const Sample> samplesOf(int path) const;

  /// The points of all paths and the samples among them, in the order of time, path after path.
  const std::vector<SbVec3f>& vertices() const { return m_vertices; }
  /// How many vertices each path has: 0, or at least 2.
  int numVerticesOf(int path) const { return line(path).numPoints + line(path).numSamples; }
  /// The last of them, of a path that has any.
  const SbVec3f& endOf(int path) const {
    return m_vertices[line(path).firstVertex + static_cast<std::size_t>(numVerticesOf(path)) - 1];
  }

 private:
  struct Line {
    int numPoints = 0;  ///< that count; 0 where there are less than two
    int numSamples = 0;
    double firstTime = 0;  ///< of the first sample
    std::size_t firstSample = 0;
    std::size_t firstVertex = 0;
  };

  const Line& line(int path) const { return m_lines[static_cast<std::size_t>(path)]; }
  void sampleLine(const PiTimedPath& path, const Line& line, double step);

  std::vector<Line> m_lines;
  std::vector<Sample> m_samples;
  std::vector<SbVec3f> m_vertices;
};

#endif
