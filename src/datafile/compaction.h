// Compaction of the data file: the engine writes a compacted copy under a temporary name, the old
// file gets the backup's name as well, and the copy takes the data file's. Whatever interrupts it,
// a whole file stands under the data file's name. All of it is dialogue with the user.
#pragma once

#include <string>
#include <string_view>

#include "core/app_state.h"

namespace datafile {

enum CompactCommandResult {
  kCommandDone = 0,  // it ran to its end, also where the user said no on the way
  kOtherNameRefused = -102,
  kNotReopened = -102,    // the data file could not be opened again
  kReopenedUnread = -103  // its index could not be read
};
// The command of the data page, for the path in its field: closes the open file, compacts the one
// at `path`, which may be another, and opens app.DataFile again.
CompactCommandResult OnBtnCompact(core::CAppState& app, std::u16string_view path);

// But for kCompacted, a message has said so, and the file stands as it was.
enum CompactResult {
  kCompacted = 0,
  kNoSuchFile = -101,
  kNoFileName = -102,
  kCompactRefused = -104,
  kBackupKept = -105,  // the user wants the older backup
  kNoTemporaryName = -107,
  // Another program of ours has the file, a foreign log lies beside it, or the copy could not be
  // made or take its place.
  kCompactFailed = -108
};
// Runs with no data file open.
CompactResult CompactDataFile(std::u16string_view path);

// The name of the backup: `fileName` with ".bak" for its last extension, or with ".bak" added where
// it has none or is a backup itself.
std::u16string BackupName(std::u16string_view fileName);

}  // namespace datafile
