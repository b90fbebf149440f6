// Backups, the day's copy and restoring on real files: what the user reads, and what stands when
// it's cut short.
#include "backup/backup.h"

#include <filesystem>
#include <set>

#include "backup/backup_names.h"
#include "backup/daily_copy.h"
#include "backup/file_choice.h"
#include "backup/restore.h"
#include "core/settings_choices.h"
#include "platform/device_paths.h"
#include "store/action_index.h"
#include "store/store_fixture.h"
#include "store/write_burst.h"
#include "support/disk_calls.h"
#include "support/faulty_files.h"
#include "support/process.h"

namespace store_test {
namespace {

using namespace backup;
using namespace store;
using datafile::OpenDataFile;
using platform::files;
using enum platform::Answer;
using testing_support::FaultyFiles;
using testing_support::FileCall;
using testing_support::WriteWholeFile;
namespace fs = std::filesystem;

class Backup : public StoreTest {
 protected:
  Backup() {
    core::g_App = &app;
    app.DataFile = path;
    CreateFile();
    OpenDataFile(app);
    for (int day = 1; day <= 3; ++day) Write(day);
    LoadActionIndex(app);
  }
  ~Backup() override {
    DisconnectDataFile();
    dbSession().BeforeWrite = nullptr;
    core::g_App = nullptr;
  }

  void Write(int day) { InsertAction(u"2010/06/0" + core::ZeroPadded(day, 1) + u" 10:00:00"); }
  // Another diary, of five Actions, closed.
  void MakeOther() {
    DisconnectDataFile();
    ASSERT_EQ(datafile::CreateDataFile(other), 0);
    for (int day = 1; day <= 5; ++day) Write(day);
    ASSERT_EQ(OpenDataFile(app), 0);
  }
  std::set<std::string> Names(const std::string& in) const {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder.HostPath(in)))
      names.insert(entry.path().filename().string());
    return names;
  }
  std::string Bytes(const std::string& name) const {
    return testing_support::ReadWholeFile(folder.HostPath(name));
  }
  void Copy(const char* from, const char* to) const {
    fs::copy_file(folder.HostPath(from), folder.HostPath(to), fs::copy_options::overwrite_existing);
  }

  const std::u16string other = folder.Path(u"other.sdf");
  const std::u16string mine = folder.Path(u"mine.sdf");
  const std::u16string kept = folder.Path(u"backup\\user_20100623_104530.sdf");
};

// Says Yes to everything.
class AgreeingHost : public testing_support::FakeHost {
 public:
  platform::Answer ShowMessage(const platform::Message& message) override {
    messages.push_back(message);
    return message.buttons == platform::Buttons::kYesNo ? kYes : kOk;
  }
};

TEST(BackupNames, KeepSevenDaysAndTwelveMonthsOfAYearAndAHalf) {
  const std::vector<std::u16string> strangers = {
      u"user_20250601.sdf",       u"user_20250230_auto.sdf",   u"other_20250601_auto.sdf",
      u"user_20250601_auto.sdf2", u"user_20250601_104530.sdf", u"user_2025060l_auto.sdf",
      u"user_20250601_auto.new",  u"user_20250601_auto_2.sdf"};
  // As long as what a link may lead to.
  const std::u16string diary = u"\\" + std::u16string(300, u'a') + u"\\user.sdf";
  std::vector<std::u16string> names = strangers;
  for (core::Day day{2025, 6, 3}; day <= core::Day{2026, 11, 22}; day = *core::DaysLater(day, 1)) {
    if (day == core::Day{2026, 2, 28}) continue;  // nothing was written
    names.push_back(DailyName(diary, day));
    names.push_back(names.back() + u".new");
    for (const auto& outdated : OutdatedCopies(names, diary, day)) {
      std::erase(names, outdated);
    }
  }
  std::vector<std::u16string> expected = strangers;
  for (const char16_t* date :
       {u"20251231", u"20260131", u"20260227", u"20260331", u"20260430", u"20260531", u"20260630",
        u"20260731", u"20260831", u"20260930", u"20261031", u"20261116", u"20261117", u"20261118",
        u"20261119", u"20261120", u"20261121", u"20261122"}) {
    expected.push_back(u"user_" + std::u16string(date) + u"_auto.sdf");
  }
  EXPECT_EQ(names, expected);
}

TEST_F(Backup, IsWholeAndReplacesNothingUnasked) {
  host.answers = {"3個のアクションを '"};
  MakeBackup(mine);
  Write(4);
  for (const char* log : {"mine.sdf-journal", "mine.sdf-wal"}) {
    WriteWholeFile(folder.HostPath(log), "");
    host.answers = {"書込み記録が残っている"};
    MakeBackup(mine);
    EXPECT_TRUE(fs::remove(folder.HostPath(log)));
  }
  host.answers = {kNo};
  MakeBackup(mine);
  host.answers = {"使用中のデータファイル", "使用中のデータファイル", "フォルダのため",
                  "名前が長すぎます。"};
  MakeBackup(path);
  MakeBackup(path + u"-wal");
  MakeBackup(folder.Path(u""));
  MakeBackup(folder.Path(std::u16string(300, u'n')));
  const std::string before = Bytes("mine.sdf");
  for (const FileCall call : {FileCall::kCreate, FileCall::kSync, FileCall::kRename}) {
    SCOPED_TRACE(static_cast<int>(call));
    FaultyFiles faulty;
    faulty.Fail(call);
    host.answers = {kYes, "作成できませんでした"};
    MakeBackup(mine);
    EXPECT_EQ(Bytes("mine.sdf"), before);
    EXPECT_FALSE(files().Exists(mine + u".new"));
  }
  host.answers = {kYes, "4個のアクションを '"};
  MakeBackup(mine);
  EXPECT_EQ(RowsIn(mine), 4);
  ASSERT_EQ(OpenDataFile(app), 0);
  host.answers = {"フォルダがありません"};
  MakeBackup(folder.Path(u"none\\mine.sdf"));
}

TEST_F(Backup, TheDialogBeginsInItsFolderWithAFreeName) {
  EXPECT_EQ(AskForBackup(app).StartName, u"user_20100623.sdf");
  files().Create(folder.Path(u"backup\\user_20100623.sdf"));
  EXPECT_EQ(AskForBackup(app).StartName, u"user_20100623_2.sdf");
  EXPECT_EQ(AskForRestore(app).StartFolder, folder.Path(u"backup"));
}

TEST_F(Backup, RestoringBringsTheWholeFileAndKeepsTheFormerOne) {
  MakeOther();
  // Its last Action is in a log that was never brought in.
  DisconnectDataFile();
  ASSERT_EQ(ConnectDataFile(other), 0);
  Write(6);
  Copy("other.sdf", "mine.sdf");
  Copy("other.sdf-wal", "mine.sdf-wal");
  ASSERT_EQ(OpenDataFile(app), 0);
  const std::string before = Bytes("mine.sdf");
  app.FindWhere = u"1";
  app.RcdrLoaded = true;
  host.answers = {{"現在: 3個のアクション\n2010/06/01～2010/06/03\n"
                   "復元後: 6個のアクション\n2010/06/01～2010/06/06\n",
                   kYes},
                  "復元しました"};
  const std::string strangers[] = {"user.sdf.restore", "user.sdf.new", "backup/user.sdf.new",
                                   "backup/user_20100623_104530.sdf.new"};
  fs::create_directory(folder.HostPath("backup"));
  for (const std::string& name : strangers) WriteWholeFile(folder.HostPath(name), "a stranger's");
  EXPECT_EQ(Restore(app, mine), Restored::kYes);
  for (const std::string& name : strangers) EXPECT_EQ(Bytes(name), "a stranger's");
  EXPECT_EQ(app.IndexCount, 6);
  EXPECT_FALSE(app.FindWhere || app.RcdrLoaded);
  EXPECT_EQ(Bytes("mine.sdf"), before);
  EXPECT_TRUE(files().Exists(mine + u"-wal"));
  EXPECT_FALSE(files().Exists(path + u"-wal"));
  EXPECT_EQ(RowsIn(kept), 3);
  EXPECT_EQ(RowsIn(path), 6);
}

TEST_F(Backup, WhatIsNoWholeDiaryIsRefused) {
  MakeOther();
  WriteWholeFile(folder.HostPath("text.sdf"), "no data file");
  WriteWholeFile(folder.HostPath("cut.sdf"), Bytes("other.sdf").substr(0, 20000));
  WriteWholeFile(folder.HostPath("empty.sdf"), "");
  Copy("other.sdf", "log.sdf");
  Write(4);
  Copy("user.sdf-wal", "log.sdf-wal");
  Copy("other.sdf", "trigger.sdf");
  ASSERT_EQ(ConnectDataFile(folder.Path(u"trigger.sdf")), 0);
  dbSession().Session->Execute(u"create trigger t after insert on t_UserData begin select 1; end");
  Copy("other.sdf", "columns.sdf");
  ASSERT_EQ(ConnectDataFile(folder.Path(u"columns.sdf")), 0);
  dbSession().Session->Execute(u"alter table t_LongData rename column f_i4Value to other");
  ASSERT_EQ(OpenDataFile(app), 0);
  const auto names = Names("");
  for (const auto& [name, says] :
       {std::pair(u"text.sdf", u"復元できません"), std::pair(u"cut.sdf", u"壊れています"),
        std::pair(u"empty.sdf", u"復元できません"), std::pair(u"log.sdf", u"書込み記録が残って"),
        std::pair(u"trigger.sdf", u"復元できません"), std::pair(u"columns.sdf", u"復元できません"),
        std::pair(u"user.sdf", u"開いている"), std::pair(u"none.sdf", u"読み取る権限")}) {
    SCOPED_TRACE(platform::ToUtf8(name));
    host.answers = {says};
    EXPECT_EQ(Restore(app, folder.Path(name)), Restored::kNo);
    EXPECT_EQ(Names(""), names);
  }
  EXPECT_EQ(app.IndexCount, 4);
}

TEST_F(Backup, AnOlderFormatIsUpgradedBeforeItTakesThePlace) {
  MakeOther();
  ASSERT_EQ(ConnectDataFile(other), 0);
  dbSession().SysInfoTable->SetText(u"DBFmtVer", u"3.1.2010.0623");
  ASSERT_EQ(OpenDataFile(app), 0);
  host.answers = {kYes, {"(1/2)", kNo}, "更新が中止されました"};
  EXPECT_EQ(Restore(app, other), Restored::kNo);
  EXPECT_EQ(app.IndexCount, 3);
  EXPECT_FALSE(files().Exists(folder.Path(u"backup")));
  host.answers = {kYes, {"(1/2)", kYes}, {"(2/2)", kYes}, "更新しました", "復元しました"};
  EXPECT_EQ(Restore(app, other), Restored::kYes);
  EXPECT_EQ(app.IndexCount, 5);
}

TEST_F(Backup, WhileAnotherProgramReadsTheDiaryItKeepsItsPlace) {
  MakeOther();
  Write(4);
  const auto reader = Engine::Open(path);
  std::unique_ptr<RowSet> rows;
  ASSERT_EQ(reader->OpenRows(u"select * from t_UserData", rows), 0);
  host.answers = {kYes, "使用中"};
  EXPECT_EQ(Restore(app, other), Restored::kNo);
  EXPECT_EQ(app.IndexCount, 4);
}

TEST_F(Backup, AFailureAtAnyStepLeavesTheDiaryOpenAndWhole) {
  MakeOther();
  for (const FileCall call :
       {FileCall::kOpenForReading, FileCall::kCreate, FileCall::kRename, FileCall::kMakeFolder,
        FileCall::kRead, FileCall::kWrite, FileCall::kSync}) {
    for (int nth = 1;; ++nth) {
      SCOPED_TRACE(testing::Message() << static_cast<int>(call) << " number " << nth);
      FaultyFiles faulty;
      faulty.Fail(call, nth);
      AgreeingHost agreeing;
      const Restored restored = Restore(app, other);
      const bool came = faulty.Count(call) >= nth;
      EXPECT_EQ(restored, came ? Restored::kNo : Restored::kYes);
      EXPECT_EQ(app.IndexCount, came ? 3 : 5);
      EXPECT_FALSE(files().Exists(path + u".restore"));
      EXPECT_EQ(files().Exists(kept), !came);
      EXPECT_FALSE(files().Exists(kept + u".new"));
      if (!came) break;
    }
    AgreeingHost agreeing;
    ASSERT_EQ(Restore(app, kept), Restored::kYes);
    fs::remove_all(folder.HostPath("backup"));
  }
}
TEST_F(Backup, AKillAtAnyMomentLeavesOneWholeDiary) {
  MakeOther();
  DisconnectDataFile();
  const std::string diary = FileBytes();
  std::set<int> found;
  // False if it came to its end.
  const auto dies = [&](int calls, int writes) {
    fs::remove_all(folder.HostPath("backup"));
    WriteWholeFile(hostPath, diary);
    const int result = testing_support::InACopy([&] {
      FaultyFiles dying;
      AgreeingHost agreeing;
      OpenDataFile(app);
      Write(4);
      dying.Die(calls);
      testing_support::diskCalls().writesUntilDeath = writes;
      return Restore(app, other) == Restored::kYes ? 1 : 2;
    });
    EXPECT_TRUE(result == 0 || result == 1) << result;
    const int rows = RowsIn(path);
    EXPECT_TRUE(rows == 4 || (rows == 5 && RowsIn(kept) == 4)) << rows;
    found.insert(rows);
    return result == 0;
  };
  int calls = 0, writes = 0;
  while (dies(calls, -1)) ++calls;
  EXPECT_EQ(found, (std::set{4, 5}));
  while (dies(-1, writes)) ++writes;
  EXPECT_TRUE(calls > 10 && writes > 1) << calls << ", " << writes;
}

// The restored file is damaged as it takes its place.
class DamagingFiles : public FaultyFiles {
 public:
  bool Rename(std::u16string_view from, std::u16string_view to) override {
    const bool renamed = FaultyFiles::Rename(from, to);
    if (from.find(u".restore") != from.npos) fs::resize_file(*platform::ToHostPath(to), 2000);
    return renamed;
  }
};

TEST_F(Backup, WhatCannotBeOpenedInItsPlaceMakesWayAgain) {
  MakeOther();
  DamagingFiles damaging;
  host.answers = {kYes, "復元できませんでした"};
  EXPECT_EQ(Restore(app, other), Restored::kNo);
  EXPECT_EQ(app.IndexCount, 3);
  EXPECT_EQ(RowsIn(kept), 3);
}

class DailyCopy : public Backup {
 protected:
  DailyCopy() {
    DisconnectDataFile();
    KeepDailyCopies();
    OpenDataFile(app);
  }
  int RowsOf(int day) {
    dbSession().Session->FinishCopy();
    const std::u16string name = DailyName(path, {2010, 6, day});
    const auto engine = Engine::Open(BackupFolder(path) + u'\\' + name);
    if (!engine) return -1;
    EXPECT_EQ(Bytes("backup/" + platform::ToUtf8(name)).substr(18, 2), "\1\1") << "one file";
    std::unique_ptr<RowSet> rows;
    EXPECT_EQ(engine->OpenRows(u"select * from t_UserData", rows), 0);
    return rows->Count().value_or(-1);
  }
};

TEST_F(DailyCopy, HoldsWhatTheDiaryHeldBeforeTheFirstWriteOfADay) {
  Write(4);
  Write(5);
  EXPECT_EQ(RowsOf(23), 3);
  EXPECT_EQ(fs::status(folder.HostPath("backup")).permissions(), fs::perms::owner_all);
  host.now.day = 24;
  app.AutoBackup = core::kOff;
  Write(6);
  EXPECT_EQ(RowsOf(24), -1);
  app.AutoBackup = core::kOn;
  const WriteBurst burst(*dbSession().Session);
  Write(7);
  EXPECT_EQ(RowsOf(24), 6);
  host.now.day = 25;
  ASSERT_EQ(dbSession().Session->BeginTransaction(), 0);
  Write(8);
  ASSERT_EQ(dbSession().Session->Commit(), 0);
  EXPECT_EQ(RowsOf(25), 7);
}

TEST_F(DailyCopy, IsMadeInARollbackJournalTooAndOnceInADayWhateverTheRun) {
  Users().GetRS(u"select f_nchActId from t_UserData", {});  // so that the journal can't be switched
  Write(4);
  EXPECT_FALSE(files().Exists(path + u"-wal"));
  EXPECT_EQ(RowsOf(23), 3);
  DisconnectDataFile();
  KeepDailyCopies();  // as a new run does
  ASSERT_EQ(OpenDataFile(app), 0);
  Write(5);
  EXPECT_EQ(RowsOf(23), 3);
  EXPECT_EQ(Names("backup"), std::set<std::string>{"user_20100623_auto.sdf"});
}

TEST_F(DailyCopy, IsNoneOfAnEmptyDiaryAndOfAFileThatIsBeingMade) {
  DisconnectDataFile();
  ASSERT_EQ(datafile::CreateDataFile(path), 0);
  Write(1);
  DisconnectDataFile();
  EXPECT_FALSE(files().Exists(folder.Path(u"backup")));
}

TEST_F(DailyCopy, ThatFailsIsToldOnceAndWritingGoesOn) {
  PostDailyCopies(7, 33203);
  files().Create(folder.Path(u"backup"));
  Write(4);
  EXPECT_EQ(host.NextPost(), (std::pair<platform::WindowId, int>(7, 33203)));
  EXPECT_TRUE(FinishDailyCopy());
  host.answers = {"今日のバックアップ"};
  TellDailyFailure();
  host.now.day = 24;
  Write(5);
  EXPECT_FALSE(FinishDailyCopy()) << "once a run";
  host.now.day = 25;
  files().Remove(folder.Path(u"backup"));
  Write(6);
  EXPECT_EQ(RowsOf(25), 5);
  LoadActionIndex(app);
  EXPECT_EQ(app.IndexCount, 6);
}

}  // namespace
}  // namespace store_test
