// Comparing works on the text as it stands; only what a user typed or a file brought is parsed.
#include "core/date_time.h"

#include <algorithm>
#include <iterator>

#include "core/calendar_value.h"
#include "core/text.h"

namespace core {
namespace {

constexpr int kRefused = -10;
constexpr int kFirstYear = 1900;

// Three numbers as they stand in a text, and whether all of them are digits alone.
struct ThreeParts {
  int first = 0;
  int second = 0;
  int third = 0;
  bool valid = false;
};

ThreeParts ReadParts(std::u16string_view first, std::u16string_view second,
                     std::u16string_view third) {
  if (AllDigits(first) != 0 || AllDigits(second) != 0 || AllDigits(third) != 0) return {};
  return {ToInt32(first), ToInt32(second), ToInt32(third), true};
}

// The hour, the minute and the second, 0 where it is left out. What stands behind a second ":" is
// the second, later colons included, which are no digits.
ThreeParts SplitClock(std::u16string_view text) {
  const size_t colon = text.find(u':');
  if (colon == std::u16string_view::npos) return {};
  const std::u16string_view rest = text.substr(colon + 1);
  const size_t nextColon = rest.find(u':');
  if (nextColon == std::u16string_view::npos) return ReadParts(text.substr(0, colon), rest, u"00");
  return ReadParts(text.substr(0, colon), rest.substr(0, nextColon), rest.substr(nextColon + 1));
}

// A wrapped number may be negative.
bool InRange(int value, int end) {
  return value >= 0 && value < end;
}

bool IsEndOfDay(const ThreeParts& clock) {
  return clock.valid && clock.first == 24 && clock.second == 0 && clock.third == 0;
}

int Sign(int order) {
  return order < 0 ? -1 : order > 0 ? 1 : 0;
}

}  // namespace

std::u16string FormatDate(int year, int month, int day) {
  return ZeroPadded(year, 4) + u'/' + ZeroPadded(month, 2) + u'/' + ZeroPadded(day, 2);
}

std::u16string FormatTime(int hour, int minute, int second) {
  return FormatHourMinute(hour, minute) + u':' + ZeroPadded(second, 2);
}

std::u16string FormatHourMinute(int hour, int minute) {
  return ZeroPadded(hour, 2) + u':' + ZeroPadded(minute, 2);
}

int CompareDateTime(std::u16string_view dateA, std::u16string_view timeA, std::u16string_view dateB,
                    std::u16string_view timeB) {
  const int order = Sign(dateA.compare(dateB));
  return order != 0 ? order : Sign(timeA.compare(timeB));
}

int EarlierDateTime(std::u16string_view dateA, std::u16string_view timeA, std::u16string_view dateB,
                    std::u16string_view timeB, std::u16string& date, std::u16string& time) {
  const bool takesB = CompareDateTime(dateA, timeA, dateB, timeB) > 0;
  date = takesB ? dateB : dateA;
  time = takesB ? timeB : timeA;
  return takesB ? 1 : 0;
}

int LaterDateTime(std::u16string_view dateA, std::u16string_view timeA, std::u16string_view dateB,
                  std::u16string_view timeB, std::u16string& date, std::u16string& time) {
  const bool takesA = CompareDateTime(dateA, timeA, dateB, timeB) > 0;
  date = takesA ? dateA : dateB;
  time = takesA ? timeA : timeB;
  return takesA ? 1 : 0;
}

int ParseDate(std::u16string_view text, int& year, int& month, int& day) {
  const size_t slash = text.find(u'/');
  if (slash == std::u16string_view::npos) return kRefused;
  const size_t nextSlash = text.find(u'/', slash + 1);
  if (nextSlash == std::u16string_view::npos) return kRefused;
  const ThreeParts parts =
      ReadParts(text.substr(0, slash), text.substr(slash + 1, nextSlash - slash - 1),
                text.substr(nextSlash + 1));
  if (!parts.valid || parts.first < kFirstYear || parts.third < 1 ||
      parts.third > DaysInMonth(parts.first, parts.second)) {
    return kRefused;
  }
  year = parts.first;
  month = parts.second;
  day = parts.third;
  return 0;
}

int ParseTime(std::u16string_view text, int& hour, int& minute, int& second) {
  const ThreeParts clock = SplitClock(text);
  if (!clock.valid || !InRange(clock.first, 24) || !InRange(clock.second, 60) ||
      !InRange(clock.third, 60)) {
    return kRefused;
  }
  hour = clock.first;
  minute = clock.second;
  second = clock.third;
  return 0;
}

int ParseEndTime(std::u16string_view text) {
  if (IsEndOfDay(SplitClock(text))) return -1;
  int hour, minute, second;
  return ParseTime(text, hour, minute, second);
}

int ParseTimeEntry(std::u16string_view text, int& hour, int& minute, int& second) {
  if (text.size() != 4 || AllDigits(text) != 0) return ParseTime(text, hour, minute, second);
  const int number = ToInt32(text);
  if (number / 100 > 23 || number % 100 > 59) return kRefused;
  hour = number / 100;
  minute = number % 100;
  second = 0;
  return 0;
}

int IsEndOfDayClock(std::u16string_view text) {
  return IsEndOfDay(SplitClock(text)) ? 0 : 1;
}

int IsEndOfDayEntry(std::u16string_view text) {
  return text == u"2400" ? 0 : IsEndOfDayClock(text);
}

namespace {

// One state of ParseTimestamp. A digit leads to `onDigit`; a character of `leave` or `otherLeave`
// stores the field, if the state reads one, and leads on. Anything else is refused with -1000 less
// the state, and a text that ends where it may not with -2000 less the state.
struct TimestampState {
  int state;
  int onDigit;  // 0: none
  std::u16string_view leave;
  int next;
  std::u16string_view otherLeave;
  int otherNext;
  int field;  // position in the Timestamp, -1: reads none
  bool mayEnd;
};

constexpr std::u16string_view kSeparators = u"/.-";  // they need not match

constexpr TimestampState kTimestampStates[] = {
    {10, 11, u" ", 10, u"", 0, -1, false},        // before the year
    {11, 11, kSeparators, 20, u"", 0, 0, false},  // year
    {20, 21, u"", 0, u"", 0, -1, false},          // before the month
    {21, 21, kSeparators, 30, u"", 0, 1, false},  // month
    {30, 31, u"", 0, u"", 0, -1, false},          // before the day
    {31, 31, u" ", 40, u"", 0, 2, true},          // day
    {40, 41, u" ", 40, u"", 0, -1, true},         // before the hour
    {41, 41, u":", 50, u"", 0, 3, true},          // hour
    {50, 51, u"", 0, u"", 0, -1, false},          // before the minute
    {51, 51, u":", 60, u"", 0, 4, true},          // minute
    {60, 61, u"", 0, u"", 0, -1, false},          // before the second
    {61, 61, u".", 70, u" ", 80, 5, true},        // second
    {70, 71, u"", 0, u"", 0, -1, true},           // before the fraction
    {71, 71, u" ", 80, u"", 0, 6, true},          // fraction
    {80, 0, u" ", 80, u"", 0, -1, true},          // trailing blanks
};

const TimestampState& FindState(int state) {
  return *std::find_if(std::begin(kTimestampStates), std::end(kTimestampStates),
                       [state](const TimestampState& row) { return row.state == state; });
}

}  // namespace

int ParseTimestamp(std::u16string_view text, Timestamp& numbers) {
  numbers.fill(0);
  const TimestampState* row = &kTimestampStates[0];
  uint32_t run = 0;  // of digits; unsigned, so that it wraps
  const auto store = [&] {
    if (row->field >= 0) numbers[static_cast<size_t>(row->field)] = static_cast<uint16_t>(run);
    run = 0;
  };
  for (const char16_t c : text) {
    if (c >= u'0' && c <= u'9' && row->onDigit != 0) {
      run = run * 10 + static_cast<uint32_t>(c - u'0');
      row = &FindState(row->onDigit);
    } else if (row->leave.find(c) != std::u16string_view::npos) {
      store();
      row = &FindState(row->next);
    } else if (row->otherLeave.find(c) != std::u16string_view::npos) {
      store();
      row = &FindState(row->otherNext);
    } else {
      return -1000 - row->state;
    }
  }
  if (!row->mayEnd) return -2000 - row->state;
  store();
  return 0;
}

std::u16string RemoveLineBreaks(std::u16string_view text) {
  std::u16string out;
  out.reserve(text.size());
  std::copy_if(text.begin(), text.end(), std::back_inserter(out),
               [](char16_t c) { return c != u'\r' && c != u'\n'; });
  return out;
}

}  // namespace core
