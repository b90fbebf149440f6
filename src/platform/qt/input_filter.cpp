#include "platform/qt/input_filter.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDialog>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QStyleHints>
#include <utility>

#include "platform/metrics.h"

namespace platform::qt {
namespace {

constexpr int kFingerUnits = 16;  // as far apart as the two taps of a finger may be

bool Decides(int key) {
  return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape ||
         key == Qt::Key_Back;
}

// Under Wayland no program knows where its messages stand.
bool StandsAnywhere(const QWidget& window) {
  static const bool isWayland =
      QGuiApplication::platformName().startsWith(QStringLiteral("wayland"));
  return isWayland && qobject_cast<const QDialog*>(&window) != nullptr;
}

}  // namespace

InputFilter::InputFilter(QObject* parent) : QObject(parent) {
  qApp->installEventFilter(this);
}

// Keys are met on their way to the window, taps on their way to the widget.
bool InputFilter::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      return watched->isWidgetType() &&
             KeepsPress(static_cast<QWidget&>(*watched), static_cast<const QMouseEvent&>(*event));
    case QEvent::MouseMove:
      return watched->isWidgetType() && keepsMouse_;
    case QEvent::MouseButtonRelease:
      return watched->isWidgetType() && std::exchange(keepsMouse_, false);
    case QEvent::ShortcutOverride:  // comes first, and to be accepted means to be no shortcut
      if (!watched->isWindowType() || !Repeats(static_cast<const QKeyEvent&>(*event))) return false;
      event->accept();
      return true;
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
      return watched->isWindowType() && KeepsKey(*watched, static_cast<const QKeyEvent&>(*event));
    default:
      return false;
  }
}

bool InputFilter::KeepsPress(QWidget& receiver, const QMouseEvent& press) {
  // A press that its receiver hands on to a parent is the same one.
  if (press.timestamp() == pressTime_) return false;
  const bool anywhere = StandsAnywhere(*receiver.window());
  keepsMouse_ = IsSecondTap(press, anywhere || pressedAnywhere_) && !FirstIsStillThere(receiver);
  if (!keepsMouse_) {
    pressed_ = &receiver;
    pressedAnywhere_ = anywhere;
    pressPoint_ = press.globalPosition().toPoint();
  }
  pressTime_ = press.timestamp();
  return keepsMouse_;
}

// Wider than the toolkit's double click, which is a mouse's. From or to a window whose place is
// unknown any place counts.
bool InputFilter::IsSecondTap(const QMouseEvent& press, bool anywhere) const {
  const auto interval =
      static_cast<quint64>(QGuiApplication::styleHints()->mouseDoubleClickInterval());
  const QPoint way = press.globalPosition().toPoint() - pressPoint_;
  return press.button() == Qt::LeftButton && pressTime_ != 0 &&
         press.timestamp() - pressTime_ < interval &&
         (anywhere || way.manhattanLength() < Scaled(kFingerUnits));
}

bool InputFilter::FirstIsStillThere(const QWidget& receiver) const {
  if (!pressed_ || !pressed_->isVisible()) return false;
  QWidget* window = pressed_->window();
  const QWidget* child = window->childAt(window->mapFromGlobal(pressPoint_));
  return receiver.window() == window && (child != nullptr ? child : window) == pressed_;
}

// Under X a repeat is a release and a press of one and the same moment, which Qt takes for two
// strokes where another event has come between them, as while a screen opens.
bool InputFilter::Repeats(const QKeyEvent& key) const {
  const bool continues = key.type() != QEvent::KeyRelease && key.key() == releasedKey_ &&
                         key.timestamp() == releaseTime_ && releaseTime_ != 0;
  return key.isAutoRepeat() || continues;
}

bool InputFilter::KeepsKey(QObject& window, const QKeyEvent& key) {
  QWidget* receiver = QApplication::focusWidget();
  const bool repeats = Repeats(key);
  if (key.type() == QEvent::KeyRelease) {
    releasedKey_ = key.key();
    releaseTime_ = key.timestamp();
  }
  if (repeats) {
    const bool isText = qobject_cast<QPlainTextEdit*>(receiver) != nullptr;
    return Decides(key.key()) && !(isText && receiver == keyReceiver_);
  }
  if (key.type() != QEvent::KeyPress) return false;
  keyReceiver_ = receiver;
  pressTime_ = 0;  // a key between two taps, and they are two
  if (key.key() != Qt::Key_F10 || key.modifiers() != Qt::ShiftModifier) return false;
  QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, QPoint(), QPoint());
  QCoreApplication::sendEvent(&window, &menuKey);
  return true;
}

}  // namespace platform::qt
