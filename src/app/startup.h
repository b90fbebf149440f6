// The life of the program between main's application object and the end of the process: the stages
// of start-up, the first screen, the message loop, the stages of shutdown.
#pragma once

#include "app/command_line.h"
#include "core/app_state.h"
#include "platform/qt/qt_host.h"
#include "platform/screen_plan.h"

namespace app {

// Answers the process's exit code: 0 also for a second start, whose wish the first one then has;
// EXIT_FAILURE if start-up failed, after a message that says why.
int WinMain(platform::qt::QtHost& host, const platform::ScreenPlan& plan, FirstScreen firstScreen);

// Writes the settings, the one place that does, and then releases what the run has held. A failed
// write is shown and stops nothing.
void ShutdownApp(core::CAppState& app);

}  // namespace app
