// The life of the GPS thread, and what it does with an event.
#include "position/gps_monitor.h"

#include <atomic>
#include <cerrno>
#include <chrono>
#include <system_error>
#include <utility>

namespace position {
namespace {

constexpr std::chrono::milliseconds kMaximumAge(3000);  // of a position
constexpr std::chrono::milliseconds kPatience(5000);    // with a thread that is to end

HRESULT FromSystemError(int error) {
  const auto code = static_cast<uint32_t>(error);
  return error > 0 ? static_cast<HRESULT>((code & 0xFFFF) | 0x80070000) : error;
}

}  // namespace

struct GpsMonitor::Shared {
  std::shared_ptr<platform::GpsDevice> device;
  std::shared_ptr<PositionSink> sink;
  std::atomic<bool> abandoned = false;
  std::promise<void> ended;
};

HRESULT GpsMonitor::Open(std::shared_ptr<PositionSink> sink) {
  if (sink == nullptr || shared_ != nullptr) {
    Close();
    return kInvalidArgument;
  }
  int error = 0;
  std::shared_ptr<platform::GpsDevice> device = platform::GPSOpenDevice(error);
  if (device == nullptr) return FromSystemError(error);
  shared_ = std::make_shared<Shared>();
  shared_->device = std::move(device);
  shared_->sink = std::move(sink);
  const HRESULT result = StartThread();
  if (result < 0) shared_.reset();
  return result;
}

HRESULT GpsMonitor::Close() {
  if (shared_ == nullptr) return kInvalidArgument;
  const HRESULT result = StopThread();
  shared_.reset();
  return result;
}

HRESULT GpsMonitor::StartThread() {
  ended_ = shared_->ended.get_future();
  try {
    thread_ = std::thread([shared = shared_] {
      Run(*shared);
      shared->ended.set_value();
    });
  } catch (const std::system_error& failure) {
    return FromSystemError(failure.code().value());
  }
  return 0;
}

HRESULT GpsMonitor::StopThread() {
  shared_->device->SetStopEvent();
  if (ended_.wait_for(kPatience) == std::future_status::ready) {
    thread_.join();
    return 0;
  }
  shared_->abandoned = true;
  thread_.detach();
  return FromSystemError(ETIMEDOUT);
}

void GpsMonitor::Run(Shared& shared) {
  for (;;) {
    const platform::GpsEvent event = shared.device->WaitForEvent();
    if (event == platform::GpsEvent::kStop || shared.abandoned) return;
    if (event == platform::GpsEvent::kPosition) {
      platform::GPS_POSITION position;
      const int result = shared.device->GPSGetPosition(position, kMaximumAge);
      if (result == 0 && !shared.abandoned) shared.sink->OnPosition(position);
    } else {
      platform::GPS_DEVICE device;
      const int result = shared.device->GPSGetDeviceState(device);
      if (result == 0 && !shared.abandoned) shared.sink->OnDeviceState(device);
    }
  }
}

}  // namespace position
