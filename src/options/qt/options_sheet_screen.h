// The sheet of the options: six tabs, in one row or two, and their pages.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <vector>

#include "options/options.h"
#include "options/qt/option_pages.h"
#include "platform/qt/controls.h"
#include "platform/qt/modal_screen.h"

namespace options {

class OptionsSheet : public platform::qt::ModalScreen {
 public:
  // Opens on `page`, 0 to 5; above 5 means 5.
  OptionsSheet(QWidget* over, core::CAppState& app, int page);

  // kSheetApplied, kSheetCancelled, or kNoDataFile: the window is then about to close.
  int RunModal();
  bool DataFileChanged() const { return options_.DataFileChanged; }

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void MakePages();
  void ShowPage(int page);
  void StepPage(int step);
  void OnOk();
  void Browse();
  void Compact();
  void Inspect();
  int PlaceTabs(int top);

  COptions options_;
  platform::qt::Controls controls_;
  QLabel* title_;
  QPushButton* ok_;
  QPushButton* cancel_;
  std::vector<QPushButton*> tabs_;
  QStackedWidget* pages_;
  bool lostDataFile_ = false;
};

}  // namespace options
