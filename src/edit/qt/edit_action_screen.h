// The screen on which one Action is created, changed, copied, followed or deleted. It shows the
// state of CEditAction and hands every tap and key to it as a command.
#pragma once

#include <QAbstractButton>
#include <QAction>
#include <QBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <map>
#include <optional>

#include "core/app_state.h"
#include "edit/edit_action.h"
#include "edit/qt/edit_form.h"
#include "pickers/qt/list_picker.h"
#include "platform/qt/device_shell.h"
#include "platform/qt/modal_screen.h"
#include "platform/qt/month_calendar.h"

namespace edit {

class CEditActionDlg : public platform::qt::ModalScreen {
 public:
  // A new Action begins with `position`, if there is one.
  CEditActionDlg(QWidget* over, core::CAppState& app, OpenMode openMode,
                 const std::optional<position::Position>& position = {});

  // kResultOk if the views have to be filled anew; kResultCancel if nothing was changed, or the
  // Action could not be read and the screen was never shown.
  int RunModal();
  bool OnWindowClosing() override;
  // Whether a new Action was written.
  bool HasAdded() const { return edit_.added; }

 protected:
  void OnEscape() override;
  void OnEnter() override;
  void OnPosted(int command) override;
  void mousePressEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool focusNextPrevChild(bool forward) override;

 private:
  void MakeTitleRow(QVBoxLayout& rows);
  void MakeToolBar(QVBoxLayout& rows);
  void MakeMenu();
  void MakeEditors();
  void AddButton(int id, const QString& text, QBoxLayout& row, int width);
  QAction* AddMenuItem(QMenu& menu, int id, const QString& text);

  void Run(int commandId);
  void EditExtItems();
  void ChooseEditor();
  void TakeEditor();
  void TakeDate(const QDate& date);
  void ShowState();
  void ShowEditor();
  void FillEditor();
  void PlaceEditor();
  QWidget* EditorWidget(Editor editor) const;

  core::CAppState& app_;
  CEditAction edit_;
  OpenMode openMode_;
  std::optional<position::Position> position_;
  Editor shownEditor_ = Editor::kNone;
  std::map<int, QAbstractButton*> buttons_;  // of the title row and the tool bar, by id
  std::map<int, QAction*> actions_;          // of the menu, by id
  QLabel* title_;
  EditForm* form_;
  platform::qt::SoftKeyBar* keys_;
  platform::qt::MonthCalendar* calendar_;
  pickers::ListPicker* list_;
  QPlainTextEdit* memoEdit_;
};

}  // namespace edit
