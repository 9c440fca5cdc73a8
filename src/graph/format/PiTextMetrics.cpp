#include "graph/format/PiTextMetrics.h"

SbBox3f PiTextMetrics::get(int kind, std::string_view font, std::string_view line,
                           const std::function<SbBox3f()>& measure) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_key.assign(1, static_cast<char>('0' + kind));
  m_key += font;
  m_key += '\0';
  m_key += line;
  const auto known = m_boxes.find(m_key);
  if (known != m_boxes.end()) return known->second;
  if (m_boxes.size() >= MAX_LINES) m_boxes.clear();
  return m_boxes[m_key] = measure();
}

PiTextMetrics& PiTextMetrics::shared() {
  static PiTextMetrics metrics;
  return metrics;
}
