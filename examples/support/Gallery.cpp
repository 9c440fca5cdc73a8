#include "Gallery.h"

#include <Inventor/SoDB.h>
#include <Inventor/nodes/SoAnnotation.h>
#include <Inventor/nodes/SoBaseColor.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoDepthBuffer.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoOrthographicCamera.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoText3.h>
#include <Inventor/nodes/SoTranslation.h>

#include <Ormelle/PoOrmelle.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "graph/toolkit/offscreen/PiFonts.h"
#include "graph/toolkit/offscreen/PiOffscreen.h"
#include "graph/toolkit/offscreen/PiStage.h"
#include "graph/toolkit/offscreen/PiWholeFile.h"

namespace gallery {

namespace {

using Clock = std::chrono::steady_clock;

Clock::time_point g_start = Clock::now();

double secondsSince(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

std::filesystem::path outputFolder() {
  const char* folder = std::getenv("ORMELLE_GALLERY_DIR");
  std::filesystem::path path = folder && *folder ? folder : ORMELLE_BUILD_GALLERY_DIR;
  std::filesystem::create_directories(path);
  return path;
}

// A camera under which a unit is a pixel and the origin is the lower left corner.
SoCamera* pixelCamera(const Picture& picture) {
  auto* camera = new SoOrthographicCamera;
  const auto width = static_cast<float>(picture.width);
  const auto height = static_cast<float>(picture.height);
  camera->viewportMapping = SoCamera::LEAVE_ALONE;
  camera->aspectRatio = width / height;
  camera->height = height;
  camera->position.setValue(0.5f * width, 0.5f * height, 1.0f);
  camera->nearDistance = 0.1f;
  camera->farDistance = 2.0f;
  return camera;
}

SoNode* makeBackdrop(const Picture& picture) {
  auto* backdrop = new SoSeparator;
  auto* depth = new SoDepthBuffer;
  depth->test = FALSE;
  depth->write = FALSE;
  backdrop->addChild(depth);
  backdrop->addChild(pixelCamera(picture));
  auto* model = new SoLightModel;
  model->model = SoLightModel::BASE_COLOR;
  backdrop->addChild(model);
  auto* colors = new SoBaseColor;
  const SbColor corners[4] = {picture.lowerColor, picture.lowerColor, picture.upperColor, picture.upperColor};
  colors->rgb.setValues(0, 4, corners);
  backdrop->addChild(colors);
  auto* binding = new SoMaterialBinding;
  binding->value = SoMaterialBinding::PER_VERTEX;
  backdrop->addChild(binding);
  auto* points = new SoCoordinate3;
  const auto width = static_cast<float>(picture.width);
  const auto height = static_cast<float>(picture.height);
  const SbVec3f frame[4] = {{0.0f, 0.0f, 0.0f}, {width, 0.0f, 0.0f}, {width, height, 0.0f}, {0.0f, height, 0.0f}};
  points->point.setValues(0, 4, frame);
  backdrop->addChild(points);
  backdrop->addChild(new SoFaceSet);
  return backdrop;
}

constexpr float kTitleSize = 0.030f;  // of the height, as is what it stands in
constexpr float kTitleRoom = 0.055f;

SoNode* makeTitle(const Picture& picture) {
  auto* top = new SoAnnotation;
  top->addChild(pixelCamera(picture));
  auto* model = new SoLightModel;
  model->model = SoLightModel::BASE_COLOR;
  top->addChild(model);
  auto* color = new SoBaseColor;
  color->rgb.setValue(0.13f, 0.15f, 0.18f);
  top->addChild(color);
  auto* font = new SoFont;
  font->name = "DejaVu Sans:Bold";
  font->size = kTitleSize * static_cast<float>(picture.height);
  top->addChild(font);
  auto* place = new SoTranslation;
  const auto height = static_cast<float>(picture.height);
  place->translation.setValue(0.04f * height, height * (1.0f - kTitleRoom - 0.01f), 0.0f);
  top->addChild(place);
  auto* text = new SoText3;
  text->string = picture.title.c_str();
  top->addChild(text);
  return top;
}

void writeSidecar(const std::string& file, const Picture& picture, const std::string& program, double buildSeconds) {
  nlohmann::ordered_json json;
  json["program"] = std::filesystem::path(program).filename().string();
  json["title"] = picture.title;
  json["caption"] = picture.caption;
  json["source"] = picture.source;
  json["licence"] = picture.licence;
  json["build_seconds"] = buildSeconds;
  json["seconds"] = secondsSince(g_start);
  const std::string text = json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
  PiWholeFile out(file);
  if (out.stream()) std::fputs(text.c_str(), out.stream());
  const std::string problem = out.close();
  if (!problem.empty()) throw std::runtime_error(file + ": " + problem);
}

}  // namespace

int run(const std::function<void()>& draw) {
  g_start = Clock::now();
  try {
    useInstalledFonts();
    PoOrmelle::init();
    draw();
    return 0;
  } catch (const std::exception& problem) {
    std::fprintf(stderr, "%s.\n", problem.what());
    return 1;
  }
}

void render(SoNode* scene, const std::string& name, const Picture& picture, const char* program) {
  const bool hasTitle = picture.isTitleShown && !picture.title.empty();
  auto* root = new SoSeparator;
  root->ref();
  std::string problem;
  double buildSeconds = 0.0;
  {
    const auto start = Clock::now();
    PiStage stage(scene, SbViewportRegion(static_cast<short>(picture.width), static_cast<short>(picture.height)));
    buildSeconds = secondsSince(start);
    if (!stage.hasLight()) stage.addLights();
    if (!stage.hasCamera()) {
      PiViewpoint viewpoint = stage.usualViewpoint();
      if (picture.view) viewpoint.direction = *picture.view;
      viewpoint.up = picture.up;
      viewpoint.isOrthographic = picture.isOrthographic;
      viewpoint.headroom = hasTitle ? kTitleRoom : 0.0f;
      stage.addCamera(viewpoint);
    } else {
      stage.setDepthLimits();
    }
    if (picture.upperColor != picture.lowerColor) root->addChild(makeBackdrop(picture));
    root->addChild(stage.root());
    if (hasTitle) root->addChild(makeTitle(picture));

    PiOffscreen offscreen(picture.width, picture.height);
    offscreen.setBackground(picture.upperColor);
    offscreen.setSamples(picture.samples);
    const std::filesystem::path folder = outputFolder();
    problem =
        offscreen.draw(root) ? offscreen.picture().writePng((folder / (name + ".png")).string()) : offscreen.error();
    if (problem.empty()) writeSidecar((folder / (name + ".json")).string(), picture, program, buildSeconds);
    root->removeAllChildren();
  }
  root->unref();
  if (!problem.empty()) throw std::runtime_error(name + ": " + problem);
  g_start = Clock::now();
}

}  // namespace gallery
