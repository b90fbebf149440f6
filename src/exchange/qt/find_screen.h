// The find dialog: it shows the state of CFind and hands every tap and key to it.
#pragma once

#include <map>
#include <string>

#include "core/app_state.h"
#include "exchange/find_dialog.h"
#include "pickers/qt/field_screen.h"
#include "platform/qt/choice_box.h"

namespace exchange {

class CFindDlg : public pickers::FieldScreen {
 public:
  CFindDlg(QWidget* over, core::CAppState& app);

  // kResultOk after a find; the screen is closed by the user or from outside otherwise.
  int RunModal();
  bool OnWindowClosing() override { return Leave(); }

 protected:
  void LayOut() override;
  void TakeText(const std::u16string& text) override { find_.editorText = text; }
  void ChooseEditor() override;
  void ApplyEditor() override;
  void DropEditor() override;
  void OnClose() override { Leave(); }
  void OnEnter() override { OnFind(); }
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MakeText();
  void MakeTargets();
  void MakeSpans();
  void MakeButtons();
  void MakeMenu();
  void AddCheck(int id, const std::u16string& text, bool CFind::Fields::*field);
  int LabelWidth() const;

  void OnFind();
  bool ShowLongFind(int hundredths);
  bool Leave();
  void OnReset();
  void OnTextField();
  void OnTimeField(FindEditor which);
  void OpenEditor(FindEditor which);
  void ShowState();
  void ShowEditor();

  core::CAppState& app_;
  CFind find_;
  std::map<QCheckBox*, bool CFind::Fields::*> checks_;
  platform::qt::ChoiceBox* text_;
};

}  // namespace exchange
