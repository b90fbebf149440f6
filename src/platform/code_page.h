// Code page 932, the system code page of settings and exchange files, by a static table of our own:
// exactly as Windows reads and writes it, on every machine and under every locale.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

// Every single byte and every valid pair gives its character, the user-defined area F040..F9FC
// included (U+E000..U+E757). A lead byte with an invalid or missing second byte gives U+30FB, the
// table's default character; it takes the second byte along unless that is NUL.
std::u16string DecodeCodePage(std::string_view bytes);
// The same in place of `text`. False if any of the bytes gave the default character because they
// mean nothing.
bool DecodeCodePage(std::string_view bytes, std::u16string& text);

// How many of the bytes, from the first on, don't end in the first half of a pair: those can be
// decoded before the bytes after them are known.
size_t WholeLength(std::string_view bytes);

// A letter and a combining mark after it give their composed letter where the table has it. Best
// fits of the table included (é gives e). A character that the table lacks gives one "?", a
// surrogate pair counts as one character, half a pair too.
std::string EncodeCodePage(std::u16string_view text);
// The same in place of `bytes`. False if any character was replaced by another one.
bool EncodeCodePage(std::u16string_view text, std::string& bytes);

}  // namespace platform
