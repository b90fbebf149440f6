#include "totals/totals.h"

#include <algorithm>

#include "core/date_time.h"
#include "core/text.h"
#include "platform/host.h"
#include "platform/late_wait.h"
#include "store/action_index.h"
#include "store/session.h"

namespace totals {
namespace {

using platform::Icon;
using platform::ShowNotice;

DayNumber Today() {
  return NumberOf(core::DayOf(platform::host().Now()));
}

// "11/20 09:00", with the year where the period has several.
std::u16string ShortMoment(std::u16string_view moment, bool withYear, bool withDay) {
  const core::MomentText text = core::SplitMoment(moment);
  const std::u16string day(withYear ? text.date : text.MonthDay());
  const std::u16string time(text.HourMinute());
  return withDay ? day + u" " + time : time;
}

}  // namespace

CTotals::CTotals(core::CAppState& app, Choices& choices)
    : app_(app),
      choices_(choices),
      find_(app.FindWhere.value_or(u"")),
      rows_(app.PlaceSepaStr),
      period_(PeriodOfView(app)) {
  ReadAgain();
}

std::u16string CTotals::Title() const {
  return TitleOf(period_);
}

// Only what the find has found counts.
bool CTotals::IsNarrowed() const {
  return (former_.empty() ? period_ : former_.front()).kind == PeriodKind::kFind;
}

Summary CTotals::Summarized() const {
  Summary summary = Summarize(sums_);
  if (!IsNarrowed()) return summary;
  summary.rest = u"それ以外の時間 " + HoursText(sums_.Unwritten());  // others may fill it
  if (!period_.IsBounded()) return summary;
  summary.note = u"検索結果のみ" + (summary.note.empty() ? u"" : u"　" + summary.note);
  return summary;
}

std::vector<PeriodKind> CTotals::Kinds() const {
  using enum PeriodKind;
  std::vector<PeriodKind> kinds = {kDay, kWeek, kMonth, kYear, kAll, kFromTo};
  if (!find_.empty()) kinds.push_back(kFind);
  return kinds;
}

std::vector<By> CTotals::Levels() const {
  return {By::kCategory1, By::kCategory2, By::kPlace, By::kWeekday, By::kHour};
}

std::vector<By> CTotals::InnerLevels() const {
  std::vector<By> levels = Levels();
  std::erase(levels, choices_.by);
  levels.insert(levels.begin(), By::kNothing);
  return levels;
}

// A longer period is chosen around the one on show, a shorter one within it: today, if that is in
// it, else its first day.
void CTotals::ChooseKind(PeriodKind kind) {
  const bool hasToday = period_.first <= Today() && Today() < period_.after;
  const DayNumber day = hasToday || period_.Days() < 1 ? Today() : period_.first;
  former_.clear();
  Show(kind == PeriodKind::kFromTo && period_.Days() > 0
           ? Period{kind, period_.first, period_.after}
           : PeriodOf(kind, day));
}

void CTotals::Step(int steps) {
  Show(totals::Step(period_, steps));
}

void CTotals::BigStep(int steps) {
  Show(totals::BigStep(period_, steps));
}

void CTotals::GoToToday() {
  GoToDay(DayOf(Today()));
}

void CTotals::GoToDay(const core::Day& day) {
  if (!period_.IsBounded()) return;
  const DayNumber first = NumberOf(day);
  Show(period_.kind == PeriodKind::kFromTo ? Period{period_.kind, first, first + period_.Days()}
                                           : PeriodOf(period_.kind, first));
}

void CTotals::SetFirst(const core::Day& day) {
  Show(From(period_, NumberOf(day)));
}

void CTotals::SetLast(const core::Day& day) {
  Show(To(period_, NumberOf(day)));
}

void CTotals::ChooseLevel(By by) {
  choices_.by = by;
  if (choices_.within == by) choices_.within = By::kNothing;
  OpenGroup({});
  ReadAgain();
}

void CTotals::ChooseInnerLevel(By within) {
  choices_.within = within;
  OpenGroup({});
  ReadAgain();
}

void CTotals::SetMovementsApart(bool apart) {
  choices_.movementsApart = apart;
  OpenGroup({});
  SumAgain();
}

void CTotals::TapBar(int bar) {
  if (bar < 0 || bar >= std::ssize(bars_)) return;
  OpenGroup(bar == openBar_ ? std::nullopt
                            : std::optional(bars_[static_cast<size_t>(bar)].group->key));
}

void CTotals::TapColumn(int column) {
  if (column < 0 || column >= std::ssize(columns_.times)) return;
  former_.push_back(period_);
  Show(PeriodOfColumn(columns_.plan, static_cast<size_t>(column)));
}

bool CTotals::GoBack() {
  if (openBar_ >= 0) {
    OpenGroup({});
    return true;
  }
  if (former_.empty()) return false;
  const Period former = former_.back();
  former_.pop_back();
  Show(former);
  return true;
}

void CTotals::Show(const Period& period) {
  period_ = period;
  ReadAgain();
}

// The opened group's list is of the rows that go: a message may come before there are others.
void CTotals::ReadAgain() {
  const std::optional<Key> open = OpenKey();
  OpenGroup({});
  platform::LateWait wait;
  ReadPeriod(app_, period_, IsNarrowed() ? find_ : u"", choices_, rows_, wait);
  wait.Look();
  if (!period_.IsBounded()) {
    const Span days = rows_.Days();
    period_.first = DayAt(days.from);
    period_.after = DayAt(days.to);
  }
  SumAgain();
  OpenGroup(open);
}

void CTotals::SumAgain() {
  sums_ = Sum(rows_, period_.Moments(), choices_);
  columns_ = Stack(rows_, period_, choices_, sums_);
  MakeBars();
}

void CTotals::MakeBars() {
  bars_.clear();
  for (const Group& group : sums_.groups) {
    const size_t slot = columns_.SlotOf(group.key.outer);
    bars_.push_back({&group, NameOf(rows_, choices_.by, group.key.outer), slot});
    for (const Group& inner : group.inner) {
      bars_.push_back({&inner, NameOf(rows_, LevelOf(choices_, inner.key), inner.key.inner), slot});
    }
  }
}

std::optional<Key> CTotals::OpenKey() const {
  if (openBar_ < 0) return {};
  return bars_[static_cast<size_t>(openBar_)].group->key;
}

void CTotals::OpenGroup(const std::optional<Key>& key) {
  openBar_ = -1;
  open_.clear();
  if (!key) return;
  const auto bar = std::ranges::find(bars_, *key, [](const Bar& one) { return one.group->key; });
  if (bar == bars_.end()) return;
  openBar_ = static_cast<int>(bar - bars_.begin());
  open_ = RowsOf(rows_, period_.Moments(), choices_, *key);
}

const Row& CTotals::RowAt(int action) const {
  return rows_.All()[static_cast<size_t>(open_[static_cast<size_t>(action)])];
}

// The opened group bears the name, or the one that it stands in.
bool CTotals::IsOpenName(By by, int name) const {
  const Key key = OpenKey().value_or(Key{});
  const bool isInner = key.inner != Key::kAny && LevelOf(choices_, key) == by && key.inner == name;
  return isInner || (choices_.by == by && key.outer == name);
}

std::u16string CTotals::ActionText(int action) const {
  if (action >= ActionCount()) return {};
  const Row& row = RowAt(action);
  const std::optional<ActionTexts> texts = ReadTexts(row.id);
  if (!texts) return {};
  const bool sameDay = DayAt(row.start) == DayAt(std::max(row.end - 1, row.start));
  const bool withYear = DayOf(period_.first).year != DayOf(period_.after - 1).year;
  const bool withDay = period_.Days() > 1 || !sameDay;
  const std::u16string end =
      row.runs ? u"●" : ShortMoment(texts->end, withYear && !sameDay, !sameDay);
  std::u16string text = ShortMoment(texts->start, withYear, withDay) + u"-" + end;
  const auto append = [&text](const std::u16string& part) {
    if (!part.empty()) text += u" " + core::RemoveLineBreaks(part);
  };
  if (!IsOpenName(By::kPlace, row.place)) append(texts->place);
  if (!IsOpenName(By::kCategory1, row.category1)) append(texts->category1);
  if (!IsOpenName(By::kCategory2, row.category2)) append(texts->category2);
  append(texts->memo);
  return text;
}

bool CTotals::SelectAction(int action) {
  if (action < 0 || action >= ActionCount()) return false;
  selectedRow_ = RowAt(action).id;
  const std::optional<ActionTexts> texts = ReadTexts(selectedRow_);
  if (!texts) {
    ShowNotice(u"このアクションは既に削除されています。", u"変更不可", Icon::kWarning);
    return false;
  }
  app_.SelActId = texts->id;
  app_.SelIndex = store::FindActionPosition(app_, texts->id);
  return true;
}

int CTotals::SelectedAction() const {
  const auto at = std::ranges::find(open_, selectedRow_, [this](int position) {
    return rows_.All()[static_cast<size_t>(position)].id;
  });
  return at == open_.end() ? -1 : static_cast<int>(at - open_.begin());
}

}  // namespace totals
