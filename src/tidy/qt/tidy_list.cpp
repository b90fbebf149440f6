#include "tidy/qt/tidy_list.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>
#include <algorithm>

#include "platform/metrics.h"
#include "platform/qt/finger_scroll.h"
#include "platform/qt/qt_text.h"

namespace tidy {
namespace {

using platform::Scaled;
using platform::qt::ToQt;

constexpr int kRowHeight = 26;  // units
constexpr int kTimesWidth = 82;
constexpr int kHours = 24;
constexpr int kTimesRole = Qt::UserRole;
const QColor kFilled = QColor::fromRgb(0xFF8FBCE6);
const QColor kEmpty = QColor::fromRgb(0xFFFFF0B8);
const QColor kDouble = QColor::fromRgb(0xFFF2A0A0);

// A row's ground; an Action's is the list's own.
QColor GroundOf(const Link& link) {
  return link.kind == LinkKind::kGap       ? kEmpty
         : link.kind == LinkKind::kOverlap ? kDouble
                                           : QColor();
}

// The times in a column of their own, and what stands there after them.
class RowPainter : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    QStyleOptionViewItem row = option;
    initStyleOption(&row, index);
    const QString text = std::exchange(row.text, QString());
    QStyledItemDelegate::paint(painter, option, QModelIndex());
    const bool isSelected = (option.state & QStyle::State_Selected) != 0;
    const QVariant ground = index.data(Qt::BackgroundRole);
    const QPalette& palette = option.palette;
    painter->save();
    painter->fillRect(option.rect, isSelected         ? palette.highlight()
                                   : ground.isValid() ? ground.value<QBrush>()
                                                      : palette.base());
    painter->setPen(isSelected ? palette.highlightedText().color() : palette.text().color());
    painter->setFont(option.font);
    const QRect inside = option.rect.adjusted(Scaled(3), 0, -Scaled(3), 0);
    const QRect times(inside.topLeft(), QSize(Scaled(kTimesWidth), inside.height()));
    const QRect rest = inside.adjusted(times.width(), 0, 0, 0);
    painter->drawText(times, Qt::AlignVCenter | Qt::TextSingleLine,
                      index.data(kTimesRole).toString());
    painter->drawText(rest, Qt::AlignVCenter | Qt::TextSingleLine,
                      option.fontMetrics.elidedText(text, Qt::ElideRight, rest.width()));
    painter->setPen(palette.midlight().color());
    painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
    painter->restore();
  }
};

}  // namespace

TidyList::TidyList(QWidget* parent) : QListWidget(parent) {
  setAccessibleName(QStringLiteral("一日の流れ"));
  setFont(platform::qt::FixedFont(12));
  setUniformItemSizes(true);
  setVerticalScrollMode(ScrollPerPixel);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setItemDelegate(new RowPainter(this));
  new platform::qt::FingerScroll(this, {}, [this](QPoint point) {
    QListWidgetItem* row = itemAt(0, point.y());
    if (row == nullptr) return;
    setCurrentItem(row);
    emit Chosen(this->row(row));
  });
}

void TidyList::ShowDay(const TidyDay& day) {
  const int current = std::max(0, currentRow());
  clear();
  for (const Link& link : day.Chain().links) {
    auto* row = new QListWidgetItem(ToQt(day.TextOf(link)), this);
    const QString times = ToQt(day.TimesOf(link));
    row->setData(kTimesRole, times);
    row->setData(Qt::AccessibleTextRole, QString(times + QLatin1Char(' ') + row->text()));
    if (GroundOf(link).isValid()) row->setBackground(GroundOf(link));
    row->setSizeHint(QSize(0, Scaled(kRowHeight)));
  }
  setCurrentRow(std::min(current, count() - 1));
}

QRect TidyList::GlobalRow(int row) const {
  const QRect place = visualItemRect(item(row)) & viewport()->rect();
  return {viewport()->mapToGlobal(place.topLeft()), place.size()};
}

void TidyList::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Left) return emit DaysWanted(-1);
  if (event->key() == Qt::Key_Right) return emit DaysWanted(1);
  const bool opens = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
                     event->key() == Qt::Key_Space;
  if (!opens || currentRow() < 0) return QListWidget::keyPressEvent(event);
  emit Chosen(currentRow());
}

void TidyList::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() == QContextMenuEvent::Keyboard && currentRow() >= 0) {
    emit Chosen(currentRow());
  }
}

DayBar::DayBar(QWidget* parent) : Canvas(parent) {
  setAccessibleName(QStringLiteral("一日の帯"));
  setFocusPolicy(Qt::NoFocus);
  SetPaint([this](QPainter& painter) { Paint(painter); });
}

void DayBar::ShowDay(const TidyDay& day) {
  stretches_ = StretchesOf(day.Chain());
  int64_t empty = 0;
  for (const Stretch& stretch : stretches_) {
    if (stretch.depth == 0) empty += stretch.to - stretch.from;
  }
  setAccessibleDescription(ToQt(u"空き " + LengthText(empty)));
  update();
}

// However short a gap or an overlap is, it shows. Every sixth hour has a number below its line.
void DayBar::Paint(QPainter& painter) const {
  const int left = Scaled(8), wide = width() - 2 * left, high = height() - Scaled(12);
  const auto x = [&](int64_t moment) {
    return left + static_cast<int>(wide * moment / kDaySeconds);
  };
  painter.setFont(platform::qt::FixedFont(9));
  painter.fillRect(left, 0, wide, high, kFilled);
  for (const Stretch& stretch : stretches_) {
    if (stretch.depth == 1) continue;
    const int from = x(stretch.from), least = Scaled(1);
    painter.fillRect(from, 0, std::max(least, x(stretch.to) - from), high,
                     stretch.depth == 0 ? kEmpty : kDouble);
  }
  painter.setPen(QPen(Qt::black, 0));
  painter.drawRect(left, 0, wide, high);
  for (int hour = 0; hour <= kHours; hour += 3) {
    const int at = x(int64_t{hour} * 3600);
    painter.drawLine(at, hour % 6 == 0 ? high / 2 : high * 3 / 4, at, high);
    if (hour % 6 != 0) continue;
    painter.drawText(QRect(at - Scaled(12), high, Scaled(24), Scaled(12)), Qt::AlignCenter,
                     QString::number(hour));
  }
}

}  // namespace tidy
