// What the options take over, and the data page's roads through the data file.
#include "options/options.h"

#include "store/action_index.h"
#include "store/store_fixture.h"
#include "support/faulty_files.h"

namespace options {
namespace {

using platform::Answer;

class Options : public store_test::StoreTest {
 protected:
  Options() {
    app.DataFile = path;
    CreateFile();
  }
};

TEST_F(Options, OnlyOpenedPagesAreTakenOver) {
  app.InitView = 3;
  app.SbjctName = u"件名";
  COptions sheet(app);
  sheet.values.StartupMode = 1;
  sheet.values.ViewModeSave = 1;
  sheet.values.InitView = 5;
  sheet.values.MemoName = u"覚え";
  sheet.values.fonts[2] = {u"VL PGothic", 14};
  sheet.values.DataFile = u"nowhere";
  sheet.OpenPage(kGeneral);
  EXPECT_EQ(sheet.OnOk(), kSheetApplied);
  EXPECT_EQ(app.StartupMode, 1);
  EXPECT_EQ(app.InitView, 3) << "the view is saved at the end";
  EXPECT_EQ(app.MemoName, u"メモ");
  EXPECT_EQ(app.SbjctName, u"件名");
  EXPECT_EQ(app.MthVwLstFntName, u"MS UI Gothic");
  EXPECT_FALSE(sheet.DataFileChanged);

  sheet.values.ViewModeSave = 0;
  sheet.OpenPage(kNames);
  sheet.OpenPage(kDisplay);
  sheet.OnOk();
  EXPECT_EQ(app.InitView, 5);
  EXPECT_EQ(app.MemoName, u"覚え");
  EXPECT_EQ(app.SbjctName, u"");
  EXPECT_EQ(app.MthVwLstFntName, u"VL PGothic");
  EXPECT_EQ(app.MthVwGrdFntSize, 14);
  EXPECT_EQ(app.DayVwGrdFntName, u"MS UI Gothic");
}

TEST_F(Options, ADataFileIsChangedCreatedOrLost) {
  COptions sheet(app);
  sheet.OpenPage(kData);
  sheet.values.DataFile = folder.Path(u"new/user.sdf");
  host.answers = {Answer::kYes};
  ASSERT_TRUE(sheet.CheckDataFile());
  EXPECT_EQ(sheet.OnOk(), kSheetApplied);
  EXPECT_EQ(app.DataFile, folder.Path(u"new\\user.sdf"));
  EXPECT_TRUE(sheet.DataFileChanged);
  EXPECT_EQ(sheet.DataFolder(), folder.Path(u"new"));

  testing_support::FaultyFiles faulty;
  faulty.Fail(testing_support::FileCall::kCreate);
  sheet.values.DataFile = folder.Path(u"third.sdf");
  host.answers = {Answer::kYes, "初期化に失敗しました。"};
  EXPECT_EQ(sheet.OnOk(), kNoDataFile);
}

TEST_F(Options, OnlyAPathThatOpensAtTheNextStartIsTaken) {
  host.programPath = folder.Path(u"José\\Morvenly");
  host.homeFolder = folder.Path(u"home");
  COptions sheet(app);
  sheet.OpenPage(kData);
  sheet.values.DataFile = u"user.sdf";
  EXPECT_TRUE(sheet.CheckDataFile());
  EXPECT_EQ(sheet.values.DataFile, folder.Path(u"José\\user.sdf")) << "though not storable";
  for (const std::u16string& typed : {std::u16string(u"other.sdf"), std::u16string(u"C:\\user.sdf"),
                                      std::u16string(), folder.Path(u""), folder.Path(u"none\\")}) {
    sheet.values.DataFile = typed;
    host.answers = {"指定されているデータファイル名が不正です。\n"};
    EXPECT_FALSE(sheet.CheckDataFile()) << testing::PrintToString(typed);
  }
}

TEST_F(Options, ANewPageSizeKeepsTheSelectedActionOnItsPage) {
  for (int day = 10; day < 40; ++day) {
    const auto id = InsertAction(u"2010/06/01 10:00:" + core::ZeroPadded(day, 2));
    if (day == 12) app.SelActId = id;
  }
  store::LoadActionIndex(app);
  app.ListPage = 7;
  app.SeqViewRng = 10;
  KeepListPage(app, 10);
  EXPECT_EQ(app.ListPage, 7);
  KeepListPage(app, 20);
  EXPECT_EQ(app.ListPage, 2);
  app.SelActId = u"gone";
  KeepListPage(app, 20);
  EXPECT_EQ(app.ListPage, 0);
  EXPECT_EQ(CountText(app), u"30");
  app.FindWhere = u"x";
  app.IndexCount = 5;
  EXPECT_EQ(CountText(app), u"5(30)");
}

}  // namespace
}  // namespace options
