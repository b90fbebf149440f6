#include "recorder/recording_layout.h"

#include <algorithm>

#include "platform/metrics.h"

namespace recorder {
namespace {

using platform::Scaled;

struct FieldRow {
  int label;
  int field;
  int column;  // in landscape
};
constexpr FieldRow kFieldRows[] = {
    {kIdTimeLabel, kIdTime, 0},           {kIdLatitudeLabel, kIdLatitude, 0},
    {kIdLongitudeLabel, kIdLongitude, 0}, {kIdPlaceLabel, kIdPlace, 1},
    {kIdCategory1Label, kIdCategory1, 1}, {kIdCategory2Label, kIdCategory2, 1},
};

constexpr int kTitleHeight = 26;
constexpr int kRowHeight = 22;
constexpr int kFootHeight = 32;
constexpr int kButtonWidth = 56;
constexpr int kNowWidth = 26;

// The record button is the one that is hit all day long.
struct FootButton {
  int id;
  int share;  // of ten
};
constexpr FootButton kFootButtons[] = {
    {kIdClear, 2}, {kIdDelete, 2}, {kIdBack, 1}, {kIdRecord, 3}, {kIdStop, 2}};

void PlaceTitle(RecorderLayout& layout, int width) {
  const int button = Scaled(kButtonWidth);
  const int height = Scaled(kTitleHeight);
  layout.controls.push_back(
      {kIdTitle, {Scaled(3), 0, std::max(width - 2 * button - Scaled(3), 0), height}});
  layout.controls.push_back({kIdExit, {width - 2 * button, 0, button, height}});
  layout.controls.push_back({kIdClose, {width - button, 0, button, height}});
}

void PlaceField(RecorderLayout& layout, const FieldRow& row, int x, int y, int width,
                int labelWidth) {
  const int height = Scaled(kRowHeight);
  const int nowWidth = row.field == kIdTime ? Scaled(kNowWidth) : 0;
  layout.controls.push_back({row.label, {x + Scaled(3), y, labelWidth, height - 1}});
  const int fieldX = x + Scaled(3) + labelWidth;
  const int fieldWidth = std::max(x + width - fieldX - nowWidth, 0);
  layout.controls.push_back({row.field, {fieldX, y, fieldWidth, height - 1}});
  if (nowWidth > 0) {
    layout.controls.push_back({kIdNow, {fieldX + fieldWidth, y, nowWidth, height - 1}});
  }
}

void PlaceFoot(RecorderLayout& layout, int width, int y) {
  int shares = 0;
  int x = 0;
  for (const FootButton& button : kFootButtons) {
    shares += button.share;
    const int right = width * shares / 10;
    layout.controls.push_back({button.id, {x, y, right - x, Scaled(kFootHeight)}});
    x = right;
  }
}

}  // namespace

RecorderLayout LayOutRecorder(int width, int height, int labelWidth) {
  RecorderLayout layout;
  PlaceTitle(layout, width);
  const bool twoColumns = width > height && width >= Scaled(300);
  const int columnWidth = twoColumns ? width / 2 : width;
  labelWidth = std::min(labelWidth, columnWidth * 3 / 8);
  const int top = Scaled(kTitleHeight);
  int rows = 0;
  int column = 0;
  for (const FieldRow& row : kFieldRows) {
    if (twoColumns && row.column != column) rows = 0;
    column = row.column;
    const int x = twoColumns ? column * columnWidth : 0;
    PlaceField(layout, row, x, top + rows * Scaled(kRowHeight), columnWidth, labelWidth);
    ++rows;
  }
  for (int row = 1; row <= rows; ++row) {
    layout.separators.push_back({0, top + row * Scaled(kRowHeight) - 1, width, 1});
  }
  const int listTop = top + rows * Scaled(kRowHeight);
  const int footTop = height - Scaled(kFootHeight);
  layout.controls.push_back({kIdList, {0, listTop, width, std::max(footTop - listTop, 0)}});
  PlaceFoot(layout, width, footTop);
  return layout;
}

}  // namespace recorder
