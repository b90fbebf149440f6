#include "app/startup.h"

#include <QApplication>
#include <QScreen>
#include <QTimer>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include "app/window_size.h"
#include "backup/daily_copy.h"
#include "core/settings.h"
#include "core/settings_choices.h"
#include "datafile/data_file.h"
#include "edit/qt/edit_action_screen.h"
#include "mainwindow/command_table.h"
#include "mainwindow/main_window.h"
#include "platform/device_paths.h"
#include "platform/program_folder.h"
#include "platform/qt/end_signals.h"
#include "platform/qt/single_instance.h"
#include "position/position_request.h"
#include "recorder/qt/recorder_screen.h"
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
  backup::KeepDailyCopies();
  if (datafile::EndsProcess(datafile::OpenDataFile(app))) return nullptr;
  auto window = std::make_unique<mainwindow::CMainWnd>(app);
  host.SetMainWindow(window.get());
  ShowWindow(*window, app, plan);
  return window;
}

FirstScreen BySetting(const core::CAppState& app) {
  switch (app.StartupMode) {
    case core::kStartRecorder:
      return FirstScreen::kRecorder;
    case core::kStartNewAction:
      return FirstScreen::kNewAction;
    default:
      return FirstScreen::kBySetting;
  }
}

void Open(FirstScreen screen, core::CAppState& app, mainwindow::CMainWnd& window) {
  if (screen == FirstScreen::kRecorder) window.OnCommand(mainwindow::kRecorder);
  if (screen != FirstScreen::kNewAction) return;
  edit::CEditActionDlg newAction(&window, app, edit::kOpenNew);
  if (newAction.RunModal() == platform::qt::kResultOk) window.ShowChange(views::Change::kAdded);
}

// The wish of a later start. A screen that waits to be finished isn't covered, but for the
// recorder, which may stay open all day: a new Action stands over it.
void OpenOnWish(FirstScreen screen, core::CAppState& app, mainwindow::CMainWnd& window) {
  if (QApplication::activeModalWidget() != nullptr) return;
  if (QWidget* menu = QApplication::activePopupWidget()) menu->close();
  auto* topmost = platform::qt::ModalScreen::Topmost();
  const bool isRecorder = dynamic_cast<recorder::CRecorderDlg*>(topmost) != nullptr;
  if (topmost == nullptr || (isRecorder && screen == FirstScreen::kNewAction)) {
    Open(screen, app, window);
  }
}

void WarnIfReadOnly(const std::string& folder) {
  if (platform::IsWritable(folder)) return;
  platform::ShowNotice(u"このフォルダには書き込めないので、変更は保存されません。\n" +
                           platform::FromHostPath(folder).value_or(std::u16string()),
                       u"書込みエラー", platform::Icon::kWarning);
}

}  // namespace

int WinMain(platform::qt::QtHost& host, const platform::ScreenPlan& plan, FirstScreen firstScreen) {
  const auto app = std::make_unique<core::CAppState>();
  core::g_App = app.get();
  // A signal ends every loop that runs, and keeps the next one from starting.
  bool ending = false;
  const platform::qt::EndSignals endSignals([&ending] {
    ending = true;
    QCoreApplication::exit(0);
  });
  std::unique_ptr<mainwindow::CMainWnd> window;
  platform::qt::SingleInstance instance(ProgramFolder());
  const auto onLaterStart = [&](char wish) {
    host.BringForward();
    if (window == nullptr) return;
    QTimer::singleShot(0, window.get(), [&app, &window, wish] {
      OpenOnWish(static_cast<FirstScreen>(wish), *app, *window);
    });
  };
  if (!instance.Claim(static_cast<char>(firstScreen), onLaterStart)) return EXIT_SUCCESS;

  WarnIfReadOnly(ProgramFolder());
  host.SetWaitCursor(true);
  window = InitInstance(*app, host, plan);
  host.SetWaitCursor(false);
  if (window == nullptr) return EXIT_FAILURE;

  Open(firstScreen == FirstScreen::kBySetting ? BySetting(*app) : firstScreen, *app, *window);
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
  backup::TellDailyFailure();
  // A file that was displaced may have been left for another one while it was closed.
  if (app.DataFile != dataFile) core::SaveSettings(app);
}

}  // namespace app
