// The finger's pickers, which cover the screen.
#include <gtest/gtest.h>

#include <QAccessible>

#include "pickers/qt/time_select_screen.h"
#include "pickers/qt/value_select_screen.h"
#include "support/fake_host.h"
#include "support/screen_driver.h"

namespace pickers {
namespace {

class Pickers : public testing::Test, protected testing_support::ScreenDriver {
 protected:
  testing_support::FakeHost host;
};

TEST_F(Pickers, TheTimePickerGivesBackWhatWasChosen) {
  TimeSelectParams time;
  time.flags = kWithSeconds;
  time.startHour = 1;
  time.showExtra = 1;
  const int seconds = Drive(TimeSelectDlg(&window, time), [&] {
    EXPECT_EQ(Find<touch::INERT_LIST_VIEW>("hour")->List().Top(), 22);
    Find<touch::INERT_LIST_VIEW>("second")->List().SetTop(59);
    Click("1");
  });
  EXPECT_EQ(seconds, 1);
  EXPECT_EQ(time.hour, 1);
  EXPECT_EQ(time.second, 2);
  EXPECT_EQ(Drive(TimeSelectDlg(&window, time), [&] { Click("extra"); }), 1);
  EXPECT_EQ(time.hour, 25);
  EXPECT_EQ(Drive(TimeSelectDlg(&window, time), [&] { Click("2"); }), 2);
}

TEST_F(Pickers, AScreenReaderReadsTheWheelsAndTurnsThem) {
  TimeSelectParams time;
  time.startHour = 1;
  const int result = Drive(TimeSelectDlg(&window, time), [&] {
    auto* wheel = QAccessible::queryAccessibleInterface(Find<QWidget>("hour"));
    EXPECT_EQ(wheel->text(QAccessible::Name), QStringLiteral("時"));
    EXPECT_EQ(wheel->text(QAccessible::Value), QStringLiteral("01"));
    ASSERT_EQ(wheel->childCount(), 24);
    QAccessibleInterface* hour = wheel->child(3);
    EXPECT_EQ(wheel->childAt(hour->rect().center().x(), hour->rect().center().y()), hour);
    hour->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QApplication::processEvents();
    EXPECT_EQ(wheel->text(QAccessible::Value), QStringLiteral("03"));
    EXPECT_EQ(wheel->focusChild(), hour);
    Click("1");
  });
  EXPECT_EQ(result, 1);
  EXPECT_EQ(time.hour, 3);
}

// A drag on the list of values coasts; only a tap chooses.
TEST_F(Pickers, ADragOnValuesChoosesNothing) {
  ValueSelectParams params{{}, u"手書き", {}};
  for (int i = 0; i < 50; i++) params.history.push_back(i == 30 ? u"手書き" : u"場所");
  const int result = Drive(ValueSelectDlg(&window, params), [&] {
    auto* rows = Find<touch::INERT_LIST_VIEW>("rows");
    EXPECT_NEAR(rows->List().Top(), 26, 1) << "the value is in the middle";
    Send(rows, QEvent::MouseButtonPress, {20, 150});
    Send(rows, QEvent::MouseMove, {20, 100});
    Send(rows, QEvent::MouseButtonRelease, {20, 50});
    QObject::connect(rows, &touch::INERT_LIST_VIEW::Notified, rows, [this](int code) {
      EXPECT_EQ(code, touch::ILN_COASTEND);
      Click("1");
    });
  });
  EXPECT_EQ(result, 1);
  EXPECT_EQ(params.value, u"手書き");
}

}  // namespace
}  // namespace pickers
