// The accessor of the one driver.
#include "platform/gps_device.h"

#include <cerrno>
#include <utility>

namespace platform {
namespace {

GpsDriver currentDriver;

}  // namespace

std::shared_ptr<GpsDevice> GPSOpenDevice(int& error) {
  if (currentDriver) return currentDriver(error);
  error = ENODEV;
  return nullptr;
}

void SetGpsDriver(GpsDriver driver) {
  currentDriver = std::move(driver);
}

}  // namespace platform
