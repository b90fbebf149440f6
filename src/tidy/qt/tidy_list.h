// The chain of a day as rows for a finger, and as one bar.
#pragma once

#include <QListWidget>
#include <vector>

#include "tidy/tidy.h"
#include "touch/qt/canvas.h"

namespace tidy {

// A tap, Enter or the menu key opens what can be done with a row; a drag scrolls.
class TidyList : public QListWidget {
  Q_OBJECT

 public:
  explicit TidyList(QWidget* parent);

  // The row with the focus keeps it, by its place.
  void ShowDay(const TidyDay& day);
  // Where a row stands on the screen.
  QRect GlobalRow(int row) const;

 signals:
  void Chosen(int row);
  // The arrows to the left and to the right.
  void DaysWanted(int days);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
};

// The day's 24 hours: filled, empty, double.
class DayBar : public touch::Canvas {
 public:
  explicit DayBar(QWidget* parent);

  void ShowDay(const TidyDay& day);

 private:
  void Paint(QPainter& painter) const;

  std::vector<Stretch> stretches_;
};

}  // namespace tidy
