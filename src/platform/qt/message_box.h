// A message of the program as a modal box: Japanese buttons, and a text that is broken into lines
// wherever a small screen needs it.
#pragma once

#include <QWidget>

#include "platform/host.h"

namespace platform::qt {

// Waits for the answer. `over` may be nullptr. A box that is closed from outside, as the program
// ends, answers as if its user had closed it.
Answer RunMessageBox(QWidget* over, const Message& message);

}  // namespace platform::qt
