// What is on show, and what of it can be tapped.
#pragma once

#include <QRect>
#include <QWidget>
#include <string>
#include <vector>

namespace hands {

// The program's window if it is shown, or nullptr.
QWidget* Window();
// What its user has in front: a menu or a list, a message, the window. nullptr for none.
QWidget* Front();
// The screen in front, by its class.
std::string ScreenName();

struct Target {
  QWidget* widget = nullptr;
  QRect place;             // in the widget
  std::string name;        // of the screen and of the control
  bool leaves = false;     // the program
  bool isSurface = false;  // a painted one or a list: more than one thing to tap, or to hold
};

// What stands in `front`, where it can be seen. Empty for nullptr.
std::vector<Target> TargetsIn(QWidget* front);

}  // namespace hands
