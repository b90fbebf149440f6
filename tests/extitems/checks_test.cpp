// What passes as a name, a label and a value of each type, and where the scan stops.
#include "extitems/checks.h"

#include <gtest/gtest.h>

#include "platform/utf.h"

namespace {

using namespace extitems;

constexpr size_t kPasses = std::u16string_view::npos;

struct Row {
  std::u16string_view text;
  size_t position;  // where it stops, kPasses for a good text
};

template <size_t kRows>
void ExpectChecks(int (*check)(std::u16string_view, size_t&), const Row (&rows)[kRows]) {
  for (const Row& row : rows) {
    SCOPED_TRACE(platform::ToUtf8(row.text));
    size_t position = 12345;
    EXPECT_EQ(check(row.text, position), row.position == kPasses ? 0 : -1);
    EXPECT_EQ(position, row.position == kPasses ? row.text.size() : row.position);
  }
}

TEST(ItemChecks, Numbers) {
  const Row ints[] = {
      {u"0", kPasses}, {u"-12", kPasses}, {u"+  12", kPasses}, {u"", 0},    {u"-", 1},  {u" 1", 0},
      {u"1 ", 1},      {u"abc", 0},       {u"1.0", 1},         {u"--1", 1}, {u"１", 0},
  };
  ExpectChecks(CheckIntText, ints);
  const Row floats[] = {
      {u"1", kPasses},    {u"1.", kPasses},      {u"+.5", kPasses}, {u"- 1.5", kPasses},
      {u"1e+5", kPasses}, {u"1.5e-10", kPasses}, {u"- .", kPasses}, {u".5", 0},
      {u"1e5", 2},        {u"1E+5", 1},          {u"1e+", 3},       {u"1.2.3", 3},
      {u"", 0},           {u"1e+5x", 4},         {u"inf", 0},
  };
  ExpectChecks(CheckFloatText, floats);
}

TEST(ItemChecks, DatesAndTimes) {
  const Row dates[] = {
      {u"2010/13/45", kPasses}, {u"1 . 2 / 3", kPasses}, {u"2010/1", 6},   {u"2010/1/", 7},
      {u" 2010/1/2", 0},        {u"2010/1/2 ", 8},       {u"2010/1-2", 6}, {u"2010 1/2", 5},
  };
  ExpectChecks(CheckDateText, dates);
  const Row times[] = {{u"25:99:1", kPasses}, {u"1 : 2 : 3", kPasses}, {u"12.30:1", 2}};
  ExpectChecks(CheckTimeText, times);
  const Row moments[] = {
      {u"2010 / 1 / 2   3 : 4 : 5", kPasses},
      {u"2010/1+2 3:4:5", kPasses},
      {u"2010/1:2 3:4:5", 6},
      {u"2010/1/2", 8},
      {u"2010/1/23:4:5", 9},
  };
  ExpectChecks(CheckDateTimeText, moments);
}

TEST(ItemChecks, Files) {
  const Row files[] = {
      {u"\\", kPasses}, {u"\\a b\\会社.txt", kPasses},
      {u"", 0},         {u"a\\b", 0},
      {u"\\a*", 2},     {u"\\a/b", 2},
      {u"\\a|", 2},     {u"\\a ", 3},
  };
  ExpectChecks(CheckFileText, files);
}

TEST(ItemChecks, NamesAndLabels) {
  const Row names[] = {
      {u"a", kPasses}, {u"A_9", kPasses}, {u"", 0},    {u"9a", 0},
      {u"_a", 0},      {u"人数", 0},      {u"a人", 1},
  };
  ExpectChecks(CheckItemName, names);
  const Row labels[] = {
      {u"人数", kPasses}, {u"_9a", kPasses}, {u"メモ～", kPasses}, {u"", 0},
      {u"a b", 1},        {u"a:b", 1},       {u"\u3040", 0},       {u"\u3400", 0},
      {u"\u4038", 0},     {u"\u4D78", 0},    {u"\u9FA6", 0},       {u"\uFFEF", 0},
      {u"é", 0},
  };
  ExpectChecks(CheckItemLabel, labels);
}

TEST(ItemChecks, TheWholeItem) {
  const std::tuple<ExtItem, int, size_t> rows[] = {
      {{u"a", u"b", u"int", u"5"}, 0, 1},
      {{u"", u"", u"", u""}, -1000, 0},
      {{u"a", u"b:", u"int", u"x"}, -2000, 1},
      {{u"a", u"b", u"int", std::nullopt}, -4000, 0},
      {{u"a", u"b", u"string", u"\U0001F600 \x01"}, 0, 4},
      {{u"a", u"b", u"date", u"x"}, -7000, 0},
      {{u"a", u"b", u"time", u"1:x"}, -8000, 2},
      {{u"a", u"b", u"File", u"x"}, -10000, 0},
      {{u"a", u"b", u"mlstring", u""}, 0, 0},
      {{u"a", u"b", u"file", u"\\x"}, -12000, 0},
  };
  for (const auto& [item, code, stop] : rows) {
    SCOPED_TRACE(platform::ToUtf8(item.type));
    size_t position = 12345;
    EXPECT_EQ(CheckExtItem(item, position), code);
    EXPECT_EQ(position, stop);
  }
}

}  // namespace
