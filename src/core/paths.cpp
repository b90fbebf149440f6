// Lengths are those of the device: a path that its buffers could not hold is refused or cut.
#include "core/paths.h"

#include <algorithm>
#include <utility>

#include "core/text.h"
#include "platform/code_page.h"
#include "platform/device_paths.h"
#include "platform/files.h"
#include "platform/host.h"

namespace core {
namespace {

constexpr std::u16string_view kRoot = u"\\";
constexpr size_t kMaxModulePath = 260;
constexpr int kLastNumber = 1000;  // beyond them the disk is at fault, and no name free

bool BeginsWithDrive(std::u16string_view path) {
  return path.size() >= 2 && path[1] == u':' &&
         ((path[0] >= u'A' && path[0] <= u'Z') || (path[0] >= u'a' && path[0] <= u'z'));
}

// `rest` is empty or begins with a backslash.
std::optional<std::u16string> InHomeFolder(std::u16string_view rest) {
  std::u16string home = platform::host().HomeFolder();
  if (!home.starts_with(u'\\')) return {};
  while (home.ends_with(u'\\')) home.pop_back();
  home += rest;
  return home.empty() ? std::u16string(kRoot) : home;
}

}  // namespace

std::u16string JoinModulePath(std::u16string_view fileName) {
  std::u16string path = platform::host().ProgramPath();
  const size_t backslash = path.rfind(u'\\');
  if (backslash != std::u16string::npos) {
    path.resize(backslash + 1);
  } else if (path.empty()) {
    path = kRoot;
  } else {
    path.insert(0, kRoot).append(kRoot);
  }
  path += fileName;
  if (path.size() > kMaxModulePath) path.resize(kMaxModulePath);
  return path;
}

std::optional<std::u16string> RootedPath(std::u16string_view typed) {
  std::u16string path = platform::FromTypedPath(typed);
  if (path.empty() || path.starts_with(kRoot)) return path;
  if (BeginsWithDrive(path)) return {};
  if (path == u"~" || path.starts_with(u"~\\")) return InHomeFolder(path.substr(1));
  return JoinModulePath(u"") + path;
}

bool IsStorablePath(std::u16string_view path) {
  const bool isOneLine =
      std::none_of(path.begin(), path.end(), [](char16_t c) { return c < u' '; });
  return isOneLine && platform::DecodeCodePage(platform::EncodeCodePage(path)) == path;
}

std::u16string FolderOf(std::u16string_view path) {
  const size_t backslash = path.rfind(u'\\');
  return std::u16string(path.substr(0, backslash == path.npos ? 0 : backslash));
}

std::u16string NameOf(std::u16string_view path) {
  return std::u16string(path.substr(path.rfind(u'\\') + 1));
}

int SplitPath(std::u16string_view path, std::u16string& folder, std::u16string& name) {
  if (path.find(u'\\') == path.npos) return -110;
  std::u16string before = FolderOf(path);
  std::u16string after = NameOf(path);
  if (before.size() > kMaxPath || after.size() > kMaxPath) return -101;
  folder = std::move(before);
  name = std::move(after);
  return 0;
}

std::u16string FileExtension(std::u16string_view fileName) {
  const size_t point = fileName.rfind(u'.');
  if (point == std::u16string_view::npos) return {};
  return std::u16string(fileName.substr(point + 1));
}

std::u16string FreePath(std::u16string_view path) {
  const size_t name = path.rfind(u'\\') + 1;
  const size_t point = std::min(path.rfind(u'.'), path.size());
  const size_t end = point < name ? path.size() : point;
  std::u16string free(path);
  for (int number = 2; number <= kLastNumber && platform::files().Exists(free); ++number) {
    free = std::u16string(path.substr(0, end)) + u'_' + ZeroPadded(number, 1);
    free += path.substr(end);
  }
  return free;
}

int EnsureFolder(std::u16string_view path) {
  if (path.size() > kMaxPath || (path.size() < 2 && path != kRoot)) return -10;
  if (const auto attributes = platform::files().Attributes(path)) {
    return (*attributes & platform::kAttributeDirectory) != 0 ? 0 : -11;
  }
  const size_t backslash = path.rfind(u'\\');
  if (backslash == std::u16string_view::npos) return -12;
  const std::u16string_view parent = path.substr(0, backslash);
  if (EnsureFolder(parent.empty() ? kRoot : parent) != 0) return -13;
  platform::files().MakeFolder(path);
  return 0;
}

}  // namespace core
