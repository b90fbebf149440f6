// The four signs of messages.
#pragma once

#include <QIcon>
#include <QStyle>

namespace platform::qt {

// The sign that a message box asks the style for; an empty icon for any other picture.
QIcon MessageIcon(QStyle::StandardPixmap sign);

}  // namespace platform::qt
