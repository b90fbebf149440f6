#include "tidy/tidy.h"

#include "core/date_time.h"
#include "core/text.h"
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

}  // namespace

bool TidyDay::Read() {
  const core::Day day = core::CurrentDay();
  chain_ = {day, {}, {}};
  store::CUserDataTable* table = store::dbSession().UserTable.get();
  if (table == nullptr) return false;
  const Text date = core::DayText(day);
  std::vector<store::Action> rows;
  store::HRESULT result = table->Select(
      u"select * from t_UserData where f_nchStaDateTime < '" + date +
      u" 24:00:00' and (f_nchEndDateTime >= '" + date + u" 00:00:00' or f_nchActId = '" +
      store::SqlQuote(Running()) + u"') order by f_nchStaDateTime asc");
  store::Action row;
  while (!store::Failed(result) && (result = table->GetNextRS(row)) == store::S_OK) {
    rows.push_back(std::move(row));
  }
  table->CloseRS();
  const platform::LocalTime now = platform::host().Now();
  chain_ =
      MakeChain(day, std::move(rows), Running(), ReadMoment(core::MomentOf(now), day).value_or(0));
  if (!store::Failed(result)) return true;
  Tell(store::WithReason(u"アクションを読み込めません。", result), Icon::kStop);
  return false;
}

// Of the file where the recorder hasn't been opened yet.
Text TidyDay::Running() const {
  if (app_.RcdrLoaded) return app_.RcdrPreActId;
  Text id;
  store::dbSession().TextTable->GetText(recorder::kPreActIdKey, id);
  return id;
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
  Read();
  changed = changed || written;
  return written;
}

bool TidyDay::WriteAll(const Outcome& outcome, std::u16string_view title) {
  const platform::WaitCursor waiting;
  store::NoteTrouble(store::Trouble::kUnknown);
  store::Engine& engine = *store::dbSession().Session;
  const store::WriteStep step(store::StepKind::kSingle, title);
  if (store::Failed(engine.BeginTransaction())) return false;
  recorder::ChainTurn chain(app_);
  if (!WriteRows(outcome, chain)) {
    const store::Trouble trouble = store::LastTrouble();
    engine.Rollback();
    store::NoteTrouble(trouble);
    return false;
  }
  if (store::Failed(engine.Commit())) return false;
  chain.Show();
  return true;
}

// A deleted Action leaves the recorder's chain at once.
bool TidyDay::WriteRows(const Outcome& outcome, recorder::ChainTurn& chain) {
  store::CUserDataTable& table = *store::dbSession().UserTable;
  for (const RowWrite& write : outcome.writes) {
    store::Action action = write.action;
    const Text id(store::TextOf(action, store::kActId));
    const bool isDelete = write.kind == WriteKind::kDelete;
    const store::HRESULT result = write.kind == WriteKind::kInsert ? table.Insert(action)
                                  : isDelete                       ? table.Delete(id)
                                                                   : table.Update(id, action);
    if (result != store::S_OK || (isDelete && !chain.Forget(id))) return false;
    if (!isDelete) app_.SelActId = *action[store::kActId];
  }
  return true;
}

bool TidyDay::Delete(size_t span) {
  if (!platform::AskYesNo(u"このアクションを削除しますか？", u"アクションの削除の確認"))
    return false;
  return Run(tidy::Delete(chain_, span), u"削除");
}

bool TidyDay::JoinWithNext(size_t span) {
  const bool differs = DiffersFromNext(chain_, span);
  if (differs && !platform::AskYesNo(u"「" + NameOf(chain_.spans[span]) + u"」と「" +
                                         NameOf(chain_.spans[NextOf(chain_, span)]) +
                                         u"」は場所か分類が違います。つなぎますか。",
                                     Text(kTitle))) {
    return false;
  }
  return Run(tidy::JoinWithNext(chain_, span), u"結合");
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
