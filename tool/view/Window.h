#ifndef ORMELLE_TOOL_VIEW_WINDOW_H
#define ORMELLE_TOOL_VIEW_WINDOW_H

#include <QMainWindow>
#include <QTimer>
#include <memory>
#include <optional>
#include <string>

#include "Arguments.h"
#include "ShownScene.h"
#include "Viewer.h"

namespace view {

class StatusLine;

struct Options {
  std::string scene;
  tool::Size size{1000, 750};
  tool::Background background{SbColor(1.0f, 1.0f, 1.0f), 1.0f};
  bool isFullScreen = false;
  std::string screenshot;       ///< not empty: draw into this file and end
  std::optional<SbVec2s> pick;  ///< tell what is at this pixel, counted from the top left, and end
};

/// The viewer with a line below it that tells what happens, and the watch over the scene's files.
class Window : public QMainWindow {
 public:
  /// Throws tool::Failure if the scene can't be shown.
  explicit Window(const Options& options);
  ~Window() override;

  /// After the main loop: what went wrong in it, empty if nothing did.
  const std::string& problem() const { return m_problem; }

 private:
  void addKey(const char* keys, const std::function<void()>& action);
  void load();
  void lookForChanges();
  void tell(const std::string& text);
  void tellAt(const SbVec2s& pixel);
  void savePicture();
  void doOnce();
  void toggleFullScreen();

  Options m_options;
  StatusLine* m_status = nullptr;  // Qt's
  std::unique_ptr<Viewer> m_viewer;
  std::unique_ptr<ShownScene> m_scene;
  QTimer m_watch;
  int m_looks = 0;        // at a window that ends when it was drawn
  std::string m_seen;     // the state of the files that was dealt with
  std::string m_pending;  // a newer one, which may not be complete
  std::string m_problem;
};

}  // namespace view

#endif
