#include "views/navigation.h"

#include <gtest/gtest.h>

#include "core/app_state.h"
#include "platform/utf.h"
#include "support/fake_host.h"

namespace views {
namespace {

class Navigation : public testing::Test {
 protected:
  testing_support::FakeHost host;
  core::CAppState app;
};

TEST_F(Navigation, StepsFromADayThatItsMonthLacksStartAtItsLast) {
  core::SetCurDate(u"2010/01/31");
  MoveMonth(1);
  EXPECT_EQ(core::CurDate(), u"2010/02/31") << "the day number is kept";
  GoToWeekday(1);
  EXPECT_EQ(core::CurDate(), u"2010/02/28") << "a Sunday";
  GoToWeekday(7);
  EXPECT_EQ(core::CurDate(), u"2010/03/06") << "the end of its week";
  core::SetCurrentDay({2010, 2, 31});
  MoveDate(1);
  EXPECT_EQ(core::CurDate(), u"2010/03/01");
  core::SetCurDate(u"9999/12/31");
  MoveDate(1);
  EXPECT_EQ(core::CurDate(), u"9999/12/31") << "the calendar's last day";
}

TEST_F(Navigation, MonthStepsWrapAndStopAt1900) {
  const std::tuple<const char16_t*, int, const char16_t*> rows[] = {
      {u"2010/12/05", 1, u"2011/01/05"},   {u"2010/01/05", -1, u"2009/12/05"},
      {u"2010/06/05", 12, u"2011/06/05"},  {u"1900/02/05", -1, u"1900/01/05"},
      {u"1900/01/05", -1, u"1900/01/05"},  {u"1900/06/05", -12, u"1900/06/05"},
      {u"1901/06/05", -12, u"1900/06/05"},
  };
  for (const auto& [from, months, to] : rows) {
    SCOPED_TRACE(platform::ToUtf8(from));
    core::SetCurDate(from);
    MoveMonth(months);
    EXPECT_EQ(core::CurDate(), to);
  }
}

TEST_F(Navigation, ListPages) {
  app.CurView = core::kViewList;
  app.IndexCount = 30;
  app.SeqViewRng = 10;
  EXPECT_EQ(LastPage(app), 2) << "which is full";
  TakeStep(app, Step::kBigForward);
  EXPECT_EQ(app.ListPage, 2);
  EXPECT_FALSE(TakeArrow(app, Arrow::kRight)) << "there is no older page";
  EXPECT_TRUE(TakeArrow(app, Arrow::kLeft));
  EXPECT_EQ(app.ListPage, 1);
  EXPECT_FALSE(TakeArrow(app, Arrow::kDown));
  TakeStep(app, Step::kBigBack);
  EXPECT_FALSE(TakeArrow(app, Arrow::kLeft));
  app.ListPage = 2;
  app.SeqViewRng = 0;
  app.ListRowsPerScreen = 20;
  KeepPageInRange(app);
  EXPECT_EQ(app.ListPage, 1) << "a screen of 20 rows leaves two pages";
  app.IndexCount = 0;
  app.ListRowsPerScreen = 1;
  EXPECT_EQ(LastPage(app), 0);
}

TEST_F(Navigation, AViewThatIsNotThereShowsTheDay) {
  EXPECT_EQ(ViewOnShow(core::kViewList), core::kViewList);
  for (const int curView : {0, 9, -1}) EXPECT_EQ(ViewOnShow(curView), core::kViewDay) << curView;
}

}  // namespace
}  // namespace views
