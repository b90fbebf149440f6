// The rows of the day view and the list view, on a real data file.
#include <functional>

#include "views/day_view.h"
#include "views/diary.h"
#include "views/list_view.h"
#include "views/month_view.h"
#include "views/week_view.h"

namespace views {
namespace {

class Fills : public Diary {
 protected:
  static std::vector<std::u16string> FirstCells(const ViewRows& rows) {
    std::vector<std::u16string> texts;
    for (const auto& cells : rows.cells) texts.push_back(cells.front());
    return texts;
  }
};

using Texts = std::vector<std::u16string>;

TEST_F(Fills, AnEmptyDiaryHasNoRows) {
  for (const int mode : {1, 2}) {
    SCOPED_TRACE(mode);
    app.DayVwMltDayMode = mode;
    const ViewRows rows = SetDataDayView(app);
    EXPECT_TRUE(rows.cells.empty());
    EXPECT_FALSE(rows.abandoned);
    EXPECT_EQ(rows.FirstRowIndex, 0);
    EXPECT_EQ(rows.LastRowIndex, -1);
  }
  EXPECT_TRUE(SetDataListView(app).cells.empty());
  EXPECT_EQ(ListTitle(app), u"0/0 - 0");
}

TEST_F(Fills, TheSingleDayShowsWhatStartsOnIt) {
  Add(u"01", u"2010/06/22 22:00:00", u"2010/06/23 01:00:00");
  Add(u"02", u"2010/06/23 00:00:00", u"2010/06/23 24:00:00");
  const auto late = Add(u"03", u"2010/06/23 22:00:00", u"2010/06/24 01:00:00", u"駅", u"a\r\nb");
  Add(u"04", u"2010/06/24 00:00:00", u"2010/06/24 01:00:00");
  app.SelActId = late;
  const ViewRows rows = SetDataDayViewForSingle(app);
  EXPECT_EQ(FirstCells(rows), (Texts{u"06/23-06/23", u"22:00-01:00"}));
  EXPECT_EQ(rows.cells[1], (Texts{u"22:00-01:00", u"駅", u"cat", u"ab"}));
  EXPECT_EQ(rows.selectedRow, 1);
  EXPECT_EQ(rows.FirstRowIndex, 1);
  EXPECT_EQ(rows.LastRowIndex, 2);
  core::CurDay = 31;
  EXPECT_TRUE(SetDataDayViewForSingle(app).cells.empty()) << "June has no such day";
}

TEST_F(Fills, TheSpanningDayShowsWhatTouchesIt) {
  const auto first = Add(u"01", u"2010/06/20 08:00:00", u"2010/06/25 09:00:00");
  Add(u"02", u"2010/06/21 00:00:00", u"2010/06/22 24:00:00");
  Add(u"03", u"2010/06/22 22:00:00", u"2010/06/23 00:00:00");
  Add(u"04", u"2010/06/23 10:00:00", u"2010/06/23 11:00:00");
  Add(u"05", u"2010/06/23 00:00:00", u"2010/06/23 24:00:00");
  Add(u"06", u"2010/06/24 00:00:00", u"2010/06/24 01:00:00");
  const ViewRows rows = SetDataDayViewForMulti(app);
  EXPECT_EQ(FirstCells(rows),
            (Texts{u"06/20-06/25", u"06/22-00:00", u"06/23-06/23", u"10:00-11:00"}));
  EXPECT_EQ(rows.RowActIds.front(), first);
  EXPECT_EQ(rows.FirstRowIndex, 0);
  EXPECT_EQ(rows.LastRowIndex, 4);
}

TEST_F(Fills, TheFindNarrowsTheSpanningDay) {
  Add(u"01", u"2010/06/23 10:00:00", u"2010/06/23 11:00:00", u"駅");
  Add(u"02", u"2010/06/23 12:00:00", u"2010/06/23 13:00:00", u"家");
  app.FindWhere = u"f_nvcPlace like '%家%'";
  EXPECT_EQ(FirstCells(SetDataDayViewForMulti(app)), (Texts{u"12:00-13:00"}));
  app.FindWhere = u"f_nvcPlace like '%海%'";
  const ViewRows none = SetDataDayViewForMulti(app);
  EXPECT_TRUE(none.cells.empty());
  EXPECT_EQ(none.FirstRowIndex, 0) << "the day's range stands all the same";
  EXPECT_EQ(none.LastRowIndex, 1);
}

TEST_F(Fills, AVanishedRowEndsTheDayQuietly) {
  Add(u"01", u"2010/06/23 10:00:00", u"2010/06/23 11:00:00");
  const auto gone = Add(u"02", u"2010/06/23 12:00:00", u"2010/06/23 13:00:00");
  Add(u"03", u"2010/06/23 14:00:00", u"2010/06/23 15:00:00");
  store::dbSession().UserTable->Delete(gone);
  const ViewRows rows = SetDataDayViewForSingle(app);
  EXPECT_EQ(FirstCells(rows), (Texts{u"10:00-11:00"}));
  EXPECT_FALSE(rows.abandoned);
}

TEST_F(Fills, AFailedReadIsToldAndAbandonsTheFill) {
  Add(u"01", u"2010/06/23 10:00:00", u"2010/06/23 11:00:00");
  app.FindWhere = u"no sql";
  store::DisconnectDataFile();
  host.answers = {"ERROR|CMainWnd:SetDataDayViewForSingle Select Err (ln=1, hr=80004003)",
                  "ERROR|CMainWnd:SetDataDayViewForMulti Select Err (ln=1, hr=80004003)",
                  "ERROR|CMainWnd::SetDataListView Select Err (ln=1, hr=80004003)"};
  EXPECT_TRUE(SetDataDayViewForSingle(app).abandoned);
  EXPECT_TRUE(SetDataDayViewForMulti(app).abandoned);
  EXPECT_TRUE(SetDataListView(app).abandoned);
}

TEST_F(Fills, TheListTellsAnActionInALine) {
  Add(u"01", u"2010/06/22 00:00:00", u"2010/06/22 24:00:00", u"家");
  Add(u"02", u"2010/06/22 22:00:00", u"2010/06/23 01:00:00", u"駅", u"a\nb");
  app.DayVwMltDayMode = 1;
  EXPECT_EQ(FirstCells(SetDataListView(app)),
            (Texts{u"2010/06/22 22:00-01:00 駅:cat:ab", u"2010/06/22-06/22 家:cat:memo"}));
  app.DayVwMltDayMode = 2;
  EXPECT_EQ(SetDataListView(app).cells.front().front(), u"2010/06/22 22:00-06/23 駅:cat:ab");
}

TEST_F(Fills, TheListIsPagedFromTheNewest) {
  app.SeqViewRng = 2;
  for (const char16_t* number : {u"01", u"02", u"03", u"04", u"05"}) {
    Add(number, u"2010/06/23 10:" + std::u16string(number) + u":00", u"2010/06/23 11:00:00");
  }
  app.ListPage = 2;
  ViewRows rows = SetDataListView(app);
  EXPECT_EQ(ListTitle(app), u"3/3 - 5");
  EXPECT_EQ(rows.FirstRowIndex, 0);
  EXPECT_EQ(rows.cells.size(), 1u) << "the oldest page takes the remainder";
  app.ListPage = 1;
  app.SelActId = u"ID2010062300000002";
  rows = SetDataListView(app);
  EXPECT_EQ(rows.FirstRowIndex, 2);
  EXPECT_EQ(rows.selectedRow, 1) << "the position of the Action, which is row 1 only by chance";
  app.TotalCount = 120;
  EXPECT_EQ(ListTitle(app), u"2/3 - 5(120)");
}

TEST_F(Fills, ADayThatLastsShowsTheWaitCursor) {
  WeekData week;
  const std::function<void()> fills[] = {[&] { SetDataDayViewForSingle(app); },
                                         [&] { SetDataDayViewForMulti(app); },
                                         [&] { FillMonthList(app); }, [&] { SetDataListView(app); },
                                         [&] { DbReadWeekData(app, FirstDayOfWeek(), week); }};
  for (int n = 0; n < 3; ++n) InsertAction(u"2010/06/23 10:00:00");
  store::ReloadActionIndex(app);
  for (const uint32_t milliseconds : {0, 100}) {
    host.ticksPerLook = milliseconds;
    for (const auto& fill : fills) {
      SCOPED_TRACE(&fill - fills);
      host.waits = 0;
      fill();
      EXPECT_EQ(host.waits, milliseconds == 0 ? 0 : 1);
    }
  }
}

}  // namespace
}  // namespace views
