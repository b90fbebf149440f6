// gpsd, the daemon that shares a machine's receivers, as a driver. It is asked on loopback alone.
#pragma once

#include <cstdint>
#include <memory>

#include "platform/gps_device.h"

namespace platform {

inline constexpr uint16_t kGpsdPort = 2947;

// A connection to the daemon at `port`. A reading is a fix in two dimensions at least, and its age
// counts from its arrival. A daemon that goes away later is looked for every second: until it is
// back there are no events.
std::shared_ptr<GpsDevice> OpenGpsd(uint16_t port, int& error);

}  // namespace platform
