#include "platform/qt/controls.h"

#include <utility>

#include "platform/qt/elided_label.h"
#include "platform/qt/qt_text.h"

namespace platform::qt {

QPushButton* MakeButton(const QString& name, const QString& text, QWidget* parent,
                        std::function<void()> onClick) {
  auto* button = new QPushButton(text, parent);
  button->setObjectName(name);
  button->setFont(FixedFont(12));
  button->setAutoDefault(false);
  QObject::connect(button, &QPushButton::clicked, button, std::move(onClick));
  return button;
}

QCheckBox* MakeCheck(const QString& name, std::u16string_view text, QWidget* parent,
                     std::function<void(bool)> onClick) {
  auto* check = new QCheckBox(ToQt(text).replace(u'&', QStringLiteral("&&")), parent);
  check->setObjectName(name);
  check->setFont(FixedFont(12));
  QObject::connect(check, &QCheckBox::clicked, check, std::move(onClick));
  return check;
}

void NameControl(QWidget& control, std::u16string_view label) {
  if (label.ends_with(u':') || label.ends_with(u'：')) label.remove_suffix(1);
  control.setAccessibleName(ToQt(label));
}

QLabel* MakeLabel(const QString& name, std::u16string_view text, QWidget* parent) {
  auto* label = new ElidedLabel(parent);
  label->setObjectName(name);
  label->setText(ToQt(text));
  label->setFont(FixedFont(12));
  return label;
}

QPushButton* Controls::AddButton(int id, const QString& text, std::function<void()> onClick) {
  return Add(id, MakeButton({}, text, parent_, std::move(onClick)));
}

QPushButton* Controls::AddSign(int id, const QString& sign, const QString& name,
                               std::function<void()> onClick) {
  QPushButton* button = AddButton(id, sign, std::move(onClick));
  button->setAccessibleName(name);
  return button;
}

QLabel* Controls::AddLabel(int id, std::u16string_view text) {
  return Add(id, MakeLabel({}, text, parent_));
}

QCheckBox* Controls::AddCheck(int id, std::u16string_view text, std::function<void(bool)> onClick) {
  return Add(id, MakeCheck({}, text, parent_, std::move(onClick)));
}

QAction* Controls::AddMenuItem(QMenu& menu, int id, const QString& text,
                               std::function<void()> onChosen) {
  QAction* item = Add(id, menu.addAction(text));
  QObject::connect(item, &QAction::triggered, item, std::move(onChosen));
  return item;
}

void Controls::AddKey(QPushButton& key, int id, const QString& text,
                      std::function<void()> onClick) {
  Add(id, &key)->setText(text);
  QObject::connect(&key, &QPushButton::clicked, &key, std::move(onClick));
}

void Controls::Place(int id, const QRect& place, QWidget*& before) const {
  auto* control = At<QWidget>(id);
  control->setGeometry(place);
  if (control->focusPolicy() == Qt::NoFocus) return;
  if (before != nullptr) QWidget::setTabOrder(before, control);
  before = control;
}

}  // namespace platform::qt
