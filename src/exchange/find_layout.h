// Where the controls of the find dialog stand: one column in portrait, two in landscape.
#pragma once

#include <vector>

#include "platform/rect.h"

namespace exchange {

// Ids of the controls and commands.
enum FindControl {
  kIdFind = 1,
  kIdFindClose = 2,
  kIdFindTitle = 1250,
  kIdTextLabel = 1253,
  kIdText = 1254,
  kIdTargets = 1255,
  kIdInPlace = 1256,
  kIdInCategory1 = 1257,
  kIdInCategory2 = 1258,
  kIdInMemo = 1259,
  kIdStartLabel = 1260,
  kIdStartDate = 1261,
  kIdStartTime = 1262,
  kIdStartToday = 1263,
  kIdEndLabel = 1264,
  kIdEndDate = 1265,
  kIdEndTime = 1266,
  kIdEndToday = 1267,
  kIdDispList = 1268,
  kIdReset = 1269,
  kIdTimeEditor = 1270,
  kIdCalendar = 1271,
  kIdTextField = 1272,
  kIdMenuClose = 32900,
  kIdMenuFind = 33000,
  kIdMenuReset = 33001,
  kIdKeyFind = 40002
};

// In reading order, which is the order of the focus. `height` is that above the soft keys; the
// combo box and the field of the find text share a place. All lengths in pixels.
std::vector<platform::PlacedControl> LayOutFind(int width, int height, int labelWidth);

}  // namespace exchange
