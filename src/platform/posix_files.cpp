// Nothing here remembers a path: every call asks the disk again.
#include "platform/posix_files.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <utility>

#include "platform/device_paths.h"

namespace platform {
namespace {

// A pipe among the files must not stop the program until somebody opens its other end.
constexpr int kOpenFlags = O_CLOEXEC | O_NOCTTY | O_NONBLOCK;

// Repeats a call as long as a signal interrupts it.
template <typename Call>
auto Uninterrupted(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

std::string_view WithoutEndSlashes(std::string_view hostPath) {
  return hostPath.substr(0, hostPath.find_last_not_of('/') + 1);
}

// Brings the names in a file's folder to the disk, so that a power cut cannot undo a rename after
// which the file was written on. Not every file system offers it.
void SyncFolderOf(std::string_view hostPath) {
  const size_t slash = WithoutEndSlashes(hostPath).rfind('/');
  const std::string folder(slash == std::string_view::npos ? "." : hostPath.substr(0, slash + 1));
  const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  fsync(descriptor);
  close(descriptor);
}

class PosixFile : public File {
 public:
  // `hostPath` is that of a file that's being made, empty for any other.
  explicit PosixFile(int descriptor, std::string hostPath = {})
      : descriptor_(descriptor), hostPath_(std::move(hostPath)) {}
  ~PosixFile() override { close(descriptor_); }
  PosixFile(const PosixFile&) = delete;
  PosixFile& operator=(const PosixFile&) = delete;

  int64_t Read(void* data, size_t size) override {
    return Uninterrupted([&] { return read(descriptor_, data, size); });
  }

  bool Seek(uint64_t position) override {
    return lseek(descriptor_, static_cast<off_t>(position), SEEK_SET) >= 0;
  }

  bool Write(std::string_view bytes) override {
    while (!bytes.empty()) {
      const ssize_t written =
          Uninterrupted([&] { return write(descriptor_, bytes.data(), bytes.size()); });
      if (written < 0) return false;
      bytes.remove_prefix(static_cast<size_t>(written));
    }
    return true;
  }

  bool Sync() override {
    if (Uninterrupted([&] { return fsync(descriptor_); }) != 0) return false;
    if (!hostPath_.empty()) SyncFolderOf(hostPath_);
    return true;
  }

 private:
  int descriptor_;
  std::string hostPath_;
};

// A descriptor, or -1.
int Open(std::u16string_view path, int flags) {
  const auto hostPath = ToHostPath(path);
  if (!hostPath) return -1;
  return Uninterrupted(
      [&] { return open(hostPath->c_str(), flags | kOpenFlags, S_IRUSR | S_IWUSR); });
}

// The last name of a path; npos + 1 is 0, so that a path without a slash is all name.
std::string_view LastName(std::string_view hostPath) {
  hostPath = WithoutEndSlashes(hostPath);
  return hostPath.substr(hostPath.rfind('/') + 1);
}

bool IsDots(std::string_view name) {
  return name == "." || name == "..";
}

bool IsHiddenName(std::string_view name) {
  return name.starts_with('.') && !IsDots(name);
}

// Where the file system knows no rename that replaces nothing.
int RenameAfterLook(const char* from, const char* to) {
  struct stat status;
  if (lstat(to, &status) == 0) errno = EEXIST;
  return MeansAbsent(errno) ? rename(from, to) : -1;
}

enum class EntryKind { kFile, kFolder, kOther };

// Most file systems give the kind along with the name; a link has to be followed.
EntryKind KindOf(DIR* folder, const dirent& entry) {
  if (entry.d_type == DT_DIR) return EntryKind::kFolder;
  if (entry.d_type == DT_REG) return EntryKind::kFile;
  struct stat status;
  if ((entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN) ||
      fstatat(dirfd(folder), entry.d_name, &status, 0) != 0) {
    return EntryKind::kOther;
  }
  if (S_ISDIR(status.st_mode)) return EntryKind::kFolder;
  return S_ISREG(status.st_mode) ? EntryKind::kFile : EntryKind::kOther;
}

}  // namespace

bool MeansAbsent(int error) {
  return error == ENOENT || error == ENOTDIR || error == ENAMETOOLONG;
}

std::unique_ptr<File> PosixFiles::OpenForReading(std::u16string_view path) {
  const int descriptor = Open(path, O_RDONLY);
  if (descriptor < 0) return nullptr;
  auto file = std::make_unique<PosixFile>(descriptor);
  struct stat status;
  if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) return nullptr;
  return file;
}

std::unique_ptr<File> PosixFiles::Create(std::u16string_view path) {
  const int descriptor = Open(path, O_WRONLY | O_CREAT | O_TRUNC);
  if (descriptor < 0) return nullptr;
  return std::make_unique<PosixFile>(descriptor, *ToHostPath(path));
}

std::unique_ptr<File> PosixFiles::CreateInPlace(std::u16string_view path) {
  Remove(path);
  const int descriptor = Open(path, O_WRONLY | O_CREAT | O_EXCL);
  if (descriptor < 0) return nullptr;
  return std::make_unique<PosixFile>(descriptor, *ToHostPath(path));
}

void PosixFiles::Narrow(std::u16string_view path) {
  const auto hostPath = ToHostPath(path);
  struct stat status;
  if (!hostPath || stat(hostPath->c_str(), &status) != 0 || status.st_uid != geteuid()) return;
  if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
    chmod(hostPath->c_str(), status.st_mode & S_IRWXU);
  }
}

std::optional<uint32_t> PosixFiles::Attributes(std::u16string_view path) {
  const auto hostPath = ToHostPath(path);
  struct stat status;
  if (!hostPath) return {};
  if (stat(hostPath->c_str(), &status) != 0) {
    return MeansAbsent(errno) ? std::nullopt : std::optional(kAttributeUnknown);
  }
  uint32_t attributes = 0;
  if ((status.st_mode & S_IWUSR) == 0) attributes |= kAttributeReadOnly;
  if (IsHiddenName(LastName(*hostPath))) attributes |= kAttributeHidden;
  if (S_ISDIR(status.st_mode)) attributes |= kAttributeDirectory;
  return attributes;
}

bool PosixFiles::IsSameFile(std::u16string_view a, std::u16string_view b) {
  const auto hostA = ToHostPath(a);
  const auto hostB = ToHostPath(b);
  struct stat statusA, statusB;
  return hostA && hostB && stat(hostA->c_str(), &statusA) == 0 &&
         stat(hostB->c_str(), &statusB) == 0 && statusA.st_dev == statusB.st_dev &&
         statusA.st_ino == statusB.st_ino;
}

std::optional<std::u16string> PosixFiles::FollowLink(std::u16string_view path) {
  const auto hostPath = ToHostPath(path);
  std::error_code error;
  if (!hostPath || !std::filesystem::is_symlink(*hostPath, error)) return std::u16string(path);
  const std::string target = std::filesystem::canonical(*hostPath, error).string();
  return error ? std::nullopt : FromHostPath(target);
}

bool PosixFiles::Remove(std::u16string_view path) {
  const auto hostPath = ToHostPath(path);
  return hostPath && unlink(hostPath->c_str()) == 0;
}

bool PosixFiles::RemoveFolder(std::u16string_view path) {
  const auto hostPath = ToHostPath(path);
  if (!hostPath) return false;
  if (rmdir(hostPath->c_str()) == 0) return true;
  const bool isLink = errno == ENOTDIR && (Attributes(path).value_or(0) & kAttributeDirectory) != 0;
  return isLink && unlink(hostPath->c_str()) == 0;
}

bool PosixFiles::Rename(std::u16string_view from, std::u16string_view to) {
  const auto hostFrom = ToHostPath(from);
  const auto hostTo = ToHostPath(to);
  if (!hostFrom || !hostTo || rename(hostFrom->c_str(), hostTo->c_str()) != 0) return false;
  SyncFolderOf(*hostTo);
  return true;
}

bool PosixFiles::RenameToFree(std::u16string_view from, std::u16string_view to) {
  const auto hostFrom = ToHostPath(from);
  const auto hostTo = ToHostPath(to);
  if (!hostFrom || !hostTo) return false;
  const char* const newName = hostTo->c_str();
  int result = renameat2(AT_FDCWD, hostFrom->c_str(), AT_FDCWD, newName, RENAME_NOREPLACE);
  if (result != 0 && (errno == EINVAL || errno == ENOSYS)) {
    result = RenameAfterLook(hostFrom->c_str(), newName);
  }
  if (result == 0) SyncFolderOf(*hostTo);
  return result == 0;
}

bool PosixFiles::KeepAs(std::u16string_view from, std::u16string_view to) {
  const auto hostFrom = ToHostPath(from);
  const auto hostTo = ToHostPath(to);
  if (!hostFrom || !hostTo) return false;
  if (link(hostFrom->c_str(), hostTo->c_str()) != 0) {
    const bool knowsNoLinks =
        errno == EPERM || errno == EOPNOTSUPP || errno == ENOSYS || errno == EMLINK;
    return knowsNoLinks && RenameToFree(from, to);
  }
  SyncFolderOf(*hostTo);
  return true;
}

bool PosixFiles::SyncToDisk(std::u16string_view path) {
  const auto file = OpenForReading(path);
  if (!file || !file->Sync()) return false;
  SyncFolderOf(*ToHostPath(path));
  return true;
}

bool PosixFiles::MakeFolder(std::u16string_view path) {
  const auto hostPath = ToHostPath(path);
  return hostPath && mkdir(hostPath->c_str(), S_IRWXU) == 0;
}

std::optional<std::vector<FolderEntry>> PosixFiles::List(std::u16string_view folder) {
  const auto hostPath = ToHostPath(folder);
  if (!hostPath) return {};
  const std::unique_ptr<DIR, int (*)(DIR*)> open(opendir(hostPath->c_str()), closedir);
  if (!open) return {};
  std::vector<FolderEntry> entries;
  while (const dirent* entry = readdir(open.get())) {
    if (IsDots(entry->d_name)) continue;
    const EntryKind kind = KindOf(open.get(), *entry);
    auto name = kind == EntryKind::kOther ? std::nullopt : FromHostPath(entry->d_name);
    if (name) entries.push_back({std::move(*name), kind == EntryKind::kFolder});
  }
  return entries;
}

}  // namespace platform
