// The month view: a painted grid of days and under or beside it the list of the current date
// (control 1072).
#pragma once

#include <QLabel>

#include "platform/host.h"
#include "views/month_layout.h"
#include "views/qt/view_canvas.h"
#include "views/qt/view_screen.h"

namespace views {

class MonthViewScreen : public ViewScreen {
 public:
  MonthViewScreen(core::CAppState& app, SharedControls controls);

  void SetShown(bool shown) override;
  void Place(const Rect& content) override;
  void Enter() override { Count(); }
  void Refill() override;
  void OnDateMoved() override;
  void OnChange(Change change) override;
  int SelectedRow() const override;
  std::vector<int> SelectedRows() const override { return list_->SelectedRows(); }
  void GoToPressedDay() override;
  QWidget& FocusWidget() override { return *canvas_; }

 private:
  void MakeWeekdays();
  void ConnectList();
  void Count();
  void ShowCount();
  CellKind KindOf(int cell) const {
    return KindOfCell(month_, cell, core::DayOf(platform::host().Now()));
  }
  int CellAt(QPoint point) const { return views::CellAt(layout_, point.x(), point.y()); }
  void OnTapped(QPoint press, QPoint release);
  void OpenCell(int cell);
  std::vector<touch::Spot> Spots();
  void OnHeld(QPoint press);
  void Paint(QPainter& painter) const;
  void PaintLines(QPainter& painter) const;
  void PaintField(QPainter& painter, int cell) const;
  void PaintDay(QPainter& painter, int cell, const QFont& dayFont, const QFont& countFont) const;

  ViewCanvas* canvas_;
  ActionList* list_;
  std::array<QLabel*, kMonthColumns> weekdays_;
  MonthLayout layout_;
  MonthData month_;
  int pressedCell_ = -1;
};

}  // namespace views
