#include "platform/qt/end_signals.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdint>

namespace platform::qt {
namespace {

constexpr int kSignals[] = {SIGTERM, SIGINT, SIGHUP};

int wakeHandle = -1;

void Wake(int) {
  const int interruptedError = errno;
  const uint64_t one = 1;
  // A full counter has woken the loop already.
  [[maybe_unused]] const ssize_t written = write(wakeHandle, &one, sizeof one);
  errno = interruptedError;
}

int OpenWakeHandle() {
  wakeHandle = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
  return wakeHandle;
}

void React(void (*handler)(int)) {
  for (const int signal : kSignals) {
    struct sigaction former {};
    sigaction(signal, nullptr, &former);
    if (former.sa_handler == SIG_IGN) continue;  // started by nohup
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigaction(signal, &action, nullptr);
  }
}

}  // namespace

EndSignals::EndSignals(std::function<void()> onEnd)
    : notifier_(OpenWakeHandle(), QSocketNotifier::Read) {
  QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [onEnd = std::move(onEnd)] {
    uint64_t count = 0;
    if (read(wakeHandle, &count, sizeof count) == sizeof count) onEnd();
  });
  React(Wake);
}

EndSignals::~EndSignals() {
  React(SIG_DFL);
  notifier_.setEnabled(false);
  close(wakeHandle);
}

}  // namespace platform::qt
