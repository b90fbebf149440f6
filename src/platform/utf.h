// UTF-8 to UTF-16 and back, for what lives outside the program in UTF-8: host paths, the data file.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

// Half a surrogate pair is written as the three bytes that its number would take, and such bytes
// are read back as that half: every 16-bit text survives the way there and back. Other malformed
// bytes read as U+FFFD, one for each byte, and AppendUtf16 answers false.
void AppendUtf8(std::u16string_view text, std::string& out);
bool AppendUtf16(std::string_view bytes, std::u16string& out);

// How many of the bytes, from the first on, don't end in the beginning of a character: those can be
// read before the bytes after them are known.
size_t WholeUtf8Length(std::string_view bytes);

inline std::string ToUtf8(std::u16string_view text) {
  std::string out;
  AppendUtf8(text, out);
  return out;
}

inline std::u16string ToUtf16(std::string_view bytes) {
  std::u16string out;
  AppendUtf16(bytes, out);
  return out;
}

}  // namespace platform
