// The program's entry: what must stand before the first stage of start-up.
#include <sys/stat.h>

#include <QApplication>
#include <cstdio>
#include <cstdlib>

#include "app/startup.h"
#include "platform/qt/application_look.h"
#include "platform/qt/qt_host.h"

namespace {

bool HasDisplay() {
  return getenv("DISPLAY") != nullptr || getenv("WAYLAND_DISPLAY") != nullptr ||
         getenv("QT_QPA_PLATFORM") != nullptr;
}

int Refuse(const char* why) {
  std::fprintf(stderr, "Morvenly: %s\n", why);
  return EXIT_FAILURE;
}

}  // namespace

int main(int argc, char** argv) {
  umask(077);  // a diary is private, whatever is written
  if (!HasDisplay()) return Refuse("there is no display; run.sh starts it without one");
  platform::qt::QtHost host;
  platform::SetHost(&host);
  if (host.ProgramPath().empty()) {
    return Refuse("its folder has a name that is not UTF-8 or holds a backslash");
  }
  const platform::ScreenPlan plan = platform::qt::ScaleToScreen(argc, argv);
  QApplication application(argc, argv);
  platform::qt::DressApplication(application);
  return app::WinMain(host, plan);
}
