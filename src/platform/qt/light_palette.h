// The colours of everything that no screen colours itself: light ones, whatever the desktop wears.
// The views' own colours are made for a light ground, and half of a dark palette makes texts
// vanish.
#pragma once

#include <QPalette>

namespace platform::qt {

// Every role of every group is set, so that a desktop's palette adds nothing. Texts stand out from
// the grounds that they are drawn on by 4.5 to 1 at least, disabled ones too.
QPalette LightPalette();

}  // namespace platform::qt
