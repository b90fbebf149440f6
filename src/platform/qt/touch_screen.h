// What a touch screen is given that a mouse does without: two fingers scroll where one finger
// selects, and scroll bars as wide as a finger needs.
#pragma once

#include <QAbstractScrollArea>
#include <QObject>
#include <QPointer>
#include <QTouchEvent>
#include <QWindow>

namespace platform::qt {

// Whether there is one: the system names it, or it has been touched.
bool HasTouchScreen();

// Two fingers on any scroll area move it with them. What the first one has pressed meanwhile gets
// a TouchCancel, and no more of that finger's moves nor its release.
class TouchWatch : public QObject {
 public:
  // Filters all events of the application from now on. `parent` owns it.
  explicit TouchWatch(QObject* parent);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  enum class State { kIdle, kScrolling, kReleased };

  void TakeTouch(const QWindow& window, const QTouchEvent& touch);
  bool Begin(const QWindow& window, const QTouchEvent& touch);
  void ScrollBy(QPointF way);
  bool KeepsMouse(QEvent::Type type);

  State state_ =
      State::kIdle;  // kReleased until the release of the first finger has come as a mouse's
  QPointer<QAbstractScrollArea> area_;
  int fingers_ = 0;
  QPointF middle_;  // between the fingers
  QPointF rest_;    // of their way, not yet scrolled
};

}  // namespace platform::qt
