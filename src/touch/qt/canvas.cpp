#include "touch/qt/canvas.h"

#include <QContextMenuEvent>
#include <QMouseEvent>

#include "platform/qt/focus_frame.h"

namespace touch {

Canvas::Canvas(QWidget* parent)
    : QWidget(parent), hold_(new platform::qt::TapAndHold(this, [this](QPoint point) {
        pressed_ = false;
        OnHold();
        emit Held(point);
      })) {
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_OpaquePaintEvent);
  hide();
}

void Canvas::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), Qt::white);
  paint_(painter);
  if (hasFocus()) platform::qt::PaintFocusFrame(painter, *this);
}

void Canvas::mousePressEvent(QMouseEvent* event) {
  press_ = event->pos();
  pressed_ = OnPress(press_) && event->button() == Qt::LeftButton;
}

void Canvas::mouseMoveEvent(QMouseEvent* event) {
  OnMove(event->pos());
}

void Canvas::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !pressed_) return;
  pressed_ = false;
  emit Tapped(press_, event->pos());
}

void Canvas::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() == QContextMenuEvent::Keyboard) emit MenuKeyPressed();
}

}  // namespace touch
