#include "undo/undo.h"

#include "core/date_time.h"
#include "core/text.h"
#include "platform/host.h"
#include "recorder/chain_turn.h"
#include "store/action_index.h"
#include "store/session.h"
#include "store/trouble.h"

namespace undo {
namespace {

using platform::Icon;
using store::RowChange;
using store::Turn;
using store::TurnResult;
using Text = std::u16string;

constexpr std::u16string_view kClearTitle = u"元に戻す履歴の消去";

Text NameOf(Turn turn) {
  return turn == Turn::kUndo ? u"元に戻す" : u"やり直す";
}

Text NameOf(const store::UndoStep& step) {
  if (step.kind != store::StepKind::kCounted || step.count < 2) return step.title;
  return core::ZeroPadded(step.count, 1) + u"件の" + step.title;
}

store::UndoLog* Log() {
  store::CUserDataTable* table = store::dbSession().UserTable.get();
  return table == nullptr ? nullptr : &table->Log();
}

void Tell(TurnResult result, Turn turn, const Text& step) {
  const Text cannot = turn == Turn::kUndo ? u"元に戻せません。" : u"やり直せません。";
  Text text;
  switch (result) {
    case TurnResult::kNothing:
      text = NameOf(turn) + u"操作がありません。";
      break;
    case TurnResult::kForeign:
      text = u"「" + step + u"」のあとでアクションが変わっているため、" + cannot;
      break;
    case TurnResult::kRefused:
      text = u"「" + step + u"」のあとでレコーダーの記録が変わっているため、" + cannot;
      break;
    default:
      text = store::WithReason(step.empty() ? cannot : u"「" + step + u"」は" + cannot);
  }
  const bool failed = result == TurnResult::kFailed;
  platform::ShowNotice(text, NameOf(turn), failed ? Icon::kStop : Icon::kWarning);
}

// The first of the Actions that are there after the turn.
Text ChooseSelected(Turn turn, const std::vector<store::UndoRow>& rows) {
  const RowChange gone = turn == Turn::kUndo ? RowChange::kInserted : RowChange::kDeleted;
  for (const store::UndoRow& row : rows) {
    if (row.change != gone) return row.id;
  }
  return {};
}

void Select(core::CAppState& app, const Text& id) {
  store::Action action;
  const bool isThere =
      !id.empty() && store::dbSession().UserTable->ReadById(id, action) == store::S_OK;
  if (isThere) {
    core::SetCurDate(core::SplitMoment(store::TextOf(action, store::kStaDateTime)).date);
  }
  store::ReloadActionIndex(app);
  app.SelActId = isThere ? id : u"";
  app.SelIndex = isThere ? store::FindActionPosition(app, id) : -1;
}

}  // namespace

std::optional<Text> CommandText(Turn turn) {
  store::UndoLog* log = Log();
  std::optional<store::UndoStep> step;
  if (log != nullptr) log->Find(turn, step);
  if (!step) return {};
  return NameOf(turn) + u": " + NameOf(*step);
}

bool Take(core::CAppState& app, Turn turn) {
  store::UndoLog* log = Log();
  std::optional<store::UndoStep> step;
  store::NoteTrouble(store::Trouble::kUnknown);
  const bool isRead = log == nullptr || log->Find(turn, step);
  if (!step) {
    Tell(isRead ? TurnResult::kNothing : TurnResult::kFailed, turn, {});
    return false;
  }
  TurnResult result;
  {
    const platform::WaitCursor waiting;
    store::dbSession().UserTable->CloseRS();
    store::NoteTrouble(store::Trouble::kUnknown);
    recorder::ChainTurn chain(app);
    result =
        log->Take(turn, [&](const store::UndoStep& taken) { return chain.Write(turn, taken); });
    if (result == TurnResult::kDone) {
      chain.Show();
      Select(app, ChooseSelected(turn, log->RowsOf(*step)));
    }
  }
  if (result != TurnResult::kDone) Tell(result, turn, NameOf(*step));
  return result == TurnResult::kDone;
}

void ClearHistory() {
  store::UndoLog* log = Log();
  std::optional<store::UndoStep> undo, redo;
  const bool isRead =
      log == nullptr || (log->Find(Turn::kUndo, undo) && log->Find(Turn::kRedo, redo));
  if (isRead && !undo && !redo) {
    platform::ShowNotice(u"元に戻す履歴はありません。", Text(kClearTitle), Icon::kInformation);
    return;
  }
  if (!platform::AskYesNo(u"元に戻す履歴を消去しますか。\nこれまでの操作は元に戻せなくなります。",
                          Text(kClearTitle), Icon::kQuestion, platform::kNoButton)) {
    return;
  }
  store::NoteTrouble(store::Trouble::kUnknown);
  if (!store::Failed(log->Clear())) return;
  platform::ShowNotice(store::WithReason(u"元に戻す履歴を消去できませんでした。"),
                       Text(kClearTitle), Icon::kStop);
}

}  // namespace undo
