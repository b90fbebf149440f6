// State to widgets and tap to command, for the find dialog and the exchange screen.
#include <QGroupBox>
#include <QInputMethod>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QTransform>

#include "exchange/exchange_fixture.h"
#include "exchange/qt/exchange_screen.h"
#include "exchange/qt/find_screen.h"
#include "pickers/qt/field_button.h"
#include "support/screen_driver.h"
#include "touch/qt/inertial_list_view.h"

namespace exchange {
namespace {

class FindScreen : public ExchangeTest, protected testing_support::ScreenDriver {};

TEST_F(FindScreen, TheStartsListWritesTheMarkIntoBothTimes) {
  Insert(Of(u"00:00:00", u"24:00:00"));
  Insert(Of(u"09:00:00", u"10:00:00"));
  app.FindStaDate = u"2010/06/23";
  CFindDlg dialog(&window, app);
  const int result = Drive(dialog, [&] {
    EXPECT_EQ(QGuiApplication::inputMethod()->inputItemTransform().map(QPoint()),
              Find<QWidget>("1254")->pos())
        << "where the input method shows its candidates";
    Click("1262");
    auto* rows = Find<QWidget>("1270")->findChild<QListWidget*>();
    EXPECT_EQ(rows->currentRow(), 26);
    const QRect row = rows->visualItemRect(rows->currentItem());
    EXPECT_EQ(rows->viewport()->height() % row.height() + row.top() % row.height(), 0)
        << "no row is cut";
    rows->scrollToTop();
    Tap(rows->viewport(), rows->visualItemRect(rows->item(1)).center());
    EXPECT_TRUE(Find<QWidget>("1270")->isHidden());
    EXPECT_EQ(Shown("1266"), "<終日>");
    EXPECT_FALSE(Find<QWidget>("1266")->isEnabled());
    for (const char* target : {"1256", "1257", "1258", "1259"}) Click(target);
    host.answers = {"1 個のアクションが見つかりました。"};
    Click("40002");
  });
  EXPECT_EQ(result, 1);
  EXPECT_EQ(Found(), "1");
  EXPECT_EQ(app.FindStaTime, u"<終日>");
}

TEST_F(FindScreen, WithListsThePickersOpen) {
  app.ItmSelMode = 2;
  app.FindHistory.Add(u"会社");
  CFindDlg dialog(&window, app);
  Drive(dialog, [&] {
    Next([&] { Tap(Find<touch::INERT_LIST_VIEW>("rows"), {10, 5}); });
    Click("1272");
    EXPECT_EQ(Shown("1272"), "会社");
    Next([&] {
      Find("extra");  // the whole day
      Find<touch::INERT_LIST_VIEW>("hour")->List().SetTop(22);
      Click("1");
    });
    Click("1262");
    EXPECT_EQ(Shown("1262"), "01:00");
    Click("1267");
    Click("2");
  });
  EXPECT_EQ(app.FindEndDate, u"2010/06/23");
}

TEST_F(FindScreen, AFileWithoutIdsHasNothingToReplaceBy) {
  CExchangeDlg dialog(&window, app, ExchangeKind::kImport);
  Drive(dialog, [&] {
    auto* replace = Find("1210");
    EXPECT_TRUE(replace->isChecked());
    for (const char* stop : {"1203", "1207", "1210", "1211"}) {
      QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
      QApplication::sendEvent(window.focusWidget(), &tab);
      EXPECT_EQ(window.focusWidget(), Find(stop)) << "of several choices the one that is made";
    }
    Click("1205");
    EXPECT_FALSE(replace->isEnabled());
    Click("1207");
    EXPECT_TRUE(replace->isEnabled() && replace->isChecked());
    Find<QLineEdit>("1202")->setText(QStringLiteral("/x/a.csv"));
    Click("1213");
  });
  EXPECT_EQ(app.ImportPath, u"\\x\\a.csv");
}

}  // namespace
}  // namespace exchange
