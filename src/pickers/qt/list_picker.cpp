#include "pickers/qt/list_picker.h"

#include <QKeyEvent>
#include <QScrollBar>
#include <algorithm>

#include "platform/metrics.h"
#include "platform/qt/finger_scroll.h"
#include "platform/qt/qt_text.h"

namespace pickers {

using platform::Scaled;
using platform::qt::FixedFont;
using platform::qt::ToQt;

namespace {

int RowHeight() {
  return Scaled(26);
}

}  // namespace

ListPicker::ListPicker(QWidget* parent)
    : QWidget(parent), line_(new QLineEdit(this)), rows_(new QListWidget(this)) {
  setAutoFillBackground(true);
  setFocusProxy(line_);
  line_->setFont(FixedFont(12));
  rows_->setFont(FixedFont(12));
  rows_->setFocusPolicy(Qt::NoFocus);
  rows_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  rows_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  rows_->setUniformItemSizes(true);
  line_->installEventFilter(this);
  new platform::qt::FingerScroll(rows_, {}, [this](QPoint point) {
    QListWidgetItem* item = rows_->itemAt(0, point.y());
    if (item == nullptr) return;
    TakeRow(rows_->row(item));
    emit Chosen();
  });
  connect(line_, &QLineEdit::textEdited, this, &ListPicker::TextChanged);
  connect(line_, &QLineEdit::returnPressed, this, &ListPicker::Chosen);
  hide();
}

void ListPicker::SetName(const QString& name) {
  for (QWidget* part : {static_cast<QWidget*>(line_), static_cast<QWidget*>(rows_)}) {
    part->setAccessibleName(name);
  }
}

void ListPicker::Open(const std::vector<std::u16string>& rows, int row, const QString& text,
                      int longest, Qt::InputMethodHints hints) {
  rows_->clear();
  for (const std::u16string& entry : rows) {
    auto* item = new QListWidgetItem(ToQt(entry), rows_);
    item->setSizeHint(QSize(0, RowHeight()));
  }
  line_->setMaxLength(longest);
  line_->setInputMethodHints(hints);
  ShowText(text);
  rows_->setCurrentRow(row);
}

void ListPicker::PlaceOver(const QRect& wholeField, const QRect& area) {
  // Of a field of several lines the first one.
  const QRect field(wholeField.topLeft(),
                    QSize(wholeField.width(), std::min(wholeField.height(), Scaled(25))));
  const int wanted = rows_->count() * RowHeight() + 2 * rows_->frameWidth();
  const int below = area.bottom() - field.bottom();
  const int above = field.top() - area.top();
  const bool opensBelow = below >= std::min({wanted, above, 4 * RowHeight()});
  const int frame = 2 * rows_->frameWidth();
  const int shown = std::max(1, ((opensBelow ? below : above) - frame) / RowHeight());
  const int height = rows_->count() > 0 ? std::min(wanted, shown * RowHeight() + frame) : 0;
  const int width = std::max(field.width(), Scaled(96));
  const int x = std::min(field.left(), area.right() + 1 - width);
  setGeometry(x, opensBelow ? field.top() : field.top() - height, width, field.height() + height);
  line_->setGeometry(0, opensBelow ? 0 : height, width, field.height());
  rows_->setGeometry(0, opensBelow ? field.height() : 0, width, height);
  if (rows_->currentItem() == nullptr) return rows_->scrollToTop();
  rows_->scrollToItem(rows_->currentItem(), QAbstractItemView::PositionAtCenter);
  QScrollBar* bar = rows_->verticalScrollBar();
  bar->setValue(bar->value() / RowHeight() * RowHeight());  // no row is cut
}

bool ListPicker::eventFilter(QObject* watched, QEvent* event) {
  if (watched == line_ && event->type() == QEvent::KeyPress) {
    return MoveAlongRows(static_cast<QKeyEvent*>(event)->key());
  }
  return QWidget::eventFilter(watched, event);
}

// The line hands on the Enter that it has acted upon; nothing below this picker may see it.
void ListPicker::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
    QWidget::keyPressEvent(event);
  }
}

bool ListPicker::MoveAlongRows(int key) {
  const int page = std::max(1, rows_->height() / RowHeight() - 1);
  const int step = key == Qt::Key_Down       ? 1
                   : key == Qt::Key_Up       ? -1
                   : key == Qt::Key_PageDown ? page
                   : key == Qt::Key_PageUp   ? -page
                                             : 0;
  if (step == 0 || rows_->count() == 0) return false;
  TakeRow(std::clamp(rows_->currentRow() + step, 0, rows_->count() - 1));
  return true;
}

void ListPicker::TakeRow(int row) {
  rows_->setCurrentRow(row);
  const QString text = rows_->item(row)->text();
  ShowText(text);
  emit TextChanged(text);
}

// All of it selected, its beginning in sight. Of a text from elsewhere the line shows less: it
// takes no tab.
void ListPicker::ShowText(const QString& text) {
  line_->setText(text);
  const int length = static_cast<int>(line_->text().size());
  line_->setSelection(length, -length);
}

}  // namespace pickers
