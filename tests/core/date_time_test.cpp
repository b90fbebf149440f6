#include "core/date_time.h"

#include <gtest/gtest.h>

namespace {

using namespace core;

TEST(SplitMoment, LeavesEmptyWhatAShortTextLacks) {
  const struct {
    const char16_t *text, *date, *monthDay, *time, *hourMinute;
  } rows[] = {
      {u"2010/06/23 12:30:15", u"2010/06/23", u"06/23", u"12:30:15", u"12:30"},
      {u"2010/06/23 24:00:00x", u"2010/06/23", u"06/23", u"24:00:00", u"24:00"},
      {u"2010/06/23", u"2010/06/23", u"06/23", u"", u""},
      {u"1/2", u"1/2", u"1/2", u"", u""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.text));
    const MomentText moment = SplitMoment(row.text);
    EXPECT_EQ(moment.date, row.date);
    EXPECT_EQ(moment.MonthDay(), row.monthDay);
    EXPECT_EQ(moment.time, row.time);
    EXPECT_EQ(moment.HourMinute(), row.hourMinute);
  }
}

TEST(DateTime, ComparesByTextTheDateFirst) {
  const struct {
    const char16_t *dateA, *timeA, *dateB, *timeB;
    int order;
    const char* why;
  } rows[] = {
      {u"2010/11/14", u"24:00:00", u"2010/11/14", u"23:59:59", 1, "the end of a day is its last"},
      {u"2010/11/14", u"24:00:00", u"2010/11/15", u"00:00:00", -1, "and before the next day"},
      {u"2010/11/14", u"12:00:00", u"2010/11/14", u"12:00:00", 0, "equal"},
  };
  for (const auto& [dateA, timeA, dateB, timeB, order, why] : rows) {
    SCOPED_TRACE(why);
    EXPECT_EQ(CompareDateTime(dateA, timeA, dateB, timeB), order);
    std::u16string date, time;
    EXPECT_EQ(EarlierDateTime(dateA, timeA, dateB, timeB, date, time), order > 0);
    EXPECT_EQ(CompareDateTime(date, time, dateA, timeA), order > 0 ? -1 : 0);
    EXPECT_EQ(LaterDateTime(dateA, timeA, dateB, timeB, date, time), order > 0);
    EXPECT_EQ(CompareDateTime(date, time, dateB, timeB), order > 0 ? 1 : 0);
  }
}

// What a parser of three numbers answers; its outputs start at 77 and stay so on failure.
struct Parsed {
  int result;
  int a = 77;
  int b = 77;
  int c = 77;
  bool operator==(const Parsed&) const = default;
};

void PrintTo(const Parsed& parsed, std::ostream* out) {
  *out << parsed.result << ": " << parsed.a << ' ' << parsed.b << ' ' << parsed.c;
}

Parsed Parse(int (*parser)(std::u16string_view, int&, int&, int&), std::u16string_view text) {
  Parsed parsed{0};
  parsed.result = parser(text, parsed.a, parsed.b, parsed.c);
  return parsed;
}

TEST(ParseDate, TakesExistingDatesFrom1900) {
  const std::tuple<const char16_t*, Parsed, const char*> rows[] = {
      {u"2010/1/2", {0, 2010, 1, 2}, "no padding needed"},
      {u"2010/02/29", {-10}, "no leap year"},
      {u"1900/02/29", {-10}, "by 100"},
      {u"2000/02/29", {0, 2000, 2, 29}, "by 400"},
      {u"1900/01/01", {0, 1900, 1, 1}, "the first"},
      {u"1899/12/31", {-10}, "before the first"},
      {u"12345/12/31", {0, 12345, 12, 31}, "years have no upper bound"},
      {u"2010/04/00", {-10}, "no day"},
      {u"2010/13/1", {-10}, "month above"},
      {u"2010/1/2/3", {-10}, "the day is \"2/3\""},
      {u"2010.1.2", {-10}, "other separators"},
      {u"2010/+1/2", {-10}, "a sign"},
      {u"4294967295/1/1", {-10}, "a year that wraps below 0"},
  };
  for (const auto& [text, parsed, why] : rows) {
    SCOPED_TRACE(why);
    EXPECT_EQ(Parse(ParseDate, text), parsed);
  }
}

TEST(ParseTime, TellsTimesEndsAndEntriesApart) {
  const std::tuple<const char16_t*, Parsed, int, Parsed, int, const char*> rows[] = {
      {u"7:5", {0, 7, 5, 0}, 0, {0, 7, 5, 0}, 1, "no padding needed"},
      {u"1:30", {0, 1, 30, 0}, 0, {0, 1, 30, 0}, 1, "four characters, not all digits"},
      {u"0930", {-10}, -10, {0, 9, 30, 0}, 1, "hhmm is an entry alone"},
      {u"1260", {-10}, -10, {-10}, 1, "minute 60"},
      {u"2400", {-10}, -10, {-10}, 0, "the end of the day in four digits"},
      {u"2401", {-10}, -10, {-10}, 1, "after it"},
      {u"24:00:00", {-10}, -1, {-10}, 0, "the end, in full"},
      {u"24:00:01", {-10}, -10, {-10}, 1, "a second after the end"},
      {u"00:00", {0, 0, 0, 0}, 0, {0, 0, 0, 0}, 1, "the day's beginning is not its end"},
      {u"12:60", {-10}, -10, {-10}, 1, "minute 60"},
      {u"12:30:60", {-10}, -10, {-10}, 1, "second 60"},
      {u"12:30:", {-10}, -10, {-10}, 1, "empty second"},
      {u"１２：３0", {-10}, -10, {0, 12, 30, 0}, 1, "full-width forms are an entry"},
      {u"12:30:15:1", {-10}, -10, {-10}, 1, "the second is \"15:1\""},
      {u"4294967295:00", {-10}, -10, {-10}, 1, "an hour that wraps below 0"},
  };
  for (const auto& [text, time, end, entry, isEndOfDay, why] : rows) {
    SCOPED_TRACE(why);
    EXPECT_EQ(Parse(ParseTime, text), time);
    EXPECT_EQ(ParseEndTime(text), end);
    EXPECT_EQ(Parse(ParseTimeEntry, text), entry);
    EXPECT_EQ(IsEndOfDayEntry(text), isEndOfDay);
    const bool onlyAsEntry = std::u16string_view(text) == u"2400";
    EXPECT_EQ(IsEndOfDayClock(text), onlyAsEntry ? 1 : isEndOfDay);
  }
}

TEST(ParseTimestamp, KeepsWhatItReadBeforeItStumbled) {
  const std::u16string longRun(1000, u'1');
  const std::tuple<std::u16string, int, Timestamp, const char*> rows[] = {
      {u"  2010-13.99   77:88:99.678  ",
       0,
       {2010, 13, 99, 77, 88, 99, 678},
       "all seven; no ranges"},
      {u"65536/65537/4294967299", 0, {0, 1, 3}, "the low 16 bits"},
      {longRun + u"/1/1", 0, {29127, 1, 1}, "a run beyond any work area"},
      {u"", -2010, {}, "before year"},
      {u"2010", -2011, {}, "year: it has no end yet"},
      {u"2010/", -2020, {2010}, "before month"},
      {u"2010/1 ", -1021, {2010}, ""},
      {u"2010/01/02", 0, {2010, 1, 2}, "day: a date alone is good"},
      {u"2010/01/02 12:", -2050, {2010, 1, 2, 12}, "before minute"},
      {u"2010/1/2 3:4:5", 0, {2010, 1, 2, 3, 4, 5}, "second"},
      {u"2010/01/02 12:30:15.", 0, {2010, 1, 2, 12, 30, 15, 0}, "before fraction"},
      {u"2010/1/2 3:4:5 6", -1080, {2010, 1, 2, 3, 4, 5}, "trailing blanks"},
  };
  for (const auto& [text, result, expected, why] : rows) {
    SCOPED_TRACE(testing::Message() << why << " " << result);
    Timestamp numbers{9, 9, 9, 9, 9, 9, 9};
    EXPECT_EQ(ParseTimestamp(text, numbers), result);
    EXPECT_EQ(numbers, expected);
  }
}

}  // namespace
