// A bus that accepts and never answers holds whoever connects to it for half a minute. So a thread
// connects, and what it shares with us lives as long as either side.
#include "platform/qt/idle_watch.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QFile>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

namespace platform::qt {
namespace {

constexpr std::chrono::seconds kPause{1};
constexpr std::chrono::milliseconds kFarewell{100};  // for a signal that is on its way

// Without this look first, a bus would be started for nobody but us, and stay.
bool BusMayBeThere() {
  const QByteArray folder = qgetenv("XDG_RUNTIME_DIR");
  return qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") ||
         (!folder.isEmpty() && QFile::exists(QFile::decodeName(folder) + QStringLiteral("/bus")));
}

void Send() {
  QDBusConnection bus = QDBusConnection::sessionBus();
  bus.send(QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.ScreenSaver"), QStringLiteral("/org/freedesktop/ScreenSaver"),
      QStringLiteral("org.freedesktop.ScreenSaver"), QStringLiteral("SimulateUserActivity")));
}

}  // namespace

struct IdleWatch::Messenger {
  std::mutex mutex;
  std::condition_variable changed;
  bool wanted = false;
  bool ended = false;
  bool gone = false;  // the thread has nothing more to do with the bus

  void Run() {
    std::unique_lock lock(mutex);
    while (!ended) {
      if (std::exchange(wanted, false)) {
        lock.unlock();
        Send();
        lock.lock();
      } else {
        changed.wait(lock);
      }
    }
    gone = true;
    changed.notify_all();
  }
};

IdleWatch::~IdleWatch() {
  if (messenger_ == nullptr) return;
  std::unique_lock lock(messenger_->mutex);
  messenger_->ended = true;
  messenger_->changed.notify_all();
  messenger_->changed.wait_for(lock, kFarewell, [this] { return messenger_->gone; });
}

void IdleWatch::SignalActivity() {
  const auto now = std::chrono::steady_clock::now();
  if (messenger_ != nullptr && now - last_ < kPause) return;
  last_ = now;
  if (messenger_ == nullptr) {
    if (!BusMayBeThere()) return;
    messenger_ = std::make_shared<Messenger>();
    std::thread([messenger = messenger_] { messenger->Run(); }).detach();
  }
  const std::lock_guard lock(messenger_->mutex);
  messenger_->wanted = true;
  messenger_->changed.notify_all();
}

}  // namespace platform::qt
