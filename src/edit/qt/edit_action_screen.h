// The screen on which one Action is created, changed, copied, followed or deleted. It shows the
// state of CEditAction and hands every tap and key to it as a command.
#pragma once

#include <QBoxLayout>
#include <optional>
#include <string>

#include "core/app_state.h"
#include "edit/edit_action.h"
#include "edit/qt/edit_form.h"
#include "pickers/qt/field_screen.h"

namespace edit {

class CEditActionDlg : public pickers::FieldScreen {
 public:
  // A new Action begins with `position`, if there is one.
  CEditActionDlg(QWidget* over, core::CAppState& app, OpenMode openMode,
                 const std::optional<position::Position>& position = {});

  // kResultOk if the views have to be filled again; kResultCancel if nothing was changed, or the
  // Action could not be read and the screen was never shown.
  int RunModal();
  bool OnWindowClosing() override;
  // When a new Action begins and ends. Before RunModal.
  void SetTimesOfNew(const StartEnd& times) { edit_.timesOfNew = times; }
  // Whether a new Action was written.
  bool HasAdded() const { return edit_.added; }

 protected:
  void LayOut() override;
  void TakeText(const std::u16string& text) override { edit_.editorText = text; }
  void ChooseEditor() override;
  void ApplyEditor() override;
  void DropEditor() override;
  void OnClose() override { Run(kIdClose); }
  void OnEnter() override;
  void OnPosted(int command) override;

 private:
  void MakeTitleRow(QVBoxLayout& rows);
  void MakeToolBar(QVBoxLayout& rows);
  void MakeMenu();
  QPushButton* AddButton(int id, const QString& text, QBoxLayout& row, int width);

  void Run(int commandId);
  void EditExtItems();
  void ShowState();
  void ShowEditor();

  core::CAppState& app_;
  CEditAction edit_;
  OpenMode openMode_;
  std::optional<position::Position> position_;
  EditForm* form_;
};

}  // namespace edit
