#include "quillane/contour/PiContouring.h"

#include <algorithm>
#include <cstdio>
#include <new>

#include <Inventor/errors/SoMemoryError.h>
#include <Inventor/nodes/SoCoordinate3.h>

#include "quillane/contour/PiContourSurface.h"

namespace {

// Makes room for `num` more cells, amortised. False, after a report, if there is no memory for them.
bool reserveCells(std::vector<PiCellNodes>& cells, std::size_t num) {
  const std::size_t needed = cells.size() + num;
  if (needed <= cells.capacity()) return true;
  const std::size_t capacity = std::max(2 * cells.capacity(), needed);
  try {
    cells.reserve(capacity);
  } catch (const std::bad_alloc&) {
    char text[256];
    std::snprintf(text, sizeof text,
                  "array in PiContouring::addElems().\n\tArray elements type : TabMeshElem*.\n\tNumber of elements : "
                  "%zu\n\tSize to allocate : %.1f Mo",
                  capacity, static_cast<double>(capacity * sizeof(PiCellNodes)) / 1e6);
    SoMemoryError::post(text);
    return false;
  }
  return true;
}

}  // namespace

PiContouring::PiContouring() : m_surface(std::make_unique<PiContourSurface>()) {}
PiContouring::~PiContouring() = default;

void PiContouring::setMesh(const PbCartesianGrid2D& mesh, const float* z) { m_surface->view = viewOf(mesh, z); }
void PiContouring::setMesh(const PbParalCartesianGrid2D& mesh, const float* z) { m_surface->view = viewOf(mesh, z); }
void PiContouring::setMesh(const PbRegularCartesianGrid2D& mesh, const float* z) { m_surface->view = viewOf(mesh, z); }
void PiContouring::setMesh(const PbPolarGrid2D& mesh, const float* z) { m_surface->view = viewOf(mesh, z); }
void PiContouring::setMesh(const PbIndexedMesh2D& mesh, const float* z) { m_surface->view = viewOf(mesh, z); }
void PiContouring::setMesh(const PbTriangleMesh2D& mesh, const float* z) { m_surface->view = viewOf(mesh, z); }
void PiContouring::setMesh(const PbQuadrangleMesh2D& mesh, const float* z) { m_surface->view = viewOf(mesh, z); }

void PiContouring::initGeometry() {
  PiHandedSurface& handed = m_surface->handed;
  handed.points.clear();
  handed.cells.clear();
  handed.numX = handed.numY = 0;
  m_surface->view = PiHandedCellsView(handed);
}

void PiContouring::setGeometryGrid(int nx, int ny) {
  initGeometry();
  m_surface->handed.numX = nx;
  m_surface->handed.numY = ny;
  m_surface->view = PiHandedGridView(m_surface->handed);
}

void PiContouring::setPoints(int n, const float* x, const float* y, const float* z) {
  std::vector<SbVec3f>& points = m_surface->handed.points;
  points.clear();
  if (!x || !y) return;
  points.reserve(static_cast<std::size_t>(std::max(n, 0)));
  for (int i = 0; i < n; ++i) points.emplace_back(x[i], y[i], z ? z[i] : 0.0F);
}

void PiContouring::setPoints(int n, const SoCoordinate3* coordinate) {
  const int num = coordinate ? std::clamp(n, 0, coordinate->point.getNum()) : 0;
  if (num > 0)
    setPoints(std::span(coordinate->point.getValues(0), static_cast<std::size_t>(num)));
  else
    m_surface->handed.points.clear();
}

void PiContouring::setPoints(std::span<const SbVec3f> points) {
  m_surface->handed.points.assign(points.begin(), points.end());
}

void PiContouring::addElems(int n, const int* indices) {
  std::vector<PiCellNodes>& cells = m_surface->handed.cells;
  if (!indices || n < 3 || !reserveCells(cells, static_cast<std::size_t>(n) / 2)) return;
  int i = 1;
  for (; i + 2 < n; i += 2) cells.push_back({4, {indices[0], indices[i], indices[i + 1], indices[i + 2]}});
  if (i + 1 < n) cells.push_back({3, {indices[0], indices[i], indices[i + 1], -1}});
}

void PiContouring::addElems(const std::vector<int>& indices) {
  addElems(static_cast<int>(indices.size()), indices.data());
}

void PiContouring::addPolygons(std::span<const int> coordIndex) {
  std::size_t first = 0;
  for (std::size_t i = 0; i <= coordIndex.size(); ++i) {
    if (i < coordIndex.size() && coordIndex[i] >= 0) continue;
    addElems(static_cast<int>(i - first), coordIndex.data() + first);
    first = i + 1;
  }
}

void PiContouring::addStripElems(int n, const int* indices) {
  std::vector<PiCellNodes>& cells = m_surface->handed.cells;
  if (!indices || n < 3 || !reserveCells(cells, static_cast<std::size_t>(n))) return;
  // Every other triangle of a strip runs the other way round.
  for (int i = 0; i + 2 < n; ++i) {
    const int second = i % 2 == 0 ? i + 1 : i + 2, third = i % 2 == 0 ? i + 2 : i + 1;
    cells.push_back({3, {indices[i], indices[second], indices[third], -1}});
  }
}

void PiContouring::addStripElems(const std::vector<int>& indices) {
  addStripElems(static_cast<int>(indices.size()), indices.data());
}

std::size_t PiContouring::memorySize() const {
  const PiHandedSurface& handed = m_surface->handed;
  return handed.points.capacity() * sizeof(SbVec3f) + handed.cells.capacity() * sizeof(PiCellNodes);
}
