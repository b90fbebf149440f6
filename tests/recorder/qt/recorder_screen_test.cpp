// The recorder's screen: state to widgets, taps to commands.
#include "recorder/qt/recorder_screen.h"

#include <QTimer>

#include "store/action_index.h"
#include "store/store_fixture.h"
#include "support/screen_driver.h"
#include "touch/qt/inertial_list_view.h"

namespace recorder {
namespace {

class RecorderScreen : public store_test::StoreTest, protected testing_support::ScreenDriver {
 protected:
  RecorderScreen() {
    CreateFile();
    store::LoadActionIndex(app);
  }
};

TEST_F(RecorderScreen, ATapRecordsAndTheButtonsFollow) {
  CRecorderDlg dialog(&window, app);
  Drive(dialog, [&] {
    EXPECT_FALSE(Find("1171")->isEnabled());
    EXPECT_EQ(Find("1171")->text(), QStringLiteral("◆"));
    Click("1170");
    host.now.hour++;
    Click("40002");
    EXPECT_TRUE(Find("1171")->isEnabled());
    EXPECT_EQ(Find("1171")->text(), QStringLiteral("■"));
    auto* list = Find<QListWidget>("1166");
    EXPECT_EQ(list->count(), 2);
    EXPECT_EQ(list->item(1)->text(), QStringLiteral("2010/06/23 11:45::...::::"));
    EXPECT_TRUE(list->item(1)->isSelected());
    Click("1171");
    EXPECT_EQ(Find("1171")->text(), QStringLiteral("◆"));
    Click("1152");
  });
  EXPECT_EQ(app.RcdrHistory.Count(), 2u);
  EXPECT_EQ(app.RcdrTime, u"<現在時刻>");
}

TEST_F(RecorderScreen, FieldsOpenTheirEditorsInPlace) {
  CRecorderDlg dialog(&window, app);
  Drive(dialog, [&] {
    Click("1154");
    auto* editor = Find<QWidget>("1172");
    EXPECT_TRUE(editor->isVisible());
    EXPECT_EQ(editor->findChild<QListWidget*>()->count(), 49);
    Press(Qt::Key_0, QStringLiteral("0930"));
    Click("1161");  // takes the time on the way
    EXPECT_FALSE(editor->isVisible());
    EXPECT_TRUE(Find<QWidget>("1173")->isVisible());
    Click("1170");
    EXPECT_EQ(Find<QListWidget>("1166")->item(0)->text().mid(11, 5), QStringLiteral("09:30"));
    Click("1151");
  });
}

TEST_F(RecorderScreen, ATapOnALineOpensItsActionAndADragDoesNot) {
  CRecorderDlg dialog(&window, app);
  Drive(dialog, [&] {
    for (host.now.minute = 0; host.now.minute < 20; host.now.minute++) {
      Click("1170");
    }
    auto* list = Find<QListWidget>("1166");
    QWidget* lines = list->viewport();
    Send(lines, QEvent::MouseButtonPress, {20, 10});
    Send(lines, QEvent::MouseMove, {20, 60});
    Send(lines, QEvent::MouseButtonRelease, {20, 60});
    EXPECT_EQ(app.SelIndex, -1);
    const int row = list->row(list->itemAt(20, 10));
    QTimer::singleShot(0, &dialog, [this] {
      store::Action action;
      Users().ReadById(app.SelActId, action);
      action[store::kPlace] = u"changed";
      Users().Update(app.SelActId, action);
      platform::qt::ModalScreen::Topmost()->EndScreen(1);
    });
    Tap(lines, {20, 10});
    EXPECT_EQ(app.SelIndex, row);
    EXPECT_TRUE(list->item(row)->text().contains(QStringLiteral("changed")));
    Click("1152");
  });
}

TEST_F(RecorderScreen, ReturnOnItsOwnMessageIsNotTheLists) {
  CRecorderDlg dialog(&window, app);
  host.answers = {"LB RETURN -1"};
  Drive(dialog, [&] {
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease, QEvent::KeyRelease}) {
      QKeyEvent event(type, Qt::Key_Return, Qt::NoModifier);
      QCoreApplication::sendEvent(Find<QListWidget>("1166"), &event);
    }
    Click("1152");
  });
}

TEST_F(RecorderScreen, WithListsTheFieldsOpenThePickers) {
  app.ItmSelMode = 2;
  app.PlaceHistory.Add(u"会社");
  CRecorderDlg dialog(&window, app);
  Drive(dialog, [&] {
    Next([&] {
      auto* wheel = Find<touch::INERT_LIST_VIEW>("hour");
      EXPECT_EQ(wheel->List().Top(), 7);  // the clock says 10
      wheel->List().SetTop(22);
      Click("1");
    });
    Click("1154");
    Next([&] {
      auto* rows = Find<touch::INERT_LIST_VIEW>("rows");
      Tap(rows, {10, 5});
    });
    Click("1161");
    Click("1170");
    EXPECT_EQ(Find<QListWidget>("1166")->item(0)->text(),
              QStringLiteral("2010/06/23 01:45::会社...::::"));
    Click("1152");
  });
}

}  // namespace
}  // namespace recorder
