// The screen on which a day is set right: a bar and a list of what TidyDay reads, and a menu of
// what can be done with each row.
#pragma once

#include <QBoxLayout>
#include <optional>

#include "core/app_state.h"
#include "platform/qt/controls.h"
#include "platform/qt/device_shell.h"
#include "platform/qt/modal_screen.h"
#include "store/undo_log.h"
#include "tidy/qt/tidy_list.h"
#include "tidy/tidy.h"

namespace tidy {

class TidyDlg : public platform::qt::ModalScreen {
 public:
  // Of the current date, which its user may move.
  TidyDlg(QWidget* over, core::CAppState& app);

  int RunModal();

 private:
  void MakeTitle(QVBoxLayout& rows);
  void MakeMenu();
  void ShowDay();
  void MoveDate(int days);
  void OpenRow(int row);
  void Run(Command command, const Link& link);
  std::optional<int64_t> AskTime(Command command, const Link& link);
  void OpenEdit(Command command, const Link& link);
  void Take(store::Turn turn);

  core::CAppState& app_;
  TidyDay day_;
  platform::qt::Controls controls_;
  DayBar* bar_;
  TidyList* list_;
  platform::qt::SoftKeyBar* keys_;
  QMenu* rowMenu_;
};

}  // namespace tidy
