#ifndef ORMELLE_TOOL_OUT_SCENEFILES_H
#define ORMELLE_TOOL_OUT_SCENEFILES_H

#include <optional>
#include <string>

#include "ColorNames.h"
#include "graph/toolkit/offscreen/PiStage.h"

class SoNode;

namespace tool {

/// A page for a vector picture.
struct PageFormat {
  int width = 800;
  int height = 600;
  double dpi = 96.0;  ///< pixels an inch
  Background background{SbColor(1.0f, 1.0f, 1.0f), 1.0f};
  std::optional<PiViewpoint> viewpoint;  ///< none: the scene's own camera, or one that suits the scene
};

/// Draws lines, areas and texts of a scene into an SVG file, or a PDF file if its name ends so. Returns what the
/// picture holds otherwise than a reader may expect, empty if nothing. Throws Failure, with `sceneName` or the file in
/// its sentence, and then leaves no file behind.
std::string writeVectorPicture(SoNode* scene, const std::string& sceneName, const PageFormat& format,
                               const std::string& file);

/// Whether a file name is that of a model: .gltf, .glb or .wrl.
bool isModelFile(const std::string& file);
/// Writes what a scene shows as a model, in the format that the file's name tells. Returns and throws the same.
std::string writeModel(SoNode* scene, const std::string& sceneName, const std::string& file);

}  // namespace tool

#endif
