// The accessor of the one Files.
#include "platform/files.h"

#include <utility>

#include "platform/posix_files.h"

namespace platform {
namespace {

PosixFiles hostFiles;
Files* currentFiles = &hostFiles;

}  // namespace

Files& files() {
  return *currentFiles;
}

Files* SetFiles(Files* newFiles) {
  return std::exchange(currentFiles, newFiles);
}

}  // namespace platform
