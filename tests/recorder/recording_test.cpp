// What the model leaves out: the cost of a tap, faults of the data file, editors and histories, and
// the ways into the edit screen.
#include "recorder/recording.h"

#include "store/action_index.h"
#include "store/store_fixture.h"
#include "support/disk_calls.h"

namespace recorder {
namespace {

class RecordingTest : public store_test::StoreTest {
 protected:
  using Command = void (CRecorder::*)();

  RecordingTest() {
    CreateFile();
    store::LoadActionIndex(app);
    recorder.Open();
  }

  void Tap(int hour, int minute, std::u16string_view place) {
    host.now.hour = hour;
    host.now.minute = minute;
    recorder.fields.place = place;
    recorder.OnBtnRec();
  }
  void Spoil(std::u16string_view statement) {
    ASSERT_EQ(store::dbSession().Session->Execute(statement), 0);
  }

  CRecorder recorder{app};
};

// Five writes stay five commits in their order, but the disk is waited for once.
TEST_F(RecordingTest, ATapWaitsForTheDiskOnce) {
  Tap(9, 0, u"自宅");
  testing_support::DiskCalls& calls = testing_support::diskCalls();
  calls.Reset();
  Tap(10, 0, u"会社");
  EXPECT_EQ(calls.syncs, 1);
  EXPECT_LE(calls.writes, 40);
  calls.Reset();
  host.answers = {platform::Answer::kYes};
  recorder.OnBtnBack();
  EXPECT_EQ(calls.syncs, 1);
  recorder.RecStop();
  EXPECT_EQ(calls.syncs, 2);
  calls.Reset();
  InsertAction(u"2010/06/23 11:00:00");
  EXPECT_GE(calls.syncs, 1) << "what comes after a burst waits for the disk again";
}

TEST_F(RecordingTest, FaultsEndWhereTheyStand) {
  const std::tuple<const char*, std::u16string_view, Command, const char*> rows[] = {
      {"the history's length cannot be written", u"drop table t_LongData", &CRecorder::OnBtnRec,
       "レコーダーの設定値(RcdrHistNum)書込みに時にエラー発生。"},
      {"nor when the chain is forgotten", u"", &CRecorder::OnBtnClear,
       "レコーダーの設定値(RcdrHistNum)書込みに時にエラー発生。"},
      {"nor when a new one begins", u"", &CRecorder::OnBtnRec,
       "レコーダーの設定値書込みに時にエラー発生。"},
      {"nothing says any more what runs", u"drop table t_TextData", &CRecorder::OnBtnClear,
       "レコーダーの設定値(RcdrPreActId)書込みに時にエラー発生。"},
  };
  Tap(9, 0, u"自宅");
  for (const auto& [why, statement, command, message] : rows) {
    SCOPED_TRACE(why);
    if (!statement.empty()) Spoil(statement);
    host.now.minute++;
    host.answers = {std::string("レコーダー書込みエラー|") + message + "(80004005)"};
    (recorder.*command)();
    EXPECT_EQ(host.waitDepth, 0);
  }
}

TEST_F(RecordingTest, WithoutActionsTheReadsTellTheirPlace) {
  const std::tuple<Command, const char*, bool> rows[] = {
      {&CRecorder::OnBtnRec, "OnBtnRec Select Err (ln=3963", false},
      {&CRecorder::RecStop, "RecStop Select Err (ln=4810", false},
      {&CRecorder::RecReopen, "RecReopen Select Err (ln=5063", false},
      {&CRecorder::SetActList, "SetActList Select Err (ln=1762", false},
      {&CRecorder::FxBtnDelete, "FxBtnDelete Delete Err (ln=5272", true},
      {&CRecorder::OnBtnBack, "OnBtnBack Select Err (ln=4473", true},
  };
  Tap(9, 0, u"自宅");
  Tap(10, 0, u"会社");
  Spoil(u"drop table t_UserData");
  for (const auto& [command, place, asks] : rows) {
    SCOPED_TRACE(place);
    recorder.lines.selected = {0};
    host.answers = {std::string("ERROR|CRecorderDlg::") + place + ", hr=80004005)"};
    if (asks) host.answers.push_front(platform::Answer::kYes);
    (recorder.*command)();
  }
}

TEST_F(RecordingTest, LoadingTellsItsStep) {
  const std::pair<std::u16string_view, const char*> rows[] = {
      {u"delete from t_TextData where f_nvcItem = 'RcdrCategory2'", "-10"},
      {u"delete from t_LongData", "-1"},
  };
  Tap(9, 0, u"自宅");
  for (const auto& [statement, number] : rows) {
    SCOPED_TRACE(number);
    Spoil(statement);
    app.RcdrLoaded = false;
    CRecorder another(app);
    host.answers = {std::string("読込みエラー|レコーダーデータ読込み中にエラーが発生しました。(") +
                    number};
    another.Open();
    EXPECT_FALSE(app.RcdrLoaded);
  }
  EXPECT_EQ(SaveRecorderValues(app), 0);  // puts back what it writes
  Spoil(u"drop table t_TextData");
  app.RcdrLoaded = true;
  host.answers = {"保存エラー|レコーダーデータ保存中にエラーが発生しました。(-5)"};
  CloseRecorderSession(app);
  EXPECT_FALSE(app.RcdrLoaded);
}

TEST_F(RecordingTest, EditorsTakeOrRefuseTheirText) {
  const std::tuple<const char*, std::u16string_view, const char*, bool> rows[] = {
      {"four digits", u"0930", "09:30", false},
      {"seconds are dropped", u"12:34:56", "12:34", false},
      {"no such minute: the field stays", u"2460", "12:34", true},
      {"the mark", u"<現在時刻>", "<現在時刻>", false},
  };
  for (const auto& [why, typed, shown, refused] : rows) {
    SCOPED_TRACE(why);
    if (refused) host.answers = {platform::Answer::kOk};
    recorder.OpenEditor(InlineEditTarget::kTime);
    recorder.editorText = typed;
    EXPECT_EQ(recorder.ValidateInlineEdit(), refused ? -1 : 0);
    EXPECT_EQ(store_test::Readable(recorder.fields.time), shown);
    EXPECT_EQ(recorder.editor, InlineEditTarget::kNone);
  }
  recorder.OpenEditor(InlineEditTarget::kTime);
  recorder.editorText = u"09:40";
  EXPECT_EQ(recorder.EditorRow(), 20) << "the half hour before it";
  recorder.editorText = u"nonsense";
  recorder.OnBtnNow();
  EXPECT_EQ(recorder.fields.time, u"10:45");
}

TEST_F(RecordingTest, TheEditScreenOpensWhatTheIndexHolds) {
  Tap(9, 0, u"自宅");
  EXPECT_TRUE(recorder.OnListChange());
  EXPECT_EQ(app.SelActId, app.RcdrPreActId);
  EXPECT_EQ(app.SelIndex, 0);
  app.ActIds.RemoveAt(0);  // a find leaves the Action out
  app.ActIds.Append(u"ID2010062300000000");
  host.answers = {"検索対象外", "内部エラー"};
  EXPECT_FALSE(recorder.OnListChange());
  Users().Delete(app.RcdrPreActId);
  EXPECT_FALSE(recorder.OnListChange());
}

TEST_F(RecordingTest, TheStartChoiceGoesBackToWhatItWas) {
  app.StartupMode = 2;
  CRecorder another(app);
  another.Open();
  EXPECT_FALSE(another.opensAtStart);
  another.opensAtStart = true;
  another.Close();
  EXPECT_EQ(app.StartupMode, 1);
  another.opensAtStart = false;
  another.Close();
  EXPECT_EQ(app.StartupMode, 2);
}

}  // namespace
}  // namespace recorder
