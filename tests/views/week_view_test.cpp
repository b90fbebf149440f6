// The week's boxes: which Actions, in which pieces, in which lanes, and where they lie.
#include "views/week_view.h"

#include "views/diary.h"
#include "views/selection.h"
#include "views/week_layout.h"

namespace views {
namespace {

class Week : public Diary {
 protected:
  // "row:hh:mm:ss-hh:mm:ss" of every box.
  static std::vector<std::string> Pieces(const WeekData& week) {
    std::vector<std::string> texts;
    for (const WeekItem& item : week.WeekItems) {
      core::CalendarParts a, b;
      core::CalendarToParts(item.start, a);
      core::CalendarToParts(item.end, b);
      char text[48];
      std::snprintf(text, sizeof text, "%d:%02d:%02d:%02d-%02d:%02d:%02d", item.row, a.hour,
                    a.minute, a.second, b.hour, b.minute, b.second);
      texts.emplace_back(text);
    }
    return texts;
  }

  WeekData week;
};

TEST_F(Week, ShowsWhatStartsOnItsDaysInAPieceADay) {
  Add(u"01", u"2010/06/19 22:00:00", u"2010/06/20 10:00:00");
  Add(u"02", u"2010/06/20 00:00:00", u"2010/06/20 24:00:00");
  const auto night = Add(u"03", u"2010/06/22 23:00:00", u"2010/06/23 01:00:00", u"駅");
  Add(u"04", u"2010/06/24T12:00:00", u"2010/06/25_00:00:00");
  Add(u"05", u"2010/06/26 10:00:00", u"9999/12/31 10:00:00");
  Add(u"06", u"2010/06/27 00:00:00", u"2010/06/27 10:00:00");
  ReadWeek(app, week);
  std::vector<std::string> pieces = Pieces(week);
  ASSERT_LT(7u, pieces.size());
  EXPECT_GT(50u, pieces.size()) << "the rest of a very long Action is not made";
  pieces.resize(8);
  EXPECT_EQ(pieces, (std::vector<std::string>{"0:00:00:00-23:59:59", "2:23:00:00-23:59:59",
                                              "3:00:00:00-01:00:00", "4:12:00:00-23:59:59",
                                              "5:00:00:00-00:00:00", "6:10:00:00-23:59:59",
                                              "7:00:00:00-23:59:59", "8:00:00:00-23:59:59"}));
  for (const size_t piece : {1u, 2u}) {
    SCOPED_TRACE(piece);
    EXPECT_EQ(week.WeekItems[piece].id, night);
    EXPECT_EQ(week.WeekItems[piece].text, u"駅");
    EXPECT_EQ(week.WeekItems[piece].position, 2);
  }
  EXPECT_EQ(BoxText(week.WeekItems[1]), u"6/22 23:00-23:59 駅");
  EXPECT_EQ(week.WeekRowMax, (std::array<int, 7>{1, 0, 1, 1, 1, 1, 1}));
}

TEST_F(Week, HasNoBoxForADayBeforeIt) {
  Add(u"01", u"2010/1/011 10:00:00", u"2010/1/011 11:00:00");
  core::SetCurDate(u"2010/10/02");
  ReadWeek(app, week);
  ASSERT_EQ(week.WeekItems.size(), 1u) << "as a text it is in it";
  EXPECT_EQ(BoxRect(LayoutWeek(240, 200), week.WeekItems[0]), platform::Rect());
  EXPECT_EQ(NextBox(week.WeekItems, -1, BoxStep::kDown, 0), -1);
}

TEST_F(Week, Lanes) {
  struct Lane {
    int col, dup;
    bool operator==(const Lane&) const = default;
  };
  const std::tuple<const char*, std::vector<std::pair<int, int>>, std::vector<Lane>> cases[] = {
      {"one ends as the next starts", {{1, 2}, {2, 3}}, {{0, 1}, {0, 1}}},
      {"three alike", {{1, 2}, {1, 2}, {1, 2}}, {{1, 3}, {2, 3}, {0, 3}}},
      {"one within a long one", {{1, 9}, {3, 4}}, {{0, 1}, {1, 2}}},
      {"a chain", {{1, 5}, {2, 6}, {3, 7}}, {{0, 3}, {1, 2}, {2, 3}}},
      {"a lane is free again", {{1, 3}, {2, 6}, {4, 5}}, {{0, 2}, {1, 2}, {0, 2}}},
  };
  const core::Day first = FirstDayOfWeek();
  for (const auto& [why, hours, expected] : cases) {
    SCOPED_TRACE(why);
    WeekData data;
    for (const auto& [from, to] : hours) {
      WeekItem item;
      core::MakeCalendarValue(item.start, 2010, 6, 23, from, 0, 0);
      core::MakeCalendarValue(item.end, 2010, 6, 23, to, 0, 0);
      data.WeekItems.push_back(item);
    }
    CalcWeekRepetition(first, data);
    std::vector<Lane> lanes;
    for (const WeekItem& item : data.WeekItems) lanes.push_back({item.col, item.dup});
    EXPECT_EQ(lanes, expected);
  }
}

TEST_F(Week, IsReadAgainForAnotherDateAlone) {
  ReadWeek(app, week);
  EXPECT_TRUE(week.WeekItems.empty());
  const auto id = Add(u"01", u"2010/06/23 10:00:00", u"2010/06/23 11:00:00");
  ReadWeek(app, week);
  EXPECT_TRUE(week.WeekItems.empty()) << "the date has not moved";
  core::SetCurDate(u"2010/06/24");
  ReadWeek(app, week);
  EXPECT_EQ(Pieces(week), (std::vector<std::string>{"2:10:00:00-11:00:00"}));
  host.answers = {platform::Answer::kYes};
  EXPECT_TRUE(FxDeleteAction(app, id));
  ReadWeek(app, week);
  EXPECT_EQ(week.WeekItems.size(), 1u);
  core::CurDay = 31;  // of June
  EXPECT_EQ(FirstDayOfWeek().day, 27) << "round the month's last day";
}

TEST_F(Week, AFailedReadIsTold) {
  Add(u"01", u"2010/06/23 10:00:00", u"2010/06/23 11:00:00");
  store::DisconnectDataFile();
  host.answers = {"CMainWnd::DbReadWeekData Select Err (ln=1, hr=80004003)"};
  EXPECT_EQ(DbReadWeekData(app, FirstDayOfWeek(), week), -100);
}

TEST_F(Week, BoxesLieByTheirTimes) {
  Add(u"01", u"2010/06/23 00:00:00", u"2010/06/23 12:00:00");
  Add(u"02", u"2010/06/23 06:00:00", u"2010/06/23 18:00:00");
  Add(u"03", u"2010/06/23 20:00:00", u"2010/06/23 20:00:00");
  Add(u"04", u"2010/06/26 23:00:00", u"2010/06/27 01:00:00");
  ReadWeek(app, week);
  const WeekGrid grid = LayoutWeek(260, 286);  // 10 units an hour, and 6 units below the bands
  EXPECT_EQ(grid.bandHeight, 40);
  EXPECT_EQ(grid.divisions, (std::array<int, 6>{60, 100, 140, 180, 220, 260}));
  EXPECT_EQ(BoxRect(grid, week.WeekItems[0]), (Rect{20, 120, 120, 20}));
  EXPECT_EQ(BoxRect(grid, week.WeekItems[1]), (Rect{80, 140, 120, 20}));
  EXPECT_EQ(BoxRect(grid, week.WeekItems[2]).width, 2) << "without a length, yet to be seen";
  const std::tuple<int, int, int, int, const char*> points[] = {
      {85, 139, 0, 3, "the upper lane"},    {85, 140, 1, 3, "the lower lane"},
      {75, 140, -1, 3, "beside the boxes"}, {20, 280, -1, -1, "below the bands lies no box"},
      {255, 279, 3, 6, "the last band"},    {0, 0, -1, 0, "the strip belongs to its band"},
  };
  for (const auto& [x, y, box, band, why] : points) {
    SCOPED_TRACE(why);
    EXPECT_EQ(BoxAt(grid, week.WeekItems, x, y), box);
    EXPECT_EQ(BandAt(grid, y), band);
  }
  week.WeekItems[1].start = week.WeekItems[0].start;
  week.WeekItems[1].col = 0;
  EXPECT_EQ(BoxAt(grid, week.WeekItems, 85, 130), 1) << "of two the later lies on top";
}

}  // namespace
}  // namespace views
