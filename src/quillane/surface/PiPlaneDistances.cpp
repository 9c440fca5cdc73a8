#include "quillane/surface/PiPlaneDistances.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <Ormelle/PbCartesianGrid3D.h>
#include <Ormelle/PbIndexedMesh3D.h>
#include <Ormelle/PbParalCartesianGrid3D.h>
#include <Ormelle/PbRegularCartesianGrid3D.h>

#include "graph/frame/PiParallel.h"
#include "quillane/surface/PiGridAxes.h"

namespace {

constexpr std::size_t kNodesInTask = std::size_t{1} << 16;

bool isFinite(const PiSectionPlane& plane) {
  return std::isfinite(plane.a) && std::isfinite(plane.b) && std::isfinite(plane.c) && std::isfinite(plane.d);
}

}  // namespace

const float* PiPlaneDistances::update(const PbMesh3D& mesh, const PiSectionPlane& plane, const float* values,
                                      unsigned valuesId) {
  if (!isFinite(plane)) return nullptr;
  const bool isSameMesh = m_plane && m_geometry == mesh.getGeometryId() &&
                          m_distances.size() == static_cast<std::size_t>(mesh.getNumNodes());
  std::optional<unsigned> gaps;
  if (values && hasGaps({values, static_cast<std::size_t>(mesh.getNumNodes())}, valuesId)) gaps = valuesId;
  if (isSameMesh && gaps == m_gaps && plane.a * m_plane->a + plane.b * m_plane->b + plane.c * m_plane->c > 0.9999F) {
    if (plane.d != m_plane->d) ++m_counter;
    m_plane->d = plane.d;
    return m_distances.data();
  }

  m_plane = plane;
  m_geometry = mesh.getGeometryId();
  m_gaps = gaps;
  ++m_counter;
  ++m_numPasses;
  compute(mesh);
  if (gaps)
    for (std::size_t node = 0; node < m_distances.size(); ++node)
      if (std::isnan(values[node])) m_distances[node] = std::numeric_limits<float>::quiet_NaN();
  return m_distances.data();
}

bool PiPlaneDistances::hasGaps(std::span<const float> values, unsigned valuesId) {
  if (m_known != valuesId) {
    m_known = valuesId;
    m_hasGaps = std::any_of(values.begin(), values.end(), [](float value) { return std::isnan(value); });
  }
  return m_hasGaps;
}

void PiPlaneDistances::compute(const PbMesh3D& mesh) {
  const auto numNodes = static_cast<std::size_t>(mesh.getNumNodes());
  m_distances.reset(numNodes);
  float* distances = m_distances.data();
  const PiSectionPlane plane = *m_plane;
  const bool areLinesParallel =
      dynamic_cast<const PbRegularCartesianGrid3D*>(&mesh) || dynamic_cast<const PbParalCartesianGrid3D*>(&mesh);
  if (areLinesParallel) {
    // A row has x and y in common.
    PiGridAxes axes;
    axes.set(static_cast<const PbGrid3D&>(mesh));
    const std::vector<float>&x = axes.coords[0], &y = axes.coords[1], &z = axes.coords[2];
    PiParallel::run(axes.num(0), [&](int i) {
      float* distance = distances + static_cast<std::size_t>(i) * y.size() * z.size();
      for (const float yj : y) {
        const float share = plane.a * x[static_cast<std::size_t>(i)] + plane.b * yj;
        for (const float zk : z) *distance++ = share + plane.c * zk;
      }
    });
    return;
  }
  const float *x = nullptr, *y = nullptr, *z = nullptr;
  int numX, numY, numZ;
  mesh.getCoordinates(x, y, z, numX, numY, numZ);
  if (x && y && z && (dynamic_cast<const PbIndexedMesh3D*>(&mesh) || dynamic_cast<const PbCartesianGrid3D*>(&mesh))) {
    PiParallel::forBlocks(numNodes, kNodesInTask, [&](std::size_t begin, std::size_t end) {
      for (std::size_t node = begin; node < end; ++node)
        distances[node] = plane.a * x[node] + plane.b * y[node] + plane.c * z[node];
    });
    return;
  }
  for (std::size_t node = 0; node < numNodes; ++node) {
    const SbVec3f point = mesh.getNodeCoord(static_cast<int>(node));
    distances[node] = plane.a * point[0] + plane.b * point[1] + plane.c * point[2];
  }
}
