#include "platform/qt/menu_place.h"

#include <QCoreApplication>
#include <QEvent>
#include <QScreen>
#include <algorithm>

namespace platform::qt {
namespace {

const char kKeeper[] = "keeps_menu_in_window";

// The menu on whose row this one stands, or nullptr: a submenu may also be opened by itself.
const QMenu* MenuAbove(const QMenu& menu) {
  const auto* above = qobject_cast<const QMenu*>(menu.parentWidget());
  return above != nullptr && above->isVisible() ? above : nullptr;
}

int Clamp(int place, int length, int from, int to) {
  return std::max(from, std::min(place, to - length));
}

QPoint Inside(const QRect& room, const QRect& menu) {
  return {Clamp(menu.x(), menu.width(), room.left(), room.right() + 1),
          Clamp(menu.y(), menu.height(), room.top(), room.bottom() + 1)};
}

// Beside `above`, level with `row`; where the room is too narrow for both, below or above the row,
// and where it's too low for that, over it.
QPoint BesideRow(const QRect& room, const QSize& menu, const QRect& above, const QRect& row) {
  const int right = above.right() + 1;
  const int left = above.left() - menu.width();
  if (right + menu.width() - 1 <= room.right()) return Inside(room, {{right, row.top()}, menu});
  if (left >= room.left()) return Inside(room, {{left, row.top()}, menu});
  const bool fitsBelow = row.bottom() + menu.height() <= room.bottom();
  const int y = fitsBelow ? row.bottom() + 1 : row.top() - menu.height();
  return Inside(room, {{left, y}, menu});
}

// Has the last word on a menu's place: Qt knows the screen alone.
class Keeper : public QObject {
 public:
  explicit Keeper(QMenu& menu) : QObject(&menu) {
    setObjectName(QString::fromLatin1(kKeeper));
    menu.installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    auto& menu = static_cast<QMenu&>(*watched);
    if (event->type() == QEvent::Show) Place(menu);
    if (event->type() == QEvent::Hide) ForgetSizes(menu);
    return false;
  }

 private:
  static void Place(QMenu& menu) {
    const QRect room = RoomFor(menu);
    const QMenu* above = MenuAbove(menu);
    if (above == nullptr) return menu.move(Inside(room, menu.geometry()));
    QRect row = above->actionGeometry(menu.menuAction());
    row.moveTopLeft(above->mapToGlobal(row.topLeft()));
    menu.move(BesideRow(room, menu.size(), above->geometry(), row));
  }

  // The heights of the rows depend on the window, which may have another size the next time.
  static void ForgetSizes(QMenu& menu) {
    QEvent measureAgain(QEvent::StyleChange);
    QCoreApplication::sendEvent(&menu, &measureAgain);
  }
};

}  // namespace

QRect RoomFor(const QMenu& menu) {
  const QWidget* owner = menu.parentWidget();
  while (qobject_cast<const QMenu*>(owner) != nullptr) owner = owner->parentWidget();
  const QRect screen = menu.screen()->availableGeometry();
  if (owner == nullptr) return screen;
  const QWidget* window = owner->window();
  const QRect room = QRect(window->mapToGlobal(QPoint()), window->size()) & screen;
  return room.isEmpty() ? screen : room;
}

void OpenMenuAt(QMenu& menu, QPoint globalPoint, const QRect& globalRow) {
  const QRect row = globalRow.isEmpty() ? QRect(globalPoint, QSize(1, 1)) : globalRow;
  const QRect room = RoomFor(menu);
  const QSize size = menu.sizeHint();
  const bool fitsRight = globalPoint.x() + size.width() <= room.right();
  const bool fitsBelow = row.bottom() + size.height() <= room.bottom();
  const int x = fitsRight ? globalPoint.x() + 1 : globalPoint.x() - size.width();
  const int y = fitsBelow ? row.bottom() + 1 : row.top() - size.height();
  menu.popup(Inside(room, {{x, y}, size}));
}

void KeepInWindow(QMenu& menu) {
  if (menu.findChild<QObject*>(QString::fromLatin1(kKeeper)) == nullptr) new Keeper(menu);
}

}  // namespace platform::qt
