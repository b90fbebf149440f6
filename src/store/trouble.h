// Why the store last failed, in words for the user: what the codes of messages do not say. Noted
// where a failure is met, asked for where it is reported. Interface thread only.
#pragma once

#include <string>
#include <string_view>

#include "store/hresult.h"

namespace store {

enum class Trouble {
  kUnknown,
  kDiskFull,
  kDisk,       // it fails to read or write, or to say what stands where
  kReadOnly,   // the file, its folder or its disk
  kBusy,       // another program holds it locked
  kInUse,      // another running program of ours has it open
  kNoFolder,   // the one that something was to be written into
  kForbidden,  // to write into it
  kTooLong,    // a name, for its disk
  kFolder,     // a folder stands at its path
  kTaken,      // anything does
  kNotOpened,  // it may not be read
  kDamaged,
  kForeignSql,  // SQL that would run stands in it: a view, a trigger, an expression
  kForeignLog,  // another file's log lies beside it
  kDisplaced,   // the open file is no longer what stands at its path
  kExchanged,   // another file was opened in place of a displaced one
};

void NoteTrouble(Trouble trouble);
// The same by errno, after a call of files() that was to write something.
void NoteSystemError(int error);
Trouble LastTrouble();
// The write has yet to be made again: the open file was displaced, or another program holds it.
bool NeverReachedFile(Trouble trouble);

// A line in plain words on what was noted last; empty for kUnknown.
std::u16string_view TroubleText();
// `text`, and after it that line if `result` is E_FAIL.
std::u16string WithReason(std::u16string text, HRESULT result = E_FAIL);

}  // namespace store
