// The whole program on a pocket device, by real taps and keys, as its user meets it.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <set>
#include <vector>

#include "core/date_time.h"
#include "core/text.h"
#include "e2e/pocket_device.h"
#include "platform/utf.h"
#include "store/session.h"
#include "support/gps_daemon.h"
#include "support/temp_folder.h"

using e2e::PocketDevice;
using e2e::Process;
using e2e::WaitUntil;
using testing_support::TempFolder;

namespace {

constexpr char kWindow[] = "Morvenly";
constexpr char kQuestionDelete[] = "アクションの削除の確認";

std::u16string Today() {
  const std::time_t now = std::time(nullptr);
  std::tm parts{};
  localtime_r(&now, &parts);
  return core::FormatDate(parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday);
}

// The program in a folder of its own, as it is installed.
class Installed {
 public:
  Installed() { std::filesystem::copy_file(MORVENLY_PROGRAM, folder_.HostPath("morvenly")); }

  Process Start() { return Process({folder_.HostPath("morvenly")}, folder_.HostPath("output")); }

  // Read beside the program, which has the file locked against a second one of its kind.
  std::vector<store::Action> Actions() const {
    std::vector<store::Action> actions;
    const auto engine = store::Engine::Open(folder_.Path(u"user.sdf"));
    if (!engine) return actions;
    store::CUserDataTable table(*engine);
    table.Select(u"select * from t_UserData order by f_nchActId");
    for (store::Action action; table.GetNextRS(action) == store::S_OK;) actions.push_back(action);
    table.CloseRS();
    return actions;
  }

  // Waits until exactly these texts stand in that column, in any order.
  bool Holds(store::ActionColumn column, const std::multiset<std::u16string>& texts) const {
    return WaitUntil([&] {
      std::multiset<std::u16string> found;
      for (const store::Action& action : Actions()) {
        found.insert(std::u16string(store::TextOf(action, column)));
      }
      return found == texts;
    });
  }

  // Into the closed diary: Actions of today, by hour and minute of start and end.
  void Write(const std::vector<std::array<int, 4>>& times) const {
    const auto engine = store::Engine::Open(folder_.Path(u"user.sdf"));
    ASSERT_TRUE(engine);
    int number = 0;
    for (const auto& [startHour, startMinute, endHour, endMinute] : times) {
      const std::u16string day = Today() + u' ';
      const std::u16string id = u"ID" + core::ZeroPadded(++number, 16);
      const std::u16string start = day + core::FormatTime(startHour, startMinute, 0);
      const std::u16string end = day + core::FormatTime(endHour, endMinute, 0);
      EXPECT_EQ(engine->Execute(u"insert into t_UserData (f_nchActId, f_nchStaDateTime, "
                                u"f_nchEndDateTime, f_nvcPlace) values ('" +
                                id + u"','" + start + u"','" + end + u"','" +
                                core::ZeroPadded(number, 1) + u"')"),
                store::S_OK);
    }
  }
  // "hh:mm hh:mm" of all Actions, sorted.
  std::vector<std::u16string> Times() const {
    std::vector<std::u16string> times;
    for (const store::Action& action : Actions()) {
      times.push_back(action[store::kStaDateTime]->substr(11, 5) + u' ' +
                      action[store::kEndDateTime]->substr(11, 5));
    }
    std::ranges::sort(times);
    return times;
  }

  const TempFolder& Folder() const { return folder_; }

 private:
  TempFolder folder_;
};

std::set<std::string> FilesIn(const TempFolder& folder) {
  std::set<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder.HostPath())) {
    names.insert(entry.path().filename());
  }
  return names;
}

void PressAll(PocketDevice& device, const std::vector<const char*>& keys) {
  for (const char* key : keys) device.Press(key);
}

// Answers the two messages of a first start.
void ComeThroughFirstStart(PocketDevice& device) {
  ASSERT_TRUE(device.Shows("設定ファイルエラー"));
  device.Picture("first_start");
  device.TapFromCorner("設定ファイルエラー", 41, 26);  // OK
  ASSERT_TRUE(device.Shows("データファイル初期化確認"));
  device.Picture("first_question");
  device.Press("Return");  // Yes
  ASSERT_TRUE(device.Shows(kWindow));
}

}  // namespace

// What the user of an afternoon has forgotten, set right by twelve taps.
TEST(Diary, ADayIsSetRight) {
  PocketDevice device;
  Installed diary;
  Process program = diary.Start();
  ASSERT_NO_FATAL_FAILURE(ComeThroughFirstStart(device));
  device.Press("ctrl+q");
  program.Wait();
  diary.Write({{8, 0, 9, 0}, {9, 30, 12, 0}, {11, 30, 12, 30}, {13, 0, 18, 0}, {15, 0, 16, 0}});
  program = diary.Start();
  ASSERT_TRUE(device.Shows(kWindow));
  PressAll(device, {"F2", "Down", "Down", "Right", "Up", "Up", "Return"});
  device.Picture("before");
  const std::pair<int, int> taps[] = {{0, 0}, {1, 0}, {2, 0}, {3, 1}, {4, 0}, {6, 0}};
  for (const auto& [row, item] : taps) {
    device.Tap(180, 72 + 26 * row);
    ASSERT_TRUE(device.ShowsWindows(2));
    device.Tap(150, 98 + 26 * row + 24 * item);
    ASSERT_TRUE(device.ShowsWindows(1));
  }
  const std::vector<std::u16string> wanted = {u"00:00 09:30", u"09:30 11:30", u"11:30 12:30",
                                              u"12:30 15:00", u"15:00 16:00", u"16:00 00:00"};
  EXPECT_TRUE(WaitUntil([&] { return diary.Times() == wanted; }));
  device.Picture("after");
  for (int i = 0; i < 6; ++i) device.Press("ctrl+z");
  EXPECT_TRUE(WaitUntil([&] { return diary.Times().front() == u"08:00 09:00"; }));
  PressAll(device, {"Escape", "ctrl+q"});
}

TEST(Diary, FromAnEmptyFolderToTheNextDay) {
  PocketDevice device;
  Installed diary;
  Process program = diary.Start();
  ASSERT_NO_FATAL_FAILURE(ComeThroughFirstStart(device));

  device.Tap(60, 307);   // the left soft key: new
  device.Tap(160, 123);  // the place
  device.Tap(160, 175);  // the second word of its list
  device.Tap(160, 225);  // the memo
  device.Type("lunch");
  device.Picture("new_by_touch");
  device.Tap(60, 307);
  ASSERT_TRUE(diary.Holds(store::kMemo, {u"lunch"}));
  EXPECT_EQ(diary.Actions()[0][store::kPlace], u"学校");

  PressAll(device, {"F1", "Tab", "Tab", "Tab", "Tab", "Tab", "Tab", "Tab", "Tab",
                    "space"});  // to the place
  device.Type("office");
  device.Picture("new_by_keyboard");
  PressAll(device, {"Return", "F1"});
  ASSERT_TRUE(diary.Holds(store::kPlace, {u"学校", u"office"}));
  device.Picture("day_view");

  PressAll(device, {"F2", "Up", "Up", "Up", "Right", "Down", "Down", "Down",
                    "Return"});  // to the list view
  device.Picture("list_view");
  device.Tap(100, 51);   // its first row
  device.Tap(160, 225);  // the memo
  device.Press("ctrl+a");
  device.Type("changed");
  device.Tap(60, 307);
  ASSERT_TRUE(WaitUntil([&] {
    int changed = 0;
    for (const auto& action : diary.Actions()) changed += action[store::kMemo] == u"changed";
    return changed == 1;
  }));

  device.Hold(100, 75);                                  // its second row
  PressAll(device, {"Up", "Up", "Up", "Up", "Return"});  // delete
  ASSERT_TRUE(device.Shows(kQuestionDelete));
  device.Picture("delete");
  device.Press("Return");
  ASSERT_TRUE(diary.Holds(store::kMemo, {u"changed"}));

  device.Press("ctrl+q");
  EXPECT_EQ(program.Wait(), 0);
  EXPECT_EQ(FilesIn(diary.Folder()), (std::set<std::string>{".morvenly.lock", "Morvenly.dat",
                                                            "morvenly", "output", "user.sdf"}));

  const auto before = diary.Actions();
  program = diary.Start();
  ASSERT_TRUE(device.Shows(kWindow));
  device.Picture("next_day");
  device.Press("ctrl+q");
  EXPECT_EQ(program.Wait(), 0);
  EXPECT_EQ(diary.Actions(), before);
}

TEST(Diary, SecondStartBringsTheFirstForward) {
  PocketDevice device;
  Installed diary;
  Installed other;
  Process first = diary.Start();
  ASSERT_NO_FATAL_FAILURE(ComeThroughFirstStart(device));
  const std::string firstWindow = device.FocusedWindow();
  Process cover = other.Start();
  ASSERT_NO_FATAL_FAILURE(ComeThroughFirstStart(device));
  ASSERT_TRUE(WaitUntil([&] { return device.FocusedWindow() != firstWindow; }));

  const std::set<std::string> files = FilesIn(diary.Folder());
  EXPECT_EQ(diary.Start().Wait(), 0);
  EXPECT_TRUE(WaitUntil([&] { return device.FocusedWindow() == firstWindow; }));
  EXPECT_EQ(FilesIn(diary.Folder()), files);
  EXPECT_TRUE(first.Running());
}

TEST(Diary, ADayOfTheRecorderThoughItIsKilled) {
  PocketDevice device;
  Installed diary;
  Process program = diary.Start();
  ASSERT_NO_FATAL_FAILURE(ComeThroughFirstStart(device));
  const auto openRecorder = [&] { PressAll(device, {"F2", "Up", "Up", "Right", "Return"}); };
  const auto choosePlace = [&](int row) {
    device.Tap(150, 103);
    device.Tap(150, 107 + 24 * row);
  };
  const auto record = [&] { device.Tap(156, 278); };
  const auto stopOrReopen = [&] { device.Tap(216, 278); };

  openRecorder();
  choosePlace(2);
  device.Picture("place_chosen");
  record();
  ASSERT_TRUE(diary.Holds(store::kPlace, {u"学校"}));
  choosePlace(2);  // what was chosen last has become the first
  record();
  ASSERT_TRUE(diary.Holds(store::kPlace, {u"学校－＞会社", u"会社"}));
  record();
  ASSERT_TRUE(diary.Holds(store::kPlace, {u"学校－＞会社", u"会社", u"会社"}));
  program.Kill();
  ASSERT_TRUE(device.ShowsWindows(0));

  program = diary.Start();
  ASSERT_TRUE(device.Shows("設定ファイルエラー"));  // settings are written at the end alone
  device.Press("Return");
  ASSERT_TRUE(device.Shows(kWindow));
  openRecorder();
  device.Picture("after_the_kill");
  choosePlace(2);
  record();
  ASSERT_TRUE(diary.Holds(store::kPlace, {u"学校－＞会社", u"会社", u"会社－＞学校", u"学校"}));
  stopOrReopen();
  stopOrReopen();
  device.Picture("reopened");
  record();
  ASSERT_TRUE(
      diary.Holds(store::kPlace, {u"学校－＞会社", u"会社", u"会社－＞学校", u"学校", u"学校"}));
  device.Picture("recorder");
  device.Tap(212, 13);  // close
  device.Picture("day_view");

  std::multiset<std::u16string> starts, ends;
  for (const store::Action& action : diary.Actions()) {
    starts.insert(*action[store::kStaDateTime]);
    ends.insert(*action[store::kEndDateTime]);
  }
  ends.insert(*starts.begin());
  starts.insert(*starts.rbegin());
  EXPECT_EQ(starts, ends) << "each ends where the next starts, and the last still runs";
  EXPECT_EQ(diary.Start().Wait(), 0) << "the instance after a killed one answers the next start";
}

TEST(Diary, EndsInOrderWhenTheSessionDoes) {
  PocketDevice device;
  Installed diary;
  const std::pair<const char*, std::vector<const char*>> rows[] = {
      {"in the main window", {}},
      {"in the edit screen", {"F1"}},
      {"in an open menu", {"F2"}},
      {"in an open list of the edit screen", {"F1", "Tab", "space"}},
  };
  Process program = diary.Start();
  ASSERT_NO_FATAL_FAILURE(ComeThroughFirstStart(device));
  for (const auto& [why, keys] : rows) {
    SCOPED_TRACE(why);
    PressAll(device, keys);
    std::filesystem::remove(diary.Folder().HostPath("Morvenly.dat"));
    program.Signal(SIGTERM);
    EXPECT_EQ(program.Wait(), 0);
    EXPECT_TRUE(std::filesystem::exists(diary.Folder().HostPath("Morvenly.dat")));
    EXPECT_FALSE(std::filesystem::exists(diary.Folder().HostPath("user.sdf-wal")));
    program = diary.Start();
    ASSERT_TRUE(device.Shows(kWindow));
  }
}

TEST(Diary, ClosesTheDataFileThoughTheSettingsCannotBeWritten) {
  PocketDevice device;
  Installed diary;
  Process program = diary.Start();
  ASSERT_NO_FATAL_FAILURE(ComeThroughFirstStart(device));
  std::filesystem::create_directory(diary.Folder().HostPath("Morvenly.dat"));
  device.Press("ctrl+q");
  ASSERT_TRUE(device.Shows("書込みエラー"));
  device.Press("Return");
  EXPECT_EQ(program.Wait(), 0);
  EXPECT_FALSE(std::filesystem::exists(diary.Folder().HostPath("user.sdf-wal")));
}

TEST(Diary, StartsWithANewActionWhereItsUserWantsThat) {
  PocketDevice device;
  Installed diary;
  testing_support::WriteWholeFile(diary.Folder().HostPath("Morvenly.dat"),
                                  "[System]\r\nVersion:3.2.2010.1114\r\nStartupMode:2\r\n\r\n");
  Process program = diary.Start();
  ASSERT_TRUE(device.Shows("データファイル初期化確認"));
  device.Press("Return");
  ASSERT_TRUE(device.Shows(kWindow));
  program.Signal(SIGTERM);
  EXPECT_EQ(program.Wait(), 0) << "and the main window does not go on";
  program = diary.Start();
  ASSERT_TRUE(device.Shows(kWindow));
  device.Press("F1");
  ASSERT_TRUE(WaitUntil([&] { return diary.Actions().size() == 1; }));
  device.Press("ctrl+q");
  EXPECT_EQ(program.Wait(), 0);
}

TEST(Diary, TakesThePositionOfARealReceiver) {
  testing_support::GpsDaemon daemon;
  setenv("MORVENLY_GPSD_PORT", std::to_string(daemon.Port()).c_str(), 1);
  ASSERT_NO_FATAL_FAILURE(daemon.Start());
  PocketDevice device;
  Installed diary;
  Process program = diary.Start();
  ASSERT_NO_FATAL_FAILURE(ComeThroughFirstStart(device));
  device.Tap(60, 307);  // new
  device.Tap(70, 93);   // the latitude: the receiver has no fix yet
  device.Picture("position_awaited");
  device.Tap(212, 13);  // the screen that has asked is closed
  device.Tap(60, 307);  // another one is open when the answer comes
  daemon.HaveFix();
  EXPECT_TRUE(WaitUntil([&] {  // the first answer, to nobody, has to come before one is asked again
    device.Tap(70, 93);
    return device.FocusedTitle() == "位置情報取得";
  }));
  device.Picture("position_arrived");
  device.Press("Return");
  ASSERT_TRUE(device.Shows(kWindow));
  device.Picture("position_taken");
  device.Press("F1");
  ASSERT_TRUE(diary.Holds(store::kLatitude, {u"35.681237"}));
  EXPECT_EQ(diary.Actions()[0][store::kLongitude], u"139.767125");
}

TEST(Diary, TellsThatThereIsNoDisplay) {
  const TempFolder folder;
  Process program(
      {"env", "-u", "QT_QPA_PLATFORM", "-u", "WAYLAND_DISPLAY", "DISPLAY=:no", MORVENLY_PROGRAM},
      folder.HostPath("output"));
  EXPECT_EQ(program.Wait(), EXIT_FAILURE);
  EXPECT_EQ(testing_support::ReadWholeFile(folder.HostPath("output")),
            "Morvenly: it needs a display, and neither WAYLAND_DISPLAY nor DISPLAY names one that "
            "can be opened\n");
}
