// Opening, placing and closing the calendar and the box of pages.
#include "views/qt/date_popups.h"

#include "platform/qt/qt_text.h"
#include "views/navigation.h"

namespace views {
namespace {

using platform::Scaled;

constexpr int kPageComboId = 1070;
constexpr int kCalendarId = 1125;

}  // namespace

PageBox::PageBox(QWidget* parent) : ChoiceBox(parent) {
  setObjectName(QString::number(kPageComboId));
  setAccessibleName(QStringLiteral("ページ"));
}

void PageBox::hidePopup() {
  ChoiceBox::hidePopup();
  emit ListClosed();
}

DatePopups::DatePopups(QWidget* window, HeaderRow& header)
    : QObject(window),
      window_(window),
      header_(header),
      calendar_(new platform::qt::MonthCalendar(window)),
      pages_(new PageBox(window)) {
  calendar_->setObjectName(QString::number(kCalendarId));
  calendar_->hide();
  pages_->hide();
  connect(calendar_, &platform::qt::MonthCalendar::Chosen, this, [this](const QDate& date) {
    emit DateChosen({date.year(), date.month(), date.day()});
  });
  connect(pages_, &QComboBox::activated, this, &DatePopups::PageChosen);
  // After the choice, and after a press elsewhere, which the list of Actions gets as well.
  connect(pages_, &PageBox::ListClosed, this, &DatePopups::Close, Qt::QueuedConnection);
}

void DatePopups::Toggle(const core::CAppState& app) {
  if (Close()) return;
  if (ViewOnShow(app.CurView) == core::kViewList) {
    OpenPages(app);
  } else {
    OpenCalendar();
  }
}

bool DatePopups::Close() {
  if (state_ == kNone) return false;
  state_ = kNone;
  calendar_->hide();
  pages_->hide();
  header_.DateLabel().show();
  return true;
}

void DatePopups::TakeFocus() {
  if (state_ == kCalendarOpen) calendar_->setFocus();
}

QRect DatePopups::LabelRect() const {
  const QWidget& label = header_.DateLabel();
  return {label.mapTo(window_, QPoint()), label.size()};
}

void DatePopups::OpenCalendar() {
  const core::Day day = core::WithinMonth(core::CurrentDay());
  calendar_->Select(QDate(day.year, day.month, day.day));
  const QPoint place(LabelRect().left(), header_.geometry().bottom() + 1);
  const QSize room(window_->width(), window_->height() - core::MenuBarHeight - place.y());
  calendar_->setGeometry(QRect(place, QSize(Scaled(228), Scaled(200)).boundedTo(room)));
  calendar_->show();
  calendar_->raise();
  state_ = kCalendarOpen;
}

void DatePopups::OpenPages(const core::CAppState& app) {
  QStringList numbers;
  for (int page = 0; app.IndexCount > 0 && page <= LastPage(app); ++page) {
    numbers << QString::number(page + 1);
  }
  pages_->clear();
  pages_->addItems(numbers);
  pages_->setCurrentIndex(app.ListPage);
  pages_->setGeometry(LabelRect());
  header_.DateLabel().hide();
  pages_->show();
  pages_->raise();
  pages_->showPopup();
  state_ = kPagesOpen;
}

}  // namespace views
