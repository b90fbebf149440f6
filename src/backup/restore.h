// Putting a backup in the diary's place. The backup is copied beside the diary first, and that copy
// is looked into, upgraded and at last renamed over the closed diary: the backup itself is never
// changed, and whatever cuts it short, one whole diary stands under its name.
#pragma once

#include <string_view>

#include "core/app_state.h"

namespace backup {

// kNoDataFile: none could be opened any more, and the program is to close.
enum class Restored { kNo, kYes, kNoDataFile };

// Says what `chosen` would bring, beside what is there now, and asks. On Yes the diary is kept as a
// backup, the content of `chosen` takes its place, and it's opened again, with its index loaded and
// no find. After a No or a failure, which is reported, the diary is open as before.
Restored Restore(core::CAppState& app, std::u16string_view chosen);

}  // namespace backup
