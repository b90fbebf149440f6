// General helpers on 16-bit texts: digit tests, the one-line escape form, the sorted search.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace core {

// 0 if every character is an ASCII digit, -101 for an empty text, -102 otherwise.
int AllDigits(std::u16string_view text);

// 0 if the first character is "+", "-" or an ASCII digit and the rest are digits, so that a lone
// sign passes; -101 otherwise and for an empty text.
int IsSignedInteger(std::u16string_view text);

// The leading decimal integer of `text`, an optional sign first; 0 if there is none. Wraps to 32
// bits.
int32_t ToInt32(std::u16string_view text);

// The decimal digits of a number, at least `width` of them, filled up with zeros.
std::u16string ZeroPadded(int value, int width);

// Six decimals and a point, whatever the user's locale: numbers of a column, degrees of a position.
std::u16string FloatText(double value);

// A number as its 32 bits in lower-case hexadecimal.
std::u16string Hex(int32_t number);

// `text` with the full-width forms of ASCII, the ideographic space and the minus sign as ASCII,
// each in its place.
std::u16string NarrowForms(std::u16string_view text);

// `text` with quotation marks, backslashes, tabs and line breaks written as \", \', \\, \t, \n, \r
// and other characters below U+0020 as \x and four digits.
std::u16string EscapeText(std::u16string_view text);

// Reads what EscapeText wrote. \x takes up to four ASCII letters or digits, converted in base 16 as
// far as they go. An unknown escape letter is dropped and the next character is taken as an escape
// letter too (kept on purpose: \qn reads as LF).
std::u16string UnescapeText(std::u16string_view text);

enum class SearchMode { kUpperBound = 0, kLowerBound = 1 };

// The one binary search of the program. `compare(i)` says how the key compares to element i: below
// 0 if the key is smaller, 0 if equal, above 0 if greater. kLowerBound answers the first index
// whose element is not below the key, kUpperBound the first index whose element is above it; both
// answer `count` if there is none, and 0 on an empty table.
template <typename Compare>
size_t SortedSearch(size_t count, SearchMode mode, Compare compare) {
  size_t low = 0;
  size_t high = count;
  while (low < high) {
    const size_t middle = low + (high - low) / 2;
    const int order = compare(middle);
    if (order > 0 || (order == 0 && mode == SearchMode::kUpperBound)) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return low;
}

}  // namespace core
