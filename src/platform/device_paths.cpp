// Only what the host can name and the program can name alike passes; everything else is refused
// here, so that no file is ever opened under a name that merely resembles the one asked for.
#include "platform/device_paths.h"

#include <algorithm>

#include "platform/conversion.h"
#include "platform/utf.h"

namespace platform {
namespace {

bool HasHalfPair(std::u16string_view text) {
  for (size_t i = 0; i < text.size(); ++i) {
    if (IsHighHalf(text[i]) && i + 1 < text.size() && IsLowHalf(text[i + 1])) {
      ++i;
    } else if (IsHighHalf(text[i]) || IsLowHalf(text[i])) {
      return true;
    }
  }
  return false;
}

}  // namespace

std::optional<std::string> ToHostPath(std::u16string_view devicePath) {
  if (devicePath.find(u'\0') != std::u16string_view::npos || HasHalfPair(devicePath)) return {};
  std::string path = ToUtf8(devicePath);
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}

std::optional<std::u16string> FromHostPath(std::string_view hostPath) {
  if (hostPath.find('\\') != std::string_view::npos) return {};
  std::u16string path = ToUtf16(hostPath);
  // What isn't UTF-8 doesn't come back as it was, save for halves of pairs.
  if (HasHalfPair(path) || ToUtf8(path) != hostPath) return {};
  std::replace(path.begin(), path.end(), u'/', u'\\');
  return path;
}

std::u16string FromTypedPath(std::u16string_view typed) {
  std::u16string path(typed);
  std::replace(path.begin(), path.end(), u'/', u'\\');
  return path;
}

}  // namespace platform
