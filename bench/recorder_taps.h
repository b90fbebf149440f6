// Taps on the recorder's "●" over an open diary, by a clock of their own.
#pragma once

#include <QApplication>
#include <QMouseEvent>
#include <QPushButton>
#include <QTimer>
#include <cstdlib>
#include <functional>
#include <string_view>

#include "platform/qt/qt_host.h"
#include "recorder/qt/recorder_screen.h"
#include "store/action_index.h"
#include "store/session.h"

// The clock goes on by a minute a tap: an id is made of its second, and a second has a hundred.
class BenchHost : public platform::qt::QtHost {
 public:
  platform::LocalTime Now() override {
    const int day = minute_ / 1440;
    return {2020 + day / 336, day / 28 % 12 + 1, day % 28 + 1, minute_ / 60 % 24, minute_ % 60, 0};
  }
  void GoOn() { ++minute_; }

 private:
  int minute_ = 0;
};
inline BenchHost host;

// Counts the paints of one widget.
class PaintCount : public QObject {
 public:
  explicit PaintCount(QWidget* painted) { painted->installEventFilter(this); }
  int paints = 0;

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++paints;
    return false;
  }
};

inline void Click(QWidget* widget) {
  for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
    const QPoint middle = widget->rect().center();
    QMouseEvent event(type, middle, widget->mapToGlobal(middle), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
  }
}

class TapOnScreen {
 public:
  explicit TapOnScreen(recorder::CRecorderDlg& dialog)
      : button_(dialog.findChild<QPushButton*>(QStringLiteral("1170"))),
        list_(dialog.findChild<recorder::HistoryListView*>(QStringLiteral("1166"))),
        painted_(list_->viewport()) {}

  // Clicks, and returns when the list with its new line is painted.
  void Tap() {
    const int lines = list_->count();
    painted_.paints = 0;
    host.GoOn();
    Click(button_);
    while (painted_.paints == 0) QApplication::processEvents();
    if (list_->count() != lines + 1) std::abort();
  }

 private:
  QPushButton* button_;
  recorder::HistoryListView* list_;
  PaintCount painted_;
};

// No user taps sooner than this after the screen has come.
inline constexpr int kUserDelayMs = 300;

// Opens the diary and the recorder's screen over a window, and runs `drive` there.
inline void OnScreen(std::u16string_view diary,
                     const std::function<void(recorder::CRecorderDlg&)>& drive) {
  store::ConnectDataFile(diary);
  core::CAppState app;
  store::LoadActionIndex(app);
  QWidget window;
  window.resize(240, 320);
  window.show();
  recorder::CRecorderDlg dialog(&window, app);
  QTimer::singleShot(kUserDelayMs, &dialog, [&] {
    drive(dialog);
    dialog.EndScreen(platform::qt::kResultOk);
  });
  dialog.RunModal();
  store::DisconnectDataFile();
}
