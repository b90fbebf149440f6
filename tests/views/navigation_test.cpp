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

TEST_F(Navigation, DateStepsFollowTheCalendar) {
  const struct {
    const char16_t* from;
    int days;
    const char16_t* to;
    const char* why;
  } rows[] = {
      {u"2012/03/01", -1, u"2012/02/29", "back into a leap day"},
      {u"2010/03/07", -7, u"2010/02/28", "a week back"},
      {u"1900/01/01", -1, u"1899/12/31", "dates do not stop at 1900"},
      {u"9999/12/31", 1, u"9999/12/31", "the calendar's last day"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    ASSERT_EQ(0, core::SetCurDate(row.from));
    MoveDate(row.days);
    EXPECT_EQ(row.to, core::CurDate());
  }
}

TEST_F(Navigation, StepsFromADayThatItsMonthLacksStartAtItsLast) {
  core::SetCurDate(u"2010/01/31");
  MoveMonth(1);
  EXPECT_EQ(u"2010/02/31", core::CurDate()) << "the day number is kept";
  GoToWeekday(1);
  EXPECT_EQ(u"2010/02/28", core::CurDate()) << "a Sunday";
  core::CurDay = 31;
  MoveDate(1);
  EXPECT_EQ(u"2010/03/01", core::CurDate());
}

TEST_F(Navigation, MonthStepsWrapAndStopAt1900) {
  const struct {
    const char16_t* from;
    int months;
    const char16_t* to;
  } rows[] = {
      {u"2010/12/05", 1, u"2011/01/05"},   {u"2010/01/05", -1, u"2009/12/05"},
      {u"2010/06/05", 12, u"2011/06/05"},  {u"1900/02/05", -1, u"1900/01/05"},
      {u"1900/01/05", -1, u"1900/01/05"},  {u"1900/06/05", -12, u"1900/06/05"},
      {u"1901/06/05", -12, u"1900/06/05"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(platform::ToUtf8(row.from));
    core::SetCurDate(row.from);
    MoveMonth(row.months);
    EXPECT_EQ(row.to, core::CurDate());
  }
}

TEST_F(Navigation, WeekdaysBelongToTheWeekFromSundayOn) {
  core::SetCurDate(u"2010/06/23");  // a Wednesday
  GoToWeekday(1);
  EXPECT_EQ(u"2010/06/20", core::CurDate());
  GoToWeekday(7);
  EXPECT_EQ(u"2010/06/26", core::CurDate());
}

TEST_F(Navigation, ListPages) {
  app.CurView = core::kViewList;
  app.IndexCount = 30;
  app.SeqViewRng = 10;
  EXPECT_EQ(2, LastPage(app)) << "which is full";
  TakeStep(app, Step::kBigForward);
  EXPECT_EQ(2, app.ListPage);
  EXPECT_FALSE(TakeArrow(app, Arrow::kRight)) << "there is no older page";
  EXPECT_TRUE(TakeArrow(app, Arrow::kLeft));
  EXPECT_EQ(1, app.ListPage);
  EXPECT_FALSE(TakeArrow(app, Arrow::kDown));
  TakeStep(app, Step::kBigBack);
  EXPECT_FALSE(TakeArrow(app, Arrow::kLeft));
  app.ListPage = 2;
  app.SeqViewRng = 0;
  app.ListRowsPerScreen = 20;
  KeepPageInRange(app);
  EXPECT_EQ(1, app.ListPage) << "a screen of 20 rows leaves two pages";
  app.IndexCount = 0;
  app.ListRowsPerScreen = 1;
  EXPECT_EQ(0, LastPage(app));
}

TEST_F(Navigation, ArrowsInTheDayViewMoveSideways) {
  core::SetCurDate(u"2010/06/23");
  EXPECT_FALSE(TakeArrow(app, Arrow::kUp));
  EXPECT_FALSE(TakeArrow(app, Arrow::kDown));
  EXPECT_TRUE(TakeArrow(app, Arrow::kLeft));
  EXPECT_EQ(u"2010/06/22", core::CurDate());
}

TEST_F(Navigation, AViewThatIsNotThereShowsTheDay) {
  EXPECT_EQ(core::kViewList, ViewOnShow(core::kViewList));
  for (const int curView : {0, 9, -1}) EXPECT_EQ(core::kViewDay, ViewOnShow(curView)) << curView;
}

}  // namespace
}  // namespace views
