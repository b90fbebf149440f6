#include "platform/program_folder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

namespace platform {
namespace {

namespace fs = std::filesystem;

// What a package manager looks after, root's own programs included.
constexpr const char* kSystemFolders[] = {"/app", "/bin",  "/gnu",  "/lib", "/nix",
                                          "/opt", "/sbin", "/snap", "/usr"};

bool IsBelow(const fs::path& path, const fs::path& folder) {
  return std::mismatch(folder.begin(), folder.end(), path.begin(), path.end()).first ==
         folder.end();
}

bool IsUsersOwn(const fs::path& folder) {
  const auto holds = [&](const char* system) { return IsBelow(folder, system); };
  if (std::ranges::any_of(kSystemFolders, holds)) return false;
  struct stat status {};
  return stat(folder.c_str(), &status) == 0 && status.st_uid == geteuid();
}

}  // namespace

std::optional<std::string> UsersFolder(const ProgramPlace& place) {
  const fs::path beside = fs::path(place.programFile).parent_path();
  if (IsUsersOwn(beside)) return beside.string();
  if (fs::path(place.dataHome).is_absolute()) return fs::path(place.dataHome) / "morvenly";
  if (fs::path(place.home).is_absolute()) return fs::path(place.home) / ".local/share/morvenly";
  return std::nullopt;
}

bool MakeFolders(const std::string& folder) {
  std::error_code error;
  fs::create_directories(folder, error);
  return fs::is_directory(folder, error);
}

bool IsWritable(const std::string& folder) {
  return access(folder.c_str(), W_OK | X_OK) == 0;
}

}  // namespace platform
