#include "totals/qt/bars_canvas.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPaintEvent>
#include <QScrollBar>
#include <algorithm>

#include "platform/metrics.h"
#include "platform/qt/focus_frame.h"
#include "platform/qt/qt_rect.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/text_lines.h"
#include "totals/qt/palette.h"

namespace totals {
namespace {

using platform::Scaled;
using platform::qt::FixedFont;
using platform::qt::ToQt;

constexpr int kDragUnits = 8;  // of a press that becomes a drag

}  // namespace

BarsCanvas::BarsCanvas(const CTotals& totals, QScrollArea* area)
    : Canvas(nullptr), totals_(totals), area_(area) {
  setObjectName(QStringLiteral("bars"));
  setAccessibleName(QStringLiteral("グループごとの時間"));
  SetSpots([this] { return MakeSpots(); });
  area->setWidget(this);
  area->setWidgetResizable(true);
  area->setFrameShape(QFrame::NoFrame);
  area->setFocusPolicy(Qt::NoFocus);
  area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  area->verticalScrollBar()->setFocusPolicy(Qt::NoFocus);
  area->verticalScrollBar()->setSingleStep(BarRowHeight());
  show();
  // The frame of the focus stays where it is while the bars move.
  connect(area->verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { update(); });
  connect(this, &Canvas::Tapped, this, [this](QPoint press, QPoint release) {
    const int bar = BarAt(press);
    if (isDragged_ || bar < 0 || bar != BarAt(release)) return;
    SetCurrentBar(bar);
    emit BarTapped(bar);
  });
}

void BarsCanvas::ShowBars(bool areOthers) {
  setMinimumHeight(static_cast<int>(totals_.Bars().size()) * BarRowHeight());
  if (areOthers) {
    area_->verticalScrollBar()->setValue(0);
    current_ = 0;
  }
  current_ = std::min(current_, static_cast<int>(totals_.Bars().size()) - 1);
  longest_ = 0;
  for (const Group& group : totals_.Sums().groups) longest_ = std::max(longest_, group.time);
  update();
  touch::TellCurrentSpot(*this);
}

int BarsCanvas::BarAt(QPoint point) const {
  const int bar = point.y() < 0 ? -1 : point.y() / BarRowHeight();
  return bar < static_cast<int>(totals_.Bars().size()) ? bar : -1;
}

QRect BarsCanvas::RowOf(int bar) const {
  return {0, bar * BarRowHeight(), width(), BarRowHeight()};
}

void BarsCanvas::SetCurrentBar(int bar) {
  current_ = std::min(bar, static_cast<int>(totals_.Bars().size()) - 1);
  const QRect row = RowOf(std::max(current_, 0));
  area_->ensureVisible(0, row.top(), 0, 0);
  area_->ensureVisible(0, row.bottom(), 0, 0);
  update();
  touch::TellCurrentSpot(*this);
}

bool BarsCanvas::OnPress(QPoint point) {
  pressY_ = mapToGlobal(point).y();
  scrollAtPress_ = area_->verticalScrollBar()->value();
  isDragged_ = false;
  return true;
}

void BarsCanvas::OnMove(QPoint point) {
  if ((QGuiApplication::mouseButtons() & Qt::LeftButton) == 0) return;
  const int way = mapToGlobal(point).y() - pressY_;
  if (std::abs(way) >= Scaled(kDragUnits)) isDragged_ = true;
  if (isDragged_) area_->verticalScrollBar()->setValue(scrollAtPress_ - way);
}

void BarsCanvas::keyPressEvent(QKeyEvent* event) {
  const int page = std::max(1, area_->viewport()->height() / BarRowHeight() - 1);
  switch (event->key()) {
    case Qt::Key_Up:
      return SetCurrentBar(std::max(current_ - 1, 0));
    case Qt::Key_Down:
      return SetCurrentBar(current_ + 1);
    case Qt::Key_PageUp:
      return SetCurrentBar(std::max(current_ - page, 0));
    case Qt::Key_PageDown:
      return SetCurrentBar(current_ + page);
    case Qt::Key_Home:
      return SetCurrentBar(0);
    case Qt::Key_End:
      return SetCurrentBar(static_cast<int>(totals_.Bars().size()) - 1);
    case Qt::Key_Left:
      emit StepWanted(-1);
      return;
    case Qt::Key_Right:
      emit StepWanted(1);
      return;
    case Qt::Key_Space:
      emit BarTapped(current_);
      return;
    default:
      Canvas::keyPressEvent(event);
  }
}

// Only the bars in sight: there may be as many as there are places.
void BarsCanvas::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  const QRect dirty = event->rect();
  painter.fillRect(dirty, Qt::white);
  const int count = static_cast<int>(totals_.Bars().size());
  const int first = std::max(dirty.top() / BarRowHeight(), 0);
  const int last = std::min(dirty.bottom() / BarRowHeight(), count - 1);
  const FigureWidths widths = WidthsInSight();
  for (int bar = first; bar <= last; ++bar) PaintBar(painter, bar, widths);
  if (count == 0) {
    painter.setPen(Qt::black);
    painter.setFont(FixedFont(12));
    painter.drawText(area_->viewport()->rect(), Qt::AlignCenter,
                     QStringLiteral("アクションはありません。"));
  }
  if (hasFocus()) PaintFrame(painter);
}

QRect BarsCanvas::InSight() const {
  return {0, area_->verticalScrollBar()->value(), width(), area_->viewport()->height()};
}

// Of all bars in sight, also where fewer are painted again.
FigureWidths BarsCanvas::WidthsInSight() const {
  const QFontMetrics upper(FixedFont(12)), lower(FixedFont(10));
  const int last =
      std::min(InSight().bottom() / BarRowHeight(), static_cast<int>(totals_.Bars().size()) - 1);
  FigureWidths widths;
  for (int bar = InSight().top() / BarRowHeight(); bar <= last; ++bar) {
    const BarFigures texts = FiguresAt(bar);
    widths.figures = std::max(widths.figures, upper.horizontalAdvance(ToQt(texts.figures)));
    widths.details = std::max(widths.details, lower.horizontalAdvance(ToQt(texts.details)));
  }
  return widths;
}

BarFigures BarsCanvas::FiguresAt(int bar) const {
  const Group& group = *totals_.Bars()[static_cast<size_t>(bar)].group;
  return FiguresOf(group, totals_.Sums(), IsNarrowBar(width()));
}

// Around what is in sight, and not around all of the bars.
void BarsCanvas::PaintFrame(QPainter& painter) const {
  const QRect inside = InSight().marginsRemoved(QMargins() + Scaled(platform::qt::kFocusFrame));
  for (const QRect& side : QRegion(InSight()) - inside) {
    painter.fillRect(side, palette().highlight());
  }
}

void BarsCanvas::PaintBar(QPainter& painter, int bar, const FigureWidths& widths) const {
  const Bar& shown = totals_.Bars()[static_cast<size_t>(bar)];
  const BarFigures texts = FiguresAt(bar);
  const bool isInner = shown.group->key.inner != Key::kAny;
  const BarRow row = LayOutBar(width(), bar, isInner, shown.group->time, longest_, widths);
  if (bar == totals_.OpenBar()) painter.fillRect(ToQt(row.row), QColor(kOpenColor));
  painter.fillRect(ToQt(row.bar), ColorOf(shown.slot));
  painter.setPen(Qt::black);
  painter.setFont(FixedFont(12));
  painter.drawText(ToQt(row.name), Qt::AlignVCenter | Qt::TextSingleLine,
                   platform::qt::CutToWidth(ToQt(shown.name), painter.font(), row.name.width));
  painter.drawText(ToQt(row.figures), Qt::AlignVCenter | Qt::AlignRight, ToQt(texts.figures));
  painter.setFont(FixedFont(10));
  painter.drawText(ToQt(row.details), Qt::AlignVCenter | Qt::AlignRight, ToQt(texts.details));
  if (bar != current_ || !hasFocus()) return;
  painter.setPen(QPen(QColor(kCurrentColor), Scaled(2)));
  painter.drawRect(ToQt(row.row).adjusted(Scaled(3), 1, -Scaled(3), -2));
}

std::vector<touch::Spot> BarsCanvas::MakeSpots() {
  std::vector<touch::Spot> spots;
  for (size_t bar = 0; bar < totals_.Bars().size(); ++bar) {
    const Bar& shown = totals_.Bars()[bar];
    const int position = static_cast<int>(bar);
    const BarFigures texts = FiguresOf(*shown.group, totals_.Sums(), false);
    spots.push_back({.place = RowOf(position),
                     .name = ToQt(shown.name + u" " + texts.figures + u" " + texts.details),
                     .press = [this, position] { emit BarTapped(position); },
                     .isCurrent = position == current_});
  }
  return spots;
}

}  // namespace totals
