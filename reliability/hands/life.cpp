#include "life.h"

#include <sys/stat.h>

#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "app/startup.h"
#include "fence.h"
#include "hands.h"
#include "machine.h"
#include "platform/qt/application_look.h"
#include "playground.h"
#include "watch.h"

namespace hands {
namespace {

namespace fs = std::filesystem;

constexpr int kPatienceSeconds = 20;  // under the sanitizers
constexpr const char* kPixelsAUnit[] = {"1", "2", "1", "1.5", "2"};

std::string MakeFolder() {
  std::string pattern = fs::temp_directory_path() / "random_hands-XXXXXX";
  if (mkdtemp(pattern.data()) == nullptr) Fault("no folder of my own");
  return fs::canonical(pattern).string();
}

// Nothing of the user's own desktop comes in.
void FurnishEnvironment(const std::string& folder, unsigned seed) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_SCALE_FACTOR", kPixelsAUnit[seed % std::size(kPixelsAUnit)]);
  for (const char* name :
       {"HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"}) {
    qputenv(name, folder.c_str());
  }
  qunsetenv("DBUS_SESSION_BUS_ADDRESS");
}

void Report(const std::string& path, const Counts& counts) {
  std::ofstream out(path);
  for (const auto& [what, count] : counts) out << count << '\t' << what << '\n';
}

}  // namespace

int Live(const Order& order, int argc, char** argv) {
  umask(077);
  const std::string place = MakeFolder();
  std::fprintf(stderr, "random_hands: seed %u in %s\n", order.seed, place.c_str());
  const std::string folder = place + "/diary";
  fs::create_directory(folder);
  FurnishEnvironment(folder, order.seed);
  Machine machine(order.seed);
  platform::SetHost(&machine);
  platform::SetGpsDriver(LyingReceiver(order.seed));
  Fence fence(folder);
  MakePlayground(folder, order.seed);
  if (!machine.LieIn(folder)) Fault("a folder without a name");

  const platform::ScreenPlan plan = platform::qt::ScaleToScreen(argc, argv);
  QApplication application(argc, argv);
  platform::qt::DressApplication(application);
  Watch watch(order.seed, kPatienceSeconds, place + "/log");
  {
    Hands hands(order, machine, watch);
    while (!hands.IsDone()) {
      hands.Begin();
      app::WinMain(machine, plan, app::FirstScreen::kBySetting);
      watch.Count("starts");
      CheckPlayground(folder);
    }
  }
  Report(order.report, watch.Reached());
  fs::remove_all(place);
  return EXIT_SUCCESS;
}

}  // namespace hands
