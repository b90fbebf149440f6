#include "core/text.h"

#include <gtest/gtest.h>

#include "platform/utf.h"

namespace {

using namespace core;
using namespace std::string_view_literals;

TEST(Text, TellsDigitsAndIntegers) {
  const std::tuple<const char16_t*, int, int, int32_t> rows[] = {
      {u"", -101, -101, 0},    {u"0815", 0, 0, 815},     {u"-", -102, 0, 0},
      {u"+5", -102, 0, 5},     {u"-12", -102, 0, -12},   {u"+-5", -102, -101, 0},
      {u" 12", -102, -101, 0}, {u"１２", -102, -101, 0}, {u"2147483648", 0, 0, INT32_MIN},
  };
  for (const auto& [text, allDigits, isSigned, value] : rows) {
    SCOPED_TRACE(testing::PrintToString(text));
    EXPECT_EQ(AllDigits(text), allDigits);
    EXPECT_EQ(IsSignedInteger(text), isSigned);
    EXPECT_EQ(ToInt32(text), value);
  }
}

TEST(Text, FillsNumbersUp) {
  EXPECT_EQ(ZeroPadded(-7, 4), u"-007");
  EXPECT_EQ(ZeroPadded(INT32_MIN, 0), u"-2147483648");
}

TEST(Text, EscapesAndReadsBack) {
  const std::pair<std::u16string_view, std::u16string_view> rows[] = {
      {u""sv, u""sv},
      {u"会社 a"sv, u"会社 a"sv},
      {u"\\ \" '"sv, u"\\\\ \\\" \\'"sv},
      {u"a\tb\r\nc"sv, u"a\\tb\\r\\nc"sv},
      {u"\x01z\x1F\0"sv, u"\\x0001z\\x001f\\x0000"sv},
      {u"\x7F\xD83D"sv, u"\x7F\xD83D"sv},
  };
  for (const auto& [text, escaped] : rows) {
    SCOPED_TRACE(platform::ToUtf8(escaped));
    EXPECT_EQ(EscapeText(text), escaped);
    EXPECT_EQ(UnescapeText(escaped), text);
  }
}

TEST(Text, ReadsEscapesThatNobodyWrote) {
  const std::tuple<std::u16string_view, std::u16string_view, const char*> rows[] = {
      {u"a\\qnb"sv, u"a\nb"sv, "an unknown letter is dropped, the next one counts"},
      {u"ab\\"sv, u"ab"sv, "ends in an escape"},
      {u"\\x3042"sv, u"あ"sv, "four digits"},
      {u"\\x30421"sv, u"あ1"sv, "a fifth is text"},
      {u"\\x41 b"sv, u"A b"sv, "another character ends the number and is text"},
      {u"\\x41\\n"sv, u"A\n"sv, "so does a backslash, which escapes again"},
      {u"\\x4Gzz"sv, u"\x04"sv, "letters beyond f are counted, not converted"},
      {u"\\x-"sv, u"\0-"sv, "no digit at all"},
      {u"\\x41"sv, u"A"sv, "ends in the number"},
      {u"\\x4１"sv, u"\x04１"sv, "a full-width digit is none"},
  };
  for (const auto& [escaped, text, why] : rows) {
    SCOPED_TRACE(why);
    EXPECT_EQ(UnescapeText(escaped), text);
  }
}

}  // namespace
