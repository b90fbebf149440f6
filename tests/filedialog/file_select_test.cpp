// The file dialog's walk through real folders.
#include "filedialog/file_select.h"

#include <gtest/gtest.h>

#include "datafile/data_file.h"
#include "platform/files.h"
#include "store/session.h"
#include "support/fake_host.h"
#include "support/faulty_files.h"
#include "support/temp_folder.h"

namespace filedialog {
namespace {

using platform::Answer;
using testing_support::WriteWholeFile;

constexpr std::u16string_view kFilter = u"CSV (*.csv)|*.csv|All (*.*)|*.*";

class FileSelect : public testing::Test {
 protected:
  CFileSelect Opened(int mode) {
    CFileSelect select({mode, u"保存先", std::u16string(kFilter), folder.Path(u""), {}});
    EXPECT_TRUE(select.Open());
    return select;
  }
  static std::vector<std::u16string> Lines(const CFileSelect& select) {
    std::vector<std::u16string> lines;
    for (int i = 0; i < select.LineCount(); ++i) lines.push_back(select.LineText(i));
    return lines;
  }
  using Texts = std::vector<std::u16string>;

  testing_support::FakeHost host;
  testing_support::TempFolder folder;
};

TEST_F(FileSelect, BeginsWhereTheLastOneEndedAndKnowsTheHomeFolder) {
  platform::files().MakeFolder(folder.Path(u"sub"));
  CFileSelect first = Opened(kSelectToSave);
  first.TapLine(0);
  CFileSelect next({kSelectToSave, u"保存先", std::u16string(kFilter), u"\\", {}});
  EXPECT_TRUE(next.Open());
  EXPECT_EQ(next.CurFolder(), folder.Path(u"sub"));
  host.homeFolder = folder.Path(u"");
  EXPECT_FALSE(next.OnOk(u"~"));
  EXPECT_EQ(Lines(next), Texts{u"+sub"});
  EXPECT_FALSE(next.OnOk(u"./sub/"));
  EXPECT_EQ(next.CurFolder(), folder.Path(u"sub"));
  EXPECT_TRUE(next.OnOk(u"~/a"));
  EXPECT_EQ(next.ResultPath(), folder.Path(u"a.csv"));
  EXPECT_TRUE(next.OnOk(platform::ToUtf16(folder.HostPath("a"))));
  EXPECT_EQ(next.ResultPath(), folder.Path(u"a.csv"));
}

TEST_F(FileSelect, ListsFoldersThenMatchingFilesAndGoesUpToTheRoot) {
  for (const char* name : {"b.csv", "A.CSV", ".c.csv", "d.dat", "csv"}) {
    WriteWholeFile(folder.HostPath(name), "");
  }
  platform::files().MakeFolder(folder.Path(u"月"));
  platform::files().MakeFolder(folder.Path(u"火.csv"));
  CFileSelect select = Opened(kSelectToSave);
  const Texts expected = {u"+月", u"+火.csv", u" A.CSV", u" b.csv", u" .c.csv"};
  EXPECT_EQ(Lines(select), expected);
  select.ChooseFilter(1);
  EXPECT_EQ(select.LineCount(), 7);
  EXPECT_EQ(select.TapLine(2), u"A.CSV");
  EXPECT_FALSE(select.TapLine(1));
  EXPECT_TRUE(select.CurFolder().ends_with(u"\\火.csv"));
  EXPECT_EQ(select.LineCount(), 0);
  select.GoUp();
  EXPECT_EQ(select.SelectedLine(), 1) << "the folder that was left";
  for (int i = 0; i < 20; ++i) select.GoUp();
  EXPECT_EQ(select.CurFolder(), u"\\");
  CFileSelect nowhere({kSelectToOpen, u"", std::u16string(kFilter), folder.Path(u"gone"), u""});
  EXPECT_TRUE(nowhere.Open());
  EXPECT_TRUE(nowhere.Unreadable());
}

TEST_F(FileSelect, LeavesOutWhatWouldMakeTooLongAPath) {
  const std::string fits(259 - folder.Path(u"").size(), 'f');
  WriteWholeFile(folder.HostPath(fits), "");
  WriteWholeFile(folder.HostPath(fits + "g"), "");
  CFileSelect select = Opened(kSelectToOpen);
  select.ChooseFilter(1);
  EXPECT_EQ(select.LineCount(), 1);
}

TEST_F(FileSelect, OkChecksTheName) {
  WriteWholeFile(folder.HostPath("there.csv"), "");
  platform::files().MakeFolder(folder.Path(u"f.csv"));
  const std::tuple<const char*, int, const char16_t*, const char*, const char16_t*> rows[] = {
      {"empty", kSelectToSave, u"", "ファイル名未指定", nullptr},
      {"blank", kSelectToSave, u" \u3000", "ファイル名未指定", nullptr},
      {"the folder above is shown", kSelectToSave, u"..", "", nullptr},
      {"the first pattern's extension", kSelectToSave, u"abc", "", u"abc.csv"},
      {"a point keeps the name as it is", kSelectToSave, u"abc.", "", u"abc."},
      {"no question before overwriting", kSelectToSave, u"there", "", u"there.csv"},
      {"opens what is there", kSelectToOpen, u"there", "", u"there.csv"},
      {"opens nothing else", kSelectToOpen, u"abc", "ファイル名不正", nullptr},
      {"a folder is no file", kSelectToOpen, u"f.csv", "ファイル名不正", nullptr},
      {"a path", kSelectToSave, u"f.csv/abc", "", u"f.csv\\abc.csv"},
      {"a path there and back", kSelectToOpen, u"f.csv/../there", "", u"there.csv"},
      {"a path to nowhere", kSelectToSave, u"none/abc", "指定されたフォルダは", nullptr},
      {"a name with a tilde", kSelectToSave, u"~none/abc", "指定されたフォルダは", nullptr},
  };
  for (const auto& [why, mode, name, message, result] : rows) {
    SCOPED_TRACE(why);
    CFileSelect select = Opened(mode);
    select.ChooseFilter(1);
    if (*message) host.answers = {message};
    EXPECT_EQ(select.OnOk(name), result != nullptr);
    ASSERT_EQ(select.ResultPath().has_value(), result != nullptr);
    if (!result) continue;
    EXPECT_EQ(select.ResultPath(), folder.Path(result));
  }
}

TEST_F(FileSelect, MakesRenamesAndRemovesAndLosesNothing) {
  WriteWholeFile(folder.HostPath("a.csv"), "a");
  WriteWholeFile(folder.HostPath("b.csv"), "b");
  CFileSelect select = Opened(kSelectToSave);
  host.answers = {"名称未入力", "名称エラー", "名称変更エラー", "削除対象なし"};
  select.MakeFolder(u"");
  select.MakeFolder(u"a.csv");
  select.MakeFolder(u"新規");
  EXPECT_EQ(select.LineText(select.SelectedLine()), u"+新規");
  select.SelectLine(1);
  select.Rename(u"b.csv");
  EXPECT_EQ(testing_support::ReadWholeFile(folder.HostPath("b.csv")), "b");
  select.Rename(u"新規/a.csv");
  EXPECT_EQ(testing_support::ReadWholeFile(folder.HostPath("新規/a.csv")), "a");
  select.Delete();
  EXPECT_TRUE(host.answers.empty()) << "the moved entry is out of sight";
  host.answers = {
      {platform::ToUtf8(folder.Path(u"新規")) + "\"を削除してもよろしいですか？", Answer::kYes},
      "フォルダ削除エラー",
      Answer::kNo,
      Answer::kYes};
  select.SelectLine(0);
  select.Delete();
  EXPECT_EQ(host.messages[4].defaultButton, 1);
  select.SelectLine(1);
  select.Delete();
  EXPECT_EQ(Lines(select), (Texts{u"+新規", u" b.csv"}));
  select.SelectLine(1);
  select.Delete();
  EXPECT_EQ(Lines(select), (Texts{u"+新規"}));
}

TEST_F(FileSelect, TheOpenDiaryStaysWhereItIs) {
  ASSERT_EQ(datafile::CreateDataFile(folder.Path(u"user.sdf")), 0);
  CFileSelect select = Opened(kSelectToSave);
  select.ChooseFilter(1);
  select.SelectLine(0);
  host.answers = {"名称変更エラー", Answer::kYes, "ファイル削除エラー", "名称変更エラー"};
  select.Rename(u"other.sdf");
  select.Delete();
  select.GoUp();
  select.Rename(u"other");
  EXPECT_TRUE(host.answers.empty()) << "nor may the folder that it lies in move";
  store::DisconnectDataFile();
}

TEST_F(FileSelect, FilterFaultsAndPatterns) {
  for (const char16_t* filter : {u"", u"CSV", u"CSV|", u"CSV|*.csv|All", u"CSV|*.csv|All|"}) {
    SCOPED_TRACE(platform::ToUtf8(filter));
    CFileSelect select({kSelectToOpen, u"", filter, u"\\", u""});
    host.answers = {"内部エラー"};
    EXPECT_FALSE(select.Open());
    EXPECT_EQ(select.ResultPath(), u"");
  }
  EXPECT_TRUE(MatchesPattern(u"x.tar.CSV", u"*.csv"));
  EXPECT_TRUE(MatchesPattern(u"aXbXc", u"a*X?"));
  EXPECT_FALSE(MatchesPattern(u"csv", u"*.csv"));
  EXPECT_FALSE(MatchesPattern(u"a.csvx", u"*.csv"));
  EXPECT_TRUE(MatchesPattern(u"no point", u"*.*"));
}

}  // namespace
}  // namespace filedialog
