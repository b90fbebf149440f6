// 元に戻す and やり直す: a step of the data file is turned, the recorder's chain follows, and its
// user is told why where that can't be. Interface thread only.
#pragma once

#include <optional>
#include <string>

#include "core/app_state.h"
#include "store/undo_log.h"

namespace undo {

// What the command would be about, "元に戻す: 3件の削除"; none if there is nothing.
std::optional<std::u16string> CommandText(store::Turn turn);

// Ends a find, and selects what came back, on its day. False, after a message, if nothing changed.
bool Take(core::CAppState& app, store::Turn turn);

// Asks, then forgets all steps.
void ClearHistory();

}  // namespace undo
