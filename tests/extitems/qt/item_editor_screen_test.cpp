// The editor's screen: the controls of each type, and its pickers.
#include "extitems/qt/item_editor_screen.h"

#include <gtest/gtest.h>

#include "support/fake_host.h"
#include "support/screen_driver.h"

namespace extitems {
namespace {

class ItemEditorScreen : public testing::Test, protected testing_support::ScreenDriver {
 protected:
  testing_support::FakeHost host;
  core::CAppState app;
};

TEST_F(ItemEditorScreen, ShowsTheControlsOfTheTypeAndKeepsWhatIsTyped) {
  CItemEditorDlg dialog(&window, app, u"a:a:int:1:b:b:datetime:\"2010/1/2 3:04:05\":");
  const int result = Drive(dialog, [&] {
    auto* name = Find<QLineEdit>("name");
    EXPECT_EQ(name->text(), QStringLiteral("a"));
    auto* names = static_cast<QComboBox*>(name->parentWidget());
    names->setCurrentIndex(1);
    emit names->activated(1);
    EXPECT_EQ(Find<QLineEdit>("time")->text(), QStringLiteral("3:04:05"));
    Next([&] { Click("1"); });
    Click("pick_time");
    EXPECT_EQ(Find<QLineEdit>("time")->text(), QStringLiteral("03:04:05"));
    Click("change");
    name->setText(QStringLiteral("memo"));
    auto* type = Find<QComboBox>("type");
    emit type->activated(kMultiLineString);
    EXPECT_TRUE(Find<QLineEdit>("line")->isHidden());
    Find<QPlainTextEdit>("lines")->setPlainText(QStringLiteral("x\ny"));
    Click("create");
    Click("apply");
  });
  EXPECT_EQ(result, 1);
  EXPECT_EQ(dialog.Result(),
            u"a:a:int:1:b:b:datetime:\"2010/1/2 03:04:05\":memo:memo:mlstring:\"x\\ny\":");
}

TEST_F(ItemEditorScreen, WithListsNameAndTypeArePicked) {
  app.ItmSelMode = 2;
  CItemEditorDlg dialog(&window, app, u"a:a:int:1:b:b:date:\"2010/1/2\":");
  const int result = Drive(dialog, [&] {
    NextTyped("value", "b");
    Click("pick_name");
    Click("pick_date");
    emit screen->findChild<platform::qt::MonthCalendar*>()->Chosen(QDate(2011, 12, 13));
    EXPECT_EQ(Find<QLineEdit>("line")->text(), QStringLiteral("2011/12/13"));
    NextTyped("value", "File");
    Click("pick_type");
    EXPECT_TRUE(Find("pick_date")->isHidden());
    host.answers = {platform::Answer::kNo, platform::Answer::kYes};
    Find<QPushButton>("menu_key")->click();
    Find<QPushButton>("menu_key")->click();
  });
  EXPECT_EQ(result, 2);
}

TEST_F(ItemEditorScreen, ClosingTheWindowAsksOnlyWhereSomethingHasChanged) {
  CItemEditorDlg untouched(&window, app, u"a:a:int:1:");
  Drive(untouched, [&] { EXPECT_TRUE(untouched.OnWindowClosing()); });
  EXPECT_EQ(host.messages.size(), 0u);
  CItemEditorDlg changed(&window, app, u"a:a:int:1:");
  Drive(changed, [&] {
    Find<QLineEdit>("name")->setText(QStringLiteral("b"));
    Click("create");
    host.answers = {platform::Answer::kNo, platform::Answer::kYes};
    EXPECT_FALSE(changed.OnWindowClosing());
    EXPECT_TRUE(changed.OnWindowClosing());
  });
}

}  // namespace
}  // namespace extitems
