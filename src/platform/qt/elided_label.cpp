#include "platform/qt/elided_label.h"

#include <QPainter>
#include <QStyle>
#include <algorithm>

namespace platform::qt {

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
}

void ElidedLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRect area = rect().adjusted(std::max(0, indent()), 0, 0, 0);
  const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, area.width());
  style()->drawItemText(&painter, area, static_cast<int>(alignment()) | Qt::TextSingleLine,
                        palette(), isEnabled(), shown, foregroundRole());
}

}  // namespace platform::qt
