// Our table against Microsoft's own, by a sum over all of it, and against the host's converter,
// which names the cell when something is wrong.
#include "platform/code_page.h"

#include <gtest/gtest.h>
#include <iconv.h>

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace {

using platform::DecodeCodePage;
using platform::EncodeCodePage;

bool IsLead(int byte) {
  return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

std::vector<std::string> AllSingleBytes() {
  std::vector<std::string> all;
  for (int byte = 0; byte <= 0xFF; ++byte) {
    if (!IsLead(byte)) all.push_back({static_cast<char>(byte)});
  }
  return all;
}

std::vector<std::string> AllPairs() {
  std::vector<std::string> all;
  for (int lead = 0; lead <= 0xFF; ++lead) {
    for (int second = 0x40; IsLead(lead) && second <= 0xFC; ++second) {
      if (second != 0x7F) all.push_back({static_cast<char>(lead), static_cast<char>(second)});
    }
  }
  return all;
}

std::string EncodeOne(unsigned unit) {
  const auto character = static_cast<char16_t>(unit);
  return EncodeCodePage({&character, 1});
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
  for (const auto& all : {AllSingleBytes(), AllPairs()}) {
    for (const std::string& bytes : all) {
      const std::u16string text = DecodeCodePage(bytes);
      ASSERT_EQ(text.size(), 1u);
      decoded.Add(text[0]);
    }
  }
  EXPECT_EQ(decoded.Value(), 0x7FAA590FABC4337Du);

  Sum encoded;
  for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
    unsigned code = 0;
    for (const unsigned char byte : EncodeOne(unit)) {
      code = code << 8 | byte;
    }
    encoded.Add(code);
  }
  EXPECT_EQ(encoded.Value(), 0xD48967C5A788AC10u);
}

// One character through the host's converter; none if it refuses.
class HostConverter {
 public:
  HostConverter(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
  ~HostConverter() {
    if (Works()) iconv_close(handle_);
  }
  HostConverter(const HostConverter&) = delete;
  HostConverter& operator=(const HostConverter&) = delete;

  bool Works() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

  std::optional<std::string> Convert(std::string bytes) {
    char buffer[8];
    char* from = bytes.data();
    char* to = buffer;
    size_t fromLeft = bytes.size();
    size_t toLeft = sizeof buffer;
    iconv(handle_, nullptr, nullptr, nullptr, nullptr);
    if (iconv(handle_, &from, &fromLeft, &to, &toLeft) != 0) return {};
    return std::string(buffer, to);
  }

 private:
  iconv_t handle_;
};

std::string AsBytes(char16_t unit) {
  return {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
}

TEST(CodePage, ReadsEveryCellAsTheHostDoes) {
  HostConverter host("UTF-16LE", "CP932");
  if (!host.Works()) GTEST_SKIP() << "this host has no converter for CP932";
  // The host refuses these, Microsoft's table gives them a character.
  const std::map<std::string, char16_t> windowsOnly = {
      {"\x80", 0x80}, {"\xA0", 0xF8F0}, {"\xFD", 0xF8F1}, {"\xFE", 0xF8F2}, {"\xFF", 0xF8F3}};
  for (const auto& all : {AllSingleBytes(), AllPairs()}) {
    for (const std::string& bytes : all) {
      SCOPED_TRACE(testing::PrintToString(bytes));
      const auto known = windowsOnly.find(bytes);
      const std::string otherwise = AsBytes(known == windowsOnly.end() ? 0x30FB : known->second);
      EXPECT_EQ(AsBytes(DecodeCodePage(bytes)[0]), host.Convert(bytes).value_or(otherwise));
    }
  }
}

TEST(CodePage, WritesEveryCharacterAsTheHostDoesSaveForBestFits) {
  HostConverter host("CP932", "UTF-16LE");
  if (!host.Works()) GTEST_SKIP() << "this host has no converter for CP932";
  const std::set<unsigned> hostOnly = {0x2014, 0x2016, 0x203E, 0x2212, 0x301C};
  const std::set<unsigned> windowsOnly = {0x80, 0x3094, 0xF8F0, 0xF8F1, 0xF8F2, 0xF8F3};
  for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
    SCOPED_TRACE(unit);
    const bool mayFit = (unit > 0xA0 && unit <= 0xFF) || windowsOnly.count(unit) != 0;
    const std::string ours = EncodeOne(unit);
    const auto hosts = host.Convert(AsBytes(static_cast<char16_t>(unit)));
    if (hosts && hostOnly.count(unit) == 0) {
      EXPECT_EQ(ours, *hosts);
    } else if (!mayFit) {
      EXPECT_EQ(ours, "?");
    }
  }
}

TEST(CodePage, WritesWhatWindowsWrites) {
  const struct {
    const char16_t* text;
    const char* bytes;
    const char* why;
  } rows[] = {
      {u"会社－＞自宅", "\x89\xEF\x8E\xD0\x81\x7C\x81\x84\x8E\xA9\x91\xEE", "full-width minus"},
      {u"10:00～ 11:30", "10:00\x81\x60 11:30", "full-width tilde"},
      {u"〜−‖", "???", "wave dash and minus of other tables"},
      {u"①Ⅳ㈱", "\x87\x40\x87\x57\x87\x8A", "NEC row 13"},
      {u"髙﨑ⅰ", "\xFB\xFC\xFA\xB1\xFA\x40", "IBM's place, not NEC's"},
      {u"∵≒¬￢", "\x81\xE6\x81\xE0\x81\xCA\x81\xCA", "the first of several places"},
      {u"ｱﾝ｡", "\xB1\xDD\xA1", "half-width katakana"},
      {u"Café ©ÿ ¥5 ゔ", "Cafe cy \\5 \x83\x94", "best fits"},
      {u"・", "\x81\x45", "not an empty cell, though these read alike"},
      {u"😀a\xD83Dz\xDE00", "?a?z?", "one for a pair, one for half a pair"},
      {u"한€\u200B", "???", "one for each, the invisible one too"},
      {u"\uE000\uE757\uE758", "\xF0\x40\xF9\xFC?", "the user-defined area and its end"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    EXPECT_EQ(EncodeCodePage(row.text), row.bytes);
  }
}

TEST(CodePage, OneOddCharacterAmongAsciiStaysWhereItIs) {
  for (size_t at = 0; at < 16; ++at) {
    SCOPED_TRACE(at);
    std::u16string text = u"0123456789abcdef";
    std::string bytes = "0123456789abcdef";
    text[at] = u'ｱ';
    bytes[at] = '\xB1';
    EXPECT_EQ(DecodeCodePage(bytes), text);
    EXPECT_EQ(EncodeCodePage(text), bytes);
  }
}

TEST(CodePage, ReadsBytesThatMeanNothing) {
  using namespace std::string_view_literals;
  const struct {
    std::string_view bytes;
    std::u16string_view text;
    const char* why;
  } rows[] = {
      {"ab\x81"sv, u"ab・"sv, "lead byte at the end"},
      {"\x81\x20z"sv, u"・z"sv, "the second byte goes along"},
      {"\x88\x7Fz"sv, u"・z"sv, "7F is no second byte"},
      {"\xE0\xFDz"sv, u"・z"sv, "FD neither"},
      {"\x81\0z"sv, u"・\0z"sv, "NUL stays"},
      {"\x85\x41\xF0\x40"sv, u"・\uE000"sv, "a row without characters"},
      {""sv, u""sv, "nothing"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    EXPECT_EQ(DecodeCodePage(row.bytes), row.text);
  }
}

}  // namespace
