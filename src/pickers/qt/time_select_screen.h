// A time by wheels: hours, minutes and, if wanted, seconds, each an endless list of which the
// fourth of seven rows is the value. An extra button stands for something that is no time.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "pickers/pickers.h"
#include "pickers/qt/picker_screen.h"
#include "touch/qt/inertial_list_view.h"

namespace pickers {

class TimeSelectDlg : public PickerDlg {
 public:
  // `params` is written on OK and outlives the screen. A start hour of kExtraHour starts on the
  // extra button, the wheels at the clock's time.
  TimeSelectDlg(QWidget* over, TimeSelectParams& params);

 protected:
  void TakeResult() override;
  void PlaceContent(const QRect& area) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  touch::INERT_LIST_VIEW* AddWheel(const char* name, std::u16string_view unit, int count,
                                   int value);
  void TakeExtraButton();

  TimeSelectParams& params_;
  std::vector<touch::INERT_LIST_VIEW*> wheels_;
};

// Runs one. None after a cancel.
std::optional<TimeSelectParams> PickTime(QWidget* over, TimeSelectParams params);

}  // namespace pickers
