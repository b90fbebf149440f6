// Owns the open receiver and the thread that waits on its events and hands its readings to a sink.
// Interface thread only.
#pragma once

#include <cstdint>
#include <future>
#include <memory>
#include <thread>

#include "position/position_sink.h"

namespace position {

// 0, or below 0 a failure: a system's error in its lower half, 0x8007 in the upper one.
using HRESULT = int32_t;
inline constexpr HRESULT kInvalidArgument = static_cast<HRESULT>(0x80070057);

class GpsMonitor {
 public:
  GpsMonitor() = default;
  ~GpsMonitor() { Close(); }
  GpsMonitor(const GpsMonitor&) = delete;
  GpsMonitor& operator=(const GpsMonitor&) = delete;

  // Opens the device and starts the thread. kInvalidArgument without a sink; also if a device was
  // open, which is closed.
  HRESULT Open(std::shared_ptr<PositionSink> sink);
  // Stops the thread and closes the device. kInvalidArgument if none is open. A thread that has not
  // ended within five seconds is a failure and left to itself: it touches nothing but what it keeps
  // alive, its readings reach no sink, and the device is closed as it ends.
  HRESULT Close();

 private:
  struct Shared;
  static void Run(Shared& shared);
  HRESULT StartThread();
  HRESULT StopThread();

  std::shared_ptr<Shared> shared_;  // with the thread; none while closed
  std::thread thread_;
  std::future<void> ended_;
};

}  // namespace position
