// The screen of totals: it shows the state of CTotals and hands every tap and key to it.
#pragma once

#include <QListView>
#include <optional>
#include <utility>

#include "pickers/qt/field_screen.h"
#include "platform/qt/choice_box.h"
#include "totals/qt/action_lines.h"
#include "totals/qt/bars_canvas.h"
#include "totals/qt/columns_canvas.h"
#include "totals/totals.h"

namespace totals {

class CTotalsDlg : public pickers::FieldScreen {
 public:
  // `choices` is what was chosen the last time, and is kept up to date.
  CTotalsDlg(QWidget* over, core::CAppState& app, Choices& choices);

  // What was done on the edit screens that were opened from here.
  bool HasEdited() const { return hasEdited_; }
  bool HasAdded() const { return hasAdded_; }

 protected:
  void LayOut() override;
  void TakeText(const std::u16string& text) override { editorText_ = text; }
  void ChooseEditor() override { ApplyEditor(); }
  void ApplyEditor() override;
  void DropEditor() override { editor_->Close(); }
  void OnClose() override;
  void OnEnter() override;

 private:
  void MakePeriod();
  void MakeChoices();
  void MakePictures();
  void MakeList();
  void MakeMenu();
  platform::qt::ChoiceBox* AddChoice(int id, std::u16string_view name,
                                     std::function<void(int)> onChosen);
  void OpenCalendar(int id, DayNumber day);
  // Runs one command of the logic and shows the state that it leaves.
  template <typename Command>
  void Run(Command command);
  void TapBar(int bar);
  void TapColumn(int column);
  void OpenAction(int action);
  void SaveCsv();
  void ShowState();
  void ShowChoices();

  core::CAppState& app_;
  CTotals totals_;
  BarsCanvas* bars_;
  ColumnsCanvas* columns_;
  QListView* list_;
  ActionLines* lines_;
  std::optional<std::pair<Period, Choices>> shown_;  // what the bars are of
  std::u16string editorText_;
  bool hasEdited_ = false;
  bool hasAdded_ = false;
};

}  // namespace totals
