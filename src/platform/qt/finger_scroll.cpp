#include "platform/qt/finger_scroll.h"

#include <QApplication>
#include <QMouseEvent>
#include <QScrollBar>
#include <cstdlib>
#include <utility>

namespace platform::qt {

FingerScroll::FingerScroll(QAbstractScrollArea* area, Handler onPress, Handler onTap)
    : QObject(area), area_(area), onPress_(std::move(onPress)), onTap_(std::move(onTap)) {
  area->viewport()->installEventFilter(this);
}

bool FingerScroll::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      Press(static_cast<QMouseEvent*>(event)->pos());
      mayTap_ = event->type() == QEvent::MouseButtonPress;
      return true;
    case QEvent::MouseMove:
      Move(static_cast<QMouseEvent*>(event)->pos());
      return true;
    case QEvent::MouseButtonRelease:
      if (static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        Release(static_cast<QMouseEvent*>(event)->pos());
      }
      return true;
    case QEvent::TouchCancel:
      pressed_ = false;
      return false;
    default:
      return QObject::eventFilter(watched, event);
  }
}

void FingerScroll::Press(QPoint point) {
  press_ = point;
  scrollAtPress_ = area_->verticalScrollBar()->value();
  pressed_ = true;
  dragging_ = false;
  if (onPress_) onPress_(point);
}

void FingerScroll::Move(QPoint point) {
  const int way = point.y() - press_.y();
  if (!pressed_ || (!dragging_ && std::abs(way) < QApplication::startDragDistance())) return;
  dragging_ = true;
  area_->verticalScrollBar()->setValue(scrollAtPress_ - way);
}

void FingerScroll::Release(QPoint point) {
  const bool taps = std::exchange(pressed_, false) && mayTap_ && !dragging_;
  if (taps && onTap_) onTap_(point);
}

}  // namespace platform::qt
