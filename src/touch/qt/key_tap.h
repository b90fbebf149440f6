// Keys as the window's views take them: as they are released where they were pressed.
#pragma once

#include <QObject>
#include <QWidget>
#include <functional>

namespace touch {

// Watches a widget for keys. A release whose press was not seen here belongs to another screen,
// and of a held key's repeats only those of the arrows count.
class KeyTap : public QObject {
 public:
  // Where `onKey` answers true, the widget does not see the release.
  KeyTap(QWidget* watched, std::function<bool(QKeyCombination)> onKey);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  std::function<bool(QKeyCombination)> onKey_;
  int pressedKey_ = 0;
  Qt::KeyboardModifiers modifiers_;  // as it was pressed
};

}  // namespace touch
