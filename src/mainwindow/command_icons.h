// The pictures of the toolbar's commands, drawn in lines so that they are sharp at any scale.
#pragma once

#include <QIcon>

namespace mainwindow {

// A picture on a grid of 16 by 16; grey where the command is off. An empty one for another command.
QIcon CommandIcon(int id);

}  // namespace mainwindow
