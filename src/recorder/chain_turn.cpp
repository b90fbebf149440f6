// The chain that a new one has replaced is gone from the file. Going back into its time, it's the
// running Action alone. A kill between the commits of a tap may have left the chain, or which of it
// runs, as it was before.
#include "recorder/chain_turn.h"

#include "recorder/recorder_state.h"
#include "recorder/recording_rows.h"
#include "store/session.h"

namespace recorder {
namespace {

using store::RowChange;
using store::StepKind;
using store::Turn;
using store::TurnResult;

// The Action that the step is about: opened, taken away, or closed.
std::u16string SubjectOf(const store::UndoStep& step) {
  const RowChange wanted = step.kind == StepKind::kTap    ? RowChange::kInserted
                           : step.kind == StepKind::kBack ? RowChange::kDeleted
                                                          : RowChange::kChangedTo;
  for (const store::UndoRow& row : store::dbSession().UserTable->Log().RowsOf(step)) {
    if (row.change == wanted) return row.id;
  }
  return {};
}

bool IsRecorders(StepKind kind) {
  return kind >= StepKind::kTap && kind <= StepKind::kBack;
}

}  // namespace

ChainTurn::ChainTurn(core::CAppState& app) : app_(app) {
  core::CAppState stored;
  isRead_ = app.RcdrLoaded || LoadRecorderData(stored) == 0;
  const core::CAppState& chain = app.RcdrLoaded ? app : stored;
  history_ = chain.RcdrHistory;
  running_ = chain.RcdrPreActId;
}

std::u16string ChainTurn::Newest() const {
  return history_.Empty() ? std::u16string() : std::u16string(history_.At(history_.Count() - 1));
}

bool ChainTurn::Holds(std::u16string_view id) const {
  for (size_t i = 0; i < history_.Count(); ++i) {
    if (history_.At(i) == id) return true;
  }
  return false;
}

TurnResult ChainTurn::Write(Turn turn, const store::UndoStep& step) {
  if (!IsRecorders(step.kind)) return TurnResult::kDone;
  if (!isRead_) return TurnResult::kFailed;
  if (!Follow(turn, step)) return TurnResult::kRefused;
  const store::CDbSession& session = store::dbSession();
  const auto count = static_cast<int32_t>(history_.Count());
  bool written = store::S_OK == session.LongTable->SetLong(kHistNumKey, count);
  if (written && count > 0) {
    written = !store::Failed(session.RcdrTable->SetRcdrRow(count - 1, Newest()));
  }
  written = written && !store::Failed(session.TextTable->SetText(kPreActIdKey, running_));
  return written ? TurnResult::kDone : TurnResult::kFailed;
}

bool ChainTurn::Follow(Turn turn, const store::UndoStep& step) {
  const std::u16string id = SubjectOf(step);
  switch (step.kind) {
    case StepKind::kTap:
      return turn == Turn::kUndo ? TakeOff(step, id) : PutOn(step, id);
    case StepKind::kBack:
      return turn == Turn::kUndo ? PutOn(step, id) : TakeOff(step, id);
    default:
      return Move(step, turn, id);
  }
}

bool ChainTurn::TakeOff(const store::UndoStep& step, const std::u16string& id) {
  if (!Holds(id) && running_ != id) return true;
  const bool isTap = step.kind == StepKind::kTap;
  const bool runs = running_ == step.running || (isTap && running_ == id);
  if (Newest() != id || !runs) return false;
  history_.RemoveAt(history_.Count() - 1);
  if (isTap && history_.Empty() && !step.running.empty()) history_.Append(step.running);
  running_ = isTap && step.running != Newest() ? u"" : Newest();
  return true;
}

bool ChainTurn::PutOn(const store::UndoStep& step, const std::u16string& id) {
  if (Holds(id)) return true;
  const bool isTap = step.kind == StepKind::kTap;
  if (isTap && running_ != step.running) return false;
  if (isTap && running_.empty()) history_.Clear();
  const bool runs = running_ == Newest() || (!isTap && running_ == step.running);
  if (!runs) return false;
  history_.Append(id);
  running_ = isTap ? id : step.running;
  return true;
}

// Stopped, or going on again.
bool ChainTurn::Move(const store::UndoStep& step, Turn turn, const std::u16string& id) {
  const bool runs = (step.kind == StepKind::kReopen) == (turn == Turn::kRedo);
  const std::u16string target = runs ? id : u"";
  if (running_ == target) return true;
  if (history_.Empty()) history_.Append(id);
  if (running_ != (runs ? u"" : id) || Newest() != id) return false;
  running_ = target;
  return true;
}

bool ChainTurn::Forget(std::u16string_view id) {
  if (!isRead_) return false;
  const store::CDbSession& session = store::dbSession();
  size_t entry = 0;
  while (entry < history_.Count() && history_.At(entry) != id) ++entry;
  if (entry < history_.Count()) {
    history_.RemoveAt(entry);
    const auto count = static_cast<int32_t>(history_.Count());
    if (session.LongTable->SetLong(kHistNumKey, count) != store::S_OK) return false;
    for (int32_t i = static_cast<int32_t>(entry); i < count; ++i) {
      const std::u16string moved(history_.At(static_cast<size_t>(i)));
      if (store::Failed(session.RcdrTable->SetRcdrRow(i, moved))) return false;
    }
  }
  if (running_ != id) return true;
  running_.clear();
  return session.TextTable->SetText(kPreActIdKey, running_) == store::S_OK;
}

void ChainTurn::Show() {
  if (!app_.RcdrLoaded) return;
  app_.RcdrHistory = history_;
  app_.RcdrHistNum = static_cast<int>(history_.Count());
  app_.RcdrPreActId = running_;
  store::Action action;
  if (running_.empty()) {
    app_.RcdrPreDate.clear();
    app_.RcdrPreTime.clear();
  } else if (store::dbSession().UserTable->ReadById(running_, action) == store::S_OK) {
    const Moment start = StartOf(action);
    app_.RcdrPreDate = start.date;
    app_.RcdrPreTime = start.time;
  }
}

}  // namespace recorder
