// The main window comes back at the size that it had. Sizes are kept in units, so that another
// scale of the screen does not change them.
#pragma once

#include <QWidget>

#include "core/app_state.h"

namespace app {

// Gives the window the kept size, or that of a pocket device where none is kept; never a larger one
// than its screen. Shows it, maximized if it was.
void ShowAtKeptSize(QWidget& window, const core::CAppState& app);

// Keeps the window's size; of a maximized one that to which it would go back.
void KeepSize(const QWidget& window, core::CAppState& app);

}  // namespace app
