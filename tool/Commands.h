#ifndef ORMELLE_TOOL_COMMANDS_H
#define ORMELLE_TOOL_COMMANDS_H

#include <Inventor/SbVec3f.h>

#include <optional>
#include <string>

#include "Arguments.h"

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
};

/// What reading a file of another program may take.
struct ImportLimits {
  double gigabytes = 0;  ///< of memory; 0: as much as the machine has
  unsigned seconds = 600;
};

struct ConvertOptions {
  std::string from;
  std::string to;
  bool isGeometry = false;
  bool isBinary = false;
  ImportLimits limits;
};

/// The commands of the tool. Each throws Failure if it can't do what it should; then no output file is left behind.
void render(const RenderOptions& options);
void info(const std::string& scene, bool asJson);
void geometry(const std::string& scene, const std::string& file, bool isBinary);
void convert(const ConvertOptions& options);

}  // namespace tool

#endif
