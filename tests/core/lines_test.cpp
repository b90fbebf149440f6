#include "core/lines.h"

#include <gtest/gtest.h>

#include <chrono>

#include "support/faulty_files.h"
#include "support/temp_folder.h"

namespace {

using core::LineReader;
using core::WriteTextLine;
using testing_support::FileCall;

constexpr size_t kBlock = 65536;  // of the reader

// Hands out a text in pieces of a given size.
class MemoryFile : public platform::File {
 public:
  MemoryFile(std::string content, size_t piece) : content_(std::move(content)), piece_(piece) {}

  int64_t Read(void* data, size_t size) override {
    const size_t count = content_.copy(static_cast<char*>(data), std::min(size, piece_), at_);
    at_ += count;
    return static_cast<int64_t>(count);
  }
  bool Write(std::string_view) override { return false; }
  bool Sync() override { return false; }

 private:
  std::string content_;
  size_t piece_;
  size_t at_ = 0;
};

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

TEST(LineReader, TakesEveryKindOfLineEndHoweverItIsCut) {
  const struct {
    const char* content;
    std::vector<Line> lines;
    const char* why;
  } rows[] = {
      {"", {{-1, u"", 0}}, "nothing"},
      {"a\rb\nc\r\nd", {{0, u"a", 1}, {0, u"b", 1}, {0, u"c", 1}, {-1, u"d", 1}}, "the three"},
      {"a\r\n", {{0, u"a", 1}, {-1, u"", 0}}, "ended"},
      {"a\r", {{0, u"a", 1}, {-1, u"", 0}}, "CR is the last byte"},
      {"\r\r\n\n", {{0, u"", 0}, {0, u"", 0}, {0, u"", 0}, {-1, u"", 0}}, "empty lines"},
      {"\n\r", {{0, u"", 0}, {0, u"", 0}, {-1, u"", 0}}, "LF CR are two ends"},
      {"\x89\xEF\x8E\xD0\r\nb", {{0, u"会社", 4}, {-1, u"b", 1}}, "bytes are counted"},
      {"a\x89\r\nb", {{0, u"a・", 2}, {-1, u"b", 1}}, "half a pair swallows no line end"},
  };
  for (const auto& row : rows) {
    for (const size_t piece : {size_t{1}, size_t{2}, size_t{3}, kBlock}) {
      SCOPED_TRACE(row.why);
      MemoryFile file(row.content, piece);
      EXPECT_EQ(AllLines(file), row.lines);
    }
  }
}

TEST(LineReader, CrossesTheBordersOfItsOwnBlocks) {
  for (size_t length = kBlock - 2; length <= kBlock + 1; ++length) {
    SCOPED_TRACE(length);
    MemoryFile file(std::string(length, 'x') + "\r\n\x89\xEF\r\n", kBlock * 2);
    const std::vector<Line> expected = {
        {0, std::u16string(length, u'x'), length}, {0, u"会", 2}, {-1, u"", 0}};
    EXPECT_EQ(AllLines(file), expected);
  }
}

TEST(LineReader, ReadsALineOf100MegabytesInBoundedTime) {
  constexpr size_t kSize = 100'000'000;
  MemoryFile file(std::string(kSize, 'x') + "\nend", kBlock);
  LineReader reader(file);
  std::u16string text;
  size_t byteLength = 0;
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(reader.ReadTextLine(text, byteLength), 0);
  const auto spent = std::chrono::steady_clock::now() - start;
  EXPECT_EQ(byteLength, kSize);
  EXPECT_EQ(text.size(), kSize);
  // A tenth of this without sanitizers; what would be quadratic takes hours.
  EXPECT_LT(spent, std::chrono::seconds(30));
  EXPECT_EQ(reader.ReadTextLine(text, byteLength), -1);
  EXPECT_EQ(text, u"end");
}

TEST(LineReader, TellsAReadFailureAndStaysWithIt) {
  const testing_support::TempFolder folder;
  testing_support::WriteWholeFile(folder.HostPath("a"), "one\n" + std::string(kBlock, 'x'));
  testing_support::FaultyFiles faulty;
  const auto file = platform::files().OpenForReading(folder.Path(u"a"));
  ASSERT_TRUE(file);
  faulty.Fail(FileCall::kRead, 2);
  LineReader reader(*file);
  std::u16string text;
  size_t byteLength = 0;
  EXPECT_EQ(reader.ReadTextLine(text, byteLength), 0);
  EXPECT_EQ(text, u"one");
  EXPECT_EQ(reader.ReadTextLine(text, byteLength), -12);
  EXPECT_EQ(reader.ReadTextLine(text, byteLength), -12);
}

TEST(WriteTextLine, WritesTheCodePageAndCrLf) {
  const testing_support::TempFolder folder;
  testing_support::FaultyFiles faulty;
  const auto file = platform::files().Create(folder.Path(u"a"));
  ASSERT_TRUE(file);
  EXPECT_EQ(WriteTextLine(*file, u"会社😀"), 0);
  EXPECT_EQ(WriteTextLine(*file, u""), 0);
  faulty.Fail(FileCall::kWrite);
  EXPECT_EQ(WriteTextLine(*file, u"never"), -1);
  EXPECT_EQ(testing_support::ReadWholeFile(folder.HostPath("a")).substr(0, 9),
            "\x89\xEF\x8E\xD0?\r\n\r\n");
}

}  // namespace
