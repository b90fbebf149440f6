// Paths of the device's form: joining, splitting, making folders.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace core {

// A path, a folder or a name has at most this many characters, one less than its buffer of old.
inline constexpr size_t kMaxPath = 259;

// The folder of the program's own file with its final backslash, followed by `fileName`, cut to 260
// characters. Without a backslash in the program's path: "\<path>\<name>"; with an empty path:
// "\<name>".
std::u16string JoinModulePath(std::u16string_view fileName);

// A path as its user typed it, made one that leads to the same place from any working folder: a
// slash counts as a backslash, "~" is the user's home folder, and what has no root lies beside the
// program. An empty path stays empty. None for a drive of another system ("C:\x"), and for "~"
// where no home folder is known.
std::optional<std::u16string> RootedPath(std::u16string_view typed);
// A settings file gives the path back as it is: code page 932 holds all of it, and no line ends in
// it.
bool IsStorablePath(std::u16string_view path);

// What stands before the last backslash, and after it. Without one all of the path is the name.
std::u16string FolderOf(std::u16string_view path);
std::u16string NameOf(std::u16string_view path);
// Splits at the last backslash, which belongs to neither part. 0; -110 if there is none; -101 if
// either part has more than kMaxPath characters. The outputs are written on success only.
int SplitPath(std::u16string_view path, std::u16string& folder, std::u16string& name);

// What stands after the last "."; empty if there is no point or it is the last character.
std::u16string FileExtension(std::u16string_view fileName);

// The path itself if nothing stands there, else "name_2.ext" and so on beside it; the last of them,
// taken or not, is 1000.
std::u16string FreePath(std::u16string_view path);

// Makes a folder and its parents. 0 if it exists or its making was tried (the result of the making
// itself is not examined); -10 if the path has more than kMaxPath characters, or fewer than 2 and
// is not "\"; -11 if a file stands there; -12 if it has no backslash; -13 if a parent failed.
int EnsureFolder(std::u16string_view path);

}  // namespace core
