#include "totals/rows.h"

#include <algorithm>

namespace totals {

Names::Names() : texts_(2), hashes_(2), table_(64, kNone) {}

// Where it stands, or else where it would.
size_t Names::PlaceOf(std::u16string_view text, size_t hash) const {
  const size_t mask = table_.size() - 1;
  size_t place = hash & mask;
  for (; table_[place] != kNone; place = (place + 1) & mask) {
    const auto name = static_cast<size_t>(table_[place]);
    if (hashes_[name] == hash && texts_[name] == text) break;
  }
  return place;
}

int Names::Take(std::u16string_view text) {
  if (text.empty()) return kNone;
  const size_t hash = std::hash<std::u16string_view>()(text);
  int& name = table_[PlaceOf(text, hash)];
  if (name != kNone) return name;
  const int taken = name = Count();
  texts_.emplace_back(text);
  hashes_.push_back(hash);
  if (texts_.size() > table_.size() / 2) Grow();
  return taken;
}

void Names::Grow() {
  table_.assign(table_.size() * 2, kNone);
  for (int name = kMovement + 1; name < Count(); ++name) {
    table_[PlaceOf(At(name), hashes_[static_cast<size_t>(name)])] = name;
  }
}

void Rows::Clear(const std::optional<Span>& period) {
  period_ = period;
  all_.clear();
  leftOut_ = 0;
}

bool Rows::IsInPeriod(const std::optional<Seconds>& moment) const {
  return moment && *moment >= period_->from && *moment < period_->to;
}

bool Rows::Add(int64_t id, const std::optional<Seconds>& start, const std::optional<Seconds>& end,
               const RowTexts& texts) {
  if (!start || !end || *end < *start) {
    leftOut_ += !period_ || IsInPeriod(start) || IsInPeriod(end);
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

bool Rows::AddRunning(int64_t id, const std::optional<Seconds>& start, Seconds now,
                      const RowTexts& texts) {
  if (!Add(id, start, std::max(start.value_or(now), now), texts)) return false;
  all_.back().runs = true;
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
