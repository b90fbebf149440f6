// Loading an Action: when the screen opens, with previous and next, and after a delete.
#include <algorithm>

#include "core/date_time.h"
#include "core/settings_choices.h"
#include "core/text.h"
#include "edit/edit_action.h"
#include "platform/host.h"
#include "store/action_index.h"
#include "store/read_action.h"
#include "store/session.h"
#include "store/trouble.h"
#include "store/write_step.h"

namespace edit {

using platform::Icon;

// Where an Action is read, for the message of a failure.
struct CEditAction::ReadSite {
  std::u16string_view method;
  bool decimalFetchCode = false;  // kept on purpose: a delete has "rc=" and a decimal
};

bool CEditAction::OpenSelected(OpenMode openMode) {
  const bool isListed = app_.SelIndex >= 0 && app_.SelIndex < app_.IndexCount;
  const std::u16string id = isListed ? IdAt(app_.SelIndex) : app_.SelActId;
  store::Action action;
  if (!ReadAction(id, {u"OnInitDialog"}, action)) return false;
  TakeAction(action);
  app_.SelActId = id;
  if (openMode == kOpenReference) StartReference();
  if (openMode == kOpenFollow) StartFollow();
  return true;
}

void CEditAction::OnBtnPrev() {
  if (!AskSave()) return;
  const int index =
      workingMode == WorkingMode::kCreate ? app_.IndexCount - 1 : std::max(app_.SelIndex - 1, 0);
  if (index >= 0) WalkTo(index, {u"OnBtnPrev"});
}

void CEditAction::OnBtnNext() {
  if (!AskSave()) return;
  if (app_.SelIndex < app_.IndexCount - 1) {
    WalkTo(app_.SelIndex + 1, {u"OnBtnNext"});
  } else {
    StartNew(core::DateOf(platform::host().Now()));
  }
}

void CEditAction::WalkTo(int index, const ReadSite& site) {
  store::Action action;
  if (ReadAction(IdAt(index), site, action)) ShowAt(index, action);
}

void CEditAction::FxEditDelete() {
  if (!platform::AskYesNo(u"このアクションを削除しますか？", u"アクションの削除の確認")) return;
  std::optional<std::u16string> neighbour;
  if (app_.SelIndex + 1 < app_.IndexCount) {
    neighbour = IdAt(app_.SelIndex + 1);
  } else if (app_.SelIndex > 0) {
    neighbour = IdAt(app_.SelIndex - 1);
  }
  if (!DeleteRow()) return;
  dirty = false;
  changed_ = true;
  // Without a row to show, the screen has nothing left to stand on.
  const int index = app_.IndexCount > 0 ? PositionBehindDelete(neighbour) : -1;
  store::Action action;
  const bool wasRead = index >= 0 && ReadAction(IdAt(index), {u"FxEditDelete", true}, action);
  if (wasRead && app_.EditOpeCont == core::kOn) {
    ShowAt(index, action);
  } else {
    End(kEndChanged);
  }
}

// True if the row is gone. One that something else had deleted is reported, and goes from the
// index like any other.
bool CEditAction::DeleteRow() {
  store::HRESULT result = store::E_POINTER;
  if (store::CUserDataTable* table = store::dbSession().UserTable.get()) {
    const platform::WaitCursor wait;
    const store::WriteStep step(store::StepKind::kCounted, u"削除");
    result = table->Delete(*loaded_[store::kActId]);
    if (result == store::S_OK || result == store::DB_E_NOTFOUND) store::ReloadActionIndex(app_);
  }
  if (result == store::S_OK) return true;
  platform::ShowNotice(
      store::WithReason(u"アクションの削除に失敗しました。(" + core::Hex(result) + u")", result),
      u"アクション削除エラー", Icon::kStop);
  return result == store::DB_E_NOTFOUND;
}

// The neighbour's place in the reloaded index. The last Action of a find has no neighbour, but the
// reload has ended the find: then the first Action from the deleted one's time on, or the last one.
int CEditAction::PositionBehindDelete(const std::optional<std::u16string>& neighbour) const {
  if (!neighbour) {
    const core::MomentText start = core::SplitMoment(store::TextOf(loaded_, store::kStaDateTime));
    const int index =
        store::FindActionIndexLower(app_, start.date, start.time, store::LowerMode::kAtOrAfter);
    return std::min(index, app_.IndexCount - 1);
  }
  const int index = store::FindActionPosition(app_, *neighbour);
  if (index < 0) {
    platform::ShowNotice(u"対象のアクションIDが見つかりません。", u"内部エラー", Icon::kStop);
  }
  return index;
}

bool CEditAction::ReadAction(std::u16string_view id, const ReadSite& site,
                             store::Action& action) const {
  const store::ActionRead read = store::ReadAction(id, action);
  if (read.result == store::S_OK) return true;
  const std::u16string code = read.selected && site.decimalFetchCode
                                  ? u"rc=" + core::ZeroPadded(read.result, 1)
                                  : u"hr=" + core::Hex(read.result);
  platform::ShowNotice(u"CEditActionDlg::" + std::u16string(site.method) + u' ' +
                           std::u16string(read.Step()) + u" Err (ln=" +
                           (read.selected ? u'2' : u'1') + u", " + code + u")",
                       u"Error", Icon::kStop);
  return false;
}

// The whole screen shows `action`, unchanged.
void CEditAction::TakeAction(const store::Action& action) {
  const auto text = [&action](store::ActionColumn column) {
    return std::u16string(store::TextOf(action, column));
  };
  fields.times = FromStored(text(store::kStaDateTime), text(store::kEndDateTime));
  PutPosition(OfColumn(action[store::kLatitude]), OfColumn(action[store::kLongitude]));
  fields.place = text(store::kPlace);
  fields.category1 = text(store::kCategory1);
  fields.category2 = text(store::kCategory2);
  fields.memo = text(store::kMemo);
  loaded_ = action;
  loadedDate_ = fields.times.staDate;
  workingMode = WorkingMode::kChange;
  dirty = false;
}

void CEditAction::ShowAt(int index, const store::Action& action) {
  TakeAction(action);
  app_.SelIndex = index;
  app_.SelActId = *action[store::kActId];
  SelectDate(loadedDate_);
}

std::u16string CEditAction::IdAt(int index) const {
  return std::u16string(app_.ActIds.At(static_cast<size_t>(index)));
}

}  // namespace edit
