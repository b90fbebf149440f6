// How far a long run has come.
#pragma once

#include <functional>

namespace exchange {

// Called between two rows of a run, which goes on when it returns: it may show the numbers, but it
// must not run anything else of the program. `total` is 0 while it isn't known yet.
using Progress = std::function<void(int done, int total)>;

}  // namespace exchange
