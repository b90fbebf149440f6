#include "app/startup.h"

#include <QApplication>
#include <QScreen>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include "app/window_size.h"
#include "core/settings.h"
#include "core/settings_choices.h"
#include "datafile/data_file.h"
#include "edit/qt/edit_action_screen.h"
#include "mainwindow/command_table.h"
#include "mainwindow/main_window.h"
#include "platform/device_paths.h"
#include "platform/qt/end_signals.h"
#include "platform/qt/single_instance.h"
#include "position/position_request.h"
#include "recorder/recorder_state.h"

namespace app {
namespace {

std::string ProgramFolder() {
  const std::string program = *platform::ToHostPath(platform::host().ProgramPath());
  return std::filesystem::path(program).parent_path().string();
}

void ShowWindow(QWidget& window, const core::CAppState& app, const platform::ScreenPlan& plan) {
  if (plan.fillsScreen) {
    // A frame would take room from a hand-held screen; a shell's own panel may. The geometry is for
    // a screen without a window manager, where nothing maximizes.
    window.setWindowFlag(Qt::FramelessWindowHint);
    window.setGeometry(window.screen()->availableGeometry());
    window.showMaximized();
  } else {
    ShowAtKeptSize(window, app, plan);
  }
}

// The main window, or nullptr if the process is to end.
std::unique_ptr<mainwindow::CMainWnd> InitInstance(core::CAppState& app, platform::qt::QtHost& host,
                                                   const platform::ScreenPlan& plan) {
  if (core::InitApp(app) != 0) return nullptr;
  if (datafile::EndsProcess(datafile::OpenDataFile(app))) return nullptr;
  auto window = std::make_unique<mainwindow::CMainWnd>(app);
  host.SetMainWindow(window.get());
  ShowWindow(*window, app, plan);
  return window;
}

void RunFirstScreen(core::CAppState& app, mainwindow::CMainWnd& window) {
  const int mode = app.StartupMode;  // which the screen may change
  if (mode == core::kStartRecorder) window.OnCommand(mainwindow::kRecorder);
  if (mode != core::kStartNewAction) return;
  edit::CEditActionDlg firstScreen(&window, app, edit::kOpenNew);
  if (firstScreen.RunModal() == platform::qt::kResultOk) window.ShowChange(views::Change::kAdded);
}

}  // namespace

int WinMain(platform::qt::QtHost& host, const platform::ScreenPlan& plan) {
  const auto app = std::make_unique<core::CAppState>();
  core::g_App = app.get();
  // A signal ends every loop that runs, and keeps the next one from starting.
  bool ending = false;
  const platform::qt::EndSignals endSignals([&ending] {
    ending = true;
    QCoreApplication::exit(0);
  });
  platform::qt::SingleInstance instance(ProgramFolder());
  if (!instance.Claim([&host] { host.BringForward(); })) return EXIT_SUCCESS;

  host.SetWaitCursor(true);
  std::unique_ptr<mainwindow::CMainWnd> window = InitInstance(*app, host, plan);
  host.SetWaitCursor(false);
  if (window == nullptr) return EXIT_FAILURE;

  RunFirstScreen(*app, *window);
  const bool goesOn = !ending && window->isVisible();
  const int result = goesOn ? QApplication::exec() : 0;
  if (!plan.fillsScreen) KeepSize(*window, *app, plan);
  window.reset();
  ShutdownApp(*app);
  return result;
}

void ShutdownApp(core::CAppState& app) {
  const std::u16string dataFile = app.DataFile;
  core::SaveSettings(app);
  position::ClosePositionMonitor();
  recorder::CloseRecorderSession(app);
  // A file that was displaced may have been left for another one while it was closed.
  if (app.DataFile != dataFile) core::SaveSettings(app);
}

}  // namespace app
