#include "totals/rows.h"

#include <algorithm>

namespace totals {

Names::Names() : texts_(2) {}

int Names::Take(std::u16string_view text) {
  if (text.empty()) return kNone;
  if (text == At(last_)) return last_;
  const auto known = numbers_.find(text);
  if (known != numbers_.end()) return last_ = known->second;
  last_ = Count();
  texts_.emplace_back(text);
  numbers_.emplace(texts_.back(), last_);
  return last_;
}

void Rows::Clear() {
  all_.clear();
  leftOut_ = 0;
}

bool Rows::Add(int64_t id, const RowTexts& texts) {
  const std::optional<Seconds> start = ReadMoment(texts.start);
  const std::optional<Seconds> end = ReadMoment(texts.end);
  if (!start || !end || *end < *start) {
    ++leftOut_;
    return false;
  }
  all_.push_back({.id = id,
                  .start = *start,
                  .end = *end,
                  .place = TakePlace(texts.place),
                  .category1 = categories1_.Take(texts.category1),
                  .category2 = categories2_.Take(texts.category2)});
  return true;
}

bool Rows::AddRunning(int64_t id, const RowTexts& texts, Seconds now) {
  if (!Add(id, texts)) return false;
  Row& row = all_.back();
  row.end = std::max(row.start, now);
  row.runs = true;
  return true;
}

int Rows::TakePlace(std::u16string_view text) {
  const int known = places_.Count();
  const int place = places_.Take(text);
  if (place < known || separator_.empty() || text.find(separator_) == text.npos) return place;
  std::vector<int> parts = Split(text);
  parts_.resize(static_cast<size_t>(places_.Count()));
  parts_[static_cast<size_t>(place)] = std::move(parts);
  return place;
}

// A movement that names no place at all is one of no place.
std::vector<int> Rows::Split(std::u16string_view text) {
  std::vector<int> parts;
  for (size_t at = 0; at <= text.size();) {
    const size_t end = std::min(text.find(separator_, at), text.size());
    const int part = places_.Take(text.substr(at, end - at));
    if (part != Names::kNone && std::ranges::find(parts, part) == parts.end()) {
      parts.push_back(part);
    }
    at = end + separator_.size();
  }
  if (parts.empty()) parts.push_back(Names::kNone);
  return parts;
}

const std::vector<int>& Rows::PartsOf(int place) const {
  static const std::vector<int> kNoParts;
  const auto at = static_cast<size_t>(place);
  return at < parts_.size() ? parts_[at] : kNoParts;
}

Span Rows::Days() const {
  if (all_.empty()) return {};
  Seconds first = all_.front().start;
  Seconds last = first;
  for (const Row& row : all_) {
    first = std::min(first, row.start);
    // A moment takes the day that it lies on, and an end at midnight none.
    last = std::max(last, std::max(row.end - 1, row.start));
  }
  return {DayAt(first) * kDaySeconds, (DayAt(last) + 1) * kDaySeconds};
}

}  // namespace totals
