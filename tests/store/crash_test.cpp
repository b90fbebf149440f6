// A program that is killed between any two of its writes loses at most the change that had not
// returned yet.
#include <sys/mman.h>

#include <filesystem>
#include <map>

#include "store/action_index.h"
#include "store/store_fixture.h"
#include "support/disk_calls.h"
#include "support/process.h"

namespace store_test {
namespace {

using namespace store;

using Diary = std::map<std::u16string, Action>;  // by id

class CrashTest : public StoreTest {
 protected:
  void SetUp() override {
    app.DataFile = path = memory_.Path(u"user.sdf");
    hostPath = memory_.HostPath("user.sdf");
    CreateFile();
    DisconnectDataFile();
  }

  // In turn an Action is made, changed, and the one before it deleted.
  HRESULT Change(int number) {
    const auto id = [](int of) { return u"ID" + core::ZeroPadded(of, 16); };
    Action action = MakeAction(u"2010/06/23 10:00:00", u"2010/06/23 10:00:00");
    action[kActId] = id(number / 3);
    action[kMemo] = std::u16string(static_cast<size_t>(number * 179 % 2000), u'長');
    if (number % 3 == 0) return Users().Insert(action);
    if (number % 3 == 1 || number == 2) return Users().Update(id(number / 3), action);
    return Users().Delete(id(number / 3 - 1));
  }

  Diary ReadDiary() {
    Diary diary;
    EXPECT_EQ(Users().Select(u"select * from t_UserData"), S_OK);
    for (Action row; Users().GetNextRS(row) == S_OK;) diary[*row[kActId]] = row;
    Users().CloseRS();
    return diary;
  }

  // A kill leaves to the system what was handed to it, so the disk's own pace adds nothing here.
  testing_support::TempFolder memory_{"/dev/shm"};
};

TEST_F(CrashTest, EveryChangeThatHadReturnedIsThere) {
  constexpr int kChanges = 8;
  const std::string empty = FileBytes();
  std::vector<Diary> diaries;  // before each change, and after the last
  ASSERT_EQ(datafile::OpenDataFile(app), 0);
  for (int i = 0; i < kChanges; ++i) {
    diaries.push_back(ReadDiary());
    ASSERT_EQ(Change(i), S_OK);
  }
  diaries.push_back(ReadDiary());
  auto* const returned = static_cast<int*>(
      mmap(nullptr, sizeof(int), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
  int writes = 0;
  for (bool killed = true; killed && !HasFailure(); ++writes) {
    SCOPED_TRACE("killed at write " + std::to_string(writes));
    DisconnectDataFile();
    testing_support::WriteWholeFile(hostPath, empty);
    *returned = 0;
    killed = 0 == testing_support::InACopy([&] {
               testing_support::diskCalls().writesUntilDeath = writes;
               datafile::OpenDataFile(app);
               while (*returned < kChanges && Change(*returned) == S_OK) ++*returned;
               DisconnectDataFile();
               return 1;
             });
    ASSERT_EQ(datafile::OpenDataFile(app), 0);
    const Diary found = ReadDiary();
    const auto at = diaries.begin() + *returned;
    EXPECT_TRUE(found == *at || (killed && found == *(at + 1)));
    EXPECT_EQ(static_cast<size_t>(app.IndexCount), found.size());
  }
  EXPECT_EQ(*returned, kChanges) << "the last one was not killed";
  EXPECT_GT(writes, 5 * kChanges) << "the changes were written elsewhere";
  DisconnectDataFile();
  EXPECT_FALSE(std::filesystem::exists(hostPath + "-wal")) << "closed, it is one file";
  EXPECT_EQ(FileBytes().substr(18, 2), "\1\1") << "in the rollback form";
}

// A backup is copied over the file while the log of a killed program lies beside it.
TEST_F(CrashTest, ALogThatBelongsToAnotherFileIsNeverMixedIn) {
  const auto actions = [&](int count) {
    ASSERT_EQ(datafile::OpenDataFile(app), 0);
    for (int i = 0; i < count; ++i) InsertAction(u"2010/06/23 10:00:00");
  };
  actions(1);
  const std::string copiedWhileOpen = FileBytes();
  DisconnectDataFile();
  const std::string closed = FileBytes();
  testing_support::InACopy([&] {
    actions(2);
    return 0;
  });
  const std::string own = FileBytes();
  const std::string log = testing_support::ReadWholeFile(hostPath + "-wal");
  ASSERT_FALSE(log.empty());
  for (const std::string& backup : {closed, copiedWhileOpen}) {
    SCOPED_TRACE(backup == closed ? "a copy of the closed diary" : "a copy of the open one");
    testing_support::WriteWholeFile(hostPath, backup);
    host.answers = {platform::Answer::kNo, platform::Answer::kOk};
    EXPECT_EQ(datafile::OpenDataFile(app), -200);
    EXPECT_TRUE(FileBytes() == backup);
    EXPECT_TRUE(testing_support::ReadWholeFile(hostPath + "-wal") == log);
  }
  host.answers = {platform::Answer::kYes};
  EXPECT_EQ(datafile::OpenDataFile(app), 0);
  EXPECT_EQ(app.IndexCount, 0) << "the Action was not in the copied file yet";
  DisconnectDataFile();
  EXPECT_TRUE(testing_support::ReadWholeFile(hostPath + "-wal.00") == log);
  testing_support::WriteWholeFile(hostPath, own);
  std::filesystem::rename(hostPath + "-wal.00", hostPath + "-wal");
  EXPECT_EQ(datafile::OpenDataFile(app), 0) << "its own log is brought in without a word";
  EXPECT_EQ(app.IndexCount, 3);
}

}  // namespace
}  // namespace store_test
