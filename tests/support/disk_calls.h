// What this process asks of the disk, counted, and cut short where a test wants it to die. Stands
// in front of the C library for everything that the process calls through shared libraries.
#pragma once

#include <atomic>

namespace testing_support {

struct DiskCalls {
  std::atomic<int> writes = 0;
  std::atomic<int> syncs = 0;
  // To count from here.
  void Reset() { writes = syncs = 0; }

  std::atomic<int> writesUntilDeath = -1;  // the process then ends as by a kill; below 0: never
};

DiskCalls& diskCalls();

}  // namespace testing_support
