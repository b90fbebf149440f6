// The surface of a view that paints itself. The map's pane follows the pointer on every such
// surface: a drag in the week or the month moves the map as well.
#pragma once

#include "touch/qt/canvas.h"
#include "views/map_pane.h"
#include "views/qt/date_popups.h"

namespace views {

class ViewCanvas : public touch::Canvas {
 public:
  // A press closes `popups`, and then is no tap.
  ViewCanvas(QWidget* parent, DatePopups& popups, MapPane& map)
      : Canvas(parent), map_(map), popups_(popups) {}

 protected:
  bool OnPress(QPoint point) override {
    map_.Press(point.x(), point.y());
    return !popups_.Close();
  }
  void OnMove(QPoint point) override {
    if (map_.Move(point.x(), point.y())) update();
  }
  void OnHold() override { map_.Hold(); }

  MapPane& map_;

 private:
  DatePopups& popups_;
};

}  // namespace views
