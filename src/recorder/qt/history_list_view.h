// The recorder's list of the chain: a tap chooses a line, a drag scrolls, tap and hold opens a
// menu. By keyboard several lines can be selected.
#pragma once

#include <QListWidget>

#include "recorder/recording.h"

namespace recorder {

class HistoryListView : public QListWidget {
  Q_OBJECT

 public:
  explicit HistoryListView(QWidget* parent);

  // Shows the lines, their selection and the caret.
  void ShowLines(const HistoryLines& lines);
  std::set<size_t> SelectedLines() const;

 signals:
  // The pen went down, which selects the line under it alone, and up again on the same place.
  void Tapped();
  // It went up somewhere else.
  void Dragged();
  void Held(QPoint globalPoint, QRect globalLine);
  // Keys that were pressed over the list, too.
  void ReturnLetGo();
  void DeleteLetGo();

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void TellHold(QPoint point);

  bool tapPending_ = false;
  bool dragging_ = false;
  QPoint press_;
  int scrollAtPress_ = 0;
};

}  // namespace recorder
