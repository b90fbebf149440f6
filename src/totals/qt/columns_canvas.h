// The picture of columns with its legend.
#pragma once

#include "totals/totals.h"
#include "totals/totals_layout.h"
#include "touch/qt/canvas.h"

namespace totals {

class ColumnsCanvas : public touch::Canvas {
  Q_OBJECT

 public:
  // `totals` outlives it.
  ColumnsCanvas(const CTotals& totals, QWidget* parent);

  void ShowColumns();
  // The column that a day lies in becomes the one that the keys have reached.
  void SetCurrentDay(DayNumber day);
  // That the keys have reached, or -1.
  int CurrentColumn() const { return current_; }

 signals:
  void ColumnTapped(int column);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  ColumnsGrid Grid() const;
  int ColumnAt(QPoint point) const;
  void SetCurrent(int column);
  void Paint(QPainter& painter) const;
  void PaintAxis(QPainter& painter, const ColumnsGrid& grid) const;
  void PaintColumn(QPainter& painter, const ColumnsGrid& grid, size_t column) const;
  void PaintLegend(QPainter& painter, const ColumnsGrid& grid) const;
  QString SlotName(size_t slot) const;
  std::vector<touch::Spot> MakeSpots();

  const CTotals& totals_;
  int current_ = -1;
};

}  // namespace totals
