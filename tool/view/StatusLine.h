#ifndef ORMELLE_TOOL_VIEW_STATUSLINE_H
#define ORMELLE_TOOL_VIEW_STATUSLINE_H

#include <QWidget>

namespace view {

/// A line of text that takes the width it gets: where that is too little, the middle is left out, and the whole text
/// appears under the mouse.
class StatusLine : public QWidget {
 public:
  explicit StatusLine(QWidget* parent);

  void setText(const QString& text);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QString shown() const;
  void updateToolTip();

  QString m_text;
};

}  // namespace view

#endif
