// A data file that was renamed over, moved or removed while it is open, as file synchronisers do:
// what to go on with is its user's choice.
#pragma once

namespace datafile {

// What the engine asks before a write to a displaced file. True if the write may go on: the session
// has moved to where the open file lies now, or to a copy of it. False after a No or a Cancel, with
// the file that took its place opened after a No. The open file's content is lost on no road.
bool SettleDisplaced();

}  // namespace datafile
