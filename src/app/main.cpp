// The program's entry: what must stand before the first stage of start-up.
#include <sys/stat.h>

#include <QApplication>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "app/startup.h"
#include "core/version.h"
#include "platform/gpsd_device.h"
#include "platform/qt/application_look.h"
#include "platform/qt/qt_host.h"
#include "platform/utf.h"

namespace {

int Refuse(const char* why) {
  std::fprintf(stderr, "Morvenly: %s\n", why);
  return EXIT_FAILURE;
}

// Where gpsd listens, if not at its usual port.
uint16_t GpsdPort() {
  const int port = qEnvironmentVariableIntValue("MORVENLY_GPSD_PORT");
  return port > 0 && port <= UINT16_MAX ? static_cast<uint16_t>(port) : platform::kGpsdPort;
}

// Qt gives up where it cannot open a display, with advice that is wrong and a core dump.
void RefuseWithoutDisplay(QtMsgType type, const QMessageLogContext&, const QString&) {
  if (type != QtFatalMsg) return;
  std::_Exit(Refuse("the display cannot be opened; run.sh starts it without one"));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 2 && std::string_view(argv[1]) == "--version") {
    std::printf("Morvenly %s\n", platform::ToUtf8(core::kProgramVersion).c_str());
    return EXIT_SUCCESS;
  }
  umask(077);  // a diary is private, whatever is written
  platform::qt::QtHost host;
  platform::SetHost(&host);
  platform::SetGpsDriver([](int& error) { return platform::OpenGpsd(GpsdPort(), error); });
  if (host.ProgramPath().empty()) {
    return Refuse("its folder has a name that is not UTF-8 or holds a backslash");
  }
  const QtMessageHandler former = qInstallMessageHandler(RefuseWithoutDisplay);
  const platform::ScreenPlan plan = platform::qt::ScaleToScreen(argc, argv);
  qInstallMessageHandler(former);
  QApplication application(argc, argv);
  platform::qt::DressApplication(application);
  return app::WinMain(host, plan);
}
