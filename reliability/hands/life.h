// One life of random hands: a folder of its own, and the program started in it again and again.
#pragma once

#include <string>

namespace hands {

struct Order {
  unsigned seed = 1;
  int steps = 0;
  int seconds = 0;     // of life at most
  std::string report;  // where the counts go, a line each: number, tab, name
};

// Plays the life in this process, which must be fresh. Answers the exit code; a fault does not come
// back. After a fault its folder stays, with a log of what was done.
int Live(const Order& order, int argc, char** argv);

}  // namespace hands
