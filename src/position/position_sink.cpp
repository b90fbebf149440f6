// Keeps the last reading and announces the first.
#include "position/position_sink.h"

#include <utility>

namespace position {
namespace {

constexpr size_t kLongestDeviceName = 64;

}  // namespace

// The flag is cleared before the command can be handled, which paints the fields by it.
void PositionSink::OnPosition(platform::GPS_POSITION position) {
  const std::scoped_lock lock(mutex_);
  reading_ = position;
  if (!std::exchange(pending_, false)) return;
  inProgress_ = 0;
  platform::host().PostCommand(window_, command_);
}

void PositionSink::OnDeviceState(const platform::GPS_DEVICE& device) {
  const std::scoped_lock lock(mutex_);
  deviceName_ = device.szGPSFriendlyName.substr(0, kLongestDeviceName);
}

void PositionSink::Expect(platform::WindowId window, uint16_t command) {
  const std::scoped_lock lock(mutex_);
  window_ = window;
  command_ = command;
  pending_ = true;
  reading_ = {};
}

std::optional<platform::GPS_POSITION> PositionSink::LastReading() const {
  const std::scoped_lock lock(mutex_);
  if (pending_) return {};
  return reading_;
}

}  // namespace position
