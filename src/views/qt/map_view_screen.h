// The map view: a painted pane with a marker for each Action that has a position, and the list of
// the day's Actions.
#pragma once

#include <array>

#include "views/map_picture.h"
#include "views/qt/view_canvas.h"
#include "views/qt/view_screen.h"

namespace views {

// The pane: a drag moves the map or, in the strip at its edge, zooms; so does the wheel.
class MapCanvas : public ViewCanvas {
 public:
  using ViewCanvas::ViewCanvas;

 protected:
  bool event(QEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
};

class MapViewScreen : public ViewScreen {
 public:
  MapViewScreen(core::CAppState& app, SharedControls controls);

  void SetShown(bool shown) override;
  void Place(const Rect& content) override;
  void Refill() override;
  std::u16string TapItem() const override;
  std::optional<position::Position> PressedPosition() const override;
  void MoveToSelected() override;
  void OnColumnDragged(int column, int width) override;

 private:
  void SetColumns();
  // The widths of the settings for the orientation of the window.
  std::array<int, 5>& Widths();
  void OnTapped(QPoint press);
  void OpenMarker(int item);
  std::vector<touch::Spot> Spots();
  void OnHeld(QPoint press);
  void Paint(QPainter& painter) const;
  void PaintLabel(QPainter& painter, const MapLabel& label) const;

  MapCanvas* canvas_;
  QWidget* blank_;    // white, under the pane in landscape
  int tapItem_ = -1;  // of MapItems, under the last tap or hold
};

}  // namespace views
