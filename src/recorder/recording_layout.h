// Where the controls of the recorder's screen stand: one column of fields in portrait, two in
// landscape, the list below them, the buttons at the foot.
#pragma once

#include <vector>

#include "platform/rect.h"

namespace recorder {

// Ids of the controls.
enum ControlId {
  kIdTitle = 1150,
  kIdExit = 1151,
  kIdClose = 1152,
  kIdTimeLabel = 1153,
  kIdTime = 1154,
  kIdNow = 1155,
  kIdLatitudeLabel = 1156,
  kIdLatitude = 1157,
  kIdLongitudeLabel = 1158,
  kIdLongitude = 1159,
  kIdPlaceLabel = 1160,
  kIdPlace = 1161,
  kIdCategory1Label = 1162,
  kIdCategory1 = 1163,
  kIdCategory2Label = 1164,
  kIdCategory2 = 1165,
  kIdList = 1166,
  kIdClear = 1167,
  kIdDelete = 1168,
  kIdBack = 1169,
  kIdRecord = 1170,
  kIdStop = 1171,
  kIdTimeEditor = 1172,
  kIdValueEditor = 1173
};

// Ids of the commands of the menu.
enum MenuId {
  kMenuChange = 32782,
  kMenuDelete = 32785,
  kMenuClose = 32900,
  kMenuClear = 32950,
  kMenuRecord = 32951,
  kMenuStop = 32952,
  kMenuBack = 32953,
  kMenuAtStart = 32955,
  kMenuAskPosition = 33100,
  kMenuShowPosition = 33101,
  kMenuClearPosition = 33102,
  kMenuMapLink = 33104,
  kKeyRecord = 40002,
  kMenuExit = 40102
};

struct RecorderLayout {
  std::vector<platform::PlacedControl>
      controls;                            // in reading order, which is the order of the focus
  std::vector<platform::Rect> separators;  // thin lines between the rows of fields
};

// `height` is that above the soft keys. All lengths in pixels.
RecorderLayout LayOutRecorder(int width, int height, int labelWidth);

}  // namespace recorder
