// What the bytes of a text file mean.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/files.h"

namespace core {

enum class Encoding {
  kCodePage,  // the system code page, see platform/code_page.h
  kUtf8       // see platform/utf.h
};

// Stands before the text of a file as the sign of UTF-8.
inline constexpr char16_t kByteOrderMark = 0xFEFF;

// In place of `text`. False if any of the bytes mean nothing, of which the text then holds what the
// encoding has for them.
bool Decode(std::string_view bytes, Encoding encoding, std::u16string& text);
// In place of `bytes`. False if any character was replaced, because the encoding lacks it.
bool Encode(std::u16string_view text, Encoding encoding, std::string& bytes);

// How many of the bytes, from the first on, can be decoded before the bytes after them are known.
size_t WholeLength(std::string_view bytes, Encoding encoding);

// Reads an open file to its end, a block at a time. UTF-8 if it begins with a byte order mark, or
// if it is well-formed and has bytes that mean nothing in the code page; otherwise the code page.
// None on a read failure.
std::optional<Encoding> EncodingOf(platform::File& file);

}  // namespace core
