// What the main window asks of each of its views. A view fills the controls that the views share;
// the window owns them and decides which view is on show.
#pragma once

#include "core/app_state.h"
#include "views/action_list_screen.h"
#include "views/header_row_screen.h"
#include "views/view_rows.h"

namespace views {

// The controls that the views share.
struct SharedControls {
  HeaderRow& header;
  ActionList& list;
};

class ViewScreen {
 public:
  ViewScreen(core::CAppState& app, SharedControls controls) : app_(app), controls_(controls) {}
  virtual ~ViewScreen() = default;
  ViewScreen(const ViewScreen&) = delete;
  ViewScreen& operator=(const ViewScreen&) = delete;

  // The view comes on show; Refill follows.
  virtual void Enter() {}
  // Reads the rows and shows them with the title.
  virtual void Refill() = 0;
  // The user has changed a column's width.
  virtual void OnColumnDragged(int, int) {}

  const ViewRows& Rows() const { return rows_; }

 protected:
  core::CAppState& app_;
  SharedControls controls_;
  ViewRows rows_;
};

}  // namespace views
