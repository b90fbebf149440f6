// The header row: buttons painted by the program, placed by header_layout.
#include "views/qt/header_row.h"

#include <QContextMenuEvent>
#include <QPainter>
#include <utility>

#include "platform/qt/device_shell.h"
#include "platform/qt/qt_rect.h"
#include "platform/qt/qt_text.h"
#include "views/commands.h"

namespace views {
namespace {

using platform::Scaled;
using platform::qt::ToQt;

constexpr QRgb kSundayText = 0xFFFF0000;
constexpr QRgb kSaturdayText = 0xFF0000FF;
constexpr QRgb kWeekdayBackground = 0xFFC0C0E0;
constexpr QRgb kFindBackground = 0xFFFFE080;
constexpr size_t kWeekdays = 7;
constexpr int kEndless = 10000;  // more than any text is wide
constexpr int kWeekdayLabelId = 1073;

constexpr std::array<char16_t, kWeekdays> kWeekdayLetters = {u'日', u'月', u'火', u'水',
                                                             u'木', u'金', u'土'};

QString StepText(int id, core::View view) {
  const bool list = view == core::kViewList;
  switch (id) {
    case kBigStepBack:
      return list ? QStringLiteral("|<") : QStringLiteral("《");
    case kStepBack:
      return QStringLiteral("<");
    case kToday:
      return QStringLiteral("・");
    case kStepForward:
      return QStringLiteral(">");
    default:
      return list ? QStringLiteral(">|") : QStringLiteral("》");
  }
}

// What a step moves by depends on the view.
QString StepName(int id, core::View view) {
  const bool list = view == core::kViewList;
  const bool month = view == core::kViewMonth;
  const auto name = [=](const char16_t* ofList, const char16_t* ofMonth, const char16_t* ofDays) {
    return ToQt(list ? ofList : month ? ofMonth : ofDays);
  };
  switch (id) {
    case kBigStepBack:
      return name(u"最初のページ", u"前の年", u"前の週");
    case kStepBack:
      return name(u"前のページ", u"前の月", u"前の日");
    case kToday:
      return QStringLiteral("今日");
    case kStepForward:
      return name(u"次のページ", u"次の月", u"次の日");
    default:
      return name(u"最後のページ", u"次の年", u"次の週");
  }
}

HeaderButton::Colors WeekdayColors(size_t weekday) {
  HeaderButton::Colors colors;
  colors.background = kWeekdayBackground;
  if (weekday == 0) colors.text = kSundayText;
  if (weekday == kWeekdays - 1) colors.text = kSaturdayText;
  return colors;
}

}  // namespace

HeaderButton::HeaderButton(int id, const QString& text, const Colors& colors, QWidget* parent)
    : PaintedButton(parent), colors_(colors) {
  setObjectName(QString::number(id));
  setText(text);
  setFocusPolicy(Qt::TabFocus);  // a tap leaves the focus in the list
  setFont(platform::qt::FixedFont(12));
}

void HeaderButton::SetBackground(QRgb background) {
  colors_.background = background;
  update();
}

void HeaderButton::SetHold(std::function<void()> onHold) {
  onHold_ = std::move(onHold);
  new platform::qt::TapAndHold(this, [this](QPoint) {
    setDown(false);  // the release doesn't come
    onHold_();
  });
}

void HeaderButton::contextMenuEvent(QContextMenuEvent* event) {
  if (onHold_ && event->reason() == QContextMenuEvent::Keyboard) onHold_();
}

void HeaderButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), QColor(isDown() ? colors_.pressedBackground : colors_.background));
  painter.setPen(QColor(0xFFA0A0A0));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
  painter.setPen(QColor(isDown() ? colors_.pressedText : colors_.text));
  painter.setFont(platform::qt::FittedFont(font(), text(), width() - 2));
  // The ink goes in the middle: most of the glyph of a bracket or a point is blank.
  const QRect ink = painter.fontMetrics().tightBoundingRect(text());
  const int x = (width() - ink.width()) / 2 - ink.left();
  painter.drawText(QRect(x, 0, x + kEndless, height()), Qt::AlignVCenter | Qt::TextSingleLine,
                   text());
  PaintFocus(painter);
}

HeaderRow::HeaderRow(QWidget* parent)
    : QWidget(parent),
      dateLabel_(new HeaderButton(kDateLabel, QString(), {}, this)),
      weekdayLabel_(new QLabel(this)) {
  connect(dateLabel_, &QAbstractButton::clicked, this, [this] { emit Pressed(kDateLabel); });
  dateLabel_->SetHold([this] { emit Pressed(kTidy); });
  for (size_t place = 0; place < buttons_.size(); ++place) MakeButton(place);
  weekdayLabel_->setObjectName(QString::number(kWeekdayLabelId));
  weekdayLabel_->setFont(platform::qt::FixedFont(12));
  weekdayLabel_->setAlignment(Qt::AlignCenter);
  weekdayLabel_->setAutoFillBackground(true);
  weekdayLabel_->setPalette(QPalette(Qt::black, Qt::white));
  SetView(view_);
}

void HeaderRow::MakeButton(size_t place) {
  const int id = kHeaderButtonIds[place];
  const bool weekday = place < kWeekdays;
  auto* button = new HeaderButton(id, weekday ? QString(QChar(kWeekdayLetters[place])) : QString(),
                                  weekday ? WeekdayColors(place) : HeaderButton::Colors(), this);
  if (weekday) {
    button->setAccessibleName(button->text() + QStringLiteral("曜日"));
  } else {
    button->setFont(id == kToday ? platform::qt::DotFont() : platform::qt::FixedFont(16));
  }
  connect(button, &QAbstractButton::clicked, this, [this, id] { emit Pressed(id); });
  buttons_[place] = button;
}

void HeaderRow::SetView(core::View view) {
  view_ = view;
  for (size_t place = kWeekdays; place < buttons_.size(); ++place) {
    buttons_[place]->setText(StepText(kHeaderButtonIds[place], view));
    buttons_[place]->setAccessibleName(StepName(kHeaderButtonIds[place], view));
  }
  Place();
}

void HeaderRow::SetTitle(std::u16string_view title) {
  dateLabel_->setText(ToQt(title));
}

void HeaderRow::MarkFind(bool lasts) {
  dateLabel_->SetBackground(lasts ? kFindBackground : HeaderButton::Colors().background);
}

void HeaderRow::MarkWeekday(int weekday) {
  markedWeekday_ = weekday;
  Place();
}

void HeaderRow::resizeEvent(QResizeEvent*) {
  Place();
}

void HeaderRow::Place() {
  const HeaderLayout layout = LayoutHeader(width(), view_);
  dateLabel_->setGeometry(ToQt(layout.dateLabel));
  const bool weekdays = ShowsWeekdays(view_);
  for (size_t place = 0; place < buttons_.size(); ++place) {
    buttons_[place]->setGeometry(ToQt(layout.buttons[place]));
    const bool marked = static_cast<int>(place) + 1 == markedWeekday_;
    if (place < kWeekdays) buttons_[place]->setVisible(weekdays && !marked);
  }
  const bool marks = weekdays && markedWeekday_ >= 1;
  weekdayLabel_->setVisible(marks);
  if (!marks) return;
  weekdayLabel_->setText(buttons_[static_cast<size_t>(markedWeekday_ - 1)]->text());
  weekdayLabel_->setGeometry(ToQt(WeekdayLabelRect(layout, markedWeekday_)));
}

}  // namespace views
