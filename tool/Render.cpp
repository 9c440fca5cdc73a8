#include "Commands.h"
#include "Failure.h"
#include "SceneCheck.h"
#include "SceneFile.h"
#include "graph/toolkit/offscreen/PiOffscreen.h"

namespace tool {

void render(const RenderOptions& options) {
  startLibrary();
  PiOffscreen offscreen(options.size.width, options.size.height);
  if (!offscreen.error().empty()) throw Failure(offscreen.error());

  const Scene scene = readScene(options.scene);
  checkScene(scene.root.get(), scene.file);
  if (options.view) {
    PiViewpoint viewpoint;
    viewpoint.direction = *options.view;
    viewpoint.up = options.up;
    viewpoint.isOrthographic = options.isOrthographic;
    offscreen.setViewpoint(viewpoint);
  }
  offscreen.setBackground(options.background.color, options.background.opacity);
  offscreen.setSamples(options.samples);
  if (!offscreen.draw(scene.root.get())) throw Failure(scene.file + ": " + offscreen.error());
  const std::string problem = offscreen.picture().writePng(options.picture);
  if (!problem.empty()) throw Failure(options.picture + ": " + problem);
}

}  // namespace tool
