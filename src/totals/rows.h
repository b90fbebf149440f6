// The Actions of a period as numbers: what is summed up. Each different text is kept once.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "totals/wall_clock.h"

namespace totals {

// The texts of a column, by number. A text keeps its number as long as this lives.
class Names {
 public:
  static constexpr int kNone = 0;      // absent or empty
  static constexpr int kMovement = 1;  // no text: all movements together

  Names();

  // The number of a text, which is a new one if it wasn't there.
  int Take(std::u16string_view text);
  std::u16string_view At(int name) const { return texts_[static_cast<size_t>(name)]; }
  int Count() const { return static_cast<int>(texts_.size()); }

 private:
  size_t PlaceOf(std::u16string_view text, size_t hash) const;
  void Grow();

  std::vector<std::u16string> texts_;
  std::vector<size_t> hashes_;  // of the texts
  // Numbers by their hashes, each at its place or at the next free one; kNone where there is none.
  // At most half of the places are taken, and their count is a power of two.
  std::vector<int> table_;
};

struct Row {
  int64_t id = 0;  // of the row in the data file
  Seconds start = 0;
  Seconds end = 0;  // of a running Action now
  int place = Names::kNone;
  int category1 = Names::kNone;
  int category2 = Names::kNone;
  bool runs = false;
};

struct RowTexts {
  std::u16string_view place;
  std::u16string_view category1;
  std::u16string_view category2;
};

class Rows {
 public:
  // A place that holds the separator is a movement; none is with an empty one.
  explicit Rows(std::u16string_view separator) : separator_(separator) {}

  // Forgets the rows, but no name. The next ones are of `period`, or of all time.
  void Clear(const std::optional<Span>& period = {});
  // False if a moment is none, being no date, or the end lies before the start. That is left out,
  // and counted if either moment lies in the period.
  bool Add(int64_t id, const std::optional<Seconds>& start, const std::optional<Seconds>& end,
           const RowTexts& texts);
  // The same for the Action that the recorder keeps running, which ends `now` or, where that is
  // before it, at its start.
  bool AddRunning(int64_t id, const std::optional<Seconds>& start, Seconds now,
                  const RowTexts& texts);

  const std::vector<Row>& All() const { return all_; }
  int LeftOut() const { return leftOut_; }
  const Names& Places() const { return places_; }
  const Names& Categories1() const { return categories1_; }
  const Names& Categories2() const { return categories2_; }
  // The places that a movement names, each once; empty for a place that is no movement.
  const std::vector<int>& PartsOf(int place) const;
  // Whole days, from the one of the earliest start to that of the latest end.
  Span Days() const;

 private:
  bool IsInPeriod(const std::optional<Seconds>& moment) const;
  int TakePlace(std::u16string_view text);
  std::vector<int> Split(std::u16string_view text);

  std::u16string separator_;
  std::optional<Span> period_;
  std::vector<Row> all_;
  int leftOut_ = 0;
  Names places_, categories1_, categories2_;
  std::vector<std::vector<int>> parts_;  // by place, as far as movements go
};

}  // namespace totals
