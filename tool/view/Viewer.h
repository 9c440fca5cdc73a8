#ifndef ORMELLE_TOOL_VIEW_VIEWER_H
#define ORMELLE_TOOL_VIEW_VIEWER_H

#include <Inventor/Qt/viewers/SoQtExaminerViewer.h>
#include <Inventor/SbVec2s.h>

#include <QObject>
#include <functional>
#include <optional>
#include <string>

namespace view {

/// The toolkit's examiner, in which a click that is no drag asks what is there, and in which flat scenes are moved
/// instead of turned.
class Viewer : public SoQtExaminerViewer {
 public:
  explicit Viewer(QWidget* parent);
  ~Viewer() override;

  /// Called with the pixel, counted from the bottom left, of each click.
  std::function<void(const SbVec2s&)> onClick;
  /// Called for the Escape key; whether it was meant for the caller and not for the viewer.
  std::function<bool()> onEscape;

  void setFlat(bool isFlat) { m_isFlat = isFlat; }
  /// Writes what is drawn next to `file`, a PNG picture, and then calls `done` with what went wrong, empty if nothing
  /// did.
  void savePicture(const std::string& file, std::function<void(const std::string&)> done);

 protected:
  SbBool processSoEvent(const SoEvent* event) override;
  void actualRedraw() override;
  void sizeChanged(const SbVec2s& size) override;

 private:
  void noteClick(const SoEvent& event);

  QObject m_later;  // what is put off ends with the viewer
  bool m_isFlat = false;
  std::optional<SbVec2s> m_pressed;
  std::string m_picture;
  std::function<void(const std::string&)> m_done;
};

}  // namespace view

#endif
