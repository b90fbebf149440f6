// The handlers of the command table, in its order.
#include "backup/backup.h"
#include "backup/file_choice.h"
#include "backup/restore.h"
#include "core/settings_choices.h"
#include "edit/qt/edit_action_screen.h"
#include "exchange/qt/exchange_screen.h"
#include "exchange/qt/find_screen.h"
#include "filedialog/qt/file_select_screen.h"
#include "mainwindow/main_window.h"
#include "mainwindow/manual.h"
#include "options/qt/about_screen.h"
#include "options/qt/options_sheet_screen.h"
#include "platform/host.h"
#include "platform/qt/qt_text.h"
#include "position/map_link.h"
#include "recorder/qt/recorder_screen.h"
#include "store/action_index.h"
#include "tidy/qt/tidy_screen.h"
#include "totals/qt/totals_screen.h"
#include "undo/undo.h"
#include "views/navigation.h"
#include "views/selection.h"

namespace mainwindow {

using platform::qt::FromQt;

void CMainWnd::RunExchange(exchange::ExchangeKind kind) {
  exchange::CExchangeDlg(this, app_, kind).RunModal();
  if (kind == exchange::ExchangeKind::kImport) return ShowChange(views::Change::kAdded);
  Refresh();
}

void CMainWnd::RunBackup() {
  filedialog::CFileSelectDlg dialog(this, backup::AskForBackup(app_));
  dialog.RunModal();
  if (dialog.ResultPath()) backup::MakeBackup(*dialog.ResultPath());
  backup::DropEmptyFolder(app_);
  Refresh();
}

void CMainWnd::RunRestore() {
  filedialog::CFileSelectDlg dialog(this, backup::AskForRestore(app_));
  dialog.RunModal();
  if (!dialog.ResultPath()) return Refresh();
  const backup::Restored restored = backup::Restore(app_, *dialog.ResultPath());
  if (restored == backup::Restored::kNoDataFile) {
    close();
    return;
  }
  if (restored == backup::Restored::kYes) ForgetWhatWasRead();
  ShowChange(views::Change::kEdited);
}

void CMainWnd::New() {
  RunEditScreen(edit::kOpenNew);
}

void CMainWnd::NewAtPress() {
  RunEditScreen(edit::kOpenNew, View().PressedPosition());
}

void CMainWnd::RunEditScreen(edit::OpenMode mode,
                             const std::optional<position::Position>& position) {
  edit::CEditActionDlg screen(this, app_, mode, position);
  screen.RunModal();
  ShowChange(screen.HasAdded() ? views::Change::kAdded : views::Change::kEdited);
}

void CMainWnd::FxEditSelected(edit::OpenMode mode) {
  if (View().IsHeldOnly()) return views::TellToHold(u"変更不可");
  if (views::SelectRowToChange(app_, View().Rows(), View().SelectedRow())) RunEditScreen(mode);
}

void CMainWnd::FxEditTapItem(edit::OpenMode mode) {
  if (views::SelectAction(app_, View().TapItem())) RunEditScreen(mode);
}

void CMainWnd::FxMapLink() {
  if (View().IsHeldOnly()) return views::TellToHold(u"変更不可");
  views::OnEditDispMap(app_, View().Rows(), View().SelectedRow());
}

void CMainWnd::OpenMapAtPress() {
  const std::optional<position::Position> at = View().PressedPosition();
  if (at) platform::host().OpenLink(position::MapLink(at->latitude, at->longitude));
}

void CMainWnd::MoveMap() {
  View().MoveToSelected();
}

void CMainWnd::FxEditDelete() {
  if (View().IsHeldOnly()) return views::TellToHold(u"削除不可");
  if (views::FxEditDelete(app_, View().Rows(), View().SelectedRows())) {
    ShowChange(views::Change::kDeleted);
  }
}

void CMainWnd::FxDeleteTapItem() {
  if (views::FxDeleteAction(app_, View().TapItem())) ShowChange(views::Change::kDeleted);
}

void CMainWnd::RunTidy() {
  tidy::TidyDlg(this, app_).RunModal();
  View().OnDateMoved();
  ShowChange(views::Change::kAdded);
}

void CMainWnd::TakeTurn(store::Turn turn) {
  if (!undo::Take(app_, turn)) return;
  View().OnDateMoved();
  ShowChange(views::Change::kAdded);
}

void CMainWnd::ClearUndoHistory() {
  undo::ClearHistory();
  Refresh();
}

void CMainWnd::ShowView(int view) {
  View().SetShown(false);
  app_.CurView = view;
  header_->SetView(views::ViewOnShow(view));
  ShowState();
  View().SetShown(true);
  Relayout();  // only now do the view's controls know their sizes
  View().Enter();
  Refresh();
}

void CMainWnd::GoToPressedDay() {
  View().GoToPressedDay();
  ShowMovedDate();
}

void CMainWnd::ShowPressedDay() {
  View().GoToPressedDay();
  ShowView(core::kViewDay);
}

void CMainWnd::GoToToday() {
  views::GoToToday(app_);
  ShowMovedDate();
}

void CMainWnd::GoToWeekday(int weekday) {
  views::GoToWeekday(weekday);
  ShowMovedDate();
}

void CMainWnd::TakeStep(views::Step step) {
  views::TakeStep(app_, step);
  ShowMovedDate();
}

void CMainWnd::OnDateLabel() {
  const bool byKey = header_->DateLabel().hasFocus();
  popups_->Toggle(app_);
  Refresh();
  if (byKey) popups_->TakeFocus();
}

void CMainWnd::ToggleSpanningMode() {
  app_.DayVwMltDayMode = views::SpansDays(app_) ? core::kSingleDayMode : core::kSpanningDayMode;
  ShowState();
  Refresh();
}

void CMainWnd::ToggleToolBar() {
  app_.ToolBarVwMode = views::ShowsToolBar(app_) ? core::kToolBarHidden : core::kToolBarShown;
  ShowState();
  Relayout();
  Refresh();
}

void CMainWnd::RunRecorder() {
  recorder::CRecorderDlg(this, app_).RunModal();
  ShowChange(views::Change::kRecorded);
}

// A find shows its newest rows first, and so does the dialog's end without one.
void CMainWnd::RunFind() {
  exchange::CFindDlg(this, app_).RunModal();
  if (app_.DispListAfterFind == core::kOn) ShowView(core::kViewList);
  app_.ListPage = 0;
  ShowChange(views::Change::kFindEnded);
}

void CMainWnd::FxFindClear() {
  {
    const platform::WaitCursor waiting;
    store::ReloadActionIndex(app_);
  }
  ShowChange(views::Change::kFindEnded);
}

void CMainWnd::RunTotals() {
  totals::CTotalsDlg totals(this, app_, totalsChoices_);
  totals.RunModal();
  if (totals.HasAdded()) return ShowChange(views::Change::kAdded);
  if (totals.HasEdited()) return ShowChange(views::Change::kEdited);
  Refresh();
}

// What the options change may show everywhere: the shell's button, fonts, names, the rows.
void CMainWnd::FxToolOption() {
  const int formerRange = app_.SeqViewRng;
  options::OptionsSheet sheet(this, app_, options::kGeneral);
  if (sheet.RunModal() == options::kNoDataFile) return;
  if (sheet.DataFileChanged()) ForgetWhatWasRead();
  options::KeepListPage(app_, formerRange);
  Relayout();
  ShowChange(views::Change::kEdited);
}

void CMainWnd::ShowManual() {
  if (const std::optional<QUrl> page = ManualPage()) {
    platform::host().OpenLink(FromQt(page->toString(QUrl::FullyEncoded)));
  } else {
    platform::ShowNotice(u"このプログラムには説明書が付いていません。", u"ヘルプ",
                         platform::Icon::kInformation);
  }
}

void CMainWnd::ShowAbout() {
  options::AboutDlg(this, app_).RunModal();
}

}  // namespace mainwindow
