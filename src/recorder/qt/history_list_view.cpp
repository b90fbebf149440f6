#include "recorder/qt/history_list_view.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <algorithm>

#include "platform/metrics.h"
#include "platform/qt/device_shell.h"
#include "platform/qt/qt_text.h"
#include "touch/qt/key_tap.h"

namespace recorder {

using platform::Scaled;

HistoryListView::HistoryListView(QWidget* parent) : QListWidget(parent) {
  setSelectionMode(MultiSelection);
  setVerticalScrollMode(ScrollPerPixel);
  setUniformItemSizes(true);
  setTextElideMode(Qt::ElideRight);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  new platform::qt::TapAndHold(viewport(), [this](QPoint point) {
    if (!tapPending_) return;
    tapPending_ = false;
    TellHold(point);
  });
  // A release whose press has closed the message of the last one is not meant for the list.
  new touch::KeyTap(this, [this](int key) {
    if (key == Qt::Key_Return || key == Qt::Key_Enter) emit ReturnLetGo();
    if (key == Qt::Key_Delete) emit DeleteLetGo();
    return false;
  });
}

// Only what differs is touched: a tap changes two lines of a chain that may be long.
void HistoryListView::ShowLines(const HistoryLines& lines) {
  const int count = static_cast<int>(lines.texts.size());
  while (this->count() > count) delete takeItem(this->count() - 1);
  const int height = std::max(Scaled(22), fontMetrics().height() + Scaled(4));
  for (int i = 0; i < count; ++i) {
    const QString text = platform::qt::ToQt(lines.texts[static_cast<size_t>(i)]);
    if (i == this->count()) {
      auto* line = new QListWidgetItem(text, this);
      line->setSizeHint(QSize(0, height));
    } else if (item(i)->text() != text) {
      item(i)->setText(text);
    }
  }
  clearSelection();
  for (const size_t line : lines.selected) {
    if (line < lines.texts.size()) item(static_cast<int>(line))->setSelected(true);
  }
  if (!lines.caret || *lines.caret >= lines.texts.size()) return;
  const int caret = static_cast<int>(*lines.caret);
  setCurrentRow(caret, QItemSelectionModel::NoUpdate);
  scrollToItem(item(caret));
}

std::set<size_t> HistoryListView::SelectedLines() const {
  std::set<size_t> lines;
  for (const QModelIndex& index : selectedIndexes()) lines.insert(static_cast<size_t>(index.row()));
  return lines;
}

void HistoryListView::mousePressEvent(QMouseEvent* event) {
  press_ = event->pos();
  scrollAtPress_ = verticalScrollBar()->value();
  tapPending_ = true;
  dragging_ = false;
  clearSelection();
  if (QListWidgetItem* line = itemAt(event->pos())) {
    setCurrentItem(line, QItemSelectionModel::Select);
  }
}

void HistoryListView::mouseMoveEvent(QMouseEvent* event) {
  const int way = event->pos().y() - press_.y();
  if (!dragging_ && std::abs(way) < QApplication::startDragDistance()) return;
  dragging_ = true;
  tapPending_ = false;
  verticalScrollBar()->setValue(scrollAtPress_ - way);
}

void HistoryListView::mouseReleaseEvent(QMouseEvent* event) {
  const bool taps = tapPending_ && event->button() == Qt::LeftButton;
  const bool drags = dragging_;
  tapPending_ = dragging_ = false;
  if (taps) emit Tapped();
  if (drags) emit Dragged();
}

// The menu key is a hold of the line with the caret.
void HistoryListView::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() != QContextMenuEvent::Keyboard || currentItem() == nullptr) return;
  if (selectedIndexes().isEmpty()) currentItem()->setSelected(true);
  TellHold(visualItemRect(currentItem()).center());
}

void HistoryListView::TellHold(QPoint point) {
  const QRect line = visualItemRect(itemAt(point)) & viewport()->rect();
  emit Held(viewport()->mapToGlobal(point), {viewport()->mapToGlobal(line.topLeft()), line.size()});
}

}  // namespace recorder
