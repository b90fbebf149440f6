#include "platform/screen_plan.h"

#include <algorithm>
#include <cmath>

namespace platform {
namespace {

constexpr int kUnitsWide = 240;
constexpr int kUnitsHigh = 320;
constexpr double kDesktopPixelsPerUnit = 2.0;
constexpr int kFramePixels = 80;           // a title bar and a desktop's panel
constexpr int kHandheldMillimetres = 100;  // no desktop's screen has so short a side
constexpr int kTrustedMillimetres = 30;    // below this the size is a made-up one

bool IsHandheld(const ScreenSize& screen, int shorterSide) {
  if (shorterSide < kUnitsWide * kDesktopPixelsPerUnit) return true;
  const int millimetres = std::min(screen.millimetresWide, screen.millimetresHigh);
  return millimetres >= kTrustedMillimetres && millimetres <= kHandheldMillimetres;
}

}  // namespace

ScreenPlan PlanScreen(const ScreenSize& screen) {
  const int shorterSide = std::min(screen.width, screen.height);
  if (IsHandheld(screen, shorterSide)) {
    return {std::max(1.0, static_cast<double>(shorterSide) / kUnitsWide), true};
  }
  const double fitting = static_cast<double>(screen.height - kFramePixels) / kUnitsHigh;
  const double inQuarters = std::floor(fitting * 4.0) / 4.0;  // where glyphs stay even
  return {std::clamp(inQuarters, 1.0, kDesktopPixelsPerUnit), false};
}

}  // namespace platform
