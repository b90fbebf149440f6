// Painting the month, its list, and what days and rows answer.
#include "views/qt/month_view_screen.h"

#include "core/settings_choices.h"
#include "platform/qt/qt_text.h"
#include "views/navigation.h"

namespace views {
namespace {

using platform::Scaled;
using platform::qt::ToQt;

constexpr int kMonthListId = 1072;
constexpr int kFirstWeekdayId = 1063;
constexpr QColor kWeekdayBackground(0xE0, 0xE0, 0xE0);
constexpr QColor kDayColor(0x64, 0x64, 0x64);

QColor BackgroundOf(CellKind kind) {
  switch (kind) {
    case CellKind::kOutside:
      return {0xA0, 0xA0, 0xA0};
    case CellKind::kWorkday:
      return Qt::white;
    case CellKind::kSaturday:
      return {0x80, 0x80, 0xFF};
    case CellKind::kSunday:
      return {0xFF, 0x80, 0x80};
    case CellKind::kToday:
      return {0xFF, 0x60, 0x60};
  }
  return Qt::white;
}

// The part of a cell between its lines, and in it the room for its texts.
QRect FieldOf(const QRect& cell) {
  return cell.adjusted(Scaled(1), Scaled(1), 0, 0);
}
QRect InsideOf(const QRect& cell) {
  return FieldOf(cell).adjusted(Scaled(1), Scaled(1), -Scaled(1), -Scaled(1));
}

}  // namespace

MonthViewScreen::MonthViewScreen(core::CAppState& app, SharedControls controls)
    : ViewScreen(app, controls),
      canvas_(new ViewCanvas(controls.list.parentWidget(), controls.popups, controls.map)),
      list_(new ActionList(controls.list.parentWidget(), kMonthListId)) {
  canvas_->setObjectName(QStringLiteral("month"));
  canvas_->SetPaint([this](QPainter& painter) { Paint(painter); });
  canvas_->setAccessibleName(QStringLiteral("1ヶ月表示"));
  list_->setAccessibleName(QStringLiteral("選択日のアクション"));
  canvas_->SetSpots([this] { return Spots(); });
  connect(canvas_, &ViewCanvas::Tapped, this, &MonthViewScreen::OnTapped);
  connect(canvas_, &ViewCanvas::Held, this, &MonthViewScreen::OnHeld);
  connect(canvas_, &ViewCanvas::MenuKeyPressed, this, [this] {
    const int cell = CellOfCurDay(month_);
    if (cell >= 0) OnHeld(ToQt(CellRect(layout_, cell)).center());
  });
  MakeWeekdays();
  ConnectList();
}

void MonthViewScreen::MakeWeekdays() {
  const QString letters = QStringLiteral("日月火水木金土");
  for (int column = 0; column < kMonthColumns; ++column) {
    auto* label = new QLabel(letters.mid(column, 1), canvas_);
    label->setObjectName(QString::number(kFirstWeekdayId + column));
    label->setFont(platform::qt::FixedFont(12));
    label->setAlignment(Qt::AlignCenter);
    label->setAutoFillBackground(true);
    QPalette palette(kWeekdayBackground);
    palette.setColor(QPalette::WindowText, column == 0                   ? Qt::red
                                           : column == kMonthColumns - 1 ? Qt::blue
                                                                         : Qt::black);
    label->setPalette(palette);
    weekdays_[static_cast<size_t>(column)] = label;
  }
}

void MonthViewScreen::ConnectList() {
  list_->setHeaderHidden(true);
  list_->setFocusPolicy(Qt::NoFocus);  // the keys move the date
  list_->SetPopupCloser([this] {
    canvas_->setFocus();
    return controls_.popups.Close();
  });
  connect(list_, &ActionList::RowTapped, this, &ViewScreen::RowTapped);
  connect(list_, &ActionList::NewTapped, this, [this] { emit Commanded(kNew); });
  connect(list_, &ActionList::Held, this,
          [this](QPoint at, const QRect& row) { emit MenuWanted(kEditMenu, at, row); });
}

void MonthViewScreen::SetShown(bool shown) {
  canvas_->setVisible(shown);
  list_->setVisible(shown);
}

void MonthViewScreen::Place(const Rect& content) {
  const QWidget* window = canvas_->parentWidget();
  layout_ = LayoutMonth(content, IsPortrait(window->width(), window->height()), ShowsToolBar(app_));
  canvas_->setGeometry(ToQt(layout_.grid));
  list_->setGeometry(ToQt(layout_.list));
  for (int column = 0; column < kMonthColumns; ++column) {
    weekdays_[static_cast<size_t>(column)]->setGeometry(ToQt(WeekdayRect(layout_, column)));
  }
}

void MonthViewScreen::Count() {
  month_ = CountMonth(app_, core::CurYear, core::CurMonth);
}

void MonthViewScreen::ShowCount() {
  controls_.header.SetTitle(MonthTitle(app_, month_));
  canvas_->update();
  touch::TellCurrentSpot(*canvas_);
}

void MonthViewScreen::Refill() {
  rows_ = FillMonthList(app_);
  list_->SetColumns(platform::qt::SettingFont(app_.MthVwLstFntName, app_.MthVwLstFntSize), {{}},
                    {});
  list_->ShowRows(rows_);
  list_->FitLastColumn();
  ShowCount();
}

void MonthViewScreen::OnDateMoved() {
  if (month_.year != core::CurYear || month_.month != core::CurMonth) Count();
}

// Kept on purpose: only the edit screen and an import fill the list again. Its rows find their
// Actions by their ids: for one that has gone there is a message, and no other is hit.
void MonthViewScreen::OnChange(Change change) {
  Count();
  if (change == Change::kAdded || change == Change::kEdited || StaysCurrent(app_)) {
    Refill();
  } else {
    ShowCount();
  }
}

int MonthViewScreen::SelectedRow() const {
  const std::vector<int> rows = list_->SelectedRows();
  return rows.empty() ? -1 : rows.front();
}

void MonthViewScreen::GoToPressedDay() {
  if (pressedCell_ < 0) return;
  GoToDay(month_.MonthCells[static_cast<size_t>(pressedCell_)].day);
}

void MonthViewScreen::OnTapped(QPoint press, QPoint release) {
  const int cell = CellAt(press);
  if (cell >= 0 && cell == CellAt(release)) OpenCell(cell);
}

void MonthViewScreen::OpenCell(int cell) {
  pressedCell_ = cell;
  emit Commanded(app_.MonViewTapOpeMode == core::kMonthTapOpensDay ? kMonthShowDay : kMonthOpen);
}

std::vector<touch::Spot> MonthViewScreen::Spots() {
  std::vector<touch::Spot> spots;
  for (int cell = 0; cell < kMonthCells; ++cell) {
    const MonthCell& shown = month_.MonthCells[static_cast<size_t>(cell)];
    if (!shown.day) continue;
    spots.push_back({.place = ToQt(CellRect(layout_, cell)),
                     .name = ToQt(CellText(shown)),
                     .press = [this, cell] { OpenCell(cell); },
                     .isCurrent = cell == CellOfCurDay(month_)});
  }
  return spots;
}

void MonthViewScreen::OnHeld(QPoint press) {
  pressedCell_ = CellAt(press);
  if (pressedCell_ >= 0) emit MenuWanted(kMonthDayMenu, canvas_->mapToGlobal(press));
}

void MonthViewScreen::Paint(QPainter& painter) const {
  for (int cell = 0; cell < kMonthCells; ++cell) PaintField(painter, cell);
  // Over the fields, which reach into them if a unit is no whole number of pixels.
  PaintLines(painter);
  // A digit half as wide as the font is high leaves the count a place, and two fit any cell.
  const QFont dayFont =
      platform::qt::CondensedFont(platform::qt::SettingFont(app_.MthVwGrdFntName, Scaled(18)),
                                  QStringLiteral("00"), Scaled(18));
  const QFont countFont = platform::qt::SettingFont(app_.MthVwGrdFntName, Scaled(12));
  for (int cell = 0; cell < kMonthCells; ++cell) PaintDay(painter, cell, dayFont, countFont);
  const int current = CellOfCurDay(month_);
  if (current < 0) return;
  painter.setPen(QPen(Qt::black, Scaled(1)));
  painter.drawRect(ToQt(CellRect(layout_, current)).adjusted(-1, -1, 1, 1));
}

void MonthViewScreen::PaintLines(QPainter& painter) const {
  const int top = layout_.firstRowTop;
  const int bottom = top + kMonthRows * layout_.rowHeight;
  const int right = kMonthColumns * layout_.columnWidth;
  painter.setPen(Qt::black);
  for (int y = top; y <= bottom; y += layout_.rowHeight) painter.drawLine(0, y, right, y);
  for (int x = 0; x <= right; x += layout_.columnWidth) painter.drawLine(x, top, x, bottom);
}

void MonthViewScreen::PaintField(QPainter& painter, int cell) const {
  painter.fillRect(FieldOf(ToQt(CellRect(layout_, cell))), BackgroundOf(KindOf(cell)));
}

void MonthViewScreen::PaintDay(QPainter& painter, int cell, const QFont& dayFont,
                               const QFont& countFont) const {
  const MonthCell& shown = month_.MonthCells[static_cast<size_t>(cell)];
  if (!shown.day) return;
  const QRect inside = InsideOf(ToQt(CellRect(layout_, cell)));
  painter.setPen(KindOf(cell) == CellKind::kToday ? QColor(Qt::white) : kDayColor);
  painter.setFont(dayFont);
  painter.drawText(inside.left(), inside.top() + painter.fontMetrics().capHeight(),
                   QString::number(shown.day->day));
  if (shown.count < 1) return;
  const QString count = QString::number(shown.count);
  painter.setPen(Qt::black);
  painter.setFont(platform::qt::FittedFont(countFont, count, inside.width()));
  painter.drawText(inside.right() + 1 - painter.fontMetrics().horizontalAdvance(count),
                   inside.bottom() + 1, count);
}

}  // namespace views
