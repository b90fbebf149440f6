// A month calendar for a finger: a header "2009年3月" between its steps, and the days below, weeks
// from Sunday on.
#pragma once

#include <QCalendarWidget>
#include <QDate>
#include <QFrame>
#include <QLabel>

namespace platform::qt {

class MonthCalendar : public QFrame {
  Q_OBJECT

 public:
  explicit MonthCalendar(QWidget* parent);

  // Shows the month of `date` with that day selected; today for a date that does not exist or lies
  // before 1900.
  void Select(const QDate& date);
  QDate Selected() const { return days_->selectedDate(); }
  // Below or above a field, a little lower if need be; as far down in `area` as it goes where it
  // can't but cover the field.
  void PlaceBy(const QRect& field, const QRect& area);

 signals:
  // A tap on a day, or Enter on the selected one.
  void Chosen(QDate date);
  // The selection was moved: by a tap, or by the arrow keys, Page Up and Page Down.
  void Moved(QDate date);

 private:
  void MakeHeader();
  void ShowTitle(int year, int month);

  QCalendarWidget* days_;
  QLabel* title_;
};

}  // namespace platform::qt
