// The host for work that is done without a window: what would be a message is kept as the reason
// of the failure, and nothing asks anybody. Clock, chance and paths are those of the host before.
#pragma once

#include <string>
#include <vector>

#include "platform/host.h"

namespace sample {

// The process's host for the scope of the object.
class WordlessHost : public platform::Host {
 public:
  WordlessHost() : former_(*platform::SetHost(this)) {}
  ~WordlessHost() override { platform::SetHost(&former_); }

  // The last message; empty if there was none.
  const std::u16string& LastMessage() const { return lastMessage_; }

  platform::Answer ShowMessage(const platform::Message& message) override {
    lastMessage_ = message.text;
    return message.buttons == platform::Buttons::kOk      ? platform::Answer::kOk
           : message.buttons == platform::Buttons::kYesNo ? platform::Answer::kNo
                                                          : platform::Answer::kCancel;
  }
  void SetWaitCursor(bool) override {}
  void SignalActivity() override {}
  void PostCommand(platform::WindowId, int) override {}
  void BringForward() override {}
  void OpenLink(const std::u16string&) override {}
  platform::LocalTime Now() override { return former_.Now(); }
  uint32_t TickCount() override { return former_.TickCount(); }
  void SeedDraw(uint32_t seed) override { former_.SeedDraw(seed); }
  int Draw() override { return former_.Draw(); }
  std::u16string ProgramPath() override { return former_.ProgramPath(); }
  std::u16string HomeFolder() override { return former_.HomeFolder(); }
  int Dpi() override { return former_.Dpi(); }
  std::vector<std::u16string> FontFamilies() override { return former_.FontFamilies(); }

 private:
  platform::Host& former_;
  std::u16string lastMessage_;
};

}  // namespace sample
