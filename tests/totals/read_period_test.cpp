// A year of the sample diary beside sums that SQL makes, and what only the data file knows.
#include "totals/read_period.h"

#include <fstream>

#include "exchange/find.h"
#include "recorder/recorder_state.h"
#include "sample/sample_diary.h"
#include "store/action_index.h"
#include "store/store_fixture.h"
#include "totals/days.h"

namespace totals {
namespace {

using store_test::Readable;

// Starts and ends in seconds, cut at a year's edges; the running one ends now.
constexpr char16_t kCutRows[] =
    u"with moments as (select f_nvcCategory1 as name,"
    u" unixepoch(replace(substr(f_nchStaDateTime,1,10),'/','-')) as day,"
    u" substr(f_nchStaDateTime,12,2)*3600 + substr(f_nchStaDateTime,15,2)*60 as clock,"
    u" unixepoch(replace(substr(f_nchEndDateTime,1,10),'/','-'))"
    u" + substr(f_nchEndDateTime,12,2)*3600 + substr(f_nchEndDateTime,15,2)*60 as e,"
    u" f_nchActId in (select f_nvcValue from t_TextData where f_nvcItem='RcdrPreActId') as runs"
    u" from t_UserData), cut as materialized (select name, max(day + clock, "
    u"unixepoch('2026-01-01')) as s,"
    u" min(case runs when 1 then unixepoch('2026-11-14 15:30:00') else e end,"
    u" unixepoch('2027-01-01')) as e from moments) ";

class ReadPeriodTest : public store_test::StoreTest {
 protected:
  Totals Read(const Period& period, const Choices& choices = {}, const std::u16string& find = {}) {
    platform::LateWait wait;
    EXPECT_TRUE(ReadPeriod(app, period, find, choices, rows, wait));
    return Sum(rows, (period.IsBounded() ? period.Moments() : rows.Days()), choices);
  }
  // "name seconds" of each row of a select.
  static std::vector<std::string> Select(const std::u16string& sql) {
    std::unique_ptr<store::RowSet> found;
    std::vector<std::string> told;
    const std::array<std::u16string_view, 2> columns = {u"name", u"time"};
    std::array<std::optional<std::u16string>, 2> row;
    EXPECT_EQ(store::dbSession().Session->OpenRows(kCutRows + sql, found), store::S_OK);
    EXPECT_EQ(found->Bind(columns), store::S_OK);
    while (found->Next(row) == store::S_OK)
      told.push_back(Readable(row[0]) + " " + Readable(row[1]));
    return told;
  }
  std::vector<std::string> Told(const Totals& sums, By by) const {
    std::vector<std::string> told;
    for (const Group& group : sums.groups) {
      told.push_back(platform::ToUtf8(NameOf(rows, by, group.key.outer)) + " " +
                     std::to_string(group.time));
    }
    return told;
  }

  Rows rows{u"－＞"};
};

TEST_F(ReadPeriodTest, AYearIsTheSameAsTheSumsOfSql) {
  host.now = {2026, 11, 14, 15, 30, 0};
  ASSERT_EQ(sample::MakeDiary(folder.HostPath()), "");
  app.DataFile = path;
  ASSERT_EQ(datafile::OpenDataFile(app), 0);
  const Period year = PeriodOf(PeriodKind::kYear, Day(u"2026/11/14"));
  EXPECT_EQ(Told(Read(year), By::kCategory1),
            Select(u"select ifnull(name,'(なし)') as name, sum(e - s) as time from cut where e > s "
                   u"group by 1 order by 2 desc"));
  EXPECT_EQ(
      Told(Read(year, {By::kHour}), By::kHour),
      Select(u", hours(h) as (select 0 union all select h + 1 from hours where h < 23),"
             u" days(d) as (select 0 union all select d + 1 from days where d < 3)"
             u"select h || '時' as name, sum(max(0, min(e, s - s % 86400 + d * 86400 + h * 3600"
             u" + 3600) - max(s, s - s % 86400 + d * 86400 + h * 3600))) as time"
             u" from cut, hours, days where e > s group by h order by h"));
  EXPECT_EQ(Select(u"select 'written' as name, sum(max(0, e - max(s, ifnull(before, 0)))) as time "
                   u"from (select s, e, max(e) over (order by s rows between unbounded preceding "
                   u"and 1 preceding) as before from cut where e > s)"),
            std::vector{"written " + std::to_string(Read(year).written)});
}

TEST_F(ReadPeriodTest, TheRunningActionIsFoundOnALaterDayAndCountsOnce) {
  CreateFile();
  const auto id = InsertAction(u"2010/06/22 23:00:00");
  InsertAction(u"2010/06/22 22:00:00", u"2010/06/22 23:00:00");
  ASSERT_EQ(store::dbSession().TextTable->SetText(recorder::kPreActIdKey, id), 0);
  const Totals today = Read(PeriodOf(PeriodKind::kDay, Day(u"2010/06/23")));
  EXPECT_TRUE(today.runs);
  EXPECT_EQ(today.sum, 10 * kHourSeconds + 45 * kMinuteSeconds + 30);
  const Totals all = Read({PeriodKind::kAll});
  EXPECT_EQ(all.count, 2);
  EXPECT_EQ(all.Days(), 2);
  const auto texts = ReadTexts(rows.All()[0].id);
  ASSERT_TRUE(texts);
  EXPECT_EQ(texts->id, id);
  app.RcdrLoaded = true;
  EXPECT_FALSE(Read({PeriodKind::kAll}).runs) << "it has ended since";
}

TEST_F(ReadPeriodTest, AFindIsAPeriodThatStays) {
  CreateFile();
  InsertAction(u"2010/06/22 22:00:00", u"2010/06/22 23:00:00", u"cafe");
  InsertAction(u"2010/06/23 22:00:00", u"2010/06/23 23:00:00", u"home");
  ASSERT_EQ(exchange::FindActions(app, {}, u"cafe", exchange::kFindInPlace), 1);
  EXPECT_EQ(Read({PeriodKind::kFind}, {}, *app.FindWhere).count, 1);
  EXPECT_EQ(Read({PeriodKind::kFind}, {By::kHour}, *app.FindWhere).count, 1);
  EXPECT_EQ(Read(PeriodOf(PeriodKind::kDay, Day(u"2010/06/23")), {}, *app.FindWhere).count, 0);
  EXPECT_EQ(Read({PeriodKind::kAll}).count, 2);
  EXPECT_EQ(app.IndexCount, 1);
  store::DisconnectDataFile();
  host.answers = {"Select Err (ln=1"};
  platform::LateWait wait;
  EXPECT_FALSE(ReadPeriod(app, {PeriodKind::kAll}, u"", {}, rows, wait));
}

TEST_F(ReadPeriodTest, WhatLacksAMomentIsLeftOutOfThePeriodOfItsOther) {
  CreateFile();
  for (int k = 0; k < 3; ++k) InsertAction(u"2010/06/22 22:00:00", u"2010/06/22 23:00:00");
  for (const auto* change : {u"f_nchStaDateTime = null where rowid < '3'",
                             u"f_nchEndDateTime = 'someday' where rowid > '1'"}) {
    ASSERT_EQ(
        store::dbSession().Session->Change(u"update t_UserData set " + std::u16string(change)), 0);
  }
  EXPECT_EQ(Read(PeriodOf(PeriodKind::kDay, Day(u"2010/06/22"))).leftOut, 2);
  EXPECT_EQ(Read(PeriodOf(PeriodKind::kDay, Day(u"2010/06/23"))).leftOut, 0);
  EXPECT_EQ(Read({PeriodKind::kAll}).leftOut, 3);
}

TEST_F(ReadPeriodTest, ReachesToTheLastDayThereIs) {
  CreateFile();
  InsertAction(u"2010/06/22 22:00:00", u"2010/06/22 23:00:00");
  InsertAction(u"9999/12/31 22:00:00", u"9999/12/31 23:00:00");
  const Period toTheLast = To(PeriodOf(PeriodKind::kMonth, Day(u"2010/06/22")), Day(u"9999/12/31"));
  EXPECT_EQ(Read(toTheLast).sum, 2 * kHourSeconds);
}

TEST_F(ReadPeriodTest, AKeptIndexThatIsDamagedCountsForNothing) {
  CreateFile();
  constexpr int kKept = 6000;
  ASSERT_EQ(store::dbSession().Session->BeginTransaction(), store::S_OK);
  for (int k = 0; k < kKept; ++k) InsertAction(u"2010/06/22 22:00:00", u"2010/06/22 23:00:00");
  ASSERT_EQ(store::dbSession().Session->Commit(), store::S_OK);
  ASSERT_EQ(store::LoadActionIndex(app), 0);
  store::DisconnectDataFile();
  std::fstream kept(hostPath + "-index", std::ios::binary | std::ios::in | std::ios::out);
  kept.seekp(60'000);
  ASSERT_TRUE(kept.put('!'));
  kept.close();
  ASSERT_EQ(store::ConnectDataFile(path), store::S_OK);
  ASSERT_EQ(store::LoadActionIndex(app), 0);
  EXPECT_EQ(Read({PeriodKind::kAll}, {By::kHour}).sum, kKept * kHourSeconds);
}

}  // namespace
}  // namespace totals
