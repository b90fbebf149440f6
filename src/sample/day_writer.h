// Writes one day of the sample diary as its person would: things done one after another at a place,
// and the ways between the places. Chance is drawn from the date alone, so that a day reads the
// same in every sample diary.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "store/action.h"

namespace sample {

// Stands between the two places of a movement, as the recorder writes it.
inline constexpr std::u16string_view kMovementSign = u"－＞";
inline constexpr std::u16string_view kMovement = u"移動";  // its first category

// A place to see.
struct Sight {
  std::u16string_view name;
  double latitude;  // degrees, north and east positive
  double longitude;
  std::u16string_view memo;
};

struct Doing {
  std::u16string_view category1;
  std::u16string_view category2;
  std::u16string_view memo = {};   // an action text, if it has calculations
  std::u16string_view items = {};  // the text form of its extended items
};

class DayWriter {
 public:
  using Date = std::chrono::sys_days;

  explicit DayWriter(Date date);

  // 0 to n - 1.
  int Draw(int n) { return static_cast<int>(chance_() % static_cast<uint32_t>(n)); }
  bool Happens(int percent) { return Draw(100) < percent; }
  template <typename T, size_t n>
  const T& OneOf(const T (&choices)[n]) {
    return choices[Draw(static_cast<int>(n))];
  }

  // The day begins at home, in minutes after midnight.
  void WakeAt(int minute);
  // The clock goes on by about so many minutes. It may pass midnight.
  void Do(int minutes, const Doing& doing);
  // Till about that minute of the day; nothing if it has nearly come, or is past.
  void Until(int minute, const Doing& doing);
  void GoTo(std::u16string_view place, std::u16string_view means, int minutes);
  void GoTo(const Sight& sight, std::u16string_view means, int minutes);
  // Besides what was done last, and from its start on.
  void Meanwhile(int minutes, const Doing& doing);
  // Whole days, this one the first of them, at no place.
  void AllDay(int days, const Doing& doing);

  // By their starts. They have ids.
  std::vector<store::Action> Take();

 private:
  std::u16string Moment(int minute) const;
  int About(int minutes);
  void Add(std::u16string start, std::u16string end, const Doing& doing);

  Date date_;
  std::mt19937 chance_;
  int clock_ = 0;      // minutes after midnight
  int lastStart_ = 0;  // of what was done last
  std::u16string place_;
  const Sight* sight_ = nullptr;  // where the person is, if that is one
  std::vector<store::Action> actions_;
};

}  // namespace sample
