// The recorder's lasting state in the data file, and its share of closing that file.
#pragma once

#include "core/app_state.h"

namespace recorder {

// The recorder's values in a new data file. 0, or -2, -4, -5, -7, -8, -9, -10, -11, -12 for the key
// that failed, in the order in which they are written.
int InitRecorderValues();

// Closes the row set, empties the Action index and closes the data file.
void CloseRecorderSession(core::CAppState& app);

}  // namespace recorder
