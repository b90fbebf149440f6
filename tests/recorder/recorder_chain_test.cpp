// The chain over random taps, stops and steps back, then a restart, or a kill between two writes:
// what every step leaves is whole, and nothing of it is lost.
#include <map>
#include <random>

#include "core/date_time.h"
#include "recorder/recording.h"
#include "store/action_index.h"
#include "store/store_fixture.h"
#include "support/disk_calls.h"
#include "support/process.h"

namespace recorder {
namespace {

using platform::Answer;
using Text = std::u16string;

const Text kArrow = u"－＞";
constexpr int kRounds = 100;
constexpr int kStepsPerRound = 10;

struct Chain {
  std::vector<Text> ids;
  Text running;
  std::map<Text, store::Action> actions;  // all of the file
};

class RecorderChain : public store_test::StoreTest {
 protected:
  RecorderChain() { path = memory_.Path(u"user.sdf"); }

  int Pick(int end) { return static_cast<int>(chance_() % static_cast<unsigned>(end)); }

  void Start() {
    ASSERT_EQ(store::ConnectDataFile(path), 0);
    app = core::CAppState();
    app.PlaceSepaStr = kArrow;
    recorder = std::make_unique<CRecorder>(app);
  }

  Chain Read() {
    Chain chain{{}, app.RcdrPreActId, {}};
    for (size_t i = 0; i < app.RcdrHistory.Count(); ++i) {
      chain.ids.emplace_back(app.RcdrHistory.At(i));
    }
    Users().Select(u"select * from t_UserData");
    for (store::Action row; Users().GetNextRS(row) == 0;) chain.actions[*row[store::kActId]] = row;
    Users().CloseRS();
    return chain;
  }

  // The clock goes on, and somebody types.
  void Prepare() {
    minutes_ += 1 + Pick(60);
    host.now = {2010, 6, 23, minutes_ / 60, minutes_ % 60, 0};
    now_ = u"2010/06/23 " + core::FormatTime(host.now.hour, host.now.minute, 0);
    const char16_t* places[] = {u"会社", u"自宅", u"－＞裏口"};
    recorder->fields.place = places[Pick(3)];
    recorder->fields.latitude = Pick(2) == 0 ? u"35/30/0.0" : u"";
  }

  void ExpectClosed(const Chain& before, const Chain& after, const Text& place) {
    const store::Action& closed = after.actions.at(before.running);
    const Text former = *before.actions.at(before.running)[store::kPlace];
    EXPECT_EQ(closed[store::kEndDateTime], now_);
    EXPECT_EQ(closed[store::kPlace], former == place ? former : former + kArrow + place);
  }
  static void ExpectNoMovement(const Chain& before, const Chain& after) {
    const Text former = *before.actions.at(after.running)[store::kPlace];
    const size_t at = former.rfind(kArrow);
    const bool moved = at != Text::npos && at > 0;
    EXPECT_EQ(after.actions.at(after.running)[store::kPlace], former.substr(0, moved ? at : 999));
  }

  void Tap() {
    Prepare();
    const Chain before = Read();
    const RecorderFields typed = recorder->fields;
    recorder->OnBtnRec();
    const Chain after = Read();
    EXPECT_EQ(after.ids.size(), before.running.empty() ? 1 : before.ids.size() + 1);
    const store::Action& opened = after.actions.at(after.running);
    EXPECT_EQ(opened[store::kStaDateTime], now_);
    EXPECT_EQ(opened[store::kEndDateTime], now_);
    EXPECT_EQ(opened[store::kPlace], typed.place);
    EXPECT_EQ(opened[store::kLatitude].has_value(), !typed.latitude.empty());
    EXPECT_EQ(recorder->fields.latitude, u"") << "a position is one Action's";
    EXPECT_EQ(recorder->fields.place, typed.place);
    if (!before.running.empty()) ExpectClosed(before, after, typed.place);
  }
  void StopOrReopen() {
    Prepare();
    const Chain before = Read();
    const Text place = recorder->fields.place;
    recorder->OnBtnStop();
    const Chain after = Read();
    EXPECT_EQ(after.ids, before.ids);
    EXPECT_EQ(after.running, before.running.empty() ? before.ids.back() : u"");
    before.running.empty() ? ExpectNoMovement(before, after) : ExpectClosed(before, after, place);
  }
  void StepBack() {
    Chain before = Read();
    host.answers = {Answer::kYes};
    recorder->OnBtnBack();
    const Chain after = Read();
    EXPECT_FALSE(after.actions.contains(before.ids.back()));
    before.ids.pop_back();
    EXPECT_EQ(after.ids, before.ids);
    EXPECT_EQ(after.running, before.ids.empty() ? u"" : before.ids.back());
    if (after.running.empty()) return;
    const store::Action& reopened = after.actions.at(after.running);
    EXPECT_EQ(reopened[store::kEndDateTime], reopened[store::kStaDateTime]);
    ExpectNoMovement(before, after);
  }

  // `isUnbroken`: nothing was deleted or cut short in it.
  void Check(bool isUnbroken) {
    const Chain chain = Read();
    const bool runs = !chain.running.empty();
    int32_t count = -1;
    Text running;
    store::dbSession().LongTable->GetLong(u"RcdrHistNum", count);
    store::dbSession().TextTable->GetText(u"RcdrPreActId", running);
    EXPECT_EQ(static_cast<size_t>(count), chain.ids.size());
    EXPECT_EQ(running, chain.running);
    EXPECT_TRUE(!runs || chain.actions.contains(chain.running));
    EXPECT_EQ(recorder->isRunning, runs);
    EXPECT_EQ(recorder->canGoBack, runs || !chain.ids.empty());
    ASSERT_EQ(recorder->lines.texts.size(), chain.ids.size());
    for (size_t i = 0; i < chain.ids.size(); ++i) {
      ASSERT_TRUE(chain.actions.contains(chain.ids[i]));
      const bool isLast = i + 1 == chain.ids.size();
      if (!isUnbroken) continue;
      EXPECT_EQ(recorder->lines.texts[i].find(u"...::") != Text::npos, isLast && runs) << i;
      if (isLast) continue;
      EXPECT_EQ(chain.actions.at(chain.ids[i])[store::kEndDateTime],
                chain.actions.at(chain.ids[i + 1])[store::kStaDateTime]);
    }
  }

  void Step() {
    const int kind = Pick(10);
    if (kind < 6 || app.RcdrHistory.Empty()) {
      Tap();
    } else if (kind < 8) {
      StopOrReopen();
    } else {
      StepBack();
    }
  }

  void Restart() {
    Prepare();
    const Chain before = Read();
    const RecorderFields typed = recorder->fields;
    recorder->Close();
    CloseRecorderSession(app);
    Start();
    recorder->Open();
    EXPECT_EQ(Read().ids, before.ids);
    EXPECT_EQ(app.RcdrPreActId, before.running);
    EXPECT_EQ(recorder->fields.place, typed.place);
    EXPECT_EQ(recorder->fields.latitude, typed.latitude);
    Check(true);
  }

  // Another process runs the command and dies between two of its writes, or right after the last.
  void Die(void (CRecorder::*command)()) {
    Prepare();
    const Chain before = Read();
    const bool deletes = command == &CRecorder::OnBtnBack || command == &CRecorder::FxBtnDelete;
    if (deletes) host.answers = {Answer::kYes};
    store::DisconnectDataFile();
    const int writes = Pick(15);
    killed += 0 == testing_support::InACopy([&] {
                store::ConnectDataFile(path);
                store::PrepareToWrite();  // its writes belong to no command
                testing_support::diskCalls().writesUntilDeath = writes;
                (*recorder.*command)();
                return 1;
              });
    host.answers.clear();
    Start();
    const Chain left = Read();
    for (const auto& [id, action] : before.actions) {
      const bool mayGo = deletes && id == before.ids.back();
      EXPECT_TRUE(mayGo || left.actions.contains(id)) << platform::ToUtf8(id);
    }
    Text running;
    store::dbSession().TextTable->GetText(u"RcdrPreActId", running);
    EXPECT_TRUE(deletes || running.empty() || left.actions.contains(running));
    recorder->Open();
    Check(false);
    Tap();
    Check(false);
  }

  std::unique_ptr<CRecorder> recorder;
  int killed = 0;
  // A kill leaves to the system what was handed to it, so the disk's own pace adds nothing here.
  testing_support::TempFolder memory_{"/dev/shm"};
  std::mt19937 chance_{20100623};
  int minutes_ = 0;
  Text now_;
};

TEST_F(RecorderChain, IsWholeAfterEveryStepAndEveryKill) {
  static constexpr void (CRecorder::*kCommands[])() = {
      &CRecorder::OnBtnRec,  &CRecorder::OnBtnRec,    &CRecorder::OnBtnStop,
      &CRecorder::OnBtnBack, &CRecorder::FxBtnDelete, &CRecorder::OnBtnClear};
  CreateFile();
  Start();
  recorder->Open();
  for (int round = 0; round < kRounds && !HasFailure(); ++round) {
    SCOPED_TRACE("round " + std::to_string(round));
    recorder->OnBtnClear();
    store::dbSession().Session->Execute(u"delete from t_UserData");
    minutes_ = 0;
    for (int step = 0; step < kStepsPerRound && !HasFailure(); ++step) {
      SCOPED_TRACE("step " + std::to_string(step));
      Step();
      Check(true);
    }
    Tap();
    round % 4 == 0 ? Restart() : Die(kCommands[round % std::size(kCommands)]);
  }
  EXPECT_GT(killed, kRounds / 4) << "or the kills have missed what they are for";
}

}  // namespace
}  // namespace recorder
