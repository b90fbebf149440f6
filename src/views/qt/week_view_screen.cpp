// Painting the week, and what its bands and boxes answer.
#include "views/qt/week_view_screen.h"

#include <algorithm>

#include "platform/qt/qt_text.h"
#include "platform/qt/text_lines.h"
#include "views/navigation.h"

namespace views {
namespace {

using platform::qt::CutToWidth;
using platform::qt::ToQt;

constexpr QColor kStripColor(0xE0, 0x80, 0xFF);
constexpr QColor kDivisionColor(0x00, 0x00, 0xFF);
constexpr QColor kBoxColor(0x20, 0x40, 0xE0);
constexpr QColor kBoxTextColor(0xE0, 0xE0, 0xE0);
constexpr QColor kKeyBoxColor(0xFF, 0x80, 0x00);

}  // namespace

WeekViewScreen::WeekViewScreen(core::CAppState& app, SharedControls controls)
    : ViewScreen(app, controls),
      canvas_(new ViewCanvas(controls.list.parentWidget(), controls.popups, controls.map)) {
  canvas_->setObjectName(QStringLiteral("week"));
  canvas_->SetPaint([this](QPainter& painter) { Paint(painter); });
  canvas_->setAccessibleName(QStringLiteral("1週間表示"));
  canvas_->SetSpots([this] { return Spots(); });
  connect(canvas_, &ViewCanvas::Tapped, this, &WeekViewScreen::OnTapped);
  connect(canvas_, &ViewCanvas::Held, this, &WeekViewScreen::OnHeld);
  connect(canvas_, &ViewCanvas::MenuKeyPressed, this, &WeekViewScreen::OnMenuKey);
}

// The box of the keys stays with its Action, and with its day if the Action has several.
void WeekViewScreen::Read() {
  WeekItem former;
  if (keyBox_ >= 0) former = week_.WeekItems[static_cast<size_t>(keyBox_)];
  ReadWeek(app_, week_);
  if (keyBox_ < 0) return;
  const auto& items = week_.WeekItems;
  auto found = std::ranges::find_if(items, [&](const WeekItem& item) {
    return item.id == former.id && core::CompareCalendarDays(item.start, former.start) == 0;
  });
  if (found == items.end()) found = std::ranges::find(items, former.id, &WeekItem::id);
  keyBox_ = found == items.end() ? -1 : static_cast<int>(found - items.begin());
}

bool WeekViewScreen::TakesKey(QKeyCombination key) {
  constexpr std::pair<int, BoxStep> kSteps[] = {{Qt::Key_Left, BoxStep::kBefore},
                                                {Qt::Key_Right, BoxStep::kAfter},
                                                {Qt::Key_Up, BoxStep::kUp},
                                                {Qt::Key_Down, BoxStep::kDown}};
  for (const auto& [arrow, step] : kSteps) {
    if (key.key() != arrow || key.keyboardModifiers() != Qt::ControlModifier) continue;
    keyBox_ = NextBox(week_.WeekItems, keyBox_, step, kDaysBeforeCurDate);
    canvas_->update();
    touch::TellCurrentSpot(*canvas_);
    return true;
  }
  if (keyBox_ < 0) return false;
  const bool opens = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
  if (!opens && key.key() != Qt::Key_Delete) return false;
  tapItem_ = week_.WeekItems[static_cast<size_t>(keyBox_)].id;
  emit Commanded(opens ? kBoxChange : kBoxDelete);
  return true;
}

void WeekViewScreen::Refill() {
  first_ = FirstDayOfWeek();
  controls_.header.SetTitle(core::DayText(first_));
  controls_.header.MarkWeekday(core::WeekdayOf(core::CurrentDay()));
  canvas_->update();
}

void WeekViewScreen::OnChange(Change) {
  Read();
  Refill();
}

int WeekViewScreen::BoxAt(QPoint point) const {
  return views::BoxAt(Grid(), week_.WeekItems, point.x(), point.y());
}

void WeekViewScreen::GoToBand(int band) {
  GoToDay(core::DaysLater(first_, band));
}

void WeekViewScreen::OnTapped(QPoint press, QPoint release) {
  const int box = BoxAt(press);
  const int band = BandAt(press);
  if (box != BoxAt(release) || band < 0 || band != BandAt(release)) return;
  if (box >= 0) {
    OpenBox(week_.WeekItems[static_cast<size_t>(box)].id);
  } else {
    GoToBand(band);
    app_.SelIndex = -1;
    emit Commanded(kNew);
  }
}

void WeekViewScreen::OpenBox(const std::u16string& id) {
  tapItem_ = id;
  emit Commanded(kBoxChange);
}

std::vector<touch::Spot> WeekViewScreen::Spots() {
  std::vector<touch::Spot> spots;
  for (size_t box = 0; box < week_.WeekItems.size(); ++box) {
    const WeekItem& item = week_.WeekItems[box];
    spots.push_back({.place = ToQt(BoxRect(Grid(), item)),
                     .name = ToQt(BoxText(item)),
                     .press = [this, id = item.id] { OpenBox(id); },
                     .isCurrent = static_cast<int>(box) == keyBox_});
  }
  return spots;
}

void WeekViewScreen::OnHeld(QPoint press) {
  const int box = BoxAt(press);
  const int band = BandAt(press);
  if (box >= 0) {
    HoldBox(box, press);
  } else if (band >= 0) {
    GoToBand(band);
    emit MenuWanted(kWeekDayMenu, canvas_->mapToGlobal(press));
  }
}

void WeekViewScreen::HoldBox(int box, QPoint at) {
  const WeekItem& item = week_.WeekItems[static_cast<size_t>(box)];
  core::CalendarParts start;
  core::CalendarToParts(item.start, start);
  tapItem_ = item.id;
  GoToDay(core::Day{start.year, start.month, start.day});
  emit MenuWanted(kWeekBoxMenu, canvas_->mapToGlobal(at));
}

void WeekViewScreen::OnMenuKey() {
  if (keyBox_ < 0) return;
  HoldBox(keyBox_, ToQt(BoxRect(Grid(), week_.WeekItems[static_cast<size_t>(keyBox_)])).center());
}

void WeekViewScreen::Paint(QPainter& painter) const {
  const WeekGrid grid = Grid();
  PaintBands(painter, grid);
  painter.setClipRect(0, 0, grid.width, grid.strip.height);
  PaintBoxes(painter, grid);
}

void WeekViewScreen::PaintBands(QPainter& painter, const WeekGrid& grid) const {
  painter.setFont(platform::qt::SettingFont(app_.WekVwGrdFntName, app_.WekVwGrdFntSize));
  painter.fillRect(ToQt(grid.strip), kStripColor);
  painter.setPen(QPen(kDivisionColor, 1, Qt::DashLine));
  for (const int x : grid.divisions) painter.drawLine(x, 0, x, grid.strip.height - 1);
  painter.setPen(Qt::black);
  painter.drawLine(grid.strip.width, 0, grid.strip.width, grid.strip.height - 1);
  painter.drawLine(0, 0, grid.width, 0);
  for (int band = 0; band < kWeekDays; ++band) {
    const QRect label = ToQt(DayLabelRect(grid, band));
    painter.drawLine(0, label.bottom(), grid.width, label.bottom());
    const std::optional<core::Day> day = core::DaysLater(first_, band);
    if (day) painter.drawText(label, Qt::AlignCenter, QString::number(day->day));
  }
}

void WeekViewScreen::PaintBoxes(QPainter& painter, const WeekGrid& grid) const {
  for (const WeekItem& item : week_.WeekItems) {
    const QRect box = ToQt(BoxRect(grid, item));
    if (box.isEmpty()) continue;
    painter.fillRect(box, kBoxColor);
    painter.setPen(QPen(Qt::black, 0));  // a pixel, however large a unit is
    painter.drawRect(box.adjusted(0, 0, -1, -1));
    painter.setPen(kBoxTextColor);
    const QRect inside = box.adjusted(1, 1, -1, -1);
    painter.drawText(inside, Qt::AlignCenter | Qt::TextSingleLine,
                     CutToWidth(ToQt(item.text), painter.font(), inside.width()));
  }
  if (keyBox_ < 0) return;
  painter.setPen(QPen(kKeyBoxColor, platform::Scaled(2)));
  painter.drawRect(ToQt(BoxRect(grid, week_.WeekItems[static_cast<size_t>(keyBox_)])));
}

}  // namespace views
