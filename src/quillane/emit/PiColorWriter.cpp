#include "quillane/emit/PiColorWriter.h"

#include <algorithm>

PiColorWriter::PiColorWriter(const PbDataMapping& mapping, SoMaterial& material, int count)
    : m_mapping(mapping), m_material(material), m_isTransparencyEnabled(mapping.isTransparencyEnabled() != 0) {
  material.diffuseColor.setNum(count);
  if (count == 0) return;
  m_colors = material.diffuseColor.startEditing();
  if (m_isTransparencyEnabled) startTransparencies();
}

PiColorWriter::~PiColorWriter() {
  if (m_colors) m_material.diffuseColor.finishEditing();
  if (m_transparencies) m_material.transparency.finishEditing();
}

void PiColorWriter::startTransparencies() {
  const int count = m_material.diffuseColor.getNum();
  m_material.transparency.setNum(count);
  m_transparencies = m_material.transparency.startEditing();
  std::fill(m_transparencies, m_transparencies + count, 0.0F);
}

void PiColorWriter::setNoColor(int entry) {
  if (!m_transparencies) startTransparencies();
  m_colors[entry].setValue(0, 0, 0);
  m_transparencies[entry] = 1;
}
