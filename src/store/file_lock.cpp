// A lock of the open file description on one byte: unlike a lock of the process it is not lost when
// another descriptor of the file is closed, and unlike one on the whole file it meets none of the
// engine's where a file system makes byte ranges of every lock.
#include "store/file_lock.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

namespace store {
namespace {

// After the bytes that SQLite locks, in the page that it never writes.
constexpr off_t kLockedByte = 0x40000000 + 1024;

bool IsSameFile(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

}  // namespace

std::unique_ptr<FileLock> FileLock::Take(const std::string& hostPath) {
  constexpr int kFlags = O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
  struct flock range {};
  range.l_whence = SEEK_SET;
  range.l_start = kLockedByte;
  range.l_len = 1;
  range.l_type = F_WRLCK;
  int descriptor = open(hostPath.c_str(), O_RDWR | kFlags);
  if (descriptor < 0) {
    range.l_type = F_RDLCK;  // whoever may only read gets in the way of no other reader
    descriptor = open(hostPath.c_str(), O_RDONLY | kFlags);
  }
  std::unique_ptr<FileLock> lock(new FileLock(descriptor));
  const bool isHeld = descriptor >= 0 && fcntl(descriptor, F_OFD_SETLK, &range) != 0 &&
                      (errno == EAGAIN || errno == EACCES);
  return isHeld ? nullptr : std::move(lock);
}

FileLock::~FileLock() {
  if (descriptor_ >= 0) close(descriptor_);
}

std::optional<std::string> FileLock::Whereabouts() const {
  std::error_code error;
  const auto path =
      std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor_), error);
  struct stat own, there;
  if (error || fstat(descriptor_, &own) != 0 || stat(path.c_str(), &there) != 0) return {};
  return IsSameFile(own, there) ? std::optional(path.string()) : std::nullopt;
}

}  // namespace store
