#include "edit/qt/edit_action_screen.h"

#include <QAction>
#include <QCalendarWidget>
#include <QLabel>
#include <QLineEdit>

#include "edit/edit_fixture.h"
#include "support/screen_driver.h"
#include "touch/qt/inertial_list_view.h"

namespace edit {
namespace {

class EditActionScreen : public edit_test::EditTest, protected testing_support::ScreenDriver {
 protected:
  // Runs the screen on the noon Action and drives it.
  int Run(const std::function<void()>& drive) {
    app.SelIndex = 1;
    return Drive(CEditActionDlg(&window, app, kOpenChange), drive);
  }
};

TEST_F(EditActionScreen, WithListsTimesAndValuesHaveScreensOfTheirOwn) {
  app.ItmSelMode = 2;
  Run([&] {
    Next([&] {
      EXPECT_EQ(screen->findChild<QWidget*>(QStringLiteral("extra")), nullptr);
      Find<touch::INERT_LIST_VIEW>("hour")->List().SetTop(11);
      Click("1");
    });
    Click("1110");
    EXPECT_EQ(Shown("1110"), "14:00");
    Next([&] { Click("extra"); });
    Click("1106");
    EXPECT_EQ(Shown("1106"), "<終日>");
    EXPECT_FALSE(Find("1110")->isEnabled());
    NextTyped("value", "公園");
    Click("1113");
    NextTyped("value", "遊び", "2");
    Click("1115");
    Click("1102");
  });
  EXPECT_EQ(Stored(noon, store::kStaDateTime), "2010/06/23 00:00:00");
  EXPECT_EQ(Stored(noon, store::kEndDateTime), "2010/06/23 24:00:00");
  EXPECT_EQ(Stored(noon, store::kPlace), "公園");
  EXPECT_EQ(Stored(noon, store::kCategory1), "") << "the choice was given up";
  EXPECT_EQ(app.PlaceHistory.Entries().front(), u"公園");
}

TEST_F(EditActionScreen, FieldsOpenTheirEditorsInPlace) {
  app.PlaceName = u"行き先";
  Run([&] {
    EXPECT_EQ(Find<QLabel>("1112")->text(), QStringLiteral("行き先"));
    EXPECT_EQ(Shown("1110"), "13:00");
    EXPECT_EQ(Shown("1113"), "レストラン");
    EXPECT_TRUE(Find("5007")->isEnabled());
    EXPECT_TRUE(Find<QAction>("32784")->isEnabled());
    Click("1109");
    Press(Qt::Key_Right);
    Press(Qt::Key_Escape);
    EXPECT_EQ(Shown("1109"), "2010/06/23") << "a dropped calendar chooses nothing";
    Click("1109");
    screen->findChild<QCalendarWidget*>()->setDateEditAcceptDelay(0);
    Press(Qt::Key_Down);
    Press(Qt::Key_2, QStringLiteral("2"));
    Click("1113");
    EXPECT_EQ(Shown("1109"), "2010/06/30") << "a command takes the selected day first";
    Press(Qt::Key_X, QStringLiteral("公園"));
    QCoreApplication::processEvents();
    Press(Qt::Key_Return);
    EXPECT_EQ(Shown("1113"), "公園") << "no digit typed into the calendar comes here";
    Click("1119");
    EXPECT_TRUE(Find<QWidget>("1124")->isVisible()) << "the list of memos";
    Click("1120");
    EXPECT_TRUE(Find<QWidget>("1123")->isVisible()) << "the same in several lines";
    Press(Qt::Key_A, QStringLiteral("!"));
    Press(Qt::Key_Escape);  // keeps what was typed
    Click("1102");
  });
  EXPECT_EQ(Stored(noon, store::kPlace), "公園");
  EXPECT_EQ(Stored(noon, store::kMemo), "!");
}

TEST_F(EditActionScreen, ClosesWithItsWindow) {
  Run([&] {
    Click("1115");
    Press(Qt::Key_X, QStringLiteral("食事"));
    auto& dialog = static_cast<CEditActionDlg&>(*screen);
    host.answers = {platform::Answer::kCancel};
    EXPECT_FALSE(dialog.OnWindowClosing());
    host.answers = {platform::Answer::kNo};
    EXPECT_TRUE(dialog.OnWindowClosing());
  });
  EXPECT_EQ(Run([&] { Click("2"); }), platform::qt::kResultCancel);
  Run([&] { Click("1103"); });
  EXPECT_TRUE(window.isVisible()) << "until the screen has ended";
  QApplication::processEvents();
  EXPECT_FALSE(window.isVisible());
}

}  // namespace
}  // namespace edit
