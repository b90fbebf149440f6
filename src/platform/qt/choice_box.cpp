#include "platform/qt/choice_box.h"

#include <QAbstractItemView>
#include <QAccessibleWidget>
#include <QStyledItemDelegate>
#include <QTimer>
#include <QWheelEvent>

#include "platform/qt/finger_scroll.h"
#include "platform/qt/qt_text.h"

namespace platform::qt {
namespace {

constexpr int kVisibleRows = 8;

// Under Linux Qt calls a combo box by what is chosen in it, and not by its name.
class BoxInterface : public QAccessibleWidget {
 public:
  explicit BoxInterface(QComboBox* box) : QAccessibleWidget(box, QAccessible::ComboBox) {}

  QString text(QAccessible::Text which) const override {
    const bool isValue = which == QAccessible::Value || which == QAccessible::Description;
    return isValue ? Box()->currentText() : QAccessibleWidget::text(which);
  }
  QStringList actionNames() const override {
    return QStringList(showMenuAction()) + QAccessibleWidget::actionNames();
  }
  void doAction(const QString& name) override {
    if (name != showMenuAction()) return QAccessibleWidget::doAction(name);
    QTimer::singleShot(0, Box(), &QComboBox::showPopup);
  }

 private:
  QComboBox* Box() const { return static_cast<QComboBox*>(widget()); }
};

QAccessibleInterface* MakeInterface(const QString&, QObject* object) {
  auto* box = dynamic_cast<ChoiceBox*>(object);
  return box == nullptr ? nullptr : new BoxInterface(box);
}

}  // namespace

ChoiceBox::ChoiceBox(QWidget* parent) : QComboBox(parent) {
  [[maybe_unused]] static const bool isInstalled =
      (QAccessible::installFactory(MakeInterface), true);
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
