// Everything that reads a diary, done to one that may be damaged in any way.
#pragma once

#include <array>
#include <functional>
#include <string>

#include "reliability/diary_week.h"

namespace reliability {

// What a child process reports to its parent, in memory that both share.
struct Outcome {
  bool opened = false;
  bool isWhole = false;  // the inspection has found nothing
  bool wrote = false;
  int actions = 0;  // that were read
  int messages = 0;
  std::array<char, 160> firstMessage{};
  double slowest = 0.0;    // seconds of the processor
  double slowestBare = 0;  // the same without a wait cursor
  std::array<char, 40> slowestStep{};
  std::array<char, 40> slowestBareStep{};
  std::array<char, 200> finding{};
};

// A user who refuses whatever they are asked, or agrees to everything but giving up what is there.
class Onlooker : public Host {
 public:
  Onlooker(const std::filesystem::path& folder, bool agrees) : Host(folder), agrees_(agrees) {
    isNew = false;
  }
  platform::Answer ShowMessage(const platform::Message& message) override;
  void SetWaitCursor(bool waiting) override;
  uint32_t TickCount() override;  // of the processor

  bool wasWaiting = false;  // a wait cursor has been shown

 private:
  const bool agrees_;
};

// Starts the program in `folder`, fills every view for many dates, opens every screen that reads,
// inspects, and ends without a write.
void LookAtEverything(const std::filesystem::path& folder, Outcome& outcome);

// Starts the program there and writes: a new Action, a tap of the recorder, the import of what lies
// there to be imported. If the engine found no damage before, everything that could be read is
// there after the next start, and so is the new Action, or there was a message.
void Write(const std::filesystem::path& folder, Outcome& outcome);

}  // namespace reliability
