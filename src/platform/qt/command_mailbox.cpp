#include "platform/qt/command_mailbox.h"

#include <sys/eventfd.h>

#include <QCoreApplication>
#include <QPointer>
#include <QSocketNotifier>
#include <map>
#include <mutex>
#include <utility>
#include <vector>

#include "platform/file_handle.h"

namespace platform::qt {
namespace {

// A locked list and a handle that wakes the event loop: unlike Qt's own posting, nothing here hides
// a race from the thread sanitizer.
class Mailbox {
 public:
  WindowId Register(std::function<void(int)> onCommand) {
    if (notifier_ == nullptr) Listen();
    addresses_[++lastId_] = std::move(onCommand);
    return lastId_;
  }
  void Unregister(WindowId window) { addresses_.erase(window); }

  void Post(WindowId window, int command) {
    const std::scoped_lock lock(mutex_);
    letters_.emplace_back(window, command);
    eventfd_write(wake_.Get(), 1);
  }

 private:
  void Listen() {
    notifier_ = new QSocketNotifier(wake_.Get(), QSocketNotifier::Read, qApp);
    QObject::connect(notifier_, &QSocketNotifier::activated, notifier_, [this] { Deliver(); });
  }

  // A delivered command may run an event loop of its own, close its screen or open another.
  void Deliver() {
    eventfd_t count = 0;
    eventfd_read(wake_.Get(), &count);
    for (const auto& [window, command] : TakeLetters()) {
      const auto address = addresses_.find(window);
      if (address == addresses_.end()) continue;
      const auto onCommand = address->second;
      onCommand(command);
    }
  }

  std::vector<std::pair<WindowId, int>> TakeLetters() {
    const std::scoped_lock lock(mutex_);
    return std::exchange(letters_, {});
  }

  FileHandle wake_{eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)};
  std::mutex mutex_;  // of letters_; all else is the interface thread's
  std::vector<std::pair<WindowId, int>> letters_;
  std::map<WindowId, std::function<void(int)>> addresses_;
  WindowId lastId_ = 0;
  QPointer<QSocketNotifier> notifier_;  // the application object's
};

Mailbox& TheMailbox() {
  static Mailbox mailbox;
  return mailbox;
}

}  // namespace

CommandAddress::CommandAddress(std::function<void(int command)> onCommand)
    : id_(TheMailbox().Register(std::move(onCommand))) {}

CommandAddress::~CommandAddress() {
  TheMailbox().Unregister(id_);
}

void PostToAddress(WindowId window, int command) {
  TheMailbox().Post(window, command);
}

}  // namespace platform::qt
