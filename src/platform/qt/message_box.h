// A message of the program as a modal box: Japanese buttons, and a text that is broken into lines
// wherever a small screen needs it.
#pragma once

#include <QFont>
#include <QString>
#include <QWidget>

#include "platform/host.h"

namespace platform::qt {

// Waits for the answer. `over` may be nullptr. A box that is closed from outside, as the program
// ends, answers as if its user had closed it.
Answer RunMessageBox(QWidget* over, const Message& message);

// `text` with line breaks so that no line is wider than `width`: between words and behind the
// folders of a path, inside a word where there is no other place.
QString BreakIntoLines(const QString& text, const QFont& font, int width);

}  // namespace platform::qt
