// The host of a benchmark without screens: shows nothing, and a message is the end of it.
#pragma once

#include <cstdlib>
#include <string>
#include <vector>

#include "platform/host.h"

class WordlessHost : public platform::Host {
 public:
  platform::Answer ShowMessage(const platform::Message&) override { std::abort(); }
  void SetWaitCursor(bool) override {}
  void SignalActivity() override {}
  void PostCommand(platform::WindowId, int) override {}
  void BringForward() override {}
  void OpenLink(const std::u16string&) override {}
  // A second goes by with every id.
  platform::LocalTime Now() override {
    return {2010, 6, 23, second_ / 3600 % 24, second_ / 60 % 60, second_ % 60};
  }
  uint32_t TickCount() override { return 0; }
  void SeedDraw(uint32_t) override {}
  int Draw() override { return ++second_ % 32767; }
  std::u16string ProgramPath() override { return u"\\bench"; }
  std::u16string HomeFolder() override { return {}; }
  int Dpi() override { return 96; }
  std::vector<std::u16string> FontFamilies() override { return {}; }

 private:
  int second_ = 0;
};
