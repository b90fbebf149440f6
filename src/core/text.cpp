// The escape form is written and read by one table, and read by a machine of three states.
#include "core/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

#include "core/characters.h"

namespace core {
namespace {

constexpr struct {
  char16_t character;
  char16_t letter;  // after the backslash
} kEscapes[] = {
    {u'\\', u'\\'}, {u'"', u'"'}, {u'\'', u'\''}, {u'\t', u't'}, {u'\n', u'n'}, {u'\r', u'r'},
};
constexpr size_t kMaxHexDigits = 4;

// 16 for what is no hexadecimal digit.
int HexValue(char16_t c) {
  if (IsDigit(c)) return c - u'0';
  if (c >= u'a' && c <= u'f') return c - u'a' + 10;
  if (c >= u'A' && c <= u'F') return c - u'A' + 10;
  return 16;
}

// Base 16 as far as the digits go; at most kMaxHexDigits of them, so that 16 bits hold the value.
char16_t FromHex(std::u16string_view digits) {
  unsigned value = 0;
  for (const char16_t c : digits) {
    const int digit = HexValue(c);
    if (digit == 16) break;
    value = value * 16 + static_cast<unsigned>(digit);
  }
  return static_cast<char16_t>(value);
}

// One character as EscapeText writes it.
void AppendEscaped(char16_t c, std::u16string& out) {
  static constexpr std::u16string_view kHexDigits = u"0123456789abcdef";
  for (const auto& escape : kEscapes) {
    if (c != escape.character) continue;
    out += u'\\';
    out += escape.letter;
    return;
  }
  if (c >= u' ') {
    out += c;
    return;
  }
  out += u"\\x";
  for (int shift = 12; shift >= 0; shift -= 4) out += kHexDigits[c >> shift & 0xF];
}

// False if `letter` is none of the table's.
bool AppendUnescaped(char16_t letter, std::u16string& out) {
  for (const auto& escape : kEscapes) {
    if (letter != escape.letter) continue;
    out += escape.character;
    return true;
  }
  return false;
}

}  // namespace

int AllDigits(std::u16string_view text) {
  if (text.empty()) return -101;
  return std::all_of(text.begin(), text.end(), IsDigit) ? 0 : -102;
}

int IsSignedInteger(std::u16string_view text) {
  if (text.empty()) return -101;
  const char16_t first = text.front();
  if (first != u'+' && first != u'-' && !IsDigit(first)) return -101;
  return std::all_of(text.begin() + 1, text.end(), IsDigit) ? 0 : -101;
}

int32_t ToInt32(std::u16string_view text) {
  const bool negative = text.starts_with(u'-');
  if (negative || text.starts_with(u'+')) text.remove_prefix(1);
  uint32_t value = 0;  // unsigned, so that it wraps
  for (const char16_t c : text) {
    if (!IsDigit(c)) break;
    value = value * 10 + static_cast<uint32_t>(c - u'0');
  }
  return static_cast<int32_t>(negative ? 0 - value : value);
}

std::u16string ZeroPadded(int value, int width) {
  const std::string digits = std::to_string(value);
  std::u16string out(digits.begin(), digits.end());
  const auto wanted = static_cast<size_t>(std::max(width, 0));
  if (out.size() < wanted) out.insert(value < 0 ? 1 : 0, wanted - out.size(), u'0');
  return out;
}

std::u16string NarrowForms(std::u16string_view text) {
  constexpr char16_t kFirstWide = u'！', kLastWide = u'～', kWideSpace = u'　', kMinus = u'−';
  std::u16string out(text);
  for (char16_t& c : out) {
    if (c >= kFirstWide && c <= kLastWide) c = static_cast<char16_t>(c - kFirstWide + u'!');
    if (c == kWideSpace) c = u' ';
    if (c == kMinus) c = u'-';
  }
  return out;
}

std::u16string FloatText(double value) {
  // A sign, the digits of the largest double, a point and six decimals.
  std::array<char, std::numeric_limits<double>::max_exponent10 + 10> text;
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, 6);
  return std::u16string(text.data(), end.ptr);
}

std::u16string Hex(int32_t number) {
  char digits[8];
  const auto end =
      std::to_chars(digits, digits + sizeof digits, static_cast<uint32_t>(number), 16).ptr;
  return std::u16string(digits, end);
}

std::u16string EscapeText(std::u16string_view text) {
  std::u16string out;
  out.reserve(text.size());
  for (const char16_t c : text) AppendEscaped(c, out);
  return out;
}

std::u16string UnescapeText(std::u16string_view text) {
  enum class State { kPlain, kEscape, kHex };
  State state = State::kPlain;
  size_t hexBegin = 0;
  std::u16string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    switch (state) {
      case State::kPlain:
        if (c == u'\\') {
          state = State::kEscape;
        } else {
          out += c;
        }
        break;
      case State::kEscape:
        // Kept on purpose: a letter that is none of these is dropped, and the one after it is
        // taken as an escape letter too.
        if (c == u'x') {
          state = State::kHex;
          hexBegin = i + 1;
        } else if (AppendUnescaped(c, out)) {
          state = State::kPlain;
        }
        break;
      case State::kHex:
        if (IsLetterOrDigit(c) && i + 1 - hexBegin < kMaxHexDigits) break;
        if (!IsLetterOrDigit(c)) --i;  // read again in kPlain
        out += FromHex(text.substr(hexBegin, i + 1 - hexBegin));
        state = State::kPlain;
        break;
    }
  }
  if (state == State::kHex) out += FromHex(text.substr(hexBegin));
  return out;
}

}  // namespace core
