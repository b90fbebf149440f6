// Keeps a data file from every other running program of ours, wherever that is installed and by
// whatever link it reaches the file. The kernel gives the lock back however the program ends.
//
// The engine's own locks lie on the same file and are the process's: they go when any descriptor of
// the file is closed. So a FileLock is taken before the engine opens the file and outlives it.
#pragma once

#include <memory>
#include <optional>
#include <string>

namespace store {

class FileLock {
 public:
  // Nothing if another one is held on the file. A file that cannot be locked at all counts as
  // locked: not every file system offers it.
  static std::unique_ptr<FileLock> Take(const std::string& hostPath);
  ~FileLock();
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

  // Where the locked file lies now; none if it has no name any more.
  std::optional<std::string> Whereabouts() const;

 private:
  explicit FileLock(int descriptor) : descriptor_(descriptor) {}

  int descriptor_;  // or -1
};

}  // namespace store
