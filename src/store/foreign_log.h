// A write-ahead log that a killed program left belongs to the very file that it was written for.
// SQLite would bring it into whatever stands at that path by now: a backup that was copied there
// would become a mixture of both.
#pragma once

#include <string>
#include <string_view>

namespace store {

// The log beside the file was written for another one. The file must not be open: looking at it
// drops the locks that an engine of this process has on it.
bool HasForeignLog(std::u16string_view path);

// Asks whether the log may be set aside under another name, and does it. False if it stays.
bool SetLogAside(std::u16string_view path);

}  // namespace store
