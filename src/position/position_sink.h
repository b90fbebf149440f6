// Where the readings of the receiver arrive, on the GPS thread, and where the interface thread
// looks them up. Every operation may be called from either thread.
#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>

#include "platform/gps_device.h"
#include "platform/host.h"

namespace position {

class PositionSink {
 public:
  // `inProgress` is 1 from a request to its first reading. It outlives the sink.
  explicit PositionSink(std::atomic<int>& inProgress) : inProgress_(inProgress) {}
  virtual ~PositionSink() = default;

  // A reading. The first one after a request clears the in-progress flag and posts the command of
  // the request to its window; later ones are only kept.
  virtual void OnPosition(platform::GPS_POSITION position);
  virtual void OnDeviceState(const platform::GPS_DEVICE& device);

  // A request: forgets the last reading.
  void Expect(platform::WindowId window, uint16_t command);
  // The last reading; none while the first one is waited for.
  std::optional<platform::GPS_POSITION> LastReading() const;

 private:
  mutable std::mutex mutex_;  // of all below
  platform::WindowId window_ = 0;
  uint16_t command_ = 0;
  bool pending_ = true;
  platform::GPS_POSITION reading_;
  std::u16string deviceName_;  // as the last device state said, at most 64 characters

  std::atomic<int>& inProgress_;
};

}  // namespace position
