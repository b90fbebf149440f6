#include "store/action_index.h"

#include <memory>
#include <random>

#include "store/store_fixture.h"

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

  static std::u16string Lines(const core::TextList& ids, const core::TextList& starts) {
    std::u16string lines;
    for (size_t i = 0; i < ids.Count(); ++i) (lines += ids.At(i)) += starts.At(i);
    return lines;
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
  EXPECT_EQ(app.ListPage, 0) << "the page after the last Action of the day";
  int position = 0;
  for (const std::u16string& id : {first, second, third, fourth, fifth, last}) {
    EXPECT_EQ(FindActionPosition(app, id), position++);
  }
  EXPECT_EQ(app.ActStarts.At(4), u"2010/06/23 12:00:00");
  EXPECT_EQ(FindActionPosition(app, u"ID'0000000000000099"), -104);
  const std::u16string unknown = InsertAction(u"2010/06/23 12:00:00");
  EXPECT_EQ(FindActionPosition(app, unknown), -1) << "a row that isn't in the index";
}

TEST_F(ActionIndexTest, AStartAtTheEndOfTheCurrentDayLeavesTheFirstPage) {
  CreateFile();
  const Field row[] = {{kActionColumns[kActId], u"ID0000000000000001"},
                       {kActionColumns[kStaDateTime], u"2010/06/23 24:00:00"}};
  ASSERT_EQ(dbSession().Session->Insert(u"t_UserData", row), S_OK);
  core::SetCurDate(u"2010/06/23");
  app.SeqViewRng = 10;
  EXPECT_EQ(ReloadActionIndex(app), -2);
  EXPECT_EQ(app.ListPage, 0);
}

TEST_F(ActionIndexTest, ReloadSeesEveryChangeWhoeverMadeIt) {
  CreateFile();
  for (int i = 0; i < 40; ++i) InsertAction(u"2010/06/23 12:00:00");
  const std::unique_ptr<Engine> other = Engine::Open(path);
  std::minstd_rand chance;
  for (int step = 0; step < 200; ++step) {
    const std::u16string start = u"2010/06/23 12:00:" + core::ZeroPadded(chance() % 60, 2);
    const std::u16string id = u"ID" + core::ZeroPadded(chance() % 60 + 1, 16);
    const Field start_{kActionColumns[kStaDateTime], start}, id_{kActionColumns[kActId], id};
    Engine& writer = chance() % 3 == 0 ? *other : *dbSession().Session;
    const int what = chance() % 50;
    SCOPED_TRACE(std::to_string(step) + ": " + std::to_string(what));
    if (what < 20) {
      writer.UpdateFirst(u"t_UserData", id_, {&start_, 1});
    } else if (what < 35) {
      writer.Insert(u"t_UserData", std::array{id_, start_});
    } else if (what < 49) {
      writer.DeleteFirst(u"t_UserData", id_);
    } else {
      writer.BeginTransaction();
      for (int i = 0; i < 300; ++i) writer.Insert(u"t_UserData", std::array{id_, start_});
      writer.Commit();
    }
    ASSERT_EQ(ReloadActionIndex(app), 0);
    SortedStarts fresh(*other);
    ASSERT_EQ(fresh.Refresh(), 0);
    ASSERT_EQ(Lines(app.ActIds, app.ActStarts), Lines(fresh.Ids(), fresh.Starts()));
  }
}

// Days of one month, equal starts, ends before their starts, and texts that are no moments.
class RandomDiary {
 public:
  static constexpr unsigned kDays = 30;

  std::u16string Day() {
    return u"2010/06/" + core::ZeroPadded(static_cast<int>(chance_() % kDays) + 1, 2);
  }
  std::optional<std::u16string> Moment() {
    static constexpr std::u16string_view kOdd[] = {u"", u"2010/06/15", u"2010/6/15 12:00:00", u"z"};
    const unsigned odd = chance_() % 60;
    if (odd == 0) return std::nullopt;
    if (odd <= std::size(kOdd)) return std::u16string(kOdd[odd - 1]);
    return Day() + u' ' + core::ZeroPadded(static_cast<int>(chance_() % 25), 2) + u":00:00";
  }
  // Inserts, changes or deletes one Action.
  void WriteOne(Engine& writer) {
    const std::u16string id = u"ID" + core::ZeroPadded(static_cast<int>(chance_() % 3000), 16);
    const auto start = Moment(), end = chance_() % 10 == 0 ? Moment() : start;
    const Field key{kActionColumns[kActId], id};
    const std::array row{key, Field{kActionColumns[kStaDateTime], start},
                         Field{kActionColumns[kEndDateTime], end}};
    const unsigned what = chance_() % 10;
    if (what < 6) {
      writer.Insert(u"t_UserData", row);
    } else if (what < 9) {
      writer.UpdateFirst(u"t_UserData", key, std::span(row).subspan(1));
    } else {
      writer.DeleteFirst(u"t_UserData", key);
    }
  }

 private:
  std::minstd_rand chance_;
};

std::vector<int64_t> RowsWhere(const std::u16string& condition) {
  std::unique_ptr<RowSet> rows;
  EXPECT_EQ(dbSession().Session->OpenRows(u"select rowid from t_UserData where " + condition +
                                              u" order by f_nchStaDateTime asc",
                                          rows),
            S_OK);
  std::vector<int64_t> found;
  while (rows && rows->Next({}) == S_OK) found.push_back(rows->Number(0));
  return found;
}

TEST_F(ActionIndexTest, WhatTouchesADayIsFoundAsIfAllRowsWereRead) {
  EXPECT_FALSE(TouchingCondition(u"2010/06/23 00:00:00", u"2010/06/23 24:00:00"));
  CreateFile();
  const std::unique_ptr<Engine> other = Engine::Open(path);
  RandomDiary diary;
  size_t touching = 0;
  for (int round = 0; round < 40; ++round) {
    Engine& writer = round % 3 == 2 ? *other : *dbSession().Session;
    writer.BeginTransaction();
    for (int i = round == 0 ? 4'000 : 100 * (round % 5); i > 0; --i) diary.WriteOne(writer);
    writer.Commit();
    const bool byDays = round % 4 == 0;
    const std::u16string from = diary.Day() + (byDays ? u"" : u" 00:00:00");
    const std::u16string to = diary.Day() + (byDays ? u"" : u" 24:00:00");
    SCOPED_TRACE(platform::ToUtf8(from + u' ' + to));
    const auto condition = TouchingCondition(from, to);
    ASSERT_TRUE(condition);
    const std::vector<int64_t> all =
        RowsWhere(u"f_nchStaDateTime < '" + to + u"' and f_nchEndDateTime >= '" + from + u"'");
    ASSERT_EQ(RowsWhere(*condition), all);
    touching += all.size();
  }
  EXPECT_GT(touching, 500u);
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

TEST_F(ActionIndexTest, LookupsFindTheFirstStartFromAMomentOn) {
  FillIndex({u"2010/06/23 10:02:00", u"2010/06/23 10:02:00", u"2010/06/24 10:00:00"});
  const std::tuple<const char*, std::u16string_view, std::u16string_view, int, int> rows[] = {
      {"before all", u"2010/06/22", u"24:00:00", 0, 0},
      {"at two equal ones", u"2010/06/23", u"10:02:00", 0, 2},
      {"between", u"2010/06/24", u"00:00:00", 2, 2},
      {"at the last", u"2010/06/24", u"10:00:00", 2, 3},
      {"after all", u"2010/06/24", u"24:00:00", 3, 3},
  };
  for (const auto& [why, date, time, atOrAfter, after] : rows) {
    SCOPED_TRACE(why);
    EXPECT_EQ(FindActionIndexLower(app, date, time, LowerMode::kAtOrAfter), atOrAfter);
    EXPECT_EQ(FindActionIndexLower(app, date, time, LowerMode::kAfter), after);
  }
}

TEST_F(ActionIndexTest, PagesAreCutFromTheNewestEnd) {
  FillIndex({u"2010/06/21 10:00:00", u"2010/06/22 10:00:00", u"2010/06/23 10:00:00",
             u"2010/06/24 10:00:00", u"2010/06/25 10:00:00"});
  app.ListRowsPerScreen = 2;
  const std::tuple<const char*, std::u16string_view, std::u16string_view, int, int> rows[] = {
      {"the newest page is full", u"2010/06/24", u"24:00:00", 2, 0},
      {"the one before it", u"2010/06/22", u"", 2, 1},
      {"the oldest takes the remainder", u"2010/06/20", u"", 2, 2},
      {"the last start of a page leads to the page after it", u"2010/06/23", u"10:00:00", 2, 0},
      {"0 asks the list control", u"2010/06/22", u"", 0, 1},
      {"no date, no page", u"", u"", 2, 0},
      {"one page, and the last start itself", u"2010/06/25", u"10:00:00", 5, -1},
      {"one page, and the end of that day", u"2010/06/25", u"24:00:00", 5, 0},
  };
  for (const auto& [why, date, time, pageSize, page] : rows) {
    SCOPED_TRACE(why);
    EXPECT_EQ(FindActionIndexByPosition(app, date, time, pageSize), page);
  }
}

}  // namespace
}  // namespace store_test
