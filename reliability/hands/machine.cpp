#include "machine.h"

#include <cerrno>
#include <condition_variable>
#include <limits>
#include <mutex>

namespace hands {
namespace {

namespace chrono = std::chrono;

constexpr double kDegrees[] = {0.0,
                               35.68,
                               -33.9,
                               90.0,
                               -180.0,
                               139.76,
                               179.999999,
                               1e308,
                               -1e308,
                               1e-300,
                               std::numeric_limits<double>::quiet_NaN(),
                               std::numeric_limits<double>::infinity()};

class Receiver : public platform::GpsDevice {
 public:
  explicit Receiver(unsigned seed) : chance_(seed) {}

  platform::GpsEvent WaitForEvent() override {
    std::unique_lock lock(mutex_);
    const chrono::milliseconds patience(5 + Below(chance_, 300));
    if (changed_.wait_for(lock, patience, [this] { return stopped_; })) {
      return platform::GpsEvent::kStop;
    }
    return OneIn(chance_, 4) ? platform::GpsEvent::kDeviceState : platform::GpsEvent::kPosition;
  }
  void SetStopEvent() override {
    const std::lock_guard lock(mutex_);
    stopped_ = true;
    changed_.notify_all();
  }
  int GPSGetPosition(platform::GPS_POSITION& position, chrono::milliseconds) override {
    if (OneIn(chance_, 4)) return -1;
    position.dwSatelliteCount = static_cast<uint32_t>(chance_());
    position.dblLatitude = AnyDegrees();
    position.dblLongitude = AnyDegrees();
    position.flSpeed = static_cast<float>(AnyDegrees());
    position.flHeading = static_cast<float>(AnyDegrees());
    return 0;
  }
  int GPSGetDeviceState(platform::GPS_DEVICE& device) override {
    if (OneIn(chance_, 4)) return -1;
    device.szGPSFriendlyName.assign(static_cast<size_t>(Below(chance_, 3000)), u'局');
    return 0;
  }

 private:
  double AnyDegrees() { return kDegrees[Below(chance_, std::size(kDegrees))]; }

  Chance chance_;
  std::mutex mutex_;
  std::condition_variable changed_;
  bool stopped_ = false;
};

}  // namespace

Machine::Machine(unsigned seed)
    : begin_(chrono::sys_days(chrono::year(2026) / 1 / 1) + chrono::days(seed % 800) +
             chrono::hours(seed % 24)),
      chance_(seed) {}

platform::LocalTime Machine::Now() {
  const auto passed = chrono::steady_clock::now() - started_;
  const chrono::sys_seconds now = begin_ + chrono::duration_cast<chrono::seconds>(passed);
  const auto today = chrono::floor<chrono::days>(now);
  const chrono::year_month_day date(today);
  const chrono::hh_mm_ss time(now - today);
  return {int(date.year()),          int(unsigned(date.month())), int(unsigned(date.day())),
          int(time.hours().count()), int(time.minutes().count()), int(time.seconds().count())};
}

int Machine::Draw() {
  return OneIn(chance_, 20) ? 32767 : Below(chance_, 32768);
}

void Machine::JumpInTime(Chance& chance) {
  using namespace std::chrono_literals;
  const auto today = chrono::floor<chrono::days>(begin_);
  switch (Below(chance, 5)) {
    case 0:
      begin_ += chrono::hours(Below(chance, 48));
      break;
    case 1:
      begin_ -= chrono::hours(Below(chance, 48));
      break;
    case 2: {
      const chrono::year_month_day date(today);
      begin_ = chrono::sys_days(date.year() / date.month() / chrono::last) + 24h - 1s;
      break;
    }
    default:
      begin_ = today + 24h - 1s;
      break;
  }
  started_ = chrono::steady_clock::now();
}

platform::GpsDriver LyingReceiver(unsigned seed) {
  return [chance = Chance(seed + 3)](int& error) mutable -> std::shared_ptr<platform::GpsDevice> {
    error = ECONNREFUSED;
    if (OneIn(chance, 4)) return nullptr;
    return std::make_shared<Receiver>(static_cast<unsigned>(chance()));
  };
}

}  // namespace hands
