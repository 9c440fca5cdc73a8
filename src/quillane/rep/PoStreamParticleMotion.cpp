#include <Ormelle/PoStreamParticleMotion.h>

#include <algorithm>
#include <limits>

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Ormelle/PbDataMapping.h>
#include <Ormelle/PbMesh.h>

#include "quillane/rep/PiMotionStore.h"
#include "quillane/rep/PiStreamColors.h"
#include "quillane/stream/PiParticleSamples.h"
#include "quillane/stream/PiStreamPath.h"

PO_KIT_ABSTRACT_SOURCE(PoStreamParticleMotion)

namespace {

constexpr int kMaxFrames = 10'000;

PiTimedPath timedPathOf(const PiStreamPath& path) {
  return {path.getNumPoints(), path.getPoints(), path.getTimes(), path.getVelocities(), path.getValues()};
}

/// The paths as polylines through the vertices of the samples; those without a vertex are left out.
SoLineSet* linesOf(const PiParticleSamples& samples) {
  auto* lines = new SoLineSet;
  std::vector<int32_t> sizes;
  for (int path = 0; path < samples.numPaths(); ++path)
    if (samples.numVerticesOf(path) > 0) sizes.push_back(samples.numVerticesOf(path));
  lines->numVertices.setNum(0);
  lines->numVertices.setValues(0, static_cast<int>(sizes.size()), sizes.data());
  return lines;
}

}  // namespace

PoStreamParticleMotion::PoStreamParticleMotion() : m_motion(std::make_unique<PiMotionStore>()) {
  PO_KIT_CONSTRUCTOR(PoStreamParticleMotion);
  PO_KIT_ADD_FIELD(pulseFrequency, (5));
  PO_KIT_ADD_FIELD(shiftStart, (0.0F));
  PO_KIT_ADD_FIELD(timeStep, (1.0F));
  PO_KIT_ADD_FIELD(isStartRandomized, (TRUE));
  PO_KIT_ADD_FIELD(isBlinking, (TRUE));
  PO_KIT_ADD_FIELD(viewFrame, (0));
  PO_KIT_ADD_FIELD(blinkSpeed, (3.0F));
  PO_KIT_CONSTRUCTED(PoStreamParticleMotion);
  for (SoField* field : std::initializer_list<SoField*>{&pulseFrequency, &shiftStart, &timeStep, &isStartRandomized,
                                                        &isBlinking, &viewFrame, &blinkSpeed})
    watchField(*field);
  storeFieldsChanged(1);
}

PoStreamParticleMotion::~PoStreamParticleMotion() = default;

void PoStreamParticleMotion::saveSpeed(PiStreamPath& path, SbVec3f& velocity) { path.setVelocity(velocity); }
void PoStreamParticleMotion::saveTime(PiStreamPath& path, float time) { path.setTime(time); }

void PoStreamParticleMotion::newAnimator(SoGroup*, SoLineSet*, SoCoordinate3*) {}
void PoStreamParticleMotion::endAnimator(SoGroup*, SoLineSet*, SoCoordinate3*) {}
void PoStreamParticleMotion::newFrame(SoGroup*, int) {}
void PoStreamParticleMotion::endFrame(SoGroup*, int) {}
void PoStreamParticleMotion::newLine(SoGroup*, int) {}
void PoStreamParticleMotion::endLine(SoGroup*, int) {}
void PoStreamParticleMotion::newParticle(const SbVec3f&, const SbVec3f&, const SbVec3f&, const SbColor*, int) {}

SoGroup* PoStreamParticleMotion::rebuildFrames() {
  auto* group = new SoGroup;
  const int set = vecsIndex.getValue();
  if (!m_currentMesh || m_currentMesh->isEmpty() || set < 0 || !m_currentMesh->getVecsSet(set)) return group;
  const int numFrames = std::min(pulseFrequency.getValue(), kMaxFrames);
  if (numFrames < 1 || !(timeStep.getValue() > 0)) return group;

  const std::vector<PiStreamPath>& paths = integratePaths();
  std::vector<PiTimedPath> timedPaths(paths.size());
  std::transform(paths.begin(), paths.end(), timedPaths.begin(), timedPathOf);
  PiParticleSamples samples;
  samples.sample(timedPaths, shiftStart.getValue(), timeStep.getValue());
  if (samples.numSamples() == 0) return group;
  const bool isRandomized = isStartRandomized.getValue() != FALSE;
  if (isRandomized) m_motion->draw(getPathsId(), paths.size());

  const PiNodeRef<SoLineSet> lines(linesOf(samples));
  const PiNodeRef<SoCoordinate3> points(new SoCoordinate3);
  points->point.setValues(0, static_cast<int>(samples.vertices().size()), samples.vertices().data());
  const PiStreamColors colorOf(m_currentDataMapping, colors);

  // A reference of its own, lest a subclass that refers to the group for a while deletes it.
  group->ref();
  newAnimator(group, lines.get(), points.get());
  auto* blinker = new SoBlinker;
  group->addChild(blinker);
  for (int frame = 0; frame < numFrames; ++frame) {
    auto* frameGroup = new SoSeparator;
    blinker->addChild(frameGroup);
    newFrame(frameGroup, frame);
    for (int line = 0; line < samples.numPaths(); ++line) {
      newLine(frameGroup, line);
      const auto ofLine = samples.samplesOf(line);
      std::size_t s = static_cast<std::size_t>(frame);
      if (isRandomized) s += static_cast<std::size_t>(m_motion->draws[static_cast<std::size_t>(line)] % numFrames);
      for (; s < ofLine.size(); s += static_cast<std::size_t>(numFrames)) {
        const PiParticleSamples::Sample& sample = ofLine[s];
        const SbVec3f& next = s + 1 < ofLine.size() ? ofLine[s + 1].point : samples.endOf(line);
        const SbColor* color = nullptr;
        if (colorOf.find(line, sample.value, color))
          newParticle(sample.point, sample.velocity, next, color, sample.vertex);
      }
      endLine(frameGroup, line);
    }
    endFrame(frameGroup, frame);
  }
  m_motion->blinking.show(blinker, blinkSpeed.getValue(), isBlinking.getValue() != FALSE, viewFrame.getValue());
  endAnimator(group, lines.get(), points.get());
  group->unrefNoDelete();
  return group;
}

void PoStreamParticleMotion::rebuildPart(const SbString& part_name) {
  preRebuild();
  if (!modifyBlinkerParams(part_name)) setPart(part_name.getString(), rebuildFrames());
  postRebuild();
}

int PoStreamParticleMotion::modifyBlinkerParams(const SbString& part_name) {
  if (fieldsHaveChanged()) return 0;
  SoNode* part = getPart(part_name, FALSE);
  if (!part || !part->isOfType(SoGroup::getClassTypeId())) return 0;
  const auto* group = static_cast<SoGroup*>(part);
  for (int child = group->getNumChildren() - 1; child >= 0; --child) {
    if (!group->getChild(child)->isOfType(SoBlinker::getClassTypeId())) continue;
    auto* blinker = static_cast<SoBlinker*>(group->getChild(child));
    m_motion->blinking.show(blinker, blinkSpeed.getValue(), isBlinking.getValue() != FALSE, viewFrame.getValue());
    return 1;
  }
  return 0;
}

int PoStreamParticleMotion::fieldsHaveChanged() const {
  // During a traversal, what is on the state may have changed too.
  if (isStateValid() && !isCacheValid()) return 1;
  return !haveOnlyFieldsChanged({&isBlinking, &blinkSpeed, &viewFrame});
}

void PoStreamParticleMotion::postRebuild() {
  inherited::postRebuild();
  emptyListFieldsChanged();
}
