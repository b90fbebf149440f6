// What counts as a fault besides a crash and a sanitizer's report, and what was reached.
#pragma once

#include <QWidget>
#include <fstream>
#include <map>
#include <string>

namespace hands {

// How often each thing was reached: "screen NAME", "command NUMBER", "taps".
using Counts = std::map<std::string, long>;

// One for the process. A fault ends it by abort(), with the seed and the step in its last line.
// What was done up to then stands in the log, for where the same seed doesn't lead there again.
class Watch {
 public:
  // From now on a warning of Qt's is a fault, and so is an event loop that stands still for as long
  // as `patience` seconds.
  Watch(unsigned seed, int patience, const std::string& log);

  // The loop has come round to a step. Counts what stands in `window`, which may be nullptr, and
  // finds fault with a wait cursor: whoever waits for events, waits for the user.
  void Beat(int step, const QWidget* window);
  void Log(const std::string& what);
  void Count(const std::string& what) { ++counts_[what]; }
  Counts& Reached() { return counts_; }

 private:
  void NoteScreens(const QWidget& window);

  std::ofstream log_;
  Counts counts_;
};

// Of the object itself, with its namespaces.
std::string ClassName(const QObject& object);

[[noreturn]] void Fault(const std::string& what);

}  // namespace hands
