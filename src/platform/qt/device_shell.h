// What the device's shell gave every screen: the bar of two soft keys, and tap and hold.
#pragma once

#include <QAction>
#include <QMenu>
#include <QObject>
#include <QPoint>
#include <QPushButton>
#include <QTimer>
#include <QWidget>
#include <functional>

namespace platform::qt {

inline constexpr int kSoftKeyHeight = 26;  // units

// The bar at the bottom of a screen, kSoftKeyHeight high: a command key on the left, the menu's key
// on the right, whose menu opens above it. F1 and F2 press the keys where the window has the focus.
class SoftKeyBar : public QWidget {
 public:
  explicit SoftKeyBar(QWidget* screen);

  QPushButton& LeftKey() { return *left_; }
  QMenu& Menu() { return *menu_; }
  // Puts the keys after `last` in the order of the Tab key, as they stand below all else.
  void FocusAfter(QWidget* last);
  // The right key does this instead of opening the menu.
  void UseRightKey(const QString& text, std::function<void()> onPress);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void OpenMenu();

  QPushButton* left_;
  QPushButton* right_;
  QMenu* menu_;
};

// Watches a widget (for a scroll area, its viewport) for tap and hold: a press of half a second
// without movement, or a press of the right button. The watched widget sees the press as usual; the
// moves and the release that follow a hold do not reach it.
class TapAndHold : public QObject {
 public:
  // `onHold` gets the point in the watched widget's coordinates.
  TapAndHold(QWidget* watched, std::function<void(QPoint)> onHold);

  // The press has become something else, and is no hold however long it stays.
  void Cancel() { timer_.stop(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Hold();

  std::function<void(QPoint)> onHold_;
  QTimer timer_;
  QPoint press_;
  bool held_ = false;
};

}  // namespace platform::qt
