#include "support/disk_calls.h"

#include <sys/syscall.h>
#include <unistd.h>

namespace testing_support {

DiskCalls& diskCalls() {
  static DiskCalls calls;
  return calls;
}

}  // namespace testing_support

extern "C" ssize_t pwrite64(int file, const void* bytes, size_t size, off64_t offset) {
  testing_support::DiskCalls& calls = testing_support::diskCalls();
  if (calls.writesUntilDeath == 0) _exit(0);
  if (calls.writesUntilDeath > 0) --calls.writesUntilDeath;
  ++calls.writes;
  return pwrite(file, bytes, size, offset);
}

extern "C" int fdatasync(int file) {
  ++testing_support::diskCalls().syncs;
  return static_cast<int>(syscall(SYS_fdatasync, file));
}

extern "C" int fsync(int file) {
  ++testing_support::diskCalls().syncs;
  return static_cast<int>(syscall(SYS_fsync, file));
}
