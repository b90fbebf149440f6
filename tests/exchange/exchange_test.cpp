// Files out and in again: their bytes, what is refused, and what a failure leaves.
#include "exchange/exchange.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <sstream>

#include "core/paths.h"
#include "exchange/action_lines.h"
#include "exchange/exchange_fixture.h"
#include "exchange/export.h"
#include "exchange/import.h"
#include "exchange/import_reader.h"
#include "platform/code_page.h"
#include "platform/utf.h"
#include "support/disk_calls.h"
#include "support/document.h"
#include "support/faulty_files.h"
#include "support/process.h"

namespace exchange {
namespace {

using platform::Answer;
using testing_support::FileCall;

constexpr char kImported[] = "インポートが完了しました。";

class FileTest : public ExchangeTest {
 protected:
  void Put(std::string_view bytes) { testing_support::WriteWholeFile(csvOnDisk, bytes); }
  std::string Bytes() const { return testing_support::ReadWholeFile(csvOnDisk); }

  // The rows of the index without their stamp, by id.
  std::map<std::u16string, store::Action> Rows() {
    EXPECT_EQ(store::LoadActionIndex(app), 0);
    std::map<std::u16string, store::Action> rows;
    for (int i = 0; i < app.IndexCount; ++i) {
      store::Action row;
      const std::u16string id(app.ActIds.At(static_cast<size_t>(i)));
      EXPECT_EQ(store::dbSession().UserTable->ReadById(id, row), 0);
      row[store::kLastUpdate].reset();
      rows[id] = row;
    }
    return rows;
  }

  std::u16string csv = folder.Path(u"morvenly.csv");
  std::string csvOnDisk = folder.HostPath("morvenly.csv");
};

// Brings Actions to what a block of docs/formats.md says: "1 Place = 自宅", "1 Latitude absent".
void Apply(const std::string& block, std::vector<store::Action>& actions) {
  std::string header = HeaderBytes(kVer3);
  header.replace(header.size() - 2, 2, "\t");
  std::istringstream lines(block);
  for (std::string line, column, sign, value; std::getline(lines, line);) {
    std::istringstream words(line);
    size_t number = 0;
    words >> number >> column >> sign >> std::ws;
    value.clear();
    std::getline(words, value);
    const size_t at = header.find(column + '\t');
    ASSERT_TRUE(number > 0 && at != header.npos) << line;
    const std::string before = header.substr(0, at);
    actions.resize(std::max(actions.size(), number));
    auto& text = actions[number - 1].at(std::count(before.begin(), before.end(), '\t'));
    text.reset();
    if (sign == "=") text = core::UnescapeText(platform::ToUtf16(value));
  }
}

TEST_F(FileTest, TheDocumentsExamplesGoOutAndIn) {
  std::vector<store::Action> diary;
  Apply(testing_support::FormatExample("actions"), diary);
  store::CUserDataTable& table = *store::dbSession().UserTable;
  int version = 0;
  for (const std::string kind : {"ver1", "ver2", "ver3", "ver3-utf8"}) {
    SCOPED_TRACE(kind);
    const std::string bytes = testing_support::FormatFile(kind);
    const bool losesNone = ++version == kVer3Utf8;
    EXPECT_EQ(store::dbSession().Session->Execute(u"delete from t_UserData"), 0);
    for (store::Action action : diary) EXPECT_EQ(table.Insert(action), 0);
    EXPECT_EQ(store::ReloadActionIndex(app), 0);
    const std::string exported =
        std::string("エクスポートが完了しました。") +
        (losesNone ? "" : "\n1個のアクションに、この形式では残せない文字があります。");
    host.answers = {exported, kImported, "エクスポートが完了しました。"};
    EXPECT_EQ(RunExport(app, csv, version), 2);
    EXPECT_EQ(Bytes(), bytes);
    EXPECT_EQ(store::dbSession().Session->Execute(u"delete from t_UserData"), 0);
    const int mode = version == kVer1 ? kReadAdd : kReadReplace;
    EXPECT_EQ(RunImport(app, csv, std::min<int>(version, kVer3), mode), 0);
    std::vector<store::Action> wanted = diary, found(2);
    if (!losesNone) Apply(testing_support::FormatExample(kind + "-loss"), wanted);
    for (size_t i = 0; i < 2; ++i) {
      EXPECT_EQ(table.ReadById(app.ActIds.At(i), found[i]), 0);
      if (!wanted[i][store::kActId]) found[i][store::kActId].reset();
    }
    EXPECT_EQ(found, wanted);
    EXPECT_EQ(RunExport(app, csv, version), 2);
    EXPECT_EQ(Bytes(), bytes);
  }
}

// What the code page makes of a character must not mean anything else in the escaped memo.
TEST_F(FileTest, EveryCharacterComesBackAsItsEncodingHasIt) {
  std::string bytes, inCodePage = HeaderBytes(kVer3), inUtf8 = HeaderBytes(kVer3Utf8);
  for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
    store::Action action = Of(u"09:00:00", u"10:00:00");
    action[store::kActId] = u"ID0000000000000001";
    action[store::kMemo] = std::u16string{static_cast<char16_t>(unit)} + u"n";
    LineBytes(action, kVer3, bytes);
    inCodePage += bytes;
    EXPECT_TRUE(LineBytes(action, kVer3Utf8, bytes));
    inUtf8 += bytes;
  }
  for (const bool isUtf8 : {false, true}) {
    SCOPED_TRACE(isUtf8);
    Put(isUtf8 ? inUtf8 : inCodePage);
    ImportList list;
    int line = 0, detail = 0;
    ASSERT_EQ(ReadImportFile(list, csv, 3, line, detail), 0);
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
      const std::u16string memo{static_cast<char16_t>(unit), u'n'};
      ASSERT_EQ(list[unit].Memo,
                isUtf8 ? memo : platform::DecodeCodePage(platform::EncodeCodePage(memo)));
    }
  }
}

TEST_F(FileTest, AFailedExportTellsWhyAndThatItFailed) {
  Insert(Of(u"09:00:00", u"10:00:00"));
  testing_support::FaultyFiles files;
  files.Fail(FileCall::kCreate, 1, 1);
  const std::string file = "ファイル" + platform::ToUtf8(csv);
  const std::string failed = "エクスポートに失敗しました。(-1)";
  host.answers = {file + "のオープンに失敗しました。ファイル名を見直してください。", failed};
  EXPECT_EQ(RunExport(app, csv, 1), -1);
  for (const FileCall call : {FileCall::kWrite, FileCall::kSync}) {
    SCOPED_TRACE(static_cast<int>(call));
    files.Fail(call, 1, 1);
    host.answers = {file + "の書込みに失敗(-1)しました。メモリの空き容量を確認してください。",
                    failed};
    EXPECT_EQ(RunExport(app, csv, 1), -1);
  }
  // The log is gone while nobody has written, but the next write would find it.
  store::ConnectDataFile(folder.Path(u"user.sdf"));
  for (const std::u16string_view name : {u"\\user.sdf", u"user.sdf-wal", u"user.sdf-shm"}) {
    host.answers = {"のオープンに失敗しました。", failed};
    EXPECT_EQ(RunExport(app, folder.Path(name), 1), -1) << platform::ToUtf8(name);
  }
  // Nor is it read, by whatever name: that alone would drop the engine's locks.
  std::filesystem::create_symlink(folder.HostPath("user.sdf"), folder.HostPath("link.csv"));
  host.answers = {"ファイル名不正", "のオープンに失敗しました。", failed};
  EXPECT_EQ(RunImport(app, folder.Path(u"link.csv"), 1, kReadAdd), -101);
  std::filesystem::rename(folder.HostPath("user.sdf"), csvOnDisk);
  EXPECT_EQ(RunExport(app, csv, 1), -1) << "moved away while it was open";
  std::filesystem::rename(csvOnDisk, folder.HostPath("user.sdf"));
  EXPECT_EQ(Rows().size(), 1u);
}

TEST_F(FileTest, ARoundTripChangesNothingAndAddingDoubles) {
  const std::u16string_view texts[] = {u"", u"会社－＞自宅", u"100%_'\"\\", u"\"引用", u"\u0001x"};
  for (int i = 0; i < 250; ++i) {  // more than a second has ids
    store::Action action = i % 3 == 0 ? Of(u"00:00:00", u"24:00:00") : Of(u"09:00:00", u"09:00:01");
    for (const auto column : {store::kSubject, store::kPlace, store::kCategory1, store::kCategory2,
                              store::kMemo, store::kExtItems}) {
      if ((i + column) % 7 != 0) action[column] = texts[(i / 2 + column) % std::size(texts)];
    }
    if (i % 2 == 0) action[store::kMemo] = u"a\r\nb\n\r\t\"'\\n\\";
    if (i % 5 == 0) action[store::kLongitude] = u"-139.691706";
    Insert(action);
  }
  const auto before = Rows();
  app.FindWhere = u"1 = 1";
  host.answers = {"エクスポートが完了しました。", kImported, kImported};
  EXPECT_EQ(RunExport(app, csv, 3), 250);
  EXPECT_EQ(RunImport(app, csv, 3, kReadReplace), 0);
  EXPECT_FALSE(app.FindWhere);
  EXPECT_TRUE(Rows() == before);
  EXPECT_EQ(RunImport(app, csv, 3, kReadAdd), 0);
  EXPECT_EQ(Rows().size(), 500u);
}

TEST_F(FileTest, ABadLineIsToldAndNothingWritten) {
  const std::string id = "ID2010062300000001";
  const std::string day = "\t2010/06/23\t";
  const std::string good1 = "2010/06/23\t09:00" + day + "10:00\tplace\tc1\n";
  const std::string good2 = id + day + "09:00:00" + day + "10:00:00\tplace\tc1\n";
  const std::string head = "header\r\n";
  const std::string noon = "2010/06/23 12:00:00";
  const std::string noTimes = " 行目には開始または終了日時がありません。";
  const std::string badTimes = " 行目の値が不正です。";
  const std::string noMeaning = " 行目にてエラーが発生しました。(-14)";
  const std::string badId = " 行目のアクションIDの値が不正です。";
  const std::string stopped = "\nインポートを中止します。";
  const std::string failed = "インポートに失敗しました。";
  const std::tuple<const char*, int, std::string, std::string> rows[] = {
      {"five columns", 1, good1 + "2010/06/23\t09:00" + day + "10:00\tplace", "2" + noTimes},
      {"six columns", 2, good2 + id + day + "09:00:00" + day + "10:00:00\tplace\n", "2" + noTimes},
      {"four columns", 3, head + id + "\tx\t" + noon + "\t" + noon, "1" + noTimes},
      {"the wrong version", 1, good2, "1" + badTimes + "(-109)"},
      {"no date", 3, head + id + "\tx\t2010/02/30 12:00:00\t" + noon + "\t\n",
       "1" + badTimes + "(-101)"},
      {"backwards", 2, id + day + "09:00:00" + day + "08:59:59\tplace\tc1\n",
       "1" + badTimes + "(-106)"},
      {"an id of 17", 2, good2 + good2.substr(1), "2" + badId + "(-1)"},
      {"no ID in front", 3, head + "XX2010062300000001\tx\t" + noon + "\t" + noon + "\t\n",
       "1" + badId + "(-2)"},
      {"NUL bytes", 3, head + std::string(5000, '\0'), "1" + noMeaning},
      {"a tab after half of a pair", 1, good1 + "2010/06/23\t09:00" + day + "10:00\t\x81\tc1\n",
       "2" + noMeaning},
      {"bytes of no encoding", 1, good1 + "2010/06/23\t09:00" + day + "10:00\t\x85\x41\tc1\n",
       "2" + noMeaning},
      {"UTF-8 by its mark alone", 1, "\xEF\xBB\xBF" + good1 + "\x89\xEF" + good1, "2" + noMeaning},
      {"a million tabs", 2, good2 + std::string(1000000, '\t'), "2" + badTimes + "(-109)"},
      {"no line end in three megabytes", 1, std::string(3000000, 'x'), "1" + noTimes},
  };
  Insert(Of(u"09:00:00", u"10:00:00"));
  app.FindWhere = u"1 = 1";
  for (const auto& [why, version, bytes, message] : rows) {
    SCOPED_TRACE(why);
    Put(bytes);
    host.answers = {'|' + message + stopped, failed};
    EXPECT_EQ(RunImport(app, csv, version, kReadAdd), -1);
    EXPECT_EQ(Rows().size(), 1u);
  }
  EXPECT_TRUE(app.FindWhere) << "nothing has changed";
  host.answers = {Answer::kOk, Answer::kOk, "|0 行目にてエラーが発生しました。(0)" + stopped,
                  failed};
  EXPECT_EQ(RunImport(app, folder.Path(u"none"), 3, kReadAdd), -101);
  EXPECT_EQ(RunImport(app, folder.Path(u""), 3, kReadAdd), -101) << "a folder";
  testing_support::FaultyFiles files;
  files.Fail(FileCall::kOpenForReading, 1, 1);
  EXPECT_EQ(RunImport(app, csv, 3, kReadAdd), -1);
  Put(good1);
  for (const int nth : {2, 3}) {  // as its encoding is found, and as its lines are taken
    SCOPED_TRACE(nth);
    files.Fail(FileCall::kRead, nth, nth);
    host.answers = {"|1 行目にてエラーが発生しました。(-12)" + stopped, failed};
    EXPECT_EQ(RunImport(app, csv, 1, kReadAdd), -1);
  }
}

// Long enough that blocks end within characters.
TEST_F(FileTest, AFileThatIsNoCodePageIsReadAsUtf8) {
  std::string lines;
  for (int i = 0; i < 4000; ++i) {
    lines += "2010/06/23\t09:00\t2010/06/23\t10:00\t昼食" + std::to_string(i) + "😀\t分類\r\n";
  }
  for (const std::string_view mark : {"", "\xEF\xBB\xBF"}) {
    SCOPED_TRACE(mark.size());
    Put(std::string(mark) + lines);
    ImportList list;
    int line = 0, detail = 0;
    ASSERT_EQ(ReadImportFile(list, csv, 1, line, detail), 0);
    ASSERT_EQ(list.size(), 4000u);
    for (int i = 0; i < 4000; ++i) {
      ASSERT_EQ(list[static_cast<size_t>(i)].Place, u"昼食" + core::ZeroPadded(i, 1) + u"😀");
    }
  }
}

TEST_F(FileTest, WhatTheReaderMakesOfALine) {
  Put("header\r"
      "ID2010062300000002\tx\t2010/06/23 12:00:00\t2010/06/23 12:00:00\t 35.5x\tno\ts\tp"
      "\tc\tc\t\"\t\tsurplus\tmore\r"
      "ID2010062300000001\tx\t2010/06/23 11:00:00\t2010/06/23 12:00:00\t\r"
      "ID2010062300000003\tx\t2010/06/23 12:00:00\t2010/06/23 12:00:00\t\t\t\t\t\t\tm\\n\te\r\r"
      "bad line after the empty one\r");
  ImportList list;
  int line = 0, detail = 0;
  ASSERT_EQ(ReadImportFile(list, csv, 3, line, detail), 0);
  ASSERT_EQ(list.size(), 3u);
  EXPECT_EQ(list[0].ActId.back(), u'1') << "by start, and then as the file has it";
  EXPECT_EQ(list[1].ActId.back(), u'2');
  EXPECT_EQ(list[1].Latitude, 35.5);
  EXPECT_EQ(list[1].Longitude, kNoPosition);
  EXPECT_EQ(list[1].Memo, u"") << "a lone quote";
  EXPECT_FALSE(list[1].ExtItems);
  EXPECT_EQ(list[2].Memo, u"m\\n") << "without a first quote as it stands";
  EXPECT_EQ(list[2].ExtItems, u"e");
}

// Killed at any write, the file holds a whole number of whole records.
TEST_F(FileTest, AKillInTheMiddleLeavesWholeRecords) {
  std::string lines;
  for (int i = 0; i < 3000; ++i) {
    lines += "2010/06/23\t09:00\t2010/06/23\t10:00\tplace\tc1\tc2\tthe whole memo\r\n";
  }
  Put(lines);
  int kept = 0;
  for (const int writes : {1, 40, 80, 120, 160, 200}) {
    SCOPED_TRACE(writes);
    store::DisconnectDataFile();
    ++host.now.hour;  // other ids
    const auto import = [&] {
      store::ConnectDataFile(folder.Path(u"user.sdf"));
      testing_support::diskCalls().writesUntilDeath = writes;
      RunImport(app, csv, 1, kReadAdd);
      return 1;
    };
    ASSERT_EQ(testing_support::InACopy(import), 0) << "was not killed";
    ASSERT_EQ(store::ConnectDataFile(folder.Path(u"user.sdf")), 0);
    const auto rows = Rows();
    for (const auto& [id, row] : rows) ASSERT_EQ(row[store::kMemo], u"the whole memo");
    EXPECT_EQ(rows.size() % 500, 0u);
    kept = std::max(kept, static_cast<int>(rows.size()));
  }
  EXPECT_GT(kept, 0) << "every kill came before the first group";
}

TEST_F(FileTest, AFailureInTheMiddleKeepsWhatWasWritten) {
  store::dbSession().Session->Execute(
      u"create unique index t on t_UserData(f_nvcPlace) where f_nvcPlace='once'");
  std::string lines;
  for (int i = 0; i < 700; ++i) {
    lines += "2010/06/23\t09:00\t2010/06/23\t10:00\t" + std::string(i % 650 == 0 ? "once" : "p") +
             "\tc\n";
  }
  Put(lines);
  host.answers = {"レコード作成エラー(80004005)\nインポートを中止します。", Answer::kOk};
  EXPECT_EQ(RunImport(app, csv, 1, kReadAdd), -3);
  // What is written next doesn't hang in a transaction of the import.
  Insert(Of(u"09:00:00", u"10:00:00"));
  ASSERT_EQ(store::ConnectDataFile(folder.Path(u"user.sdf")), 0);
  EXPECT_EQ(Rows().size(), 651u);
}

TEST_F(FileTest, WhyNoIdCouldBeLookedUpIsReported) {
  store::dbSession().Session->Execute(
      u"pragma writable_schema=on; update sqlite_schema set rootpage=2 where name='i_UserData'");
  ASSERT_EQ(store::ConnectDataFile(folder.Path(u"user.sdf")), 0);
  Put("2010/06/23\t09:00\t2010/06/23\t10:00\tp\tc\n");
  host.answers = {
      "ユニークキーの生成に失敗しました。\nデータファイルが壊れています。\n"
      "インポートを中止します。",
      Answer::kOk};
  EXPECT_EQ(RunImport(app, csv, 1, kReadAdd), -2);
}

TEST_F(FileTest, AnExportIsWholeWhereTheKeptIndexIsDamaged) {
  constexpr int kMany = 6'000;
  store::dbSession().Session->BeginTransaction();
  for (int i = 0; i < kMany; ++i) InsertAction(u"2010/06/23 09:00:00");
  store::dbSession().Session->Commit();
  for (const bool isKept : {false, true}) {
    ASSERT_EQ(store::ConnectDataFile(path), 0);
    if (isKept) std::filesystem::resize_file(hostPath + "-index", 8 * kMany);
    EXPECT_EQ(store::LoadActionIndex(app), 0);
  }
  host.answers = {Answer::kYes, "エクスポートが完了しました。"};
  CExchange out(app, ExchangeKind::kExport);
  out.SetPath(csv);
  out.OnRun({});
  const std::string bytes = Bytes();
  EXPECT_EQ(std::ranges::count(bytes, '\n'), kMany + 1);
}

TEST_F(FileTest, TheScreenAsksOnceAndKeepsItsPath) {
  Insert(Of(u"09:00:00", u"10:00:00"));
  CExchange out(app, ExchangeKind::kExport);
  host.answers = {"対象ファイルが指定されていません。"};
  out.OnRun({});
  std::string typed = platform::ToUtf8(csv);
  std::replace(typed.begin(), typed.end(), '\\', '/');
  out.SetPath(u"a.csv");
  EXPECT_EQ(out.Path(), core::JoinModulePath(u"a.csv"));
  out.SetPath(platform::ToUtf16(typed));
  const std::string file = platform::ToUtf8(csv);
  const std::string question =
      "現在該当している1個のアクションを" + file + "へエクスポートしますか？";
  host.answers = {{question, Answer::kNo}, Answer::kYes, "エクスポートが完了しました。"};
  out.OnRun({});
  out.OnRun({});
  out.Close();
  EXPECT_EQ(app.ExportPath, csv);
  EXPECT_TRUE(Bytes().starts_with("ActId\t")) << "Ver.3 is chosen first";
  CExchange in(app, ExchangeKind::kImport);
  EXPECT_EQ(in.ReadMode(), kReadReplace);
  in.SetPath(csv);
  host.answers = {{file + "をインポートしますか？", Answer::kYes}, kImported};
  in.OnRun({});
  EXPECT_EQ(Rows().size(), 1u) << "replaced";
}

}  // namespace
}  // namespace exchange
