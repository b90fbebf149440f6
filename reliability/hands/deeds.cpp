// What hands do: each deed is a few events, one a step.
#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QPointer>
#include <QPointingDevice>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>
#include <csignal>
#include <iterator>
#include <memory>

#include "hands.h"
#include "touch/qt/surface.h"

namespace hands {
namespace {

constexpr int kHoldMilliseconds = 600;

constexpr int kKeys[] = {Qt::Key_Tab,   Qt::Key_Tab,    Qt::Key_Backtab, Qt::Key_Return,
                         Qt::Key_Enter, Qt::Key_Escape, Qt::Key_Delete,  Qt::Key_Backspace,
                         Qt::Key_Left,  Qt::Key_Right,  Qt::Key_Up,      Qt::Key_Down,
                         Qt::Key_Home,  Qt::Key_End,    Qt::Key_PageUp,  Qt::Key_PageDown,
                         Qt::Key_Space, Qt::Key_F1,     Qt::Key_F2,      Qt::Key_Menu,
                         Qt::Key_Back,  Qt::Key_F4,     Qt::Key_Insert,  Qt::Key_Left,
                         Qt::Key_Right, Qt::Key_Up,     Qt::Key_Down};

constexpr QKeyCombination kShortcuts[] = {
    Qt::CTRL | Qt::Key_A,     Qt::CTRL | Qt::Key_C,     Qt::CTRL | Qt::Key_X,
    Qt::CTRL | Qt::Key_Z,     Qt::CTRL | Qt::Key_Y,     Qt::CTRL | Qt::Key_Tab,
    Qt::CTRL | Qt::Key_Left,  Qt::CTRL | Qt::Key_Right, Qt::CTRL | Qt::Key_Up,
    Qt::CTRL | Qt::Key_Down,  Qt::CTRL | Qt::Key_Home,  Qt::CTRL | Qt::Key_End,
    Qt::SHIFT | Qt::Key_F10,  Qt::SHIFT | Qt::Key_End,  Qt::SHIFT | Qt::Key_Home,
    Qt::SHIFT | Qt::Key_Down, Qt::ALT | Qt::Key_Down,   Qt::CTRL | Qt::Key_Backspace,
    Qt::CTRL | Qt::Key_Q};

constexpr QSize kSizes[] = {{240, 320}, {320, 240}, {240, 200}, {480, 640}, {640, 480},
                            {360, 640}, {240, 427}, {700, 260}, {241, 321}};

}  // namespace

void Hands::Later(std::function<void()> deed, int milliseconds) {
  later_.emplace_back(std::move(deed), milliseconds);
}

Target Hands::Choose(bool isToHold) {
  std::vector<Target> targets = TargetsIn(Front());
  if (isToHold) std::erase_if(targets, [](const Target& target) { return !target.isSurface; });
  Target chosen;
  for (int k = 0; k < 3 && !targets.empty(); ++k) {
    const Target& target = targets[static_cast<size_t>(Draw(static_cast<int>(targets.size())))];
    if (target.leaves && Draw(10) != 0) continue;
    if (chosen.widget == nullptr || used_[target.name] < used_[chosen.name]) chosen = target;
  }
  if (chosen.widget == nullptr) return chosen;
  ++used_[chosen.name];
  watch_.Log("  " + chosen.name);
  const auto* surface = dynamic_cast<const touch::Surface*>(chosen.widget);
  const std::vector<touch::Spot> spots =
      surface != nullptr ? surface->Spots() : std::vector<touch::Spot>();
  if (!spots.empty() && Draw(3) != 0) {
    const QRect spot = spots[static_cast<size_t>(Draw(static_cast<int>(spots.size())))].place;
    if (chosen.place.intersects(spot)) chosen.place &= spot;
  }
  return chosen;
}

QPoint Hands::AnyPoint() {
  const QWidget* window = Window();
  const QRect place = window != nullptr ? window->geometry() : QRect(0, 0, 240, 320);
  return place.topLeft() + QPoint(Draw(place.width()), Draw(place.height()));
}

QPoint Hands::PointIn(const Target& target) {
  if (target.widget == nullptr) return AnyPoint();
  const QPoint inside(Draw(target.place.width()), Draw(target.place.height()));
  return target.widget->mapToGlobal(target.place.topLeft() + inside);
}

void Hands::Mouse(QEvent::Type type, QPoint globalPoint, Qt::MouseButton button) {
  QWidget* front = Front();
  QWindow* window = front != nullptr ? front->windowHandle() : nullptr;
  if (window == nullptr) return;
  if (type == QEvent::MouseButtonPress) pressed_ |= button;
  if (type == QEvent::MouseButtonRelease) pressed_ &= ~Qt::MouseButtons(button);
  qt_handleMouseEvent(window, window->mapFromGlobal(globalPoint), globalPoint, pressed_,
                      type == QEvent::MouseMove ? Qt::NoButton : button, type, Qt::NoModifier,
                      static_cast<int>(clock_.elapsed()));
}

void Hands::Key(QEvent::Type type, int key, Qt::KeyboardModifiers with, const QString& text) {
  QWidget* front = Front();
  QWindow* window = front != nullptr ? front->windowHandle() : nullptr;
  if (window != nullptr) qt_handleKeyEvent(window, type, key, with, text);
}

void Hands::Stroke(int key, Qt::KeyboardModifiers with, const QString& text) {
  for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    Later([=, this] { Key(type, key, with, text); });
  }
}

void Hands::Tap(QPoint globalPoint, Qt::MouseButton button, int milliseconds) {
  watch_.Count("taps");
  Later([=, this] { Mouse(QEvent::MouseButtonPress, globalPoint, button); }, milliseconds);
  Later([=, this] { Mouse(QEvent::MouseButtonRelease, globalPoint, button); });
}

void Hands::TapControl() {
  Tap(PointIn(Choose()));
}

void Hands::TapAnywhere() {
  Tap(AnyPoint(), Draw(8) == 0 ? Qt::MiddleButton : Qt::LeftButton);
}

void Hands::TapTwice() {
  const QPoint at = PointIn(Choose());
  Tap(at);
  Tap(at + QPoint(Draw(5), Draw(5)));
}

void Hands::Hold() {
  const QPoint at = PointIn(Choose(Draw(4) != 0));
  Draw(8) == 0 ? Tap(at, Qt::LeftButton, kHoldMilliseconds) : Tap(at, Qt::RightButton);
}

void Hands::Drag() {
  const QPoint from = PointIn(Choose());
  const QPoint to = Draw(2) == 0 ? AnyPoint() : from + QPoint(0, Draw(300) - 150);
  const int parts = 2 + Draw(6);
  watch_.Count("drags");
  Later([=, this] { Mouse(QEvent::MouseButtonPress, from, Qt::LeftButton); });
  for (int part = 1; part <= parts; ++part) {
    Later(
        [=, this] { Mouse(QEvent::MouseMove, from + (to - from) * part / parts, Qt::LeftButton); },
        Draw(12));
  }
  Later([=, this] { Mouse(QEvent::MouseButtonRelease, to, Qt::LeftButton); });
}

void Hands::TurnWheel() {
  const QPoint at = PointIn(Choose());
  const QPoint angle(Draw(6) == 0 ? 120 : 0, Draw(2) == 0 ? 120 : -120);
  for (int count = 1 + Draw(10); count > 0; --count) {
    Later([=] {
      QWidget* front = Front();
      QWindow* window = front != nullptr ? front->windowHandle() : nullptr;
      if (window == nullptr) return;
      QCoreApplication::postEvent(
          window, new QWheelEvent(window->mapFromGlobal(at), at, QPoint(), angle, Qt::NoButton,
                                  Qt::NoModifier, Qt::NoScrollPhase, false));
    });
  }
}

// One finger that taps, or two that scroll, in the window that they came down on.
void Hands::TouchByFingers() {
  const QPoint from = PointIn(Choose());
  const QPoint apart(0, 60);
  const QPoint way(Draw(40) - 20, Draw(300) - 150);
  const bool areTwo = Draw(2) == 0;
  const auto touched = std::make_shared<QPointer<QWindow>>();
  constexpr int kMoves = 5;
  watch_.Count("touches");
  for (int part = 0; part <= kMoves + 1; ++part) {
    Later(
        [=, this] {
          if (part == 0) *touched = Front() != nullptr ? Front()->windowHandle() : nullptr;
          QWindow* window = *touched;
          if (window == nullptr) return;
          auto touch = QTest::touchEvent(window, fingers_.get(), false);
          for (int finger = 0; finger < (areTwo ? 2 : 1); ++finger) {
            const QPoint at = window->mapFromGlobal(from + apart * finger +
                                                    (areTwo ? way * part / kMoves : QPoint()));
            part == 0        ? touch.press(finger, at, window)
            : part <= kMoves ? touch.move(finger, at, window)
                             : touch.release(finger, at, window);
          }
          touch.commit(false);
        },
        5);
  }
}

void Hands::OpenMenu() {
  Stroke(Draw(3) == 0 ? Qt::Key_Menu : Qt::Key_F2);
  for (int k = 0; k < 2; ++k) Later([this] { TapControl(); });
}

void Hands::PressKey() {
  const int key = kKeys[Draw(std::size(kKeys))];
  for (int count = Draw(6) == 0 ? 8 : 1; count > 0; --count) {
    Stroke(key, {}, key == Qt::Key_Space ? QStringLiteral(" ") : QString());
  }
}

void Hands::PressShortcut() {
  const QKeyCombination keys = kShortcuts[Draw(std::size(kShortcuts))];
  if (keys.key() != Qt::Key_Q || Draw(6) == 0) Stroke(keys.key(), keys.keyboardModifiers());
}

void Hands::TypeKeys() {
  watch_.Count("texts");
  for (const QChar letter : Keys(chance_)) Stroke(letter.toUpper().unicode(), {}, letter);
}

// Over an input method: first what is being composed, then the text, or nothing.
void Hands::Compose() {
  watch_.Count("texts");
  const QString text = AnyText(chance_);
  const auto send = [](const QString& composed, const QString& committed) {
    QObject* focus = QGuiApplication::focusObject();
    if (focus == nullptr) return;
    auto* event = new QInputMethodEvent(composed, {});
    event->setCommitString(committed);
    QCoreApplication::postEvent(focus, event);
  };
  if (Draw(2) == 0) Later([=] { send(QStringLiteral("へんかん"), {}); }, Draw(30));
  if (Draw(5) != 0) Later([=] { send({}, text); });
}

void Hands::FillClipboard() {
  Draw(4) == 0 ? QGuiApplication::clipboard()->clear()
               : QGuiApplication::clipboard()->setMimeData(AnyClipboard(chance_));
}

void Hands::Paste() {
  watch_.Count("pastes");
  Draw(3) == 0 ? Stroke(Qt::Key_Insert, Qt::ShiftModifier)
               : Stroke(Qt::Key_V, Qt::ControlModifier, QStringLiteral("\x16"));
}

void Hands::Resize() {
  QWidget* window = Window();
  if (window == nullptr) return;
  const QSize size = Draw(2) == 0 ? window->size().transposed() : kSizes[Draw(std::size(kSizes))];
  window->resize(size);
}

void Hands::JumpInTime() {
  machine_.JumpInTime(chance_);
}

void Hands::Wait() {
  Later([] {}, Draw(400));
}

}  // namespace hands
