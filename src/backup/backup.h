// A user's own backup: a compacted, checked copy of the open diary, wherever it's wanted.
#pragma once

#include <string_view>

namespace backup {

// Writes the open diary's copy to `path`, after a question if something stands there, and says
// where it lies and how many Actions it holds, or why there is none. Nothing half-made is left, and
// what stood there stays until the copy is whole. A file with a log beside it isn't replaced.
void MakeBackup(std::u16string_view path);

}  // namespace backup
