// The rows of the map's list and their markers: the Actions that touch the current date, as in the
// spanning day view.
#pragma once

#include <span>

#include "core/app_state.h"
#include "views/map_pane.h"
#include "views/view_rows.h"

namespace views {

// Fills the list and pane.MapItems, one item a row. The average of the first positions that are
// ever found becomes the reference point; until then it is the default one.
ViewRows SetDataMapViewForLV(const core::CAppState& app, MapPane& pane);

// Brings the first Action of the selected rows to the centre of the map. False, after a message, if
// there is none or it has no position.
bool FxMapMove(MapPane& pane, std::span<const int> selectedRows);

}  // namespace views
