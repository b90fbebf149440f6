// What every window of the program shares: how large a unit is, the style, the fonts that stand in
// for the device's own, Qt's Japanese texts.
#pragma once

#include <QApplication>

#include "platform/screen_plan.h"

namespace platform::qt {

// Looks at the screen through an application object that lives for this call alone, and sets the
// scale that the real one will take. Called before it is made. A scale that the user has set in the
// environment stands as far as the window fits the screen with it.
ScreenPlan ScaleToScreen(int& argc, char** argv);

// Called once, right after the application object is made.
void DressApplication(QApplication& application);

}  // namespace platform::qt
