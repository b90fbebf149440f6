#include "core/calendar_value.h"

#include <gtest/gtest.h>

#include <limits>

#include "core/date_time.h"
#include "core/day.h"

namespace {

using namespace core;

CalendarValue Value(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  CalendarValue value;
  MakeCalendarValue(value, year, month, day, hour, minute, second);
  return value;
}

DateSpan Days(int days) {
  DateSpan span;
  MakeDateSpan(span, days, 0, 0, 0);
  return span;
}

TEST(CalendarValue, CountsDaysFrom1899AndCarriesTheFractionForward) {
  const std::tuple<CalendarValue, double, int> rows[] = {
      {Value(1899, 12, 30), 0.0, 7},      {Value(1899, 12, 29, 6), -1.25, 6},
      {Value(1899, 12, 31, 18), 1.75, 1}, {Value(2010, 6, 23, 12), 40352.5, 4},
      {Value(100, 1, 1), -657434.0, 6},   {Value(9999, 12, 31), 2958465.0, 6},
  };
  for (const auto& [value, dt, weekday] : rows) {
    SCOPED_TRACE(dt);
    EXPECT_EQ(value.status, 0);
    EXPECT_DOUBLE_EQ(value.dt, dt);
    CalendarParts parts;
    ASSERT_TRUE(CalendarToParts(value, parts));
    EXPECT_EQ(parts.weekday, weekday);
  }
}

TEST(CalendarValue, RefusesWhatDoesNotComeBack) {
  constexpr int kHuge = std::numeric_limits<int>::max();
  const std::pair<CalendarValue, const char*> rows[] = {
      {Value(2010, 11, 14, 24), "the end of a day has no calendar value"},
      {Value(2010, 2, 30), "February 30"},
      {Value(99, 12, 31), "before the first year"},
      {Value(10000, 1, 1), "after the last year"},
      {Value(kHuge, kHuge, kHuge, kHuge, kHuge, kHuge), "no overflow"},
  };
  for (const auto& [value, why] : rows) {
    SCOPED_TRACE(why);
    EXPECT_NE(value.status, 0);
    CalendarParts parts;
    EXPECT_FALSE(CalendarToParts(value, parts));
    EXPECT_EQ(parts.year, -1);
    EXPECT_FALSE(CalendarLess(value, Value(2010, 1, 1)));
    EXPECT_FALSE(CalendarGreater(value, Value(2010, 1, 1)));
    EXPECT_EQ(CompareCalendarDays(value, Value(2010, 1, 1)), 0);
    EXPECT_NE((value + Days(1)).status, 0);
  }
  EXPECT_EQ(WeekdayOf({2010, 2, 29}), -1);
  EXPECT_EQ(WeekdayOf({2012, 2, 29}), 4);
}

// On both sides of day 0, where the fraction turns over, and at the end of the years, where the
// fewest bits are left for it.
TEST(CalendarValue, BringsEverySecondOfADayBackInOrder) {
  for (const CalendarParts day : {CalendarParts{1899, 12, 28}, CalendarParts{1899, 12, 30},
                                  CalendarParts{100, 1, 1}, CalendarParts{9999, 12, 31}}) {
    SCOPED_TRACE(day.year);
    CalendarValue former{-1e6};  // earlier than all
    for (int second = 0; second < 86400; ++second) {
      const CalendarValue value =
          Value(day.year, day.month, day.day, second / 3600, second / 60 % 60, second % 60);
      ASSERT_EQ(value.status, 0) << second;
      ASSERT_TRUE(CalendarLess(former, value)) << second;
      former = value;
    }
  }
}

TEST(Day, CountsOverMonthsAndYears) {
  const std::tuple<Day, int, std::optional<Day>, const char*> rows[] = {
      {{1900, 2, 28}, 1, Day{1900, 3, 1}, "no leap year"},
      {{2000, 2, 28}, 1, Day{2000, 2, 29}, "a leap year"},
      {{2011, 1, 1}, -1, Day{2010, 12, 31}, "back over the year's end"},
      {{1900, 1, 1}, -3, Day{1899, 12, 29}, "over day 0"},
      {{9999, 12, 31}, 1, {}, "past the last year"},
      {{2010, 2, 31}, 1, {}, "no such day"},
  };
  for (const auto& [from, days, to, why] : rows) {
    SCOPED_TRACE(why);
    EXPECT_EQ(DaysLater(from, days), to);
  }
  EXPECT_EQ(WeekdayOf({1899, 12, 29}), 6);
}

TEST(CalendarValue, ComparesDays) {
  EXPECT_EQ(CompareCalendarDays(Value(2010, 1, 1), Value(2010, 1, 1, 23, 59, 59)), 0);
  EXPECT_EQ(CompareCalendarDays(Value(1899, 12, 29, 6), Value(1899, 12, 30)), -1);
  EXPECT_EQ(CompareCalendarDays(Value(2010, 1, 2), Value(2010, 1, 1, 12)), 1);
}

TEST(DateSpan, SumsItsPartsWithinItsBounds) {
  DateSpan span;
  EXPECT_EQ(MakeDateSpan(span, 1, 6, 30, 30), 0);
  EXPECT_NEAR(span.dt, 1 + 23430.0 / 86400, 1e-12);
  EXPECT_EQ(MakeDateSpan(span, -3615897, 0, 0, 0), 0);
  EXPECT_NE(MakeDateSpan(span, 3615897, 0, 0, 1), 0);
}

TEST(CalendarValue, SplitsAtMidnight) {
  std::vector<CalendarSpan> pieces;
  EXPECT_EQ(SplitAtMidnight(pieces, {Value(2010, 6, 23, 1), Value(2010, 6, 23)}), -1);
  EXPECT_TRUE(pieces.empty());
  EXPECT_EQ(SplitAtMidnight(pieces, {Value(2010, 12, 30, 22), Value(2011, 1, 1)}), 0);
  const CalendarSpan expected[] = {{Value(2010, 12, 30, 22), Value(2010, 12, 30, 23, 59, 59)},
                                   {Value(2010, 12, 31), Value(2010, 12, 31, 23, 59, 59)},
                                   {Value(2011, 1, 1), Value(2011, 1, 1)}};
  ASSERT_EQ(pieces.size(), std::size(expected));
  for (size_t k = 0; k < pieces.size(); ++k) {
    SCOPED_TRACE(k);
    EXPECT_EQ(pieces[k].start.dt, expected[k].start.dt);
    EXPECT_EQ(pieces[k].end.dt, expected[k].end.dt);
  }
}

}  // namespace
