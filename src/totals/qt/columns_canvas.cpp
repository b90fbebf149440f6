#include "totals/qt/columns_canvas.h"

#include <QKeyEvent>
#include <algorithm>
#include <numeric>

#include "platform/metrics.h"
#include "platform/qt/qt_rect.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/text_lines.h"
#include "totals/qt/palette.h"

namespace totals {

using platform::Scaled;
using platform::qt::FixedFont;
using platform::qt::ToQt;

ColumnsCanvas::ColumnsCanvas(const CTotals& totals, QWidget* parent)
    : Canvas(parent), totals_(totals) {
  setObjectName(QStringLiteral("columns"));
  setAccessibleName(QStringLiteral("期間の中の移り変わり"));
  SetPaint([this](QPainter& painter) { Paint(painter); });
  SetSpots([this] { return MakeSpots(); });
  connect(this, &Canvas::Tapped, this, [this](QPoint press, QPoint release) {
    const int column = ColumnAt(press);
    if (column >= 0 && column == ColumnAt(release)) emit ColumnTapped(column);
  });
}

void ColumnsCanvas::ShowColumns() {
  SetCurrent(current_);
}

ColumnsGrid ColumnsCanvas::Grid() const {
  const Columns& columns = totals_.Stacked();
  const QFontMetrics metrics(FixedFont(10));
  int label = 0;
  for (size_t column = 0; column < columns.times.size(); ++column) {
    label = std::max(label, metrics.horizontalAdvance(ToQt(ColumnText(columns.plan, column))));
  }
  const auto entries = columns.greatest.size() + (columns.hasOthers ? 1 : 0);
  return LayOutColumns(width(), height(), static_cast<int>(columns.times.size()),
                       static_cast<int>(entries), label, columns.highest);
}

// Also above and below what is painted of it.
int ColumnsCanvas::ColumnAt(QPoint point) const {
  const ColumnsGrid grid = Grid();
  if (point.y() >= grid.chart.y + grid.chart.height + grid.labelHeight) return -1;
  for (size_t column = 0; column < grid.columns.size(); ++column) {
    const Rect& place = grid.columns[column];
    if (point.x() >= place.x && point.x() < place.x + place.width) return static_cast<int>(column);
  }
  return -1;
}

void ColumnsCanvas::SetCurrent(int column) {
  const int count = static_cast<int>(totals_.Stacked().times.size());
  current_ = std::clamp(column, 0, std::max(count - 1, 0));
  update();
  touch::TellCurrentSpot(*this);
}

void ColumnsCanvas::SetCurrentDay(DayNumber day) {
  const std::vector<DayNumber>& edges = totals_.Stacked().plan.edges;
  SetCurrent(static_cast<int>(std::ranges::upper_bound(edges, day) - edges.begin()) - 1);
}

void ColumnsCanvas::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Left:
      return SetCurrent(current_ - 1);
    case Qt::Key_Right:
      return SetCurrent(current_ + 1);
    case Qt::Key_Home:
      return SetCurrent(0);
    case Qt::Key_End:
      return SetCurrent(static_cast<int>(totals_.Stacked().times.size()) - 1);
    case Qt::Key_Space:
      emit ColumnTapped(current_);
      return;
    default:
      Canvas::keyPressEvent(event);
  }
}

void ColumnsCanvas::Paint(QPainter& painter) const {
  const ColumnsGrid grid = Grid();
  if (grid.columns.empty()) return;
  painter.setFont(FixedFont(10));
  PaintAxis(painter, grid);
  for (size_t column = 0; column < grid.columns.size(); ++column) {
    PaintColumn(painter, grid, column);
  }
  painter.setPen(QPen(Qt::black, 0));
  const QRect chart = ToQt(grid.chart);
  painter.drawLine(chart.left(), chart.bottom() + 1, chart.right(), chart.bottom() + 1);
  PaintLegend(painter, grid);
  if (!hasFocus() || current_ < 0) return;
  painter.setPen(QPen(QColor(kCurrentColor), Scaled(2)));
  painter.drawRect(ToQt(grid.columns[static_cast<size_t>(current_)])
                       .adjusted(0, -Scaled(2), 0, grid.labelHeight));
}

void ColumnsCanvas::PaintAxis(QPainter& painter, const ColumnsGrid& grid) const {
  const QRect chart = ToQt(grid.chart);
  for (const Seconds line : grid.lines) {
    const int y = chart.bottom() + 1 - static_cast<int>(chart.height() * line / grid.top);
    painter.setPen(QPen(QColor(kGridColor), 0));
    painter.drawLine(chart.left(), y, chart.right(), y);
    painter.setPen(Qt::black);
    const QString hours = QString::number(line / kHourSeconds);
    painter.setFont(platform::qt::CondensedFont(FixedFont(10), hours, chart.left() - Scaled(4)));
    painter.drawText(QRect(0, y - Scaled(7), chart.left() - Scaled(2), Scaled(14)),
                     Qt::AlignRight | Qt::AlignVCenter, hours);
  }
  painter.setFont(FixedFont(10));
}

void ColumnsCanvas::PaintColumn(QPainter& painter, const ColumnsGrid& grid, size_t column) const {
  const Columns& columns = totals_.Stacked();
  const std::vector<Seconds>& times = columns.times[column];
  Seconds below = 0;
  for (size_t slot = 0; slot < times.size(); ++slot) {
    const bool isOther = slot == columns.greatest.size();
    painter.fillRect(ToQt(LayOutSegment(grid, column, below, times[slot])),
                     isOther ? QColor(kOthersColor) : ColorOf(slot));
    below += times[slot];
  }
  if (!HasText(columns.plan, column, grid.labelStep)) return;
  const QRect place = ToQt(grid.columns[column]);
  painter.setPen(Qt::black);
  const QString text = ToQt(ColumnText(columns.plan, column));
  const int wide = painter.fontMetrics().horizontalAdvance(text);
  const int x = std::min(place.center().x() - wide / 2, width() - wide);
  painter.drawText(QRect(x, place.bottom() + 1, wide + Scaled(2), grid.labelHeight),
                   Qt::AlignVCenter, text);
}

QString ColumnsCanvas::SlotName(size_t slot) const {
  const Columns& columns = totals_.Stacked();
  if (slot == columns.greatest.size()) return QStringLiteral("その他");
  const auto bar = std::ranges::find_if(totals_.Bars(), [&](const Bar& one) {
    return one.group->key == Key{columns.greatest[slot]};
  });
  return bar == totals_.Bars().end() ? QString() : ToQt(bar->name);
}

void ColumnsCanvas::PaintLegend(QPainter& painter, const ColumnsGrid& grid) const {
  const size_t others = totals_.Stacked().greatest.size();
  for (size_t slot = 0; slot < grid.legend.size(); ++slot) {
    const QRect entry = ToQt(grid.legend[slot]);
    const QRect sample(entry.left(), entry.top() + Scaled(3), Scaled(7), Scaled(8));
    painter.fillRect(sample, slot == others ? QColor(kOthersColor) : ColorOf(slot));
    painter.setPen(Qt::black);
    const QRect text = entry.adjusted(Scaled(9), 0, -Scaled(1), 0);
    painter.drawText(text, Qt::AlignVCenter | Qt::TextSingleLine,
                     platform::qt::CutToWidth(SlotName(slot), painter.font(), text.width()));
  }
}

std::vector<touch::Spot> ColumnsCanvas::MakeSpots() {
  std::vector<touch::Spot> spots;
  const ColumnsGrid grid = Grid();
  const Columns& columns = totals_.Stacked();
  for (size_t column = 0; column < grid.columns.size(); ++column) {
    const std::vector<Seconds>& times = columns.times[column];
    QString name = ToQt(TitleOf(PeriodOfColumn(columns.plan, column)) + u" " +
                        HoursText(std::reduce(times.begin(), times.end())));
    for (size_t slot = 0; slot < times.size(); ++slot) {
      if (times[slot] > 0) name += u' ' + SlotName(slot) + u' ' + ToQt(HoursText(times[slot]));
    }
    const int position = static_cast<int>(column);
    spots.push_back({.place = ToQt(grid.columns[column]),
                     .name = name,
                     .press = [this, position] { emit ColumnTapped(position); },
                     .isCurrent = position == current_});
  }
  return spots;
}

}  // namespace totals
