// What the main window asks of each of its views, and what a view asks of the window. A view fills
// the controls that the views share or paints controls of its own; the window decides which view is
// on show.
#pragma once

#include <QObject>
#include <QPoint>
#include <QRect>
#include <optional>

#include "core/app_state.h"
#include "platform/qt/qt_rect.h"
#include "position/coordinate.h"
#include "views/commands.h"
#include "views/header_layout.h"
#include "views/map_pane.h"
#include "views/qt/action_list.h"
#include "views/qt/date_popups.h"
#include "views/qt/header_row.h"
#include "views/view_rows.h"

namespace views {

// The controls that the views share.
struct SharedControls {
  HeaderRow& header;
  ActionList& list;
  DatePopups& popups;
  MapPane& map;
};

// What has been done to the diary, for views that read only a part of what they show again. An
// import counts as added Actions, the options as an edit.
enum class Change { kAdded, kEdited, kDeleted, kRecorded, kFindEnded };

class ViewScreen : public QObject {
  Q_OBJECT

 public:
  ViewScreen(core::CAppState& app, SharedControls controls) : app_(app), controls_(controls) {}

  // Shows or hides the view's controls below the header. The list unless the view says otherwise.
  virtual void SetShown(bool shown);
  // Lays them out in the room between the header and the toolbar.
  virtual void Place(const Rect& content);
  // The view has been switched to; Refill follows.
  virtual void Enter() {}
  // Shows the current date or page, with the title.
  virtual void Refill() = 0;
  // The header's buttons, a key or a tap have moved the current date; Refill follows.
  virtual void OnDateMoved() {}
  // Shows what has been done.
  virtual void OnChange(Change) { Refill(); }
  // What was read before no longer holds: the data file is another one, or has new Actions.
  virtual void Forget() {}

  // The row that a command of the edit menu means, -1 for none.
  virtual int SelectedRow() const;
  // All rows that a delete means.
  virtual std::vector<int> SelectedRows() const;
  // The view has no rows: its Actions take a tap and hold instead of the edit menu.
  virtual bool IsHeldOnly() const { return false; }
  // The id of the Action under the last tap or hold on the view's own picture, empty for none.
  virtual std::u16string TapItem() const { return {}; }
  // The position under it, where the view knows one.
  virtual std::optional<position::Position> PressedPosition() const { return {}; }
  // Makes the day under the last tap or hold the current date.
  virtual void GoToPressedDay() {}
  // Brings the first of the selected rows to the middle of the picture.
  virtual void MoveToSelected() {}

  // A key has been released that means something in this view alone.
  virtual bool TakesKey(QKeyCombination) { return false; }
  // The control that takes the keys.
  virtual QWidget& FocusWidget() { return controls_.list; }
  // The user has changed a column's width.
  virtual void OnColumnDragged(int, int) {}

  const ViewRows& Rows() const { return rows_; }

 signals:
  // A tap that means a command.
  void Commanded(int id);
  // A tap and hold that opens a menu there, beside the row that was held, if one was.
  void MenuWanted(views::Menu menu, QPoint globalPoint, QRect globalRow = {});
  // A tap on a row, or on one that is no Action's.
  void RowTapped(int row);

 protected:
  core::CAppState& app_;
  SharedControls controls_;
  ViewRows rows_;
};

}  // namespace views
