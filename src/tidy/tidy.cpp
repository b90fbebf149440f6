#include "tidy/tidy.h"

#include <algorithm>

#include "core/date_time.h"
#include "core/text.h"
#include "core/time_list.h"
#include "platform/host.h"
#include "recorder/recorder_state.h"
#include "store/action_index.h"
#include "store/session.h"
#include "store/trouble.h"
#include "store/write_step.h"

namespace tidy {
namespace {

using platform::Icon;
using Text = std::u16string;

constexpr std::u16string_view kTitle = u"一日の整理";

void Tell(const Text& text, Icon icon) {
  platform::ShowNotice(text, Text(kTitle), icon);
}

// What touches the day, and the running Action, which goes on after its stored end.
store::HRESULT SelectDay(store::CUserDataTable& table, const Text& date, const Text& running) {
  const Text end = date + u" 24:00:00";
  const auto touching = store::TouchingCondition(date + u" 00:00:00", end);
  if (!touching) return store::E_FAIL;
  return table.Select(u"select * from t_UserData where (" + *touching + u") or (f_nchActId = '" +
                      store::SqlQuote(running) + u"' and f_nchStaDateTime < '" + end +
                      u"') order by f_nchStaDateTime asc");
}

}  // namespace

std::u16string_view TextOf(Command command) {
  static constexpr std::u16string_view kTexts[] = {
      u"始まりを変える...", u"終わりを変える...", u"分ける...",  u"次とつなぐ",
      u"前を延ばす",        u"後を早める",        u"前を詰める", u"後を遅らせる",
      u"外側を分ける",      u"新規作成...",       u"変更...",    u"削除"};
  return kTexts[static_cast<size_t>(command)];
}

std::u16string_view TimeNameOf(Command command) {
  static constexpr std::u16string_view kNames[] = {u"始まり", u"終わり", u"分ける"};
  return kNames[static_cast<size_t>(command)];
}

bool TidyDay::Read() {
  const core::Day day = core::CurrentDay();
  chain_ = {day, {}, {}};
  store::CUserDataTable* table = store::dbSession().UserTable.get();
  if (table == nullptr) return false;
  std::vector<store::Action> rows;
  Text running;
  store::HRESULT result = recorder::ReadRunningId(app_, running);
  if (!store::Failed(result)) result = SelectDay(*table, core::DayText(day), running);
  store::Action row;
  while (!store::Failed(result) && (result = table->GetNextRS(row)) == store::S_OK) {
    rows.push_back(std::move(row));
  }
  table->CloseRS();
  const platform::LocalTime now = platform::host().Now();
  chain_ = MakeChain(day, std::move(rows), running,
                     ReadMoment(core::MomentOf(now), day).value_or(0) / 60 * 60);
  if (!store::Failed(result)) return true;
  Tell(store::WithReason(u"アクションを読み込めません。", result), Icon::kStop);
  return false;
}

bool TidyDay::Run(const Outcome& outcome, std::u16string_view title) {
  if (!outcome.refusal.empty()) {
    Tell(outcome.refusal, Icon::kWarning);
    return false;
  }
  if (outcome.writes.empty()) return false;
  const bool written = WriteAll(outcome, title);
  if (!written) Tell(store::WithReason(u"書き込めませんでした。"), Icon::kStop);
  store::ReloadActionIndex(app_);
  SelectById(Text(app_.SelActId));
  Read();
  return written;
}

bool TidyDay::WriteAll(const Outcome& outcome, std::u16string_view title) {
  const platform::WaitCursor waiting;
  store::NoteTrouble(store::Trouble::kUnknown);
  store::Engine& engine = *store::dbSession().Session;
  const store::WriteStep step(store::StepKind::kSingle, title);
  if (store::Failed(engine.BeginTransaction())) return false;
  recorder::ChainTurn chain(app_);
  Text written;
  if (!WriteRows(outcome, chain, written)) {
    const store::Trouble trouble = store::LastTrouble();
    engine.Rollback();
    store::NoteTrouble(trouble);
    return false;
  }
  if (store::Failed(engine.Commit())) return false;
  chain.Show();
  app_.SelActId = written;
  return true;
}

// A deleted Action leaves the recorder's chain at once.
bool TidyDay::WriteRows(const Outcome& outcome, recorder::ChainTurn& chain, Text& written) {
  store::CUserDataTable& table = *store::dbSession().UserTable;
  for (const RowWrite& write : outcome.writes) {
    store::Action action = write.action;
    const Text id(store::TextOf(action, store::kActId));
    const bool isDelete = write.kind == WriteKind::kDelete;
    const store::HRESULT result = write.kind == WriteKind::kInsert ? table.Insert(action)
                                  : isDelete                       ? table.Delete(id)
                                                                   : table.Update(id, action);
    if (result != store::S_OK || (isDelete && !chain.Forget(id))) return false;
    if (!isDelete) written = *action[store::kActId];
  }
  return true;
}

bool TidyDay::MayDelete() const {
  return platform::AskYesNo(u"このアクションを削除しますか？", u"アクションの削除の確認");
}

bool TidyDay::MayJoin(size_t span) const {
  if (!DiffersFromNext(chain_, span)) return true;
  return platform::AskYesNo(u"「" + NameOf(chain_.spans[span]) + u"」と「" +
                                NameOf(chain_.spans[NextOf(chain_, span)]) +
                                u"」は場所か分類が違います。つなぎますか。",
                            Text(kTitle));
}

std::vector<Command> TidyDay::CommandsOf(const Link& link) const {
  std::vector<Command> commands;
  const auto add = [&](Command command, bool applies) {
    if (applies) commands.push_back(command);
  };
  const bool hasBefore = link.before != kNoAction;
  const bool runs = hasBefore && chain_.spans[link.before].runs;
  if (link.kind == LinkKind::kAction) {
    const Span& span = chain_.spans[link.before];
    add(Command::kMoveStart, !span.BeganBefore());
    add(Command::kMoveEnd, !runs && !span.GoesOn());
    add(Command::kSplit, span.end > span.start);
    add(Command::kJoin, !runs && NextOf(chain_, link.before) != kNoAction);
    add(Command::kChange, true);
    add(Command::kDelete, true);
  } else if (link.kind == LinkKind::kGap) {
    add(Command::kExtendBefore, hasBefore && !runs);
    add(Command::kAdvanceAfter, link.after != kNoAction);
    add(Command::kNew, true);
  } else {
    add(Command::kTrimBefore, TrimBefore(chain_, link).refusal.empty());
    add(Command::kDelayAfter, DelayAfter(chain_, link).refusal.empty());
    add(Command::kSplitOuter, SplitOuter(chain_, link).refusal.empty());
  }
  return commands;
}

void TidyDay::TellWhyNone(const Link& overlap) const {
  Tell(TrimBefore(chain_, overlap).refusal, Icon::kWarning);
}

int64_t TidyDay::TimeFor(Command command, const Link& link) {
  if (command == Command::kMoveStart) return link.from;
  if (command == Command::kMoveEnd) return link.to;
  return (link.from + link.to) / 2 / 60 * 60;
}

bool TidyDay::Run(Command command, const Link& link, int64_t at) {
  switch (command) {
    case Command::kMoveStart:
      return Run(MoveBoundary(chain_, link.from, at), u"境界の移動");
    case Command::kMoveEnd:
      return Run(MoveBoundary(chain_, link.to, at), u"境界の移動");
    case Command::kSplit:
      return Run(Split(chain_, link.before, at), u"分割");
    case Command::kJoin:
      return MayJoin(link.before) && Run(JoinWithNext(chain_, link.before), u"結合");
    case Command::kExtendBefore:
      return Run(ExtendBefore(chain_, link), u"空きを埋める");
    case Command::kAdvanceAfter:
      return Run(AdvanceAfter(chain_, link), u"空きを埋める");
    case Command::kTrimBefore:
      return Run(TrimBefore(chain_, link), u"重なりの解消");
    case Command::kDelayAfter:
      return Run(DelayAfter(chain_, link), u"重なりの解消");
    case Command::kSplitOuter:
      return Run(SplitOuter(chain_, link), u"重なりの解消");
    case Command::kDelete:
      return MayDelete() && Run(tidy::Delete(chain_, link.before), u"削除");
    case Command::kNew:
    case Command::kChange:
      break;
  }
  return false;
}

void TidyDay::Select(const Link& link) {
  SelectById(Text(store::TextOf(chain_.spans[link.before].action, store::kActId)));
}

void TidyDay::SelectById(const Text& id) {
  app_.SelActId = id;
  app_.SelIndex = id.empty() ? -1 : std::max(-1, store::FindActionPosition(app_, id));
}

std::optional<int64_t> TidyDay::ReadTime(std::u16string_view typed) {
  int hour = 0, minute = 0, second = 0;
  if (typed == u"24:00" || typed == u"2400") return kDaySeconds;
  if (core::ParseTimeEntry(typed, hour, minute, second) == 0) {
    return hour * 3600 + minute * 60 + second;
  }
  core::ShowBadTime();
  return {};
}

Text TidyDay::TimeText(int64_t moment) {
  const auto minutes = static_cast<int>(moment / 60);
  return core::FormatHourMinute(minutes / 60, minutes % 60);
}

Text TidyDay::TimesOf(const Link& link) const {
  if (link.kind != LinkKind::kAction) return TimeText(link.from) + u"-" + TimeText(link.to);
  const Span& span = chain_.spans[link.before];
  const Text from = span.BeganBefore() ? Text(u"←") : TimeText(link.from);
  const Text to = span.runs ? Text(u"…") : span.GoesOn() ? Text(u"→") : TimeText(link.to);
  return from + u"-" + to;
}

Text TidyDay::TextOf(const Link& link) const {
  const Text length = LengthText(link.to - link.from);
  if (link.kind == LinkKind::kGap) return u"空き " + length;
  if (link.kind == LinkKind::kOverlap) {
    return u"重なり " + length + u" " + NameOf(chain_.spans[link.before]);
  }
  const store::Action& action = chain_.spans[link.before].action;
  Text text;
  for (const store::ActionColumn column :
       {store::kPlace, store::kCategory1, store::kCategory2, store::kMemo}) {
    const Text part = core::RemoveLineBreaks(store::TextOf(action, column));
    if (!part.empty()) text += (text.empty() ? u"" : u" ") + part;
  }
  return text;
}

}  // namespace tidy
