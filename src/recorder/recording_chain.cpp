// The chain as a whole: taken up again, stepped back, forgotten, pruned of what others deleted.
#include "core/date_time.h"
#include "core/text.h"
#include "platform/host.h"
#include "recorder/recording.h"
#include "store/action_index.h"
#include "store/read_action.h"
#include "store/session.h"
#include "store/trouble.h"

namespace recorder {
namespace {

using platform::Icon;
using store::Action;

// Kept on purpose: the second name is another screen's.
constexpr ReadSite kReopenSite = {u"CRecorderDlg::RecReopen", 5063, u"CEditAction::OnInitDialog",
                                  5088};
constexpr ReadSite kBackSite = {u"CRecorderDlg::OnBtnBack", 4473, u"CRecorderDlg::OnBtnBack", 4490};
constexpr ReadSite kListSite = {u"CRecorderDlg::SetActList", 1762, u"CRecorderDlg::SetActList",
                                1781};
constexpr ReadSite kRunningSite = {u"CRecorderDlg::SetActList", 1919, u"CRecorderDlg::SetActList",
                                   1919};

std::u16string NewestOf(const core::TextList& history) {
  return history.At(history.Count() - 1);
}

// A failure is reported, and the operation goes on.
void UpdateRow(std::u16string_view id, Action& action) {
  const store::HRESULT result = store::dbSession().UserTable->Update(id, action);
  if (!store::Failed(result)) return;
  Tell(store::WithReason(u"アクションの変更に失敗しました。(" + core::Hex(result) + u")", result),
       u"アクション変更エラー", Icon::kStop);
}

}  // namespace

void CRecorder::RecReopen() {
  if (ValidateInlineEdit() != 0) return;
  const platform::WaitCursor wait;
  if (app_.RcdrHistory.Empty()) {
    Tell(u"再開する記録がありません。新規に記録を開始してください。", u"レコーダー再開不可",
         Icon::kWarning);
    return;
  }
  const std::u16string id(NewestOf(app_.RcdrHistory));
  Action action;
  const Found found = ReadRow(id, kReopenSite, action);
  if (found == Found::kNo) {
    Tell(u"直前のアクションが見つかりません。新規に記録を開始してください。", u"レコーダー再開不可",
         Icon::kStop);
  }
  if (found != Found::kYes) return;
  const auto reopen = [&]() -> std::optional<Ending> {
    // The end stays: the next closing sets it.
    if (TakeMovementBack(action, app_.PlaceSepaStr)) UpdateRow(id, action);
    SetRunning(id, StartOf(action));
    return WritePreActId();
  };
  const std::optional<Ending> ending = InBurst(store::StepKind::kReopen, u"記録の再開", reopen);
  if (ending) return EndWith(*ending);
  ShowButtons(true);
  SetActList();
}

void CRecorder::OnBtnBack() {
  if (ValidateInlineEdit() != 0) return;
  if (app_.RcdrHistory.Empty()) {
    Tell(u"これ以上、戻せません。", u"戻し不可", Icon::kWarning);
    return;
  }
  if (!platform::AskYesNo(u"最後のアクションを削除しますが、よろしいですか？",
                          u"アクション削除の確認")) {
    return;
  }
  const platform::WaitCursor wait;
  const std::optional<Ending> ending =
      InBurst(store::StepKind::kBack, u"記録の戻し", [&] { return WriteStepBack(); });
  if (ending) return EndWith(*ending);
  ResetMoment();
  store::ReloadActionIndex(app_);
  SetActList();
}

std::optional<CRecorder::Ending> CRecorder::WriteStepBack() {
  store::dbSession().UserTable->Delete(NewestOf(app_.RcdrHistory));  // it may be gone already
  app_.RcdrHistory.RemoveAt(app_.RcdrHistory.Count() - 1);
  const store::HRESULT counted = WriteHistNum();
  if (store::Failed(counted)) return Ending{CountFault(core::Hex(counted)), kWriteFaultTitle};
  if (!app_.RcdrHistory.Empty()) return ReopenLast();
  SetRunning(u"", {});
  std::optional<Ending> ending = WritePreActId();
  if (!ending) ShowButtons(false);
  return ending;
}

// Also where the recording was stopped before the step back.
std::optional<CRecorder::Ending> CRecorder::ReopenLast() {
  app_.RcdrPreActId = NewestOf(app_.RcdrHistory);
  std::optional<Ending> ending = WritePreActId();
  if (ending) return ending;
  Action action;
  const Found found = ReadRow(app_.RcdrPreActId, kBackSite, action);
  if (found == Found::kFailed) return Ending{};
  if (found == Found::kNo) {
    Tell(u"ひとつ前のアクションが見つかりません。記録を停止します。", u"レコーダー停止",
         Icon::kStop);
    SetRunning(u"", {});
    ending = WritePreActId();
    if (!ending) {
      canGoBack = canStop = false;
      isRunning = false;
    }
    return ending;
  }
  const Moment start = StartOf(action);
  SetRunning(app_.RcdrPreActId, start);
  TakeEndBack(action);
  TakeMovementBack(action, app_.PlaceSepaStr);
  UpdateRow(app_.RcdrPreActId, action);
  app_.SelActId = app_.RcdrPreActId;
  if (core::SetCurDate(start.date) != 0) return Ending{};
  return {};
}

// Deletes nothing: a running Action stays as it stands, its end equal to its start.
void CRecorder::OnBtnClear() {
  if (ValidateInlineEdit() != 0) return;
  const platform::WaitCursor wait;
  const std::optional<Ending> ending =
      InBurst(store::StepKind::kSingle, u"記録のクリア", [&] { return ForgetChain(); });
  if (ending) return EndWith(*ending);
  lines = {};
  fields = {};
  ShowButtons(false);
}

std::optional<CRecorder::Ending> CRecorder::ForgetChain() {
  SetRunning(u"", {});
  std::optional<Ending> ending = WritePreActId();
  if (ending) return ending;
  app_.RcdrHistory.Clear();
  const store::HRESULT counted = WriteHistNum();
  if (!store::Failed(counted)) return {};
  return KeyFault(kHistNumKey, core::Hex(counted));
}

void CRecorder::FxBtnDelete() {
  if (ValidateInlineEdit() != 0) return;
  const size_t count = lines.selected.size();
  if (count == 0) {
    Tell(u"有効なアクションが選択されていません。", u"削除不可", Icon::kWarning);
    return;
  }
  const std::u16string question = count == 1 ? u"このアクションを削除しますか？"
                                             : u"これらの " +
                                                   core::ZeroPadded(static_cast<int>(count), 1) +
                                                   u"個のアクションを削除しますか？";
  if (!platform::AskYesNo(question, u"アクションの削除の確認")) return;
  const platform::WaitCursor wait;
  const std::optional<Ending> ending =
      InBurst(store::StepKind::kCounted, u"削除", [&] { return DeleteSelected(); });
  if (ending) return EndWith(*ending);
  store::ReloadActionIndex(app_);
  SetActList();
}

std::optional<CRecorder::Ending> CRecorder::DeleteSelected() {
  for (auto line = lines.selected.rbegin(); line != lines.selected.rend(); ++line) {
    if (*line >= app_.RcdrHistory.Count()) continue;  // a failed recording leaves such lines
    const store::HRESULT result = store::dbSession().UserTable->Delete(app_.RcdrHistory.At(*line));
    if (store::Failed(result)) {
      return Ending{store::FaultText(u"CRecorderDlg::FxBtnDelete Delete", 5272, result),
                    kFaultTitle};
    }
  }
  return {};
}

void CRecorder::SetActList() {
  lines = {};
  if (!FillLines()) return;
  // Also where the loaded count was larger than the number of rows.
  if (app_.RcdrHistNum != static_cast<int32_t>(app_.RcdrHistory.Count())) {
    const store::HRESULT counted = WriteHistNum();
    if (store::Failed(counted)) {
      return EndWith({CountFault(core::ZeroPadded(counted, 1)), kWriteFaultTitle});
    }
  }
  SelectLastLine();
  if (!CheckRunning()) return;
  ShowButtons(!app_.RcdrPreActId.empty());
}

void CRecorder::SelectLastLine() {
  if (!lines.texts.empty()) lines.SelectOnly(lines.texts.size() - 1);
}

// Drops from the history what others have deleted. The data file's rows are not renumbered, so a
// newest entry that comes to stand past the count is lost with the next start (kept on purpose).
bool CRecorder::FillLines() {
  size_t entry = 0;
  while (entry < app_.RcdrHistory.Count()) {
    Action action;
    const Found found = ReadRow(app_.RcdrHistory.At(entry), kListSite, action);
    if (found == Found::kFailed) return false;
    if (found == Found::kNo) {
      app_.RcdrHistory.RemoveAt(entry);
      continue;
    }
    ++entry;
    const bool isLast = entry == app_.RcdrHistory.Count();
    lines.texts.push_back(ListLine(action, isLast && !app_.RcdrPreActId.empty()));
  }
  return true;
}

// A running Action that has been deleted no longer runs.
bool CRecorder::CheckRunning() {
  if (app_.RcdrPreActId.empty()) return true;
  Action action;
  const Found found = ReadRow(app_.RcdrPreActId, kRunningSite, action);
  if (found != Found::kNo) return found == Found::kYes;
  SetRunning(u"", {});
  const store::HRESULT written = store::dbSession().TextTable->SetText(kPreActIdKey, u"");
  if (!store::Failed(written)) return true;
  EndWith(KeyFault(kPreActIdKey, core::ZeroPadded(written, 1)));
  return false;
}

bool CRecorder::OnListChange() {
  if (!Close()) return false;
  if (lines.selected.size() != 1 || *lines.selected.begin() >= app_.RcdrHistory.Count()) {
    return false;
  }
  const std::u16string id(app_.RcdrHistory.At(*lines.selected.begin()));
  const int position = store::FindActionPosition(app_, id);
  if (position == -1) {
    Tell(
        u"タップしたアクションは現在の検索結果に含まれていません。検索解除してから操作してくださ"
        u"い。",
        u"検索対象外", Icon::kStop);
  } else if (position < 0) {
    Tell(u"変更したアクションIDが見つかりません。", u"内部エラー", Icon::kStop);
  } else {
    app_.SelActId = id;
    app_.SelIndex = position;
  }
  return position >= 0;
}

// The screen for one Action has the same check, and what was chosen there counts.
void CRecorder::AfterChange() {
  ReadStartChoice();
  SetActList();
}

// Kept on purpose: a trace of the program's making, and it does not see the last line.
void CRecorder::TellKey(std::u16string_view name) const {
  const bool sees = !lines.selected.empty() && *lines.selected.begin() + 1 < lines.texts.size();
  const int position = sees ? static_cast<int>(*lines.selected.begin()) : -1;
  Tell(std::u16string(name) + u' ' + core::ZeroPadded(position, 1), u"debug", Icon::kNone);
}

}  // namespace recorder
