#include "fence.h"

#include <sqlite3.h>

#include <algorithm>
#include <filesystem>

#include "platform/device_paths.h"

namespace hands {
namespace {

namespace fs = std::filesystem;

fs::path root;
sqlite3_vfs fencedEngine;
sqlite3_vfs* engine = nullptr;

bool IsBelow(const fs::path& path, const fs::path& folder) {
  return std::mismatch(folder.begin(), folder.end(), path.begin(), path.end()).first ==
         folder.end();
}

fs::path Plain(std::string_view hostPath) {
  fs::path path = fs::path(hostPath).lexically_normal();
  return path.has_filename() || path == path.root_path() ? path : path.parent_path();
}

// What the host cannot name, its file system refuses by itself.
bool IsInside(std::u16string_view path) {
  const auto hostPath = platform::ToHostPath(path);
  return !hostPath || IsBelow(Plain(*hostPath), root);
}

// The way from the host's root to the folder stays, for who climbs out of it.
bool LeadsHere(std::u16string_view path) {
  const auto hostPath = platform::ToHostPath(path);
  return hostPath && IsBelow(root, Plain(*hostPath));
}

int OpenFenced(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
  if (name != nullptr && !IsBelow(Plain(name), root)) {
    file->pMethods = nullptr;
    return SQLITE_CANTOPEN;
  }
  return engine->xOpen(engine, name, file, flags, outFlags);
}

}  // namespace

Fence::Fence(const std::string& folder) {
  root = Plain(folder);
  platform::SetFiles(this);
  engine = sqlite3_vfs_find(nullptr);
  fencedEngine = *engine;
  fencedEngine.zName = "fenced";
  fencedEngine.xOpen = OpenFenced;
  sqlite3_vfs_register(&fencedEngine, 1);
}

std::unique_ptr<platform::File> Fence::OpenForReading(std::u16string_view path) {
  return IsInside(path) ? PosixFiles::OpenForReading(path) : nullptr;
}

std::unique_ptr<platform::File> Fence::Create(std::u16string_view path) {
  return IsInside(path) ? PosixFiles::Create(path) : nullptr;
}

std::unique_ptr<platform::File> Fence::CreateInPlace(std::u16string_view path) {
  return IsInside(path) ? PosixFiles::CreateInPlace(path) : nullptr;
}

void Fence::Narrow(std::u16string_view path) {
  if (IsInside(path)) PosixFiles::Narrow(path);
}

std::optional<uint32_t> Fence::Attributes(std::u16string_view path) {
  return IsInside(path) || LeadsHere(path) ? PosixFiles::Attributes(path) : std::nullopt;
}

bool Fence::IsSameFile(std::u16string_view a, std::u16string_view b) {
  return Attributes(a) && Attributes(b) && PosixFiles::IsSameFile(a, b);
}

std::optional<std::u16string> Fence::FollowLink(std::u16string_view path) {
  return IsInside(path) ? PosixFiles::FollowLink(path) : std::u16string(path);
}

bool Fence::Remove(std::u16string_view path) {
  return IsInside(path) && PosixFiles::Remove(path);
}

bool Fence::RemoveFolder(std::u16string_view path) {
  return IsInside(path) && !LeadsHere(path) && PosixFiles::RemoveFolder(path);
}

bool Fence::Rename(std::u16string_view from, std::u16string_view to) {
  return IsInside(from) && IsInside(to) && PosixFiles::Rename(from, to);
}

bool Fence::RenameToFree(std::u16string_view from, std::u16string_view to) {
  return IsInside(from) && IsInside(to) && PosixFiles::RenameToFree(from, to);
}

bool Fence::KeepAs(std::u16string_view from, std::u16string_view to) {
  return IsInside(from) && IsInside(to) && PosixFiles::KeepAs(from, to);
}

bool Fence::SyncToDisk(std::u16string_view path) {
  return IsInside(path) && PosixFiles::SyncToDisk(path);
}

bool Fence::MakeFolder(std::u16string_view path) {
  return IsInside(path) && PosixFiles::MakeFolder(path);
}

std::optional<std::vector<platform::FolderEntry>> Fence::List(std::u16string_view folder) {
  if (IsInside(folder)) {
    auto entries = PosixFiles::List(folder);
    if (entries) std::ranges::sort(*entries, {}, &platform::FolderEntry::name);
    return entries;
  }
  if (!LeadsHere(folder)) return {};
  auto next = root.begin();
  const fs::path here = Plain(*platform::ToHostPath(folder));
  std::advance(next, std::distance(here.begin(), here.end()));
  return std::vector{platform::FolderEntry{*platform::FromHostPath(next->string()), true}};
}

}  // namespace hands
