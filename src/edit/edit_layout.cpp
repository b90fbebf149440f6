#include "edit/edit_layout.h"

#include <algorithm>

#include "edit/edit_action.h"
#include "platform/metrics.h"

namespace edit {
namespace {

using platform::Scaled;

int RowHeight() {
  return Scaled(25);
}  // a field and the gap below it
int Gap() {
  return Scaled(1);
}
int SeparatorSpace() {
  return Scaled(5);
}
int ButtonWidth() {
  return Scaled(28);
}
int NarrowLabel(int labelWidth) {
  return std::min(labelWidth, Scaled(28));
}
int MinimumMemoHeight() {
  return Scaled(60);
}

// Fills one column of the screen from top to bottom.
class Column {
 public:
  Column(EditLayout& layout, int x, int width, int labelWidth)
      : layout_(layout), x_(x), width_(width), labelWidth_(labelWidth) {}

  void AddField(int labelId, int fieldId, int extraHeight = 0) {
    AddLabel(labelId, x_);
    Place(fieldId, FieldX(), x_ + width_ - FieldX(), extraHeight);
    y_ += RowHeight() + extraHeight;
  }

  void AddTwoFields(int labelId, int fieldId, int secondLabelId, int secondFieldId) {
    const int half = width_ / 2;
    const int label = NarrowLabel(labelWidth_);
    Place(labelId, x_, label);
    Place(fieldId, x_ + label, half - label - Gap());
    Place(secondLabelId, x_ + half, label);
    Place(secondFieldId, x_ + half + label, width_ - half - label);
    y_ += RowHeight();
  }

  void AddDateAndTime(int labelId, int dateId, int timeId, int nowId) {
    const int button = x_ + width_ - ButtonWidth();
    const int time = button - Gap() - (button - FieldX()) * 2 / 5;
    AddLabel(labelId, x_);
    Place(dateId, FieldX(), time - FieldX() - Gap());
    Place(timeId, time, button - time - Gap());
    Place(nowId, button, ButtonWidth());
    y_ += RowHeight();
  }

  // The rest of the column, down to `bottom`; the button of its input kind stands below its label.
  void AddMemo(int bottom) {
    AddLabel(kIdMemoLabel, x_);
    layout_.controls.push_back({kIdMemo, {FieldX(), y_, x_ + width_ - FieldX(), bottom - y_}});
    layout_.controls.push_back({kIdMemoInput,
                                {x_, y_ + RowHeight(), std::min(ButtonWidth(), labelWidth_ - Gap()),
                                 RowHeight() - Gap()}});
  }

  void AddSeparator() {
    layout_.separators.push_back({x_, y_ + SeparatorSpace() / 2 - Gap(), width_, Gap()});
    y_ += SeparatorSpace();
  }

 private:
  int FieldX() const { return x_ + labelWidth_; }
  void AddLabel(int id, int x) { Place(id, x, labelWidth_); }
  void Place(int id, int x, int width, int extraHeight = 0) {
    layout_.controls.push_back({id, {x, y_, width, RowHeight() - Gap() + extraHeight}});
  }

  EditLayout& layout_;
  int x_;
  int width_;
  int labelWidth_;
  int y_ = 0;
};

void AddStartAndEnd(Column& column) {
  column.AddDateAndTime(kIdStartLabel, kIdStartDate, kIdStartTime, kIdStartNow);
  column.AddDateAndTime(kIdEndLabel, kIdEndDate, kIdEndTime, kIdEndNow);
  column.AddSeparator();
}

void AddPlaceAndCategories(Column& column, int extraHeight = 0) {
  column.AddField(kIdPlaceLabel, kIdPlace, extraHeight);
  column.AddField(kIdCategory1Label, kIdCategory1);
  column.AddField(kIdCategory2Label, kIdCategory2);
}

EditLayout LayOutPortrait(int width, int height, int labelWidth) {
  EditLayout layout;
  Column column(layout, 0, width, labelWidth);
  AddStartAndEnd(column);
  column.AddTwoFields(kIdLatitudeLabel, kIdLatitude, kIdLongitudeLabel, kIdLongitude);
  column.AddSeparator();
  AddPlaceAndCategories(column);
  column.AddMemo(height);
  return layout;
}

EditLayout LayOutLandscape(int width, int height, int labelWidth) {
  EditLayout layout;
  const int leftWidth = width * 19 / 32;
  labelWidth = std::min(labelWidth, leftWidth / 4);  // a date needs the rest
  Column left(layout, 0, leftWidth, labelWidth);
  AddStartAndEnd(left);
  // What the left column has to spare gives the place a second line.
  const int spare = height - MinimumHeight(Orientation::kLandscape);
  AddPlaceAndCategories(left, std::min(spare, RowHeight()));
  const int rightX = leftWidth + SeparatorSpace();
  Column right(layout, rightX, width - rightX, NarrowLabel(labelWidth));
  right.AddField(kIdLatitudeLabel, kIdLatitude);
  right.AddField(kIdLongitudeLabel, kIdLongitude);
  right.AddMemo(height);
  layout.separators.push_back({leftWidth + SeparatorSpace() / 2, 0, Gap(), height});
  return layout;
}

}  // namespace

Orientation ChooseOrientation(int screenWidth, int screenHeight) {
  return screenWidth > screenHeight && screenWidth >= Scaled(300) ? Orientation::kLandscape
                                                                  : Orientation::kPortrait;
}

EditLayout LayOutFields(Orientation orientation, int width, int height, int labelWidth) {
  return orientation == Orientation::kPortrait ? LayOutPortrait(width, height, labelWidth)
                                               : LayOutLandscape(width, height, labelWidth);
}

int MinimumHeight(Orientation orientation) {
  return orientation == Orientation::kPortrait
             ? 6 * RowHeight() + 2 * SeparatorSpace() + MinimumMemoHeight()
             : 5 * RowHeight() + SeparatorSpace();
}

}  // namespace edit
