#include "StatusLine.h"

#include <QPainter>
#include <QTextDocument>

namespace view {

StatusLine::StatusLine(QWidget* parent) : QWidget(parent) { setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed); }

void StatusLine::setText(const QString& text) {
  m_text = text.simplified();
  updateToolTip();
  update();
}

QSize StatusLine::sizeHint() const { return {0, fontMetrics().height() + 2}; }

QString StatusLine::shown() const { return fontMetrics().elidedText(m_text, Qt::ElideMiddle, width()); }

void StatusLine::updateToolTip() { setToolTip(shown() == m_text ? QString() : Qt::convertFromPlainText(m_text)); }

void StatusLine::resizeEvent(QResizeEvent*) { updateToolTip(); }

void StatusLine::paintEvent(QPaintEvent*) {
  QPainter(this).drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shown());
}

}  // namespace view
