// One copy of the diary a day, made by itself in `backup` beside it: what the diary held before the
// day's first write. It's made by a thread of the engine's while the program goes on; a failure
// is reported once a run and holds nothing up. Interface thread only.
#pragma once

#include "platform/host.h"

namespace backup {

// From now on every write of an open diary looks whether the day has its copy, unless the option is
// off. A copy that is ready, or has failed, posts `command` to `window`; 0 is no window.
void KeepDailyCopies();
void PostDailyCopies(platform::WindowId window, int command);

// What the posted command does: gives the copy its name and takes outdated ones away. Closing the
// diary does it, too. True if a failure, the first of the run, has yet to be reported.
bool FinishDailyCopy();
// Harmless if there is none.
void TellDailyFailure();

}  // namespace backup
