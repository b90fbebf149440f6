// The week view: seven painted bands with a box for each piece of an Action.
#pragma once

#include "views/qt/view_canvas.h"
#include "views/qt/view_screen.h"
#include "views/week_layout.h"

namespace views {

class WeekViewScreen : public ViewScreen {
 public:
  WeekViewScreen(core::CAppState& app, SharedControls controls);

  void SetShown(bool shown) override { canvas_->setVisible(shown); }
  void Place(const Rect& content) override { canvas_->setGeometry(platform::qt::ToQt(content)); }
  void Enter() override { Read(); }
  void Refill() override;
  void OnDateMoved() override { Read(); }
  void OnChange(Change change) override;
  void Forget() override { week_.WeekCacheDate.reset(); }
  bool IsHeldOnly() const override { return true; }
  std::u16string TapItem() const override { return tapItem_; }
  bool TakesKey(QKeyCombination key) override;
  QWidget& FocusWidget() override { return *canvas_; }

 private:
  WeekGrid Grid() const { return LayoutWeek(canvas_->width(), canvas_->height()); }
  int BoxAt(QPoint point) const;
  int BandAt(QPoint point) const { return views::BandAt(Grid(), point.y()); }
  void Read();
  void OnTapped(QPoint press, QPoint release);
  void OnHeld(QPoint press);
  void HoldBox(int box, QPoint at);
  void OpenBox(const std::u16string& id);
  void OnMenuKey();
  std::vector<touch::Spot> Spots();
  void GoToBand(int band);
  void Paint(QPainter& painter) const;
  void PaintBands(QPainter& painter, const WeekGrid& grid) const;
  void PaintBoxes(QPainter& painter, const WeekGrid& grid) const;

  ViewCanvas* canvas_;
  WeekData week_;
  core::Day first_;  // the first day on show
  std::u16string tapItem_;
  int keyBox_ = -1;  // the box among the items that the keys have reached, -1 for none
};

}  // namespace views
