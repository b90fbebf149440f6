#include "store/engine_trouble.h"

#include <sqlite3.h>

#include <cerrno>

namespace store {

Trouble TroubleOf(int extendedCode, int systemError) {
  const int code = extendedCode & 0xFF;
  const bool isSystems = code == SQLITE_IOERR || code == SQLITE_CANTOPEN;
  const bool hasNoRoom = systemError == ENOSPC || systemError == EDQUOT || systemError == EFBIG;
  const bool tookPart = extendedCode == SQLITE_IOERR_WRITE && systemError == 0;
  if ((isSystems && hasNoRoom) || tookPart) return Trouble::kDiskFull;
  switch (code) {
    case SQLITE_FULL:
      return Trouble::kDiskFull;
    case SQLITE_READONLY:
    case SQLITE_CANTOPEN:  // the file is open: what could not be made is a journal beside it
      return Trouble::kReadOnly;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return Trouble::kBusy;
    case SQLITE_CORRUPT:
      return Trouble::kDamaged;
    case SQLITE_IOERR:
      return Trouble::kDisk;
  }
  return Trouble::kUnknown;
}

}  // namespace store
