// A program that is killed at any moment loses at most the write that had not returned yet. The
// writer runs in a forked process and tells on a pipe of every write that has returned; it is
// killed, and the file must hold what was told, or that and the write it was at.
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <map>
#include <random>

#include "store/action_index.h"
#include "store/store_fixture.h"

namespace store_test {
namespace {

using namespace store;

constexpr int kKills = 200;
constexpr unsigned kMostTold = 12;  // before a writer's last moments begin
constexpr unsigned kMaxWaitMicroseconds = 1500;
constexpr int kWritesPerOpening = 4;
constexpr int kActions = 20;  // that stand at a time

using Diary = std::map<int, int>;  // place by id

// The writes by their numbers from 0, alike in all processes: an Action is inserted, then changed,
// and then one of long before is deleted.
int IdOf(int write) {
  return write % 3 == 2 ? write / 3 - kActions : write / 3;
}

void Apply(int write, Diary& diary) {
  if (write % 3 == 2) {
    diary.erase(IdOf(write));
  } else {
    diary[IdOf(write)] = write;
  }
}

class CrashTest : public StoreTest {
 protected:
  void SetUp() override {
    app.DataFile = path = memory_.Path(u"user.sdf");
    hostPath = memory_.HostPath("user.sdf");
    CreateFile();
    DisconnectDataFile();
  }

  HRESULT Perform(int write) {
    if (IdOf(write) < 0) return S_OK;  // nothing stands so long yet
    const std::u16string start =
        u"2010/06/23 10:" + core::ZeroPadded(IdOf(write) * 7 % 60, 2) + u":00";
    Action action = MakeAction(start, start);
    const std::u16string id = u"ID" + core::ZeroPadded(IdOf(write), 16);
    action[kActId] = id;
    action[kPlace] = core::ZeroPadded(write, 1);
    action[kMemo] = std::u16string(MemoLength(write), u'長');
    return write % 3 == 0   ? Users().Insert(action)
           : write % 3 == 1 ? Users().Update(id, action)
                            : Users().Delete(id);
  }
  static size_t MemoLength(int place) { return static_cast<size_t>(place * 179 % 2000); }

  // Writes, closes and opens again until it is killed.
  [[noreturn]] void WriteForever(int pipe, int next) {
    while (datafile::OpenDataFile(app) == 0) {
      for (int i = 0; i < kWritesPerOpening; ++i) {
        if (Perform(next++) != S_OK || write(pipe, "", 1) != 1) _exit(1);
      }
      DisconnectDataFile();
    }
    _exit(1);
  }

  // Lets a writer go on from `next` for a random moment. Answers of how many writes it told.
  int KillOneWriter(int next) {
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    const pid_t writer = fork();
    if (writer == 0) {
      close(ends[0]);
      WriteForever(ends[1], next);
    }
    close(ends[1]);
    char byte;
    int told = 0;
    const int wanted = static_cast<int>(random_() % kMostTold);
    while (told < wanted && read(ends[0], &byte, 1) == 1) ++told;
    usleep(static_cast<useconds_t>(random_() % kMaxWaitMicroseconds));
    kill(writer, SIGKILL);
    int status = 0;
    EXPECT_EQ(waitpid(writer, &status, 0), writer);
    EXPECT_TRUE(WIFSIGNALED(status)) << "a write failed";
    while (read(ends[0], &byte, 1) == 1) ++told;
    close(ends[0]);
    return told;
  }

  // What the file holds, by its index.
  Diary ReadDiary() {
    Diary diary;
    EXPECT_EQ(datafile::OpenDataFile(app), 0);
    for (int i = 0; i < app.IndexCount; ++i) {
      const std::u16string id(app.ActIds.At(static_cast<size_t>(i)));
      const std::u16string_view start = app.ActStarts.At(static_cast<size_t>(i));
      EXPECT_TRUE(i == 0 || app.ActStarts.At(static_cast<size_t>(i) - 1) <= start);
      Action action;
      EXPECT_EQ(Users().ReadById(id, action), 0);
      EXPECT_EQ(action[kStaDateTime], start);
      const int place = core::ToInt32(TextOf(action, kPlace));
      EXPECT_EQ(TextOf(action, kMemo).size(), MemoLength(place));
      diary[core::ToInt32(id.substr(2))] = place;
    }
    EXPECT_EQ(diary.size(), static_cast<size_t>(app.IndexCount));
    EXPECT_EQ(Users().GetRS(u"PRAGMA integrity_check", kCheckColumn), 0);
    std::optional<std::u16string> check;
    Users().CRowsetTable::GetNextRS({&check, 1});
    EXPECT_EQ(Readable(check), "ok");
    DisconnectDataFile();
    EXPECT_NE(access((hostPath + "-wal").c_str(), F_OK), 0) << "closed, it is one file";
    EXPECT_EQ(FileBytes().substr(18, 2), "\1\1") << "in the rollback form";
    return diary;
  }

  static constexpr std::u16string_view kCheckColumn[] = {u"integrity_check"};
  // A kill leaves to the system what was handed to it, so the disk's own pace adds nothing here.
  testing_support::TempFolder memory_{"/dev/shm"};
  std::mt19937 random_{20100623};
};

TEST_F(CrashTest, EveryWriteThatHadReturnedIsThere) {
  Diary diary;
  int done = 0;
  for (int i = 0; i < kKills && !HasFailure(); ++i) {
    SCOPED_TRACE("kill " + std::to_string(i));
    for (int told = KillOneWriter(done); told > 0; --told) Apply(done++, diary);
    const Diary found = ReadDiary();
    if (found == diary) continue;
    Apply(done++, diary);
    ASSERT_TRUE(found == diary) << "neither what was told nor that and the next write";
  }
  EXPECT_GT(done, 2 * kKills) << "the writers wrote nothing worth the name";
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
  const pid_t killed = fork();
  if (killed == 0) {
    actions(2);
    _exit(0);
  }
  waitpid(killed, nullptr, 0);
  const std::string own = FileBytes();
  const std::string log = testing_support::ReadWholeFile(hostPath + "-wal");
  ASSERT_FALSE(log.empty());
  for (const std::string& backup : {closed, copiedWhileOpen}) {
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
