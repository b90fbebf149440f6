// The machine that a life runs on: messages, cursor and fonts are the real ones; the clock can
// jump, links lead nowhere, chance has a seed, and the receiver lies.
#pragma once

#include <chrono>

#include "platform/gps_device.h"
#include "platform/qt/qt_host.h"
#include "texts.h"

namespace hands {

class Machine : public platform::qt::QtHost {
 public:
  explicit Machine(unsigned seed);

  // To a second or two before midnight, to another day, a month's end, sometimes backwards.
  void JumpInTime(Chance& chance);

  void OpenLink(const std::u16string&) override {}
  platform::LocalTime Now() override;
  void SeedDraw(uint32_t) override {}
  int Draw() override;

 private:
  std::chrono::sys_seconds begin_;  // the local clock at the time of `started_`
  std::chrono::steady_clock::time_point started_ = std::chrono::steady_clock::now();
  Chance chance_;
};

// A receiver that gives what it likes, or cannot be opened.
platform::GpsDriver LyingReceiver(unsigned seed);

}  // namespace hands
