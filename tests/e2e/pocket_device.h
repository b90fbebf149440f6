// A pocket device for the whole program: an X server without a screen, a shell's window manager, a
// finger and a keyboard. Positions are units of the device, 240 by 320, two pixels each.
#pragma once

#include <string>

#include "support/process.h"
#include "support/temp_folder.h"

namespace e2e {

using testing_support::OutputOf;
using testing_support::Process;
using testing_support::WaitUntil;

class PocketDevice {
 public:
  PocketDevice();

  // A tap and a long tap on the screen.
  void Tap(int x, int y);
  void Hold(int x, int y);
  // Keys by their X names ("Return", "ctrl+q"), and a text.
  void Press(const std::string& keys);
  void Type(const std::string& text);

  // Waits until the window of exactly this title has the focus.
  bool Shows(const std::string& title);
  // Waits until the program has so many windows on the screen; an open menu is one.
  bool ShowsWindows(size_t count);
  // A tap in that window, counted from its lower right corner.
  void TapFromCorner(const std::string& title, int left, int up);
  std::string FocusedTitle();
  // The id of the window that has the focus.
  std::string FocusedWindow();

  // Leaves a picture of the screen as <name>.png in the running test's folder of pictures.
  void Picture(const std::string& name);

 private:
  void Do(std::vector<std::string> xdotool);

  testing_support::TempFolder folder_;
  Process server_;
  Process windowManager_;
};

}  // namespace e2e
