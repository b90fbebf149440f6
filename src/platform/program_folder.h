// The folder in which everything of its user's lies: settings, diary, lock. Paths in the host's
// form; any thread.
#pragma once

#include <optional>
#include <string>

namespace platform {

struct ProgramPlace {
  std::string programFile;  // full path of the running program
  std::string dataHome;     // $XDG_DATA_HOME as it is, perhaps empty
  std::string home;         // $HOME as it is, perhaps empty
};

// The folder that holds the program if its user owns it, as after `run.sh`; for a program of the
// system, which lies below /usr and the like or belongs to somebody else, `morvenly` in the user's
// data folder: $XDG_DATA_HOME, which counts only as a full path, or else ~/.local/share. It need
// not exist yet. None where neither is known.
std::optional<std::string> UsersFolder(const ProgramPlace& place);

// Makes the folder and those above it where they are missing, as private as the process's umask has
// it. False if no folder of that name stands then.
bool MakeFolders(const std::string& folder);

// Whether files can be made in the folder.
bool IsWritable(const std::string& folder);

}  // namespace platform
