// The bars: as high as all of them, in a scroll area that shows a part.
#pragma once

#include <QScrollArea>

#include "totals/totals.h"
#include "totals/totals_layout.h"
#include "touch/qt/canvas.h"

namespace totals {

// Tab passes it by without a move of what is in sight.
class BarsArea : public QScrollArea {
 public:
  using QScrollArea::QScrollArea;

 protected:
  bool focusNextPrevChild(bool forward) override {
    return QWidget::focusNextPrevChild(forward);  // NOLINT(bugprone-parent-virtual-call)
  }
};

class BarsCanvas : public touch::Canvas {
  Q_OBJECT

 public:
  // `totals` outlives it.
  BarsCanvas(const CTotals& totals, QScrollArea* area);

  // After a change of the bars. Where they are of something else the keys begin at the first.
  void ShowBars(bool areOthers);
  // That the keys have reached, or -1 where there is none.
  int CurrentBar() const { return current_; }
  // Brings it into sight.
  void SetCurrentBar(int bar);

 signals:
  void BarTapped(int bar);
  // Left and right, in steps of the period.
  void StepWanted(int steps);

 protected:
  bool OnPress(QPoint point) override;
  void OnMove(QPoint point) override;
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  int BarAt(QPoint point) const;
  QRect InSight() const;
  FigureWidths WidthsInSight() const;
  BarFigures FiguresAt(int bar) const;
  void PaintFrame(QPainter& painter) const;
  void PaintBar(QPainter& painter, int bar, const FigureWidths& widths) const;
  std::vector<touch::Spot> MakeSpots();
  QRect RowOf(int bar) const;

  const CTotals& totals_;
  QScrollArea* area_;
  Seconds longest_ = 0;  // of the groups
  int current_ = 0;
  int pressY_ = 0;  // on the screen, so that scrolling doesn't move it
  int scrollAtPress_ = 0;
  bool isDragged_ = false;
};

}  // namespace totals
