// Random days through random commands: no row is lost that wasn't deleted, none changed that wasn't
// named, the filled time stays where the command keeps it, and everything can be taken back.
#include "tidy/tidy.h"

#include <map>
#include <random>

#include "recorder/recording.h"
#include "store/action_index.h"
#include "store/store_fixture.h"
#include "undo/undo.h"

namespace tidy {
namespace {

using Text = std::u16string;
using Rows = std::map<Text, store::Action>;

int64_t Filled(const DayChain& chain) {
  int64_t filled = 0;
  for (const Stretch& stretch : StretchesOf(chain)) {
    filled += stretch.depth > 0 ? stretch.to - stretch.from : 0;
  }
  return filled;
}

class TidyTest : public store_test::StoreTest {
 protected:
  TidyTest() {
    CreateFile();
    host.now = {2010, 6, 23, 22, 0, 0};
    core::SetCurDate(u"2010/06/23");
    store::LoadActionIndex(app);
  }

  int Pick(int end) { return static_cast<int>(chance_() % static_cast<unsigned>(end)); }

  Text Add(int from, int to, std::u16string_view place = u"所") {
    const core::Day day{2010, 6, 23};
    return InsertAction(MomentText(from * 60, day), MomentText(to * 60, day), place);
  }
  void MakeDay() {
    for (int i = 0, at = -120; i < 8 && at < 1440; ++i) {
      const int start = std::max(-120, at + 10 * (Pick(9) - 4));
      const int end = start + 10 * Pick(20);
      Add(start, end, std::u16string(1, static_cast<char16_t>(u'あ' + i % 3)));
      at = end;
    }
    if (Pick(3) == 0) InsertAction(u"2010/06/23 00:00:00", u"2010/06/23 24:00:00", u"終日");
    recorder::CRecorder recorder(app);
    recorder.Open();
    recorder.OnBtnClear();
    if (Pick(2) == 0) {
      recorder.fields.time = u"20:00";
      recorder.fields.place = u"記録";
      recorder.OnBtnRec();
    }
    recorder.Close();
    store::ReloadActionIndex(app);
  }

  Rows Read() {
    Rows rows;
    Users().Select(u"select * from t_UserData");
    for (store::Action row; Users().GetNextRS(row) == store::S_OK;) {
      EXPECT_EQ(store::CheckActionTimes(row), 0);
      row[store::kLastUpdate].reset();
      rows[*row[store::kActId]] = row;
    }
    Users().CloseRS();
    return rows;
  }

  // A command at random, and how much of the day it may fill besides.
  Outcome Choose(const DayChain& chain, bool& keepsFilled) {
    const Link& link = chain.links[static_cast<size_t>(Pick(static_cast<int>(chain.links.size())))];
    const int64_t moment = Pick(144) * 600;
    keepsFilled = link.kind == LinkKind::kOverlap;
    switch (link.kind) {
      case LinkKind::kGap:
        return Pick(2) == 0 ? ExtendBefore(chain, link) : AdvanceAfter(chain, link);
      case LinkKind::kOverlap:
        return Pick(3) == 0   ? TrimBefore(chain, link)
               : Pick(2) == 0 ? DelayAfter(chain, link)
                              : SplitOuter(chain, link);
      default:
        break;
    }
    switch (Pick(5)) {
      case 0:
        return JoinWithNext(chain, link.before);
      case 1:
        keepsFilled = true;
        return Split(chain, link.before, moment);
      default:
        return MoveBoundary(chain, Pick(2) == 0 ? link.from : link.to, moment);
    }
  }

  std::mt19937 chance_{16};
};

TEST_F(TidyTest, AnyCommandsKeepWhatTheyDoNotName) {
  for (int round = 0; round < 40 && !HasFailure(); ++round) {
    SCOPED_TRACE(round);
    store::dbSession().Session->Execute(u"delete from t_UserData");
    host.now = {2010, 6, 23, 22, 0, round};
    MakeDay();
    host.now.day = 24;  // what runs fills the rest of the day
    std::vector<Rows> states{Read()};
    TidyDay day(app);
    ASSERT_TRUE(day.Read());
    for (int i = 0; i < 12 && !day.Chain().spans.empty() && !HasFailure(); ++i) {
      bool keepsFilled = false;
      host.now.minute = (host.now.minute + 1) % 60;  // of the ids
      const Outcome outcome = Choose(day.Chain(), keepsFilled);
      const int64_t filled = Filled(day.Chain());
      if (!outcome.refusal.empty()) host.answers = {Text(outcome.refusal).c_str()};
      if (!day.Run(outcome, u"整理")) {
        EXPECT_EQ(Read(), states.back());
        continue;
      }
      EXPECT_TRUE(!keepsFilled || Filled(day.Chain()) == filled);
      Rows wanted = states.back();
      const Rows found = Read();
      size_t inserted = 0;
      for (const RowWrite& write : outcome.writes) {
        if (write.kind == WriteKind::kInsert) {
          ++inserted;
        } else if (write.kind == WriteKind::kDelete) {
          wanted.erase(*write.action[store::kActId]);
        } else {
          wanted[*write.action[store::kActId]] = found.at(*write.action[store::kActId]);
        }
      }
      EXPECT_EQ(found.size(), wanted.size() + inserted);
      for (const auto& [id, row] : wanted) EXPECT_EQ(found.at(id), row);
      EXPECT_TRUE(app.RcdrPreActId.empty() || found.contains(app.RcdrPreActId));
      states.push_back(found);
    }
    for (size_t i = states.size() - 1; i-- > 0;) {
      ASSERT_TRUE(undo::Take(app, store::Turn::kUndo));
      ASSERT_EQ(Read(), states[i]);
    }
    for (size_t i = 1; i < states.size(); ++i) {
      ASSERT_TRUE(undo::Take(app, store::Turn::kRedo));
      ASSERT_EQ(Read(), states[i]);
    }
  }
}

TEST_F(TidyTest, TheChainNamesGapsAndOverlaps) {
  Add(-60, 420, u"夜");
  const Text first = Add(540, 720, u"会社");
  Add(600, 660, u"会議");
  Add(700, 780, u"昼");
  Add(1380, 1500, u"夜");
  TidyDay day(app);
  ASSERT_TRUE(day.Read());
  std::string shown;
  for (const Link& link : day.Chain().links) {
    shown += platform::ToUtf8(day.TimesOf(link) + u" " + day.TextOf(link) + u"\n");
  }
  EXPECT_EQ(
      shown,
      "←-07:00 夜\n07:00-09:00 空き 2:00\n09:00-12:00 会社\n10:00-11:00 重なり 1:00 会社\n"
      "10:00-11:00 会議\n11:40-12:00 重なり 0:20 会社\n11:40-13:00 昼\n13:00-23:00 空き 10:00\n"
      "23:00-→ 夜\n");
  EXPECT_EQ(Filled(day.Chain()), 12 * 3600);
  host.answers = {u"「会議」に重なります。", u"「会社」の長さがなくなります。"};
  EXPECT_FALSE(day.Run(MoveBoundary(day.Chain(), 700 * 60, 650 * 60), u"境界の移動"));
  EXPECT_FALSE(day.Run(MoveBoundary(day.Chain(), 720 * 60, 540 * 60), u"境界の移動"));
  EXPECT_TRUE(day.Run(MoveBoundary(day.Chain(), 420 * 60, 540 * 60), u"境界の移動"));
  EXPECT_EQ(undo::CommandText(store::Turn::kUndo), u"元に戻す: 境界の移動");
  EXPECT_EQ(app.SelActId, app.ActIds.At(static_cast<size_t>(app.SelIndex)));
}

TEST_F(TidyTest, SaysWhyAnOverlapStays) {
  Add(600, 660, u"会議");
  Add(600, 660, u"電話");
  TidyDay day(app);
  ASSERT_TRUE(day.Read());
  const Link& overlap = day.Chain().links[2];
  EXPECT_TRUE(day.CommandsOf(overlap).empty());
  host.answers = {
      u"「会議」と「電話」は同じ時間です。時刻を変えるか、どちらかを削除してください。"};
  EXPECT_FALSE(day.Run(Command::kTrimBefore, overlap));
}

TEST_F(TidyTest, WhatIsJoinedKeepsBothMemosOrIsRefused) {
  store::Action first = MakeAction(u"2010/06/23 09:00:00", u"2010/06/23 10:00:00");
  store::Action second = MakeAction(u"2010/06/23 10:00:00", u"2010/06/23 10:00:00");
  second[store::kActId] = u"ID0000000000000002";
  first[store::kMemo] = u"朝";
  second[store::kMemo] = u"昼";
  const auto join = [&](std::u16string_view running) {
    return JoinWithNext(MakeChain({2010, 6, 23}, {first, second}, running, 11 * 3600), 0);
  };
  for (const Text& running : {Text(), *second[store::kActId]}) {
    const Outcome joined = join(running);
    ASSERT_EQ(joined.writes.size(), 2u);
    EXPECT_EQ(joined.writes[0].action[store::kMemo], u"朝\r\n昼");
  }
  first[store::kMemo] = Text(1999, u'朝');
  EXPECT_EQ(join({}).refusal, u"つなぐとメモが長くなりすぎます。");
}

TEST_F(TidyTest, WhatRunsKeepsItsEndAndTheChainFollows) {
  recorder::CRecorder recorder(app);
  recorder.Open();
  for (const auto& [time, place] : {std::pair(u"09:00", u"家"), std::pair(u"10:00", u"駅")}) {
    ++host.now.second;  // of the ids
    recorder.fields.time = time;
    recorder.fields.place = place;
    recorder.OnBtnRec();
  }
  recorder.Close();
  TidyDay day(app);
  ASSERT_TRUE(day.Read());
  ASSERT_TRUE(day.Run(MoveBoundary(day.Chain(), 600 * 60, 630 * 60), u"境界の移動"));
  EXPECT_EQ(app.RcdrPreTime, u"10:30:00");
  store::Action running;
  ASSERT_EQ(Users().ReadById(app.RcdrPreActId, running), store::S_OK);
  EXPECT_EQ(running[store::kEndDateTime], running[store::kStaDateTime]);
  host.answers = {platform::Answer::kYes};
  ASSERT_TRUE(day.Run(Command::kDelete, day.Chain().links[1]));
  EXPECT_EQ(app.RcdrHistory.Count(), 1u);
  host.answers = {platform::Answer::kYes};
  ASSERT_TRUE(day.Run(Command::kDelete, day.Chain().links[1]));
  core::CAppState stored;
  EXPECT_EQ(recorder::LoadRecorderData(stored), 0);
  EXPECT_TRUE(stored.RcdrPreActId.empty() && stored.RcdrHistory.Empty());
}

}  // namespace
}  // namespace tidy
