// The link to a public map page. platform::host().OpenLink opens it.
#pragma once

#include <string>

namespace position {

// The page that the build names (MORVENLY_MAP_HOST) around a point. Degrees; neither is checked.
std::u16string MapLink(double latitude, double longitude);

}  // namespace position
