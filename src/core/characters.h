// The character classes of the program's text forms: the ASCII classes, those of the extended items
// and those of the action text. A blank is U+0020 alone. The gaps in the ranges belong to the
// forms: what falls into one is refused.
#pragma once

namespace core {

constexpr bool IsBlank(char16_t c) {
  return c == u' ';
}

constexpr bool IsDigit(char16_t c) {
  return c >= u'0' && c <= u'9';
}

constexpr bool IsLetter(char16_t c) {
  return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

constexpr bool IsLetterOrDigit(char16_t c) {
  return IsLetter(c) || IsDigit(c);
}

// Capital letters as small ones.
template <typename Char>
constexpr Char FoldAscii(Char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<Char>(c - 'A' + 'a') : c;
}

// The name of an extended item: a letter, then these.
constexpr bool IsItemNameCharacter(char16_t c) {
  return IsLetterOrDigit(c) || c == u'_';
}

// Punctuation, kana, kanji and full-width forms, as labels and values of extended items share them.
constexpr bool IsWideItemCharacter(char16_t c) {
  return (c >= 0x2000 && c <= 0x303D) || (c >= 0x3041 && c <= 0x30FF) ||
         (c >= 0x3190 && c <= 0x33FE) || (c >= 0x3402 && c <= 0x3FDC) ||
         (c >= 0x4039 && c <= 0x4D77) || (c >= 0x4E00 && c <= 0x9FA5) ||
         (c >= 0xFF01 && c <= 0xFFEE);
}

constexpr bool IsLabelCharacter(char16_t c) {
  return IsItemNameCharacter(c) || IsWideItemCharacter(c);
}

// A character of a quoted value that is written as itself.
constexpr bool IsValueCharacter(char16_t c) {
  return (c >= 0x20 && c <= 0x7E) || (c >= 0x300 && c <= 0x1F73) || IsWideItemCharacter(c);
}

// Kept on purpose: the range begins after hiragana and nearly all katakana, so that a name in
// kanji is one and a name in kana is none.
constexpr bool IsIdentifierStart(char16_t c) {
  return IsLetter(c) || c == u'_' || c >= 0x30FE;
}

constexpr bool IsIdentifierCharacter(char16_t c) {
  return IsIdentifierStart(c) || IsDigit(c);
}

}  // namespace core
