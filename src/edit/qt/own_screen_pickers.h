// The pickers that cover the edit screen: wheels for a time, a finger's list for a value.
#pragma once

#include <QWidget>

#include "edit/edit_action.h"

namespace edit {

// Runs the screen of the open editor and hands over what was chosen; without a choice the editor
// closes and leaves its field. For pickers of CEditAction::PicksOnOwnScreen.
void PickOnOwnScreen(QWidget* over, CEditAction& edit);

}  // namespace edit
