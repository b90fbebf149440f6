#include "datafile/data_file.h"

#include <filesystem>
#include <functional>
#include <vector>

#include "recorder/recording.h"
#include "store/store_fixture.h"
#include "support/document.h"
#include "support/faulty_files.h"

namespace store_test {
namespace {

using namespace store;
using namespace datafile;
using enum platform::Answer;
using Texts = std::vector<std::string>;
using testing_support::Reply;
using Replies = std::deque<Reply>;

class DataFileTest : public StoreTest {
 protected:
  void SetUp() override { app.DataFile = path; }

  Texts FilesInFolder() const {
    Texts names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.HostPath())) {
      names.push_back(entry.path().filename());
    }
    return names;
  }

  static std::string ReadAll(std::u16string_view sql, std::u16string_view column) {
    std::unique_ptr<RowSet> rows;
    if (Failed(dbSession().Session->OpenRows(sql, rows)) || Failed(rows->Bind({&column, 1}))) {
      return "(failed)";
    }
    std::string all;
    std::optional<std::u16string> text;
    while (rows->Next({&text, 1}) == S_OK) all += Readable(text) + "\n";
    return all;
  }

  static std::string TextValue(CNamedValueTable& table, std::u16string_view key) {
    std::u16string text;
    return Failed(table.GetText(key, text)) ? "(none)" : platform::ToUtf8(text);
  }
  static std::string SysInfo(std::u16string_view key) {
    return TextValue(*dbSession().SysInfoTable, key);
  }

  // The open file's schema, and its rows as literals.
  static std::string Dumped() {
    std::string all = ReadAll(u"select sql from sqlite_schema order by rowid", u"sql");
    for (const std::u16string table : {u"t_UserData", u"t_SysInfo", u"t_LongData", u"t_TextData",
                                       u"t_RcdrData", u"t_UndoData"}) {
      const std::string values = ReadAll(
          u"select group_concat('quote(' || name || ')', '||'',''||') as f from "
          u"pragma_table_info('" +
              table + u"')",
          u"f");
      all += ReadAll(u"select '" + table + u"' || " + platform::ToUtf16(values) + u" as f from " +
                         table + u" order by rowid",
                     u"f");
    }
    return all;
  }

  // A file as an older program would have left it, closed, with one Action in it.
  void MakeOldFile(std::u16string_view version, bool withExtItems, bool withRcdrPosition) {
    CreateFile();
    Engine& engine = *dbSession().Session;
    InsertAction(u"2010/06/23 10:45:30");
    engine.Execute(u"alter table t_UserData alter column f_nvcSubject NVARCHAR(50)");
    if (!withExtItems) engine.Execute(u"alter table t_UserData drop column f_nvcExtItems");
    if (!withRcdrPosition) {
      engine.Execute(u"delete from t_TextData where f_nvcItem like 'RcdrL%'");
    }
    dbSession().SysInfoTable->SetText(u"DBFmtVer", version);
    DisconnectDataFile();
  }
};

TEST_F(DataFileTest, MissingFileIsCreatedOnYes) {
  app.DataFile = path = folder.Path(u"日記 'a'.sdf");
  hostPath = folder.HostPath("日記 'a'.sdf");
  testing_support::WriteWholeFile(hostPath + "-wal", "left by a killed program");
  host.answers = {kYes};
  EXPECT_EQ(OpenDataFile(app), -1);
  EXPECT_EQ(app.IndexCount, 0);
  EXPECT_EQ(ReadAll(u"PRAGMA integrity_check", u"integrity_check"), "ok\n");
  for (const auto& entry : std::filesystem::directory_iterator(folder.HostPath())) {
    EXPECT_EQ(entry.status().permissions(), std::filesystem::perms(0600)) << entry.path();
  }
  DisconnectDataFile();
  EXPECT_EQ(FilesInFolder(), Texts{"日記 'a'.sdf"});
  EXPECT_EQ(FileBytes().substr(18, 2), "\1\1") << "closed in the rollback form";
}

TEST_F(DataFileTest, HoldsWhatTheDocumentSays) {
  CreateFile();
  recorder::CRecorder recorder(app);
  recorder.Open();
  recorder.fields.latitude = u"35/40/52";
  recorder.fields.longitude = u"取得中";
  recorder.fields.place = u"自宅";
  recorder.OnBtnRec();
  recorder.Close();
  recorder::CloseRecorderSession(app);
  ASSERT_EQ(ConnectDataFile(path), 0);
  const std::string made = Dumped();
  testing_support::WriteWholeFile(folder.HostPath("document.sdf"), "");
  ASSERT_EQ(ConnectDataFile(folder.Path(u"document.sdf")), 0);
  const std::string statements = testing_support::FormatExample("sql");
  ASSERT_EQ(dbSession().Session->Execute(platform::ToUtf16(statements)), 0);
  EXPECT_EQ(made, Dumped());
}

TEST_F(DataFileTest, MissingFileRoads) {
  const std::u16string gone = folder.Path(u"gone\\user.sdf");
  const std::string missing = platform::ToUtf8(path);
  const std::string create = "データファイル初期化確認|データファイル '" + missing +
                             "' が見つかりません。初期化しますか。";
  const std::string noFolder = "データファイル初期化確認|データファイルを格納したフォルダ '" +
                               platform::ToUtf8(folder.Path(u"gone")) + "' が見つかりません。\n";
  const std::string createBeside =
      noFolder + "アプリケーションフォルダ下にデータファイルを作成しますか。";
  const std::string takeBeside =
      noFolder + "アプリケーションフォルダ下のデータファイル '" + missing + "' に変更しますか。";
  host.programPath = folder.Path(u"Morvenly");
  const std::tuple<const char*, std::u16string, bool, Replies, int> rows[] = {
      {"No at the question", path, false, {{create, kNo}}, -101},
      {"a name without a backslash",
       u"user.sdf",
       false,
       {"データファイル名不正|指定されているデータファイル名'user.sdf'が不正です。",
        "データファイル初期化失敗|データファイルの初期化に失敗しました。(0)\n"
        "プログラムを終了します。"},
       -101},
      {"a missing folder, No", gone, false, {{createBeside, kNo}}, -101},
      {"a missing folder, Yes", gone, false, {{createBeside, kYes}}, -1},
      {"a file beside the program, No", gone, true, {{takeBeside, kNo}}, -101},
      {"a file beside the program, Yes: it is connected", gone, true, {{takeBeside, kYes}}, -1},
  };
  for (const auto& [why, dataFile, hasOneBeside, answers, result] : rows) {
    SCOPED_TRACE(why);
    std::filesystem::remove(hostPath);
    if (hasOneBeside) CreateFile();
    DisconnectDataFile();
    app.DataFile = dataFile;
    host.answers = answers;
    EXPECT_EQ(OpenDataFile(app), result);
    EXPECT_EQ(app.DataFile, result == -1 ? path : dataFile);
    EXPECT_EQ(dbSession().UserTable != nullptr, result == -1);
  }
}

// Brings a file into its place while a question stands.
class Interloper : public testing_support::FakeHost {
 public:
  std::function<void()> comes;
  platform::Answer ShowMessage(const platform::Message& message) override {
    comes();
    return FakeHost::ShowMessage(message);
  }
};

TEST_F(DataFileTest, WhatStandsThereOrMayStandThereIsNotMadeAgain) {
  CreateFile();
  InsertAction(u"2010/06/23 10:00:00");
  DisconnectDataFile();
  const std::string whole = FileBytes();
  {
    testing_support::FaultyFiles faulty;
    faulty.Fail(testing_support::FileCall::kAttributes, 1, faulty.kForever);
    EXPECT_EQ(OpenDataFile(app), 0) << "no question";
  }
  DisconnectDataFile();
  const auto comes = [&] { testing_support::WriteWholeFile(hostPath, whole); };
  for (const bool changes : {false, true}) {
    std::filesystem::remove(hostPath);
    Interloper asked;
    asked.comes = comes;
    asked.answers = {kYes};
    if (changes) asked.answers.push_back(kOk);
    EXPECT_EQ(changes ? int{ChangeDataFile(app, path)} : int{OpenDataFile(app)}, changes ? 0 : -1);
    EXPECT_EQ(app.IndexCount, 1);
    DisconnectDataFile();
  }
  std::filesystem::remove(hostPath);
  std::filesystem::create_symlink("nowhere/user.sdf", hostPath);
  host.answers = {kYes, "同じ名前のファイルまたはリンクがあります。"};
  EXPECT_EQ(OpenDataFile(app), -101);
  EXPECT_TRUE(std::filesystem::is_symlink(hostPath));
}

TEST_F(DataFileTest, ANewFileThatFailsLeavesTheOneInItsPlaceAndNoLoneJournal) {
  const std::string journal = hostPath + "-journal";
  for (const bool replaces : {false, true}) {
    SCOPED_TRACE(replaces);
    if (replaces) CreateFile();
    DisconnectDataFile();
    testing_support::WriteWholeFile(journal, "a former file's");
    testing_support::FaultyFiles faulty;
    faulty.Fail(testing_support::FileCall::kRename);  // as far as a kill would let it come
    EXPECT_LT(CreateDataFile(path), 0);
    EXPECT_EQ(std::filesystem::exists(hostPath), replaces);
    EXPECT_EQ(std::filesystem::exists(journal), replaces) << "it belongs to the file";
  }
}

TEST_F(DataFileTest, FormatsAreUpgraded) {
  const Replies questions = {
      {"バージョン更新確認(1/2)|データファイルのフォーマットが最新ではありません。\n"
       "処理を継続するためにはフォーマットを更新する必要があります。\n"
       "フォーマットを更新しますか。",
       kYes},
      {"バージョン更新確認(2/2)|更新の前にデータファイル\n" + platform::ToUtf8(path) +
           "\"をバックアップされることを推奨します。\n"
           "フォーマットの更新を開始してもよろしいですか。",
       kYes},
      "更新完了|データファイルのフォーマットを 3.2.2010.0623 に更新しました。"};
  const std::tuple<const char*, std::u16string, bool, bool, bool, const char*> rows[] = {
      {"the oldest: keys and columns", u"3.1.2010.0429", false, false, true, ""},
      {"columns alone", u"3.1.2010.0430", false, false, true, "(none)"},
      {"stamps alone", u"3.1.2010.0623", true, true, true, ""},
      {"later than ours", u"3.3.2011.0101", true, true, false, ""},
  };
  for (const auto& [why, version, extItems, rcdrPosition, upgraded, latitude] : rows) {
    SCOPED_TRACE(why);
    MakeOldFile(version, extItems, rcdrPosition);
    if (upgraded) host.answers = questions;
    EXPECT_EQ(OpenDataFile(app), upgraded ? -2 : 0);
    EXPECT_EQ(SysInfo(u"DBFmtVer"), upgraded ? "3.2.2010.0623" : platform::ToUtf8(version));
    EXPECT_EQ(SysInfo(u"UpdProgVer"), upgraded ? "3.2.2010.1114" : "(none)");
    EXPECT_EQ(SysInfo(u"UpdateTime"), upgraded ? "2010/06/23 10:45:30" : "(none)");
    EXPECT_EQ(TextValue(*dbSession().TextTable, u"RcdrLatitude"), latitude);
    ASSERT_EQ(app.IndexCount, 1) << "the rows stay";
    const std::u16string id(app.ActIds.At(0));
    Action action = MakeAction(u"2010/06/23 10:45:30", u"2010/06/23 10:45:30");
    action[kSubject] = std::u16string(120, u'長');
    action[kExtItems] = u"x";
    ASSERT_EQ(Users().Update(id, action), 0);
    ASSERT_EQ(Users().ReadById(id, action), 0);
    EXPECT_EQ(action[kSubject]->size(), extItems ? 50u : 100u);
    EXPECT_EQ(action[kExtItems], u"x");
    DisconnectDataFile();
  }
  EXPECT_EQ(host.messages[0].defaultButton, 1) << "No";
}

TEST_F(DataFileTest, DeclinedUpgradeLeavesTheFile) {
  MakeOldFile(u"3.1.2010.0430", false, true);
  std::filesystem::permissions(hostPath, std::filesystem::perms(0640));
  const std::string before = FileBytes();
  const char* stopped = "更新中止|フォーマットの更新が中止されました。\nプログラムを終了します。";
  for (const Replies& answers : {Replies{kNo, stopped}, Replies{kYes, kNo, stopped}}) {
    SCOPED_TRACE(answers.size());
    host.answers = answers;
    EXPECT_EQ(OpenDataFile(app), -110);
    EXPECT_EQ(FileBytes(), before);
    EXPECT_EQ(FilesInFolder().size(), 1u);
    EXPECT_EQ(std::filesystem::status(hostPath).permissions(), std::filesystem::perms(0640));
  }
}

TEST_F(DataFileTest, UpgradeOfAFileThatHasTheColumnFails) {
  MakeOldFile(u"3.1.2010.0430", true, true);
  host.answers = {kYes, kYes,
                  "フォーマット更新失敗|データファイルのフォーマット更新に失敗しました。\n"
                  "プログラムを終了します。"};
  EXPECT_EQ(OpenDataFile(app), -110);
}

TEST_F(DataFileTest, LookingAtAFileChangesNoByte) {
  CreateFile();
  const std::u16string id = InsertAction(u"2010/06/23 10:00:00");
  DisconnectDataFile();
  std::filesystem::permissions(hostPath, std::filesystem::perms(0640));
  const std::string before = FileBytes();
  EXPECT_EQ(OpenDataFile(app), 0);
  Action action;
  EXPECT_EQ(Users().ReadById(id, action), 0);
  EXPECT_EQ(FilesInFolder().size(), 1u);
  EXPECT_EQ(std::filesystem::status(hostPath).permissions(), std::filesystem::perms(0600));
  DisconnectDataFile();
  DisconnectDataFile();
  EXPECT_EQ(FileBytes(), before);
}

TEST_F(DataFileTest, ChangeToAnotherFile) {
  const std::u16string other = folder.Path(u"other.sdf");
  const std::u16string fresh = folder.Path(u"new\\fresh.sdf");
  CreateFile();
  InsertAction(u"2010/06/23 10:00:00");
  ASSERT_EQ(CreateDataFile(other), 0);
  InsertAction(u"2010/06/23 11:00:00");
  InsertAction(u"2010/06/23 12:00:00");
  testing_support::WriteWholeFile(folder.HostPath("bad.sdf"), "no data file");
  const Reply change = {"データファイル変更確認|指定されたデータファイルに変更します。", kOk};
  const std::string missing =
      "データファイル初期化確認|指定されたデータファイルは存在しません。初期化しますか。";
  const std::string noFolder = "フォルダ作成確認|指定されたフォルダは存在しません。作成しますか。";
  const std::tuple<const char*, std::u16string, Replies, int, int, bool> rows[] = {
      {"Cancel", other, {{change.says, kCancel}}, -1, 1, false},
      {"a bad file: back to the old one",
       folder.Path(u"bad.sdf"),
       {change,
        "データファイル不正|データファイルの内容が不正です。\nデータファイルの変更を中止します。"},
       0,
       1,
       false},
      {"an existing one", other, {change}, 0, 2, true},
      {"a name without a backslash",
       u"x.sdf",
       {"データファイル名不正|指定されているデータファイル名が不正です。"},
       -1,
       1,
       false},
      {"a new one, No", folder.Path(u"x.sdf"), {{missing, kNo}}, -1, 1, false},
      {"a new folder, No", fresh, {{noFolder, kNo}}, -1, 1, false},
      {"a new folder, Yes", fresh, {{noFolder, kYes}}, 0, 0, true},
  };
  for (const auto& [why, chosen, answers, result, indexCount, changed] : rows) {
    SCOPED_TRACE(why);
    app.DataFile = path;
    ASSERT_EQ(OpenDataFile(app), 0);
    app.SelActId = u"ID2010062310453000";
    app.RcdrLoaded = true;
    host.answers = answers;
    EXPECT_EQ(ChangeDataFile(app, chosen), result);
    EXPECT_EQ(app.DataFile, changed ? chosen : path);
    EXPECT_EQ(app.IndexCount, indexCount);
    EXPECT_EQ(app.SelActId.empty(), result == 0);
    EXPECT_EQ(app.RcdrLoaded, result != 0);
    EXPECT_TRUE(dbSession().UserTable);
  }
  EXPECT_EQ(testing_support::ReadWholeFile(folder.HostPath("bad.sdf")), "no data file");
  // What cannot be opened, and a path where no file can be made, end with no file open.
  host.answers = {kOk,
                  "エラー|データファイル読込み中にエラーが発生しました。\n"
                  "同じ名前のフォルダがあります。"};
  EXPECT_EQ(ChangeDataFile(app, folder.Path(u"new")), -10) << "a folder";
  host.answers = {kYes,
                  "データファイル初期化失敗|データファイルの初期化に失敗しました。"
                  "(-2147467259)\nプログラムを終了します。"};
  EXPECT_EQ(ChangeDataFile(app, folder.Path(u"bad.sdf\\x.sdf")), -10);
  EXPECT_FALSE(dbSession().Session);
  EXPECT_EQ(app.IndexCount, 0);
}

}  // namespace
}  // namespace store_test
