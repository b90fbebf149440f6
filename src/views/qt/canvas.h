// The surface of a view that paints itself and takes taps. The map's pane follows the pointer on
// every such surface: what is dragged in the week or the month has moved the map.
#pragma once

#include <QPainter>
#include <QWidget>
#include <functional>

#include "platform/qt/device_shell.h"
#include "views/map_pane.h"
#include "views/qt/date_popups.h"

namespace views {

class Canvas : public QWidget {
  Q_OBJECT

 public:
  // A press closes `popups`, and then is no tap.
  Canvas(QWidget* parent, DatePopups& popups, MapPane& map);

  void SetPaint(std::function<void(QPainter&)> paint) { paint_ = std::move(paint); }

 signals:
  // Pressed and released; the view tells whether both points mean the same thing.
  void Tapped(QPoint press, QPoint release);
  void Held(QPoint press);
  // The menu key, which Shift+F10 is, too.
  void MenuKeyPressed();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
  void contextMenuEvent(QContextMenuEvent* event) override;

  MapPane& map_;
  platform::qt::TapAndHold* hold_;

 private:
  DatePopups& popups_;
  std::function<void(QPainter&)> paint_;
  QPoint press_;
  bool pressed_ = false;
};

}  // namespace views
