// What opens under the date label: the month calendar (control 1125), or in the list view the box
// of pages (control 1070), which takes the label's place. At most one is open.
#pragma once

#include <QObject>

#include "core/app_state.h"
#include "platform/qt/choice_box.h"
#include "platform/qt/month_calendar.h"
#include "views/qt/header_row.h"

namespace views {

// A combo box that reports when its list has closed, by a choice or without one.
class PageBox : public platform::qt::ChoiceBox {
  Q_OBJECT

 public:
  explicit PageBox(QWidget* parent);
  void hidePopup() override;

 signals:
  void ListClosed();
};

class DatePopups : public QObject {
  Q_OBJECT

 public:
  // The popups are children of `window`, over its other children.
  DatePopups(QWidget* window, HeaderRow& header);

  // Opens the one that belongs to the view on show, or closes it.
  void Toggle(const core::CAppState& app);
  // Whether one was open.
  bool Close();
  // For a user at the keyboard: the focus goes into an open calendar.
  void TakeFocus();

 signals:
  void DateChosen(const core::Day& day);
  void PageChosen(int page);

 private:
  enum State { kNone = 0, kPagesOpen = 10, kCalendarOpen = 11 };

  void OpenCalendar();
  void OpenPages(const core::CAppState& app);
  QRect LabelRect() const;

  QWidget* window_;
  HeaderRow& header_;
  platform::qt::MonthCalendar* calendar_;
  PageBox* pages_;
  State state_ = kNone;
};

}  // namespace views
