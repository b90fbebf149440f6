// No text harms a date parser, and what one takes is written in a form that reads back the same.
#include <array>

#include "core/action_id.h"
#include "core/calendar_value.h"
#include "core/date_time.h"
#include "input.h"

namespace {

using Numbers = std::array<int, 3>;
using Parser = int (*)(std::u16string_view, int&, int&, int&);
using Format = std::u16string (*)(int, int, int);

constexpr Numbers kUntouched = {-7, -7, -7};

int Parse(Parser parser, std::u16string_view text, Numbers& numbers) {
  numbers = kUntouched;
  return parser(text, numbers[0], numbers[1], numbers[2]);
}

// True if the text was taken.
bool CheckParser(Parser parser, Format format, Parser formParser, std::u16string_view text) {
  Numbers numbers;
  const int result = Parse(parser, text, numbers);
  fuzz::Require(result == 0 || (result == -10 && numbers == kUntouched));
  if (result != 0) return false;
  Numbers again;
  fuzz::Require(Parse(formParser, format(numbers[0], numbers[1], numbers[2]), again) == 0);
  fuzz::Require(again == numbers);
  return true;
}

void CheckTimestamp(std::u16string_view text) {
  core::Timestamp numbers;
  const int result = core::ParseTimestamp(text, numbers);
  fuzz::Require(result == 0 || (result <= -1010 && result >= -1080) ||
                (result <= -2010 && result >= -2060));
  if (result != 0) return;
  std::u16string form = core::FormatDate(numbers[0], numbers[1], numbers[2]) + u' ' +
                        core::FormatTime(numbers[3], numbers[4], numbers[5]) + u'.' +
                        core::FormatDate(numbers[6], 0, 0).substr(0, numbers[6] > 9999 ? 5 : 4);
  core::Timestamp again;
  fuzz::Require(core::ParseTimestamp(form, again) == 0 && again == numbers);
}

// A date that is taken and lies within the calendar's years exists there too.
void CheckCalendar(std::u16string_view text) {
  Numbers date;
  if (Parse(core::ParseDate, text, date) != 0 || date[0] > 9999) return;
  core::CalendarValue value;
  fuzz::Require(core::MakeCalendarValue(value, date[0], date[1], date[2], 0, 0, 0) == 0);
}

void Check(std::u16string_view text) {
  CheckParser(core::ParseDate, core::FormatDate, core::ParseDate, text);
  CheckCalendar(text);
  const bool isTime = CheckParser(core::ParseTime, core::FormatTime, core::ParseTime, text);
  const bool isEntry = CheckParser(core::ParseTimeEntry, core::FormatTime, core::ParseTime, text);
  const bool isEnd = core::IsEndOfDayClock(text) == 0;
  fuzz::Require(!isTime || (isEntry && !isEnd));
  fuzz::Require(core::ParseEndTime(text) == (isEnd ? -1 : isTime ? 0 : -10));
  fuzz::Require(!(isEntry && core::IsEndOfDayEntry(text) == 0));
  CheckTimestamp(text);
  core::CheckActId(text);
  fuzz::Require(core::RemoveLineBreaks(text).find_first_of(u"\r\n") == std::u16string::npos);
}

}  // namespace

// The bytes serve twice: as characters of their own, which come upon digits sooner, and in pairs.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Check(std::u16string(data, data + size));
  Check(fuzz::AsText(data, size));
  return 0;
}
