#include "Window.h"

#include <Inventor/Qt/SoQt.h>
#include <Inventor/SoDB.h>
#include <Inventor/fields/SoSFTime.h>
#include <Inventor/lists/SoFieldList.h>
#include <QMessageBox>
#include <QShortcut>
#include <QStatusBar>
#include <QVBoxLayout>
#include <QWindow>
#include <cstdio>
#include <filesystem>
#include <utility>

#include "Failure.h"
#include "Keys.h"
#include "Probe.h"
#include "StatusLine.h"

namespace view {

namespace {

constexpr int kWatchEvery = 250;  // ms

constexpr int kLookEvery = 50;  // ms, at a window that ends when it was drawn
constexpr int kLooksWhenShown = 10;
constexpr int kMostLooks = 60;

QString keysAsTable() {
  QString text = "<table cellpadding='3'>";
  for (const Key& key : kKeys) text += QString("<tr><td><b>%1</b></td><td>%2</td></tr>").arg(key.keys).arg(key.meaning);
  return text + "</table>";
}

// The toolkit's clock wakes the program sixty times a second, for nothing where no engine of the scene hears it.
void runClockIfHeard() {
  SoFieldList hearers;
  if (const SoField* clock = SoDB::getGlobalField("realTime")) clock->getForwardConnections(hearers);
  SoDB::enableRealTimeSensor(hearers.getLength() > 0 ? TRUE : FALSE);
}

// The first of NAME-1.png, NAME-2.png ... that isn't there.
std::string freeName(const std::string& scene) {
  const std::string stem = std::filesystem::path(scene).stem().string();
  for (int number = 1;; ++number) {
    std::string name = stem + "-" + std::to_string(number) + ".png";
    if (!std::filesystem::exists(name)) return name;
  }
}

}  // namespace

Window::Window(const Options& options) : m_options(options) {
  setWindowTitle(QString::fromStdString(std::filesystem::path(options.scene).filename().string() + " - Ormelle"));
  auto* host = new QWidget(this);
  auto* layout = new QVBoxLayout(host);
  layout->setContentsMargins(0, 0, 0, 0);
  m_viewer = std::make_unique<Viewer>(host);
  layout->addWidget(m_viewer->getWidget());
  setCentralWidget(host);
  m_status = new StatusLine(this);
  statusBar()->addWidget(m_status, 1);
  m_viewer->setBackgroundColor(options.background.color);
  m_viewer->onClick = [this](const SbVec2s& pixel) { tellAt(pixel); };
  m_viewer->onEscape = [this] {
    const bool isFull = isFullScreen();
    if (isFull) toggleFullScreen();
    return isFull;
  };
  const bool isOnce = !options.screenshot.empty() || options.pick;
  if (isOnce) {
    m_viewer->setDecoration(FALSE);
    host->setFixedSize(options.size.width, options.size.height);
  } else {
    m_viewer->setSampleBuffers(4);
    resize(options.size.width, options.size.height);
  }

  m_scene = std::make_unique<ShownScene>(
      options.scene, SbViewportRegion(static_cast<short>(options.size.width), static_cast<short>(options.size.height)));
  m_seen = m_pending = stateOf(m_scene->files());
  m_viewer->setFlat(m_scene->isFlat());
  m_viewer->setSceneGraph(m_scene->root());
  m_viewer->saveHomePosition();
  tell("F1 tells the keys; a click tells what is there");

  addKey("F1", [this] { QMessageBox::information(this, "Ormelle", keysAsTable()); });
  addKey("A", [this] { m_viewer->viewAll(); });
  addKey("Home", [this] { m_viewer->resetToHomePosition(); });
  addKey("O", [this] { m_viewer->toggleCameraType(); });
  addKey("R", [this] { load(); });
  addKey("P", [this] { savePicture(); });
  for (const char* keys : {"F", "F11"}) addKey(keys, [this] { toggleFullScreen(); });
  addKey("Q", [] { SoQt::exitMainLoop(); });
  if (isOnce) {
    connect(&m_watch, &QTimer::timeout, this, [this] { doOnce(); });
    m_watch.start(kLookEvery);
  } else {
    connect(&m_watch, &QTimer::timeout, this, [this] { lookForChanges(); });
    m_watch.start(kWatchEvery);
  }
  if (options.isFullScreen) toggleFullScreen();
}

Window::~Window() {
  m_watch.stop();
  m_viewer->setSceneGraph(nullptr);
}

void Window::addKey(const char* keys, const std::function<void()>& action) {
  connect(new QShortcut(QKeySequence(keys), this), &QShortcut::activated, this, action);
}

void Window::tell(const std::string& text) { m_status->setText(QString::fromStdString(text)); }

void Window::tellAt(const SbVec2s& pixel) {
  std::string text =
      tellPicked(m_viewer->getSceneManager()->getSceneGraph(), m_viewer->getViewportRegion(), pixel, m_scene->origin());
  const bool isNothing = text.empty();
  if (isNothing) text = "Nothing is there";
  tell(text);
  if (isNothing && !m_options.pick) return;
  std::printf("%s\n", text.c_str());
  std::fflush(stdout);
}

void Window::load() {
  m_seen = m_pending = stateOf(m_scene->files());
  try {
    auto scene = std::make_unique<ShownScene>(m_options.scene, m_viewer->getViewportRegion());
    scene->keepCamera(*m_scene, m_viewer->getCamera());
    m_viewer->setFlat(scene->isFlat());
    m_viewer->setSceneGraph(scene->root());
    m_scene = std::move(scene);
    m_seen = m_pending = stateOf(m_scene->files());
    tell("Read again");
    std::printf("%s: read again\n", m_options.scene.c_str());
    std::fflush(stdout);
  } catch (const std::exception& failure) {
    tell(failure.what());
    std::fprintf(stderr, "ormelle: %s.\n", failure.what());
  }
}

void Window::lookForChanges() {
  runClockIfHeard();
  // A file is read once it hasn't changed between two looks: whoever writes it is through then.
  const std::string now = stateOf(m_scene->files());
  const bool isSteady = now == m_pending;
  m_pending = now;
  if (now != m_seen && isSteady) load();
}

void Window::savePicture() {
  const std::string file = freeName(m_options.scene);
  m_viewer->savePicture(file, [this, file](const std::string& problem) {
    tell(problem.empty() ? "Saved " + file : file + ": " + problem);
    if (problem.empty()) std::printf("%s: saved\n", file.c_str());
    std::fflush(stdout);
  });
}

void Window::toggleFullScreen() {
  const bool isFull = !isFullScreen();
  m_viewer->setDecoration(isFull ? FALSE : TRUE);
  statusBar()->setVisible(!isFull);
  isFull ? showFullScreen() : showNormal();
}

// The area has its size on the screen only some time after the window was shown; until then it is drawn in vain.
void Window::doOnce() {
  const bool isShown = windowHandle() && windowHandle()->isExposed();
  if (++m_looks < (isShown ? kLooksWhenShown : kMostLooks)) {
    m_viewer->render();
    return;
  }
  const auto finish = [this](const std::string& problem) {
    if (!problem.empty()) m_problem = m_options.screenshot + ": " + problem;
    m_watch.stop();
    if (m_options.pick) {
      const SbVec2s& pixel = *m_options.pick;
      tellAt(SbVec2s(pixel[0], static_cast<short>(m_options.size.height - 1 - pixel[1])));
    }
    SoQt::exitMainLoop();
  };
  if (!m_options.screenshot.empty())
    m_viewer->savePicture(m_options.screenshot, finish);
  else
    finish("");
  m_viewer->render();
}

}  // namespace view
