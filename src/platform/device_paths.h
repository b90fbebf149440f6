// Paths inside the program have the device's form: 16-bit text, backslashes, one root "\". The
// host's root is that root: \home\a\user.sdf is /home/a/user.sdf. Only this room converts.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

// The host's path, in UTF-8. None if the text holds a NUL or half a surrogate pair, which no file
// name of the host can.
std::optional<std::string> ToHostPath(std::u16string_view devicePath);
// None if the path is not UTF-8 or a name in it holds a backslash: the program cannot name it.
std::optional<std::u16string> FromHostPath(std::string_view hostPath);

// A path as its user typed it: a slash counts as a backslash.
std::u16string FromTypedPath(std::u16string_view typed);

}  // namespace platform
