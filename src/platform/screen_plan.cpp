#include "platform/screen_plan.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace platform {
namespace {

constexpr int kUnitsWide = 240;
constexpr int kUnitsHigh = 320;
constexpr int kDesktopPixelsPerUnit = 2;
constexpr int kFramePixels = 80;           // a title bar and a desktop's panel
constexpr int kHandheldMillimetres = 100;  // no desktop's screen has so short a side
constexpr int kTrustedMillimetres = 30;    // shorter ones are made up
constexpr double kUprightPhone = 1.7;      // height by width

// A window system that does not know the millimetres gives none, or those of 96 dots per inch.
bool KnowsMillimetres(const ScreenSize& screen) {
  const double at96 = screen.width * 25.4 / 96.0;
  return std::min(screen.millimetresWide, screen.millimetresHigh) >= kTrustedMillimetres &&
         std::abs(screen.millimetresWide - at96) > 1.0;
}

bool IsHandheld(const ScreenSize& screen) {
  // No room for a frame round a window of two pixels a unit.
  if (std::min(screen.width, screen.height) <= kUnitsWide * kDesktopPixelsPerUnit) return true;
  if (KnowsMillimetres(screen)) {
    return std::min(screen.millimetresWide, screen.millimetresHigh) <= kHandheldMillimetres;
  }
  return screen.height >= screen.width * kUprightPhone;
}

// How many pixels of a desktop a unit may have.
double LargestUnit(const ScreenSize& screen) {
  const double high = static_cast<double>(screen.height - kFramePixels) / kUnitsHigh;
  return std::max(1.0, std::min(high, static_cast<double>(screen.width) / kUnitsWide));
}

}  // namespace

ScreenPlan PlanScreen(const ScreenSize& screen) {
  if (IsHandheld(screen)) {
    const double shorterSide = std::min(screen.width, screen.height);
    return {std::max(1.0, shorterSide / kUnitsWide), true};
  }
  const double fitting = static_cast<double>(screen.height - kFramePixels) / kUnitsHigh;
  const double inQuarters = std::floor(fitting * 4.0) / 4.0;  // where glyphs stay even
  return {std::clamp<double>(inQuarters, 1.0, kDesktopPixelsPerUnit), false};
}

ScreenPlan PlanScreen(const ScreenSize& screen, double usersPixelsPerUnit) {
  ScreenPlan plan = PlanScreen(screen);
  const double largest = plan.fillsScreen ? plan.pixelsPerUnit : LargestUnit(screen);
  const double pixels = std::min(usersPixelsPerUnit, largest);
  const double more = std::max(1.0, plan.pixelsPerUnit / pixels);
  plan.unitsWide = static_cast<int>(std::lround(kUnitsWide * more));
  plan.unitsHigh = static_cast<int>(std::lround(kUnitsHigh * more));
  plan.pixelsPerUnit = pixels;
  return plan;
}

}  // namespace platform
