// gpsd itself, on a loopback port of its own, with a receiver whose recorded sentences come by UDP.
#pragma once

#include <sys/socket.h>

#include <cstdint>

#include "platform/file_handle.h"
#include "support/process.h"

namespace testing_support {

// A socket that is bound to a loopback port that nobody had.
struct LoopbackSocket {
  explicit LoopbackSocket(int type);
  platform::FileHandle handle;
  uint16_t port;
};

class GpsDaemon {
 public:
  uint16_t Port() const { return port_; }
  // Starts the daemon and waits until it can be connected to.
  void Start();
  void Kill() { daemon_.Kill(); }
  // From now on the receiver stands at 35.681237 N 139.767125 E, and says so again and again.
  void HaveFix();

 private:
  const uint16_t port_ = LoopbackSocket(SOCK_STREAM).port;  // free again at once
  const uint16_t receiverPort_ = LoopbackSocket(SOCK_DGRAM).port;
  Process daemon_;
  Process receiver_;
};

}  // namespace testing_support
