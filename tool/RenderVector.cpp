#include <Inventor/SbViewportRegion.h>

#include <cstdio>

#include "Commands.h"
#include "Failure.h"
#include "FileKind.h"
#include "Import.h"
#include "Notes.h"
#include "SceneCheck.h"
#include "graph/toolkit/offscreen/PiStage.h"
#include "graph/toolkit/offscreen/PiWholeFile.h"
#include "out/PagePainter.h"

namespace tool {

void renderVector(const RenderOptions& options) {
  const int width = options.size.width;
  const int height = options.size.height;
  const double dpi = options.dpi > 0.0 ? options.dpi : 96.0;
  const std::unique_ptr<Canvas> canvas =
      hasEnding(options.picture, ".pdf") ? makePdfCanvas(width, height, dpi) : makeSvgCanvas(width, height, dpi);
  if (!canvas) throw Failure(options.picture + ": this ormelle was built without Cairo, which PDF files need");

  startLibrary();
  const Scene scene = readAnyScene(options.scene);
  checkScene(scene.root.get(), scene.file);
  WalkWishes wishes;
  wishes.colors = true;
  wishes.viewport.setWindowSize(static_cast<short>(width), static_cast<short>(height));
  PageScene page(width, height);
  {
    PiStage stage(scene.root.get(), wishes.viewport);
    if (!stage.hasLight()) stage.addLights();
    if (options.view || !stage.hasCamera())
      stage.addCamera(options.view ? viewpointOf(options) : stage.usualViewpoint());
    else
      stage.setDepthLimits();
    walkScene(stage.root(), scene.file, wishes, page);
  }

  if (options.background.opacity > 0.0f) {
    const double w = width;
    const double h = height;
    canvas->fill({{{0.0, 0.0}, {w, 0.0}, {w, h}, {0.0, h}}},
                 options.background.color.getPackedValue(1.0f - options.background.opacity), 0.0);
  }
  const std::vector<PageBatch> batches = page.takeBatches();
  const PaintReport report = paint(batches, width, height, *canvas);

  PiWholeFile file(options.picture);
  std::string problem;
  if (file.stream()) problem = canvas->write(file.stream());
  if (problem.empty()) problem = file.close();
  if (!problem.empty()) throw Failure(options.picture + ": " + problem);

  Notes notes;
  if (report.bitmaps > 0)
    notes.add(counted(report.bitmaps, "area with shades, a texture or very many triangles is a bitmap",
                      "areas with shades, a texture or very many triangles are bitmaps"));
  if (report.sortedTriangles > 0)
    notes.add("triangles in space are sorted by depth, so that faces which cross may be wrong");
  if (page.hasSolidText()) notes.add("solid letters are drawn by their fronts");
  if (page.hasMarkers()) notes.add("markers are drawn as squares");
  notes.tell(options.picture);
}

}  // namespace tool
