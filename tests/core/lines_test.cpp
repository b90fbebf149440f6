#include "core/lines.h"

#include <gtest/gtest.h>

#include "support/temp_folder.h"

namespace {

using core::LineReader;

constexpr size_t kBlock = 65536;  // of the reader

struct Line {
  int result;
  std::u16string text;
  size_t byteLength;
  bool operator==(const Line&) const = default;
};

std::vector<Line> AllLines(platform::File& file) {
  LineReader reader(file);
  std::vector<Line> lines;
  do {
    Line& line = lines.emplace_back();
    line.result = reader.ReadTextLine(line.text, line.byteLength);
  } while (lines.back().result == 0);
  return lines;
}

TEST(LineReader, TakesEveryKindOfLineEndHoweverItsBlocksCutIt) {
  const std::tuple<const char*, std::vector<Line>, const char*> rows[] = {
      {"", {{-1, u"", 0}}, "nothing"},
      {"a\rb\nc\r\nd", {{0, u"a", 1}, {0, u"b", 1}, {0, u"c", 1}, {-1, u"d", 1}}, "the three"},
      {"a\r", {{0, u"a", 1}, {-1, u"", 0}}, "CR is the last byte"},
      {"\n\r", {{0, u"", 0}, {0, u"", 0}, {-1, u"", 0}}, "LF CR are two ends"},
      {"\x89\xEF\x8E\xD0\r\nb", {{0, u"会社", 4}, {-1, u"b", 1}}, "bytes are counted"},
      {"a\x89\r\nb", {{0, u"a・", 2}, {-1, u"b", 1}}, "half a pair swallows no line end"},
  };
  const testing_support::TempFolder folder;
  for (const auto& [content, lines, why] : rows) {
    const size_t size = std::string_view(content).size();
    for (size_t inFirstBlock = 0; inFirstBlock <= size; ++inFirstBlock) {
      SCOPED_TRACE(testing::Message() << why << ", cut at " << inFirstBlock);
      const size_t length = kBlock - inFirstBlock - 1;
      testing_support::WriteWholeFile(folder.HostPath("a"),
                                      std::string(length, 'x') + "\n" + content);
      std::vector<Line> expected = lines;
      expected.insert(expected.begin(), {0, std::u16string(length, u'x'), length});
      EXPECT_EQ(AllLines(*platform::files().OpenForReading(folder.Path(u"a"))), expected);
    }
  }
}

}  // namespace
