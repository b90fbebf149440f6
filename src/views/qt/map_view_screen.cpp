// The map's pane and list, and what a finger on the pane means.
#include "views/qt/map_view_screen.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QToolTip>
#include <cmath>

#include "platform/qt/qt_text.h"
#include "views/map_view.h"

namespace views {
namespace {

using platform::Scaled;
using platform::qt::ToQt;

constexpr double kZoomOfNotch = 1.25;
constexpr double kWheelNotch = 120.0;  // eighths of a degree

bool IsPortraitWindow(const QWidget& widget) {
  return IsPortrait(widget.window()->width(), widget.window()->height());
}

}  // namespace

// A marker under the pointer shows its place.
bool MapCanvas::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return ViewCanvas::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const int item = map_.HitTest({help->pos().x(), help->pos().y()});
  const QString place = item < 0 ? QString() : ToQt(map_.MapItems[static_cast<size_t>(item)].place);
  QToolTip::showText(help->globalPos(), place.toHtmlEscaped(), this);
  return true;
}

void MapCanvas::mouseMoveEvent(QMouseEvent* event) {
  ViewCanvas::mouseMoveEvent(event);
  if (map_.scmode != MapMode::kPressed) hold_->Cancel();
}

void MapCanvas::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const bool tap = map_.Release(event->pos().x(), event->pos().y());
  update();
  if (tap) ViewCanvas::mouseReleaseEvent(event);
}

void MapCanvas::wheelEvent(QWheelEvent* event) {
  map_.Zoom(std::pow(kZoomOfNotch, event->angleDelta().y() / kWheelNotch) - 1);
  update();
}

MapViewScreen::MapViewScreen(core::CAppState& app, SharedControls controls)
    : ViewScreen(app, controls),
      canvas_(new MapCanvas(controls.list.parentWidget(), controls.popups, controls.map)),
      blank_(new QWidget(controls.list.parentWidget())) {
  canvas_->setObjectName(QStringLiteral("map"));
  canvas_->setAccessibleName(QStringLiteral("マップ"));
  canvas_->SetSpots([this] { return Spots(); });
  canvas_->setFocusPolicy(Qt::NoFocus);  // the keys stay with the list
  canvas_->SetPaint([this](QPainter& painter) { Paint(painter); });
  blank_->setPalette(QPalette(Qt::black, Qt::white));
  blank_->setAutoFillBackground(true);
  connect(canvas_, &ViewCanvas::Tapped, this, &MapViewScreen::OnTapped);
  connect(canvas_, &ViewCanvas::Held, this, &MapViewScreen::OnHeld);
}

void MapViewScreen::SetShown(bool shown) {
  for (QWidget* part : {static_cast<QWidget*>(canvas_), blank_}) part->setVisible(shown);
  ViewScreen::SetShown(shown);
}

void MapViewScreen::Place(const Rect& content) {
  const MapLayout layout = LayoutMap(content, IsPortraitWindow(controls_.list));
  canvas_->setGeometry(ToQt(layout.pane));
  controls_.list.setGeometry(ToQt(layout.list));
  blank_->setGeometry(ToQt(layout.blank));
}

std::array<int, 5>& MapViewScreen::Widths() {
  return IsPortraitWindow(controls_.list) ? app_.MapVwPrtColWdh : app_.MapVwLndColWdh;
}

void MapViewScreen::SetColumns() {
  const int quarter = controls_.list.width() / 4;
  const std::array<int, 6> widths = {Scaled(30), quarter,     quarter,
                                     quarter,    3 * quarter, Scaled(100)};
  controls_.list.setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  controls_.list.SetColumns(platform::qt::SettingFont(app_.DayVwGrdFntName, app_.DayVwGrdFntSize),
                            {QStringLiteral("No"), QStringLiteral("日時"), ToQt(app_.PlaceName),
                             ToQt(app_.Cate1Name), ToQt(app_.MemoName), QString()},
                            widths);
  controls_.list.AlignRight(0);
}

void MapViewScreen::Refill() {
  rows_ = SetDataMapViewForLV(app_, controls_.map);
  SetColumns();
  controls_.list.ShowRows(rows_, Widths());
  controls_.header.SetTitle(core::CurDate());
  controls_.header.MarkWeekday(core::WeekdayOf(core::CurrentDay()));
  canvas_->update();
}

void MapViewScreen::OnColumnDragged(int column, int width) {
  std::array<int, 5>& widths = Widths();
  if (column < static_cast<int>(widths.size())) widths[static_cast<size_t>(column)] = width;
}

std::u16string MapViewScreen::TapItem() const {
  const bool isRow = tapItem_ >= 0 && tapItem_ < std::ssize(rows_.RowActIds);
  return isRow ? rows_.RowActIds[static_cast<size_t>(tapItem_)] : std::u16string();
}

std::optional<position::Position> MapViewScreen::PressedPosition() const {
  return controls_.map.PositionOf(tapItem_);
}

void MapViewScreen::MoveToSelected() {
  if (FxMapMove(controls_.map, controls_.list.SelectedRows())) canvas_->update();
}

void MapViewScreen::OnTapped(QPoint press) {
  OpenMarker(controls_.map.HitTest({press.x(), press.y()}));
}

void MapViewScreen::OpenMarker(int item) {
  tapItem_ = item;
  if (tapItem_ >= 0) emit Commanded(kMarkerChange);
}

std::vector<touch::Spot> MapViewScreen::Spots() {
  std::vector<touch::Spot> spots;
  for (int item = 0; item < std::ssize(controls_.map.MapItems); ++item) {
    const MapItem& marker = controls_.map.MapItems[static_cast<size_t>(item)];
    if (!marker.valid) continue;
    const MapPoint at = controls_.map.PixelOf({marker.latitude, marker.longitude});
    spots.push_back({.place = QRect(at.x - Scaled(kMarkerReach), at.y - Scaled(kMarkerReach),
                                    2 * Scaled(kMarkerReach) + 1, 2 * Scaled(kMarkerReach) + 1),
                     .name = QString::number(marker.number) + u' ' + ToQt(marker.place),
                     .press = [this, item] { OpenMarker(item); }});
  }
  return spots;
}

void MapViewScreen::OnHeld(QPoint press) {
  tapItem_ = controls_.map.HitTest({press.x(), press.y()});
  emit MenuWanted(kMapMenu, canvas_->mapToGlobal(press));
}

void MapViewScreen::Paint(QPainter& painter) const {
  const MapPicture picture = PictureOf(controls_.map);
  painter.fillRect(ToQt(picture.zoomStrip), QColor(picture.zoomStripColor));
  for (const MapLine& line : picture.lines) {
    painter.setPen(QColor(line.color));
    painter.drawLine(line.from.x, line.from.y, line.to.x, line.to.y);
  }
  painter.setFont(platform::qt::SettingFont(app_.MapVwGrdFntName, app_.MapVwGrdFntSize));
  for (const MapLabel& label : picture.labels) PaintLabel(painter, label);
}

void MapViewScreen::PaintLabel(QPainter& painter, const MapLabel& label) const {
  const QString text = ToQt(label.text);
  const QFontMetrics metrics = painter.fontMetrics();
  QRect box(label.topLeft.x, label.topLeft.y, metrics.horizontalAdvance(text), metrics.height());
  if (label.staysInside) {
    box.moveRight(std::min(box.right(), canvas_->width() - 1));
    box.moveBottom(std::min(box.bottom(), canvas_->height() - 1));
  }
  painter.fillRect(box, QColor(label.ground));
  painter.setPen(Qt::white);
  painter.drawText(box, Qt::AlignCenter | Qt::TextDontClip, text);
}

}  // namespace views
