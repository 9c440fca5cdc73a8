#ifndef ORMELLE_TOOL_COMMANDS_H
#define ORMELLE_TOOL_COMMANDS_H

#include <Inventor/SbVec3f.h>

#include <optional>
#include <string>
#include <vector>

#include "Arguments.h"
#include "graph/toolkit/offscreen/PiStage.h"

namespace tool {

struct RenderOptions {
  std::string scene;
  std::string picture;
  Size size{800, 600};
  std::optional<SbVec3f> view;  ///< direction of looking; none: the scene's own camera, or one that suits the scene
  SbVec3f up{0.0f, 1.0f, 0.0f};
  bool isOrthographic = false;
  Background background{SbColor(1.0f, 1.0f, 1.0f), 1.0f};
  int samples = 4;
  double scale = 1.0;  ///< the picture has so many times as many pixels, and all that is measured in pixels with it
  double dpi = 0.0;    ///< pixels an inch; 0 says nothing about it in a PNG file, and is 96 elsewhere
  int frames = 1;      ///< pictures to draw, one for each moment
  double turn = 0.0;   ///< degrees by which the scene turns from the first picture to after the last
  double fps = 25.0;   ///< pictures a second
};

/// What reading a file of another program may take, and what it takes of it.
struct ImportLimits {
  double gigabytes = 0;  ///< of memory; 0: as much as the machine has
  unsigned seconds = 600;
  unsigned timeStep = 1;  ///< of a file that has several; beyond them it is the last
};

struct ConvertOptions {
  std::string from;
  std::string to;
  bool isGeometry = false;
  bool isBinary = false;
  ImportLimits limits;
};

/// From where the options want to look; they must say so.
PiViewpoint viewpointOf(const RenderOptions& options);

/// The commands of the tool. Each throws Failure if it can't do what it should; then no output file is left behind.
void render(const RenderOptions& options);
/// Draws lines, areas and texts into an SVG or PDF file.
void renderVector(const RenderOptions& options);
void info(const std::string& scene, bool asJson);
void geometry(const std::string& scene, const std::string& file, bool isBinary);
void convert(const ConvertOptions& options);
/// Becomes the viewer, which reads `arguments` itself. Comes back only by a Failure.
[[noreturn]] void view(const std::vector<std::string>& arguments);
/// Writes the starting scene of a kind to `file`, or if that is empty to the standard output.
void newScene(const std::string& kind, const std::string& file, bool isForced);
/// Writes the kinds of starting scenes, one a line, and what they show.
void listKinds();

}  // namespace tool

#endif
