// Press, release and hold on a painted view.
#include "views/qt/canvas.h"

#include <QContextMenuEvent>
#include <QMouseEvent>

namespace views {

Canvas::Canvas(QWidget* parent, DatePopups& popups, MapPane& map)
    : QWidget(parent),
      map_(map),
      hold_(new platform::qt::TapAndHold(this,
                                         [this](QPoint point) {
                                           pressed_ = false;
                                           map_.Hold();
                                           emit Held(point);
                                         })),
      popups_(popups) {
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_OpaquePaintEvent);
  hide();
}

void Canvas::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), Qt::white);
  paint_(painter);
}

void Canvas::mousePressEvent(QMouseEvent* event) {
  press_ = event->pos();
  map_.Press(press_.x(), press_.y());
  pressed_ = !popups_.Close() && event->button() == Qt::LeftButton;
}

void Canvas::mouseMoveEvent(QMouseEvent* event) {
  if (map_.Move(event->pos().x(), event->pos().y())) update();
}

void Canvas::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !pressed_) return;
  pressed_ = false;
  emit Tapped(press_, event->pos());
}

void Canvas::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() == QContextMenuEvent::Keyboard) emit MenuKeyPressed();
}

}  // namespace views
