#include "Frames.h"

#include <Inventor/SbBox3f.h>
#include <Inventor/SoDB.h>
#include <Inventor/SoPath.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/fields/SoSFTime.h>
#include <Inventor/lists/SoPathList.h>
#include <Inventor/nodekits/SoBaseKit.h>
#include <Inventor/nodes/SoCamera.h>
#include <Inventor/sensors/SoSensorManager.h>

#include <cmath>
#include <numbers>

#include "Failure.h"
#include "graph/toolkit/offscreen/PiStage.h"

namespace tool {

namespace {

void setTime(double seconds) {
  if (SoField* time = SoDB::getGlobalField("realTime")) static_cast<SoSFTime*>(time)->setValue(SbTime(seconds));
  SoDB::getSensorManager()->processTimerQueue();
  SoDB::getSensorManager()->processDelayQueue(TRUE);
}

}  // namespace

void holdTime() {
  SoDB::enableRealTimeSensor(FALSE);
  setTime(0.0);
}

std::string numberedName(const std::string& pattern, int number) {
  const std::size_t start = pattern.find('%');
  std::size_t end = start == std::string::npos ? start : start + 1;
  std::size_t width = 0;
  const bool isPadded = end < pattern.size() && pattern[end] == '0';
  for (; end < pattern.size() && pattern[end] >= '0' && pattern[end] <= '9'; ++end)
    width = 10 * width + static_cast<std::size_t>(pattern[end] - '0');
  if (start == std::string::npos || end >= pattern.size() || pattern[end] != 'd' || width > 20 ||
      pattern.find('%', end) != std::string::npos)
    throw Failure(pattern + ": the name of several pictures needs one place for their number, such as %03d");
  std::string digits = std::to_string(number);
  if (digits.size() < width) digits.insert(0, width - digits.size(), isPadded ? '0' : ' ');
  return pattern.substr(0, start) + digits + pattern.substr(end + 1);
}

Frames::Frames(SoNode* scene, const RenderOptions& options) : m_scene(scene), m_options(options) {
  if (options.frames > 1) {
    numberedName(options.picture.find(".apng") == std::string::npos ? options.picture : "%d", 0);
    SoSearchAction search;
    search.setType(SoNode::getClassTypeId());
    search.setInterest(SoSearchAction::ALL);
    search.setSearchingAll(TRUE);
    const SbBool before = SoBaseKit::isSearchingChildren();
    SoBaseKit::setSearchingChildren(TRUE);
    search.apply(scene);
    SoBaseKit::setSearchingChildren(before);
    for (int i = 0; i < search.getPaths().getLength(); ++i)
      if (SoField* field = search.getPaths()[i]->getTail()->getField("viewFrame")) m_frameFields.push_back(field);
  }
  if (options.turn != 0.0) prepareTurn();
}

Frames::~Frames() = default;

SoNode* Frames::root() const { return m_stage ? m_stage->root() : m_scene; }

// The scene's own camera goes round its middle, or one that sees all of it from each side.
void Frames::prepareTurn() {
  const SbViewportRegion viewport(static_cast<short>(m_options.size.width), static_cast<short>(m_options.size.height));
  SoGetBoundingBoxAction measure(viewport);
  measure.apply(m_scene);
  const SbBox3f box = measure.getBoundingBox();
  if (!box.isEmpty()) m_center = box.getCenter();

  auto stage = std::make_unique<PiStage>(m_scene, viewport);
  if (m_options.view || !stage->hasCamera()) {
    PiViewpoint viewpoint = m_options.view ? viewpointOf(m_options) : stage->usualViewpoint();
    viewpoint.up = m_options.up;
    stage->addCamera(viewpoint);
    m_camera = stage->camera();
    m_camera->viewAll(m_scene, viewport);
    m_stage = std::move(stage);
  } else {
    m_camera = stage->firstCamera();
  }
  if (!m_camera) return;
  m_axis = m_options.up;
  m_axis.normalize();
  m_position = m_camera->position.getValue();
  m_orientation = m_camera->orientation.getValue();
}

void Frames::show(int frame) {
  if (m_options.frames > 1) {
    setTime(frame / m_options.fps);
    for (SoField* field : m_frameFields) field->set(std::to_string(frame).c_str());
  }
  if (!m_camera) return;
  const double degrees = m_options.turn * frame / m_options.frames;
  // As the scene turns to the left of the viewer's picture, the camera goes round to the right.
  const SbRotation turn(m_axis, static_cast<float>(-std::fmod(degrees, 360.0) * std::numbers::pi / 180.0));
  SbVec3f arm;
  turn.multVec(m_position - m_center, arm);
  m_camera->position = m_center + arm;
  m_camera->orientation = m_orientation * turn;
}

}  // namespace tool
