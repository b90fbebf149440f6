// What a failed call of SQLite means for the user. Only the engine's own files include this.
#pragma once

#include "store/trouble.h"

namespace store {

// Any thread. `systemError` is the one of the last call that failed, so it is about failures of the
// system alone.
Trouble TroubleOf(int extendedCode, int systemError);

}  // namespace store
