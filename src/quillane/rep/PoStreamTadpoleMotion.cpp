#include <Ormelle/PoStreamTadpoleMotion.h>

#include "quillane/rep/PiMotionNodes.h"

PO_KIT_SOURCE(PoStreamTadpoleMotion)

PoStreamTadpoleMotion::PoStreamTadpoleMotion() {
  PO_KIT_CONSTRUCTOR(PoStreamTadpoleMotion);
  PO_KIT_ADD_CATALOG_ENTRY(groupStreamTadpoleMotion, SoGroup, alternateRep);
  PO_KIT_ADD_FIELD(width, (2.0F));
  PO_KIT_ADD_FIELD(backColor, (0.0F, 0.0F, 0.0F));
  PO_KIT_ADD_FIELD(particleColor, (0.9F, 0.0F, 0.0F));
  PO_KIT_ADD_FIELD(lengthFactor, (1.0F));
  PO_KIT_CONSTRUCTED(PoStreamTadpoleMotion);
  for (SoField* field : std::initializer_list<SoField*>{&width, &backColor, &particleColor, &lengthFactor})
    watchField(*field);
  ownPart(groupStreamTadpoleMotion);
  beginWatching();
}

PoStreamTadpoleMotion::~PoStreamTadpoleMotion() = default;

void PoStreamTadpoleMotion::rebuild() { rebuildPart("groupStreamTadpoleMotion"); }

void PoStreamTadpoleMotion::newAnimator(SoGroup* group, SoLineSet*, SoCoordinate3*) {
  PiMotionNodes::add<SoDrawStyle>(group)->lineWidth = PiMotionNodes::widthOf(width.getValue());
}

void PoStreamTadpoleMotion::newFrame(SoGroup*, int) {
  m_points.clear();
  m_colors.clear();
}

void PoStreamTadpoleMotion::newParticle(const SbVec3f& point, const SbVec3f& velocity, const SbVec3f&,
                                        const SbColor* color, int) {
  const float factor = lengthFactor.getValue();
  const SbVec3f tail = point - velocity * 0.75F * factor;
  const SbVec3f head = point + velocity * 0.25F * factor;
  for (const SbVec3f& end : {tail, head})
    if (!std::isfinite(end[0]) || !std::isfinite(end[1]) || !std::isfinite(end[2])) return;
  const SbColor& back = backColor.getValue();
  m_points.insert(m_points.end(), {tail, point, head});
  m_colors.insert(m_colors.end(), {back, color ? *color : particleColor.getValue(), back});
}

void PoStreamTadpoleMotion::endFrame(SoGroup* group, int) {
  if (m_points.empty()) return;
  PiMotionNodes::addColors(group, m_colors, SoMaterialBinding::PER_VERTEX);
  PiMotionNodes::addPoints(group, m_points);
  PiMotionNodes::addLines(group, static_cast<int>(m_points.size() / 3), 3);
}
