#include "Viewer.h"

#include <Inventor/events/SoKeyboardEvent.h>
#include <Inventor/events/SoMouseButtonEvent.h>
#include <Inventor/system/gl.h>

#include <QTimer>
#include <algorithm>
#include <cstdlib>
#include <utility>

#include "graph/toolkit/offscreen/PiPicture.h"

namespace view {

namespace {

constexpr int kSteady = 3;  // pixels by which a hand may move within a click

PiPicture readPixels(const SbVec2s& size) {
  PiPicture picture;
  picture.width = size[0];
  picture.height = size[1];
  const std::size_t row = 4 * static_cast<std::size_t>(size[0]);
  std::vector<uint8_t> upwards(row * static_cast<std::size_t>(size[1]));
  glPixelStorei(GL_PACK_ALIGNMENT, 1);
  glReadPixels(0, 0, size[0], size[1], GL_RGBA, GL_UNSIGNED_BYTE, upwards.data());
  picture.rgba.resize(upwards.size());
  for (std::size_t y = 0; y < static_cast<std::size_t>(size[1]); ++y)
    std::copy_n(&upwards[upwards.size() - (y + 1) * row], row, &picture.rgba[y * row]);
  for (std::size_t i = 3; i < picture.rgba.size(); i += 4) picture.rgba[i] = 255;
  return picture;
}

}  // namespace

Viewer::Viewer(QWidget* parent) : SoQtExaminerViewer(parent, "ormelle", TRUE, BUILD_ALL, BROWSER) {
  setHeadlight(FALSE);  // scenes bring their own lights, or get those of `ormelle render`
  setTransparencyType(SoGLRenderAction::SORTED_OBJECT_BLEND);
  setFeedbackVisibility(FALSE);
  setAnimationEnabled(FALSE);
}

Viewer::~Viewer() = default;

void Viewer::savePicture(const std::string& file, std::function<void(const std::string&)> done) {
  m_picture = file;
  m_done = std::move(done);
  scheduleRedraw();
}

void Viewer::noteClick(const SoEvent& event) {
  const SbVec2s pixel = event.getPosition();
  if (SO_MOUSE_PRESS_EVENT(&event, BUTTON1)) {
    m_pressed.reset();
    if (!isSeekMode()) m_pressed = pixel;
  } else if (SO_MOUSE_RELEASE_EVENT(&event, BUTTON1) && m_pressed) {
    const SbVec2s way = pixel - *m_pressed;
    m_pressed.reset();
    if (std::abs(way[0]) <= kSteady && std::abs(way[1]) <= kSteady && onClick) onClick(pixel);
  }
}

SbBool Viewer::processSoEvent(const SoEvent* event) {
  if (SO_KEY_PRESS_EVENT(event, ESCAPE) && onEscape && onEscape()) return TRUE;
  const bool isPlain = !event->wasShiftDown() && !event->wasCtrlDown() && !event->wasAltDown();
  if (isPlain || SO_MOUSE_RELEASE_EVENT(event, BUTTON1)) noteClick(*event);
  const bool isLeft = SO_MOUSE_PRESS_EVENT(event, BUTTON1) || SO_MOUSE_RELEASE_EVENT(event, BUTTON1);
  if (m_isFlat && isLeft && isViewing() && !isSeekMode()) {
    SoMouseButtonEvent moving(*static_cast<const SoMouseButtonEvent*>(event));
    moving.setButton(SoMouseButtonEvent::BUTTON3);  // with which the examiner moves the picture
    return SoQtExaminerViewer::processSoEvent(&moving);
  }
  return SoQtExaminerViewer::processSoEvent(event);
}

// The area has its size on the screen only some time after this; until then it is drawn in vain.
void Viewer::sizeChanged(const SbVec2s& size) {
  SoQtExaminerViewer::sizeChanged(size);
  for (const int milliseconds : {50, 200, 800})
    QTimer::singleShot(milliseconds, &m_later, [this] { scheduleRedraw(); });
}

void Viewer::actualRedraw() {
  SoQtExaminerViewer::actualRedraw();
  if (!m_done) return;
  const std::string problem = readPixels(getViewportRegion().getWindowSize()).writePng(m_picture);
  std::exchange(m_done, nullptr)(problem);
}

}  // namespace view
