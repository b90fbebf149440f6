// The screen's commands without the screen, its texts and its layouts.
#include "totals/totals.h"

#include "platform/utf.h"
#include "totals/days.h"
#include "totals/totals_layout.h"
#include "views/diary.h"

namespace totals {
namespace {

class TotalsTest : public views::Diary {
 protected:
  TotalsTest() {
    Write(u"01", u"2010/06/23 09:00:00", u"2010/06/23 11:00:00", u"仕事", u"会社");
    Write(u"02", u"2010/06/23 11:00:00", u"2010/06/23 12:00:00", u"食事", u"会社－＞店");
    Write(u"03", u"2010/06/30 22:00:00", u"2010/07/01 01:00:00", u"仕事", u"自宅");
  }
  void Write(std::u16string_view number, std::u16string_view start, std::u16string_view end,
             std::u16string_view category, std::u16string_view place) {
    store::Action action;
    action[store::kActId] = u"ID20100623000000" + std::u16string(number);
    action[store::kStaDateTime] = start;
    action[store::kEndDateTime] = end;
    action[store::kCategory1] = category;
    action[store::kPlace] = place;
    action[store::kMemo] = u"a\r\nb";
    Add(action);
  }
  static std::string Bars(const CTotals& totals) {
    std::u16string told;
    for (const Bar& bar : totals.Bars())
      told += bar.name + u" " + HoursText(bar.group->time) + u" ";
    return platform::ToUtf8(told);
  }

  Choices choices;
};

TEST_F(TotalsTest, DrillsDownAndBack) {
  app.CurView = core::kViewMonth;
  CTotals totals(app, choices);
  EXPECT_EQ(totals.Title(), u"2010年6月");
  EXPECT_EQ(Bars(totals), "仕事 4:00 食事 1:00 ");
  EXPECT_TRUE(totals.HasColumns());
  totals.TapColumn(29);
  EXPECT_EQ(totals.Title(), u"2010/06/30(水)");
  EXPECT_EQ(Bars(totals), "仕事 2:00 ");
  totals.Step(1);
  totals.TapBar(0);
  ASSERT_EQ(totals.ActionCount(), 1);
  EXPECT_EQ(totals.ActionText(0), u"06/30 22:00-07/01 01:00 自宅 ab");
  EXPECT_TRUE(totals.GoBack()) << "closes the list";
  EXPECT_EQ(totals.OpenBar(), -1);
  EXPECT_TRUE(totals.GoBack());
  EXPECT_EQ(totals.Title(), u"2010年6月");
  EXPECT_FALSE(totals.GoBack());
}

TEST_F(TotalsTest, AnEditedActionChangesTheFiguresAndAFindStaysAPeriod) {
  app.CurView = core::kViewList;
  app.FindWhere = u"f_nvcCategory1 = '仕事'";
  CTotals totals(app, choices);
  EXPECT_EQ(totals.Title(), u"2010/06/23-07/01");
  EXPECT_EQ(Bars(totals), "仕事 5:00 ");
  totals.TapBar(0);
  ASSERT_TRUE(totals.SelectAction(1));
  EXPECT_EQ(app.SelActId, u"ID2010062300000003");
  store::Action action;
  ASSERT_EQ(Users().ReadById(app.SelActId, action), 0);
  action[store::kStaDateTime] = u"2010/06/22 22:00:00";
  action[store::kEndDateTime] = u"2010/06/22 23:00:00";
  ASSERT_EQ(Users().Update(app.SelActId, action), 0);
  ASSERT_EQ(store::ReloadActionIndex(app), 0);
  totals.ReadAgain();
  EXPECT_EQ(Bars(totals), "仕事 3:00 ");
  EXPECT_EQ(totals.OpenBar(), 0);
  EXPECT_EQ(totals.SelectedAction(), 0) << "it is the first now";
  ASSERT_EQ(Users().Delete(app.SelActId), 0);
  host.answers = {"既に削除されています"};
  EXPECT_FALSE(totals.SelectAction(0));
  totals.TapColumn(1);
  EXPECT_EQ(totals.Title(), u"2010/06/23(水)");
  EXPECT_EQ(Bars(totals), "仕事 2:00 ") << "of what was found";
  EXPECT_EQ(totals.Summarized().note, u"検索結果のみ");
  EXPECT_EQ(totals.Summarized().rest, u"それ以外の時間 22:00");
  totals.ChooseKind(PeriodKind::kDay);
  EXPECT_EQ(Bars(totals), "仕事 2:00 食事 1:00 ");
  EXPECT_EQ(totals.Kinds().back(), PeriodKind::kFind);
  totals.TapBar(0);
  store::DisconnectDataFile();
  host.answers = {"Select Err"};
  totals.ReadAgain();
  EXPECT_EQ(totals.ActionText(0), u"") << "the list isn't shown again yet";
}

TEST_F(TotalsTest, ChoosesPeriodsAndLevels) {
  CTotals totals(app, choices);
  totals.ChooseKind(PeriodKind::kYear);
  totals.ChooseKind(PeriodKind::kWeek);
  EXPECT_EQ(totals.Title(), u"2010/06/20-06/26") << "the one of today";
  totals.ChooseKind(PeriodKind::kFromTo);
  totals.SetLast({2010, 6, 30});
  EXPECT_EQ(Bars(totals), "仕事 4:00 食事 1:00 ");
  totals.GoToDay({2010, 6, 25});
  EXPECT_EQ(totals.Title(), u"2010/06/25-07/05");
  totals.ChooseKind(PeriodKind::kAll);
  totals.Step(1);
  totals.GoToToday();
  EXPECT_EQ(totals.Title(), u"2010/06/23-07/01");
  totals.ChooseInnerLevel(By::kPlace);
  EXPECT_EQ(Bars(totals), "仕事 5:00 自宅 3:00 会社 2:00 食事 1:00 移動 1:00 ");
  totals.ChooseLevel(By::kPlace);
  EXPECT_EQ(choices.within, By::kNothing);
  EXPECT_EQ(Bars(totals), "自宅 3:00 会社 2:00 移動 1:00 会社－＞店 1:00 ");
  totals.SetMovementsApart(false);
  EXPECT_EQ(Bars(totals), "会社 3:00 自宅 3:00 店 1:00 ");
}

TEST_F(TotalsTest, TheTableGoesOut) {
  Write(u"04", u"2010/06/23 12:00:00", u"2010/06/23 12:20:00", u"=a,\"b\"\nc", u"");
  app.CurView = core::kViewWeek;
  CTotals totals(app, choices);
  EXPECT_EQ(totals.ClipboardText(),
            u"分類1\t内訳\t時間\t時間(小数)\t割合\t件数\t1日平均\t1日平均(小数)\n"
            u"仕事\t\t2:00\t2.00\t60.0%\t1\t0:17\t0.29\n"
            u"食事\t\t1:00\t1.00\t30.0%\t1\t0:08\t0.14\n"
            u"'=a,\"b\" c\t\t0:20\t0.33\t10.0%\t1\t0:02\t0.05\n");
  const std::u16string file = folder.Path(u"t.csv");
  host.answers = {"集計を保存しました。"};
  totals.WriteCsv(file);
  const std::string bytes = testing_support::ReadWholeFile(folder.HostPath("t.csv"));
  EXPECT_TRUE(bytes.starts_with("\xEF\xBB\xBF分類1,内訳,時間,")) << bytes;
  EXPECT_TRUE(bytes.ends_with("\r\n\"'=a,\"\"b\"\"\nc\",,0:20,0.33,10.0%,1,0:02,0.05\r\n"))
      << bytes;
  host.answers = {{"既に存在します", platform::Answer::kNo}, "オープンに失敗しました"};
  totals.WriteCsv(file);
  totals.WriteCsv(folder.Path(u"none\\t.csv"));
  EXPECT_EQ(totals.AskForCsv().StartName, u"集計 2010-06-20-06-26.csv");
  app.FindWhere = u"0";
  app.CurView = core::kViewList;
  EXPECT_EQ(CTotals(app, choices).AskForCsv().StartName, u"集計.csv");
}

TEST(TotalsLayout, NothingOverlapsOrLeavesTheScreen) {
  const testing_support::FakeHost host;
  for (const auto& [width, height] : {std::pair(240, 294), {320, 214}, {480, 640}, {240, 174}}) {
    for (int which = 0; which < 32; ++which) {
      SCOPED_TRACE(std::to_string(width) + " " + std::to_string(which));
      const Shown shown{(which & 1) != 0, (which & 16) != 0, (which & 2) != 0,
                        (which & 4) != 0, (which & 8) != 0,  60};
      const std::vector<platform::PlacedControl> controls = LayOutTotals(width, height, shown);
      for (const auto& [id, rect] : controls) {
        EXPECT_TRUE(rect.x >= 0 && rect.y >= 0 && rect.x + rect.width <= width &&
                    rect.y + rect.height <= height && rect.width > 0 && rect.height > 0)
            << id;
        for (const auto& [other, at] : controls) {
          const bool isApart = rect.x + rect.width <= at.x || at.x + at.width <= rect.x ||
                               rect.y + rect.height <= at.y || at.y + at.height <= rect.y;
          EXPECT_TRUE(isApart || id == other) << id << " " << other;
        }
      }
    }
  }
}

TEST(TotalsLayout, BarsAndColumnsAreAsLongAsTheirTimes) {
  const testing_support::FakeHost host;
  const BarRow longest = LayOutBar(240, 0, false, 100, 100, {80, 60});
  EXPECT_EQ(LayOutBar(240, 3, false, 50, 100, {80, 60}).bar.width, longest.bar.width / 2);
  const BarRow inner = LayOutBar(240, 1, true, 100, 100, {80, 60});
  EXPECT_EQ(inner.bar.width, longest.bar.width);
  EXPECT_LT(inner.bar.x + inner.bar.width, inner.details.x);
  EXPECT_LT(inner.name.x + inner.name.width, inner.figures.x);
  EXPECT_EQ(LayOutBar(240, 0, true, 0, 0, {80, 60}).bar.width, 1);
  const ColumnsGrid grid = LayOutColumns(240, 100, 31, 8, 20, 24 * kHourSeconds);
  const Rect half = LayOutSegment(grid, 3, 12 * kHourSeconds, 12 * kHourSeconds);
  EXPECT_EQ(half.y, grid.chart.y);
  EXPECT_EQ(half.height, grid.chart.height - grid.chart.height / 2);
  EXPECT_EQ(grid.lines.size(), 4u);
  EXPECT_EQ(LayOutColumns(240, 100, 12, 8, 20, 501 * kHourSeconds).lines,
            (std::vector{200 * kHourSeconds, 400 * kHourSeconds}));
  EXPECT_EQ(grid.columns[30].x + grid.columns[30].width, grid.chart.x + grid.chart.width);
  EXPECT_GE(grid.labelStep * grid.columns[0].width, 20);
  EXPECT_EQ(LayOutSegment(LayOutColumns(240, 100, 2, 0, 20, 0), 0, 0, 0).height, 0);
}

}  // namespace
}  // namespace totals
