// What no screen should have to think of, decided before any widget sees it: the second tap of a
// double tap, the repeats of a held key, and the key that stands for the menu key.
#pragma once

#include <QMouseEvent>
#include <QObject>
#include <QPointer>
#include <QWidget>

namespace platform::qt {

// A double tap means what its first tap hit. Where that has gone or been covered meanwhile, because
// a screen, a message or a menu has opened or closed, the second tap hits nothing.
//
// Enter, Escape, Back and every shortcut decide once, however long they are held; only in the text
// of several lines in which it was pressed may Enter repeat.
//
// Shift+F10 is the menu key.
class InputFilter : public QObject {
 public:
  // Filters all events of the application from now on. `parent` owns it.
  explicit InputFilter(QObject* parent);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool KeepsPress(QWidget& receiver, const QMouseEvent& press);
  bool IsSecondTap(const QMouseEvent& press, bool anywhere) const;
  bool FirstIsStillThere(const QWidget& receiver) const;
  bool Repeats(const QKeyEvent& key) const;
  bool KeepsKey(QObject& window, const QKeyEvent& key);

  QPointer<QWidget> pressed_;     // what the last press hit
  bool pressedAnywhere_ = false;  // in a window whose place is unknown
  QPoint pressPoint_;             // global
  quint64 pressTime_ = 0;         // milliseconds of an unknown clock, 0 before the first press
  bool keepsMouse_ = false;       // from such a second press to its release
  QPointer<QWidget> keyReceiver_;
  int releasedKey_ = 0;
  quint64 releaseTime_ = 0;
};

}  // namespace platform::qt
