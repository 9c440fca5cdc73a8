#include <Ormelle/PoStreamPointMotion.h>

#include <Inventor/nodes/SoPointSet.h>

#include "quillane/rep/PiMotionNodes.h"

PO_KIT_SOURCE(PoStreamPointMotion)

PoStreamPointMotion::PoStreamPointMotion() {
  PO_KIT_CONSTRUCTOR(PoStreamPointMotion);
  PO_KIT_ADD_CATALOG_ENTRY(groupStreamPointMotion, SoGroup, alternateRep);
  PO_KIT_ADD_FIELD(pointSize, (3.0F));
  PO_KIT_CONSTRUCTED(PoStreamPointMotion);
  watchField(pointSize);
  ownPart(groupStreamPointMotion);
  beginWatching();
}

PoStreamPointMotion::~PoStreamPointMotion() = default;

void PoStreamPointMotion::rebuild() { rebuildPart("groupStreamPointMotion"); }

void PoStreamPointMotion::newAnimator(SoGroup* group, SoLineSet*, SoCoordinate3*) {
  PiMotionNodes::add<SoDrawStyle>(group)->pointSize = PiMotionNodes::widthOf(pointSize.getValue());
}

void PoStreamPointMotion::newFrame(SoGroup*, int) {
  m_points.clear();
  m_colors.clear();
}

void PoStreamPointMotion::newParticle(const SbVec3f& point, const SbVec3f&, const SbVec3f&, const SbColor* color, int) {
  m_points.push_back(point);
  if (color) m_colors.push_back(*color);
}

void PoStreamPointMotion::endFrame(SoGroup* group, int) {
  if (m_points.empty()) return;
  if (!m_colors.empty()) PiMotionNodes::addColors(group, m_colors, SoMaterialBinding::PER_VERTEX);
  PiMotionNodes::addPoints(group, m_points);
  PiMotionNodes::add<SoPointSet>(group)->numPoints = static_cast<int>(m_points.size());
}
