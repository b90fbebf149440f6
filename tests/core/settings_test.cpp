#include "core/settings.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "platform/code_page.h"
#include "platform/utf.h"
#include "support/document.h"
#include "support/fake_host.h"
#include "support/faulty_files.h"
#include "support/temp_folder.h"

namespace {

using namespace core;
using testing_support::FileCall;

using Entries = std::vector<std::u16string>;

// A program in a folder of its own, with its settings file beside it.
class Settings : public testing::Test {
 protected:
  Settings() { host.programPath = folder.Path(u"Morvenly"); }

  void Put(std::string_view content) { testing_support::WriteWholeFile(HostFile(), content); }
  void PutText(std::u16string_view content) { Put(platform::EncodeCodePage(content)); }
  std::string Content() { return testing_support::ReadWholeFile(HostFile()); }
  std::string HostFile() { return folder.HostPath("Morvenly.dat"); }
  std::u16string File() { return folder.Path(u"Morvenly.dat"); }
  // The file of a first run.
  static std::string Golden() { return testing_support::FormatFile("settings"); }

  testing_support::FakeHost host;
  const testing_support::TempFolder folder;
};

TEST_F(Settings, AFirstRunWritesWhatTheDocumentShows) {
  CAppState app;
  host.answers = {"設定ファイルエラー|設定ファイルが見つからないので初期化します。"};
  EXPECT_EQ(InitApp(app), 0);
  EXPECT_EQ(CurDate(), u"2010/06/23");
  EXPECT_EQ(MenuBarHeight, 26);
  EXPECT_FALSE(std::filesystem::exists(HostFile())) << "written at the end alone";
  EXPECT_EQ(SaveSettings(app), 0);
  EXPECT_EQ(Content(), Golden());
  struct stat status;
  ASSERT_EQ(stat(HostFile().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0600u) << "a diary is private";
}

// Every value differs from its default and from its neighbours, so that none can take another's.
TEST_F(Settings, KeepsEveryChangedValue) {
  std::string changed = Golden();
  changed.insert(changed.find("\r\n\r\n"), "\r\nViewAutoUpdate:0\r\nAutoBackup:0");
  int number = 100;
  for (size_t at = changed.find("\r\nStartupMode"); at < changed.find("\r\n\r\n");
       at = changed.find("\r\n", at + 2)) {
    const size_t value = changed.find(':', at) + 1;
    changed.replace(value, changed.find("\r\n", value) - value, std::to_string(number++));
  }
  EXPECT_EQ(number, 163);
  Put(changed);
  CAppState app;
  ASSERT_EQ(InitApp(app), 0);
  EXPECT_EQ(app.StartupMode, 100);
  EXPECT_EQ(app.ViewModeSave, 101);
  EXPECT_EQ(app.MapVwLndColWdh[4], 142);
  EXPECT_EQ(app.DataFile, u"160");
  EXPECT_EQ(app.ViewAutoUpdate, 161);
  EXPECT_EQ(app.AutoBackup, 162);
  EXPECT_EQ(SaveSettings(app), 0);
  EXPECT_EQ(Content(), changed);
}

TEST_F(Settings, TakesWhatFitsItsKeyAndSkipsTheRest) {
  const std::tuple<const char16_t*, int CAppState::*, int, const char*> rows[] = {
      {u"StartupMode:1\r\nStartupMode:-1", &CAppState::StartupMode, 1, "a sign is no digit"},
      {u"StartupMode:1\r\nstartupmode:2", &CAppState::StartupMode, 1, "case counts"},
      {u"StartupMode:1\r\nStartupMode", &CAppState::StartupMode, 1, "no colon"},
      {u"InitView:99999999999", &CAppState::InitView, 2147483647, "beyond 32 bits: the nearest"},
      {u"DayVwGrdFntSize:-12", &CAppState::DayVwGrdFntSize, -12, "font sizes take a sign"},
      {u"DayVwGrdFntSize:-", &CAppState::DayVwGrdFntSize, 0, "a lone sign passes"},
      {u"[Place]\r\nStartupMode:2", &CAppState::StartupMode, 2, "no header inside a section"},
      {u"\r\nStartupMode:2", &CAppState::StartupMode, 0, "outside any section"},
      {u"\r\n[system]\r\nStartupMode:2", &CAppState::StartupMode, 0, "headers: case counts"},
      {u"StartupMode:1\rStartupMode:2\nx", &CAppState::StartupMode, 2, "any line end"},
      // What InitApp mends.
      {u"SeqViewRng:15", &CAppState::SeqViewRng, 0, "no version"},
      {u"Version:2.3.2003.1122\r\nSeqViewRng:5", &CAppState::SeqViewRng, 0, "the last old one"},
      {u"Version:2.3.2003.1123\r\nSeqViewRng:5", &CAppState::SeqViewRng, 5, "the next one"},
      {u"Version:\r\nSeqViewRng:5", &CAppState::SeqViewRng, 0, "an empty one is old"},
      {u"Version:3.0", &CAppState::SeqViewRng, 20, "the default of a file with a version"},
      {u"x:", &CAppState::TimeInitForNewMode, 1, "neither key"},
      {u"SetNowForCreate:0", &CAppState::TimeInitForNewMode, 2, "half hours of old"},
      {u"SetNowForCreate:1", &CAppState::TimeInitForNewMode, 1, "the clock of old"},
      {u"SetNowForCreate:0\r\nTimeInitForNewMode:3", &CAppState::TimeInitForNewMode, 3, "both"},
  };
  for (const auto& [lines, field, value, why] : rows) {
    SCOPED_TRACE(why);
    PutText(std::u16string(u"[System]\r\n") + lines + u"\r\n");
    CAppState app;
    EXPECT_EQ(InitApp(app), 0);
    EXPECT_EQ(app.*field, value);
  }
}

TEST_F(Settings, TakesTextsAsTheyStand) {
  PutText(u"[System]\r\nRcdrFntName:" + std::u16string(40, u'あ') +
          u"\r\nPlaceSepaStr: : \r\nMemoName:\r\nDataFile:\r\n");
  CAppState app;
  EXPECT_EQ(InitApp(app), 0);
  EXPECT_EQ(app.RcdrFntName, std::u16string(31, u'あ'));
  EXPECT_EQ(app.PlaceSepaStr, u" : ") << "the first colon splits";
  EXPECT_EQ(app.MemoName, u"");
  EXPECT_EQ(app.DataFile, folder.Path(u"user.sdf")) << "an empty one falls back";
}

TEST_F(Settings, ReadsTheHistoriesOfAnyFile) {
  std::u16string places;
  for (int i = 0; i < 81; ++i) places += u"p" + std::u16string(1, char16_t(0x4E00 + i)) + u"\r\n";
  PutText(
      u"[Find]\r\n1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n10\r\n11\r\n\r\n"
      u"[Place]\r\n" +
      places +
      u"\r\n"
      u"[Category1]\r\na\r\n\r\nb\r\n[Memo]\r\n\r\n"
      u"[Category2]\r\none\r\ntwo\r\n\r\n[Category2]\r\nthree\r\n\r\n"
      u"[Memo]\r\ncut");
  CAppState app;
  EXPECT_EQ(InitApp(app), 0);
  EXPECT_EQ(app.FindHistory.Entries().size(), 10u);
  EXPECT_EQ(app.FindHistory.Entries().back(), u"10");
  ASSERT_EQ(app.PlaceHistory.Entries().size(), 80u);
  EXPECT_EQ(app.PlaceHistory.Entries()[79], u"p" + std::u16string(1, char16_t(0x4E00 + 79)));
  EXPECT_EQ(app.Category1History.Entries(), Entries{u"a"}) << "an empty line ends the section";
  EXPECT_EQ(app.Category2History.Entries(), (Entries{u"three", u"two"}));
  EXPECT_TRUE(app.MemoHistory.Entries().empty()) << "a line without an end is dropped";
}

TEST_F(Settings, WritesTheViewByItsModeAndLineBreaksAsTheyAre) {
  CAppState app;
  app.CurView = kViewMonth;
  app.InitView = kViewList;
  app.MemoHistory.Add(u"one\r\ntwo");
  for (const int save : {1, 0}) {
    SCOPED_TRACE(save);
    app.ViewModeSave = save;
    ASSERT_EQ(WriteSettings(app, File()), 0);
    CAppState read;
    ASSERT_EQ(ReadSettings(read, File()), 0);
    EXPECT_EQ(read.InitView, save == 1 ? kViewMonth : kViewList);
    EXPECT_EQ(read.MemoHistory.Entries(), (Entries{u"one", u"two"}));
  }
}

TEST_F(Settings, StartsFromAFileThatIsCutAnywhere) {
  const std::string whole = Golden();
  for (size_t length = 0; length <= whole.size(); ++length) {
    SCOPED_TRACE(length);
    Put(std::string_view(whole).substr(0, length));
    CAppState app;
    ASSERT_EQ(InitApp(app), 0);
    ASSERT_EQ(app.ItmSelMode, 1);
    ASSERT_EQ(app.RcdrFntName, u"MS UI Gothic");
    ASSERT_LE(app.PlaceHistory.Entries().size(), 5u);
    ASSERT_EQ(app.DataFile, folder.Path(u"user.sdf"));
  }
}

// What is quadratic takes hours and meets the time limit of the test run. What a line has beyond
// a million characters isn't kept.
TEST_F(Settings, Reads100Megabytes) {
  constexpr size_t kSize = 100'000'000;
  for (const size_t lineLength : {kSize, size_t{1000}}) {
    SCOPED_TRACE(lineLength);
    std::string content = "[Place]\r\n";
    content.reserve(2 * kSize);
    while (content.size() < kSize) content += std::string(lineLength, 'x') + "\r\n";
    Put(content);
    CAppState app;
    EXPECT_EQ(InitApp(app), 0);
    EXPECT_EQ(app.PlaceHistory.Entries().front().size(), std::min(lineLength, size_t{1} << 20));
    EXPECT_LE(app.PlaceHistory.Entries().size(), 80u);
  }
}

TEST_F(Settings, EndsTheStartWhenTheFileCannotBeRead) {
  testing_support::FaultyFiles faulty;
  Put("[System]\r\n");
  for (const FileCall call : {FileCall::kOpenForReading, FileCall::kRead}) {
    SCOPED_TRACE(static_cast<int>(call));
    faulty.Fail(call);
    CAppState app;
    host.answers = {"起動時エラー|設定ファイルが読込めません。\nプログラムを終了します。"};
    EXPECT_EQ(InitApp(app), -1);
    faulty.Fail(call);
    EXPECT_EQ(ReadSettings(app, File()), call == FileCall::kRead ? -9 : -1);
  }
}

TEST_F(Settings, LosesNothingWhenWritingFails) {
  testing_support::FaultyFiles faulty;
  const std::string old = "[System]\r\nStartupMode:1\r\n\r\n";
  const std::tuple<FileCall, int, int, const char*> rows[] = {
      {FileCall::kCreate, 1, -1, "the new file"}, {FileCall::kWrite, 1, -2, "its first line"},
      {FileCall::kWrite, 2, 0, "its second"},     {FileCall::kWrite, 70, 0, "one in the lists"},
      {FileCall::kSync, 1, 0, "the disk"},        {FileCall::kRename, 1, -1, "its place"},
  };
  for (const auto& [call, nth, result, why] : rows) {
    SCOPED_TRACE(why);
    Put(old);
    CAppState app;
    faulty.Fail(call, nth);
    if (result != 0) host.answers = {"書込みエラー|設定ファイルの書込みに失敗しました。"};
    EXPECT_EQ(SaveSettings(app), result);
    EXPECT_GE(faulty.Count(call), nth) << "the call was never made";
    EXPECT_EQ(Content(), old);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.HostPath()), {}), 1)
        << "nothing is left beside it";
  }
}

TEST_F(Settings, BelongsToItsOwnerAndFollowsNoLink) {
  testing_support::WriteWholeFile(folder.HostPath("user.sdf"), "a diary");
  std::filesystem::create_symlink("user.sdf", HostFile() + ".new");
  Put("[System]\r\n");
  std::filesystem::permissions(HostFile(), std::filesystem::perms(0644));
  CAppState app;
  EXPECT_EQ(InitApp(app), 0);
  EXPECT_EQ(std::filesystem::status(HostFile()).permissions(), std::filesystem::perms(0600));
  EXPECT_EQ(WriteSettings(app, File()), 0);
  EXPECT_EQ(testing_support::ReadWholeFile(folder.HostPath("user.sdf")), "a diary");
  EXPECT_FALSE(std::filesystem::is_symlink(HostFile()));
}

TEST_F(Settings, LeavesAReadOnlyFileAlone) {
  Put("[System]\r\n");
  std::filesystem::permissions(HostFile(), std::filesystem::perms::owner_read);
  EXPECT_EQ(WriteSettings(CAppState(), File()), -1);
  EXPECT_EQ(Content(), "[System]\r\n");
}

}  // namespace
