#include "store/action_index.h"

#include "core/date_time.h"
#include "store_fixture.h"

namespace store_test {
namespace {

using namespace store;

class ActionIndexTest : public StoreTest {
 protected:
  // An index as a reload would leave it, of these starts, which ascend.
  void FillIndex(const std::vector<std::u16string>& starts) {
    app.ActIds.Clear();
    app.ActStarts.Clear();
    for (const std::u16string& start : starts) {
      app.ActIds.Append(u"ID");
      app.ActStarts.Append(start);
    }
    app.IndexCount = static_cast<int>(starts.size());
  }

  // Compares the moment with the start at `position`.
  int Compare(std::u16string_view date, std::u16string_view time, int position) {
    const std::u16string_view start = app.ActStarts.At(static_cast<size_t>(position));
    return core::CompareDateTime(date, time, start.substr(0, 10), start.substr(11));
  }

  // The page, found step by step as the list view has always found it.
  int PageByHalving(std::u16string_view date, std::u16string_view time, int pageSize) {
    const int pages = (app.IndexCount - 1) / pageSize;
    const int base = app.IndexCount - pages * pageSize - 1;
    int lo = 0, hi = pages - 1, mid = pages / 2, page = -1, order = 0;
    while (page < 0) {
      order = Compare(date, time, base + mid * pageSize);
      if (order > 0) {
        lo = mid + 1;
        if (lo >= pages || lo > hi) page = std::min(lo, pages);
      } else if (order < 0) {
        hi = mid - 1;
        if (hi < 0 || hi < lo) page = hi < 0 ? 0 : lo;
      } else {
        lo = mid;
      }
      const int next = (hi + lo + 1) / 2;
      if (page < 0 && next == mid) page = mid;
      mid = next;
    }
    return pages - page - (order == 0 ? 1 : 0);
  }
};

TEST_F(ActionIndexTest, ReloadSortsByStartAndKeepsTheOrderOfEqualStarts) {
  CreateFile();
  const std::u16string third = InsertAction(u"2010/06/23 12:00:00");
  const std::u16string first = InsertAction(u"2010/06/22 12:00:00");
  const std::u16string fourth = InsertAction(u"2010/06/23 12:00:00");
  const std::u16string last = InsertAction(u"2011/01/01 00:00:00");
  const std::u16string fifth = InsertAction(u"2010/06/23 12:00:00");
  const std::u16string second = InsertAction(u"2010/06/22 12:00:00");
  app.FindWhere = u"f_nvcPlace = 'x'";
  core::SetCurDate(u"2010/06/23");
  app.SeqViewRng = 2;
  ASSERT_EQ(ReloadActionIndex(app), 0);
  EXPECT_FALSE(app.FindWhere);
  EXPECT_EQ(app.IndexCount, 6);
  EXPECT_EQ(app.TotalCount, 6);
  EXPECT_EQ(app.ListPage, 0) << "the page behind the last Action of the day";
  int position = 0;
  for (const std::u16string& id : {first, second, third, fourth, fifth, last}) {
    EXPECT_EQ(FindActionPosition(app, id), position++);
  }
  EXPECT_EQ(app.ActStarts.At(4), u"2010/06/23 12:00:00");
  EXPECT_EQ(FindActionPosition(app, u"ID0000000000000099"), -104);
  const std::u16string unknown = InsertAction(u"2010/06/23 12:00:00");
  EXPECT_EQ(FindActionPosition(app, unknown), -1) << "a row that the index hasn't";
}

TEST_F(ActionIndexTest, EmptyAndClosed) {
  EXPECT_EQ(ReloadActionIndex(app), -3) << "no file is open";
  CreateFile();
  EXPECT_EQ(ReloadActionIndex(app), 0);
  EXPECT_EQ(app.IndexCount, 0);
  EXPECT_EQ(FindActionIndexLower(app, u"2010/06/23", u"00:00:00", LowerMode::kAfter), -101);
  EXPECT_EQ(FindActionIndexByPosition(app, u"2010/06/23", u"00:00:00", 5), 0);
  EXPECT_EQ(FindActionPosition(app, u"ID0000000000000001"), -101);
}

TEST_F(ActionIndexTest, LookupsAgreeWithTheirMeaning) {
  const std::u16string date = u"2010/06/23";
  for (int count = 1; count <= 9; ++count) {
    // Each start stands once, twice or three times, on every even minute.
    for (int equal = 1; equal <= 3; ++equal) {
      std::vector<std::u16string> starts;
      for (int i = 0; i < count; ++i) {
        starts.push_back(date + u' ' + core::FormatTime(10, i / equal * 2 + 2, 0));
      }
      FillIndex(starts);
      for (int minute = 1; minute <= 2 * count + 3; ++minute) {
        const std::u16string time = core::FormatTime(10, minute, 0);
        SCOPED_TRACE(std::to_string(count) + " starts, " + std::to_string(equal) + " equal, " +
                     platform::ToUtf8(time));
        int atOrAfter = 0;
        while (atOrAfter < count && Compare(date, time, atOrAfter) > 0) ++atOrAfter;
        int after = atOrAfter;
        while (after < count && Compare(date, time, after) == 0) ++after;
        EXPECT_EQ(FindActionIndexLower(app, date, time, LowerMode::kAtOrAfter), atOrAfter);
        EXPECT_EQ(FindActionIndexLower(app, date, time, LowerMode::kAfter), after);
        for (int pageSize = 1; pageSize <= count + 1; ++pageSize) {
          EXPECT_EQ(FindActionIndexByPosition(app, date, time, pageSize),
                    PageByHalving(date, time, pageSize))
              << pageSize;
        }
      }
    }
  }
}

TEST_F(ActionIndexTest, PagesAreCutFromTheNewestEnd) {
  FillIndex({u"2010/06/21 10:00:00", u"2010/06/22 10:00:00", u"2010/06/23 10:00:00",
             u"2010/06/24 10:00:00", u"2010/06/25 10:00:00"});
  struct Row {
    const char* why;
    std::u16string date, time;
    int pageSize, page;
  };
  app.ListRowsPerScreen = 2;
  const Row rows[] = {
      {"the newest page is full", u"2010/06/24", u"24:00:00", 2, 0},
      {"the one before it", u"2010/06/22", u"", 2, 1},
      {"the oldest takes the remainder", u"2010/06/20", u"", 2, 2},
      {"0 asks the list control", u"2010/06/22", u"", 0, 1},
      {"no date, no page", u"", u"", 2, 0},
      {"one page, and the last start itself", u"2010/06/25", u"10:00:00", 5, -1},
      {"one page, and the end of that day", u"2010/06/25", u"24:00:00", 5, 0},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    EXPECT_EQ(FindActionIndexByPosition(app, row.date, row.time, row.pageSize), row.page);
  }
}

}  // namespace
}  // namespace store_test
