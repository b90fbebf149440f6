#include "edit/start_end.h"

#include <gtest/gtest.h>

#include "edit/initial_times.h"
#include "platform/utf.h"

namespace edit {

void PrintTo(const StartEnd& times, std::ostream* out) {
  *out << platform::ToUtf8(times.staDate + u' ' + times.staTime + u" - " + times.endDate + u' ' +
                           times.endTime);
}

namespace {

const std::u16string kMark = u"<終日>";

// In June 2010, by the day.
StartEnd Span(std::u16string_view startDay, std::u16string_view start, std::u16string_view endDay,
              std::u16string_view end) {
  const std::u16string month = u"2010/06/";
  return {month + std::u16string(startDay), std::u16string(start), month + std::u16string(endDay),
          std::u16string(end)};
}

// Both sides on the clock's day.
StartEnd Day(std::u16string_view start, std::u16string_view end) {
  return Span(u"23", start, u"23", end);
}

platform::LocalTime At(int hour, int minute) {
  return {2010, 6, 23, hour, minute, 59};
}

TEST(TimesOfNew, FollowTheSettingOnTodayAndElseNoon) {
  const std::tuple<const char*, std::u16string, int, platform::LocalTime, std::u16string> rows[] = {
      {"today, the clock", u"2010/06/23", 1, At(10, 45), u"10:45"},
      {"today, the half hour that has passed", u"2010/06/23", 2, At(10, 45), u"10:30"},
      {"just before it", u"2010/06/23", 2, At(10, 29), u"10:00"},
      {"today, all day", u"2010/06/23", 3, At(10, 45), kMark},
      {"another day", u"2010/06/24", 1, At(10, 45), u"12:00"},
      {"another day, all day", u"2010/06/24", 3, At(10, 45), kMark},
  };
  for (const auto& [why, date, mode, now, time] : rows) {
    SCOPED_TRACE(why);
    EXPECT_EQ(TimesOfNew(date, mode, now), AtOneMoment(date, time));
  }
}

TEST(TimesOfFollow, StartWhereTheFormerActionEnded) {
  const std::tuple<const char*, StartEnd, int, platform::LocalTime, StartEnd> rows[] = {
      {"up to the clock", Day(u"08:00", u"09:10"), 1, At(10, 45), Day(u"09:10", u"10:45")},
      {"the clock before it", Day(u"08:00", u"11:00"), 1, At(10, 45), Day(u"11:00", u"11:00")},
      {"ended on another day", Span(u"21", u"08:00", u"21", u"09:00"), 1, At(10, 45),
       Span(u"21", u"09:00", u"21", u"09:00")},
      {"up to this hour's half", Day(u"08:00", u"09:10"), 2, At(10, 30), Day(u"09:10", u"10:30")},
      {"up to the next hour", Day(u"08:00", u"09:10"), 2, At(10, 31), Day(u"09:10", u"11:00")},
      {"up to midnight, which belongs to the next day", Day(u"23:00", u"23:40"), 2, At(23, 50),
       Span(u"23", u"23:40", u"24", u"00:00")},
      {"a start in this hour after its half: the end never lies before the start",
       Day(u"08:00", u"10:50"), 2, At(10, 20), Day(u"10:50", u"10:50")},
      {"all day: the next day, all day", Span(u"28", kMark, u"29", kMark), 1, At(10, 45),
       Span(u"30", kMark, u"30", kMark)},
  };
  for (const auto& [why, former, mode, now, expected] : rows) {
    SCOPED_TRACE(why);
    EXPECT_EQ(TimesOfFollow(former, mode, now), expected);
  }
}

TEST(StartEnd, EachSideDragsTheOtherAlong) {
  const StartEnd day = Day(u"09:00", u"10:00");
  const StartEnd whole = Span(u"23", kMark, u"24", kMark);
  const struct {
    const char* why;
    StartEnd before;
    void (*change)(StartEnd&, std::u16string_view);
    std::u16string_view to;
    StartEnd after;
  } rows[] = {
      {"a start past the end", day, SetStartTime, u"11:00", Day(u"11:00", u"11:00")},
      {"a start on a later day takes date and time along", day, SetStartDate, u"2010/06/25",
       Span(u"25", u"09:00", u"25", u"09:00")},
      {"an end before the start", day, SetEndTime, u"08:00", Day(u"08:00", u"08:00")},
      {"an end on a later day moves alone", day, SetEndDate, u"2010/06/24",
       Span(u"23", u"09:00", u"24", u"10:00")},
      {"all day is all day at both ends", day, SetStartTime, kMark, Day(kMark, kMark)},
      {"a real start ends the whole days", whole, SetStartTime, u"08:00",
       Span(u"23", u"08:00", u"24", u"08:00")},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    StartEnd times = row.before;
    row.change(times, row.to);
    EXPECT_EQ(times, row.after);
  }
}

TEST(StartEnd, NowIsAMomentOrADay) {
  StartEnd times = Day(u"09:00", u"10:00");
  SetStartToNow(times, At(9, 45));
  EXPECT_EQ(times, Day(u"09:45", u"10:00"));
  SetEndToNow(times, At(8, 15));
  EXPECT_EQ(times, Day(u"08:15", u"08:15"));
  times = Span(u"20", kMark, u"21", kMark);
  SetStartToNow(times, At(9, 45));
  EXPECT_EQ(times, Day(kMark, kMark)) << "whole days stay so";
  times = Span(u"23", kMark, u"24", kMark);
  SetEndToNow(times, At(9, 45));
  EXPECT_EQ(times, Day(kMark, kMark)) << "whole days stay so";
}

TEST(ExistingDate, IsTakenFromADateThatMayNotExist) {
  EXPECT_EQ(ExistingDate({2010, 2, 31}, At(0, 0)), u"2010/02/28");
  EXPECT_EQ(ExistingDate({2012, 2, 31}, At(0, 0)), u"2012/02/29");
  EXPECT_EQ(ExistingDate({-1, -1, -1}, At(0, 0)), u"2010/06/23");
}

}  // namespace
}  // namespace edit
