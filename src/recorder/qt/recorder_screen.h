// The screen from which the chain of Actions is kept: it shows the state of CRecorder and hands
// every tap and key to it.
#pragma once

#include <QFrame>
#include <string>
#include <vector>

#include "core/app_state.h"
#include "pickers/qt/field_screen.h"
#include "recorder/qt/history_list_view.h"
#include "recorder/recording.h"

namespace recorder {

class CRecorderDlg : public pickers::FieldScreen {
 public:
  CRecorderDlg(QWidget* over, core::CAppState& app);

  // Runs until its user leaves it, by the exit command also the program's window.
  int RunModal();
  bool OnWindowClosing() override { return Leave(); }

 protected:
  void LayOut() override;
  void TakeText(const std::u16string& text) override { recorder_.editorText = text; }
  void ChooseEditor() override { ApplyEditor(); }
  void ApplyEditor() override;
  void DropEditor() override;
  void OnClose() override { Leave(); }
  void OnEnter() override;
  void OnPosted(int command) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  void MakeLabels();
  void MakeFields();
  void MakeButtons();
  void MakeList();
  void MakeMenu();
  QAction* MenuItem(int id) const { return controls_.At<QAction>(id); }
  int LabelWidth() const;

  // Runs one command of the logic and shows the state that it leaves.
  void Run(void (CRecorder::*command)());
  void OnTimeField();
  void PickTime();
  void OnValueField(InlineEditTarget target, const std::u16string& name);
  void OpenEditor(InlineEditTarget target);
  void OnListChange();
  // The close command. False if an open editor's value was refused.
  bool Leave();
  void OnBtnExit();
  void ShowState();
  void ShowLines();
  void ShowEditor();

  core::CAppState& app_;
  CRecorder recorder_;
  std::vector<QFrame*> separators_;
  HistoryListView* list_;
  QMenu* holdMenu_;
};

}  // namespace recorder
