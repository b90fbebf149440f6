// The program's entry: what must stand before the first stage of start-up.
#include <sys/stat.h>

#include <QApplication>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

#include "app/command_line.h"
#include "app/startup.h"
#include "core/version.h"
#include "platform/gpsd_device.h"
#include "platform/program_folder.h"
#include "platform/qt/application_look.h"
#include "platform/qt/qt_host.h"
#include "platform/utf.h"
#include "sample/sample_diary.h"

namespace {

constexpr int kExitMisused = 2;  // words that mean nothing

int Refuse(const std::string& why, int status = EXIT_FAILURE) {
  std::fprintf(stderr, "Morvenly: %s\n", why.c_str());
  return status;
}

std::string ValueOf(const char* variable) {
  const char* value = std::getenv(variable);
  return value == nullptr ? std::string() : value;
}

// Where gpsd listens, if not at its usual port.
uint16_t GpsdPort() {
  const int port = qEnvironmentVariableIntValue("MORVENLY_GPSD_PORT");
  return port > 0 && port <= UINT16_MAX ? static_cast<uint16_t>(port) : platform::kGpsdPort;
}

// Qt gives up where it cannot open a display, with advice that is wrong and a core dump.
void RefuseWithoutDisplay(QtMsgType type, const QMessageLogContext&, const QString&) {
  if (type != QtFatalMsg) return;
  std::_Exit(Refuse(
      "it needs a display, and neither WAYLAND_DISPLAY nor DISPLAY names one that can be opened"));
}

// The folder that the user has named, or else the one that is theirs; made if need be.
std::optional<std::string> FindFolder(const app::CommandLine& line) {
  std::error_code error;
  const std::string program = std::filesystem::read_symlink("/proc/self/exe", error).string();
  std::optional<std::string> folder =
      line.folder ? std::filesystem::absolute(*line.folder, error).lexically_normal().string()
                  : platform::UsersFolder({program, ValueOf("XDG_DATA_HOME"), ValueOf("HOME")});
  if (!folder) {
    Refuse("it knows no folder of yours: neither XDG_DATA_HOME nor HOME is set");
  } else if (!platform::MakeFolders(*folder)) {
    Refuse("the folder can't be made: " + *folder);
  } else {
    return folder;
  }
  return std::nullopt;
}

}  // namespace

int main(int argc, char** argv) {
  const app::CommandLine line = app::ReadCommandLine(argc, argv);
  if (line.refused) return Refuse(*line.refused + "; --help shows what does", kExitMisused);
  if (line.wantsHelp || line.wantsVersion) {
    const std::string version = "Morvenly " + platform::ToUtf8(core::kProgramVersion) + "\n";
    std::fputs((line.wantsHelp ? app::HelpText() : version).c_str(), stdout);
    return EXIT_SUCCESS;
  }
  umask(077);  // a diary is private, whatever is written
  platform::qt::QtHost host;
  platform::SetHost(&host);
  platform::SetGpsDriver([](int& error) { return platform::OpenGpsd(GpsdPort(), error); });
  if (line.sampleFolder) {
    const std::string why = sample::MakeDiary(*line.sampleFolder);
    return why.empty() ? EXIT_SUCCESS : Refuse(why);
  }
  const std::optional<std::string> folder = FindFolder(line);
  if (!folder) return EXIT_FAILURE;
  if (!host.LieIn(*folder)) {
    return Refuse("its folder has a name that is not UTF-8 or holds a backslash: " + *folder);
  }
  const QtMessageHandler former = qInstallMessageHandler(RefuseWithoutDisplay);
  const platform::ScreenPlan plan = platform::qt::ScaleToScreen(argc, argv);
  qInstallMessageHandler(former);
  QApplication application(argc, argv);
  platform::qt::DressApplication(application);
  return app::WinMain(host, plan, line.firstScreen);
}
