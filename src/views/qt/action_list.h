// The list of Actions in a view: a report of rows high enough for a finger, whose presses go
// through the row gesture. The day view, the list view and the map share one (control 1071).
#pragma once

#include <QFont>
#include <QStringList>
#include <QTreeWidget>
#include <functional>
#include <span>
#include <vector>

#include "views/row_gesture.h"
#include "views/view_rows.h"

namespace views {

class ActionList : public QTreeWidget {
  Q_OBJECT

 public:
  ActionList(QWidget* parent, int id);

  // Asked at a press before anything else: closes an open popup and answers whether there was one.
  void SetPopupCloser(std::function<bool()> closer) { closePopups_ = std::move(closer); }

  // Empties the list and gives it a view's font and columns, which begin with `widths`. The last
  // one also takes what the others leave of the list, so that a row is as wide as the list.
  void SetColumns(const QFont& font, const QStringList& headers, std::span<const int> widths);
  // A column of numbers, until SetColumns is called again.
  void AlignRight(int column);
  // Shows the rows, then the one of kNewRowText, and selects what the fill says. The first columns
  // take the widths of `widths`; one that is not above 0 is fitted to its texts.
  void ShowRows(const ViewRows& rows, std::span<const int> widths = {});
  // The last column becomes as wide as its texts, kNewRowText included.
  void FitLastColumn();

  // -1 if no row has the focus.
  int FocusedRow() const;
  // From the top down.
  std::vector<int> SelectedRows() const;
  // Rows that fit the list, at least 1.
  int RowsPerScreen() const;

 signals:
  void RowTapped(int row);
  void NewTapped();
  // Where on the screen, and the part of it that the row takes.
  void Held(QPoint globalPoint, QRect globalRow);
  void ColumnDragged(int column, int width);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
  void contextMenuEvent(QContextMenuEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  void FitColumns(std::span<const int> widths);
  void FillWidth();
  void ShowSelected(int row);
  int RowAt(QPoint point) const;
  QRect GlobalRect(int row) const;
  RowRange VisibleRows() const;
  void SelectRows(RowRange range, int focusedRow);
  void Finish(RowGesture::Tap tap, int row);
  void Hold(QPoint point);

  std::function<bool()> closePopups_;
  RowGesture gesture_;
  bool filling_ = false;  // the program sets the widths, not its user
  int lastWidth_ = 0;     // the least width of the last column
};

}  // namespace views
