// The main window comes back at the size that it had. Sizes are kept in units of the scale that the
// program chooses for its screen, so that neither another screen nor a smaller scale of the user's
// own changes how much of it the window takes. A larger one enlarges the window.
#pragma once

#include <QWidget>

#include "core/app_state.h"
#include "platform/screen_plan.h"

namespace app {

// Gives the window the kept size, or the one of `plan` if none is kept; never a larger one than its
// screen. Shows it, maximized if it was.
void ShowAtKeptSize(QWidget& window, const core::CAppState& app, const platform::ScreenPlan& plan);

// Keeps the window's size; of a maximized one the size that it would go back to.
void KeepSize(const QWidget& window, core::CAppState& app, const platform::ScreenPlan& plan);

}  // namespace app
