#include "store/data_file.h"

#include <sys/stat.h>

#include <filesystem>
#include <vector>

#include "core/date_time.h"
#include "store_fixture.h"

namespace store_test {
namespace {

using namespace store;
using platform::Answer;
using platform::Buttons;
using platform::Icon;

class DataFileTest : public StoreTest {
 protected:
  void SetUp() override { app.DataFile = path; }

  // Compares what was shown with "title|icon|buttons|default|text" lines.
  void ExpectMessages(const std::vector<std::string>& expected) {
    std::vector<std::string> shown;
    for (const platform::Message& message : host.messages) {
      shown.push_back(platform::ToUtf8(message.title) + "|" +
                      "-iw?s"[static_cast<int>(message.icon)] + "|" +
                      std::to_string(static_cast<int>(message.buttons)) + "|" +
                      std::to_string(message.defaultButton) + "|" + platform::ToUtf8(message.text));
    }
    EXPECT_EQ(shown, expected);
    host.messages.clear();
  }

  std::vector<std::string> FilesInFolder() const {
    std::vector<std::string> names;
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

  // A file as an older program would have left it, closed, with one Action in it.
  void MakeOldFile(std::u16string_view version, bool withExtItems, bool withRcdrPosition) {
    CreateFile();
    Engine& engine = *dbSession().Session;
    engine.Execute(u"DROP TABLE t_UserData");
    engine.Execute(std::u16string(u"CREATE TABLE t_UserData (f_nchActId NCHAR(18), "
                                  u"f_dtLastUpdate datetime, f_nchStaDateTime NCHAR(19), "
                                  u"f_nchEndDateTime NCHAR(19), f_fltLatitude float null, "
                                  u"f_fltLongitude float null, f_nvcSubject NVARCHAR(50), "
                                  u"f_nvcPlace NVARCHAR(500), f_nvcCategory1 NVARCHAR(500), "
                                  u"f_nvcCategory2 NVARCHAR(500), f_nvcMemo NVARCHAR(2000)") +
                   (withExtItems ? u", f_nvcExtItems NVARCHAR(2000))" : u")"));
    engine.Execute(u"CREATE INDEX i_UserData on t_UserData (f_nchActId ASC)");
    engine.Execute(
        u"insert into t_UserData (f_nchActId,f_nchStaDateTime,f_nchEndDateTime,f_nvcSubject) "
        u"values "
        u"('ID2010062310453000','2010/06/23 10:45:30','2010/06/23 10:45:30','古い')");
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
  host.answers = {Answer::kYes};
  EXPECT_EQ(OpenDataFile(app), -1);
  ExpectMessages({"データファイル初期化確認|?|2|0|データファイル '" + platform::ToUtf8(path) +
                  "' が見つかりません。初期化しますか。"});
  EXPECT_EQ(app.IndexCount, 0);
  EXPECT_EQ(SysInfo(u"ProgName"), "Morvenly");
  EXPECT_EQ(SysInfo(u"ProgVer"), "3.2.2010.1114");
  EXPECT_EQ(SysInfo(u"DBFmtVer"), "3.2.2010.0623");
  EXPECT_EQ(SysInfo(u"CreateTime"), "2010/06/23 10:45:30");
  EXPECT_EQ(SysInfo(u"UpdProgVer"), "(none)");
  EXPECT_EQ(ReadAll(u"select f_nvcItem from t_TextData order by rowid", u"f_nvcItem"),
            "RcdrPreActId\nRcdrPreDateTime\nRcdrDateTime\nRcdrLatitude\nRcdrLongitude\nRcdrPlace\n"
            "RcdrCategory1\nRcdrCategory2\n");
  int32_t count = -1;
  EXPECT_EQ(dbSession().LongTable->GetLong(u"RcdrHistNum", count), 0);
  EXPECT_EQ(count, 0);
  EXPECT_EQ(ReadAll(u"select sql from sqlite_schema where name='t_LongData'", u"sql"),
            "CREATE TABLE t_LongData (f_nvcItem NVARCHAR(20),  f_i4Value int)\n");
  EXPECT_EQ(ReadAll(u"select name from sqlite_schema where type='index' order by name", u"name"),
            "i_LongData\ni_RcdrData\ni_SysInfo\ni_TextData\ni_UserData\n");
  EXPECT_EQ(ReadAll(u"PRAGMA integrity_check", u"integrity_check"), "ok\n");
  for (const auto& entry : std::filesystem::directory_iterator(folder.HostPath())) {
    EXPECT_EQ(entry.status().permissions(), std::filesystem::perms(0600)) << entry.path();
  }
  DisconnectDataFile();
  EXPECT_EQ(FilesInFolder(), std::vector<std::string>{"日記 'a'.sdf"});
  EXPECT_EQ(FileBytes().substr(18, 2), "\1\1") << "closed in the rollback form";
}

TEST_F(DataFileTest, MissingFileRoads) {
  const std::string missing = platform::ToUtf8(path);
  const std::string initialTitle = "データファイル初期化確認|?|2|0|";
  const std::string failed =
      "データファイル初期化失敗|s|0|0|データファイルの初期化に失敗しました。(0)\n"
      "プログラムを終了します。";
  struct Row {
    const char* why;
    std::u16string dataFile;
    std::deque<Answer> answers;
    int result;
    std::vector<std::string> messages;
  };
  const std::u16string gone = folder.Path(u"gone\\user.sdf");
  const std::string goneText = "データファイルを格納したフォルダ '" +
                               platform::ToUtf8(folder.Path(u"gone")) + "' が見つかりません。\n";
  host.programPath = folder.Path(u"Morvenly");
  const Row rows[] = {
      {"No at the question",
       path,
       {Answer::kNo},
       -101,
       {initialTitle + "データファイル '" + missing + "' が見つかりません。初期化しますか。"}},
      {"a name without a backslash",
       u"user.sdf",
       {},
       -101,
       {"データファイル名不正|s|0|0|指定されているデータファイル名'user.sdf'が不正です。", failed}},
      {"a missing folder, nothing beside the program, No",
       gone,
       {Answer::kNo},
       -101,
       {initialTitle + goneText + "アプリケーションフォルダ下にデータファイルを作成しますか。"}},
      {"the same, Yes",
       gone,
       {Answer::kYes},
       -1,
       {initialTitle + goneText + "アプリケーションフォルダ下にデータファイルを作成しますか。"}},
      {"a missing folder, a file beside the program, No",
       gone,
       {Answer::kNo},
       -101,
       {initialTitle + goneText + "アプリケーションフォルダ下のデータファイル '" + missing +
        "' に変更しますか。"}},
      {"the same, Yes: the file is connected",
       gone,
       {Answer::kYes},
       -1,
       {initialTitle + goneText + "アプリケーションフォルダ下のデータファイル '" + missing +
        "' に変更しますか。"}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    app.DataFile = row.dataFile;
    host.answers = row.answers;
    EXPECT_EQ(OpenDataFile(app), row.result);
    ExpectMessages(row.messages);
    EXPECT_EQ(app.DataFile, row.result == -1 ? path : row.dataFile);
    EXPECT_EQ(dbSession().UserTable != nullptr, row.result == -1);
    DisconnectDataFile();
  }
}

TEST_F(DataFileTest, FormatsAreUpgraded) {
  const std::string notLatest =
      "バージョン更新確認(1/2)|?|2|1|データファイルのフォーマットが最新ではありません。\n"
      "処理を継続するためにはフォーマットを更新する必要があります。\n"
      "フォーマットを更新しますか。";
  const std::string backup = "バージョン更新確認(2/2)|?|2|1|更新の前にデータファイル\n" +
                             platform::ToUtf8(path) +
                             "\"をバックアップされることを推奨します。\n"
                             "フォーマットの更新を開始してもよろしいですか。";
  const std::string done =
      "更新完了|i|0|0|データファイルのフォーマットを 3.2.2010.0623 に更新しました。";
  struct Row {
    const char* why;
    std::u16string version;
    bool extItems, rcdrPosition, keysComeBack;
    int result;
  };
  const Row rows[] = {
      {"the oldest: keys and columns", u"3.1.2010.0429", false, false, true, -2},
      {"columns alone", u"3.1.2010.0430", false, false, false, -2},
      {"stamps alone", u"3.1.2010.0623", true, true, true, -2},
      {"current", u"3.2.2010.0623", true, true, true, 0},
      {"later than ours", u"3.3.2011.0101", true, true, true, 0},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    MakeOldFile(row.version, row.extItems, row.rcdrPosition);
    const bool upgraded = row.result == -2;
    if (upgraded) host.answers = {Answer::kYes, Answer::kYes};
    EXPECT_EQ(OpenDataFile(app), row.result);
    ExpectMessages(upgraded ? std::vector<std::string>{notLatest, backup, done}
                            : std::vector<std::string>{});
    EXPECT_EQ(SysInfo(u"DBFmtVer"), upgraded ? "3.2.2010.0623" : platform::ToUtf8(row.version));
    EXPECT_EQ(SysInfo(u"UpdProgVer"), upgraded ? "3.2.2010.1114" : "(none)");
    EXPECT_EQ(SysInfo(u"UpdateTime"), upgraded ? "2010/06/23 10:45:30" : "(none)");
    EXPECT_EQ(TextValue(*dbSession().TextTable, u"RcdrLatitude"), row.keysComeBack ? "" : "(none)");
    EXPECT_EQ(app.IndexCount, 1);
    Action action;
    ASSERT_EQ(Users().ReadById(u"ID2010062310453000", action), 0);
    EXPECT_EQ(action[kSubject], u"古い");
    action[kSubject] = std::u16string(120, u'長');
    action[kExtItems] = u"x";
    ASSERT_EQ(Users().Update(u"ID2010062310453000", action), 0);
    ASSERT_EQ(Users().ReadById(u"ID2010062310453000", action), 0);
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
  for (const std::deque<Answer>& answers :
       {std::deque{Answer::kNo}, std::deque{Answer::kYes, Answer::kNo}}) {
    host.answers = answers;
    EXPECT_EQ(OpenDataFile(app), -110);
    EXPECT_EQ(host.messages.back().text,
              u"フォーマットの更新が中止されました。\nプログラムを終了します。");
    EXPECT_EQ(host.messages.back().title, u"更新中止");
    EXPECT_EQ(FileBytes(), before);
    EXPECT_EQ(FilesInFolder().size(), 1u);
    EXPECT_EQ(std::filesystem::status(hostPath).permissions(), std::filesystem::perms(0644));
  }
}

TEST_F(DataFileTest, UpgradeOfAFileThatHasTheColumnFails) {
  MakeOldFile(u"3.1.2010.0430", true, true);
  host.answers = {Answer::kYes, Answer::kYes};
  EXPECT_EQ(OpenDataFile(app), -110);
  EXPECT_EQ(host.messages.back().text,
            u"データファイルのフォーマット更新に失敗しました。\nプログラムを終了します。");
  EXPECT_EQ(host.messages.back().title, u"フォーマット更新失敗");
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
  CreateFile();
  InsertAction(u"2010/06/23 10:00:00");
  ASSERT_EQ(CreateDataFile(folder.Path(u"other.sdf")), 0);
  InsertAction(u"2010/06/23 11:00:00");
  InsertAction(u"2010/06/23 12:00:00");
  testing_support::WriteWholeFile(folder.HostPath("bad.sdf"), "no data file");
  ASSERT_EQ(OpenDataFile(app), 0);
  const std::string change = "データファイル変更確認|?|1|0|指定されたデータファイルに変更します。";
  const std::string missing =
      "データファイル初期化確認|?|2|0|指定されたデータファイルは存在しません。初期化しますか。";
  const std::string folderMissing =
      "フォルダ作成確認|?|2|0|指定されたフォルダは存在しません。作成しますか。";
  struct Row {
    const char* why;
    std::u16string path;
    std::deque<Answer> answers;
    int result;
    std::u16string dataFile;
    int indexCount;
    std::vector<std::string> messages;
  };
  const std::u16string other = folder.Path(u"other.sdf");
  const std::u16string fresh = folder.Path(u"new\\fresh.sdf");
  const Row rows[] = {
      {"Cancel", other, {Answer::kCancel}, -1, path, 1, {change}},
      {"a bad file: back to the old one",
       folder.Path(u"bad.sdf"),
       {Answer::kOk},
       0,
       path,
       1,
       {change,
        "データファイル不正|s|0|0|データファイルの内容が不正です。\n"
        "データファイルの変更を中止します。"}},
      {"an existing one", other, {Answer::kOk}, 0, other, 2, {change}},
      {"a name without a backslash",
       u"x.sdf",
       {},
       -1,
       other,
       2,
       {"データファイル名不正|s|0|0|指定されているデータファイル名が不正です。"}},
      {"a new one, No", folder.Path(u"x.sdf"), {Answer::kNo}, -1, other, 2, {missing}},
      {"a new folder, No", fresh, {Answer::kNo}, -1, other, 2, {folderMissing}},
      {"a new folder, Yes", fresh, {Answer::kYes}, 0, fresh, 0, {folderMissing}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    app.SelActId = u"ID2010062310453000";
    app.RcdrLoaded = true;
    host.answers = row.answers;
    EXPECT_EQ(ChangeDataFile(app, row.path), row.result);
    ExpectMessages(row.messages);
    EXPECT_EQ(app.DataFile, row.dataFile);
    EXPECT_EQ(app.IndexCount, row.indexCount);
    EXPECT_EQ(app.SelActId.empty(), row.result == 0);
    EXPECT_EQ(app.RcdrLoaded, row.result != 0);
    EXPECT_TRUE(dbSession().UserTable);
  }
  EXPECT_EQ(testing_support::ReadWholeFile(folder.HostPath("bad.sdf")), "no data file");
  // A path where no file can be made ends with no file open.
  testing_support::WriteWholeFile(folder.HostPath("file"), "");
  host.answers = {Answer::kYes};
  EXPECT_EQ(ChangeDataFile(app, folder.Path(u"file\\x.sdf")), -10);
  EXPECT_EQ(host.messages.back().text,
            u"データファイルの初期化に失敗しました。(-2147467259)\nプログラムを終了します。");
  EXPECT_FALSE(dbSession().Session);
  EXPECT_EQ(app.IndexCount, 0);
}

}  // namespace
}  // namespace store_test
