// Comparing works on the text as it stands; only what a user typed or a file brought is parsed.
#include "core/date_time.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "core/calendar_value.h"
#include "core/characters.h"
#include "core/text.h"

namespace core {
namespace {

constexpr int kRefused = -10;
constexpr int kFirstYear = 1900;
constexpr size_t kDateLength = 10;
constexpr size_t kTimeBegin = 11;
constexpr size_t kTimeLength = 8;
constexpr size_t kShortLength = 5;  // mm/dd and hh:mm

// None if the text is empty or holds anything but digits.
std::optional<int> ReadNumber(std::u16string_view text) {
  if (AllDigits(text) != 0) return {};
  return ToInt32(text);
}

struct Clock {
  int hour;
  int minute;
  int second;  // 0 where the text leaves it out
};

// The numbers of h:m or h:m:s, whatever their size. What stands after the second ":" is the
// second, a third ":" included, which then is no digit.
std::optional<Clock> ReadClock(std::u16string_view text) {
  const size_t colon = text.find(u':');
  if (colon == std::u16string_view::npos) return {};
  const std::u16string_view rest = text.substr(colon + 1);
  const size_t nextColon = rest.find(u':');
  const bool hasSecond = nextColon != std::u16string_view::npos;
  const auto hour = ReadNumber(text.substr(0, colon));
  const auto minute = ReadNumber(rest.substr(0, nextColon));
  const auto second = ReadNumber(hasSecond ? rest.substr(nextColon + 1) : u"00");
  if (!hour || !minute || !second) return {};
  return Clock{*hour, *minute, *second};
}

bool IsEndOfDay(const std::optional<Clock>& clock) {
  return clock && clock->hour == 24 && clock->minute == 0 && clock->second == 0;
}

// A number that wrapped may be negative.
bool IsBelow(int value, int end) {
  return value >= 0 && value < end;
}

int Sign(int order) {
  return order < 0 ? -1 : order > 0 ? 1 : 0;
}

// Where ParseTimestamp stands in its text. The error codes are made of these numbers.
enum TimestampState {
  kBeforeYear = 10,
  kYear = 11,
  kBeforeMonth = 20,
  kMonth = 21,
  kBeforeDay = 30,
  kDay = 31,
  kBeforeHour = 40,
  kHour = 41,
  kBeforeMinute = 50,
  kMinute = 51,
  kBeforeSecond = 60,
  kSecond = 61,
  kBeforeFraction = 70,
  kFraction = 71,
  kTrailingBlanks = 80,
};

class TimestampReader {
 public:
  explicit TimestampReader(Timestamp& numbers) : numbers_(numbers) { numbers_.fill(0); }

  // 0, or the error if the character cannot stand here.
  int Take(char16_t c) { return Accepts(c) ? 0 : -1000 - state_; }

  // 0, or the error if the text must not end here. A number that the end cuts off counts where it
  // could have been the last.
  int End() {
    switch (state_) {
      case kDay:
      case kHour:
      case kMinute:
      case kSecond:
      case kFraction:
        StoreRun();
        return 0;
      case kBeforeHour:
      case kBeforeFraction:
      case kTrailingBlanks:
        return 0;
      default:
        return -2000 - state_;
    }
  }

 private:
  bool Accepts(char16_t c) {
    switch (state_) {
      case kBeforeYear:
        return IsBlank(c) || BeginRun(c, kYear);
      case kYear:
        return ExtendRun(c) || (IsSeparator(c) && Store(kBeforeMonth));
      case kBeforeMonth:
        return BeginRun(c, kMonth);
      case kMonth:
        return ExtendRun(c) || (IsSeparator(c) && Store(kBeforeDay));
      case kBeforeDay:
        return BeginRun(c, kDay);
      case kDay:
        return ExtendRun(c) || (IsBlank(c) && Store(kBeforeHour));
      case kBeforeHour:
        return IsBlank(c) || BeginRun(c, kHour);
      case kHour:
        return ExtendRun(c) || (c == u':' && Store(kBeforeMinute));
      case kBeforeMinute:
        return BeginRun(c, kMinute);
      case kMinute:
        return ExtendRun(c) || (c == u':' && Store(kBeforeSecond));
      case kBeforeSecond:
        return BeginRun(c, kSecond);
      case kSecond:
        return ExtendRun(c) || (c == u'.' && Store(kBeforeFraction)) ||
               (IsBlank(c) && Store(kTrailingBlanks));
      case kBeforeFraction:
        return BeginRun(c, kFraction);
      case kFraction:
        return ExtendRun(c) || (IsBlank(c) && Store(kTrailingBlanks));
      case kTrailingBlanks:
        return IsBlank(c);
    }
    return false;
  }

  static bool IsBlank(char16_t c) { return c == u' '; }
  // Those of one date need not match.
  static bool IsSeparator(char16_t c) { return c == u'/' || c == u'.' || c == u'-'; }

  bool BeginRun(char16_t c, TimestampState next) {
    run_ = 0;
    if (!ExtendRun(c)) return false;
    state_ = next;
    return true;
  }

  bool ExtendRun(char16_t c) {
    if (!IsDigit(c)) return false;
    run_ = static_cast<uint16_t>(run_ * 10 + (c - u'0'));
    return true;
  }

  bool Store(TimestampState next) {
    StoreRun();
    state_ = next;
    return true;
  }

  void StoreRun() { numbers_[field_++] = run_; }

  Timestamp& numbers_;
  TimestampState state_ = kBeforeYear;
  size_t field_ = 0;
  uint16_t run_ = 0;  // the low 16 bits of the digits so far
};

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

std::u16string DateOf(const platform::LocalTime& moment) {
  return FormatDate(moment.year, moment.month, moment.day);
}

std::u16string ShortTimeOf(const platform::LocalTime& moment) {
  return FormatHourMinute(moment.hour, moment.minute);
}

std::u16string MomentOf(const platform::LocalTime& moment) {
  return DateOf(moment) + u' ' + FormatTime(moment.hour, moment.minute, moment.second);
}

std::u16string_view MomentText::MonthDay() const {
  return date.size() < kShortLength ? date : date.substr(date.size() - kShortLength);
}

std::u16string_view MomentText::HourMinute() const {
  return time.substr(0, kShortLength);
}

MomentText SplitMoment(std::u16string_view moment) {
  MomentText parts{moment.substr(0, kDateLength), {}};
  if (moment.size() > kTimeBegin) parts.time = moment.substr(kTimeBegin, kTimeLength);
  return parts;
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
  const std::u16string_view rest = text.substr(slash + 1);
  const size_t nextSlash = rest.find(u'/');
  if (nextSlash == std::u16string_view::npos) return kRefused;
  const auto readYear = ReadNumber(text.substr(0, slash));
  const auto readMonth = ReadNumber(rest.substr(0, nextSlash));
  const auto readDay = ReadNumber(rest.substr(nextSlash + 1));
  if (!readYear || !readMonth || !readDay) return kRefused;
  if (*readYear < kFirstYear) return kRefused;
  if (*readDay < 1 || *readDay > DaysInMonth(*readYear, *readMonth)) return kRefused;
  year = *readYear;
  month = *readMonth;
  day = *readDay;
  return 0;
}

int ParseTime(std::u16string_view text, int& hour, int& minute, int& second) {
  const auto clock = ReadClock(text);
  if (!clock) return kRefused;
  if (!IsBelow(clock->hour, 24) || !IsBelow(clock->minute, 60) || !IsBelow(clock->second, 60)) {
    return kRefused;
  }
  hour = clock->hour;
  minute = clock->minute;
  second = clock->second;
  return 0;
}

int ParseEndTime(std::u16string_view text) {
  if (IsEndOfDay(ReadClock(text))) return -1;
  int hour, minute, second;
  return ParseTime(text, hour, minute, second);
}

int ParseTimeEntry(std::u16string_view typed, int& hour, int& minute, int& second) {
  const std::u16string text = NarrowForms(typed);
  if (text.size() != 4 || AllDigits(text) != 0) return ParseTime(text, hour, minute, second);
  const int number = ToInt32(text);
  if (number / 100 > 23 || number % 100 > 59) return kRefused;
  hour = number / 100;
  minute = number % 100;
  second = 0;
  return 0;
}

int IsEndOfDayClock(std::u16string_view text) {
  return IsEndOfDay(ReadClock(text)) ? 0 : 1;
}

int IsEndOfDayEntry(std::u16string_view typed) {
  const std::u16string text = NarrowForms(typed);
  return text == u"2400" ? 0 : IsEndOfDayClock(text);
}

int ParseTimestamp(std::u16string_view text, Timestamp& numbers) {
  TimestampReader reader(numbers);
  for (const char16_t c : text) {
    if (const int error = reader.Take(c); error != 0) return error;
  }
  return reader.End();
}

std::u16string RemoveLineBreaks(std::u16string_view text) {
  std::u16string out;
  out.reserve(text.size());
  std::copy_if(text.begin(), text.end(), std::back_inserter(out),
               [](char16_t c) { return c != u'\r' && c != u'\n'; });
  return out;
}

}  // namespace core
