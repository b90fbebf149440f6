// Press, release and hold on a painted view.
#include "views/canvas_screen.h"

#include <QMouseEvent>

#include "platform/qt/device_shell.h"

namespace views {

Canvas::Canvas(QWidget* parent, DatePopups& popups) : QWidget(parent), popups_(popups) {
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_OpaquePaintEvent);
  hide();
  new platform::qt::TapAndHold(this, [this](QPoint point) {
    pressed_ = false;
    emit Held(point);
  });
}

void Canvas::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), Qt::white);
  paint_(painter);
}

void Canvas::mousePressEvent(QMouseEvent* event) {
  press_ = event->pos();
  pressed_ = !popups_.Close() && event->button() == Qt::LeftButton;
}

void Canvas::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !pressed_) return;
  pressed_ = false;
  emit Tapped(press_, event->pos());
}

}  // namespace views
