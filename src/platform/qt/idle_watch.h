// The desktop's idle watch, which blanks the screen or locks it when nobody touches anything: we
// signal over the session bus that somebody is there.
#pragma once

#include <chrono>
#include <memory>

namespace platform::qt {

// Interface thread. Nothing is asked of the bus before the first signal, and nothing ever waits for
// it: a thread of its own talks to it, and is abandoned when the bus does not answer.
class IdleWatch {
 public:
  ~IdleWatch();

  // At most one signal a second goes out.
  void SignalActivity();

 private:
  struct Messenger;

  std::shared_ptr<Messenger> messenger_;
  std::chrono::steady_clock::time_point last_{};
};

}  // namespace platform::qt
