// The find dialog: it shows the state of CFind and hands every tap and key to it.
#pragma once

#include <QCheckBox>
#include <QPushButton>
#include <map>

#include "core/app_state.h"
#include "exchange/find_dialog.h"
#include "pickers/qt/field_button.h"
#include "pickers/qt/list_picker.h"
#include "platform/qt/choice_box.h"
#include "platform/qt/device_shell.h"
#include "platform/qt/modal_screen.h"
#include "platform/qt/month_calendar.h"

namespace exchange {

class CFindDlg : public platform::qt::ModalScreen {
 public:
  CFindDlg(QWidget* over, core::CAppState& app);

  // kResultOk after a find; the screen is closed by the user or from outside otherwise.
  int RunModal();
  bool OnWindowClosing() override;

 protected:
  void OnEscape() override;
  void OnEnter() override { OnFind(); }
  void mousePressEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool focusNextPrevChild(bool forward) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MakeText();
  void MakeTargets();
  void MakeSpans();
  void MakeButtons();
  void MakeMenu();
  void MakeEditors();
  void AddLabel(int id, const std::u16string& text);
  QCheckBox* AddCheck(int id, const std::u16string& text, bool CFind::Fields::*field);
  void AddField(int id, FindEditor which);
  QPushButton* AddButton(int id, const QString& text);
  int LabelWidth() const;

  void OnFind();
  bool Leave();
  void OnReset();
  void OnTextField();
  void OnTimeField(FindEditor which);
  void OpenEditor(FindEditor which);
  void ApplyEditor();
  void ShowState();
  void ShowEditor();
  void PlaceEditor();
  QWidget* EditorWidget(FindEditor which) const;
  static int FieldOf(FindEditor which);

  core::CAppState& app_;
  CFind find_;
  FindEditor shownEditor_ = FindEditor::kNone;
  std::map<int, QWidget*> controls_;  // by id
  std::map<int, pickers::FieldButton*> fields_;
  std::map<QCheckBox*, bool CFind::Fields::*> checks_;
  platform::qt::ChoiceBox* text_;
  pickers::ListPicker* timeEditor_;
  platform::qt::MonthCalendar* calendar_;
  platform::qt::SoftKeyBar* keys_;
};

}  // namespace exchange
