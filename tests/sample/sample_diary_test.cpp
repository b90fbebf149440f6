#include "sample/sample_diary.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <vector>

#include "core/date_time.h"
#include "core/settings.h"
#include "recorder/recorder_state.h"
#include "sample/sample_days.h"
#include "store/action_index.h"
#include "store/store_fixture.h"

namespace store_test {
namespace {

using namespace store;

class SampleDiary : public StoreTest {
 protected:
  std::vector<Action> Open() {
    app.DataFile = path;
    EXPECT_EQ(datafile::OpenDataFile(app), 0);
    std::vector<Action> actions(app.ActIds.Count());
    for (size_t i = 0; i < actions.size(); ++i) {
      EXPECT_EQ(Users().ReadById(app.ActIds.At(i), actions[i]), S_OK);
    }
    return actions;
  }
};

bool MayOverlap(const Action& action) {
  return TextOf(action, kEndDateTime).ends_with(core::kEndOfDay) ||
         TextOf(action, kCategory2) == sample::kMeanwhile;
}

TEST_F(SampleDiary, IsAYearOfDaysThatFitTogether) {
  host.now = {2026, 11, 14, 15, 30, 0};
  ASSERT_EQ(sample::MakeDiary(folder.HostPath()), "");
  const std::vector<Action> actions = Open();
  EXPECT_GT(actions.size(), 365u * 13);
  EXPECT_LT(actions.size(), 365u * 19);
  EXPECT_EQ(app.ActStarts.At(0).substr(0, 10), u"2025/11/15");

  std::set<std::u16string> ids;
  const Action* before = nullptr;
  int nights = 0;
  for (const Action& action : actions) {
    ids.insert(*action[kActId]);
    EXPECT_EQ(CheckActionTimes(action), 0) << Readable(action[kActId]);
    if (MayOverlap(action)) continue;
    if (before) {
      EXPECT_LE(*(*before)[kEndDateTime], *action[kStaDateTime]);
    }
    nights += core::SplitMoment(*action[kStaDateTime]).date !=
              core::SplitMoment(*action[kEndDateTime]).date;
    before = &action;
  }
  EXPECT_EQ(ids.size(), actions.size());
  EXPECT_GT(nights, 3);
  EXPECT_LE(*(*before)[kStaDateTime], u"2026/11/14 15:30:00");

  ASSERT_EQ(recorder::LoadRecorderData(app), 0);
  EXPECT_EQ(app.RcdrPreActId, *(*before)[kActId]);
  EXPECT_EQ((*before)[kEndDateTime], (*before)[kStaDateTime]) << "running";
  EXPECT_EQ(app.RcdrPlace, TextOf(*before, kPlace)) << "the next tap is no movement by itself";
  ASSERT_GT(app.RcdrHistory.Count(), 5u);
  EXPECT_EQ(app.RcdrHistory.At(app.RcdrHistory.Count() - 1), app.RcdrPreActId);
}

TEST_F(SampleDiary, BeforeDawnYesterdayIsStillRunning) {
  host.now = {2026, 3, 1, 4, 0, 0};
  ASSERT_EQ(sample::MakeDiary(folder.HostPath("new/folder")), "");
  path = folder.Path(u"new\\folder\\user.sdf");
  Open();
  ASSERT_EQ(recorder::LoadRecorderData(app), 0);
  EXPECT_EQ(app.RcdrPreDate, u"2026/02/28");
  EXPECT_EQ(core::ReadSettings(app, folder.Path(u"new\\folder\\Morvenly.dat")), 0);
  EXPECT_FALSE(app.PlaceHistory.Entries().empty());
}

TEST_F(SampleDiary, LeavesADiaryAlone) {
  CreateFile();
  DisconnectDataFile();
  const std::string bytes = FileBytes();
  EXPECT_NE(sample::MakeDiary(folder.HostPath()), "");
  EXPECT_EQ(FileBytes(), bytes);
  EXPECT_FALSE(std::filesystem::exists(folder.HostPath("Morvenly.dat")));
}

}  // namespace
}  // namespace store_test
