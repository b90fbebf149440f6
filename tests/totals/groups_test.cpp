// Cutting, overlaps, groups and columns, over days that are made by hand.
#include "totals/days.h"

#include "core/date_time.h"

namespace totals {
namespace {

const Period kTheDay = PeriodOf(PeriodKind::kDay, Day(u"2026/11/20"));  // a Friday

TEST_F(Days, AnActionCountsWithWhatLiesInside) {
  struct Case {
    const char* why;
    std::u16string_view start, end;
    double hours;
    int count;
  };
  const Case cases[] = {
      {"within", u"2026/11/20 09:00:00", u"2026/11/20 10:30:00", 1.5, 1},
      {"over the first edge", u"2026/11/19 23:00:00", u"2026/11/20 02:00:00", 2, 1},
      {"over the last", u"2026/11/20 23:00:00", u"2026/11/21 05:00:00", 1, 1},
      {"over both", u"1999/01/01 00:00:00", u"9999/12/31 00:00:00", 24, 1},
      {"all day", u"2026/11/20 00:00:00", u"2026/11/20 24:00:00", 24, 1},
      {"several whole days", u"2026/11/18 00:00:00", u"2026/11/20 24:00:00", 24, 1},
      {"ends as the day begins", u"2026/11/19 00:00:00", u"2026/11/19 24:00:00", 0, 0},
      {"the same, otherwise written", u"2026/11/19 22:00:00", u"2026/11/20 00:00:00", 0, 0},
      {"begins as it ends", u"2026/11/21 00:00:00", u"2026/11/21 01:00:00", 0, 0},
      {"without length", u"2026/11/20 12:00:00", u"2026/11/20 12:00:00", 0, 1},
      {"at its first moment", u"2026/11/20 00:00:00", u"2026/11/20 00:00:00", 0, 1},
      {"after its last", u"2026/11/21 00:00:00", u"2026/11/21 00:00:00", 0, 0},
      {"as an import may write it", u"2026/11/20T1:00:000", u"2026/11/20_2:30:00", 1.5, 1},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.why);
    rows.Clear();
    Add(row.start, row.end);
    const Totals sums = Sum(rows, kTheDay.Moments(), choices);
    EXPECT_EQ(static_cast<double>(sums.sum) / kHourSeconds, row.hours);
    EXPECT_EQ(sums.count, row.count);
    EXPECT_EQ(sums.written, sums.sum);
  }
}

TEST_F(Days, WhatIsNoDateIsLeftOutAndCounted) {
  for (const auto* moment : {u"", u"2026/02/30 10:00:00", u"2026/11/20 24:00:01", u"someday",
                             u"12026/1/1 10:00:00", u"2026/11/20 10:60:00"}) {
    Add(moment, u"2026/11/20 11:00:00");
    Add(u"2026/11/20 11:00:00", moment);
  }
  Add(u"2026/11/20 11:00:00", u"2026/11/20 10:00:00");
  const Totals sums = Sum(rows, kTheDay.Moments(), choices);
  EXPECT_EQ(sums.leftOut, 13);
  EXPECT_EQ(sums.count, 0);
}

TEST_F(Days, OverlapsAreWrittenOnce) {
  Add(u"2026/11/20 15:00:00", u"2026/11/20 17:00:00");  // written down late
  Add(u"2026/11/20 09:00:00", u"2026/11/20 12:00:00");
  Add(u"2026/11/20 10:00:00", u"2026/11/20 11:00:00");  // nested
  Add(u"2026/11/20 11:30:00", u"2026/11/20 13:00:00");  // chained
  Add(u"2026/11/20 13:00:00", u"2026/11/20 14:00:00");
  const Totals sums = Sum(rows, kTheDay.Moments(), choices);
  EXPECT_EQ(sums.sum, 8.5 * kHourSeconds);
  EXPECT_EQ(sums.written, 7 * kHourSeconds);
  EXPECT_EQ(sums.Unwritten(), 17 * kHourSeconds);
}

TEST_F(Days, TheRunningActionReachesUpToNow) {
  const auto start = ReadMoment(u"2026/11/19 23:00:00");
  const RowTexts texts{u"", u"仕事", u""};
  ASSERT_TRUE(rows.AddRunning(1, start, *ReadMoment(u"2026/11/20 09:30:00"), texts));
  EXPECT_EQ(Groups(kTheDay), "仕事 9.5 x1*");
  rows.Clear();
  ASSERT_TRUE(rows.AddRunning(1, start, *ReadMoment(u"2026/11/19 22:00:00"), texts));
  EXPECT_EQ(rows.All()[0].end, rows.All()[0].start) << "the clock has been set back";
}

TEST_F(Days, GroupsByEachLevel) {
  Add(u"2026/11/20 09:00:00", u"2026/11/20 12:00:00", u"仕事", u"会社", u"会議");
  Add(u"2026/11/20 13:00:00", u"2026/11/20 14:00:00", u"仕事", u"会社", u"書類");
  Add(u"2026/11/20 12:00:00", u"2026/11/20 13:00:00", u"食事", u"会社");
  Add(u"2026/11/20 18:00:00", u"2026/11/20 19:30:00", u"移動", u"会社－＞自宅");
  Add(u"2026/11/20 22:00:00", u"2026/11/21 06:00:00", u"", u"自宅");
  Add(u"2026/11/20 20:00:00", u"2026/11/20 20:00:00", u"食事", u"－＞");
  const std::tuple<By, By, bool, const char*> cases[] = {
      {By::kCategory1, By::kNothing, true, "仕事 4 x2, (なし) 2 x1, 移動 1.5 x1, 食事 1 x2"},
      {By::kCategory1, By::kCategory2, true,
       "仕事 4 x2 [会議 3 x1, 書類 1 x1], (なし) 2 x1 [(なし) 2 x1], 移動 1.5 x1 [(なし) 1.5 x1], "
       "食事 1 x2 [(なし) 1 x2]"},
      {By::kPlace, By::kNothing, true,
       "会社 5 x3, 自宅 2 x1, 移動 1.5 x2 [会社－＞自宅 1.5 x1, －＞ 0 x1]"},
      {By::kPlace, By::kNothing, false, "会社 6.5 x4, 自宅 3.5 x2, (なし) 0 x1"},
      {By::kPlace, By::kCategory1, true,
       "会社 5 x3 [仕事 4 x2, 食事 1 x1], 自宅 2 x1 [(なし) 2 x1], "
       "移動 1.5 x2 [移動 1.5 x1, 食事 0 x1]"},
      {By::kWeekday, By::kPlace, true, "金曜日 8.5 x6 [会社 5 x3, 自宅 2 x1, 移動 1.5 x2]"},
      {By::kHour, By::kNothing, true,
       "9時 1 x1, 10時 1 x1, 11時 1 x1, 12時 1 x1, 13時 1 x1, 18時 1 x1, 19時 0.5 x1, 20時 0 x1, "
       "22時 1 x1, 23時 1 x1"},
  };
  for (const auto& [by, within, apart, expected] : cases) {
    choices = {by, within, apart};
    EXPECT_EQ(Groups(kTheDay), expected);
  }
}

TEST_F(Days, WholeDaysAreCountedForTheirWeekdaysAndHours) {
  // From a Friday evening over nine whole days into a Monday.
  Add(u"2026/11/20 22:00:00", u"2026/11/30 01:30:00");
  Add(u"2026/11/20 00:00:00", u"2026/11/20 24:00:00");
  const Period all{PeriodKind::kAll, Day(u"2026/11/20"), Day(u"2026/12/01")};
  choices.by = By::kWeekday;
  EXPECT_EQ(Groups(all),
            "日曜日 48 x1, 月曜日 25.5 x1, 火曜日 24 x1, 水曜日 24 x1, 木曜日 24 x1, "
            "金曜日 50 x2, 土曜日 48 x1");
  choices = {By::kWeekday, By::kHour};
  const Totals sums = Sum(rows, all.Moments(), choices);
  EXPECT_EQ(Told({sums.groups[1].inner[0], sums.groups[1].inner[1], sums.groups[1].inner[2]}),
            "0時 2 x1, 1時 1.5 x1, 2時 1 x1");
  EXPECT_EQ(Told({sums.groups[5].inner[0], sums.groups[5].inner[22]}), "0時 2 x2, 22時 3 x2");
}

TEST_F(Days, FindsTheRowsOfAGroupByStart) {
  Add(u"2026/11/20 13:00:00", u"2026/11/20 14:00:00", u"仕事", u"会社－＞駅");
  Add(u"2026/11/20 09:00:00", u"2026/11/20 12:00:00", u"仕事", u"会社");
  Add(u"2026/11/19 09:00:00", u"2026/11/19 12:00:00", u"仕事", u"会社");
  Add(u"2026/11/20 12:00:00", u"2026/11/20 13:00:00", u"食事", u"会社");
  const auto found = [&](const Key& key) { return RowsOf(rows, kTheDay.Moments(), choices, key); };
  const int work = rows.All()[0].category1;
  EXPECT_EQ(found({work}), (std::vector{1, 0}));
  choices = {By::kCategory1, By::kHour};
  EXPECT_EQ(found({work, 11}), std::vector{1});
  choices = {By::kPlace};
  EXPECT_EQ(found({Names::kMovement, rows.All()[0].place}), std::vector{0});
  choices.movementsApart = false;
  EXPECT_EQ(found({rows.All()[1].place}), (std::vector{1, 3, 0}));
}

TEST_F(Days, ColumnsAreStackedByTheGreatestGroups) {
  for (int hour = 0; hour < 9; ++hour) {
    const std::u16string day = u"2026/11/1" + core::FormatTime(hour, 0, 0).substr(1, 1) + u" ";
    Add(day + u"00:00:00", day + core::FormatTime(10 + hour, 0, 0), std::u16string(1, u'a' + hour));
  }
  Add(u"2026/11/18 23:00:00", u"2026/12/02 01:00:00", u"a");
  const Period month = PeriodOf(PeriodKind::kMonth, Day(u"2026/11/18"));
  const Totals sums = Sum(rows, month.Moments(), choices);
  const Columns columns = Stack(rows, month, choices, sums);
  ASSERT_EQ(columns.times.size(), 30u);
  ASSERT_EQ(columns.greatest.size(), 7u);
  EXPECT_TRUE(columns.hasOthers);
  EXPECT_EQ(columns.SlotOf(sums.groups[8].key.outer), 7u);
  EXPECT_EQ(columns.times[9][0], 10 * kHourSeconds) << "a, the greatest";
  EXPECT_EQ(columns.times[10][7], 11 * kHourSeconds) << "b, one of the others";
  EXPECT_EQ(columns.times[17][0], kHourSeconds);
  EXPECT_EQ(columns.times[17][1], 18 * kHourSeconds) << "i, the second";
  EXPECT_EQ(columns.times[29][0], 24 * kHourSeconds);
  EXPECT_EQ(columns.highest, 24 * kHourSeconds);
}

TEST_F(Days, BeforeTheYearOfTheCount) {
  Add(u"1900/01/01 23:30:00", u"1900/01/02 00:30:00");
  Add(u"1969/12/31 00:00:00", u"1969/12/31 24:00:00");
  choices = {By::kWeekday, By::kHour};
  EXPECT_EQ(Groups(PeriodOf(PeriodKind::kWeek, Day(u"1900/01/01"))),
            "月曜日 0.5 x1 [23時 0.5 x1], 火曜日 0.5 x1 [0時 0.5 x1]");
  choices = {By::kWeekday};
  EXPECT_EQ(Groups(PeriodOf(PeriodKind::kYear, Day(u"1969/01/01"))), "水曜日 24 x1");
  EXPECT_EQ(rows.Days(), (Span{Day(u"1900/01/01") * kDaySeconds, 0}));
}

TEST(NamesTest, KeepTheirNumbersHoweverManyThereAre) {
  Names names;
  const auto text = [](int k) { return platform::ToUtf16("name " + std::to_string(k)); };
  for (int k = 0; k < 1000; ++k) EXPECT_EQ(names.Take(text(k)), k + 2);
  for (int k = 0; k < 1000; ++k) EXPECT_EQ(names.Take(text(k)), k + 2);
  EXPECT_EQ(names.Take(u""), Names::kNone);
  EXPECT_EQ(names.At(501), text(499));
}

}  // namespace
}  // namespace totals
