// Where menus open: inside the window, beside what opened them. What lies beyond the window may be
// a phone's bars, and under Wayland a program cannot know where they are.
#pragma once

#include <QMenu>

namespace platform::qt {

// Opens the menu at a point of the screen: right of it and below it, or as the window has room.
// Where the point lies in a row, a menu that can leaves the whole row in sight.
void OpenMenuAt(QMenu& menu, QPoint globalPoint, const QRect& globalRow = {});

// From now on the menu opens inside its window however it is opened, a submenu beside its row.
void KeepInWindow(QMenu& menu);

// The part of the screen in which the menu may lie: that of its window.
QRect RoomFor(const QMenu& menu);

}  // namespace platform::qt
