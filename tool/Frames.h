#ifndef ORMELLE_TOOL_FRAMES_H
#define ORMELLE_TOOL_FRAMES_H

#include <Inventor/SbRotation.h>
#include <Inventor/SbVec3f.h>

#include <memory>
#include <string>
#include <vector>

#include "Commands.h"

class PiStage;
class SoCamera;
class SoField;
class SoNode;

namespace tool {

/// Stops the toolkit's clock at 0, so that a scene begins there and moves only from frame to frame. Before the scene is
/// read.
void holdTime();

/// "frame_%03d.png" with a number in it. Throws Failure if there isn't exactly one place for it.
std::string numberedName(const std::string& pattern, int number);

/// The moments of an animation: the clock of the toolkit, the fields `viewFrame` of kits that show particles, and a
/// camera that goes round the scene.
class Frames {
 public:
  Frames(SoNode* scene, const RenderOptions& options);
  ~Frames();
  Frames(const Frames&) = delete;
  Frames& operator=(const Frames&) = delete;

  /// What to draw.
  SoNode* root() const;
  /// Whether that has a camera which isn't the scene's.
  bool hasOwnCamera() const { return m_stage != nullptr; }
  /// Sets the scene to a frame, counted from 0.
  void show(int frame);

 private:
  void prepareTurn();

  SoNode* m_scene;
  const RenderOptions& m_options;
  std::vector<SoField*> m_frameFields;
  std::unique_ptr<PiStage> m_stage;
  SoCamera* m_camera = nullptr;
  SbVec3f m_center{0.0f, 0.0f, 0.0f};
  SbVec3f m_axis{0.0f, 1.0f, 0.0f};
  SbVec3f m_position{0.0f, 0.0f, 0.0f};
  SbRotation m_orientation = SbRotation::identity();
};

}  // namespace tool

#endif
