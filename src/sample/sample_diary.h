// A year of days to look at, for somebody who wants to see the program before a diary of their own,
// for pictures and for measurements: a settings file and a data file in a folder of their own.
#pragma once

#include <string>

namespace sample {

// Makes the diary in `folder`, a path of the host's; relative ones lie below the working folder.
// The folder is made if there is none. The year ends at the host's clock, and the recorder keeps
// the last Action running. Empty, or why there is none, in words: a folder that holds a diary
// already stays as it is. Needs a Host, but no window; no data file may be open.
std::string MakeDiary(const std::string& folder);

}  // namespace sample
