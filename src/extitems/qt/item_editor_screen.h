// The screen on which the extended items of one Action are made, changed and deleted.
#pragma once

#include <QBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <functional>
#include <string>
#include <vector>

#include "core/app_state.h"
#include "extitems/item_editor.h"
#include "platform/qt/choice_box.h"
#include "platform/qt/device_shell.h"
#include "platform/qt/lines_edit.h"
#include "platform/qt/modal_screen.h"
#include "platform/qt/month_calendar.h"

namespace extitems {

class CItemEditorDlg : public platform::qt::ModalScreen {
 public:
  // `text` is the text form; `app` says how values are picked.
  CItemEditorDlg(QWidget* over, const core::CAppState& app, std::u16string_view text);

  // After kResultOk.
  const std::u16string& Result() const { return *editor_.result; }
  bool OnWindowClosing() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void OnEscape() override;
  void mousePressEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool focusNextPrevChild(bool forward) override;

 private:
  void MakeName();
  void MakeType();
  void MakeValue();
  void MakeButtons();
  QHBoxLayout* AddRow(std::u16string_view label);
  QPushButton* AddButton(const char* name, const QString& text, std::function<void()> command);
  // One with "..." on it, which opens what its accessible name says.
  QPushButton* AddDots(const char* name, const QString& what, std::function<void()> command);

  // What was typed goes to the editor, the command runs, and the screen shows what came of it.
  void Run(const std::function<void()>& command);
  void Capture();
  void ShowState();
  void PickName();
  void PickType();
  void PickTime();
  void PickFile();
  void ToggleCalendar();
  void TakeDate(const QDate& date);
  void PlaceCalendar();

  CItemEditor editor_;
  bool byLists_;
  QVBoxLayout* rows_;
  platform::qt::ChoiceBox* nameBox_ = nullptr;  // with the system's drop-downs, otherwise
  QLineEdit* nameLine_ = nullptr;               // its line alone
  platform::qt::ChoiceBox* typeBox_ = nullptr;
  QLineEdit* typeLine_ = nullptr;
  QLineEdit* line_;
  QPushButton* dateButton_;
  QPushButton* fileButton_;
  QLineEdit* time_;
  QPushButton* timeButton_;
  platform::qt::LinesEdit* lines_;
  platform::qt::SoftKeyBar* keys_;
  platform::qt::MonthCalendar* calendar_;
};

}  // namespace extitems
