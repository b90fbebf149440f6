// Finding the end of a text between quotation marks, with the escapes of EscapeText inside. What
// may stand there unescaped is the caller's to say; UnescapeText reads what was found.
#pragma once

#include <cstddef>
#include <string_view>

#include "core/characters.h"

namespace core {

enum class QuotedEnd {
  kClosed,        // on the closing quotation mark
  kBadCharacter,  // on a character that may not stand here
  kBadEscape,     // on the character after a backslash that begins no escape
  // The text ended:
  kInText,
  kInEscape,  // after a backslash
  kInHex      // among the digits of a \x, where more could follow
};

struct QuotedScan {
  QuotedEnd end;
  bool escaped = false;  // a backslash was met
};

inline bool IsEscapeLetter(char16_t c) {
  return std::u16string_view(u"nrt\\\"'").find(c) != std::u16string_view::npos;
}

// From the first character after the opening quotation mark on; the cursor ends where the result
// says. A \x takes up to four ASCII letters or digits, or none.
template <typename IsAllowed>
QuotedScan ScanQuoted(std::u16string_view text, size_t& cursor, IsAllowed isAllowed) {
  constexpr int kMaxHexDigits = 4;
  QuotedEnd state = QuotedEnd::kInText;
  bool escaped = false;
  int hexDigits = 0;
  for (; cursor < text.size(); ++cursor) {
    const char16_t c = text[cursor];
    if (state == QuotedEnd::kInEscape) {
      if (c != u'x' && !IsEscapeLetter(c)) return {QuotedEnd::kBadEscape, true};
      state = c == u'x' ? QuotedEnd::kInHex : QuotedEnd::kInText;
      hexDigits = 0;
      continue;
    }
    if (state == QuotedEnd::kInHex && IsLetterOrDigit(c)) {
      if (++hexDigits == kMaxHexDigits) state = QuotedEnd::kInText;
      continue;
    }
    state = QuotedEnd::kInText;
    if (c == u'"') return {QuotedEnd::kClosed, escaped};
    if (c == u'\\') {
      state = QuotedEnd::kInEscape;
      escaped = true;
    } else if (!isAllowed(c)) {
      return {QuotedEnd::kBadCharacter, escaped};
    }
  }
  return {state, escaped};
}

}  // namespace core
