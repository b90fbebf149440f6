// Asking for the device's position. Interface thread only.
#pragma once

#include <cstdint>
#include <optional>

#include "platform/gps_device.h"
#include "platform/host.h"

namespace position {

// Results of StartPositionRequest.
inline constexpr int kNotOpened = -105;

// Asks for a reading; as the first one arrives, `command` is posted to `window`, which may be gone
// by then. 0, or kNotOpened where the receiver cannot be opened: the next request tries again.
// While a request is under way another one answers 0 and changes nothing: its window hears
// nothing.
int StartPositionRequest(platform::WindowId window, uint16_t command);

// From a request to its first reading.
bool IsRequestInProgress();
// The latest reading since the last request, if one has arrived.
std::optional<platform::GPS_POSITION> LastReading();

// Ends the monitor, at the end of the program.
void ClosePositionMonitor();

}  // namespace position
