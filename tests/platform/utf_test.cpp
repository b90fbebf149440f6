#include "platform/utf.h"

#include <gtest/gtest.h>

namespace {

using platform::ToUtf16;

TEST(Utf, ConvertsBothWays) {
  const std::tuple<const char16_t*, const char*, const char*> rows[] = {
      {u"1234567", "1234567", "one short of a run"},
      {u"12345678é", "12345678\xC3\xA9", "a run, then two bytes"},
      {u"1234567é xxxxxxxx", "1234567\xC3\xA9 xxxxxxxx", "no run at first, one later"},
      {u"\x7F\x80\u07FF\u0800\uFFFF", "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF", "borders"},
      {u"\U00010000\U0010FFFF", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", "first and last pair"},
      {u"\xD83Dx\xDE00\xD83D", "\xED\xA0\xBDx\xED\xB8\x80\xED\xA0\xBD", "halves of a pair"},
  };
  for (const auto& [utf16, utf8, why] : rows) {
    SCOPED_TRACE(why);
    std::string bytes = "in front ";
    std::u16string text = u"in front ";
    platform::AppendUtf8(utf16, bytes);
    platform::AppendUtf16(utf8, text);
    EXPECT_EQ(bytes, std::string("in front ") + utf8);
    EXPECT_EQ(text, std::u16string(u"in front ") + utf16);
  }
}

TEST(Utf, ReadsOneReplacementForEachMalformedByte) {
  const std::tuple<std::string_view, const char16_t*, const char*> rows[] = {
      {"a\x80z", u"a\uFFFDz", "a continuation alone"},
      {"\xC0\xAF", u"\uFFFD\uFFFD", "two bytes for an ASCII character"},
      {"\xE0\x9F\xBF", u"\uFFFD\uFFFD\uFFFD", "three bytes for what takes two"},
      {"\xF0\x8F\xBF\xBF", u"\uFFFD\uFFFD\uFFFD\uFFFD", "four bytes for what takes three"},
      {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD", "beyond the last character"},
      {"\xE4\xBC", u"\uFFFD\uFFFD", "cut off"},
      {"\xE4\xBCz\xFF", u"\uFFFD\uFFFDz\uFFFD", "broken off, and no lead at all"},
  };
  for (const auto& [bytes, text, why] : rows) {
    SCOPED_TRACE(why);
    EXPECT_EQ(ToUtf16(bytes), text);
  }
}

}  // namespace
