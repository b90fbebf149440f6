#include "platform/qt/single_instance.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <thread>

namespace platform::qt {
namespace {

constexpr char kLockName[] = ".morvenly.lock";
constexpr char kSocketName[] = ".morvenly.socket";
// A first instance that has its lock but not yet its socket gets this long.
constexpr std::chrono::milliseconds kPatience(2000);
constexpr std::chrono::milliseconds kPause(20);
// What a Wayland compositor gave the second start: the right to the focus, for the first to use.
constexpr char kActivationVariable[] = "XDG_ACTIVATION_TOKEN";

// The socket's address by way of the open folder: a folder's own path may be longer than the
// address has room for.
sockaddr_un AddressIn(int folderHandle) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::string path = "/proc/self/fd/" + std::to_string(folderHandle) + "/" + kSocketName;
  std::copy(path.begin(), path.end(), address.sun_path);
  return address;
}

int OpenSocket() {
  return socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
}

// The length of a letter; -1 if there is none, or another user sent it.
ssize_t ReceiveFromOwnUser(int socket, char* letter, size_t size) {
  alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(ucred))> control{};
  iovec block{letter, size};
  msghdr message{};
  message.msg_iov = &block;
  message.msg_iovlen = 1;
  message.msg_control = control.data();
  message.msg_controllen = control.size();
  const ssize_t length = recvmsg(socket, &message, MSG_CMSG_CLOEXEC);
  const cmsghdr* const header = length < 0 ? nullptr : CMSG_FIRSTHDR(&message);
  if (header == nullptr || header->cmsg_level != SOL_SOCKET ||
      header->cmsg_type != SCM_CREDENTIALS) {
    return -1;
  }
  ucred sender;
  std::memcpy(&sender, CMSG_DATA(header), sizeof sender);
  return sender.uid == getuid() ? length : -1;
}

}  // namespace

SingleInstance::SingleInstance(const std::string& folder)
    : folderHandle_(open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)) {}

SingleInstance::~SingleInstance() {
  notifier_.reset();
  if (socket_ >= 0) {
    unlinkat(folderHandle_, kSocketName, 0);
    close(socket_);
  }
  // The lock's file stays: taking it away would let two processes hold two files of one name.
  if (lock_ >= 0) close(lock_);
  if (folderHandle_ >= 0) close(folderHandle_);
}

bool SingleInstance::Claim(char wish, std::function<void(char wish)> onLaterStart) {
  onLaterStart_ = std::move(onLaterStart);
  const auto giveUp = std::chrono::steady_clock::now() + kPatience;
  do {
    switch (TakeLock()) {
      case Lock::kTaken:
        Listen();
        return true;
      case Lock::kImpossible:
        return true;
      case Lock::kHeldByAnother:
        if (TellFirst(wish)) return false;
    }
    std::this_thread::sleep_for(kPause);
  } while (std::chrono::steady_clock::now() < giveUp);
  return false;
}

SingleInstance::Lock SingleInstance::TakeLock() {
  constexpr int kFlags = O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC;
  if (lock_ < 0) lock_ = openat(folderHandle_, kLockName, kFlags, 0600);
  if (lock_ < 0 && errno == ELOOP && unlinkat(folderHandle_, kLockName, 0) == 0) {
    lock_ = openat(folderHandle_, kLockName, kFlags, 0600);
  }
  if (lock_ < 0) return Lock::kImpossible;
  if (flock(lock_, LOCK_EX | LOCK_NB) == 0) return Lock::kTaken;
  return errno == EWOULDBLOCK ? Lock::kHeldByAnother : Lock::kImpossible;
}

void SingleInstance::Listen() {
  unlinkat(folderHandle_, kSocketName, 0);  // of a first instance that was killed
  socket_ = OpenSocket();
  fchmod(socket_, S_IRUSR | S_IWUSR);  // the file that bind makes takes this mode
  constexpr int kOn = 1;               // each letter names its sender
  if (setsockopt(socket_, SOL_SOCKET, SO_PASSCRED, &kOn, sizeof kOn) != 0) return;
  const sockaddr_un address = AddressIn(folderHandle_);
  if (bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) return;
  notifier_ = std::make_unique<QSocketNotifier>(socket_, QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                   [this] { Receive(); });
}

// One byte of wish, then the token.
bool SingleInstance::TellFirst(char wish) const {
  struct stat status;
  const bool isSocket = fstatat(folderHandle_, kSocketName, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
                        S_ISSOCK(status.st_mode);
  if (!isSocket) return false;
  const int sender = OpenSocket();
  const QByteArray letter = wish + qgetenv(kActivationVariable);
  const sockaddr_un address = AddressIn(folderHandle_);
  const ssize_t sent = sendto(sender, letter.data(), static_cast<size_t>(letter.size()), 0,
                              reinterpret_cast<const sockaddr*>(&address), sizeof address);
  const bool queueFull = sent < 0 && errno == EAGAIN;  // others have told it already
  close(sender);
  return sent >= 0 || queueFull;
}

void SingleInstance::Receive() {
  std::array<char, 4096> letter;
  const ssize_t length = ReceiveFromOwnUser(socket_, letter.data(), letter.size());
  if (length < 1) return;
  if (length > 1) qputenv(kActivationVariable, QByteArray(letter.data() + 1, length - 1));
  onLaterStart_(letter[0]);
}

}  // namespace platform::qt
