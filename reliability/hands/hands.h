// Hands that tap, drag, type, rotate and wait at random. What they do comes to the program as from
// a window system, from an event loop of its own, so that messages, menus and screens that run one
// too are met like any other. What a step does hangs on the seed, its number and what is on show.
#pragma once

#include <QElapsedTimer>
#include <QEvent>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "life.h"
#include "machine.h"
#include "targets.h"
#include "texts.h"
#include "watch.h"

class QPointingDevice;

namespace hands {

class Hands : public QObject {
 public:
  // Both outlive the hands.
  Hands(const Order& order, Machine& machine, Watch& watch);
  ~Hands() override;

  // To be called before each start of the program: they play until it has ended.
  void Begin();
  // Their steps or their time are over; they leave the program, if it runs, for good.
  bool IsDone() const {
    return step_ >= order_.steps || clock_.elapsed() >= order_.seconds * 1000LL;
  }

 private:
  using Deed = void (Hands::*)();
  struct Choice {
    int weight;
    const char* name;
    Deed deed;
  };

  void Arm(int milliseconds);
  void Step();
  void Act();
  void Leave();
  void CountCommands(QWidget& window);

  // One that was used little so far; no widget if there is none.
  Target Choose(bool isToHold = false);
  QPoint AnyPoint();
  QPoint PointIn(const Target& target);
  int Draw(int limit) { return Below(chance_, limit); }

  void Mouse(QEvent::Type type, QPoint globalPoint, Qt::MouseButton button = Qt::LeftButton);
  void Key(QEvent::Type type, int key, Qt::KeyboardModifiers with, const QString& text);
  void Stroke(int key, Qt::KeyboardModifiers with = {}, const QString& text = {});
  void Later(std::function<void()> deed, int milliseconds = 1);

  void Tap(QPoint globalPoint, Qt::MouseButton button = Qt::LeftButton, int milliseconds = 1);
  void TapControl();
  void TapAnywhere();
  void TapTwice();
  void Hold();
  void Drag();
  void TurnWheel();
  void TouchByFingers();
  void OpenMenu();
  void PressKey();
  void PressShortcut();
  void TypeKeys();
  void Compose();
  void FillClipboard();
  void Paste();
  void Resize();
  void JumpInTime();
  void Wait();
  void StartAgain();

  const Order order_;
  Machine& machine_;
  Watch& watch_;
  Chance chance_;
  QElapsedTimer clock_;
  int step_ = 0;
  int leaving_ = 0;  // steps since they began to leave the program; 0 if they do not
  bool isArmed_ = false;
  Qt::MouseButtons pressed_;
  // What is to be done next, and the milliseconds from it to the step after it.
  std::deque<std::pair<std::function<void()>, int>> later_;
  std::map<std::string, int> used_;
  const std::unique_ptr<QPointingDevice> fingers_;
  QPointer<QWidget> counted_;  // the window whose commands are counted
};

}  // namespace hands
