// Our table against Microsoft's own, by a sum over all of it.
#include "platform/code_page.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

using platform::DecodeCodePage;
using platform::EncodeCodePage;

// The bytes of every character that the code page can have, single bytes first.
std::vector<std::string> AllCells() {
  std::vector<std::string> all;
  for (unsigned code = 0; code <= 0xFFFF; ++code) {
    const unsigned first = code > 0xFF ? code >> 8 : code;
    const unsigned second = code & 0xFF;
    const bool isLead = (first >= 0x81 && first <= 0x9F) || (first >= 0xE0 && first <= 0xFC);
    const bool isPair = isLead && second >= 0x40 && second <= 0xFC && second != 0x7F;
    if (code <= 0xFF && !isLead) all.push_back({static_cast<char>(first)});
    if (code > 0xFF && isPair) all.push_back({static_cast<char>(first), static_cast<char>(second)});
  }
  return all;
}

// FNV-1a over 16-bit values, low byte first.
class Sum {
 public:
  void Add(unsigned value) {
    for (const unsigned byte : {value & 0xFF, value >> 8}) sum_ = (sum_ ^ byte) * 0x100000001B3u;
  }
  uint64_t Value() const { return sum_; }

 private:
  uint64_t sum_ = 0xCBF29CE484222325u;
};

TEST(CodePage, IsMicrosoftsTableInBothDirections) {
  Sum decoded;
  for (const std::string& bytes : AllCells()) {
    const std::u16string text = DecodeCodePage(bytes);
    ASSERT_EQ(text.size(), 1u) << testing::PrintToString(bytes);
    decoded.Add(text[0]);
  }
  EXPECT_EQ(decoded.Value(), 0x7FAA590FABC4337Du);

  Sum encoded;
  for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
    const auto character = static_cast<char16_t>(unit);
    unsigned code = 0;
    for (const unsigned char byte : EncodeCodePage({&character, 1})) code = code << 8 | byte;
    encoded.Add(code);
  }
  EXPECT_EQ(encoded.Value(), 0xD48967C5A788AC10u);
}

TEST(CodePage, WritesOneQuestionMarkForAPairAndOneForHalf) {
  EXPECT_EQ(EncodeCodePage(u"会－～😀a\xD83Dz\xDE00"), "\x89\xEF\x81\x7C\x81\x60?a?z?");
}

TEST(CodePage, ComposesWhatItHasComposed) {
  EXPECT_EQ(EncodeCodePage(u"か\u3099ハ\u309AИ\u0306=\u0338"), EncodeCodePage(u"がパЙ≠"));
  EXPECT_EQ(EncodeCodePage(u"\u3099ん\u3099"), EncodeCodePage(u"?ん?"));
}

TEST(CodePage, ReadsBytesThatMeanNothing) {
  using namespace std::string_view_literals;
  const std::tuple<std::string_view, std::u16string_view, const char*> rows[] = {
      {"ab\x81"sv, u"ab・"sv, "lead byte at the end"},
      {"\x81\x20z"sv, u"・z"sv, "the second byte goes along"},
      {"\x88\x7Fz"sv, u"・z"sv, "7F is no second byte"},
      {"\xE0\xFDz"sv, u"・z"sv, "FD neither"},
      {"\x81\0z"sv, u"・\0z"sv, "NUL stays"},
      {"\x85\x41\xF0\x40"sv, u"・\uE000"sv, "a row without characters"},
      {""sv, u""sv, "nothing"},
  };
  for (const auto& [bytes, text, why] : rows) {
    SCOPED_TRACE(why);
    EXPECT_EQ(DecodeCodePage(bytes), text);
  }
}

}  // namespace
