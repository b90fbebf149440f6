// A value by a list for the finger: a line to type in, and the texts of a history below it. A tap
// on one of them chooses it.
#pragma once

#include <QLineEdit>
#include <optional>
#include <string>

#include "pickers/pickers.h"
#include "pickers/qt/picker_screen.h"
#include "touch/qt/inertial_list_view.h"

namespace pickers {

class ValueSelectDlg : public PickerDlg {
 public:
  // `params` is written on OK and outlives the screen.
  ValueSelectDlg(QWidget* over, ValueSelectParams& params);

 protected:
  void TakeResult() override;
  void PlaceContent(const QRect& area) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void Choose(int row);
  void WalkRows(int step);
  void Give(const QString& text);
  void ShowRow(int row);

  ValueSelectParams& params_;
  QString given_;  // the text that was last put into the line
  QLineEdit* line_;
  touch::INERT_LIST_VIEW* rows_;
};

// Runs one. None after a cancel.
std::optional<std::u16string> PickValue(QWidget* over, ValueSelectParams params);

}  // namespace pickers
