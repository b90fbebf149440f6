#include "e2e/pocket_device.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

namespace e2e {
namespace {

constexpr int kPixelsPerUnit = 2;

std::string MakeCookie() {
  std::random_device chance;
  std::string cookie;
  for (int i = 0; i < 32; i++) cookie += "0123456789abcdef"[chance() % 16];
  return cookie;
}

std::string Pixels(int units) {
  return std::to_string(units * kPixelsPerUnit);
}

}  // namespace

PocketDevice::PocketDevice() {
  const std::string cookies = folder_.HostPath("cookies");
  const std::string cookie = MakeCookie();
  const std::string display = folder_.HostPath("display");
  setenv("XAUTHORITY", cookies.c_str(), 1);
  setenv("XDG_RUNTIME_DIR", folder_.HostPath().c_str(), 1);
  setenv("QT_QPA_PLATFORM", "xcb", 1);
  setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);  // the tester's session is not ours
  unsetenv("QT_SCALE_FACTOR");
  OutputOf({"xauth", "-q", "add", ":0", ".", cookie});
  server_ = Process(
      {"sh", "-c",
       "exec Xvfb -displayfd 3 -screen 0 480x640x24 -nolisten tcp -noreset -auth \"$0\" 3>\"$1\"",
       cookies, display});
  std::string number;
  EXPECT_TRUE(
      WaitUntil([&] { return std::getline(std::ifstream(display), number) && !number.empty(); }));
  setenv("DISPLAY", (":" + number).c_str(), 1);
  OutputOf({"xauth", "-q", "add", ":" + number, ".", cookie});
  windowManager_ = Process({"matchbox-window-manager", "-use_titlebar", "no"});
}

void PocketDevice::Do(std::vector<std::string> xdotool) {
  xdotool.insert(xdotool.begin(), "xdotool");
  OutputOf(xdotool);
}

void PocketDevice::Tap(int x, int y) {
  Do({"mousemove", Pixels(x), Pixels(y), "click", "1"});
}

void PocketDevice::Hold(int x, int y) {
  Do({"mousemove", Pixels(x), Pixels(y), "mousedown", "1"});
  ShowsWindows(2);
  Do({"mouseup", "1"});
}

void PocketDevice::Press(const std::string& keys) {
  Do({"key", "--clearmodifiers", keys});
}

void PocketDevice::Type(const std::string& text) {
  Do({"type", "--delay", "20", text});
}

bool PocketDevice::Shows(const std::string& title) {
  const bool shown = WaitUntil([&] { return FocusedTitle() == title; });
  if (!shown) Picture("instead_of_" + title);
  return shown;
}

bool PocketDevice::ShowsWindows(size_t count) {
  return WaitUntil([&] {
    const std::string ids =
        OutputOf({"xdotool", "search", "--onlyvisible", "--class", "^morvenly$"});
    return static_cast<size_t>(std::count(ids.begin(), ids.end(), '\n')) == count;
  });
}

void PocketDevice::TapFromCorner(const std::string& title, int left, int up) {
  std::istringstream geometry(OutputOf({"xdotool", "search", "--onlyvisible", "--name",
                                        "^" + title + "$", "getwindowgeometry", "--shell"}));
  int width = 0;
  int height = 0;
  for (std::string line; std::getline(geometry, line);) {
    sscanf(line.c_str(), "WIDTH=%d", &width);
    sscanf(line.c_str(), "HEIGHT=%d", &height);
  }
  Do({"search", "--onlyvisible", "--name", "^" + title + "$", "mousemove", "--window", "%1",
      std::to_string(width - left * kPixelsPerUnit), std::to_string(height - up * kPixelsPerUnit),
      "click", "1"});
}

std::string PocketDevice::FocusedTitle() {
  const std::string title = OutputOf({"xdotool", "getwindowfocus", "getwindowname"});
  return title.substr(0, title.find('\n'));
}

std::string PocketDevice::FocusedWindow() {
  return OutputOf({"xdotool", "getactivewindow"});
}

void PocketDevice::Picture(const std::string& name) {
  const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
  const std::string folder = std::string(MORVENLY_PICTURES) + "/" + test.name();
  std::filesystem::create_directories(folder);
  OutputOf({"scrot", "-o", folder + "/" + name + ".png"});
}

}  // namespace e2e
