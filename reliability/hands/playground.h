// The folder that a life plays in: a diary, and files for the dialogs to find.
#pragma once

#include <string>

namespace hands {

// Fills the empty `folder`, a full path, with a sample diary to which rows were added that the
// program would never write, import files of several kinds, and data files that are none. Every
// fourth `seed` leaves it without a diary. Needs a Host. What cannot be made is a Fault.
void MakePlayground(const std::string& folder, unsigned seed);

// Every database in `folder` and below passes SQLite's check, and none has a log beside it: to be
// called when no data file is open. What does not is a Fault.
void CheckPlayground(const std::string& folder);

}  // namespace hands
