// The controls of a screen, all made in one way and known by their ids, which are their object
// names.
#pragma once

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QRect>
#include <functional>
#include <map>
#include <string_view>

namespace platform::qt {

// In the fixed font, as all below; no default button of anything.
QPushButton* MakeButton(const QString& name, const QString& text, QWidget* parent,
                        std::function<void()> onClick);
// No character of the text is a mnemonic. `onClick` gets whether the box is checked now.
QCheckBox* MakeCheck(const QString& name, std::u16string_view text, QWidget* parent,
                     std::function<void(bool)> onClick);
// What a label says of a control is what a screen reader calls it, without a colon at its end.
void NameControl(QWidget& control, std::u16string_view label);
// One line, which ends in an ellipsis where it has to.
QLabel* MakeLabel(const QString& name, std::u16string_view text, QWidget* parent);

class Controls {
 public:
  // The controls become children of `parent`; the order in which they are made is that of the Tab
  // key, until they are placed.
  explicit Controls(QWidget* parent) : parent_(parent) {}

  QPushButton* AddButton(int id, const QString& text, std::function<void()> onClick);
  // One whose face is a sign or a letter, with what it is called.
  QPushButton* AddSign(int id, const QString& sign, const QString& name,
                       std::function<void()> onClick);
  QLabel* AddLabel(int id, std::u16string_view text);
  QCheckBox* AddCheck(int id, std::u16string_view text, std::function<void(bool)> onClick);
  QAction* AddMenuItem(QMenu& menu, int id, const QString& text, std::function<void()> onChosen);
  // The left one of the soft keys.
  void AddKey(QPushButton& key, int id, const QString& text, std::function<void()> onClick);
  // Any other control.
  template <typename Control>
  Control* Add(int id, Control* control) {
    control->setObjectName(QString::number(id));
    controls_[id] = control;
    return control;
  }

  // One that was added as a `Control`.
  template <typename Control = QWidget>
  Control* At(int id) const {
    return static_cast<Control*>(controls_.at(id));
  }
  QWidget* Parent() const { return parent_; }
  auto begin() const { return controls_.begin(); }
  auto end() const { return controls_.end(); }

  // Puts a control into its place. If the Tab key stops at it, then after `before`, which it
  // becomes; `before` may be nullptr.
  void Place(int id, const QRect& place, QWidget*& before) const;

 private:
  QWidget* parent_;
  std::map<int, QObject*> controls_;
};

}  // namespace platform::qt
