#include "datafile/data_file.h"

#include <filesystem>
#include <vector>

#include "recorder/recording.h"
#include "store/store_fixture.h"
#include "support/document.h"

namespace store_test {
namespace {

using namespace store;
using namespace datafile;
using enum platform::Answer;
using Texts = std::vector<std::string>;
using Replies = std::deque<testing_support::Reply>;

class DataFileTest : public StoreTest {
 protected:
  void SetUp() override { app.DataFile = path; }

  // What was shown since the last call: "title|icon, buttons, default button|text" each.
  Texts Shown() {
    Texts shown;
    for (const platform::Message& message : host.messages) {
      shown.push_back(platform::ToUtf8(message.title) + "|" +
                      "-iw?s"[static_cast<int>(message.icon)] +
                      std::to_string(static_cast<int>(message.buttons)) +
                      std::to_string(message.defaultButton) + "|" + platform::ToUtf8(message.text));
    }
    host.messages.clear();
    return shown;
  }

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
    for (const std::u16string table :
         {u"t_UserData", u"t_SysInfo", u"t_LongData", u"t_TextData", u"t_RcdrData"}) {
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
  const std::string goneFolder = platform::ToUtf8(folder.Path(u"gone"));
  const Texts create = {"データファイル初期化確認|?20|データファイル '" + missing +
                        "' が見つかりません。初期化しますか。"};
  const Texts badName = {
      "データファイル名不正|s00|指定されているデータファイル名'user.sdf'が不正です。",
      "データファイル初期化失敗|s00|データファイルの初期化に失敗しました。(0)\n"
      "プログラムを終了します。"};
  const std::string noFolder = "データファイル初期化確認|?20|データファイルを格納したフォルダ '" +
                               goneFolder + "' が見つかりません。\n";
  const Texts createBeside = {noFolder +
                              "アプリケーションフォルダ下にデータファイルを作成しますか。"};
  const Texts takeBeside = {noFolder + "アプリケーションフォルダ下のデータファイル '" + missing +
                            "' に変更しますか。"};
  host.programPath = folder.Path(u"Morvenly");
  const struct {
    const char* why;
    std::u16string dataFile;
    Replies answers;
    int result;
    Texts shown;
  } rows[] = {
      {"No at the question", path, {kNo}, -101, create},
      {"a name without a backslash", u"user.sdf", {kOk, kOk}, -101, badName},
      {"a missing folder, nothing beside the program, No", gone, {kNo}, -101, createBeside},
      {"the same, Yes", gone, {kYes}, -1, createBeside},
      {"a missing folder, a file beside the program, No", gone, {kNo}, -101, takeBeside},
      {"the same, Yes: the file is connected", gone, {kYes}, -1, takeBeside},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    app.DataFile = row.dataFile;
    host.answers = row.answers;
    EXPECT_EQ(OpenDataFile(app), row.result);
    EXPECT_EQ(Shown(), row.shown);
    EXPECT_EQ(app.DataFile, row.result == -1 ? path : row.dataFile);
    EXPECT_EQ(dbSession().UserTable != nullptr, row.result == -1);
    DisconnectDataFile();
  }
}

TEST_F(DataFileTest, FormatsAreUpgraded) {
  const Texts questions = {
      "バージョン更新確認(1/2)|?21|データファイルのフォーマットが最新ではありません。\n"
      "処理を継続するためにはフォーマットを更新する必要があります。\n"
      "フォーマットを更新しますか。",
      "バージョン更新確認(2/2)|?21|更新の前にデータファイル\n" + platform::ToUtf8(path) +
          "\"をバックアップされることを推奨します。\n"
          "フォーマットの更新を開始してもよろしいですか。",
      "更新完了|i00|データファイルのフォーマットを 3.2.2010.0623 に更新しました。"};
  const struct {
    const char* why;
    std::u16string version;
    bool extItems, rcdrPosition;
    int result;
    const char* latitude;
  } rows[] = {
      {"the oldest: keys and columns", u"3.1.2010.0429", false, false, -2, ""},
      {"columns alone", u"3.1.2010.0430", false, false, -2, "(none)"},
      {"stamps alone", u"3.1.2010.0623", true, true, -2, ""},
      {"later than ours", u"3.3.2011.0101", true, true, 0, ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    MakeOldFile(row.version, row.extItems, row.rcdrPosition);
    const bool upgraded = row.result == -2;
    if (upgraded) host.answers = {kYes, kYes, kOk};
    EXPECT_EQ(OpenDataFile(app), row.result);
    EXPECT_EQ(Shown(), upgraded ? questions : Texts{});
    EXPECT_EQ(SysInfo(u"DBFmtVer"), upgraded ? "3.2.2010.0623" : platform::ToUtf8(row.version));
    EXPECT_EQ(SysInfo(u"UpdProgVer"), upgraded ? "3.2.2010.1114" : "(none)");
    EXPECT_EQ(SysInfo(u"UpdateTime"), upgraded ? "2010/06/23 10:45:30" : "(none)");
    EXPECT_EQ(TextValue(*dbSession().TextTable, u"RcdrLatitude"), row.latitude);
    ASSERT_EQ(app.IndexCount, 1) << "the rows stay";
    const std::u16string id(app.ActIds.At(0));
    Action action = MakeAction(u"2010/06/23 10:45:30", u"2010/06/23 10:45:30");
    action[kSubject] = std::u16string(120, u'長');
    action[kExtItems] = u"x";
    ASSERT_EQ(Users().Update(id, action), 0);
    ASSERT_EQ(Users().ReadById(id, action), 0);
    EXPECT_EQ(action[kSubject]->size(), row.extItems ? 50u : 100u);
    EXPECT_EQ(action[kExtItems], u"x");
    EXPECT_EQ(ReadAll(u"PRAGMA integrity_check", u"integrity_check"), "ok\n");
    DisconnectDataFile();
  }
}

TEST_F(DataFileTest, DeclinedUpgradeLeavesTheFile) {
  MakeOldFile(u"3.1.2010.0430", false, true);
  std::filesystem::permissions(hostPath, std::filesystem::perms(0644));
  const std::string before = FileBytes();
  const char* stopped = "更新中止|フォーマットの更新が中止されました。\nプログラムを終了します。";
  for (const Replies& answers : {Replies{kNo, stopped}, Replies{kYes, kNo, stopped}}) {
    host.answers = answers;
    EXPECT_EQ(OpenDataFile(app), -110);
    EXPECT_EQ(FileBytes(), before);
    EXPECT_EQ(FilesInFolder().size(), 1u);
    EXPECT_EQ(std::filesystem::status(hostPath).permissions(), std::filesystem::perms(0644));
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
  std::filesystem::permissions(hostPath, std::filesystem::perms(0644));
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
  ASSERT_EQ(OpenDataFile(app), 0);
  const Texts change = {"データファイル変更確認|?10|指定されたデータファイルに変更します。"};
  const Texts bad = {change[0],
                     "データファイル不正|s00|データファイルの内容が不正です。\n"
                     "データファイルの変更を中止します。"};
  const Texts badName = {"データファイル名不正|s00|指定されているデータファイル名が不正です。"};
  const Texts missing = {
      "データファイル初期化確認|?20|指定されたデータファイルは存在しません。"
      "初期化しますか。"};
  const Texts noFolder = {"フォルダ作成確認|?20|指定されたフォルダは存在しません。作成しますか。"};
  const struct {
    const char* why;
    std::u16string path;
    Replies answers;
    int result;
    std::u16string dataFile;
    int indexCount;
    Texts shown;
  } rows[] = {
      {"Cancel", other, {kCancel}, -1, path, 1, change},
      {"a bad file: back to the old one", folder.Path(u"bad.sdf"), {kOk, kOk}, 0, path, 1, bad},
      {"an existing one", other, {kOk}, 0, other, 2, change},
      {"a name without a backslash", u"x.sdf", {kOk}, -1, other, 2, badName},
      {"a new one, No", folder.Path(u"x.sdf"), {kNo}, -1, other, 2, missing},
      {"a new folder, No", fresh, {kNo}, -1, other, 2, noFolder},
      {"a new folder, Yes", fresh, {kYes}, 0, fresh, 0, noFolder},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    app.SelActId = u"ID2010062310453000";
    app.RcdrLoaded = true;
    host.answers = row.answers;
    EXPECT_EQ(ChangeDataFile(app, row.path), row.result);
    EXPECT_EQ(Shown(), row.shown);
    EXPECT_EQ(app.DataFile, row.dataFile);
    EXPECT_EQ(app.IndexCount, row.indexCount);
    EXPECT_EQ(app.SelActId.empty(), row.result == 0);
    EXPECT_EQ(app.RcdrLoaded, row.result != 0);
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
