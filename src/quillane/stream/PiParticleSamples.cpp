#include "quillane/stream/PiParticleSamples.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "graph/data/PiFinite.h"
#include "graph/frame/PiParallel.h"

namespace {

constexpr std::size_t kPathsInTask = 32;

int numUsablePoints(const PiTimedPath& path) {
  if (!path.points || !path.times) return 0;
  int num = 0;
  while (num < path.numPoints && isFinitePoint(path.points[num]) && std::isfinite(path.times[num]) &&
         (num == 0 || path.times[num] >= path.times[num - 1]))
    ++num;
  return num < 2 ? 0 : num;
}

}  // namespace

void PiParticleSamples::sample(const std::vector<PiTimedPath>& paths, float start, float step, std::size_t maxSamples) {
  m_lines.assign(paths.size(), Line());
  step = std::min(step, std::numeric_limits<float>::max());
  const bool isSampled = step > 0 && std::isfinite(start);
  // Times are multiples of the step, not sums of steps, and in double: so a long path is neither late nor endless.
  const auto most = static_cast<double>(maxSamples);
  double total = 0;
  for (std::size_t p = 0; p < paths.size(); ++p) {
    Line& line = m_lines[p];
    line.numPoints = numUsablePoints(paths[p]);
    if (line.numPoints == 0 || !isSampled) continue;
    const double begin = paths[p].times[0], end = paths[p].times[line.numPoints - 1];
    const double skipped = start < begin ? std::ceil((begin - start) / step) : 0;
    line.firstTime = std::max(begin, start + skipped * step);
    const double num = line.firstTime < end ? std::ceil((end - line.firstTime) / step) : 0;
    line.numSamples = static_cast<int>(std::min(num, most));
    total += line.numSamples;
  }
  if (total > most) {
    const std::size_t share = std::max<std::size_t>(1, maxSamples / paths.size());
    for (Line& line : m_lines) line.numSamples = std::min(line.numSamples, static_cast<int>(share));
  }

  std::size_t numSamples = 0, numVertices = 0;
  for (Line& line : m_lines) {
    line.firstSample = numSamples;
    line.firstVertex = numVertices;
    numSamples += static_cast<std::size_t>(line.numSamples);
    numVertices += static_cast<std::size_t>(line.numPoints + line.numSamples);
  }
  m_samples.resize(numSamples);
  m_vertices.resize(numVertices);
  PiParallel::forBlocks(paths.size(), kPathsInTask, [&](std::size_t begin, std::size_t end) {
    for (std::size_t p = begin; p < end; ++p)
      if (m_lines[p].numPoints > 0) sampleLine(paths[p], m_lines[p], step);
  });
}

void PiParticleSamples::sampleLine(const PiTimedPath& path, const Line& line, double step) {
  Sample* sample = m_samples.data() + line.firstSample;
  SbVec3f* vertex = m_vertices.data() + line.firstVertex;
  int point = 0;  // that starts the segment of the sample
  *vertex++ = path.points[0];
  for (int s = 0; s < line.numSamples; ++s, ++sample) {
    const double time = line.firstTime + s * step;
    while (point + 2 < line.numPoints && static_cast<double>(path.times[point + 1]) <= time)
      *vertex++ = path.points[++point];
    const double from = path.times[point], length = path.times[point + 1] - from;
    const auto f = static_cast<float>(length > 0 ? std::clamp((time - from) / length, 0.0, 1.0) : 0);
    const auto between = [f](const auto& a, const auto& b) { return a + (b - a) * f; };
    sample->point = between(path.points[point], path.points[point + 1]);
    sample->velocity = path.velocities ? between(path.velocities[point], path.velocities[point + 1]) : SbVec3f(0, 0, 0);
    sample->value = path.values ? between(path.values[point], path.values[point + 1]) : 0;
    sample->vertex = static_cast<int>(vertex - m_vertices.data());
    *vertex++ = sample->point;
  }
  while (point + 1 < line.numPoints) *vertex++ = path.points[++point];
}

std::span<const PiParticleSamples::Sample> PiParticleSamples::samplesOf(int path) const {
  return {m_samples.data() + line(path).firstSample, static_cast<std::size_t>(line(path).numSamples)};
}
