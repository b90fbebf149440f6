// gpsd itself, on a loopback port of its own, with a receiver whose recorded sentences come by UDP.
#pragma once

#include <sys/socket.h>

#include <cstdint>

#include "support/process.h"

namespace testing_support {

class GpsDaemon {
 public:
  uint16_t Port() const { return port_; }
  // Starts the daemon and waits until it can be connected to.
  void Start();
  void Kill() { daemon_.Kill(); }
  // From now on the receiver stands at 35.681237 N 139.767125 E, and says so again and again.
  void HaveFix();

 private:
  static uint16_t FreePort(int type);

  const uint16_t port_ = FreePort(SOCK_STREAM);
  const uint16_t receiverPort_ = FreePort(SOCK_DGRAM);
  Process daemon_;
  Process receiver_;
};

}  // namespace testing_support
