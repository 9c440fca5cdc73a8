#include "quillane/contour/PiBandPolygons.h"

void PiBandPolygons::start(int numNodes, int numCells, const float* values, const PiContourLevels& levels,
                           const PiCutPoints& cuts) {
  m_numNodes = numNodes;
  m_values = values;
  m_levels = &levels;
  m_cuts = &cuts;
  coordIndex.clear();
  lowerIsovalues.clear();
  // Memory that isn't needed in the end costs nothing: it is never touched.
  const auto num = static_cast<std::size_t>(numCells);
  coordIndex.reserve(6 * num);
  lowerIsovalues.reserve(num + num / 4);
}

// Means are taken in double, which for equal values is exactly that value.
int PiBandPolygons::lowerIsovalueOf(const PiCellNodes& cell) const {
  double sum = 0;
  for (int c = 0; c < cell.num; ++c) sum += m_values[cell.node[c]];
  return m_levels->lowerIsovalueOf(sum / cell.num);
}

void PiBandPolygons::cut(const PiCutCell& cell) {
  makeRing(cell);
  for (std::size_t start = 0; start < m_ring.size(); ++start)
    if (!m_ring[start].isPassed) addPolygon(start);
}

// Goes round the cell from its first corner and joins the cut points that are the ends of one line.
void PiBandPolygons::makeRing(const PiCutCell& cell) {
  m_ring.clear();
  int cornerPlaces[4];
  for (int e = 0; e < cell.num; ++e) {
    const PiEdgeEnd &from = cell.corner[e], &to = cell.corner[cell.next(e)];
    cornerPlaces[e] = static_cast<int>(m_ring.size());
    m_ring.push_back({from.node, -1, from.band, 0, from.value, &from.point});
    const int step = from.band < to.band ? 1 : -1;
    // Going up from a band the first level met has its number, going down the number before.
    for (int band = from.band; band != to.band; band += step) {
      const int level = step > 0 ? band : band - 1;
      const int cut = cell.cutPoint(e, level);
      const int node = m_cuts->node(cut);
      m_ring.push_back(
          {node < 0 ? m_numNodes + cut : node, -1, band + step, 0, m_levels->level(level), &m_cuts->point(cut)});
    }
  }
  forEachCrossing(cell, *m_cuts, [&](int level, int edge1, int edge2) {
    const auto placeOn = [&](int edge) {
      const int from = cell.corner[edge].band;
      const bool isRising = from < cell.corner[cell.next(edge)].band;
      return cornerPlaces[edge] + (isRising ? level - from : from - 1 - level) + 1;
    };
    const int place1 = placeOn(edge1), place2 = placeOn(edge2);
    m_ring[static_cast<std::size_t>(place1)].partner = place2;
    m_ring[static_cast<std::size_t>(place2)].partner = place1;
  });
}

// Goes round the polygon to which the piece of edge behind `start` belongs: along the ring to a cut point, across the
// cell to the other end of its line, and on along the ring.
void PiBandPolygons::addPolygon(std::size_t start) {
  m_polygon.clear();
  const auto addCorner = [this](std::size_t place) {
    // A cut point may lie on a node, and then polygons may lose corners.
    if (m_polygon.empty() || m_ring[static_cast<std::size_t>(*(m_polygon.end() - 1))].index != m_ring[place].index)
      m_polygon.push_back(static_cast<int>(place));
  };
  std::size_t place = start;
  do {
    m_ring[place].isPassed = 1;
    place = place + 1 < m_ring.size() ? place + 1 : 0;
    addCorner(place);
    if (m_ring[place].partner >= 0) {
      place = static_cast<std::size_t>(m_ring[place].partner);
      addCorner(place);
    }
  } while (place != start);

  std::size_t num = m_polygon.size();
  const auto corner = [this](std::size_t i) -> const RingPoint& {
    return m_ring[static_cast<std::size_t>(m_polygon[i])];
  };
  while (num > 1 && corner(num - 1).index == corner(0).index) --num;
  if (num < 3) return;

  double area[3] = {0, 0, 0}, sum = 0;
  const SbVec3f& origin = *corner(0).point;
  double before[3] = {0, 0, 0};
  for (std::size_t i = 1; i < num; ++i) {
    const SbVec3f& point = *corner(i).point;
    double along[3];
    for (int c = 0; c < 3; ++c) along[c] = static_cast<double>(point[c]) - origin[c];
    for (int c = 0; c < 3; ++c)
      area[c] += before[(c + 1) % 3] * along[(c + 2) % 3] - before[(c + 2) % 3] * along[(c + 1) % 3];
    std::copy(along, along + 3, before);
  }
  if (area[0] == 0 && area[1] == 0 && area[2] == 0) return;

  const int band = m_ring[start].bandBehind;
  int lower = m_levels->lowerIsovalue(band);
  if (m_levels->isMovedAt(band)) {
    for (std::size_t i = 0; i < num; ++i) sum += corner(i).value;
    lower = m_levels->lowerIsovalueOf(sum / static_cast<double>(num));
  }
  std::int32_t* corners = coordIndex.room(num + 1);
  for (std::size_t i = 0; i < num; ++i) corners[i] = corner(i).index;
  corners[num] = -1;
  coordIndex.addWritten(num + 1);
  lowerIsovalues.push_back(lower);
}
