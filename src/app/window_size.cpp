#include "app/window_size.h"

#include <QScreen>

#include "core/settings_choices.h"
#include "platform/metrics.h"

namespace app {
namespace {

using platform::Scaled;

constexpr int kUnitsWide = 240;
constexpr int kUnitsHigh = 320;
constexpr int kMostUnits = 10000;  // of a number in the settings; no screen has so many

// A unit of the program's own scale, in pixels of the window's.
double UnitSize(const platform::ScreenPlan& plan) {
  return double(Scaled(plan.unitsWide)) / kUnitsWide;
}

int Pixels(int kept, int usual, double unit) {
  return qRound((kept > 0 ? qMin(kept, kMostUnits) : usual) * unit);
}

}  // namespace

void ShowAtKeptSize(QWidget& window, const core::CAppState& app, const platform::ScreenPlan& plan) {
  const double unit = UnitSize(plan);
  const QSize kept(Pixels(app.WindowWidth, kUnitsWide, unit),
                   Pixels(app.WindowHeight, kUnitsHigh, unit));
  window.resize(kept.boundedTo(window.screen()->availableSize()));
  app.WindowMaximized == core::kOn ? window.showMaximized() : window.show();
}

void KeepSize(const QWidget& window, core::CAppState& app, const platform::ScreenPlan& plan) {
  const QSize size = window.normalGeometry().size();
  app.WindowWidth = qRound(size.width() / UnitSize(plan));
  app.WindowHeight = qRound(size.height() / UnitSize(plan));
  app.WindowMaximized = window.isMaximized() ? core::kOn : core::kOff;
}

}  // namespace app
