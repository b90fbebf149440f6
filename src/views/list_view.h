// The rows of the list view: one page of the Action index, newest first, a line for each Action.
#pragma once

#include <string>

#include "core/app_state.h"
#include "views/view_rows.h"

namespace views {

// "page/pages - Actions", then the number of all Actions in brackets while a find is active.
std::u16string ListTitle(const core::CAppState& app);

ViewRows SetDataListView(const core::CAppState& app);

}  // namespace views
