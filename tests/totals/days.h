// Rows made by hand, and sums of them in a form that a test can write down.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "platform/utf.h"
#include "totals/columns.h"
#include "totals/groups.h"

namespace totals {

// "yyyy/mm/dd"
inline DayNumber Day(std::u16string_view text) {
  return NumberOf(core::ReadDay(text).value());
}

class Days : public testing::Test {
 protected:
  void Add(std::u16string_view start, std::u16string_view end, std::u16string_view category1 = u"",
           std::u16string_view place = u"", std::u16string_view category2 = u"") {
    rows.Add(++lastId_, ReadMoment(start), ReadMoment(end), {place, category1, category2});
  }
  // "name hours xcount[inner ...]", a running one with "*", in their order.
  std::string Told(const std::vector<Group>& groups) const {
    std::string told;
    for (const Group& group : groups) {
      const bool isInner = group.key.inner != Key::kAny;
      const int key = isInner ? group.key.inner : group.key.outer;
      char figures[40];
      std::snprintf(figures, sizeof figures, " %g x%d%s",
                    static_cast<double>(group.time) / static_cast<double>(kHourSeconds),
                    group.count, group.runs ? "*" : "");
      told += (told.empty() ? "" : ", ") +
              platform::ToUtf8(NameOf(rows, LevelOf(choices, group.key), key)) + figures;
      if (!group.inner.empty()) told += " [" + Told(group.inner) + "]";
    }
    return told;
  }
  std::string Groups(const Period& period) {
    return Told(Sum(rows, period.Moments(), choices).groups);
  }

  Rows rows{u"－＞"};
  Choices choices;

 private:
  int lastId_ = 0;
};

}  // namespace totals
