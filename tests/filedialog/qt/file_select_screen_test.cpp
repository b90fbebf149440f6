// The file dialog under a finger.
#include "filedialog/qt/file_select_screen.h"

#include <gtest/gtest.h>

#include <QAction>

#include "platform/files.h"
#include "support/fake_host.h"
#include "support/screen_driver.h"
#include "support/temp_folder.h"

namespace filedialog {
namespace {

class FileSelectScreen : public testing::Test, protected testing_support::ScreenDriver {
 protected:
  FileSelectParams Params(int mode) {
    return {mode, u"入力元", u"CSV (*.csv)|*.csv|All (*.*)|*.*", folder.Path(u""), u"first"};
  }
  QWidget* Lines() { return Find<QListView>("1405")->viewport(); }
  QPoint Line(int row) { return {20, 24 * row + 12}; }

  testing_support::FakeHost host;
  testing_support::TempFolder folder;
};

TEST_F(FileSelectScreen, ATapEntersAFolderAndTakesAFile) {
  platform::files().MakeFolder(folder.Path(u"月"));
  for (int i = 10; i < 40; ++i) {
    testing_support::WriteWholeFile(folder.HostPath("月/" + std::to_string(i) + ".csv"), "");
  }
  CFileSelectDlg dialog(&window, Params(kSelectToOpen));
  const int result = Drive(dialog, [&] {
    auto* name = Find<QLineEdit>("1407");
    EXPECT_EQ(name->text(), QStringLiteral("first"));
    Tap(Lines(), Line(0));
    EXPECT_TRUE(Find<QLineEdit>("1403")->text().endsWith(QStringLiteral("\\月")));
    Send(Lines(), QEvent::MouseButtonDblClick, Line(0));
    Send(Lines(), QEvent::MouseButtonRelease, Line(0));
    Send(Lines(), QEvent::MouseButtonPress, Line(4));
    Send(Lines(), QEvent::MouseMove, Line(1));
    Send(Lines(), QEvent::MouseButtonRelease, Line(1));
    EXPECT_EQ(name->text(), QStringLiteral("first")) << "neither a double click nor a drag";
    Tap(Lines(), Line(0));
    EXPECT_EQ(name->text(), QStringLiteral("13.csv"));
    Click("1");
  });
  EXPECT_EQ(result, 1);
  EXPECT_EQ(dialog.ResultPath(), folder.Path(u"月\\13.csv"));
}

TEST_F(FileSelectScreen, TheMenusActOnTheSelectedLine) {
  testing_support::WriteWholeFile(folder.HostPath("a.csv"), "");
  CFileSelectDlg dialog(&window, Params(kSelectToSave));
  const int result = Drive(dialog, [&] {
    NextTyped("1500", "火");
    Find<QAction>("33051")->trigger();
    EXPECT_TRUE(platform::files().Exists(folder.Path(u"火")));
    Send(Lines(), QEvent::MouseButtonPress, Line(1));
    Next([&] {
      EXPECT_EQ(Find<QLineEdit>("1500")->text(), QStringLiteral("a.csv"));
      Find<QLineEdit>("1500")->setText(QStringLiteral("b.csv"));
      Click("1");
    });
    Find<QAction>("33052")->trigger();
    EXPECT_EQ(Find<QListView>("1405")->currentIndex().row(), 1);
    host.answers = {platform::Answer::kYes};
    Find<QAction>("32785")->trigger();
    EXPECT_FALSE(platform::files().Exists(folder.Path(u"b.csv")));
    Click("1401");
  });
  EXPECT_EQ(result, 2);
  EXPECT_FALSE(dialog.ResultPath());
}

}  // namespace
}  // namespace filedialog
