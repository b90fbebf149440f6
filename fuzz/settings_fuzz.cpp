// Any bytes are read as settings, and the state that they give survives writing and reading.
#include "core/settings.h"
#include "core/version.h"
#include "input.h"
#include "one_file.h"
#include "platform/host.h"

namespace {

class QuietHost : public platform::Host {
 public:
  platform::Answer ShowMessage(const platform::Message&) override { return platform::Answer::kOk; }
  void SetWaitCursor(bool) override {}
  void SignalActivity() override {}
  void PostCommand(platform::WindowId, int) override {}
  void BringForward() override {}
  void OpenLink(const std::u16string&) override {}
  platform::LocalTime Now() override { return {2010, 6, 23, 10, 45, 30}; }
  uint32_t TickCount() override { return 1; }
  void SeedDraw(uint32_t) override {}
  int Draw() override { return 0; }
  std::u16string ProgramPath() override { return u"\\m\\Morvenly"; }
  std::u16string HomeFolder() override { return {}; }
  int Dpi() override { return 96; }
  std::vector<std::u16string> FontFamilies() override { return {}; }
};

std::string Written(const core::CAppState& app, fuzz::OneFile& file) {
  fuzz::Require(core::WriteSettings(app, u"\\x") == 0);
  return file.content;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static QuietHost host;
  static fuzz::OneFile file;
  platform::SetHost(&host);
  platform::SetFiles(&file);

  file.content = fuzz::AsBytes(data, size);
  core::CAppState app;
  fuzz::Require(core::InitApp(app) == 0);
  fuzz::Require(app.PlaceHistory.Entries().size() <= 80 && app.FindHistory.Entries().size() <= 10);
  fuzz::Require(app.RcdrFntName.size() <= 31 && !app.DataFile.empty());
  app.CurView = app.InitView;  // as the main window does
  const std::string written = Written(app, file);
  core::CAppState again;
  fuzz::Require(core::InitApp(again) == 0);
  fuzz::Require(again.FileVersion == core::kProgramVersion);
  again.CurView = again.InitView;
  // The written form holds the whole state: every setting and every list.
  fuzz::Require(again.DataFile == app.DataFile && again.InitView == app.InitView);
  fuzz::Require(again.PlaceHistory.Entries() == app.PlaceHistory.Entries());
  fuzz::Require(Written(again, file) == written);
  return 0;
}
