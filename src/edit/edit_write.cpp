// Building an Action from the fields, writing it, and the questions before something is lost.
#include "core/date_time.h"
#include "core/settings_choices.h"
#include "core/text.h"
#include "edit/edit_action.h"
#include "platform/host.h"
#include "store/action_index.h"
#include "store/session.h"
#include "store/trouble.h"
#include "store/write_step.h"

namespace edit {

using platform::Answer;
using platform::Icon;

void CEditAction::OnBtnWrite() {
  if (!Write()) return;
  if (app_.EditOpeCont != core::kOn) {
    End(kEndChanged);
    return;
  }
  const int index = store::FindActionPosition(app_, app_.SelActId);
  if (index < 0) {
    platform::ShowNotice(u"変更したアクションIDが見つかりません。", u"内部エラー", Icon::kStop);
    return;
  }
  app_.SelIndex = index;
  workingMode = WorkingMode::kChange;
}

bool CEditAction::Write() {
  if (workingMode == WorkingMode::kChange && fields.times.staDate != loadedDate_ &&
      !platform::AskYesNo(
          u"開始日が変更されたので、指定の日にアクションを移動しますがよろしいですか。",
          u"開始日変更確認")) {
    return false;
  }
  store::Action action = BuildAction();
  if (!WriteRow(action)) return false;
  loaded_ = action;
  loadedDate_ = fields.times.staDate;
  app_.SelActId = *action[store::kActId];
  SelectDate(loadedDate_);
  // The reload has dropped a find and sorted again: previous and next count from where the Action
  // stands now.
  if (workingMode == WorkingMode::kChange) {
    const int index = store::FindActionPosition(app_, app_.SelActId);
    if (index >= 0) app_.SelIndex = index;
  }
  positionFields_.ForgetLast();
  dirty = false;
  RunActionText();
  return true;
}

bool CEditAction::WriteRow(store::Action& action) {
  const bool create = workingMode == WorkingMode::kCreate;
  store::HRESULT result = store::E_POINTER;
  if (store::CUserDataTable* table = store::dbSession().UserTable.get()) {
    const platform::WaitCursor wait;
    const store::WriteStep step(store::StepKind::kSingle, create ? u"新規作成" : u"変更");
    result = create ? table->Insert(action) : table->Update(*action[store::kActId], action);
    // Any code but 0 means a row that was not there to be changed.
    if (result == store::S_OK) store::ReloadActionIndex(app_);
  }
  if (result == store::S_OK) {
    added = added || create;
    return true;
  }
  // What kept the write from the diary says nothing of the values, and is said once.
  const bool neverReached = store::NeverReachedFile(store::LastTrouble());
  if (result == store::E_ABORT && neverReached) return false;  // by the message about the id
  const std::u16string code = u"(" + core::Hex(result) + u")";
  if (create) {
    platform::ShowNotice(store::WithReason(u"アクションの作成に失敗しました。" + code, result),
                         u"アクション作成エラー", Icon::kStop);
  } else {
    platform::ShowNotice(store::WithReason(u"アクションの変更に失敗しました。" + code, result),
                         u"アクション変更エラー", Icon::kStop);
  }
  if (result != store::E_FAIL || !neverReached) {
    platform::ShowNotice(u"入力値が不正です。値を見直しください", u"入力値不正", Icon::kWarning);
  }
  return false;
}

store::Action CEditAction::BuildAction() const {
  store::Action action = loaded_;
  if (workingMode == WorkingMode::kCreate) action[store::kActId].reset();
  action[store::kStaDateTime] = StoredStart(fields.times);
  action[store::kEndDateTime] = StoredEnd(fields.times);
  action[store::kLatitude] = StoredPosition(fields.latitude, latitude_);
  action[store::kLongitude] = StoredPosition(fields.longitude, longitude_);
  action[store::kPlace] = fields.place;
  action[store::kCategory1] = fields.category1;
  action[store::kCategory2] = fields.category2;
  action[store::kMemo] = fields.memo;
  return action;
}

bool CEditAction::AskSave() {
  return workingMode == WorkingMode::kCreate
             ? SettleChanges(u"アクションの内容が入力されています。作成しますか。", u"作成確認")
             : SettleChanges(u"アクションの内容が変更されています。変更しますか。", u"変更確認");
}

// Kept on purpose: both questions of the close button bear the same title.
bool CEditAction::AskSaveBriefly() {
  return SettleChanges(workingMode == WorkingMode::kCreate ? u"作成しますか。" : u"変更しますか。",
                       u"作成確認");
}

// True if the command may go on: nothing was changed, or it is written, or it may be lost.
bool CEditAction::SettleChanges(std::u16string_view question, std::u16string_view title) {
  if (!dirty) return true;
  const Answer answer =
      platform::host().ShowMessage({std::u16string(question), std::u16string(title),
                                    Icon::kQuestion, platform::Buttons::kYesNoCancel});
  if (answer == Answer::kCancel || (answer == Answer::kYes && !Write())) return false;
  dirty = false;
  return true;
}

void CEditAction::SelectDate(std::u16string_view date) {
  core::SetCurDate(date);
  changed_ = true;
}

}  // namespace edit
