// Where the time went: the rows of a period by what they have in common, each with its time. All of
// it is pure functions over rows.
#pragma once

#include <string>
#include <vector>

#include "core/app_state.h"
#include "totals/rows.h"

namespace totals {

// In the order in which they are offered.
enum class By { kNothing, kCategory1, kCategory2, kPlace, kWeekday, kHour };

struct Choices {
  By by = By::kCategory1;      // never kNothing
  By within = By::kNothing;    // inner groups; another than `by`
  bool movementsApart = true;  // as a group of their own, and not under each of their places
  bool operator==(const Choices&) const = default;
};

// What distinguishes a group: the number of a name, a weekday from Sunday on, or an hour.
struct Key {
  static constexpr int kAny = -1;
  int outer = kAny;
  int inner = kAny;  // of an inner group
  bool operator==(const Key&) const = default;
};

struct Group {
  Key key;
  Seconds time = 0;
  int count = 0;      // Actions with any part in it, and those without length
  bool runs = false;  // the recorder's running Action is among them
  std::vector<Group> inner;
};

struct Totals {
  Span span;
  Seconds sum = 0;      // of all Actions, each as far as it lies inside
  Seconds written = 0;  // in which anything was written down
  int count = 0;
  int leftOut = 0;
  bool runs = false;
  // By time, the greatest first; weekdays and hours as the clock has them. So are the inner ones.
  std::vector<Group> groups;

  Seconds Unwritten() const { return span.Length() - written; }
  int Days() const { return static_cast<int>(span.Length() / kDaySeconds); }
};

// Of whole days. An Action counts with what lies inside them, one without length if it does.
Totals Sum(const Rows& rows, const Span& span, const Choices& choices);

// What a key of either level is called: "(なし)" for what has no name, "移動", "日曜日", "9時".
std::u16string NameOf(const Rows& rows, By by, int key);
// The level that a group stands on: what its last key means.
By LevelOf(const Choices& choices, const Key& key);

// Positions of the group's rows, by start.
std::vector<int> RowsOf(const Rows& rows, const Span& span, const Choices& choices, const Key& key);

}  // namespace totals
