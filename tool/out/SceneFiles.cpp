#include "out/SceneFiles.h"

#include <Inventor/SbViewportRegion.h>

#include <memory>

#include "Failure.h"
#include "FileKind.h"
#include "Notes.h"
#include "SceneCheck.h"
#include "SceneWalk.h"
#include "graph/toolkit/offscreen/PiWholeFile.h"
#include "out/ModelWriter.h"
#include "out/PagePainter.h"

namespace tool {

std::string writeVectorPicture(SoNode* scene, const std::string& sceneName, const PageFormat& format,
                               const std::string& file) {
  const int width = format.width;
  const int height = format.height;
  const std::unique_ptr<Canvas> canvas =
      hasEnding(file, ".pdf") ? makePdfCanvas(width, height, format.dpi) : makeSvgCanvas(width, height, format.dpi);
  if (!canvas) throw Failure(file + ": this Ormelle was built without Cairo, which PDF files need");

  checkScene(scene, sceneName);
  WalkWishes wishes;
  wishes.colors = true;
  wishes.viewport.setWindowSize(static_cast<short>(width), static_cast<short>(height));
  PageScene page(width, height);
  {
    PiStage stage(scene, wishes.viewport);
    if (!stage.hasLight()) stage.addLights();
    if (format.viewpoint || !stage.hasCamera())
      stage.addCamera(format.viewpoint ? *format.viewpoint : stage.usualViewpoint());
    else
      stage.setDepthLimits();
    walkScene(stage.root(), sceneName, wishes, page);
  }

  const Background& background = format.background;
  if (background.opacity > 0.0f) {
    const double w = width;
    const double h = height;
    canvas->fill({{{0.0, 0.0}, {w, 0.0}, {w, h}, {0.0, h}}}, background.color.getPackedValue(1.0f - background.opacity),
                 0.0);
  }
  const std::vector<PageBatch> batches = page.takeBatches();
  const PaintReport report = paint(batches, width, height, *canvas);

  PiWholeFile whole(file);
  std::string problem;
  if (whole.stream()) problem = canvas->write(whole.stream());
  if (problem.empty()) problem = whole.close();
  if (!problem.empty()) throw Failure(file + ": " + problem);

  Notes notes;
  if (report.bitmaps > 0)
    notes.add(counted(report.bitmaps, "area with shades, a texture or very many triangles is a bitmap",
                      "areas with shades, a texture or very many triangles are bitmaps"));
  if (report.sortedTriangles > 0)
    notes.add("triangles in space are sorted by depth, so that faces which cross may be wrong");
  if (page.hasSolidText()) notes.add("solid letters are drawn by their fronts");
  if (page.hasMarkers()) notes.add("markers are drawn as squares");
  return notes.all();
}

bool isModelFile(const std::string& file) {
  return hasEnding(file, ".gltf") || hasEnding(file, ".glb") || hasEnding(file, ".wrl");
}

std::string writeModel(SoNode* scene, const std::string& sceneName, const std::string& file) {
  const bool isVrml = hasEnding(file, ".wrl");
  SceneModel model(isVrml);
  WalkWishes wishes;
  wishes.colors = true;
  wishes.lettersAsTriangles = !isVrml;
  walkScene(scene, sceneName, wishes, model);

  PiWholeFile whole(file);
  std::string problem;
  if (whole.stream())
    problem = isVrml ? writeVrml(model, whole.stream()) : writeGltf(model, hasEnding(file, ".glb"), whole.stream());
  if (problem.empty()) problem = whole.close();
  if (!problem.empty()) throw Failure(file + ": " + problem);
  return model.notes();
}

}  // namespace tool
