#include "quillane/surface/PiStripJoiner.h"

#include <algorithm>

#include "graph/frame/PiParallel.h"

namespace {

/// Strips don't go on from one block to the next, so that blocks can be joined side by side.
constexpr std::size_t kPolygonsInBlock = 1 << 17;
constexpr std::size_t kNumEnds = 1 << 14;

/// Points that are near each other have near numbers: so those of late all have slots of their own.
std::size_t slotOf(int from) { return static_cast<std::size_t>(from) & (kNumEnds - 1); }

}  // namespace

void PiStripJoiner::join(std::span<const int> polygons) {
  m_polygons = polygons;
  m_links.clear();
  for (std::size_t first = 0, place = 0; place < polygons.size(); ++place) {
    if (polygons[place] >= 0) continue;
    m_links.push_back(
        {static_cast<std::uint32_t>(first), -1, static_cast<std::uint16_t>(place - first), 0, false, false});
    first = place + 1;
  }
  const std::size_t numBlocks = (m_links.size() + kPolygonsInBlock - 1) / kPolygonsInBlock;
  m_blockIndices.assign(numBlocks, 0);
  m_ends.resize(std::max(m_ends.size(), numBlocks));
  PiParallel::forBlocks(m_links.size(), kPolygonsInBlock, [this](std::size_t begin, std::size_t end) {
    PiGrowBuffer<End>& ends = m_ends[begin / kPolygonsInBlock];
    ends.fill(kNumEnds, End());
    m_blockIndices[begin / kPolygonsInBlock] = joinBlock(begin, end, ends);
  });
  m_numIndices = 0;
  for (std::size_t& indices : m_blockIndices) {
    const std::size_t counted = indices;
    indices = m_numIndices;
    m_numIndices += counted;
  }
}

/// Links the polygons of a block. Returns how many indices their strips have.
std::size_t PiStripJoiner::joinBlock(std::size_t begin, std::size_t end, PiGrowBuffer<End>& ends) {
  std::size_t numIndices = 0;
  for (std::size_t polygon = begin; polygon < end; ++polygon) {
    Link& link = m_links[polygon];
    const int* corners = m_polygons.data() + link.first;
    const unsigned num = link.corners;
    const auto cornerAt = [corners, num](unsigned c) { return corners[c < num ? c : c - num]; };
    bool isStart = true;
    for (unsigned c = 0; c < num; ++c) {
      const int from = corners[c], to = cornerAt(c + 1);
      End& strip = ends[slotOf(from)];
      if (strip.from != from || strip.to != to) continue;
      Link& last = m_links[static_cast<std::size_t>(strip.last)];
      last.next = static_cast<std::int32_t>(polygon);
      link.entry = static_cast<std::uint16_t>(c);
      link.isOdd = ((last.isOdd ? 1U : 0U) + last.corners) % 2 != 0;
      strip.from = -1;
      isStart = false;
      break;
    }
    const auto exitOf = [num](unsigned entry, bool isOdd) {
      const unsigned exit = entry + (isOdd ? (num + 1) / 2 : num / 2);
      return exit < num ? exit : exit - num;
    };
    if (isStart) {
      link.isStart = true;
      int newest = -1;
      for (unsigned c = 0; c < num; ++c) {
        const unsigned exit = exitOf(c, false);
        const int age = std::min(corners[exit], cornerAt(exit + 1));
        if (age <= newest) continue;
        newest = age;
        link.entry = static_cast<std::uint16_t>(c);
      }
    }
    const unsigned exit = exitOf(link.entry, link.isOdd);
    const int from = cornerAt(exit + 1), to = corners[exit];
    ends[slotOf(from)] = {from, to, static_cast<int>(polygon)};
    numIndices += num - 2 + (isStart ? 3 : 0);
  }
  return numIndices;
}

void PiStripJoiner::write(int* indices) const {
  PiParallel::forBlocks(m_links.size(), kPolygonsInBlock, [this, indices](std::size_t begin, std::size_t end) {
    int* out = indices + m_blockIndices[begin / kPolygonsInBlock];
    for (std::size_t start = begin; start < end; ++start) {
      if (!m_links[start].isStart) continue;
      bool isFirst = true;
      for (std::int32_t polygon = static_cast<std::int32_t>(start); polygon >= 0;) {
        const Link& link = m_links[static_cast<std::size_t>(polygon)];
        const int* corners = m_polygons.data() + link.first;
        const unsigned num = link.corners;
        const auto cornerAt = [corners, num](unsigned c) { return corners[c < num ? c : c - num]; };
        if (isFirst) {
          *out++ = corners[link.entry];
          *out++ = cornerAt(link.entry + 1U);
        }
        // The other corners from both ends in turn.
        unsigned front = link.entry + 2U, back = link.entry + num - 1;
        for (bool isFront = link.isOdd; front <= back; isFront = !isFront)
          *out++ = cornerAt(isFront ? front++ : back--);
        isFirst = false;
        polygon = link.next;
      }
      *out++ = -1;
    }
  });
}

std::size_t PiStripJoiner::memorySize() const {
  return m_links.capacity() * sizeof(Link) + m_ends.size() * kNumEnds * sizeof(End);
}
