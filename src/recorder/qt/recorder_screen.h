// The screen from which the chain of Actions is kept: it shows the state of CRecorder and hands
// every tap and key to it.
#pragma once

#include <QAction>
#include <QFrame>
#include <QPushButton>
#include <functional>
#include <map>
#include <vector>

#include "core/app_state.h"
#include "pickers/qt/field_button.h"
#include "pickers/qt/list_picker.h"
#include "platform/qt/device_shell.h"
#include "platform/qt/modal_screen.h"
#include "recorder/qt/history_list_view.h"
#include "recorder/recording.h"

namespace recorder {

class CRecorderDlg : public platform::qt::ModalScreen {
 public:
  CRecorderDlg(QWidget* over, core::CAppState& app);

  // Runs until its user leaves it, by the exit command also the program's window.
  int RunModal();
  bool OnWindowClosing() override;

 protected:
  void OnEscape() override;
  void OnEnter() override;
  void OnPosted(int command) override;
  void mousePressEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool focusNextPrevChild(bool forward) override;

 private:
  void MakeLabels();
  void MakeFields();
  void MakeButtons();
  void MakeList();
  void MakeMenu();
  void MakeEditor(pickers::ListPicker*& editor, int id);
  void AddLabel(int id, const std::u16string& text);
  void AddField(int id, std::function<void()> onTap);
  void AddButton(int id, const QString& text, void (CRecorder::*command)());
  QAction* AddMenuItem(QMenu& menu, int id, const QString& text);
  int LabelWidth() const;

  // Runs one command of the logic and shows the state anew.
  void Run(void (CRecorder::*command)());
  void OnTimeField();
  void OnValueField(InlineEditTarget which);
  void OpenEditor(InlineEditTarget which);
  void ChooseEditor();
  void OnListChange();
  // The close command. False if an open editor's value was refused.
  bool Leave();
  void OnBtnExit();
  void OnListHeld(QPoint globalPoint, const QRect& globalLine);
  void ShowState();
  void ShowLines();
  void ShowEditor();
  pickers::ListPicker* Editor(InlineEditTarget which) const;
  static int FieldOf(InlineEditTarget which);

  core::CAppState& app_;
  CRecorder recorder_;
  InlineEditTarget shownEditor_ = InlineEditTarget::kNone;
  std::map<int, QWidget*> controls_;  // by id
  std::map<int, pickers::FieldButton*> fields_;
  std::map<int, QPushButton*> buttons_;
  std::map<int, QAction*> actions_;
  std::vector<QFrame*> separators_;
  HistoryListView* list_;
  pickers::ListPicker* timeEditor_;
  pickers::ListPicker* valueEditor_;
  platform::qt::SoftKeyBar* keys_;
  QMenu* holdMenu_;
};

}  // namespace recorder
