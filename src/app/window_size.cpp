#include "app/window_size.h"

#include <QScreen>

#include "platform/metrics.h"

namespace app {
namespace {

using platform::Scaled;

constexpr int kUnitsWide = 240;
constexpr int kUnitsHigh = 320;
constexpr int kMostUnits = 10000;  // of a number in the settings; no screen has so many

int Pixels(int kept, int usual) {
  return Scaled(kept > 0 ? qMin(kept, kMostUnits) : usual);
}

int Units(int pixels) {
  return qRound(pixels * double(kUnitsWide) / Scaled(kUnitsWide));
}

}  // namespace

void ShowAtKeptSize(QWidget& window, const core::CAppState& app) {
  const QSize kept(Pixels(app.WindowWidth, kUnitsWide), Pixels(app.WindowHeight, kUnitsHigh));
  window.resize(kept.boundedTo(window.screen()->availableSize()));
  app.WindowMaximized == 1 ? window.showMaximized() : window.show();
}

void KeepSize(const QWidget& window, core::CAppState& app) {
  const QSize size = window.normalGeometry().size();
  app.WindowWidth = Units(size.width());
  app.WindowHeight = Units(size.height());
  app.WindowMaximized = window.isMaximized() ? 1 : 0;
}

}  // namespace app
