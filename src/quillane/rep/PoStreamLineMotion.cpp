#include <Ormelle/PoStreamLineMotion.h>

#include <Inventor/nodes/SoIndexedLineSet.h>
#include <Inventor/nodes/SoSeparator.h>

#include "quillane/rep/PiMotionNodes.h"

PO_KIT_SOURCE(PoStreamLineMotion)

PoStreamLineMotion::PoStreamLineMotion() {
  PO_KIT_CONSTRUCTOR(PoStreamLineMotion);
  PO_KIT_ADD_CATALOG_ENTRY(groupStreamLineMotion, SoGroup, alternateRep);
  PO_KIT_ADD_FIELD(lineWidth, (2.0F));
  PO_KIT_ADD_FIELD(lineColor, (0.4F, 0.0F, 0.0F));
  PO_KIT_ADD_FIELD(particleColor, (0.9F, 0.0F, 0.0F));
  PO_KIT_CONSTRUCTED(PoStreamLineMotion);
  for (SoField* field : std::initializer_list<SoField*>{&lineWidth, &lineColor, &particleColor}) watchField(*field);
  ownPart(groupStreamLineMotion);
  beginWatching();
}

PoStreamLineMotion::~PoStreamLineMotion() = default;

void PoStreamLineMotion::rebuild() { rebuildPart("groupStreamLineMotion"); }

void PoStreamLineMotion::newAnimator(SoGroup* group, SoLineSet* lines, SoCoordinate3* points) {
  m_vertices = points->point.getValues(0);
  PiMotionNodes::add<SoDrawStyle>(group)->lineWidth = PiMotionNodes::widthOf(lineWidth.getValue());
  group->addChild(points);
  auto* paths = PiMotionNodes::add<SoSeparator>(group);
  PiMotionNodes::addColor(paths, lineColor.getValue());
  paths->addChild(lines);
  PiMotionNodes::addColor(group, particleColor.getValue());
}

void PoStreamLineMotion::newFrame(SoGroup*, int) {
  m_indices.clear();
  m_colors.clear();
}

void PoStreamLineMotion::newParticle(const SbVec3f&, const SbVec3f&, const SbVec3f& next, const SbColor* color,
                                     int index) {
  // A pulse goes through the very vertices of its path, so that it covers it: other points would lie just beside it.
  m_indices.push_back(index);
  do m_indices.push_back(++index);
  while (m_vertices[index] != next);
  m_indices.push_back(-1);
  if (color) m_colors.push_back(*color);
}

void PoStreamLineMotion::endFrame(SoGroup* group, int) {
  if (m_indices.empty()) return;
  if (!m_colors.empty()) PiMotionNodes::addColors(group, m_colors, SoMaterialBinding::PER_FACE);
  PiMotionNodes::add<SoIndexedLineSet>(group)->coordIndex.setValues(0, static_cast<int>(m_indices.size()),
                                                                    m_indices.data());
}
