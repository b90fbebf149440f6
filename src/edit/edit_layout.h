// Where the labels and fields of the edit screen stand: one column in portrait, two in landscape.
#pragma once

#include <vector>

#include "platform/rect.h"

namespace edit {

using platform::PlacedControl;
using platform::Rect;

// Ids of the labels in front of the fields.
enum LabelId {
  kIdStartLabel = 1104,
  kIdEndLabel = 1108,
  kIdPlaceLabel = 1112,
  kIdCategory1Label = 1114,
  kIdCategory2Label = 1116,
  kIdMemoLabel = 1118,
  kIdLatitudeLabel = 1127,
  kIdLongitudeLabel = 1129
};

struct EditLayout {
  std::vector<PlacedControl> controls;  // in reading order, which is the order of the focus
  std::vector<Rect> separators;
};

enum class Orientation { kPortrait, kLandscape };

// By the shape of the whole screen. One that is too narrow for two columns, as beside an open input
// panel, stays with one.
Orientation ChooseOrientation(int screenWidth, int screenHeight);

// `height` is at least MinimumHeight; what is above it goes to the memo.
EditLayout LayOutFields(Orientation orientation, int width, int height, int labelWidth);
int MinimumHeight(Orientation orientation);

}  // namespace edit
