#ifndef ORMELLE_TOOL_VIEW_SHOWNSCENE_H
#define ORMELLE_TOOL_VIEW_SHOWNSCENE_H

#include <Inventor/SbViewportRegion.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Origin.h"
#include "SceneFile.h"
#include "graph/toolkit/offscreen/PiStage.h"

class SoCamera;

namespace view {

/// A scene read from its file, with the camera and the lights that it lacks, and a watch over the files it came from.
class ShownScene {
 public:
  /// Throws tool::Failure, as tool::readAnyScene and tool::checkScene, and if there is nothing to draw.
  ShownScene(const std::string& file, const SbViewportRegion& viewport);

  /// What to show: lights, a camera and the scene.
  SoNode* root() const { return m_stage->root(); }
  /// Whether it has no depth, as maps and charts.
  bool isFlat() const { return m_isFlat; }
  const std::optional<tool::Origin>& origin() const { return m_origin; }

  /// Looks from where `current`, the camera that the user moved through `before`, stands, unless the camera that the
  /// file itself has was changed in it.
  void keepCamera(const ShownScene& before, const SoCamera* current);
  /// The file and all that it names, as they were when they were read.
  const std::vector<std::string>& files() const { return m_files; }

 private:
  tool::Scene m_scene;
  std::unique_ptr<PiStage> m_stage;
  SoCamera* m_camera = nullptr;
  std::string m_cameraInFile;
  std::optional<tool::Origin> m_origin;
  std::vector<std::string> m_files;
  bool m_isFlat = false;
};

/// What tells two states of some files from each other: names, sizes and times.
std::string stateOf(const std::vector<std::string>& files);

}  // namespace view

#endif
