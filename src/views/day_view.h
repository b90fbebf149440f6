// The rows of the day view: the Actions that start on the current date, or, in the spanning mode,
// every Action that touches it.
#pragma once

#include "core/app_state.h"
#include "views/view_rows.h"

namespace views {

// By DayVwMltDayMode one of the two below.
ViewRows SetDataDayView(const core::CAppState& app);

// The Actions that start on the current date, through the Action index. A row that has vanished
// ends them early.
ViewRows SetDataDayViewForSingle(const core::CAppState& app);

// The Actions that touch the current date and pass the find, asked of the data file.
ViewRows SetDataDayViewForMulti(const core::CAppState& app);

}  // namespace views
