#include <Ormelle/PoStreamSphereMotion.h>

#include <Inventor/nodes/SoShapeHints.h>

#include "quillane/rep/PiMotionNodes.h"
#include "quillane/vector/PiGlyphEmitter.h"

PO_KIT_SOURCE(PoStreamSphereMotion)

/// The spheres of a rebuild, which are only made when it is known how many there are.
struct PiSphereFrames {
  struct Frame {
    SoGroup* group;
    std::vector<PiVectorField::Vector> places;
    std::vector<SbColor> colors;
  };
  std::vector<Frame> frames;

  /// The more spheres there are, the smaller each is drawn.
  int numSides() const {
    std::size_t num = 0;
    for (const Frame& frame : frames) num += frame.places.size();
    return num < 2'000 ? 20 : num < 20'000 ? 12 : num < 100'000 ? 8 : 5;
  }
};

PoStreamSphereMotion::PoStreamSphereMotion() {
  PO_KIT_CONSTRUCTOR(PoStreamSphereMotion);
  PO_KIT_ADD_CATALOG_ENTRY(groupStreamSphereMotion, SoGroup, alternateRep);
  PO_KIT_ADD_FIELD(sphereRadius, (1.0F));
  PO_KIT_CONSTRUCTED(PoStreamSphereMotion);
  watchField(sphereRadius);
  ownPart(groupStreamSphereMotion);
  beginWatching();
}

PoStreamSphereMotion::~PoStreamSphereMotion() = default;

void PoStreamSphereMotion::rebuild() { rebuildPart("groupStreamSphereMotion"); }

void PoStreamSphereMotion::newAnimator(SoGroup* group, SoLineSet*, SoCoordinate3*) {
  PiMotionNodes::add<SoShapeHints>(group)->vertexOrdering = SoShapeHints::CLOCKWISE;
  m_frames = std::make_unique<PiSphereFrames>();
}

void PoStreamSphereMotion::newFrame(SoGroup* group, int) { m_frames->frames.push_back({group, {}, {}}); }

void PoStreamSphereMotion::newParticle(const SbVec3f& point, const SbVec3f&, const SbVec3f&, const SbColor* color,
                                       int) {
  PiSphereFrames::Frame& frame = m_frames->frames.back();
  frame.places.push_back({point, SbVec3f(0, 0, 0), 0, static_cast<int>(frame.places.size())});
  if (color) frame.colors.push_back(*color);
}

void PoStreamSphereMotion::endAnimator(SoGroup*, SoLineSet*, SoCoordinate3*) {
  const std::unique_ptr<PiSphereFrames> made = std::move(m_frames);
  const float radius = sphereRadius.getValue();
  if (!(radius > 0) || !std::isfinite(radius)) return;
  const PiGlyphShape sphere = PiGlyphShape::sphere(made->numSides());
  PiGlyphEmitter::Size size;
  size.height.fixed = size.radius.fixed = radius;
  for (const PiSphereFrames::Frame& frame : made->frames) {
    PiGlyphEmitter::Colors given;
    if (!frame.colors.empty()) {
      given.material = new SoMaterial;
      given.material->diffuseColor.setValues(0, static_cast<int>(frame.colors.size()), frame.colors.data());
    }
    PiGlyphEmitter::emit(sphere, size, frame.places, given, frame.group);
  }
}
