#include <Inventor/SoDB.h>

#include "Commands.h"
#include "Failure.h"
#include "FileKind.h"
#include "Frames.h"
#include "IdleKits.h"
#include "Import.h"
#include "SceneCheck.h"
#include "graph/toolkit/offscreen/PiAnimatedPng.h"
#include "graph/toolkit/offscreen/PiOffscreen.h"
#include "graph/toolkit/offscreen/PiWholeFile.h"

#include <cmath>
#include <optional>

namespace tool {

PiViewpoint viewpointOf(const RenderOptions& options) {
  PiViewpoint viewpoint;
  viewpoint.direction = *options.view;
  viewpoint.up = options.up;
  viewpoint.isOrthographic = options.isOrthographic;
  return viewpoint;
}

void render(const RenderOptions& options) {
  if (hasEnding(options.picture, ".svg") || hasEnding(options.picture, ".pdf")) return renderVector(options);
  const bool isAnimated = hasEnding(options.picture, ".apng");
  startLibrary();
  const double width = std::round(options.size.width * options.scale);
  const double height = std::round(options.size.height * options.scale);
  if (std::max(width, height) > 32767.0 || std::min(width, height) < 1.0)
    throw Failure("the size times the scale is out of range: both numbers go from 1 to 32767");
  PiOffscreen offscreen(static_cast<int>(width), static_cast<int>(height));
  if (!offscreen.error().empty()) throw Failure(offscreen.error());

  holdTime();
  const Scene scene = readAnyScene(options.scene);
  checkScene(scene.root.get(), scene.file);
  offscreen.setBackground(options.background.color, options.background.opacity);
  offscreen.setSamples(options.samples);
  offscreen.setSizeFactor(static_cast<float>(options.scale));

  Frames frames(scene.root.get(), options);
  if (!frames.hasOwnCamera() && options.view) offscreen.setViewpoint(viewpointOf(options));
  PiAnimatedPng animation(options.fps, options.dpi, options.background.opacity < 1.0f);
  for (int frame = 0; frame < options.frames; ++frame) {
    frames.show(frame);
    if (!offscreen.draw(frames.root())) throw Failure(scene.file + ": " + offscreen.error());
    if (frame == 0) tellIdleKits(scene.root.get(), scene.file);
    const std::string file = options.frames > 1 && !isAnimated ? numberedName(options.picture, frame) : options.picture;
    const std::string problem =
        isAnimated ? animation.add(offscreen.picture()) : offscreen.picture().writePng(file, options.dpi);
    if (!problem.empty()) throw Failure(file + ": " + problem);
  }
  if (!isAnimated) return;
  PiWholeFile file(options.picture);
  if (file.stream()) animation.write(file.stream());
  const std::string problem = file.close();
  if (!problem.empty()) throw Failure(options.picture + ": " + problem);
}

}  // namespace tool
