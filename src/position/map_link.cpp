// Where a point is shown on a map.
#include "position/map_link.h"

#include "core/text.h"
#include "platform/utf.h"
#include "position/coordinate.h"

namespace position {
namespace {

constexpr int kZoom = 14;

}  // namespace

std::u16string MapLink(double latitude, double longitude) {
  return MORVENLY_MAP_HOST u"/m/local?hl=ja&ie=UTF8&ll=" + core::FloatText(latitude) + u"," +
         core::FloatText(longitude) + u"&z=" + platform::ToUtf16(std::to_string(kZoom));
}

}  // namespace position
