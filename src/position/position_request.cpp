// The one sink and the one monitor of the program.
#include "position/position_request.h"

#include <atomic>
#include <memory>

#include "position/gps_monitor.h"
#include "position/position_sink.h"

namespace position {
namespace {

std::atomic<int> inProgress = 0;
std::shared_ptr<PositionSink> sink;
std::unique_ptr<GpsMonitor> monitor;

}  // namespace

// The former thread ends before the sink expects the next reading: its reading must not answer this
// request.
int StartPositionRequest(platform::WindowId window, uint16_t command) {
  if (inProgress.exchange(1) != 0) return 0;
  if (monitor != nullptr) monitor->Close();
  if (sink == nullptr) sink = std::make_shared<PositionSink>(inProgress);
  sink->Expect(window, command);
  if (monitor == nullptr) monitor = std::make_unique<GpsMonitor>();
  if (monitor->Open(sink) >= 0) return 0;
  inProgress = 0;
  return kNotOpened;
}

bool IsRequestInProgress() {
  return inProgress != 0;
}

std::optional<platform::GPS_POSITION> LastReading() {
  return sink != nullptr ? sink->LastReading() : std::nullopt;
}

void ClosePositionMonitor() {
  monitor.reset();
  sink.reset();
  inProgress = 0;
}

}  // namespace position
