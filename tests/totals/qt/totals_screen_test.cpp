// The screen by taps and keys.
#include "totals/qt/totals_screen.h"

#include <QClipboard>

#include "support/screen_driver.h"
#include "views/diary.h"

namespace totals {
namespace {

class TotalsScreen : public views::Diary, protected testing_support::ScreenDriver {
 protected:
  TotalsScreen() {
    Add(u"01", u"2010/06/23 09:00:00", u"2010/06/23 11:00:00", u"会社");
    Add(u"02", u"2010/06/24 09:00:00", u"2010/06/24 10:00:00", u"自宅");
    app.CurView = core::kViewMonth;
    choices.by = By::kPlace;
  }
  int DriveTotals(const std::function<void()>& drive) {
    CTotalsDlg dialog(&window, app, choices);
    const int result = Drive(dialog, drive);
    edited = dialog.HasEdited();
    return result;
  }

  Choices choices;
  bool edited = false;
};

TEST_F(TotalsScreen, KeysAloneOpenAnActionAndComeBackToRightFigures) {
  host.now = {2010, 6, 24, 9, 30, 0};
  DriveTotals([&] {
    auto* list = Find<QListView>("1619");
    EXPECT_TRUE(list->isHidden());
    Press(Qt::Key_Down);
    Press(Qt::Key_Return);
    EXPECT_EQ(list->model()->index(0, 0).data().toString().toStdString(),
              "06/24 09:00-10:00 cat memo");
    Next([&] {
      Click("1111");  // ends now
      Click("1102");
    });
    Press(Qt::Key_Return);
    EXPECT_EQ(Find<QLabel>("1612")->text().toStdString(), "合計 2:30");
    EXPECT_EQ(window.focusWidget(), list);
    Press(Qt::Key_Escape);
    EXPECT_TRUE(list->isHidden());
    Press(Qt::Key_Escape);
  });
  EXPECT_TRUE(edited);
}

TEST_F(TotalsScreen, TapsMoveThePeriod) {
  DriveTotals([&] {
    auto* columns = Find<ColumnsCanvas>("1617");
    const std::vector<touch::Spot> spots = columns->Spots();
    ASSERT_EQ(spots.size(), 30u);
    EXPECT_EQ(spots[22].name.toStdString(), "2010/06/23(水) 2:00 会社 2:00");
    Tap(columns, spots[23].place.center());
    EXPECT_EQ(Shown("1601"), "2010/06/24(木)");
    EXPECT_TRUE(columns->isHidden());
    Click("1605");
    auto* bars = Find<BarsCanvas>("bars");
    EXPECT_EQ(bars->Spots()[0].name.toStdString(), "会社 2:00 100.0% 1件");
    Tap(bars, {20, 10});
    EXPECT_EQ(Find<QLabel>("1618")->text().toStdString(), "会社");
    EXPECT_EQ(Find<QLabel>("1621")->text().toStdString(), "1件");
    screen->findChild<QAction*>("33221")->trigger();
    EXPECT_TRUE(QGuiApplication::clipboard()->text().contains("\t2:00\t"));
    Click("33220");
    Click("33220");
    EXPECT_EQ(Shown("1601"), "2010年6月");
    EXPECT_EQ(columns->CurrentColumn(), 22);
    Click("33220");
  });
  EXPECT_FALSE(edited);
}

TEST_F(TotalsScreen, TheDaysOfFromToAreChosenByTheCalendar) {
  DriveTotals([&] {
    auto* kind = Find<QComboBox>("1609");
    EXPECT_EQ(kind->count(), 6) << "there is no find";
    emit kind->activated(5);
    EXPECT_TRUE(Find("1601")->isHidden());
    Click("1603");
    for (const int key : {Qt::Key_Left, Qt::Key_Return}) Press(key);
    EXPECT_EQ(Shown("1603"), "2010/06/29");
    Click("1602");
    Press(Qt::Key_Right);
    Press(Qt::Key_Escape);
    EXPECT_EQ(Shown("1602"), "2010/06/01") << "given up";
    Press(Qt::Key_Escape);
  });
}

TEST_F(TotalsScreen, AFindHasNoStepsAndTheDiaryKeepsIt) {
  app.FindWhere = u"f_nvcPlace = '自宅'";
  app.CurView = core::kViewList;
  DriveTotals([&] {
    EXPECT_EQ(Find<QComboBox>("1609")->currentText(), QStringLiteral("検索結果"));
    EXPECT_TRUE(Find("1605")->isHidden());
    EXPECT_TRUE(Find<QWidget>("1617")->isHidden()) << "one day has no columns";
    Press(Qt::Key_Space);
    EXPECT_EQ(Find<QListView>("1619")->model()->rowCount(), 1);
    Press(Qt::Key_Space);
    EXPECT_TRUE(Find<QListView>("1619")->isHidden());
    Press(Qt::Key_Escape);
  });
  EXPECT_TRUE(app.FindWhere);
}

}  // namespace
}  // namespace totals
