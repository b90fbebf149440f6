// From the press of a key to its release.
#include "touch/qt/key_tap.h"

#include <QKeyEvent>
#include <utility>

namespace touch {
namespace {

// A held arrow walks on, release by release.
bool MayRepeat(int key) {
  return key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down;
}

}  // namespace

KeyTap::KeyTap(QWidget* watched, std::function<bool(QKeyCombination)> onKey)
    : QObject(watched), onKey_(std::move(onKey)) {
  watched->installEventFilter(this);
}

bool KeyTap::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::FocusOut:
      pressedKey_ = 0;
      break;
    case QEvent::KeyPress: {
      const auto* key = static_cast<QKeyEvent*>(event);
      if (key->isAutoRepeat()) break;
      pressedKey_ = key->key();
      modifiers_ = key->modifiers() & ~Qt::KeypadModifier;
      break;
    }
    case QEvent::KeyRelease: {
      const auto* key = static_cast<QKeyEvent*>(event);
      if (key->key() != pressedKey_ || (key->isAutoRepeat() && !MayRepeat(key->key()))) break;
      if (!key->isAutoRepeat()) pressedKey_ = 0;
      return onKey_(QKeyCombination(modifiers_, static_cast<Qt::Key>(key->key())));
    }
    default:
      break;
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace touch
