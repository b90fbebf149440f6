#include "edit/edit_action.h"

#include <filesystem>

#include "edit/edit_fixture.h"

namespace edit {
namespace {

using platform::Answer;

class EditAction : public edit_test::EditTest {
 protected:
  CEditAction OpenNew() {
    CEditAction screen(app);
    EXPECT_TRUE(screen.Open(kOpenNew));
    return screen;
  }
};

TEST_F(EditAction, ANewActionTakesItsDayFromTheView) {
  core::SetCurDate(u"2010/06/20");
  const std::tuple<const char*, int, std::u16string, std::u16string> rows[] = {
      {"the day that the view shows", core::kViewDay, u"2010/06/20", u"12:00"},
      {"the map shows a day as well", core::kViewMap, u"2010/06/20", u"12:00"},
      {"the list shows all days: today", core::kViewList, u"2010/06/23", u"10:45"},
  };
  for (const auto& [why, view, date, time] : rows) {
    SCOPED_TRACE(why);
    app.CurView = view;
    const CEditAction screen = OpenNew();
    EXPECT_EQ(screen.fields.times, AtOneMoment(date, time));
    EXPECT_EQ(screen.WriteText(), u"作成");
    EXPECT_EQ(app.SelIndex, app.IndexCount);
    EXPECT_FALSE(screen.IsEnabled(kIdToolDelete));
  }
}

TEST_F(EditAction, ANewActionKeepsThePointItBeganWith) {
  CEditAction screen(app);
  EXPECT_TRUE(screen.Open(kOpenNew, position::Position{-0.5000004, 139.6917}));
  EXPECT_EQ(screen.fields.latitude, u"0/30/0.001440") << "to the digit, but without the sign";
  EXPECT_FALSE(screen.dirty);
  screen.OnCommand(kIdWrite);
  EXPECT_EQ(Stored(app.SelActId, store::kLatitude), "-0.500000");
  EXPECT_EQ(Stored(app.SelActId, store::kLongitude), "139.691700");
  EXPECT_TRUE(screen.Open(kOpenNew));
  EXPECT_EQ(screen.fields.longitude, u"");
}

TEST_F(EditAction, AChangeKeepsWhatTheScreenDoesNotEdit) {
  store::Action action = Read(noon);
  action[store::kLatitude] = u"-0.500000";  // its shown form has lost the sign
  action[store::kLongitude] = u"139.691733";
  action[store::kSubject] = u"件名";
  action[store::kExtItems] = u"items";
  action[store::kMemo] = u"#a#\r\n二行目";
  ASSERT_EQ(Users().Update(noon, action), 0);
  app.ActTxtMode = 2;
  CEditAction screen = OpenAt(1);
  EXPECT_EQ(screen.fields.latitude, u"0/30/0.000000");
  EXPECT_EQ(screen.fields.longitude, u"139/41/30.238800");
  Pick(screen, kIdCategory1, u"食事");
  screen.OnCommand(kIdKeyWrite);
  EXPECT_EQ(screen.ended, 1);
  const store::Action after = Read(noon);
  for (const auto column : {store::kLatitude, store::kLongitude, store::kSubject, store::kExtItems,
                            store::kMemo, store::kStaDateTime}) {
    EXPECT_EQ(after[column], action[column]) << "column " << column;
  }
  EXPECT_EQ(after[store::kCategory1], u"食事");
  CEditAction another = OpenAt(1);
  another.OnCommand(kIdMenuNew);
  another.OnCommand(kIdWrite);
  EXPECT_EQ(Stored(app.SelActId, store::kSubject), "(none)") << "a new one begins without it";
  EXPECT_EQ(Stored(app.SelActId, store::kLatitude), "(none)");
}

TEST_F(EditAction, ADiaryThatAnotherProgramHoldsAloneIsReportedOnce) {
  store::DisconnectDataFile();
  ASSERT_EQ(store::ConnectDataFile(path), 0);
  CEditAction screen = OpenNew();
  const auto holder = store::Engine::Open(path);
  holder->Execute(u"PRAGMA locking_mode=EXCLUSIVE");
  ASSERT_EQ(holder->Execute(u"delete from t_TextData"), 0);
  host.answers = {
      "ユニークキーの生成に失敗しました。\nほかのプログラムがデータファイルを使用中です。"};
  screen.OnCommand(kIdWrite);
  EXPECT_FALSE(screen.ended);
}

TEST_F(EditAction, AFollowStartsAtTheEndAndIsBlank) {
  CEditAction screen = OpenAt(0, kOpenFollow);
  EXPECT_EQ(screen.fields.times.staTime, u"10:00");
  EXPECT_EQ(screen.fields.times.endTime, u"10:45");
  EXPECT_EQ(screen.fields.place, u"");
  EXPECT_EQ(screen.workingMode, WorkingMode::kCreate);
  // In place it goes on from what the fields say.
  Pick(screen, kIdEndTime, u"1030");
  host.answers = {Answer::kNo};
  screen.OnCommand(kIdMenuFollow);
  EXPECT_EQ(screen.fields.times.staTime, u"10:30");
}

TEST_F(EditAction, AnActionThatIsGoneOpensNothing) {
  ASSERT_EQ(Users().Delete(noon), 0);
  app.SelIndex = 1;
  CEditAction screen(app);
  host.answers = {"Error|CEditActionDlg::OnInitDialog GetNextRS Err (ln=2, hr=40ec6)"};
  EXPECT_FALSE(screen.Open(kOpenChange));
}

TEST_F(EditAction, AsksBeforeChangesAreLost) {
  const std::string ofChange = "変更確認|アクションの内容が変更されています。変更しますか。";
  const std::string ofNew = "作成確認|アクションの内容が入力されています。作成しますか。";
  const std::tuple<const char*, OpenMode, int, Answer, std::string, bool, bool> rows[] = {
      {"next, yes", kOpenChange, kIdNext, Answer::kYes, ofChange, true, false},
      {"next, no", kOpenChange, kIdNext, Answer::kNo, ofChange, false, false},
      {"exit, cancel", kOpenChange, kIdMenuExit, Answer::kCancel, ofChange, false, true},
      {"leaving a new one", kOpenReference, kIdMenuClose, Answer::kYes, ofNew, true, false},
      {"the close button is brief", kOpenReference, kIdClose, Answer::kNo,
       "作成確認|作成しますか。", false, false},
      {"and has one title for both", kOpenChange, kIdClose, Answer::kCancel,
       "作成確認|変更しますか。", false, true},
  };
  for (const auto& [why, mode, command, answer, question, written, abandoned] : rows) {
    SCOPED_TRACE(why);
    const int count = app.IndexCount;
    CEditAction screen = OpenAt(1, mode);
    const std::string former = Stored(noon, store::kCategory2);
    const std::u16string typed = platform::ToUtf16(std::string(why));
    Pick(screen, kIdCategory2, typed);
    host.answers = {{question, answer}};
    screen.OnCommand(command);
    const bool created = written && mode == kOpenReference;
    EXPECT_EQ(app.IndexCount, count + (created ? 1 : 0));
    EXPECT_EQ(Stored(noon, store::kCategory2), written && !created ? why : former);
    EXPECT_EQ(screen.dirty, abandoned);
    EXPECT_EQ(screen.fields.category2 == typed && !screen.ended, abandoned);
  }
}

TEST_F(EditAction, AsksBeforeAnActionMovesToAnotherDay) {
  CEditAction screen = OpenAt(1);
  Pick(screen, kIdEndDate, u"2010/06/20");
  host.answers = {{"開始日変更確認", Answer::kNo}};
  screen.OnCommand(kIdWrite);
  EXPECT_FALSE(screen.ended);
  EXPECT_TRUE(screen.dirty);
  EXPECT_EQ(Stored(noon, store::kStaDateTime), "2010/06/23 12:00:00");
  host.answers = {Answer::kYes};
  screen.OnCommand(kIdWrite);
  EXPECT_EQ(screen.ended, 1);
  EXPECT_EQ(Stored(noon, store::kStaDateTime), "2010/06/20 13:00:00");
  EXPECT_EQ(core::CurDate(), u"2010/06/20");
}

TEST_F(EditAction, AFailedWriteKeepsTheScreen) {
  CEditAction screen = OpenAt(1);
  Pick(screen, kIdPlace, u"公園");
  ASSERT_EQ(Users().Delete(noon), 0);
  const std::string failed = "アクションの変更に失敗しました。(80040e19)";
  const std::string values = "入力値が不正です。値を見直しください";
  host.answers = {failed, values};
  screen.OnCommand(kIdWrite);
  // Nor does it go when the question on the way out was answered by Yes.
  host.answers = {Answer::kYes, failed, values};
  screen.OnCommand(kIdMenuClose);
  EXPECT_FALSE(screen.ended);
  EXPECT_TRUE(screen.dirty);
  EXPECT_EQ(screen.fields.place, u"公園");
  // A diary that another program holds is no fault of the values, nor is one that was displaced.
  const auto holder = store::Engine::Open(path);
  ASSERT_EQ(holder->BeginTransaction(), 0);
  const std::string held = "(80004005)\nほかのプログラムがデータファイルを使用中です。";
  host.answers = {"アクションの変更に失敗しました。" + held};
  screen.OnCommand(kIdWrite);
  CEditAction another = OpenNew();
  host.answers = {"アクションの作成に失敗しました。" + held};
  another.OnCommand(kIdWrite);
  std::filesystem::rename(folder.HostPath("user.sdf"), folder.HostPath("moved.sdf"));
  host.answers = {Answer::kOk};
  screen.OnCommand(kIdWrite);
  EXPECT_TRUE(screen.dirty);
}

TEST_F(EditAction, ContinuousEntryStaysOnWhatWasWritten) {
  CEditAction screen = OpenNew();
  screen.OnCommand(kIdToolContinue);
  EXPECT_TRUE(screen.IsChecked(kIdMenuContinue));
  screen.OnCommand(kIdWrite);
  EXPECT_FALSE(screen.ended);
  EXPECT_EQ(screen.WriteText(), u"変更");
  EXPECT_TRUE(screen.IsEnabled(kIdToolDelete));
  EXPECT_EQ(app.SelIndex, 1);  // 10:45, after the morning
  Pick(screen, kIdPlace, u"公園");
  screen.OnCommand(kIdWrite);
  EXPECT_EQ(app.IndexCount, 4);
  EXPECT_EQ(Stored(app.SelActId, store::kPlace), "公園");
}

TEST_F(EditAction, WalksThroughTheListAndPastItsEnd) {
  CEditAction screen = OpenAt(1);
  screen.OnCommand(kIdPrevious);
  EXPECT_EQ(screen.fields.place, u"会社");
  EXPECT_EQ(app.SelActId, morning);
  EXPECT_FALSE(screen.IsEnabled(kIdPrevious));
  screen.OnCommand(kIdNext);
  screen.OnCommand(kIdNext);
  EXPECT_EQ(screen.fields.place, u"自宅");
  core::SetCurDate(u"2010/01/01");
  screen.OnCommand(kIdNext);
  EXPECT_EQ(screen.Title(), u"新規作成");
  EXPECT_EQ(screen.fields.times, AtOneMoment(u"2010/06/23", u"10:45"));
  EXPECT_FALSE(screen.IsEnabled(kIdNext));
  screen.OnCommand(kIdPrevious);
  EXPECT_EQ(screen.Title(), u"変更");
  EXPECT_EQ(app.SelActId, evening);
  EXPECT_EQ(core::CurDate(), u"2010/06/23");
}

TEST_F(EditAction, ASavedChangeIsWalkedOnFromItsNewPlace) {
  CEditAction screen = OpenAt(0);
  Pick(screen, kIdStartTime, u"15:00");  // now after noon
  host.answers = {Answer::kYes};
  screen.OnCommand(kIdNext);
  EXPECT_EQ(app.SelActId, evening);
}

TEST_F(EditAction, DeleteShowsTheNeighbourInContinuousEntry) {
  app.EditOpeCont = 1;
  CEditAction screen = OpenAt(1);
  host.answers = {Answer::kNo};
  screen.OnCommand(kIdMenuDelete);
  EXPECT_EQ(app.IndexCount, 3);
  for (const std::u16string& shown : {evening, morning}) {  // the next, after the last the previous
    host.answers = {Answer::kYes};
    screen.OnCommand(kIdToolDelete);
    EXPECT_FALSE(screen.ended);
    EXPECT_EQ(app.SelActId, shown);
    EXPECT_EQ(std::u16string(app.ActIds.At(static_cast<size_t>(app.SelIndex))), shown);
  }
  host.answers = {Answer::kYes};
  screen.OnCommand(kIdToolDelete);
  EXPECT_EQ(screen.ended, 1);
  EXPECT_EQ(app.IndexCount, 0);
}

TEST_F(EditAction, DeletingTheOnlyFoundActionShowsTheNextOfAll) {
  app.EditOpeCont = 1;
  app.FindWhere = u"f_nchActId = '" + noon + u"'";
  app.ActIds.Clear();
  app.ActStarts.Clear();
  app.ActIds.Append(noon);
  app.ActStarts.Append(u"2010/06/23 12:00:00");
  app.IndexCount = 1;
  CEditAction screen = OpenAt(0);
  host.answers = {Answer::kYes};
  screen.OnCommand(kIdMenuDelete);
  EXPECT_EQ(app.SelActId, evening);
  EXPECT_EQ(app.SelIndex, 1);
}

TEST_F(EditAction, DeletingWhatIsGoneDropsItFromTheIndex) {
  app.EditOpeCont = 1;
  CEditAction screen = OpenAt(1);
  ASSERT_EQ(Users().Delete(noon), 0);
  host.answers = {Answer::kYes, "アクションの削除に失敗しました。(80040e19)"};
  screen.OnCommand(kIdMenuDelete);
  EXPECT_EQ(app.IndexCount, 2);
  EXPECT_EQ(app.SelActId, evening);
}

TEST_F(EditAction, LeavesWithTheResultThatTheViewsNeed) {
  app.ListPage = 7;
  CEditAction untouched = OpenAt(1);
  untouched.OnCommand(kIdClose);
  EXPECT_EQ(untouched.ended, 2);
  EXPECT_EQ(app.ListPage, 7);
  CEditAction walked = OpenAt(1);
  walked.OnCommand(kIdNext);
  walked.OnCommand(kIdClose);
  EXPECT_EQ(walked.ended, 1);
  EXPECT_EQ(app.ListPage, 0);
  CEditAction exited = OpenAt(1);
  exited.OnCommand(kIdExit);
  EXPECT_TRUE(exited.closeProgram);
}

TEST_F(EditAction, TheStartUpToggleGoesBackToTheFormerScreen) {
  app.StartupMode = 1;
  CEditAction screen = OpenNew();
  screen.OnCommand(kIdMenuAtStart);
  EXPECT_EQ(app.StartupMode, 2);
  screen.OnCommand(kIdToolAtStart);
  EXPECT_EQ(app.StartupMode, 1);
  app.StartupMode = 2;
  CEditAction opened = OpenNew();
  EXPECT_TRUE(opened.IsChecked(kIdToolAtStart));
  opened.OnCommand(kIdMenuAtStart);
  EXPECT_EQ(app.StartupMode, 0);
}

}  // namespace
}  // namespace edit
