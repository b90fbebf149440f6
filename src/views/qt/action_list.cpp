// The shared list: rows, columns, and how mouse and keys become the row gesture.
#include "views/qt/action_list.h"

#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>
#include <optional>
#include <utility>

#include "platform/host.h"
#include "platform/qt/device_shell.h"
#include "platform/qt/qt_text.h"

namespace views {
namespace {

using platform::Scaled;

constexpr int kWidestColumn = 10000;  // in pixels, of a number in the settings

int RowHeight(const QFont& font) {
  return std::max(Scaled(24), QFontMetrics(font).height() + Scaled(4));
}

class FingerRow : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    return {QStyledItemDelegate::sizeHint(option, index).width(), RowHeight(option.font)};
  }

 protected:
  // The cells of a column stand as its header does.
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    const QVariant alignment =
        index.model()->headerData(index.column(), Qt::Horizontal, Qt::TextAlignmentRole);
    if (alignment.isValid()) option->displayAlignment = Qt::Alignment(alignment.toInt());
  }
};

QStringList ToQt(const std::vector<std::u16string>& cells) {
  QStringList texts;
  for (const std::u16string& cell : cells) texts << platform::qt::ToQt(cell);
  return texts;
}

}  // namespace

ActionList::ActionList(QWidget* parent, int id) : QTreeWidget(parent) {
  setObjectName(QString::number(id));
  setItemDelegate(new FingerRow(this));
  setFrameShape(NoFrame);
  setRootIsDecorated(false);
  setItemsExpandable(false);
  setIndentation(0);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setSelectionMode(ExtendedSelection);
  setEditTriggers(NoEditTriggers);
  setHorizontalScrollMode(ScrollPerPixel);
  header()->setSectionsMovable(false);
  header()->setStretchLastSection(false);
  connect(header(), &QHeaderView::sectionResized, this, [this](int column, int, int width) {
    if (filling_) return;
    emit ColumnDragged(column, width);
    FillWidth();
  });
  new platform::qt::TapAndHold(viewport(), [this](QPoint point) { Hold(point); });
}

void ActionList::SetColumns(const QFont& font, const QStringList& headers,
                            std::span<const int> widths) {
  filling_ = true;
  clear();
  setFont(font);
  header()->setFont(font);
  setHeaderItem(new QTreeWidgetItem(headers));
  for (size_t column = 0; column < widths.size(); ++column) {
    setColumnWidth(static_cast<int>(column), std::min(widths[column], kWidestColumn));
  }
  lastWidth_ = columnWidth(columnCount() - 1);
  updateGeometries();  // RowsPerScreen counts with the new header
  filling_ = false;
}

void ActionList::AlignRight(int column) {
  headerItem()->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
}

void ActionList::ShowRows(const ViewRows& rows, std::span<const int> widths) {
  // The widget takes them in one go, so their number has to tell whether it will last.
  constexpr size_t kRowsWithoutCursor = 1000;
  std::optional<platform::WaitCursor> wait;
  if (rows.cells.size() > kRowsWithoutCursor) wait.emplace();
  filling_ = true;
  setUpdatesEnabled(false);
  QList<QTreeWidgetItem*> items;
  for (const std::vector<std::u16string>& cells : rows.cells) {
    items << new QTreeWidgetItem(ToQt(cells));
  }
  addTopLevelItems(items);
  FitColumns(widths);
  if (!rows.abandoned) {
    auto* newRow = new QTreeWidgetItem;
    newRow->setText(rows.newRowColumn, platform::qt::ToQt(kNewRowText));
    addTopLevelItem(newRow);
    ShowSelected(rows.selectedRow);
  }
  setUpdatesEnabled(true);
  filling_ = false;
  FillWidth();
}

void ActionList::FitLastColumn() {
  lastWidth_ = sizeHintForColumn(columnCount() - 1);
  FillWidth();
}

void ActionList::FillWidth() {
  const int last = columnCount() - 1;
  const bool former = std::exchange(filling_, true);
  const int others = header()->length() - columnWidth(last);
  setColumnWidth(last, std::max(lastWidth_, viewport()->width() - others));
  filling_ = former;
}

// Also as the scroll bar comes or goes.
void ActionList::resizeEvent(QResizeEvent* event) {
  QTreeWidget::resizeEvent(event);
  FillWidth();
}

void ActionList::FitColumns(std::span<const int> widths) {
  for (size_t k = 0; k < widths.size(); ++k) {
    const int column = static_cast<int>(k);
    if (widths[k] > 0) {
      setColumnWidth(column, std::min(widths[k], kWidestColumn));
    } else if (topLevelItemCount() > 0) {
      resizeColumnToContents(column);
      setColumnWidth(column, std::min(columnWidth(column), 2 * width()));
    }
  }
}

// A row below the middle of the list comes to the middle.
void ActionList::ShowSelected(int row) {
  horizontalScrollBar()->setValue(0);
  if (row < 0 || row >= topLevelItemCount()) return;
  executeDelayedItemsLayout();
  const int half = RowsPerScreen() / 2;
  verticalScrollBar()->setValue(row > half ? row - half : 0);
  setCurrentItem(topLevelItem(row));
}

int ActionList::FocusedRow() const {
  return currentIndex().row();
}

std::vector<int> ActionList::SelectedRows() const {
  std::vector<int> rows;
  for (const QModelIndex& index : selectionModel()->selectedRows()) rows.push_back(index.row());
  std::ranges::sort(rows);
  return rows;
}

int ActionList::RowsPerScreen() const {
  return std::max(1, viewport()->height() / RowHeight(font()));
}

int ActionList::RowAt(QPoint point) const {
  return indexAt({0, point.y()}).row();  // however far the columns reach
}

QRect ActionList::GlobalRect(int row) const {
  const QRect inSight = visualItemRect(topLevelItem(row)) & viewport()->rect();
  return {viewport()->mapToGlobal(inSight.topLeft()), inSight.size()};
}

RowRange ActionList::VisibleRows() const {
  const int top = verticalScrollBar()->value();
  return {top, std::min(top + RowsPerScreen(), topLevelItemCount()) - 1};
}

void ActionList::SelectRows(RowRange range, int focusedRow) {
  // The list stays where it is scrolled to, also sideways.
  setAutoScroll(false);
  setCurrentItem(topLevelItem(focusedRow));
  if (range.first < range.last) {
    selectionModel()->select(QItemSelection(model()->index(range.first, 0),
                                            model()->index(range.last, columnCount() - 1)),
                             QItemSelectionModel::ClearAndSelect);
  }
  setAutoScroll(true);
}

void ActionList::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton && event->button() != Qt::RightButton) return;
  const bool closedPopup = closePopups_ && closePopups_();
  if (focusPolicy() != Qt::NoFocus) setFocus(Qt::MouseFocusReason);
  const int row = RowAt(event->pos());
  if (row >= 0) {
    SelectRows({row, row}, row);
  } else {
    setCurrentItem(nullptr);
    clearSelection();
  }
  gesture_.Press(row, closedPopup);
}

void ActionList::mouseMoveEvent(QMouseEvent* event) {
  const RowGesture::Drag drag = gesture_.Move(RowAt(event->pos()), VisibleRows());
  if (!drag.selects) return;
  SelectRows(drag.selection, drag.row);
  verticalScrollBar()->setValue(verticalScrollBar()->value() + drag.scrollBy);
}

void ActionList::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;  // the right button only holds
  const int row = RowAt(event->pos());
  Finish(gesture_.Release(row), row);
}

void ActionList::Finish(RowGesture::Tap tap, int row) {
  if (tap == RowGesture::Tap::kOpenRow) emit RowTapped(row);
  if (tap == RowGesture::Tap::kNewAction) emit NewTapped();
}

void ActionList::Hold(QPoint point) {
  const int row = RowAt(point);
  if (row >= 0) {
    gesture_.Hold();
    emit Held(viewport()->mapToGlobal(point), GlobalRect(row));
  } else if (QGuiApplication::mouseButtons() & Qt::LeftButton) {
    Finish(gesture_.Release(row), row);  // there is nothing to hold: a slow tap
  }
}

void ActionList::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() != QContextMenuEvent::Keyboard || FocusedRow() < 0) return;
  const QRect row = GlobalRect(FocusedRow());
  emit Held(row.center(), row);
}

// The base class would give the focus to the first row after a fill that left it with none.
void ActionList::focusInEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusInEvent(event);  // NOLINT(bugprone-parent-virtual-call)
  viewport()->update();
}

}  // namespace views
