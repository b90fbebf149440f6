#include "platform/qt/choice_box.h"

#include <QAbstractItemView>
#include <QStyledItemDelegate>
#include <QWheelEvent>

#include "platform/qt/finger_scroll.h"
#include "platform/qt/qt_text.h"

namespace platform::qt {
namespace {

constexpr int kVisibleRows = 8;

}  // namespace

ChoiceBox::ChoiceBox(QWidget* parent) : QComboBox(parent) {
  setFont(FixedFont(12));
  setMaxVisibleItems(kVisibleRows);
  setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(4);
  // A list that drops down, with a scroll bar, and not one over the whole height of the screen.
  setStyleSheet(QStringLiteral("QComboBox { combobox-popup: 0; }"
                               "QAbstractItemView::item { min-height: %1px; }")
                    .arg(Scaled(24)));
  view()->setItemDelegate(new QStyledItemDelegate(view()));
  view()->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  view()->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  const auto rowAt = [this](QPoint point) { return view()->indexAt(point); };
  new FingerScroll(
      view(),
      [this, rowAt](QPoint point) {
        if (rowAt(point).isValid()) view()->setCurrentIndex(rowAt(point));
      },
      [this, rowAt](QPoint point) {
        const int row = rowAt(point).row();
        if (row < 0) return;
        setCurrentIndex(row);
        hidePopup();
        emit activated(row);
      });
}

// From the top, or with the chosen row in the middle: not where the list was left the last time.
void ChoiceBox::showPopup() {
  QComboBox::showPopup();
  if (currentIndex() < 0) return view()->scrollToTop();
  view()->scrollTo(model()->index(currentIndex(), modelColumn()),
                   QAbstractItemView::PositionAtCenter);
}

// The wheel scrolls the page that the box stands on: it must change no setting on its way.
void ChoiceBox::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

}  // namespace platform::qt
