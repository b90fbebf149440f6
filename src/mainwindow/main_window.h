// The program's one window: it owns the header row, the list, the menus, the toolbar and the views,
// routes every command, and shows the view again after a change.
#pragma once

#include <QPushButton>
#include <QTimer>
#include <QWidget>
#include <map>
#include <memory>
#include <optional>

#include "core/app_state.h"
#include "edit/edit_action.h"
#include "exchange/exchange.h"
#include "mainwindow/command_menus.h"
#include "mainwindow/command_table.h"
#include "mainwindow/tool_bar.h"
#include "platform/qt/command_mailbox.h"
#include "platform/qt/device_shell.h"
#include "store/undo_log.h"
#include "totals/groups.h"
#include "views/navigation.h"
#include "views/qt/action_list.h"
#include "views/qt/date_popups.h"
#include "views/qt/header_row.h"
#include "views/qt/view_screen.h"

namespace mainwindow {

class CMainWnd : public QWidget {
  Q_OBJECT

 public:
  // The view on show becomes InitView. `app` outlives the window, and the data file is open while
  // the window is shown.
  explicit CMainWnd(core::CAppState& app);

  // Runs the command of that number, if the table has it and it is live in the view on show.
  void OnCommand(int id);
  // Shows what has been done to the diary.
  void ShowChange(views::Change change);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool focusNextPrevChild(bool forward) override;

 private:
  void MakeCaption();
  void AddView(core::View number, std::unique_ptr<views::ViewScreen> view);
  void ConnectChildren();
  void OrderFocus();
  void WatchKeys();
  views::ViewScreen& View() { return *views_.at(views::ViewOnShow(app_.CurView)); }
  void Relayout();
  void ShowState();
  void ShowFind();
  void Refresh();
  void ShowMovedDate();
  void ForgetWhatWasRead();

  void ReadAhead();
  void MendIndex();
  void OnDailyCopyEnd();
  void OnDateChosen(const core::Day& day);
  void OnPageChosen(int page);
  bool OnKeyReleased(QKeyCombination key);
  void OpenRow(int row);

  // The handlers of the command table.
  void RunExchange(exchange::ExchangeKind kind);
  void RunBackup();
  void RunRestore();
  void New();
  void NewAtPress();
  void FxEditSelected(edit::OpenMode mode);
  void FxEditTapItem(edit::OpenMode mode);
  void FxMapLink();
  void OpenMapAtPress();
  void MoveMap();
  void FxEditDelete();
  void FxDeleteTapItem();
  void RunTidy();
  void TakeTurn(store::Turn turn);
  void ClearUndoHistory();
  void ShowView(int view);
  void GoToPressedDay();
  void ShowPressedDay();
  void GoToToday();
  void GoToWeekday(int weekday);
  void TakeStep(views::Step step);
  void OnDateLabel();
  void ToggleSpanningMode();
  void ToggleToolBar();
  void RunRecorder();
  void RunFind();
  void FxFindClear();
  void RunTotals();
  void FxToolOption();
  void ShowManual();
  void ShowAbout();
  friend std::span<const CommandRow> Commands();

  void RunEditScreen(edit::OpenMode mode, const std::optional<position::Position>& position = {});

  core::CAppState& app_;
  const platform::qt::CommandAddress address_;
  views::MapPane map_;
  totals::Choices totalsChoices_;  // for the run of the program
  QWidget* caption_;
  views::HeaderRow* header_;
  views::ActionList* list_;
  ToolBar* toolBar_;
  platform::qt::SoftKeyBar* softKeys_;
  CommandMenus* menus_;
  views::DatePopups* popups_;
  std::map<core::View, std::unique_ptr<views::ViewScreen>> views_;
  QTimer readAhead_;  // runs while the index isn't read as a whole
};

}  // namespace mainwindow
