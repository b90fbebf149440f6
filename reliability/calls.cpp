#include "reliability/calls.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <map>
#include <mutex>
#include <string>

namespace reliability {
namespace {

Calls theCalls;
EventLog* eventLog = nullptr;
std::recursive_mutex oneAtATime;  // the copy of the day is made by a thread; maps allocate
constexpr size_t kLogSize = size_t{1} << 30;  // of addresses; of memory only what is used

bool ChangesDisk(Call kind) {
  return kind == Call::kWrite || kind == Call::kSync || kind == Call::kRename ||
         kind == Call::kRemove;
}

// True if this call is to fail.
bool Fails(Call kind, int error) {
  Calls& c = theCalls;
  if (!c.armed) return false;
  const std::scoped_lock lock(oneAtATime);
  const long count = c.counts[static_cast<size_t>(kind)]++;
  const long change = ChangesDisk(kind) ? c.changes++ : -1;
  if (c.fate == Calls::Fate::kPass || (c.kind && *c.kind != kind)) return false;
  if ((c.kind ? count : change) != c.nth) return false;
  c.came = true;
  if (c.fate == Calls::Fate::kDie) _exit(kKilled);
  errno = error;
  return true;
}

// The path of an open file or folder within the log's folder, a folder's with a slash at its end;
// none for any other.
std::optional<std::string> NameOf(int file) {
  if (eventLog == nullptr || !theCalls.armed) return {};
  struct stat status;
  std::array<char, 512> path;
  const std::string link = "/proc/self/fd/" + std::to_string(file);
  const ssize_t length = readlink(link.c_str(), path.data(), path.size());
  if (length < 0 || fstat(file, &status) != 0) return {};
  std::string name(path.data(), static_cast<size_t>(length));
  if (S_ISDIR(status.st_mode)) name += '/';
  if (!name.starts_with(eventLog->Folder())) return {};
  return name.substr(eventLog->Folder().size());
}

// A number for each file that was ever made, as the system gives away a removed one's again.
uint64_t NumberOf(int file, bool isNew = false) {
  const std::scoped_lock lock(oneAtATime);
  static std::map<ino_t, uint64_t> numbers;
  static uint64_t last = 0;
  struct stat status;
  if (fstat(file, &status) != 0) return 0;
  uint64_t& number = numbers[status.st_ino];
  if (isNew || number == 0) number = ++last;
  return number;
}

// The name within the log's folder; empty for any other.
std::string_view NameIn(const char* path) {
  if (eventLog == nullptr || !theCalls.armed) return {};
  const std::string_view whole(path);
  return whole.starts_with(eventLog->Folder()) ? whole.substr(eventLog->Folder().size())
                                               : std::string_view();
}

void Log(const Event& event) {
  const std::scoped_lock lock(oneAtATime);
  eventLog->Append(event);
}

ssize_t Write(int file, const void* bytes, size_t size, off64_t offset) {
  if (Fails(Call::kWrite, ENOSPC)) return -1;
  const bool logged = NameOf(file).has_value();
  const off64_t at = offset >= 0 || !logged ? offset : lseek64(file, 0, SEEK_CUR);
  const ssize_t written = offset < 0 ? syscall(SYS_write, file, bytes, size)
                                     : syscall(SYS_pwrite64, file, bytes, size, offset);
  if (logged && written > 0) {
    Log({Event::kWrite,
         NumberOf(file),
         at,
         {static_cast<const char*>(bytes), static_cast<size_t>(written)},
         {}});
  }
  return written;
}

int Sync(int file, long call) {
  if (Fails(Call::kSync, EIO)) return -1;
  if (const auto name = NameOf(file)) {
    const bool isFolder = name->empty() || name->ends_with('/');
    Log({isFolder ? Event::kSyncFolder : Event::kSync, NumberOf(file), 0, *name, {}});
    return 0;  // the log says what a disk would have
  }
  return static_cast<int>(syscall(call, file));
}

int Open(const char* path, int flags, mode_t mode) {
  if (Fails(Call::kOpen, EIO)) return -1;
  const std::string_view name = NameIn(path);
  const bool existed = name.empty() || access(path, F_OK) == 0;
  const int file = static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
  if (file < 0 || name.empty()) return file;
  if (!existed) Log({Event::kCreate, NumberOf(file, true), 0, name, {}});
  if (existed && (flags & O_TRUNC) != 0) Log({Event::kTruncate, NumberOf(file), 0, {}, {}});
  return file;
}

}  // namespace

Calls& calls() {
  return theCalls;
}

EventLog::EventLog(std::string_view folder) : folderLength_(folder.size()) {
  folder.copy(folder_.data(), folder_.size());
  void* memory = mmap(nullptr, kLogSize, PROT_READ | PROT_WRITE,
                      MAP_SHARED | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (memory == MAP_FAILED) std::abort();
  used_ = static_cast<size_t*>(memory);
  memory_ = static_cast<char*>(memory) + sizeof(size_t);
}

EventLog::~EventLog() {
  munmap(used_, kLogSize);
}

void EventLog::Append(const Event& event) {
  const size_t need = sizeof(Event) + event.bytes.size() + event.from.size();
  if (sizeof(size_t) + *used_ + need > kLogSize) std::abort();
  char* to = memory_ + *used_;
  std::memcpy(to, &event, sizeof event);
  to += sizeof event;
  to += event.bytes.copy(to, event.bytes.size());
  event.from.copy(to, event.from.size());
  *used_ += need;
}

Event EventLog::EventAt(size_t& at) const {
  Event event;
  std::memcpy(&event, memory_ + at, sizeof event);
  at += sizeof event;
  event.bytes = {memory_ + at, event.bytes.size()};
  at += event.bytes.size();
  event.from = {memory_ + at, event.from.size()};
  at += event.from.size();
  return event;
}

void SetEventLog(EventLog* log) {
  eventLog = log;
}

}  // namespace reliability

using namespace reliability;

extern "C" {

ssize_t pwrite64(int file, const void* bytes, size_t size, off64_t offset) {
  return Write(file, bytes, size, offset);
}

ssize_t write(int file, const void* bytes, size_t size) {
  return Write(file, bytes, size, -1);
}

int ftruncate64(int file, off64_t length) noexcept {
  if (Fails(Call::kWrite, EIO)) return -1;
  if (NameOf(file)) Log({Event::kTruncate, NumberOf(file), length, {}, {}});
  return static_cast<int>(syscall(SYS_ftruncate, file, length));
}

ssize_t pread64(int file, void* bytes, size_t size, off64_t offset) {
  if (Fails(Call::kRead, EIO)) return -1;
  return syscall(SYS_pread64, file, bytes, size, offset);
}

ssize_t read(int file, void* bytes, size_t size) {
  if (Fails(Call::kRead, EIO)) return -1;
  return syscall(SYS_read, file, bytes, size);
}

int fsync(int file) {
  return Sync(file, SYS_fsync);
}

int fdatasync(int file) {
  return Sync(file, SYS_fdatasync);
}

int open(const char* path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = va_arg(rest, mode_t);
  va_end(rest);
  return Open(path, flags, mode);
}

int open64(const char* path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = va_arg(rest, mode_t);
  va_end(rest);
  return Open(path, flags, mode);
}

int rename(const char* from, const char* to) noexcept {
  if (Fails(Call::kRename, EIO)) return -1;
  const int result = static_cast<int>(syscall(SYS_rename, from, to));
  if (result == 0 && !NameIn(from).empty()) Log({Event::kRename, 0, 0, NameIn(to), NameIn(from)});
  return result;
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to,
              unsigned flags) noexcept {
  if (Fails(Call::kRename, EIO)) return -1;
  const long result = syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags);
  if (result == 0 && !NameIn(from).empty()) Log({Event::kRename, 0, 0, NameIn(to), NameIn(from)});
  return static_cast<int>(result);
}

int link(const char* from, const char* to) noexcept {
  if (Fails(Call::kRename, EIO)) return -1;
  const int result = static_cast<int>(syscall(SYS_link, from, to));
  if (result != 0 || NameIn(to).empty()) return result;
  const int file = static_cast<int>(syscall(SYS_openat, AT_FDCWD, to, O_RDONLY, 0));
  Log({Event::kCreate, NumberOf(file), 0, NameIn(to), {}});
  close(file);
  return result;
}

int unlink(const char* path) noexcept {
  if (Fails(Call::kRemove, EIO)) return -1;
  if (!NameIn(path).empty() && access(path, F_OK) == 0) {
    Log({Event::kUnlink, 0, 0, NameIn(path), {}});
  }
  return static_cast<int>(syscall(SYS_unlink, path));
}

void* mmap64(void* at, size_t size, int protection, int flags, int file, off64_t offset) noexcept {
  if (file >= 0 && Fails(Call::kMap, ENOMEM)) return MAP_FAILED;
  return reinterpret_cast<void*>(syscall(SYS_mmap, at, size, protection, flags, file, offset));
}

void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* former, size_t size);

void* malloc(size_t size) noexcept {
  return Fails(Call::kAllocate, ENOMEM) ? nullptr : __libc_malloc(size);
}

void* calloc(size_t count, size_t size) noexcept {
  return Fails(Call::kAllocate, ENOMEM) ? nullptr : __libc_calloc(count, size);
}

void* realloc(void* former, size_t size) noexcept {
  return Fails(Call::kAllocate, ENOMEM) ? nullptr : __libc_realloc(former, size);
}

}  // extern "C"
