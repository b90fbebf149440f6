// The signals by which a session, a shell or an administrator asks the program to end.
#pragma once

#include <QSocketNotifier>
#include <functional>

namespace platform::qt {

// While it lives, SIGTERM, SIGINT and SIGHUP call `onEnd` from the event loop instead of killing
// the process. One object at a time.
class EndSignals {
 public:
  explicit EndSignals(std::function<void()> onEnd);
  ~EndSignals();
  EndSignals(const EndSignals&) = delete;
  EndSignals& operator=(const EndSignals&) = delete;

 private:
  QSocketNotifier notifier_;
};

}  // namespace platform::qt
