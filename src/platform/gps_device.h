// The positioning receiver of the machine, as a driver shows it: an event says that a record is
// new, and the record is then asked for. main sets the one driver of the process, a test its own.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace platform {

// A reading. 0 stands for what the receiver does not know.
struct GPS_POSITION {
  uint32_t dwSatelliteCount = 0;  // that the position rests on
  double dblLatitude = 0.0;       // degrees, north above 0
  double dblLongitude = 0.0;      // degrees, east above 0
  float flSpeed = 0.0f;           // knots
  float flHeading = 0.0f;         // degrees from true north
};

struct GPS_DEVICE {
  std::u16string szGPSFriendlyName;
};

enum class GpsEvent { kPosition, kDeviceState, kStop };

// An open device; its end closes it. One thread waits and asks for records; any thread may set the
// stop event.
class GpsDevice {
 public:
  virtual ~GpsDevice() = default;

  // Waits without a time limit for the next event and takes it: it comes once.
  virtual GpsEvent WaitForEvent() = 0;
  virtual void SetStopEvent() = 0;
  // Both answer 0, or -1 where there is no such record; that of a position counts as long as it is
  // no older than `maximumAge`.
  virtual int GPSGetPosition(GPS_POSITION& position, std::chrono::milliseconds maximumAge) = 0;
  virtual int GPSGetDeviceState(GPS_DEVICE& device) = 0;
};

// nullptr, with an errno value in `error`, where it cannot be opened. Does not keep its caller
// longer than a fifth of a second.
using GpsDriver = std::function<std::shared_ptr<GpsDevice>(int& error)>;

// By the driver that is set; without one, ENODEV.
std::shared_ptr<GpsDevice> GPSOpenDevice(int& error);
void SetGpsDriver(GpsDriver driver);

}  // namespace platform
