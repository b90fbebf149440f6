// A screen that covers the program's window until it is left, as dialogs do on a pocket device.
// It is a child of the window and not a window of its own, so that it keeps the window's size and
// orientation under every window system.
#pragma once

#include <QEvent>
#include <QEventLoop>
#include <QPointer>
#include <QWidget>

#include "platform/qt/command_mailbox.h"

namespace platform::qt {

inline constexpr int kResultOk = 1;
inline constexpr int kResultCancel = 2;

class ModalScreen : public QWidget {
 public:
  // `over` is the window, or any widget in it.
  explicit ModalScreen(QWidget* over);

  // Shows the screen over the window, keeps everything below it from focus and taps, and runs until
  // EndScreen. The focus goes back to where it was. Answers EndScreen's result.
  int RunModal();
  void EndScreen(int result);

  // The user closes the window, by Ctrl+Q too. True where no screen runs. Otherwise the topmost one
  // is asked; once it has ended, the window is closed again, for the one below or for good.
  static bool LetWindowClose();
  // The user closes the window while this is the topmost screen. True if the screen has ended
  // itself, false if it stays. The default ends it with kResultCancel.
  virtual bool OnWindowClosing();

  // Where commands for this screen are posted, from any thread.
  WindowId Address() const { return address_.Id(); }

  // Nothing stands over `screen`: no other screen, no message, no menu. nullptr is the window.
  static bool IsInFront(const ModalScreen* screen);

  // The topmost running screen, or nullptr.
  static ModalScreen* Topmost();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  // Escape and Back act as OnEscape. Enter presses the button that has the focus, as Space does,
  // and acts as OnEnter where none has it.
  void keyPressEvent(QKeyEvent* event) final;
  virtual void OnEscape() { EndScreen(kResultCancel); }
  virtual void OnEnter() {}
  // A posted command, which has waited until the screen is in front.
  virtual void OnPosted(int) {}

  // The window closes as soon as this screen has ended: its user leaves the whole program.
  void CloseWindowAfterwards() { closesWindow_ = true; }
  // After RunModal: EndScreen was called. False where the program has ended all its loops at once.
  bool HasEndedItself() const { return hasEndedItself_; }

 private:
  void TakeFocus();
  void TakePosted(int command);

  const CommandAddress address_;
  const QPointer<QWidget> focusAtMaking_;  // before the screen gave it to a widget of its own
  QEventLoop loop_;
  int result_ = kResultCancel;
  bool closesWindow_ = false;  // as soon as it has ended
  bool hasEndedItself_ = false;
};

}  // namespace platform::qt
