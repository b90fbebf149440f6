#include "sample/day_writer.h"

#include <algorithm>
#include <utility>

#include "core/date_time.h"
#include "core/day.h"
#include "core/text.h"

namespace sample {
namespace {

namespace chrono = std::chrono;

constexpr uint32_t kSeed = 20100614;
constexpr int kMinutesOfDay = 24 * 60;
constexpr int kShortest = 15;

std::u16string DateText(DayWriter::Date date) {
  const chrono::year_month_day parts(date);
  return core::DayText({static_cast<int>(parts.year()),
                        static_cast<int>(static_cast<unsigned>(parts.month())),
                        static_cast<int>(static_cast<unsigned>(parts.day()))});
}

}  // namespace

DayWriter::DayWriter(Date date)
    : date_(date), chance_(kSeed + static_cast<uint32_t>(date.time_since_epoch().count())) {}

void DayWriter::WakeAt(int minute) {
  clock_ = minute;
  place_ = u"自宅";
  sight_ = nullptr;
}

void DayWriter::Do(int minutes, const Doing& doing) {
  lastStart_ = clock_;
  clock_ += About(minutes);
  Add(Moment(lastStart_), Moment(clock_), doing);
}

void DayWriter::Until(int minute, const Doing& doing) {
  const int minutes = minute - clock_;
  if (minutes >= kShortest) Do(minutes, doing);
}

void DayWriter::GoTo(std::u16string_view place, std::u16string_view means, int minutes) {
  sight_ = nullptr;
  const std::u16string from = std::exchange(place_, place);
  place_.insert(0, from + std::u16string(kMovementSign));
  Do(minutes, {kMovement, means});
  place_ = place;
}

void DayWriter::GoTo(const Sight& sight, std::u16string_view means, int minutes) {
  GoTo(sight.name, means, minutes);
  sight_ = &sight;
}

void DayWriter::Meanwhile(int minutes, const Doing& doing) {
  Add(Moment(lastStart_), Moment(lastStart_ + minutes), doing);
}

void DayWriter::AllDay(int days, const Doing& doing) {
  const std::u16string here = std::exchange(place_, {});
  Add(Moment(0), DateText(date_ + chrono::days(days - 1)) + u' ' + std::u16string(core::kEndOfDay),
      doing);
  place_ = here;
}

std::vector<store::Action> DayWriter::Take() {
  std::ranges::stable_sort(actions_, {}, [](const store::Action& action) {
    return store::TextOf(action, store::kStaDateTime);
  });
  return std::move(actions_);
}

std::u16string DayWriter::Moment(int minute) const {
  const int ofDay = minute % kMinutesOfDay;
  return DateText(date_ + chrono::days(minute / kMinutesOfDay)) + u' ' +
         core::FormatTime(ofDay / 60, ofDay % 60, 0);
}

// A tenth more or less.
int DayWriter::About(int minutes) {
  const int spread = minutes / 10;
  return minutes - spread + Draw(2 * spread + 1);
}

void DayWriter::Add(std::u16string start, std::u16string end, const Doing& doing) {
  store::Action action;
  // Ids of the day itself, as the Actions were written on it; a day has far fewer than a hundred.
  std::u16string id = u"ID";
  for (const char16_t c : start) {
    if (c >= u'0' && c <= u'9') id += c;
  }
  action[store::kActId] = id + core::ZeroPadded(static_cast<int>(actions_.size()), 2);
  action[store::kStaDateTime] = std::move(start);
  action[store::kEndDateTime] = std::move(end);
  if (sight_ != nullptr) {
    action[store::kLatitude] = core::FloatText(sight_->latitude);
    action[store::kLongitude] = core::FloatText(sight_->longitude);
  }
  action[store::kSubject] = u"";
  action[store::kPlace] = place_;
  action[store::kCategory1] = doing.category1;
  action[store::kCategory2] = doing.category2;
  action[store::kMemo] = doing.memo;
  if (!doing.items.empty()) action[store::kExtItems] = doing.items;
  actions_.push_back(std::move(action));
}

}  // namespace sample
