#include "backup/backup_names.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <set>

#include "core/paths.h"
#include "core/text.h"
#include "platform/files.h"

namespace backup {
namespace {

using core::Day;
using core::ZeroPadded;
using Text = std::u16string;

constexpr size_t kDays = 7;
constexpr size_t kMonths = 12;
constexpr size_t kDigits = 8;  // of a date

// What stands before and after a date.
struct Frame {
  Text before, after;

  explicit Frame(std::u16string_view dataFile) {
    const Text name = core::NameOf(RealPath(dataFile));
    const size_t point = std::min(name.rfind(u'.'), name.size());
    before = name.substr(0, point) + u'_';
    after = name.substr(point);
  }
};

Text Digits(int year, int month, int day) {
  return ZeroPadded(year, 4) + ZeroPadded(month, 2) + ZeroPadded(day, 2);
}

Text NameOfDay(const Frame& frame, const Day& day) {
  return frame.before + Digits(day.year, day.month, day.day) + u"_auto" + frame.after;
}

// The day of which a name is the copy; none for any other name.
std::optional<Day> DayOfCopy(std::u16string_view name, const Frame& frame) {
  if (name.size() < frame.before.size() + kDigits) return {};
  const Text digits(name.substr(frame.before.size(), kDigits));
  const std::optional<Day> day =
      core::ReadDay(digits.substr(0, 4) + u'/' + digits.substr(4, 2) + u'/' + digits.substr(6));
  return day && name == NameOfDay(frame, *day) ? day : std::nullopt;
}

using Days = std::set<Day, std::greater<>>;  // the newest first

Days DaysToKeep(const Days& days) {
  Days kept;
  std::set<std::pair<int, int>> months;
  for (const Day& day : days) {
    const bool isLastOfMonth =
        months.size() < kMonths && months.emplace(day.year, day.month).second;
    if (isLastOfMonth || kept.size() < kDays) kept.insert(day);
  }
  return kept;
}

}  // namespace

Text RealPath(std::u16string_view path) {
  return platform::files().FollowLink(path).value_or(Text(path));
}

Text BackupFolder(std::u16string_view dataFile) {
  return core::FolderOf(RealPath(dataFile)) + u"\\backup";
}

Text DatedName(std::u16string_view dataFile, const Day& day) {
  const Frame frame(dataFile);
  return frame.before + Digits(day.year, day.month, day.day) + frame.after;
}

Text DailyName(std::u16string_view dataFile, const Day& day) {
  return NameOfDay(Frame(dataFile), day);
}

Text MomentName(std::u16string_view dataFile, const platform::LocalTime& now) {
  const Frame frame(dataFile);
  return frame.before + Digits(now.year, now.month, now.day) + u'_' + ZeroPadded(now.hour, 2) +
         ZeroPadded(now.minute, 2) + ZeroPadded(now.second, 2) + frame.after;
}

std::vector<Text> OutdatedCopies(const std::vector<Text>& names, std::u16string_view dataFile,
                                 const Day& today) {
  const Frame frame(dataFile);
  Days days;
  for (const Text& name : names) {
    if (const auto day = DayOfCopy(name, frame)) days.insert(*day);
  }
  Days kept = DaysToKeep(days);
  kept.insert(today);
  std::vector<Text> outdated;
  for (const Text& name : names) {
    const bool isUnfinished = name.ends_with(kUnfinished);
    const size_t size = name.size() - (isUnfinished ? kUnfinished.size() : 0);
    const auto day = DayOfCopy(std::u16string_view(name).substr(0, size), frame);
    if (day && (isUnfinished || !kept.contains(*day))) outdated.push_back(name);
  }
  return outdated;
}

}  // namespace backup
