// The commands on the selected rows.
#include "views/selection.h"

#include "core/text.h"
#include "platform/host.h"
#include "position/coordinate.h"
#include "position/map_link.h"
#include "store/action_index.h"
#include "store/session.h"
#include "store/write_step.h"

namespace views {
namespace {

bool IsActionRow(const ViewRows& rows, int row) {
  return row >= 0 && row < static_cast<int>(rows.RowActIds.size());
}

int PositionOfRow(const core::CAppState& app, const ViewRows& rows, int row) {
  switch (rows.order) {
    case RowOrder::kByStart:
      return rows.FirstRowIndex + row;
    case RowOrder::kNewestFirst:
      return rows.FirstRowIndex - row;
    case RowOrder::kSpanning:
      break;
  }
  return store::FindActionPosition(app, rows.RowActIds[static_cast<size_t>(row)]);
}

bool ConfirmDelete(size_t count) {
  return platform::AskYesNo(count == 1
                                ? u"このアクションを削除しますか？"
                                : u"これらの " + core::ZeroPadded(static_cast<int>(count), 1) +
                                      u"個のアクションを削除しますか？",
                            u"アクションの削除の確認");
}

// In one transaction, so that many cost one wait for the disk. What was deleted before a failure
// stays deleted.
store::HRESULT WriteDelete(const std::vector<std::u16string>& ids) {
  const store::CDbSession& session = store::dbSession();
  if (session.UserTable == nullptr) return store::E_POINTER;
  const store::WriteStep step(store::StepKind::kCounted, u"削除");
  store::HRESULT result = session.Session->BeginTransaction();
  if (store::Failed(result)) return result;
  for (size_t i = 0; i < ids.size() && !store::Failed(result); ++i) {
    result = session.UserTable->Delete(ids[i]);
  }
  const store::HRESULT committed = session.Session->Commit();
  return store::Failed(result) ? result : committed;
}

// After a question. False if the answer was No. The ids are copies: while the question stands, a
// turned screen fills the rows again.
bool DeleteActions(core::CAppState& app, const std::vector<std::u16string>& ids) {
  if (!ConfirmDelete(ids.size())) return false;
  const platform::WaitCursor waiting;
  const store::HRESULT result = WriteDelete(ids);
  if (store::Failed(result)) ShowReadError(u"CMainWnd::FxEditDelete", u"Delete", 1, result);
  store::ReloadActionIndex(app);
  return true;
}

}  // namespace

void ShowNoPosition() {
  platform::ShowNotice(u"このアクションは位置情報が取得されていません。", u"位置情報なし",
                       platform::Icon::kWarning);
}

bool SelectRow(core::CAppState& app, const ViewRows& rows, int row) {
  if (!IsActionRow(rows, row)) return false;
  app.SelActId = rows.RowActIds[static_cast<size_t>(row)];
  app.SelIndex = PositionOfRow(app, rows, row);
  return true;
}

bool SelectRowToChange(core::CAppState& app, const ViewRows& rows, int row) {
  if (SelectRow(app, rows, row)) return true;
  platform::ShowNotice(std::u16string(kNothingSelected), u"変更不可", platform::Icon::kWarning);
  return false;
}

void OnEditDispMap(core::CAppState& app, const ViewRows& rows, int row) {
  if (!SelectRowToChange(app, rows, row)) return;
  constexpr std::u16string_view kCaller = u"CMainWnd::OnEditDispMap";
  constexpr std::u16string_view kTitle = u"Error";
  store::Action action;
  const RowRead read = ReadAction(app.SelActId, kCaller, action, kTitle);
  if (read == RowRead::kGone) {
    ShowReadError(kCaller, u"GetNextRS", 2, store::DB_S_ENDOFROWSET, kTitle);
  }
  if (read != RowRead::kRead) return;
  const auto latitude = position::ReadDecimalDegrees(TextOf(action, store::kLatitude));
  const auto longitude = position::ReadDecimalDegrees(TextOf(action, store::kLongitude));
  if (latitude && longitude) {
    platform::host().OpenLink(position::MapLink(*latitude, *longitude));
  } else {
    ShowNoPosition();
  }
}

bool SelectAction(core::CAppState& app, std::u16string_view id) {
  if (id.empty()) return false;
  app.SelActId = id;
  app.SelIndex = store::FindActionPosition(app, id);
  return true;
}

void TellToHold(std::u16string_view title) {
  platform::ShowNotice(u"画面上のアクションをタップ&ホールドして操作してください。",
                       std::u16string(title), platform::Icon::kWarning);
}

bool FxEditDelete(core::CAppState& app, const ViewRows& rows, std::span<const int> selectedRows) {
  std::vector<std::u16string> ids;
  for (const int row : selectedRows) {
    if (IsActionRow(rows, row)) ids.push_back(rows.RowActIds[static_cast<size_t>(row)]);
  }
  if (ids.empty()) {
    platform::ShowNotice(std::u16string(kNothingSelected), u"削除不可", platform::Icon::kWarning);
    return false;
  }
  return DeleteActions(app, ids);
}

bool FxDeleteAction(core::CAppState& app, std::u16string_view id) {
  return !id.empty() && DeleteActions(app, {std::u16string(id)});
}

}  // namespace views
