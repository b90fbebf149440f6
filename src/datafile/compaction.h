// Compaction of the data file: the engine writes a compacted copy under a temporary name, the old
// file becomes the backup, and the copy takes the data file's name. Whatever interrupts it, the old
// file stands whole under one of its two names. All of it is dialogue with the user.
#pragma once

#include <string>
#include <string_view>

#include "core/app_state.h"

namespace datafile {

// The command of the data page, for the path in its field: closes the open file, compacts the one
// at `path`, which may be another, and opens app.DataFile again. 0 when it ran to its end, also
// when the user said no on the way; -102 the user said no to another name, or the data file could
// not be opened again; -103 its index could not be read.
int OnBtnCompact(core::CAppState& app, std::u16string_view path);

// Runs with no data file open. 0, or after its message: -101 no such file; -102 no name; -104 and
// -105 the user said no; -107 no temporary name was free; -108 another program of ours has the
// file, a foreign log lies beside it, or the copy could not be made or take its place: the file
// stands as it was.
int CompactDataFile(std::u16string_view path);

// The name of the backup: `fileName` with ".bak" for its last extension, or with ".bak" behind it
// where it has none or is a backup itself.
std::u16string BackupName(std::u16string_view fileName);

}  // namespace datafile
