// A field of one line takes no line end, wherever the text comes from: one that was pasted along
// would stand in a column or in the settings, and break the lines of their files.
#pragma once

#include <QLineEdit>

namespace platform::qt {

// For the life of `line`; a validator that it already has stays.
void KeepToOneLine(QLineEdit& line);

}  // namespace platform::qt
