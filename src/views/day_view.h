// The rows of the day view: the Actions that start on the current date, or, in the spanning mode,
// every Action that touches it.
#pragma once

#include <functional>
#include <string_view>

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

// The same rows for another view's list. `caller` names its fill in the message of a failed read;
// `addRow` sees each Action with the cells made of it, and may add to them.
using AddRowCells =
    std::function<void(const store::Action& action, std::vector<std::u16string>& cells)>;
ViewRows ReadSpanningDay(const core::CAppState& app, std::u16string_view caller,
                         const AddRowCells& addRow);

}  // namespace views
