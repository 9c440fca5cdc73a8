#ifndef ORMELLE_POSTREAMPARTICLEMOTION_H
#define ORMELLE_POSTREAMPARTICLEMOTION_H

#include <memory>

#include <Ormelle/PoBaseStreamLine.h>

class SbColor;
class SbString;
class SoCoordinate3;
class SoLineSet;
struct PiMotionStore;

/// Root of the kits that show particles moving along the paths of PoBaseStreamLine, by a SoBlinker whose children are
/// the frames of the motion.
///
/// Each path is sampled at equal times: at `shiftStart` and every `timeStep` after that, as long as that is before the
/// time of its last point; what lies before its start is passed over. A frame shows every `pulseFrequency`-th sample of
/// a path, the next frame the samples behind them, and the last frame those in front of what the first one shows: so
/// the motion goes round without a seam, and a particle moves on by `timeStep` from frame to frame.
///
/// Paths are only integrated again when something changes that they depend on (PoBaseStreamLine::getPathsId()). When
/// only `isBlinking`, `blinkSpeed` and `viewFrame` changed the frames stay too.
///
/// A particle has the colour of the data mapping for the value interpolated at it (see PoBaseStreamLine), and isn't
/// drawn where that has no colour; without a mapping it has the colour of its path (`colors`), and without those the
/// one that the kit gives. Colours are opaque.
///
/// No mesh, no vectors, and a `timeStep` or `pulseFrequency` of 0 and below make an empty kit. There are no more than
/// 10,000 frames (a larger `pulseFrequency` counts as that) and no more than four million samples: where there would be
/// more, each path keeps its equal share of them from its start on.
///
/// The blinker is driven by the clock of the toolkit when the event loop of the application has time. Until then, and
/// so in a picture that is drawn without a loop, the frame is `viewFrame`.
///
/// A subclass overrides what it needs of newAnimator() and so on, and its rebuild() is a call of rebuildPart().
class ORMELLE_API PoStreamParticleMotion : public PoBaseStreamLine {
  PO_KIT_ABSTRACT_HEADER(PoStreamParticleMotion, PoBaseStreamLine);

 public:
  /// How many samples, and so frames, lie between two particles of a path; 5 by default.
  SoSFInt32 pulseFrequency;
  /// When the first sample of each path is, in the time of the path; 0 by default.
  SoSFFloat shiftStart;
  /// The time between two samples, 1 by default.
  SoSFFloat timeStep;
  /// Whether the particles of a path start some samples late, so that paths don't pulse alike; TRUE by default. The
  /// number is `rand() % pulseFrequency`, with one rand() for each start point in their order, drawn when the paths
  /// were integrated and kept till they are anew: `srand()` before that makes it the same again.
  SoSFBool isStartRandomized;
  /// Whether the frames follow each other; TRUE by default.
  SoSFBool isBlinking;
  /// The frame that is shown, or from which blinking goes on; 0 by default. It counts modulo `pulseFrequency`, negative
  /// numbers from the end.
  SoSFInt32 viewFrame;
  /// How often all frames are gone through in a second, 3 by default. Unless it is above 0 the frame stands.
  SoSFFloat blinkSpeed;

  /// Keep the velocity and the time of each point.
  void saveSpeed(PiStreamPath& path, SbVec3f& velocity) override;
  void saveTime(PiStreamPath& path, float time) override;

 protected:
  PoStreamParticleMotion();
  ~PoStreamParticleMotion() override;

  /// @name What a subclass draws
  /// Called by rebuildFrames() in the order of a book: newAnimator(), for each frame newFrame(), for each path
  /// newLine(), for each of its particles newParticle(), endLine(), endFrame(), endAnimator(). They do nothing here.
  /// @{
  /// `group` is that of all frames, in front of which the subclass adds what they share. `lines` are the paths, a
  /// polyline each, through `points`: the points of the paths and all samples. Neither is in the scene unless the
  /// subclass adds it.
  virtual void newAnimator(SoGroup* group, SoLineSet* lines, SoCoordinate3* points);
  virtual void endAnimator(SoGroup* group, SoLineSet* lines, SoCoordinate3* points);
  /// `group` is that of the frame, a SoSeparator.
  virtual void newFrame(SoGroup* group, int frame);
  virtual void endFrame(SoGroup* group, int frame);
  /// `line` is the index of the start point; every path counts, even without particles.
  virtual void newLine(SoGroup* group, int line);
  virtual void endLine(SoGroup* group, int line);
  /// A particle, with the velocity of the field at it and where it will be a frame on: at the next sample, or behind
  /// the last at the end of the path. `color` is null if there is none to give. `index` is its place in the `points` of
  /// newAnimator(), where those up to `next` follow.
  virtual void newParticle(const SbVec3f& point, const SbVec3f& velocity, const SbVec3f& next, const SbColor* color,
                           int index);
  /// @}

  /// A new group with the frames below a SoBlinker, for a rebuild between preRebuild() and postRebuild(); empty if
  /// there is nothing to draw.
  SoGroup* rebuildFrames();
  /// A whole rebuild: the frames in the group `part_name`, or only its blinker set anew if that is enough.
  void rebuildPart(const SbString& part_name);
  /// If nothing changed but how the frames are shown, sets the blinker in this part and returns 1. Returns 0 if more
  /// changed, or if there is no blinker.
  int modifyBlinkerParams(const SbString& part_name);
  /// Whether anything else than `isBlinking`, `blinkSpeed` and `viewFrame` changed since the last rebuild.
  int fieldsHaveChanged() const;

  void postRebuild() override;

 private:
  std::unique_ptr<PiMotionStore> m_motion;
};

#endif
