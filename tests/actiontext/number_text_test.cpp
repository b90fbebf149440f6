// Numbers are read and written as the C library does in the "C" locale.
#include "actiontext/number_text.h"

#include <gtest/gtest.h>

#include "platform/utf.h"

namespace {

using namespace actiontext;

TEST(NumberText, ReadsAsTheCLocaleDoes) {
  const struct {
    std::u16string_view text;
    int32_t asInt;
    std::u16string_view asFloat;
  } rows[] = {
      {u"", 0, u"0"},
      {u" \t\r\n+12.5e1x", 12, u"125"},
      {u"--5", 0, u"0"},
      {u"0x10", 0, u"0"},
      {u"inf", 0, u"0"},
      {u"1e", 1, u"1"},
      {u"1e400", 1, u"inf"},
      {u"-1e99999999999999999999", -1, u"-inf"},
      {u"1e-400", 1, u"0"},
      {u"0.0000001e316", 0, u"inf"},
      {u"100000000e-340", 100000000, u"0"},
      {u"4294967295", -1, u"4.29497e+09"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(platform::ToUtf8(row.text));
    EXPECT_EQ(ReadInt(row.text), row.asInt);
    EXPECT_EQ(NumberText(ReadFloat(row.text), NumberText::Form::kSixDigits).View(), row.asFloat);
  }
  EXPECT_EQ(ReadFloat(u"0." + std::u16string(400, u'0') + u"25e400"), 0.25);
  EXPECT_EQ(NumberText(-1.7976931348623157e308, NumberText::Form::kSixDecimals).View().size(),
            317u);
}

}  // namespace
