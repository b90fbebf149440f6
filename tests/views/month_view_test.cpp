// The month's cells, their counts and looks, and the lines of its list.
#include "views/month_view.h"

#include "views/diary.h"
#include "views/month_layout.h"
#include "views/selection.h"

namespace views {
namespace {

class Month : public Diary {
 protected:
  static std::vector<std::u16string> Lines(const ViewRows& rows) {
    std::vector<std::u16string> lines;
    for (const auto& cells : rows.cells) lines.push_back(cells.front());
    return lines;
  }
};

TEST_F(Month, OpensWithADayOfTheMonthBefore) {
  const std::tuple<int, int, const char16_t*, const char*> rows[] = {
      {2010, 6, u"2010/05/30", "begins on a Tuesday"},
      {2010, 8, u"2010/07/25", "begins on a Sunday: seven days before"},
      {2010, 12, u"2010/11/28", "over the year's end"},
  };
  for (const auto& [year, number, first, why] : rows) {
    SCOPED_TRACE(why);
    const MonthData month = CountMonth(app, year, number);
    EXPECT_EQ(core::DayText(month.MonthCells.front().day.value()), first);
  }
  EXPECT_FALSE(CountMonth(app, -1, -1).MonthCells[0].day) << "there is no such month";
}

TEST_F(Month, CountsWhatStartsOnADay) {
  Add(u"01", u"2010/01/30 10:00:00", u"2010/02/10 10:00:00");
  Add(u"02", u"2010/01/31 10:00:00", u"2010/01/31 11:00:00");
  Add(u"03", u"2010/02/01 00:00:00", u"2010/02/01 24:00:00");
  Add(u"04", u"2010/02/28 23:00:00", u"2010/03/01 01:00:00");
  Add(u"05", u"2010/02/28 23:30:00", u"2010/02/28 23:40:00");
  Add(u"06", u"2010/03/01 10:00:00", u"2010/03/01 11:00:00");
  core::SetCurDate(u"2010/02/03");
  const MonthData month = CountMonth(app, 2010, 2);
  EXPECT_EQ(month.MonthCells[0].count, 1) << "a day of January";
  EXPECT_EQ(month.MonthCells[1].count, 1);
  EXPECT_EQ(CellText(month.MonthCells[28]), u"2/28 2件");
  EXPECT_EQ(month.MonthCells[29].count, 1) << "a day of March";
  EXPECT_EQ(month.MonthTotal, 3) << "of February alone";
  EXPECT_EQ(MonthTitle(app, month), u"2010/02/03 - 3(6)");
}

TEST_F(Month, ACellLooksByItsDay) {
  const MonthData month = CountMonth(app, 2010, 6);
  const std::pair<int, CellKind> rows[] = {{0, CellKind::kOutside},  {2, CellKind::kWorkday},
                                           {6, CellKind::kSaturday}, {7, CellKind::kSunday},
                                           {24, CellKind::kToday},   {32, CellKind::kOutside}};
  for (const auto& [cell, kind] : rows)
    EXPECT_EQ(KindOfCell(month, cell, core::DayOf(host.now)), kind) << cell;
  EXPECT_EQ(CellOfCurDay(month), 24);
  core::CurDay = 31;
  EXPECT_EQ(CellOfCurDay(month), -1) << "June has 30 days";
  core::CurMonth = 7;
  EXPECT_EQ(KindOfCell(month, 24, core::DayOf(host.now)), CellKind::kWorkday)
      << "the date is in July now";
}

TEST_F(Month, TheListTellsTheDaysActions) {
  Add(u"01", u"2010/06/22 22:00:00", u"2010/06/23 01:00:00");
  Add(u"02", u"2010/06/23 00:00:00", u"2010/06/23 24:00:00", u"家", u"12345678901234567890");
  Add(u"03", u"2010/06/23 22:00:00", u"2010/06/24 01:00:00", u"駅", u"1234567890\r\n12345678901");
  Add(u"04", u"2010/06/24 00:00:00", u"2010/06/24 01:00:00");
  app.SelIndex = 2;
  ViewRows rows = FillMonthList(app);
  EXPECT_EQ(Lines(rows),
            (std::vector<std::u16string>{u"06/23-06/23 家::cat::12345678901234567890",
                                         u"22:00-01:00 駅::cat::12345678901234567890..."}));
  EXPECT_EQ(rows.selectedRow, 1);
  EXPECT_TRUE(SelectRow(app, rows, 0));
  EXPECT_EQ(app.SelIndex, 1);
  app.DayVwMltDayMode = 2;
  rows = FillMonthList(app);
  EXPECT_EQ(Lines(rows)[1], u"22:00-06/24 駅::cat::12345678901234567890...");
  store::DisconnectDataFile();
  host.answers = {"MainView:SetDataDayViewForSingle Select Err (ln=1, hr=80004003)"};
  EXPECT_TRUE(FillMonthList(app).abandoned);
}

TEST_F(Month, CellsLieInRowsOfSeven) {
  const std::tuple<Rect, bool, bool, Rect, int, int> rows[] = {
      {{0, 25, 240, 269}, true, false, {0, 167, 240, 127}, 21, 34},
      {{0, 25, 320, 189}, false, false, {0, 25, 160, 189}, 26, 22},  // beside the list
      {{0, 25, 320, 165}, false, true, {0, 25, 160, 165}, 22, 22},   // over the toolbar
      {{0, 49, 320, 141}, false, true, {0, 49, 160, 141}, 20, 22},   // and below the caption
  };
  for (const auto& [content, portrait, toolBar, list, rowHeight, columnWidth] : rows) {
    SCOPED_TRACE(rowHeight);
    const MonthLayout layout = LayoutMonth(content, portrait, toolBar);
    EXPECT_EQ(layout.list, list);
    EXPECT_EQ(layout.rowHeight, rowHeight);
    EXPECT_EQ(layout.columnWidth, columnWidth);
    for (const int cell : {0, 6, 7, 41}) {
      const Rect rect = CellRect(layout, cell);
      EXPECT_EQ(CellAt(layout, rect.x, rect.y), cell);
      EXPECT_EQ(CellAt(layout, rect.x + rect.width - 1, rect.y + rect.height - 1), cell);
    }
    EXPECT_EQ(CellAt(layout, 5, 14), -1) << "the weekdays";
    EXPECT_EQ(CellAt(layout, 7 * columnWidth, 20), -1) << "beside the last column";
    EXPECT_EQ(CellAt(layout, 5, 15 + 6 * rowHeight), -1) << "below the last row";
  }
}

}  // namespace
}  // namespace views
