#include "exchange/find_layout.h"

#include <algorithm>

#include "platform/metrics.h"

namespace exchange {
namespace {

using platform::PlacedControl;
using platform::Scaled;

constexpr int kTitleHeight = 26;
constexpr int kRowHeight = 26;
constexpr int kButtonWidth = 56;
constexpr int kTodayWidth = 28;
constexpr int kMargin = 3;
constexpr int kGroupTitle = 16;
constexpr int kCheckHeight = 26;

using Controls = std::vector<PlacedControl>;

void PlaceTitle(Controls& controls, int width) {
  const int button = Scaled(kButtonWidth);
  const int height = Scaled(kTitleHeight);
  controls.push_back(
      {kIdFindTitle,
       {Scaled(kMargin), 0, std::max(width - 2 * button - Scaled(kMargin), 0), height}});
  controls.push_back({kIdFind, {width - 2 * button, 0, button, height}});
  controls.push_back({kIdFindClose, {width - button, 0, button, height}});
}

// The text and what it is looked for in. The height taken.
int PlaceText(Controls& controls, int x, int y, int width) {
  const int inner = width - 2 * Scaled(kMargin);
  const int left = x + Scaled(kMargin);
  const int top = y;
  controls.push_back({kIdTextLabel, {left, y, inner, Scaled(18)}});
  y += Scaled(18);
  for (const int id : {kIdText, kIdTextField}) {
    controls.push_back({id, {left, y, inner, Scaled(kRowHeight) - 1}});
  }
  y += Scaled(kRowHeight) + Scaled(2);
  controls.push_back({kIdTargets, {left, y, inner, Scaled(kGroupTitle + 2 * kCheckHeight + 2)}});
  const int half = (inner - 2 * Scaled(kMargin)) / 2;
  int place = 0;
  for (const int id : {kIdInPlace, kIdInCategory1, kIdInCategory2, kIdInMemo}) {
    controls.push_back(
        {id,
         {left + Scaled(kMargin) + place % 2 * half,
          y + Scaled(kGroupTitle) + place / 2 * Scaled(kCheckHeight), half, Scaled(kCheckHeight)}});
    ++place;
  }
  return y + Scaled(kGroupTitle + 2 * kCheckHeight + 4) - top;
}

// A label, a date, a time and the button of today; under the label in a narrow column.
int PlaceSpan(Controls& controls, int x, int y, int width, int labelWidth, const int (&ids)[4]) {
  const int left = x + Scaled(kMargin);
  const int button = x + width - Scaled(kMargin) - Scaled(kTodayWidth);
  const bool besideLabel = button - left - labelWidth >= Scaled(130);
  const int fieldX = besideLabel ? left + labelWidth : left;
  controls.push_back({ids[0],
                      {left, y, besideLabel ? labelWidth : width - 2 * Scaled(kMargin),
                       Scaled(besideLabel ? kRowHeight : 18) - 1}});
  const int fieldY = besideLabel ? y : y + Scaled(18);
  const int time = button - 1 - (button - fieldX) * 2 / 5;
  const int height = Scaled(kRowHeight) - 1;
  controls.push_back({ids[1], {fieldX, fieldY, time - fieldX - 1, height}});
  controls.push_back({ids[2], {time, fieldY, button - time - 1, height}});
  controls.push_back({ids[3], {button, fieldY, Scaled(kTodayWidth), height}});
  return fieldY + Scaled(kRowHeight) - y;
}

int PlaceSpans(Controls& controls, int x, int y, int width, int labelWidth) {
  const int top = y;
  y += PlaceSpan(controls, x, y, width, labelWidth,
                 {kIdStartLabel, kIdStartDate, kIdStartTime, kIdStartToday});
  y += PlaceSpan(controls, x, y, width, labelWidth,
                 {kIdEndLabel, kIdEndDate, kIdEndTime, kIdEndToday});
  return y - top;
}

}  // namespace

std::vector<PlacedControl> LayOutFind(int width, int height, int labelWidth) {
  Controls controls;
  PlaceTitle(controls, width);
  const bool twoColumns = width > height && width >= Scaled(300);
  const int column = twoColumns ? width / 2 : width;
  const int top = Scaled(kTitleHeight + 2);
  int left = top + PlaceText(controls, 0, top, column);
  int right = twoColumns ? top + Scaled(18) : left + Scaled(4);
  right += PlaceSpans(controls, width - column, right, column, labelWidth);
  const int y = std::max(left, right) + Scaled(2);
  const int reset = Scaled(kButtonWidth);
  controls.push_back(
      {kIdDispList, {Scaled(kMargin), y, width - 2 * Scaled(kMargin), Scaled(kCheckHeight)}});
  controls.push_back(
      {kIdReset,
       {width - reset - Scaled(kMargin), y + Scaled(kCheckHeight), reset, Scaled(kRowHeight)}});
  return controls;
}

}  // namespace exchange
