// The toolbar's commands and their pictures, which are drawn in lines so that they are sharp at
// any scale.
#pragma once

#include <QIcon>
#include <vector>

namespace mainwindow {

struct ToolItem {
  int id;      // of the command; 0 for a gap between two groups
  QIcon icon;  // on a grid of 16 by 16; grey where the command is off
};

// From left to right.
std::vector<ToolItem> ToolItems();

}  // namespace mainwindow
