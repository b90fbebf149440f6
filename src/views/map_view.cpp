// The fill of the map view.
#include "views/map_view.h"

#include <cmath>
#include <limits>

#include "core/text.h"
#include "platform/host.h"
#include "position/coordinate.h"
#include "views/day_view.h"
#include "views/selection.h"

namespace views {
namespace {

MapItem ItemOf(const store::Action& action, int number) {
  const auto latitude = position::ReadDecimalDegrees(TextOf(action, store::kLatitude));
  const auto longitude = position::ReadDecimalDegrees(TextOf(action, store::kLongitude));
  constexpr double kNone = std::numeric_limits<double>::max();
  return {number, latitude && longitude, latitude.value_or(kNone), longitude.value_or(kNone),
          std::u16string(TextOf(action, store::kPlace))};
}

void CentreOnAverage(MapPane& pane) {
  double latitudes = 0.0;
  double longitudes = 0.0;
  int count = 0;
  for (const MapItem& item : pane.MapItems) {
    if (!item.valid) continue;
    latitudes += item.latitude;
    longitudes += item.longitude;
    ++count;
  }
  // Absurd positions can add up to no number at all.
  if (count == 0 || !std::isfinite(latitudes) || !std::isfinite(longitudes)) return;
  pane.mLat = latitudes * (1.0 / count);
  pane.mLon = longitudes * (1.0 / count);
  pane.MapCentred = true;
}

}  // namespace

ViewRows SetDataMapViewForLV(const core::CAppState& app, MapPane& pane) {
  pane.MapItems.clear();
  if (!pane.MapCentred) pane.SetDefaultReference();
  const auto addMarker = [&](const store::Action& action, std::vector<std::u16string>& cells) {
    const int number = static_cast<int>(pane.MapItems.size()) + 1;
    pane.MapItems.push_back(ItemOf(action, number));
    cells.insert(cells.begin(), core::ZeroPadded(number, 1));
  };
  ViewRows rows = ReadSpanningDay(app, u"CMainWnd:SetDataMapViewForLV", addMarker);
  rows.newRowColumn = 1;
  if (!pane.MapCentred && !rows.abandoned) CentreOnAverage(pane);
  return rows;
}

bool FxMapMove(MapPane& pane, std::span<const int> selectedRows) {
  if (selectedRows.empty() || selectedRows.front() >= std::ssize(pane.MapItems)) {
    platform::ShowNotice(std::u16string(kNothingSelected), u"移動不可", platform::Icon::kWarning);
    return false;
  }
  const MapItem& item = pane.MapItems[static_cast<size_t>(selectedRows.front())];
  if (!item.valid) {
    ShowNoPosition();
    return false;
  }
  pane.MoveTo({item.latitude, item.longitude});
  return true;
}

}  // namespace views
