// gpsd itself, on a loopback port of its own, with a receiver whose recorded sentences come by UDP.
#pragma once

#include <atomic>
#include <cstdint>
#include <thread>

#include "support/process.h"

namespace testing_support {

class GpsDaemon {
 public:
  GpsDaemon();
  ~GpsDaemon();

  uint16_t Port() const { return port_; }
  // Starts the daemon and waits until it can be connected to.
  void Start();
  void Kill() { daemon_.Kill(); }
  // From now on the receiver stands at 35.681237 N 139.767125 E, and says so again and again.
  void HaveFix() { hasFix_ = true; }

 private:
  void Feed();

  const uint16_t port_;
  const uint16_t receiverPort_;
  Process daemon_;
  std::atomic<bool> hasFix_ = false;
  std::atomic<bool> ends_ = false;
  std::thread feeder_;
};

}  // namespace testing_support
