// A program that is killed at any moment loses at most the write that had not returned yet. The
// writer runs in a forked process, tells every write on a pipe before and after it, and is killed;
// then the file must hold what was told. MORVENLY_KILLS sets how often.
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <map>
#include <random>

#include "store/action_index.h"
#include "store_fixture.h"

namespace store_test {
namespace {

using namespace store;

constexpr int kKills = 200;
constexpr unsigned kMaxReports = 12;  // that a writer gets off before its last moments begin
constexpr unsigned kMaxWaitMicroseconds = 1500;
constexpr int kWritesPerOpening = 4;
constexpr unsigned kMostActions = 60;

enum class Write : int { kInsert, kUpdate, kDelete };

struct Report {
  Write write;
  int id;
  int place;
  bool done;
};

using Diary = std::map<int, int>;  // place by id

void Apply(const Report& report, Diary& diary) {
  if (report.write == Write::kDelete) {
    diary.erase(report.id);
  } else {
    diary[report.id] = report.place;
  }
}

std::u16string IdText(int id) {
  return u"ID" + core::ZeroPadded(id, 16);
}

std::u16string StartText(int id) {
  return u"2010/06/23 10:" + core::ZeroPadded(id * 7 % 60, 2) + u":00";
}

class CrashTest : public StoreTest {
 protected:
  void SetUp() override {
    app.DataFile = path = memory_.Path(u"user.sdf");
    hostPath = memory_.HostPath("user.sdf");
    CreateFile();
    DisconnectDataFile();
  }

  HRESULT Perform(const Report& report) {
    Action action = MakeAction(StartText(report.id), StartText(report.id));
    action[kActId] = IdText(report.id);
    action[kPlace] = core::ZeroPadded(report.place, 1);
    action[kMemo] = std::u16string(static_cast<size_t>(report.place % 2000), u'長');
    switch (report.write) {
      case Write::kInsert:
        return Users().Insert(action);
      case Write::kUpdate:
        return Users().Update(IdText(report.id), action);
      case Write::kDelete:
        return Users().Delete(IdText(report.id));
    }
    return E_FAIL;
  }

  Report Draw(const Diary& diary, int& lastId) {
    const auto chosen = diary.lower_bound(static_cast<int>(random_() % (lastId + 1)));
    const int place = static_cast<int>(random_() % 10000);
    if (chosen == diary.end() || random_() % kMostActions >= diary.size()) {
      return {Write::kInsert, ++lastId, place, false};
    }
    return {random_() % 2 == 0 ? Write::kUpdate : Write::kDelete, chosen->first, place, false};
  }

  // Writes, closes and opens again until it is killed.
  [[noreturn]] void WriteForever(int pipe, Diary diary, int lastId) {
    while (OpenDataFile(app) == 0) {
      for (int i = 0; i < kWritesPerOpening; ++i) {
        Report report = Draw(diary, lastId);
        if (write(pipe, &report, sizeof report) < 0 || Perform(report) != S_OK) _exit(1);
        report.done = true;
        if (write(pipe, &report, sizeof report) < 0) _exit(1);
        Apply(report, diary);
      }
      DisconnectDataFile();
    }
    _exit(1);
  }

  // Runs a writer for a random moment. `certain` becomes what it told as done, `possible` that and
  // the write that it had begun.
  void KillOneWriter(Diary& certain, Diary& possible, int& lastId) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t writer = fork();
    ASSERT_GE(writer, 0);
    if (writer == 0) {
      close(ends[0]);
      WriteForever(ends[1], certain, lastId);
    }
    close(ends[1]);
    possible = certain;
    const auto takeReport = [&] {
      Report report{};
      if (read(ends[0], &report, sizeof report) != sizeof report) return false;
      Apply(report, possible);
      if (report.done) Apply(report, certain);
      lastId = std::max(lastId, report.id);
      writes_ += report.done ? 1 : 0;
      return true;
    };
    for (auto left = random_() % kMaxReports; left > 0 && takeReport(); --left) {
    }
    usleep(static_cast<useconds_t>(random_() % kMaxWaitMicroseconds));
    kill(writer, SIGKILL);
    int status = 0;
    ASSERT_EQ(waitpid(writer, &status, 0), writer);
    ASSERT_TRUE(WIFSIGNALED(status)) << "a write failed";
    while (takeReport()) {
    }
    close(ends[0]);
  }

  // What the file holds, by its index.
  Diary ReadDiary() {
    Diary diary;
    EXPECT_EQ(OpenDataFile(app), 0);
    for (int i = 0; i < app.IndexCount; ++i) {
      const std::u16string id(app.ActIds.At(static_cast<size_t>(i)));
      const std::u16string_view start = app.ActStarts.At(static_cast<size_t>(i));
      EXPECT_TRUE(i == 0 || app.ActStarts.At(static_cast<size_t>(i) - 1) <= start);
      Action action;
      EXPECT_EQ(Users().ReadById(id, action), 0);
      EXPECT_EQ(action[kStaDateTime], start);
      const int place = core::ToInt32(TextOf(action, kPlace));
      EXPECT_EQ(TextOf(action, kMemo).size(), static_cast<size_t>(place % 2000));
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
  int writes_ = 0;
};

TEST_F(CrashTest, EveryWriteThatHadReturnedIsThere) {
  const char* const wanted = std::getenv("MORVENLY_KILLS");
  const int kills = wanted ? std::atoi(wanted) : kKills;
  Diary certain, possible;
  int lastId = 0;
  int begunKept = 0;
  for (int i = 0; i < kills; ++i) {
    SCOPED_TRACE("kill " + std::to_string(i));
    ASSERT_NO_FATAL_FAILURE(KillOneWriter(certain, possible, lastId));
    const Diary found = ReadDiary();
    ASSERT_TRUE(found == certain || found == possible);
    if (found != certain) ++begunKept;
    certain = found;
  }
  EXPECT_GT(writes_, kills) << "the writers wrote nothing worth the name";
  RecordProperty("writes", writes_);
  RecordProperty("begun_and_kept", begunKept);
}

}  // namespace
}  // namespace store_test
