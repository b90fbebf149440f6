// The options sheet: state to widgets, taps to values.
#include "options/qt/options_sheet_screen.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QShortcut>

#include "store/store_fixture.h"
#include "support/screen_driver.h"

namespace options {
namespace {

class OptionsScreen : public store_test::StoreTest, protected testing_support::ScreenDriver {
 protected:
  OptionsScreen() { CreateFile(); }

  void Choose(const char* name, int row) {
    Find<QComboBox>(name)->setCurrentIndex(row);
    emit Find<QComboBox>(name)->activated(row);
  }
};

TEST_F(OptionsScreen, ControlsGoIntoTheSettingsOnOk) {
  app.DayVwGrdFntName = u"not here";
  app.RcdrFntSize = -1;
  OptionsSheet sheet(&window, app, 1);
  const int result = Drive(sheet, [&] {
    EXPECT_EQ(Find<QComboBox>("font_name")->currentText(), QStringLiteral("<既定>"));
    EXPECT_EQ(Find<QComboBox>("font_size")->currentText(), QStringLiteral("9"));
    Choose("font_target", 5);
    EXPECT_EQ(Find<QComboBox>("font_size")->currentText(), QStringLiteral("<既定>"));
    Choose("font_name", 2);
    Choose("font_size", 1);
    Click("tab0");
    EXPECT_FALSE(Find<QComboBox>("InitView")->isEnabled());
    Click("ViewModeSave");
    EXPECT_TRUE(Find<QComboBox>("InitView")->isEnabled());
    Choose("InitView", 3);
    for (QShortcut* key : sheet.findChildren<QShortcut*>()) {
      if (key->key() == QKeySequence(QStringLiteral("Ctrl+PgUp"))) emit key->activated();
    }
    EXPECT_TRUE(Find("tab5")->isChecked()) << "round to the last page";
    Click("1");
  });
  EXPECT_EQ(result, kSheetApplied);
  EXPECT_EQ(app.RcdrFntName, u"VL PGothic");
  EXPECT_EQ(app.RcdrFntSize, 4);
  EXPECT_EQ(app.DayVwGrdFntName, u"not here") << "it was not touched";
  EXPECT_EQ(app.ViewModeSave, 0);
  EXPECT_EQ(app.InitView, core::kViewList);
}

TEST_F(OptionsScreen, CancelKeepsTheSettingsAndALostFileEndsTheSheet) {
  OptionsSheet cancelled(&window, app, 9);
  EXPECT_EQ(Drive(cancelled,
                  [&] {
                    EXPECT_EQ(Find<QLineEdit>("DBFmtVer")->text(), QStringLiteral("3.2.2010.0623"));
                    Click("tab2");
                    Click("EditOpeCont");
                    Click("2");
                  }),
            kSheetCancelled);
  EXPECT_EQ(app.EditOpeCont, 0);
  app.DataFile = folder.Path(u"gone.sdf");
  host.answers = {"指定のデータファイルは存在しません。",
                  "データファイル読込み中にエラーが発生しました。"};
  OptionsSheet lost(&window, app, 5);
  EXPECT_EQ(Drive(lost, [&] { Click("compact"); }), kNoDataFile);
}

}  // namespace
}  // namespace options
