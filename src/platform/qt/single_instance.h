// One running program for each folder that it is installed in. The first one holds a lock beside
// the program, which the kernel gives back however it ends, and listens on a socket there for the
// starts that come after it. Both are their owner's alone: no link in their place is followed, and
// what another user sends is dropped.
#pragma once

#include <QSocketNotifier>
#include <functional>
#include <memory>
#include <string>

namespace platform::qt {

class SingleInstance {
 public:
  // `folder` in the host's form.
  explicit SingleInstance(const std::string& folder);
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  // True: this process is the first, and stays so until the object goes; also where the folder
  // cannot be locked at all. `onLaterStart` is then called, on this thread, for each later start,
  // with the wish of that one. False: another one is, and has been given this one's `wish`.
  bool Claim(char wish, std::function<void(char wish)> onLaterStart);

 private:
  enum class Lock { kTaken, kHeldByAnother, kImpossible };

  Lock TakeLock();
  void Listen();
  bool TellFirst(char wish) const;
  void Receive();

  int folderHandle_ = -1;
  int lock_ = -1;
  int socket_ = -1;
  std::unique_ptr<QSocketNotifier> notifier_;
  std::function<void(char)> onLaterStart_;
};

}  // namespace platform::qt
