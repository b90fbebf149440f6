// Lengths of the screen. All layouts are given in 96-dpi units and go through Scaled.
#pragma once

namespace platform {

// (units × dpi + 48) / 96 in integers, with the host's logical dpi, which is asked once.
int Scaled(int units);

}  // namespace platform
