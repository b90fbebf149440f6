// Which Actions the rows of the shared list mean, and what the commands do with them.
#pragma once

#include <span>
#include <string_view>

#include "core/app_state.h"
#include "views/view_rows.h"

namespace views {

inline constexpr std::u16string_view kNothingSelected = u"有効なアクションが選択されていません。";

// The message that an Action has no position.
void ShowNoPosition();

// Hands the Action of a row to the edit screen (SelActId, SelIndex); false and no change if the row
// is no Action's: -1, or the one of kNewRowText. In the spanning mode too it is the Action that the
// row shows.
bool SelectRow(core::CAppState& app, const ViewRows& rows, int row);

// SelectRow for a command of the edit menu, with a message if there is no Action to change.
bool SelectRowToChange(core::CAppState& app, const ViewRows& rows, int row);

// Opens the map page at the Action's position; a message if there is no Action or no position.
void OnEditDispMap(core::CAppState& app, const ViewRows& rows, int row);

// Hands an Action to the edit screen by its id. SelIndex becomes negative if the index no longer
// has it. False and no change for an empty id.
bool SelectAction(core::CAppState& app, std::u16string_view id);

// The message, under the title of a refused command, that the view's Actions take a tap and hold.
void TellToHold(std::u16string_view title);

// Asks, then deletes the Actions of the rows and rebuilds the index, which also ends a find. False
// if nothing was deleted: no Action among the rows (after a message), or the answer was No.
bool FxEditDelete(core::CAppState& app, const ViewRows& rows, std::span<const int> selectedRows);

// The same for one Action by its id.
bool FxDeleteAction(core::CAppState& app, std::u16string_view id);

}  // namespace views
