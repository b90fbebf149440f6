// A diary that is lived with: every command that writes, once or twice, in a folder of its own.
#pragma once

#include <filesystem>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "core/app_state.h"
#include "platform/host.h"

namespace reliability {

// A user who reads nothing and says yes, except to giving up what is there. The clock stands.
class Host : public platform::Host {
 public:
  explicit Host(const std::filesystem::path& folder);

  platform::LocalTime now{2010, 6, 23, 9, 0, 0};
  bool isNew = true;                  // there is no diary that could be given up
  std::vector<std::string> messages;  // without questions

  platform::Answer ShowMessage(const platform::Message& message) override;
  void SetWaitCursor(bool) override {}
  void SignalActivity() override {}
  void PostCommand(platform::WindowId, int) override {}
  void BringForward() override {}
  void OpenLink(const std::u16string&) override {}
  platform::LocalTime Now() override { return now; }
  uint32_t TickCount() override { return 1; }
  void SeedDraw(uint32_t) override {}
  int Draw() override { return draw_++ * 331 % 32767; }
  std::u16string ProgramPath() override { return programPath_; }
  std::u16string HomeFolder() override { return {}; }
  int Dpi() override { return 96; }
  std::vector<std::u16string> FontFamilies() override { return {u"VL PGothic"}; }

 private:
  std::u16string programPath_;
  int draw_ = 0;
};

// What stands in a diary's folder, one line for each thing: Actions without their ids and stamps,
// the recorder's chain, the settings, exported files, backups that were asked for.
using Picture = std::multiset<std::string>;

// One run of the program over the folder, from its start to its end.
class Program {
 public:
  Program(const std::filesystem::path& folder, Host& host);
  ~Program();

  // True if the diary is open then. Does nothing if it is.
  bool Start();
  void Close();
  Picture Look();

  core::CAppState& App() { return *app_; }
  Host& TheHost() { return host_; }
  std::u16string Path(std::u16string_view name) const;

 private:
  const std::filesystem::path folder_;
  Host& host_;
  std::unique_ptr<core::CAppState> app_;
};

struct Step {
  std::string_view name;
  void (*run)(Program&);
};
// Places in the week.
inline constexpr size_t kNew = 1, kFirstTap = 5, kExport = 11;
// `variation` changes the lengths of what is written.
std::span<const Step> Week(unsigned variation);

}  // namespace reliability
