// A program that a test runs, and that does not outlive the test.
#pragma once

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

namespace testing_support {

class Process {
 public:
  Process() = default;
  // argv[0] is looked up in PATH. Its output goes to the file `output`, or nowhere.
  explicit Process(const std::vector<std::string>& argv, const std::string& output = "/dev/null");
  ~Process() { Kill(); }
  Process(Process&& other) noexcept { *this = std::move(other); }
  Process& operator=(Process&& other) noexcept;

  bool Running();
  void Signal(int signal);
  // The exit status, or minus the signal that ended it; -1000 if it does not end within a minute.
  int Wait();
  void Kill();

 private:
  pid_t pid_ = -1;  // -1: reaped, or never started
  int status_ = 0;
};

// The result of `run` in a copy of this process, which ends with it; 0 if it was killed on its way
// by a test's own means.
int InACopy(const std::function<int()>& run);

// What a command writes to its standard output; its failure is an empty text.
std::string OutputOf(const std::vector<std::string>& argv);

// Looks again and again until `done`, for half a minute at most; false if it never was.
bool WaitUntil(const std::function<bool()>& done);

}  // namespace testing_support
