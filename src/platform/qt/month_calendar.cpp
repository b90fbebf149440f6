#include "platform/qt/month_calendar.h"

#include <QHBoxLayout>
#include <QLocale>
#include <QTextCharFormat>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/host.h"
#include "platform/metrics.h"
#include "platform/qt/qt_text.h"

namespace platform::qt {
namespace {

constexpr QColor kSundayColor(0xC8, 0x00, 0x00);  // a purer red is hard to read on white
constexpr QColor kSaturdayColor(0x00, 0x00, 0xD0);

QDate Today() {
  const LocalTime now = host().Now();
  return QDate(now.year, now.month, now.day);
}

void SetDayColor(QCalendarWidget& days, Qt::DayOfWeek day, const QColor& color) {
  QTextCharFormat format;
  format.setForeground(color);
  days.setWeekdayTextFormat(day, format);
}

}  // namespace

MonthCalendar::MonthCalendar(QWidget* parent)
    : QFrame(parent), days_(new QCalendarWidget(this)), title_(new QLabel(this)) {
  setAutoFillBackground(true);
  setFrameStyle(QFrame::Box | QFrame::Plain);
  setFocusProxy(days_);
  for (QWidget* days : {static_cast<QWidget*>(days_),
                        days_->findChild<QWidget*>(QStringLiteral("qt_calendar_calendarview"))}) {
    days->setAccessibleName(QStringLiteral("カレンダー"));
  }
  days_->setFont(FixedFont(12));
  days_->setLocale(QLocale(QLocale::Japanese, QLocale::Japan));
  days_->setNavigationBarVisible(false);
  days_->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
  days_->setHorizontalHeaderFormat(QCalendarWidget::ShortDayNames);
  days_->setFirstDayOfWeek(Qt::Sunday);
  // Qt takes typed digits for a date, a second and a half later, even if the calendar is closed by
  // then and another field is open.
  days_->setDateEditEnabled(false);
  days_->setMinimumDate(QDate(1900, 1, 1));
  days_->setMaximumDate(QDate(9999, 12, 31));
  SetDayColor(*days_, Qt::Sunday, kSundayColor);
  SetDayColor(*days_, Qt::Saturday, kSaturdayColor);
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  MakeHeader();
  rows->addWidget(days_, 1);
  connect(days_, &QCalendarWidget::currentPageChanged, this, &MonthCalendar::ShowTitle);
  connect(days_, &QCalendarWidget::clicked, this, &MonthCalendar::Chosen);
  connect(days_, &QCalendarWidget::activated, this, &MonthCalendar::Chosen);
  connect(days_, &QCalendarWidget::selectionChanged, this, [this] { emit Moved(Selected()); });
  Select(Today());
}

void MonthCalendar::MakeHeader() {
  auto* header = new QHBoxLayout;
  header->setSpacing(0);
  const auto addStep = [&](const char* name, const QString& sign, const QString& meaning,
                           auto step) {
    auto* button = new QToolButton(this);
    button->setObjectName(QString::fromLatin1(name));
    button->setText(sign);
    button->setAccessibleName(meaning);
    button->setFont(FixedFont(14));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus);
    button->setFixedSize(Scaled(30), Scaled(26));
    connect(button, &QToolButton::clicked, days_, step);
    header->addWidget(button);
  };
  addStep("previous_year", QStringLiteral("《"), QStringLiteral("前の年"),
          &QCalendarWidget::showPreviousYear);
  addStep("previous_month", QStringLiteral("<"), QStringLiteral("前の月"),
          &QCalendarWidget::showPreviousMonth);
  title_->setAlignment(Qt::AlignCenter);
  title_->setFont(FixedFont(13));
  title_->setObjectName(QStringLiteral("month_title"));
  header->addWidget(title_, 1);
  addStep("next_month", QStringLiteral(">"), QStringLiteral("次の月"),
          &QCalendarWidget::showNextMonth);
  addStep("next_year", QStringLiteral("》"), QStringLiteral("次の年"),
          &QCalendarWidget::showNextYear);
  static_cast<QVBoxLayout*>(layout())->addLayout(header);
}

void MonthCalendar::Select(const QDate& date) {
  const QDate shown = date.isValid() && date >= days_->minimumDate() ? date : Today();
  QTextCharFormat bold;
  bold.setFontWeight(QFont::Bold);
  days_->setDateTextFormat(QDate(), {});
  days_->setDateTextFormat(Today(), bold);
  days_->setSelectedDate(shown);
  days_->setCurrentPage(shown.year(), shown.month());
  ShowTitle(shown.year(), shown.month());
}

void MonthCalendar::PlaceBy(const QRect& field, const QRect& area) {
  QSize size = QSize(Scaled(228), Scaled(200)).boundedTo(area.size());
  const int below = area.bottom() - field.bottom();
  const bool fitsAbove = field.top() >= size.height();
  if (!fitsAbove && below >= Scaled(160)) size.setHeight(std::min(size.height(), below));
  const int x = std::min(field.left(), area.right() + 1 - size.width());
  const int y = size.height() <= below ? field.bottom() + 1
                : fitsAbove            ? field.top() - size.height()
                                       : area.bottom() + 1 - size.height();
  setGeometry(QRect(QPoint(x, y), size));
}

void MonthCalendar::ShowTitle(int year, int month) {
  title_->setText(QStringLiteral("%1年%2月").arg(year).arg(month));
}

}  // namespace platform::qt
