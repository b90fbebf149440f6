#include "platform/qt/painted_button.h"

#include <QAccessibleWidget>

#include "platform/qt/focus_frame.h"

namespace platform::qt {
namespace {

class ButtonInterface : public QAccessibleWidget {
 public:
  explicit ButtonInterface(PaintedButton* button)
      : QAccessibleWidget(button, QAccessible::Button) {}

  QString text(QAccessible::Text which) const override {
    const QString given = QAccessibleWidget::text(which);
    if (which == QAccessible::Name && given.isEmpty()) return Button()->text();
    return which == QAccessible::Value ? Button()->accessibleDescription() : given;
  }
  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.pressed = Button()->isDown();
    return state;
  }
  QStringList actionNames() const override {
    return QStringList(pressAction()) + QAccessibleWidget::actionNames();
  }
  // Not before whoever asks for it has an answer: it may open a screen.
  void doAction(const QString& name) override {
    if (name != pressAction()) return QAccessibleWidget::doAction(name);
    if (Button()->isEnabled()) Button()->animateClick();
  }

 private:
  QAbstractButton* Button() const { return static_cast<QAbstractButton*>(widget()); }
};

QAccessibleInterface* MakeInterface(const QString&, QObject* object) {
  auto* button = dynamic_cast<PaintedButton*>(object);
  return button == nullptr ? nullptr : new ButtonInterface(button);
}

}  // namespace

PaintedButton::PaintedButton(QWidget* parent) : QAbstractButton(parent) {
  [[maybe_unused]] static const bool isInstalled =
      (QAccessible::installFactory(MakeInterface), true);
}

void PaintedButton::PaintFocus(QPainter& painter) const {
  if (hasFocus()) PaintFocusFrame(painter, *this);
}

}  // namespace platform::qt
