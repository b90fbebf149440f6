// What the file dialog asks for a backup's name, and for a file to restore.
#pragma once

#include "core/app_state.h"
#include "filedialog/file_select.h"

namespace backup {

// Makes the diary's `backup` folder, so that the dialog can begin there; if it can't be made, the
// dialog begins beside the diary. The name that is offered is free.
filedialog::FileSelectParams AskForBackup(const core::CAppState& app);
// After a dialog that was cancelled: takes the folder away again if it's empty.
void DropEmptyFolder(const core::CAppState& app);

filedialog::FileSelectParams AskForRestore(const core::CAppState& app);

}  // namespace backup
