#include "tidy/day_chain.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <tuple>

#include "core/date_time.h"
#include "core/text.h"

namespace tidy {
namespace {

std::chrono::sys_days DaysOf(const core::Day& day) {
  return std::chrono::year(day.year) / day.month / day.day;
}

bool IsTwoDigits(std::u16string_view text, size_t at, int& value) {
  const auto digit = [&](size_t i) { return text[i] >= u'0' && text[i] <= u'9'; };
  if (!digit(at) || !digit(at + 1)) return false;
  value = (text[at] - u'0') * 10 + (text[at + 1] - u'0');
  return true;
}

bool Touches(const Span& span) {
  const bool isMoment = span.start == span.end;
  return span.start < kDaySeconds && (isMoment ? span.start >= 0 : span.end > 0);
}

std::optional<Span> MakeSpan(const core::Day& day, store::Action& row, std::u16string_view running,
                             int64_t now) {
  const auto start = ReadMoment(TextOf(row, store::kStaDateTime), day);
  const auto end = ReadMoment(TextOf(row, store::kEndDateTime), day);
  if (!start || !end || *end < *start) return {};
  const bool runs = !running.empty() && TextOf(row, store::kActId) == running;
  Span span{std::move(row), *start, runs ? std::max(*start, now) : *end, runs};
  return Touches(span) ? std::optional(std::move(span)) : std::nullopt;
}

}  // namespace

std::optional<int64_t> ReadMoment(std::u16string_view text, const core::Day& day) {
  constexpr size_t kLength = 19;
  const auto date = text.size() == kLength ? core::ReadDay(text.substr(0, 10)) : std::nullopt;
  int hour = 0, minute = 0, second = 0;
  if (!date || !IsTwoDigits(text, 11, hour) || !IsTwoDigits(text, 14, minute) ||
      !IsTwoDigits(text, 17, second)) {
    return {};
  }
  const int64_t days = (DaysOf(*date) - DaysOf(day)).count();
  const int seconds = hour * 3600 + minute * 60 + second;
  return days * kDaySeconds + seconds;
}

std::u16string MomentText(int64_t moment, const core::Day& day) {
  const int64_t days = (moment >= 0 ? moment : moment - kDaySeconds + 1) / kDaySeconds;
  const auto left = static_cast<int>(moment - days * kDaySeconds);
  const core::Day date = core::DaysLater(day, static_cast<int>(days)).value_or(day);
  return core::DayText(date) + u' ' + core::FormatTime(left / 3600, left / 60 % 60, left % 60);
}

std::u16string LengthText(int64_t seconds) {
  const auto number = [](int64_t value, int digits) {
    return core::ZeroPadded(static_cast<int>(value), digits);
  };
  std::u16string text = number(seconds / 3600, 1) + u':' + number(seconds / 60 % 60, 2);
  if (seconds % 60 != 0) text += u':' + number(seconds % 60, 2);
  return text;
}

DayChain MakeChain(const core::Day& day, std::vector<store::Action> rows,
                   std::u16string_view running, int64_t now) {
  DayChain chain{day, {}, {}};
  for (store::Action& row : rows) {
    if (auto span = MakeSpan(day, row, running, now)) chain.spans.push_back(std::move(*span));
  }
  std::ranges::stable_sort(chain.spans, {},
                           [](const Span& span) { return std::tuple(span.start, span.end); });
  int64_t reach = 0;
  size_t last = kNoAction;  // the one that reaches there
  for (size_t i = 0; i < chain.spans.size(); ++i) {
    const Span& span = chain.spans[i];
    const int64_t from = std::max<int64_t>(span.start, 0);
    const int64_t to = std::min(span.end, kDaySeconds);
    if (from > reach) chain.links.push_back({LinkKind::kGap, reach, from, last, i});
    if (from < std::min(reach, to)) {
      chain.links.push_back({LinkKind::kOverlap, from, std::min(reach, to), last, i});
    }
    chain.links.push_back({LinkKind::kAction, from, to, i, i});
    if (to > reach || last == kNoAction) last = i;
    reach = std::max(reach, to);
  }
  if (reach < kDaySeconds) {
    chain.links.push_back({LinkKind::kGap, reach, kDaySeconds, last, kNoAction});
  }
  return chain;
}

std::vector<Stretch> StretchesOf(const DayChain& chain) {
  std::map<int64_t, int> steps{{0, 0}, {kDaySeconds, 0}};
  for (const Span& span : chain.spans) {
    ++steps[std::clamp<int64_t>(span.start, 0, kDaySeconds)];
    --steps[std::clamp<int64_t>(span.end, 0, kDaySeconds)];
  }
  std::vector<Stretch> stretches;
  int depth = 0;
  for (auto step = steps.begin(); std::next(step) != steps.end(); ++step) {
    depth += step->second;
    const int64_t to = std::next(step)->first;
    if (stretches.empty() || stretches.back().depth != depth) {
      stretches.push_back({step->first, to, depth});
    } else {
      stretches.back().to = to;
    }
  }
  return stretches;
}

std::u16string NameOf(const Span& span) {
  for (const store::ActionColumn column :
       {store::kPlace, store::kCategory1, store::kCategory2, store::kSubject}) {
    const std::u16string_view text = TextOf(span.action, column);
    if (!text.empty()) return std::u16string(text);
  }
  return std::u16string(TextOf(span.action, store::kStaDateTime).substr(11, 5));
}

}  // namespace tidy
