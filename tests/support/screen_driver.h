// Drives modal screens over a window of the test's own. Base of the fixtures of screen tests.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QTimer>
#include <functional>

#include "platform/qt/modal_screen.h"

namespace testing_support {

class ScreenDriver {
 protected:
  ScreenDriver() {
    window.resize(240, 320);
    window.show();
    QApplication::setActiveWindow(&window);
  }

  // Runs a screen and, once it is up, what drives it; that must end it.
  template <typename Screen>
  int Drive(Screen&& shown, const std::function<void()>& drive) {
    QTimer::singleShot(0, &shown, [&] {
      screen = &shown;
      drive();
    });
    QTimer::singleShot(20000, &shown, [&] {
      ADD_FAILURE() << "the screen was not ended";
      shown.EndScreen(-1);
    });
    return shown.RunModal();
  }

  // Drives the screen that the next action opens over `screen`; that must end it.
  void Next(const std::function<void()>& drive) {
    QTimer::singleShot(0, screen, [this, drive, below = screen] {
      screen = platform::qt::ModalScreen::Topmost();
      drive();
      screen = below;
    });
  }

  template <typename Widget = QAbstractButton>
  Widget* Find(const char* name) {
    auto* widget = screen->findChild<Widget*>(QString::fromLatin1(name));
    EXPECT_NE(widget, nullptr) << name;
    return widget;
  }
  void Click(const char* name) { Find(name)->click(); }
  std::string Shown(const char* field) {
    return Find<QWidget>(field)->accessibleDescription().toStdString();
  }
  // Drives the next screen: types into its field and leaves it by a button.
  void NextTyped(const char* field, const char* text, const char* button = "1") {
    Next([this, field, text, button] {
      Find<QLineEdit>(field)->setText(QString::fromUtf8(text));
      Click(button);
    });
  }

  void Press(int key, const QString& text = {}) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(window.focusWidget(), &press);
  }
  static void Send(QWidget* to, QEvent::Type type, QPoint at) {
    const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, at, to->mapToGlobal(at), button, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(to, &event);
  }
  static void Tap(QWidget* widget, QPoint at) {
    Send(widget, QEvent::MouseButtonPress, at);
    Send(widget, QEvent::MouseButtonRelease, at);
  }

  QWidget window;
  QWidget* screen = nullptr;
};

}  // namespace testing_support
